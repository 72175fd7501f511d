#include "guests/ui/InvitationDialog.h"

#include "app/PendingFailure.h"
#include "app/Prompts.h"
#include "app/TextNumbers.h"
#include "app/WeddingState.h"
#include "app/ui/TypedKeys.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace velmora::ui {

namespace {

const QString UpdateFailed = QStringLiteral("ארעה שגיאה בנסיון העדכון.");
const QString EmptyList = QStringLiteral("רשימת המוזמנים ריקה.");

bool isEnter(const QKeyEvent* key)
{
    return key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter;
}

// "0" to "9": other scripts' digits would read as no number at all.
bool digits(const QString& typed)
{
    return std::all_of(typed.begin(), typed.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
}

template <class Field>
Field* named(Field* field, const char* name, const QString& toolTip)
{
    field->setObjectName(QString::fromLatin1(name));
    field->setToolTip(toolTip);
    return field;
}

} // namespace

InvitationDialog::InvitationDialog(WeddingState& state, Prompts& prompts, InvitationHost& host, QWidget* parent)
    : QDialog(parent), m_state(state), m_prompts(prompts), m_host(host)
{
    setObjectName(QStringLiteral("frmInvDetails"));
    setModal(false);
    build();
    setMinimumWidth(440);
}

void InvitationDialog::build()
{
    auto* layout = new QVBoxLayout(this);
    m_tabs = new QTabWidget(this);
    m_tabs->setObjectName(QStringLiteral("TabStrip1"));
    m_tabs->setAccessibleName(QStringLiteral("לשוניות פרטי ההזמנה"));
    layout->addWidget(m_tabs);

    struct Page {
        QGroupBox* frame;
        QGridLayout* grid;
    };
    auto page = [this](const QString& caption, const char* frameName) {
        auto* holder = new QWidget(m_tabs);
        auto* holderLayout = new QVBoxLayout(holder);
        auto* frame = new QGroupBox(caption, holder);
        frame->setObjectName(QString::fromLatin1(frameName));
        holderLayout->addWidget(frame);
        m_tabs->addTab(holder, caption);
        return Page{frame, new QGridLayout(frame)};
    };
    auto row = [](Page& p, const QString& label, QWidget* field) {
        auto* caption = new QLabel(label, p.frame);
        caption->setBuddy(field);
        field->setAccessibleName(label);
        const int at = p.grid->rowCount();
        p.grid->addWidget(caption, at, 0);
        p.grid->addWidget(field, at, 1);
        return caption;
    };

    Page details = page(QStringLiteral("פרטי הזמנה"), "framInvDetails");
    txtFamilyName = named(new QLineEdit(details.frame), "txtFamilyName", QStringLiteral("שם המשפחה של המוזמן"));
    txtFirstName = named(new QLineEdit(details.frame), "txtFirstName", QStringLiteral("שמו הפרטי של המוזמן"));
    txtPhones = named(new QLineEdit(details.frame), "txtPhones", QStringLiteral("מספרי טלפון של המוזמן לאישור ההזמנה"));
    txtAddress = named(new QPlainTextEdit(details.frame), "txtAddress", QStringLiteral("כתובת למשלוח הזמנה"));
    cmbInvNum = named(new QComboBox(details.frame), "cmbInvNum", QStringLiteral("מספר המוזמנים השייכים להזמנה זו"));
    cmbGroup = named(new QComboBox(details.frame), "cmbGroup", QStringLiteral("סיווג האורח על-פי קבוצת שייכות"));
    txtRemark = named(new QPlainTextEdit(details.frame), "txtRemark", QStringLiteral("הערות כלליות"));
    cmbInvNum->setEditable(true);
    cmbInvNum->setInsertPolicy(QComboBox::NoInsert);
    for (QPlainTextEdit* box : {txtAddress, txtRemark}) {
        box->setTabChangesFocus(true);
        box->setFixedHeight(48);
    }
    row(details, QStringLiteral("שם משפחה"), txtFamilyName);
    row(details, QStringLiteral("שם פרטי"), txtFirstName);
    row(details, QStringLiteral("טלפונים"), txtPhones);
    row(details, QStringLiteral("כתובת"), txtAddress);
    row(details, QStringLiteral("מס' מוזמנים"), cmbInvNum);
    row(details, QStringLiteral("קבוצה"), cmbGroup);
    row(details, QStringLiteral("הערות"), txtRemark);

    Page confirm = page(QStringLiteral("אישור הזמנה"), "framInvConfirm");
    chkConfirmOk = named(new QCheckBox(QStringLiteral("אורח מגיע"), confirm.frame), "chkConfirmOk",
                         QStringLiteral("אורח דיווח כי הוא מגיע"));
    chkConfirmNotOk = named(new QCheckBox(QStringLiteral("אורח לא מגיע"), confirm.frame), "chkConfirmNotOk",
                            QStringLiteral("אורח דיווח כי הוא לא מגיע בטוח"));
    chkConfirmUnkown = named(new QCheckBox(QStringLiteral("אורח לא בטוח "), confirm.frame), "chkConfirmUnkown",
                             QStringLiteral("אורח דיווח כי הוא לא בטוח אם יגיע"));
    cmbTableNo = named(new QComboBox(confirm.frame), "cmbTableNo", QStringLiteral("הושבת האורח על פ\"י מספר השולחן"));
    cmbTableNo->setEditable(true);
    cmbTableNo->setInsertPolicy(QComboBox::NoInsert);
    chkInvSent = named(new QCheckBox(QStringLiteral("הזמנה נשלחה לאורח"), confirm.frame), "chkInvSent",
                       QStringLiteral("השלחה נשלחה לאורח"));
    for (QCheckBox* box : {chkConfirmOk, chkConfirmNotOk, chkConfirmUnkown}) {
        box->setAccessibleName(box->text());
        confirm.grid->addWidget(box, confirm.grid->rowCount(), 0, 1, 2);
        // The three answers exclude each other; clearing one touches nothing else.
        connect(box, &QCheckBox::toggled, this, [this, box](bool on) {
            if (!on)
                return;
            for (QCheckBox* other : {chkConfirmOk, chkConfirmNotOk, chkConfirmUnkown}) {
                if (other != box)
                    other->setChecked(false);
            }
        });
    }
    row(confirm, QStringLiteral("מס' שולחן"), cmbTableNo);
    chkInvSent->setAccessibleName(chkInvSent->text());
    confirm.grid->addWidget(chkInvSent, confirm.grid->rowCount(), 0, 1, 2);

    Page gift = page(QStringLiteral("פרטי מתנה"), "framPresentDetails");
    optPresCheck = named(new QRadioButton(QStringLiteral("צ'ק"), gift.frame), "optPresCheck", QStringLiteral("מתנה כספית בצ'יק"));
    optPresCashe = named(new QRadioButton(QStringLiteral("מזומן"), gift.frame), "optPresCashe", QStringLiteral("מתנה כספית במזומן"));
    optPresDiff = named(new QRadioButton(QStringLiteral("אחר"), gift.frame), "optPresDiff", QStringLiteral("מתנה לא כספית"));
    auto* options = new QButtonGroup(this);
    auto* optionRow = new QHBoxLayout;
    for (QRadioButton* option : {optPresCheck, optPresCashe, optPresDiff}) {
        option->setAccessibleName(option->text());
        options->addButton(option);
        optionRow->addWidget(option);
        connect(option, &QRadioButton::toggled, this, &InvitationDialog::presentOptionChanged);
    }
    gift.grid->addLayout(optionRow, 0, 0, 1, 3);
    txtPresent = named(new QLineEdit(gift.frame), "txtPresent", QStringLiteral("הסכום הכספי של המתנה בשקלים"));
    lblPresentDesc = new QLabel(gift.frame);
    lblPresentDesc->setObjectName(QStringLiteral("lblPresentDesc"));
    lblPresentDesc->setBuddy(txtPresent);
    lblShekel = new QLabel(QStringLiteral("₪"), gift.frame);
    lblShekel->setObjectName(QStringLiteral("lblShekel"));
    gift.grid->addWidget(lblPresentDesc, 1, 0);
    gift.grid->addWidget(txtPresent, 1, 1);
    gift.grid->addWidget(lblShekel, 1, 2);
    gift.grid->setRowStretch(2, 1);
    confirm.grid->setRowStretch(confirm.grid->rowCount(), 1);

    auto* buttons = new QHBoxLayout;
    cmdOK = new QPushButton(QStringLiteral("שמור"), this);
    cmdOK->setObjectName(QStringLiteral("cmdOK"));
    cmdCancel = new QPushButton(QStringLiteral("בטל"), this);
    cmdCancel->setObjectName(QStringLiteral("cmdCancel"));
    for (QPushButton* button : {cmdOK, cmdCancel}) {
        // Neither is the default: Enter works through the fields alone.
        button->setAutoDefault(false);
        button->setDefault(false);
        buttons->addWidget(button);
    }
    buttons->addStretch(1);
    layout->addLayout(buttons);
    connect(cmdOK, &QPushButton::clicked, this, [this] {
        if (SaveInv())
            hide();
    });
    connect(cmdCancel, &QPushButton::clicked, this, &InvitationDialog::cancel);

    QWidget* order[] = {txtFamilyName, txtFirstName, txtPhones, txtAddress, cmbInvNum, cmbGroup, txtRemark,
                        chkConfirmOk, chkConfirmNotOk, chkConfirmUnkown, cmbTableNo, chkInvSent, optPresCheck,
                        optPresCashe, optPresDiff, txtPresent, cmdOK, cmdCancel};
    for (size_t i = 0; i + 1 < std::size(order); ++i)
        setTabOrder(order[i], order[i + 1]);
    // The number takes digits alone (Backspace is refused there, unlike in the table
    // field); the table digits 0 to 9 and Backspace; the group is chosen from its list.
    m_keyFilters = {{cmbInvNum, digits},
                    {cmbTableNo, [](const QString& typed) { return typed == u"\b" || digits(typed); }},
                    {cmbGroup, [](const QString&) { return false; }}};
    // The combo boxes have the focus and hand keys on to their line edits themselves.
    for (QObject* watched : std::initializer_list<QObject*>{txtFamilyName, txtFirstName, txtPhones, txtPresent, cmbInvNum,
                                                            cmbGroup, cmbTableNo})
        watched->installEventFilter(this);
    m_multiHidden = {txtFamilyName, txtFirstName, txtPhones, txtAddress, cmbInvNum, cmbGroup, txtRemark, chkConfirmOk,
                     chkConfirmNotOk, chkConfirmUnkown, cmbTableNo, txtPresent, optPresCheck, optPresCashe, optPresDiff};
    optPresCheck->setChecked(true);
    presentOptionChanged();
}

void InvitationDialog::presentOptionChanged()
{
    const bool money = !optPresDiff->isChecked();
    lblPresentDesc->setText(money ? QStringLiteral("סכום המתנה") : QStringLiteral("תאור המתנה"));
    lblPresentDesc->setToolTip(money ? QStringLiteral("הסכום הכספי של המתנה בשקלים") : QStringLiteral("תאור קצר של המתנה"));
    txtPresent->setAccessibleName(lblPresentDesc->text());
    lblShekel->setVisible(money);
}

void InvitationDialog::load(const std::vector<std::pair<QString, QString>>& pairs)
{
    releaseRow();
    m_mode = m_state.InvMode;
    m_multi = m_mode == 2 && m_state.InvMulti;
    m_pairs = pairs;
    InitMultiSelection(false);
    ClearInv();

    cmbInvNum->clear();
    for (int n = 1; n <= 8; ++n)
        cmbInvNum->addItem(QString::number(n));
    cmbInvNum->setCurrentText(QStringLiteral("2"));
    cmbTableNo->clear();
    for (int n = 1; n <= m_state.MaxTables; ++n)
        cmbTableNo->addItem(QString::number(n));
    cmbTableNo->setCurrentIndex(-1);
    cmbTableNo->setEditText(QString());
    cmbGroup->clear();
    cmbGroup->addItems({m_state.CoupleName, m_state.HisFamily, m_state.HerFamily});
    for (qsizetype position = 3; position < m_state.NumOfGroups && position < m_state.UserGroups.size(); ++position)
        cmbGroup->addItem(m_state.UserGroups[position]);
    cmbGroup->setCurrentIndex(cmbGroup->findText(m_state.CurGroup == m_state.AllGuests ? m_state.CoupleName
                                                                                       : m_state.CurGroup));

    if (m_mode == 1) {
        setWindowTitle(QStringLiteral("הוספת פרטי הזמנה חדשה למערכת"));
    } else {
        setWindowTitle(QStringLiteral("עידכון פרטי הזמנה נוכחית במערכת"));
        UpdateRecord();
    }
    setAccessibleName(windowTitle());
    m_tabs->setCurrentIndex(0);
}

bool InvitationDialog::UpdateRecord()
{
    if (m_multi) {
        InitMultiSelection(true);
        m_host.rememberGridPosition();
        return true;
    }
    PendingFailure pending;
    openList(m_db, m_rs, pending);
    if (m_rs.isOpen() && m_rs.recordCount() == 0) {
        m_prompts.message(EmptyList);
        releaseRow();
        return false;
    }
    const auto& [family, first] = m_pairs.empty() ? std::pair<QString, QString>() : m_pairs.front();
    pending.attempt([&] { guests::FindPair(m_rs, family, first); });
    guests::InvitationForm loaded = form();
    if (m_rs.isOpen())
        loaded = guests::ReadInvitation(m_state, m_rs, cmbGroup->currentText(), pending);
    setForm(loaded);
    if (pending) {
        m_prompts.message(UpdateFailed);
        return false;
    }
    m_host.rememberGridPosition();
    return true;
}

guests::InvitationForm InvitationDialog::form() const
{
    guests::InvitationForm f;
    f.familyName = txtFamilyName->text();
    f.firstName = txtFirstName->text();
    f.phones = txtPhones->text();
    f.address = txtAddress->toPlainText();
    f.invNum = cmbInvNum->currentText();
    f.group = cmbGroup->currentText();
    f.remark = txtRemark->toPlainText();
    f.confirmOk = chkConfirmOk->isChecked();
    f.confirmNotOk = chkConfirmNotOk->isChecked();
    f.confirmUnknown = chkConfirmUnkown->isChecked();
    f.tableNo = cmbTableNo->currentText();
    f.invSent = chkInvSent->isChecked();
    f.gift = optPresDiff->isChecked() ? guests::InvitationForm::Gift::Other
           : optPresCashe->isChecked() ? guests::InvitationForm::Gift::Cash
                                       : guests::InvitationForm::Gift::Cheque;
    f.present = txtPresent->text();
    return f;
}

void InvitationDialog::setForm(const guests::InvitationForm& f)
{
    txtFamilyName->setText(f.familyName);
    txtFirstName->setText(f.firstName);
    txtPhones->setText(f.phones);
    txtAddress->setPlainText(f.address);
    cmbInvNum->setEditText(f.invNum);
    if (const int at = cmbGroup->findText(f.group); at >= 0)
        cmbGroup->setCurrentIndex(at);
    txtRemark->setPlainText(f.remark);
    chkInvSent->setChecked(f.invSent);
    chkConfirmOk->setChecked(f.confirmOk);
    chkConfirmNotOk->setChecked(f.confirmNotOk);
    chkConfirmUnkown->setChecked(f.confirmUnknown);
    cmbTableNo->setEditText(f.tableNo);
    txtPresent->setText(f.present);
    switch (f.gift) {
    case guests::InvitationForm::Gift::Cheque:
        optPresCheck->setChecked(true);
        break;
    case guests::InvitationForm::Gift::Cash:
        optPresCashe->setChecked(true);
        break;
    case guests::InvitationForm::Gift::Other:
        optPresDiff->setChecked(true);
        break;
    }
}

void InvitationDialog::ClearInv()
{
    for (QLineEdit* field : {txtFamilyName, txtFirstName, txtPhones, txtPresent})
        field->clear();
    txtAddress->clear();
    txtRemark->clear();
    cmbTableNo->setEditText(QString());
    cmbInvNum->setEditText(QStringLiteral("2"));
    for (QCheckBox* box : {chkConfirmOk, chkConfirmNotOk, chkConfirmUnkown, chkInvSent})
        box->setChecked(false);
    optPresCheck->setChecked(true);
    if (m_multi)
        InitMultiSelection(false);
}

void InvitationDialog::InitMultiSelection(bool multi)
{
    // The labels stay, "₪" among them.
    for (QWidget* field : m_multiHidden)
        field->setVisible(!multi);
}

bool InvitationDialog::SaveInv()
{
    if (m_mode == 1)
        return AddRecord();
    const int groupIndex = guests::GroupIndex(m_state, cmbGroup->currentText());
    if (m_multi)
        return updateMany(chkInvSent->isChecked());
    if (!m_db.isOpen()) {
        // Saved by Enter already, or no row was found: nothing left to write to.
        hide();
        return false;
    }
    const guests::InvitationForm f = form();
    // A pasted run of digits may be any size; no row sits at a table past a byte.
    const double typedTable = LeadingNumber(f.tableNo);
    const int table = typedTable >= 0 && typedTable <= 255 ? int(typedTable) : -1;
    int own = 0;
    try {
        own = guests::OwnPeople(m_rs, table);
    } catch (const Failure&) {
        // No row stands open: the save below reports it.
    }
    if (const auto refusal = guests::CheckInvitation(m_state, f, [this](int t) { return m_host.seatedCount(t); }, own)) {
        m_prompts.message(*refusal);
        return false;
    }
    bool duplicate = false;
    try {
        duplicate = guests::IsDuplicate(m_rs, Trim(f.familyName), Trim(f.firstName), m_rs.absolutePosition());
    } catch (const Failure&) {
    }
    if (duplicate) {
        m_prompts.message(guests::DuplicateMessage);
        return false;
    }
    return updateOne(f, groupIndex);
}

bool InvitationDialog::AddRecord()
{
    const guests::InvitationForm f = form();
    if (const auto refusal = guests::CheckInvitation(m_state, f, [this](int t) { return m_host.seatedCount(t); }, 0)) {
        m_prompts.message(*refusal);
        return false;
    }
    PendingFailure pending;
    store::Database db;
    store::Recordset rs;
    openList(db, rs, pending);
    const int groupIndex = guests::GroupIndex(m_state, f.group);
    bool duplicate = false;
    pending.attempt([&] {
        duplicate = rs.recordCount() > 0 && guests::IsDuplicate(rs, Trim(f.familyName), Trim(f.firstName), -1);
    });
    if (duplicate) {
        m_prompts.message(guests::DuplicateMessage);
        return false;
    }
    pending.attempt([&] {
        rs.addNew();
        guests::WriteInvitation(rs, f, groupIndex, true);
        rs.update();
    });
    pending.attempt([&] { db.close(); });
    if (pending) {
        m_prompts.message(QStringLiteral("ארעה שגיאה בנסיון הכנסת נתוני ההזמנה החדשים.") + m_state.CrLf
                              + pending.failure().text(),
                          QStringLiteral("Err# ") + QString::number(pending.failure().number()));
        return false;
    }
    ClearInv();
    m_host.refreshList();
    if (m_tabs->currentIndex() == 0)
        txtFamilyName->setFocus();
    return true;
}

bool InvitationDialog::updateOne(const guests::InvitationForm& f, int groupIndex)
{
    PendingFailure pending;
    pending.attempt([&] {
        m_rs.edit();
        guests::WriteInvitation(m_rs, f, groupIndex, false);
        m_rs.update();
    });
    if (pending) {
        m_prompts.message(UpdateFailed + m_state.CrLf + pending.failure().text());
        return false;
    }
    releaseRow();
    finishUpdate();
    return true;
}

bool InvitationDialog::updateMany(bool sent)
{
    PendingFailure pending;
    store::Database db;
    store::Recordset rs;
    openList(db, rs, pending);
    for (const auto& [family, first] : m_pairs) {
        if (!rs.isOpen() || rs.eof()) {
            m_prompts.message(EmptyList);
            return false; // the rows done so far stay done
        }
        pending.attempt([&] {
            guests::FindPair(rs, family, first);
            rs.edit();
            rs.setValue(QStringLiteral("INV_STATUS"), sent);
            rs.update();
        });
    }
    if (pending) {
        m_prompts.message(UpdateFailed + m_state.CrLf + pending.failure().text());
        return false;
    }
    finishUpdate();
    return true;
}

void InvitationDialog::finishUpdate()
{
    ClearInv();
    m_multi = false;
    m_host.refreshList();
    m_host.restoreGridPosition();
}

void InvitationDialog::openList(store::Database& db, store::Recordset& rs, PendingFailure& pending) const
{
    pending.attempt([&] {
        db = store::Database::open(m_state.databaseFile());
        rs = db.openRecordset(QStringLiteral("select * from VELMORA_LIST"));
    });
}

void InvitationDialog::releaseRow()
{
    if (m_db.isOpen()) {
        try {
            m_db.close();
        } catch (const Failure&) {
        }
    }
    m_rs = store::Recordset();
}

void InvitationDialog::cancel()
{
    if (m_mode == 2)
        releaseRow();
    hide();
}

bool InvitationDialog::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress)
        return QDialog::eventFilter(watched, event);
    auto* key = static_cast<QKeyEvent*>(event);
    const auto filter = std::find_if(std::begin(m_keyFilters), std::end(m_keyFilters),
                                     [watched](const KeyFilter& f) { return f.field == watched; });
    const bool filtered = filter != std::end(m_keyFilters);
    if (isEnter(key)) {
        SaveInv();
        if (filtered)
            m_prompts.beep(); // then Enter itself is refused there
        return true;
    }
    if (!filtered || !TypesCharacter(key) || filter->takes(key->text()))
        return QDialog::eventFilter(watched, event);
    m_prompts.beep();
    return true;
}

void InvitationDialog::keyPressEvent(QKeyEvent* event)
{
    // Escape does nothing here, and Enter only what the fields make of it.
    if (event->key() == Qt::Key_Escape || isEnter(event)) {
        event->accept();
        return;
    }
    QDialog::keyPressEvent(event);
}

void InvitationDialog::closeEvent(QCloseEvent* event)
{
    cancel();
    event->accept();
}

} // namespace velmora::ui
