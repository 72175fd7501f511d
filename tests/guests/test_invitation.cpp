#include "RunningProgram.h"
#include "SystemKeys.h"
#include "TestMain.h"
#include "TestWedding.h"

#include "app/Wedding.h"
#include "app/ui/MainWindow.h"
#include "guests/GuestListModel.h"
#include "guests/Invitation.h"
#include "guests/ui/InvitationDialog.h"
#include "seating/ui/TableMapWindow.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QTableView>

using namespace velmora;
using guests::InvitationForm;
using test::pressKey;

Q_DECLARE_METATYPE(velmora::guests::InvitationForm)

namespace {

const QString Duplicate = QStringLiteral("קיימת כבר הזמנה זהה ברשימה.");
const QString TableFull = QStringLiteral("לא ניתן להושיב יותר מ- 15 איש בשולחן");
const QString NoName = QStringLiteral("השדות שם משפחה\\פרטי אינם יכולים להיות ריקים.");
const QString LongName = QStringLiteral("השדות שם משפחה\\פרטי מוגבלים לגודל של 20 תווים.");

InvitationForm named(const QString& family, const QString& first)
{
    InvitationForm form;
    form.familyName = family;
    form.firstName = first;
    return form;
}

// A form of good names with one change made to it.
InvitationForm with(const std::function<void(InvitationForm&)>& change)
{
    InvitationForm form = named(QStringLiteral("לוי"), QStringLiteral("דנה"));
    change(form);
    return form;
}

} // namespace

class InvitationTest : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<test::TestWedding> m_wedding;
    test::RunningProgram m_program;
    test::ScriptedPrompts& m_prompts = m_program.prompts;
    WeddingState& m_state = m_program.state;

    ui::InvitationDialog& openAdd()
    {
        m_program.main().AddNewInv();
        test::activate(m_program.main().invitationDialog());
        return *m_program.main().invitationDialog();
    }

    // Opens the update of grid rows `from` to `to` (the current row is `from`).
    ui::InvitationDialog& openUpdate(int from, int to, const QString& question)
    {
        QTableView* grid = m_program.main().grid();
        grid->setCurrentIndex(grid->model()->index(from - 1, 0));
        grid->selectionModel()->select(QItemSelection(grid->model()->index(std::min(from, to) - 1, 0),
                                                      grid->model()->index(std::max(from, to) - 1, 9)),
                                       QItemSelectionModel::ClearAndSelect);
        m_prompts.expectQuestion(question, PromptAnswer::Yes);
        m_program.main().UpdateInv();
        return *m_program.main().invitationDialog();
    }

    // Fields of one pair's row as text, "" for Null.
    QStringList stored(const QString& family, const QString& first, const QStringList& fields)
    {
        QStringList values;
        for (const QString& field : fields)
            values << m_wedding->value(family, first, field).toString();
        return values;
    }
    int rows(const char* where = "1") { return m_wedding->count(QStringLiteral("select * from VELMORA_LIST where ") + where); }

private slots:
    void init()
    {
        m_wedding = std::make_unique<test::TestWedding>();
        m_wedding->createWedding(20, 15);
        m_wedding->addInvitation(test::invitation("כהן", "דנה", 12, 1, 4));
        m_wedding->addInvitation(test::invitation("לוי", "רון", 3, 1, 4));
        m_wedding->addInvitation(test::invitation("גבאי", "שי", 13, 1, 5));
        m_wedding->addInvitation(test::invitation("טל", "אור", 1, 2, QVariant()));
        QVERIFY(m_program.start(m_wedding->folder()));
    }

    void cleanup() { m_program.finish(); }

    void theChecksComeInTheirOrder_data()
    {
        QTest::addColumn<InvitationForm>("form");
        QTest::addColumn<int>("ownPeople");
        QTest::addColumn<QString>("message");
        auto row = [](const char* name, const std::function<void(InvitationForm&)>& change, const QString& message,
                      int own = 0) { QTest::newRow(name) << with(change) << own << message; };
        row("1 blank name", [](auto& f) { f.familyName = "  "; }, NoName);
        row("2 long name, a tab is no blank", [](auto& f) { f.firstName = QString(20, u'א') + u'\t'; }, LongName);
        row("2 passes: 21 with 3 blanks at its ends", [](auto& f) { f.familyName = "  " + QString(18, u'א') + u' '; }, "");
        row("3 before 4", [](auto& f) { f.invNum = "abc"; f.remark = QString(41, u'x'); },
            "השדה מס' מוזמנים חייב להכיל מספר הגדול מאפס.");
        row("3 typed past the list", [](auto& f) { f.invNum = "12"; }, "");
        row("4 remark", [](auto& f) { f.remark = QString(41, u'x'); }, "השדה הערות מוגבל לגודל של 40 תווים.");
        row("5 phones", [](auto& f) { f.phones = QString(31, u'5'); }, "השדה טלפונים מוגבל לגודל של 30 תווים.");
        row("6 address", [](auto& f) { f.address = QString(51, u'x'); }, "השדה כתובת מוגבל לגודל של 50 תווים.");
        row("7 gift length before 8", [](auto& f) { f.present = QString(21, u'מ'); }, "השדה מתנה מוגבל לגודל של 20 תווים.");
        row("8 letters as cheque", [](auto& f) { f.present = "מאה"; }, "השדה מתנה חייב להיות מספרי.");
        row("8 letters as other", [](auto& f) { f.present = "מאה"; f.gift = InvitationForm::Gift::Other; }, "");
        row("9 one past the tables", [](auto& f) { f.tableNo = "21"; }, "מספר השולחן אינו קיים במערכת.");
        row("9 the last table", [](auto& f) { f.tableNo = "20"; }, "");
        row("10 a no at a table", [](auto& f) { f.confirmNotOk = true; f.tableNo = "3"; },
            "הושבת אורח שלא מגיע לשולחן אינה אפשרית");
        row("10 a no at no table", [](auto& f) { f.confirmNotOk = true; f.tableNo = "0"; }, "");
        row("11 filled exactly", [](auto& f) { f.tableNo = "5"; }, "");
        row("11 one too many", [](auto& f) { f.tableNo = "5"; f.invNum = "3"; }, TableFull);
        row("11 an update keeps its own seats", [](auto& f) { f.tableNo = "4"; f.invNum = "3"; }, "", 3);
        row("11 an update grows past", [](auto& f) { f.tableNo = "4"; f.invNum = "4"; }, TableFull, 3);
    }

    void theChecksComeInTheirOrder()
    {
        QFETCH(InvitationForm, form);
        QFETCH(int, ownPeople);
        auto seated = [](int table) { return quint8(table == 4 ? 15 : table == 5 ? 13 : 0); };
        QTEST(guests::CheckInvitation(m_wedding->state, form, seated, ownPeople).value_or(QString()), "message");
    }

    void refusalsKeepAllThatWasTyped()
    {
        // No box has a limit of its own: a long paste stays whole for the user to mend.
        ui::InvitationDialog& dialog = openAdd();
        const QString paste = QString(200, QChar(u'ש'));
        for (QLineEdit* field : {dialog.txtFamilyName, dialog.txtFirstName, dialog.txtPhones, dialog.txtPresent})
            field->setText(paste);
        dialog.txtAddress->setPlainText(paste);
        dialog.tabs()->setCurrentIndex(2);
        m_prompts.expectMessage(PromptIcon::None, LongName);
        dialog.cmdOK->click();
        QCOMPARE(dialog.tabs()->currentIndex(), 2);
        QCOMPARE(dialog.txtAddress->toPlainText() + dialog.txtPresent->text(), paste + paste);

        // More people than the store's byte holds: refused by the store, with its message.
        dialog.setForm(with([](auto& f) { f.invNum = "300"; }));
        m_prompts.expectMessage(PromptIcon::None, "ארעה שגיאה בנסיון הכנסת נתוני ההזמנה החדשים.\r\nהערך חורג מהתחום של השדה 'INV_NUM'.",
                                "Err# 3349");
        dialog.cmdOK->click();
        QVERIFY(dialog.isVisible() && dialog.cmbInvNum->currentText() == u"300");
        QCOMPARE(rows(), 4); // no half row

        // Duplicates are exact pairs over all rows: a filter hides "טל אור" (not coming), yet it is
        // found; case counts: "tal Or" is another pair.
        m_program.main().action(QStringLiteral("mnuIgnoreCnfNotOk"))->trigger();
        for (const auto& [family, first] : {std::pair("טל", "אור"), std::pair("Tal", "Or"), std::pair("tal", "Or")}) {
            openAdd().setForm(named(family, first));
            if (QString(first) == u"אור")
                m_prompts.expectMessage(PromptIcon::None, Duplicate);
            m_program.main().invitationDialog()->cmdOK->click();
        }
        QCOMPARE(rows("FIRST_NAME = 'Or'"), 2);
    }

    void addingByEnterKeepsTheDialogForTheNext()
    {
        ui::InvitationDialog& dialog = openAdd();
        QCOMPARE(dialog.cmbGroup->currentText(), m_state.CoupleName);
        dialog.cmbGroup->setCurrentIndex(2);
        dialog.txtFamilyName->setText(" ד'אמיקו ");
        dialog.txtFirstName->setText("שירה ״הגדולה״");
        dialog.txtAddress->setPlainText(" הגפן 3\nחיפה\n ");
        dialog.cmbTableNo->setEditText("0");
        dialog.optPresCashe->setChecked(true);
        dialog.txtPresent->setText("100");
        dialog.txtFirstName->setFocus();
        pressKey(Qt::Key_Return);

        // Cleared for the next, which starts in the same group.
        QVERIFY(dialog.isVisible() && dialog.optPresCheck->isChecked());
        QCOMPARE(dialog.txtFamilyName->text() + dialog.cmbInvNum->currentText() + dialog.cmbGroup->currentText(),
                 "2" + m_state.HerFamily);
        const QString family = QStringLiteral("ד'אמיקו"), first = QStringLiteral("שירה ״הגדולה״");
        // An addition keeps table "0"; the address loses only its blanks.
        QCOMPARE(stored(family, first, {"LIST_GROUP", "TABLE_NO", "PRESENT_TYPE", "ADDRESS"}),
                 QStringList({"3", "0", "1", "הגפן 3\nחיפה\n"}));
        QCOMPARE(m_state.InvCount, qint16(5)); // the list behind shows it

        m_prompts.expectMessage(PromptIcon::None, NoName);
        pressKey(Qt::Key_Enter);

        // "שמור" stores and closes; the same pair again is a duplicate.
        dialog.setForm(named(family, first + u' '));
        m_prompts.expectMessage(PromptIcon::None, Duplicate);
        dialog.cmdOK->click();
        dialog.txtFirstName->setText("שירה");
        dialog.optPresDiff->setChecked(true);
        dialog.txtPresent->setText("  סט כוסות ");
        dialog.chkConfirmNotOk->setChecked(true);
        dialog.cmbTableNo->setEditText("0"); // kept by an addition, but a "no" has no seat
        dialog.cmdOK->click();
        QVERIFY(!dialog.isVisible());
        QCOMPARE(stored(family, "שירה", {"PRESENT", "CONFIRM", "TABLE_NO"}), QStringList({"סט כוסות", "2", ""}));
    }

    void updatingARowAtAFullTable()
    {
        // Grid row 2 is לוי רון, 3 people at table 4, which holds 15.
        ui::InvitationDialog& dialog = openUpdate(2, 2, QStringLiteral("האם לעדכן את ההזמנה ללוי רון?"));
        test::activate(&dialog);
        QCOMPARE(dialog.txtFamilyName->text() + dialog.cmbTableNo->currentText() + dialog.cmbInvNum->currentText(), "לוי43");
        QVERIFY(dialog.chkConfirmOk->isChecked());

        auto refused = [&](const QString& message) {
            m_prompts.expectMessage(PromptIcon::None, message);
            dialog.cmdOK->click();
            QVERIFY(dialog.rowOpen()); // still open for the next try
        };
        dialog.cmbTableNo->setEditText("5"); // 13 there: a move counts its own people in full
        refused(TableFull);
        dialog.setForm(named("כהן", "דנה"));
        refused(Duplicate);

        // While the dialog holds the row, the list reloads under another filter and group.
        m_program.main().action(QStringLiteral("mnuIgnoreNotCnf"))->trigger();
        m_program.chooseGroup(2);

        // Its own names are no duplicate; Enter saves and keeps the window, cleared.
        dialog.setForm(named("לוי", "רון "));
        dialog.txtPhones->setText("052-7654321");
        dialog.cmbTableNo->setEditText("0");
        dialog.txtPhones->setFocus();
        pressKey(Qt::Key_Return);
        QVERIFY(dialog.isVisible() && !dialog.rowOpen() && dialog.txtFamilyName->text().isEmpty());
        // An update empties table "0"; the other row keeps its phones.
        QCOMPARE(stored("לוי", "רון", {"PHONES", "TABLE_NO"}) + stored("כהן", "דנה", {"PHONES"}),
                 QStringList({"052-7654321", "", "050"}));
        QCOMPARE(m_program.map().itemText(4), QStringLiteral("שולחן של 12"));
        dialog.cmdOK->click(); // nothing open any more: the window closes
        QVERIFY(!dialog.isVisible());
    }

    void severalRowsGetOnlyTheSentFlag()
    {
        // Swept upward from row 4 to row 2.
        ui::InvitationDialog& dialog = openUpdate(4, 2, QStringLiteral("האם לעדכן את קבוצת המוזמנים?"));
        QVERIFY(dialog.txtFamilyName->isHidden() && dialog.cmbTableNo->isHidden() && dialog.txtPresent->isHidden());
        QVERIFY(!dialog.chkInvSent->isHidden() && !dialog.lblShekel->isHidden() && !dialog.rowOpen()); // the labels stay
        dialog.chkInvSent->setChecked(true);
        dialog.cmdOK->click();
        QVERIFY(!dialog.isVisible() && !dialog.txtFamilyName->isHidden()); // the fields are back for next time
        QCOMPARE(rows("INV_STATUS"), 3);
        QCOMPARE(QList<int>({rows("INV_STATUS and FAMILY_NAME = 'כהן'"), rows("TABLE_NO = 5 and FAMILY_NAME = 'גבאי'")}),
                 QList<int>({0, 1}));
    }

    void keysAsTheKeyboardSendsThem_data()
    {
        QTest::addColumn<QString>("field");
        QTest::addColumn<QString>("before");
        QTest::addColumn<QList<int>>("keys");
        QTest::addColumn<QString>("after");
        QTest::addColumn<int>("beeps");
        QTest::addColumn<QString>("focus");

        const int alef = 0x5D0;
        auto row = [](const char* name, const char* field, const char* before, QList<int> keys, const char* after, int beeps,
                      const char* focus) { QTest::newRow(name) << field << before << keys << after << beeps << focus; };
        row("number: digits, letter, sign, Backspace", "cmbInvNum", "", {Qt::Key_1, Qt::Key_2, alef, Qt::Key_Minus,
            Qt::Key_Backspace}, "12", 3, "cmbInvNum");
        row("number: Tab", "cmbInvNum", "2", {Qt::Key_Tab}, "2", 0, "cmbGroup");
        row("number: Enter saves, then beeps", "cmbInvNum", "3", {Qt::Key_Return}, "2", 1, "txtFamilyName");
        row("table: digits, letter, signs, Backspace", "cmbTableNo", "", {Qt::Key_1, Qt::Key_7, alef, Qt::Key_Minus,
            Qt::Key_Period, Qt::Key_Backspace}, "1", 3, "cmbTableNo");
        row("table: Delete", "cmbTableNo", "17", {Qt::Key_Home, Qt::Key_Delete}, "7", 0, "cmbTableNo");
        row("table: Tab", "cmbTableNo", "", {Qt::Key_Tab}, "", 0, "chkInvSent");
        row("group: letter, digit", "cmbGroup", "", {alef, Qt::Key_1}, "", 2, "cmbGroup");
        row("group: Tab", "cmbGroup", "", {Qt::Key_Tab}, "", 0, "txtRemark");
        row("phones: no filter", "txtPhones", "", {alef, Qt::Key_1}, "א1", 0, "txtPhones");
        row("remark: Enter is a new line", "txtRemark", "", {Qt::Key_Return}, "\n", 0, "txtRemark");
        row("Escape does nothing", "txtRemark", "", {Qt::Key_Escape}, "", 0, "txtRemark");
    }

    void keysAsTheKeyboardSendsThem()
    {
        QFETCH(QString, field);
        QFETCH(QString, before);
        QFETCH(QList<int>, keys);
        QFETCH(int, beeps);
        QFETCH(QString, focus);
        ui::InvitationDialog& dialog = openAdd();
        dialog.setForm(named("אדלר", "נועם"));
        auto* target = dialog.findChild<QWidget*>(field);
        for (int tab = 0; tab < dialog.tabs()->count(); ++tab)
            if (dialog.tabs()->widget(tab)->isAncestorOf(target))
                dialog.tabs()->setCurrentIndex(tab);
        auto* combo = qobject_cast<QComboBox*>(target);
        QLineEdit* edit = combo ? combo->lineEdit() : qobject_cast<QLineEdit*>(target);
        auto text = [&] { return edit ? edit->text() : target->property("plainText").toString(); };
        const QString group = dialog.cmbGroup->currentText();
        if (edit)
            edit->setText(before);
        target->setFocus();
        for (int i = 0; i < beeps; ++i)
            m_prompts.expectBeep();
        for (int key : keys)
            pressKey(key);
        QTEST(text(), "after");
        QCOMPARE(dialog.cmbGroup->currentText(), group);
        QCOMPARE(QApplication::focusWidget() ? QApplication::focusWidget()->objectName() : QString(), focus);
        QVERIFY(dialog.isVisible());
        QCOMPARE(rows(), focus == u"txtFamilyName" ? 5 : 4); // only Enter in the number box saved
    }

    void giftsByKind()
    {
        m_program.stop();
        const std::tuple<QVariant, QString, QString, const char*> gifts[] = {
            {0, "500", "₪500", "optPresCheck"}, {1, "100", "₪100", "optPresCashe"}, {2, "כלי מטבח", "כלי מטבח", "optPresDiff"},
            {QVariant(), "300", "300", "optPresCheck"}, {7, "50", "₪50", "optPresCheck"}}; // 7: a kind never written
        for (const auto& [kind, present, cell, option] : gifts) {
            QVariantMap fields = test::invitation("מתנה", cell, 2, 1);
            fields.insert({{"PRESENT_TYPE", kind}, {"PRESENT", present}});
            m_wedding->addInvitation(fields);
        }
        QVERIFY(m_program.start(m_wedding->folder()));
        QCOMPARE(m_program.main().panel(2)->text(), "מתנות ₪600"); // cheque and cash only
        int row = 5;
        for (const auto& [kind, present, cell, option] : gifts) {
            QCOMPARE(m_program.main().listModel().cellText(row, 9), cell); // the gift as the list shows it
            ui::InvitationDialog& dialog = openUpdate(row, row, "האם לעדכן את ההזמנה למתנה " + cell + "?");
            ++row;
            QVERIFY(dialog.findChild<QRadioButton*>(option)->isChecked());
            QCOMPARE(dialog.txtPresent->text(), present);
            QCOMPARE(dialog.lblShekel->isHidden(), kind == 2);
            dialog.cmdCancel->click();
        }
    }
};

VELMORA_TEST_MAIN(InvitationTest)
#include "test_invitation.moc"
