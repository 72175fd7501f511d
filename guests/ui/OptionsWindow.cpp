#include "guests/ui/OptionsWindow.h"

#include "app/PendingFailure.h"
#include "app/Prompts.h"
#include "app/TextNumbers.h"
#include "app/WeddingState.h"
#include "app/ui/HebrewText.h"

#include <QDateEdit>
#include <QFormLayout>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>

namespace velmora::ui {

OptionsWindow::OptionsWindow(WeddingState& state, Prompts& prompts, guests::SeatedCountFn seatedCount,
                             std::function<void()> applied, QWidget* parent)
    : QDialog(parent), m_state(state), m_prompts(prompts), m_seatedCount(std::move(seatedCount)),
      m_applied(std::move(applied))
{
    setObjectName(QStringLiteral("frmOptions"));
    setWindowTitle(QStringLiteral("הגדרות"));
    setAccessibleName(windowTitle());
    setModal(true);
    build();
    load();
}

void OptionsWindow::build()
{
    auto* layout = new QVBoxLayout(this);
    SSTab1 = new QTabWidget(this);
    SSTab1->setObjectName(QStringLiteral("SSTab1"));
    SSTab1->setAccessibleName(QStringLiteral("לשוניות ההגדרות"));
    layout->addWidget(SSTab1);

    auto field = [](QWidget* parent, const char* name, const QString& label) {
        auto* edit = new QLineEdit(parent);
        edit->setObjectName(QString::fromLatin1(name));
        edit->setAccessibleName(label);
        return edit;
    };

    auto* user = new QWidget(SSTab1);
    auto* userForm = new QFormLayout(user);
    txtCouple = field(user, "txtCouple", QStringLiteral("בני הזוג"));
    txtHisFamily = field(user, "txtHisFamily", QStringLiteral("משפ' החתן"));
    txtHerFamily = field(user, "txtHerFamily", QStringLiteral("משפ' הכלה"));
    DTPickWedding = new QDateEdit(user);
    DTPickWedding->setObjectName(QStringLiteral("DTPickWedding"));
    DTPickWedding->setAccessibleName(QStringLiteral("תאריך החתונה"));
    DTPickWedding->setCalendarPopup(true);
    // Day, month and year read as written: a right-to-left date field would turn the
    // format's order round, so the direction is set before the format.
    DTPickWedding->setLayoutDirection(Qt::LeftToRight);
    DTPickWedding->setDisplayFormat(QStringLiteral("dd/MM/yyyy"));
    userForm->addRow(QStringLiteral("בני הזוג"), txtCouple);
    userForm->addRow(QStringLiteral("משפ' החתן"), txtHisFamily);
    userForm->addRow(QStringLiteral("משפ' הכלה"), txtHerFamily);
    userForm->addRow(QStringLiteral("תאריך החתונה"), DTPickWedding);
    SSTab1->addTab(user, QStringLiteral("פרטי משתמש"));

    auto* groups = new QWidget(SSTab1);
    auto* groupGrid = new QGridLayout(groups);
    txtNewGroup = field(groups, "txtNewGroup", QStringLiteral("שם הקבוצה"));
    cmdAddUpdateGroup = new QPushButton(QStringLiteral("הוסף קבוצה"), groups);
    cmdAddUpdateGroup->setObjectName(QStringLiteral("cmdAddUpdateGroup"));
    lstGroups = new QListWidget(groups);
    lstGroups->setObjectName(QStringLiteral("lstGroups"));
    lstGroups->setAccessibleName(QStringLiteral("קבוצות המוזמנים"));
    cmdDelGroup = new QPushButton(QStringLiteral("הסר קבוצה"), groups);
    cmdDelGroup->setObjectName(QStringLiteral("cmdDelGroup"));
    cmdCancelUpdate = new QPushButton(QStringLiteral("בטל עדכון"), groups);
    cmdCancelUpdate->setObjectName(QStringLiteral("cmdCancelUpdate"));
    groupGrid->addWidget(txtNewGroup, 0, 0);
    groupGrid->addWidget(cmdAddUpdateGroup, 0, 1);
    groupGrid->addWidget(lstGroups, 1, 0, 2, 1);
    // The two share one place; one of them shows at a time.
    groupGrid->addWidget(cmdDelGroup, 1, 1, Qt::AlignTop);
    groupGrid->addWidget(cmdCancelUpdate, 1, 1, Qt::AlignTop);
    SSTab1->addTab(groups, QStringLiteral("הגדרת קבוצות"));

    auto* general = new QWidget(SSTab1);
    auto* generalForm = new QFormLayout(general);
    txtMaxTable = field(general, "txtMaxTable", QStringLiteral(":כמות מקסימלית של שולחנות"));
    txtMaxChairs = field(general, "txtMaxChairs", QStringLiteral(":כמות מקסימלית של  כסאות בשולחן"));
    generalForm->addRow(hebrewParagraph(txtMaxTable->accessibleName()), txtMaxTable);
    generalForm->addRow(hebrewParagraph(txtMaxChairs->accessibleName()), txtMaxChairs);
    SSTab1->addTab(general, QStringLiteral("הגדרות כלליות"));

    auto* buttons = new QHBoxLayout;
    cmdOK = new QPushButton(QStringLiteral("OK"), this);
    cmdOK->setObjectName(QStringLiteral("cmdOK"));
    cmdCancel = new QPushButton(QStringLiteral("Cancel"), this);
    cmdCancel->setObjectName(QStringLiteral("cmdCancel"));
    cmdApply = new QPushButton(QStringLiteral("Apply"), this);
    cmdApply->setObjectName(QStringLiteral("cmdApply"));
    for (QPushButton* button : {cmdOK, cmdCancel, cmdApply}) {
        button->setAutoDefault(false);
        buttons->addWidget(button);
    }
    buttons->insertStretch(0, 1);
    layout->addLayout(buttons);

    auto enableApply = [this] { cmdApply->setEnabled(true); };
    for (QLineEdit* edit : {txtCouple, txtHisFamily, txtHerFamily, txtMaxTable, txtMaxChairs})
        connect(edit, &QLineEdit::textChanged, this, enableApply);
    connect(DTPickWedding, &QDateEdit::dateChanged, this, enableApply);
    connect(SSTab1, &QTabWidget::currentChanged, this, &OptionsWindow::tabSelected);
    // Clicks, keys and removals alike: only a selected user group can go.
    connect(lstGroups, &QListWidget::itemSelectionChanged, this,
            [this] { cmdDelGroup->setEnabled(selectedGroup() >= 3); });
    connect(lstGroups, &QListWidget::itemDoubleClicked, this, &OptionsWindow::groupDoubleClicked);
    connect(cmdAddUpdateGroup, &QPushButton::clicked, this, &OptionsWindow::addOrUpdateGroup);
    connect(cmdDelGroup, &QPushButton::clicked, this, &OptionsWindow::deleteGroup);
    connect(cmdCancelUpdate, &QPushButton::clicked, this, &OptionsWindow::CancelUpdate);
    connect(cmdApply, &QPushButton::clicked, this, &OptionsWindow::apply);
    connect(cmdOK, &QPushButton::clicked, this, [this] {
        if (cmdApply->isEnabled())
            apply();
        accept(); // closes whatever Apply said
    });
    connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
}

void OptionsWindow::load()
{
    txtCouple->setText(m_state.CoupleName);
    txtHisFamily->setText(m_state.HisFamily);
    txtHerFamily->setText(m_state.HerFamily);
    lstGroups->clear();
    lstGroups->addItems(guests::OptionsFromState(m_state).groups);
    txtNewGroup->clear();
    txtMaxTable->setText(QString::number(m_state.MaxTables));
    txtMaxChairs->setText(QString::number(m_state.MaxChairs));
    cmdDelGroup->setEnabled(false);
    m_groupMode = 1;
    cmdCancelUpdate->hide();
    DTPickWedding->setDate(m_state.WeddingDate);
    SSTab1->setCurrentIndex(0);
    cmdApply->setEnabled(false); // last: setting the controls enabled it
}

void OptionsWindow::tabSelected(int tab)
{
    if (tab != 1)
        return;
    const QLineEdit* names[] = {txtCouple, txtHisFamily, txtHerFamily};
    for (int i = 0; i < 3 && i < lstGroups->count(); ++i)
        lstGroups->item(i)->setText(names[i]->text());
}

guests::OptionsForm OptionsWindow::form() const
{
    guests::OptionsForm f;
    f.couple = txtCouple->text();
    f.hisFamily = txtHisFamily->text();
    f.herFamily = txtHerFamily->text();
    f.weddingDate = DTPickWedding->date();
    f.maxTables = txtMaxTable->text();
    f.maxChairs = txtMaxChairs->text();
    for (int i = 0; i < lstGroups->count(); ++i)
        f.groups << lstGroups->item(i)->text();
    return f;
}

int OptionsWindow::selectedGroup() const
{
    const QList<QListWidgetItem*> selected = lstGroups->selectedItems();
    return selected.isEmpty() ? -1 : lstGroups->row(selected.front());
}

void OptionsWindow::groupDoubleClicked()
{
    const int row = selectedGroup();
    if (row < 3) {
        CancelUpdate();
        m_prompts.message(QStringLiteral("לא ניתן להסיר\\לעדכן שלושת הקבוצות הראשיות"));
        return;
    }
    m_groupMode = 2;
    cmdCancelUpdate->show();
    cmdDelGroup->hide();
    cmdAddUpdateGroup->setText(QStringLiteral("עדכן קבוצה"));
    txtNewGroup->setText(lstGroups->item(row)->text());
    lstGroups->setEnabled(false); // the entry being renamed stays the selected one
}

void OptionsWindow::addOrUpdateGroup()
{
    const QString name = Trim(txtNewGroup->text());
    QStringList groups;
    for (int i = 0; i < lstGroups->count(); ++i)
        groups << lstGroups->item(i)->text();
    const int replacing = m_groupMode == 2 ? selectedGroup() : -1;
    if (const auto refusal = guests::CheckGroupName(groups, name, replacing)) {
        m_prompts.message(*refusal);
        return;
    }
    if (m_groupMode == 1) {
        lstGroups->addItem(name);
        txtNewGroup->clear();
        cmdApply->setEnabled(true);
    } else {
        if (QListWidgetItem* entry = lstGroups->item(replacing))
            entry->setText(name);
        CancelUpdate();
    }
}

void OptionsWindow::deleteGroup()
{
    const int row = selectedGroup();
    if (row < 3)
        return;
    delete lstGroups->takeItem(row);
    txtNewGroup->clear();
    cmdDelGroup->setEnabled(selectedGroup() >= 3); // the entry the list moved on to
    cmdApply->setEnabled(true);
}

void OptionsWindow::CancelUpdate()
{
    m_groupMode = 1;
    txtNewGroup->clear();
    cmdAddUpdateGroup->setText(QStringLiteral("הוסף קבוצה"));
    cmdApply->setEnabled(true);
    cmdCancelUpdate->hide();
    cmdDelGroup->show();
    lstGroups->setEnabled(true);
}

bool OptionsWindow::apply()
{
    const guests::OptionsForm f = form();
    if (const auto refusal = guests::CheckOptions(m_state, f, m_seatedCount)) {
        m_prompts.message(*refusal);
        return false;
    }
    PendingFailure pending;
    pending.attempt([&] { guests::ApplyOptions(m_state, f); });
    const QLineEdit* names[] = {txtCouple, txtHisFamily, txtHerFamily};
    for (int i = 0; i < 3 && i < lstGroups->count(); ++i)
        lstGroups->item(i)->setText(Trim(names[i]->text()));
    pending.attempt([&] {
        if (m_applied)
            m_applied();
    });
    cmdApply->setEnabled(false);
    pending.report(m_prompts);
    return true;
}

} // namespace velmora::ui
