#include "seating/ui/AutoSeatWindow.h"

#include "app/PendingFailure.h"
#include "app/Prompts.h"
#include "app/WeddingState.h"
#include "app/ui/HebrewText.h"
#include "guests/Invitation.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QRadioButton>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <map>

namespace velmora::ui {

namespace {

QTreeWidget* makeList(QWidget* parent, const char* name, const QStringList& headings)
{
    auto* list = new QTreeWidget(parent);
    list->setObjectName(QString::fromLatin1(name));
    list->setRootIsDecorated(false);
    list->setHeaderLabels(headings);
    // Each column as wide as its heading or its numbers, not stretched across the list.
    list->header()->setStretchLastSection(false);
    return list;
}

// A control with its name and its caption.
template <class Button>
Button* captioned(Button* button, const char* name, const QString& text)
{
    button->setObjectName(QString::fromLatin1(name));
    setHebrewText(button, text);
    return button;
}

QLabel* buddyLabel(const QString& text, QWidget* buddy, QWidget* parent)
{
    auto* label = new QLabel(parent);
    setHebrewText(label, text);
    label->setBuddy(buddy);
    return label;
}

} // namespace

AutoSeatWindow::AutoSeatWindow(WeddingState& state, Prompts& prompts, std::function<void()> refresh, QWidget* parent)
    : QDialog(parent), m_state(state), m_prompts(prompts), m_refresh(std::move(refresh))
{
    setObjectName(QStringLiteral("frmAutoSeat"));
    setLayoutDirection(Qt::RightToLeft);
    setHebrewTitle(this, QStringLiteral("הושבה אוטומטית"));

    auto* who = new QGroupBox(hebrewParagraph(QStringLiteral("מי יושב")), this);
    m_optUnseated = captioned(new QRadioButton(who), "optUnseated", QStringLiteral("&הזמנות שעדיין אין להן שולחן"));
    m_optUnseated->setChecked(true);
    m_optAllComing = captioned(new QRadioButton(who), "optAllComing", QStringLiteral("&כל המגיעים, גם מי שכבר יושב"));
    m_chkUnsure = captioned(new QCheckBox(who), "chkUnsure", QStringLiteral("כולל מי שעדיין לא ענה או אינו &בטוח"));
    m_chkKeep = captioned(new QCheckBox(who), "chkKeepSeated", QStringLiteral("שולחנות שכבר יושבים בהם נשארים &כפי שהם"));
    auto* whoLayout = new QVBoxLayout(who);
    for (QWidget* control : {static_cast<QWidget*>(m_optUnseated), static_cast<QWidget*>(m_optAllComing),
                             static_cast<QWidget*>(m_chkUnsure), static_cast<QWidget*>(m_chkKeep)})
        whoLayout->addWidget(control);

    m_txtTables = new QLineEdit(this);
    m_txtTables->setObjectName(QStringLiteral("txtTables"));
    m_txtTables->setLayoutDirection(Qt::LeftToRight);
    m_txtTables->setPlaceholderText(QStringLiteral("1-10, 15"));
    auto* where = new QFormLayout;
    where->addRow(buddyLabel(QStringLiteral("&שולחנות לשימוש:"), m_txtTables, this), m_txtTables);

    m_cmdCompute = captioned(new QPushButton(this), "cmdCompute", QStringLiteral("&חשב הושבה"));
    m_cmdCompute->setDefault(true);

    m_lblResult = new QLabel(this);
    m_lblResult->setObjectName(QStringLiteral("lblResult"));
    m_lblResult->setWordWrap(true);
    m_lblResult->setTextInteractionFlags(Qt::TextSelectableByKeyboard | Qt::TextSelectableByMouse);
    m_lblResult->setFocusPolicy(Qt::StrongFocus);

    m_lstTables = makeList(this, "lstTables", {QStringLiteral("שולחן"), QStringLiteral("איש"), QStringLiteral("מהם הושבו עכשיו")});
    m_lstSplit = makeList(this, "lstSplit", {QStringLiteral("קבוצה"), QStringLiteral("שולחנות")});
    auto* lists = new QHBoxLayout;
    for (auto [list, caption] : {std::pair{m_lstTables, "&תוצאה לפי שולחן:"}, std::pair{m_lstSplit, "קבוצות ש&פוצלו:"}}) {
        auto* column = new QVBoxLayout;
        column->addWidget(buddyLabel(QString::fromUtf8(caption), list, this));
        column->addWidget(list);
        lists->addLayout(column);
    }

    auto* buttons = new QDialogButtonBox(this);
    m_cmdApply = captioned(buttons->addButton(QString(), QDialogButtonBox::AcceptRole), "cmdApply",
                           QStringLiteral("&החל הושבה"));
    QPushButton* cancel = buttons->addButton(QDialogButtonBox::Cancel);
    cancel->setObjectName(QStringLiteral("cmdCancel"));

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(who);
    layout->addLayout(where);
    layout->addWidget(m_cmdCompute, 0, Qt::AlignLeading);
    layout->addWidget(m_lblResult);
    layout->addLayout(lists, 1);
    layout->addWidget(buttons);
    resize(620, 520);

    connect(m_cmdCompute, &QPushButton::clicked, this, &AutoSeatWindow::compute);
    connect(m_cmdApply, &QPushButton::clicked, this, [this] { apply(); });
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    // A result belongs to the choices it was worked out for.
    for (QAbstractButton* button : {static_cast<QAbstractButton*>(m_optUnseated), static_cast<QAbstractButton*>(m_optAllComing),
                                    static_cast<QAbstractButton*>(m_chkUnsure), static_cast<QAbstractButton*>(m_chkKeep)})
        connect(button, &QAbstractButton::toggled, this, &AutoSeatWindow::forgetResult);
    connect(m_txtTables, &QLineEdit::textEdited, this, &AutoSeatWindow::forgetResult);
    forgetResult();
}

void AutoSeatWindow::showEvent(QShowEvent* event)
{
    // The number of tables may have changed in the options since the last time.
    m_txtTables->setText(QStringLiteral("1-") + QString::number(m_state.MaxTables));
    forgetResult();
    QDialog::showEvent(event);
    // Opened again, the focus starts on the choices, not on the button it was last left on.
    (m_optAllComing->isChecked() ? m_optAllComing : m_optUnseated)->setFocus(Qt::OtherFocusReason);
}

seating::SeatChoice AutoSeatWindow::choice() const
{
    seating::SeatChoice choice;
    choice.who = m_optAllComing->isChecked() ? seating::SeatWho::AllComing : seating::SeatWho::Unseated;
    choice.includeUnsure = m_chkUnsure->isChecked();
    choice.keepSeated = m_chkKeep->isChecked();
    seating::ParseTables(m_txtTables->text(), m_state.MaxTables, choice.tables);
    return choice;
}

void AutoSeatWindow::forgetResult()
{
    m_hasResult = false;
    m_plan = {};
    m_lblResult->clear();
    m_lstTables->clear();
    m_lstSplit->clear();
    m_cmdApply->setEnabled(false);
    m_cmdCompute->setDefault(true);
}

void AutoSeatWindow::compute()
{
    forgetResult();
    std::vector<int> tables;
    if (!seating::ParseTables(m_txtTables->text(), m_state.MaxTables, tables) || tables.empty()) {
        m_prompts.message(QStringLiteral("מספרי השולחנות צריכים להיות בין 1 ל-") + QString::number(m_state.MaxTables)
                          + QStringLiteral(", למשל 1-10, 15."));
        return;
    }
    PendingFailure pending;
    pending.attempt([&] { m_list = seating::ReadSeatingList(m_state); });
    if (pending.report(m_prompts))
        return;
    m_plan = seating::PlanSeating(m_list.guests, m_state.MaxTables, m_state.MaxChairs, choice());
    m_hasResult = true;
    showResult();
    m_lblResult->setFocus(Qt::OtherFocusReason); // read out first; Enter then applies
}

QString AutoSeatWindow::groupName(const QString& group) const
{
    const auto name = guests::GroupText(m_state, QVariant(group));
    return name && !name->isEmpty() ? *name : QStringLiteral("קבוצה ") + group;
}

void AutoSeatWindow::showResult()
{
    if (!m_plan.fits()) {
        setHebrewText(m_lblResult, seating::MissingChairsMessage(m_plan.missingChairs));
        return;
    }
    if (m_plan.moves.empty()) {
        setHebrewText(m_lblResult, QStringLiteral("אין את מי להושיב: כל מי שנבחר כבר יושב."));
        return;
    }
    std::map<int, int> placed; // table, people seated now
    int tablesUsed = 0;
    for (const seating::SeatPlan::Move& move : m_plan.moves)
        placed[move.table] += m_list.guests[size_t(move.id)].people;
    for (int table = 1; table < int(m_plan.people.size()); ++table) {
        if (m_plan.people[size_t(table)] == 0)
            continue;
        ++tablesUsed;
        const auto now = placed.find(table);
        auto* item = new QTreeWidgetItem(m_lstTables, {QString::number(table), QString::number(m_plan.people[size_t(table)]),
                                                       QString::number(now == placed.end() ? 0 : now->second)});
        item->setTextAlignment(1, Qt::AlignCenter);
        item->setTextAlignment(2, Qt::AlignCenter);
    }
    for (const seating::SplitGroup& split : m_plan.splitGroups)
        new QTreeWidgetItem(m_lstSplit, {groupName(split.group), QString::number(split.tables)});
    for (QTreeWidget* list : {m_lstTables, m_lstSplit})
        for (int column = 0; column < list->columnCount(); ++column)
            list->resizeColumnToContents(column);
    int people = 0;
    for (const auto& [table, count] : placed)
        people += count;
    setHebrewText(m_lblResult,
                  QStringLiteral("יושבו %1 איש מ-%2 הזמנות ב-%3 שולחנות; %4 שולחנות תפוסים בסך הכול. "
                                 "קבוצות שפוצלו: %5 (לפחות %6 מהן אי אפשר להושיב בשולחן אחד).")
                      .arg(people)
                      .arg(m_plan.moves.size())
                      .arg(placed.size())
                      .arg(tablesUsed)
                      .arg(m_plan.splitGroups.size())
                      .arg(m_plan.lowerBound));
    m_cmdApply->setEnabled(true);
    m_cmdApply->setDefault(true); // the result seen, Enter applies it
}

bool AutoSeatWindow::apply()
{
    if (!m_hasResult || !m_plan.fits() || m_plan.moves.empty())
        return false;
    PendingFailure pending;
    seating::SeatingUndo undo;
    pending.attempt([&] { undo = seating::ApplySeating(m_state, m_list, m_plan); });
    if (pending.report(m_prompts)) {
        forgetResult();
        return false;
    }
    m_undo = std::move(undo);
    emit undoAvailable(true);
    if (m_refresh)
        m_refresh();
    accept();
    return true;
}

void AutoSeatWindow::undo()
{
    if (m_undo.empty())
        return;
    PendingFailure pending;
    pending.attempt([&] { seating::UndoSeating(m_state, m_undo); });
    if (pending.report(m_prompts))
        return; // the undo stays for another try once the rows are back
    m_undo = {};
    emit undoAvailable(false);
    if (m_refresh)
        m_refresh();
}

void AddAutoSeatEntries(AutoSeatWindow& window, QMenu* menu, QAction* before, const QString& prefix)
{
    auto* open = new QAction(hebrewParagraph(QStringLiteral("הושבה אוטומטית...")), menu);
    open->setObjectName(prefix + QStringLiteral("AutoSeat"));
    auto* undo = new QAction(hebrewParagraph(QStringLiteral("בטל הושבה אוטומטית")), menu);
    undo->setObjectName(prefix + QStringLiteral("UndoAutoSeat"));
    undo->setEnabled(window.canUndo());
    menu->insertSeparator(before);
    menu->insertActions(before, {open, undo});
    QObject::connect(open, &QAction::triggered, &window, [&window] { window.exec(); });
    QObject::connect(undo, &QAction::triggered, &window, &AutoSeatWindow::undo);
    QObject::connect(&window, &AutoSeatWindow::undoAvailable, undo, &QAction::setEnabled);
}

} // namespace velmora::ui
