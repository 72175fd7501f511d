#include "RunningProgram.h"
#include "TestMain.h"
#include "TestWedding.h"

#include "app/Wedding.h"
#include "app/ui/MainWindow.h"
#include "guests/Invitation.h"
#include "guests/ui/InvitationDialog.h"
#include "seating/ui/TableMapWindow.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QTableView>

using namespace velmora;
using guests::InvitationForm;

namespace {

const QString Duplicate = QStringLiteral("קיימת כבר הזמנה זהה ברשימה.");

InvitationForm named(const QString& family, const QString& first)
{
    InvitationForm form;
    form.familyName = family;
    form.firstName = first;
    return form;
}

void press(QWidget* field, Qt::Key key, const QString& text = {})
{
    QKeyEvent down(QEvent::KeyPress, key, Qt::NoModifier, text);
    QApplication::sendEvent(field, &down);
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

    store::Recordset row(const QString& family, const QString& first) { return m_wedding->row(family, first); }

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

    void cleanup()
    {
        m_program.stop();
        m_prompts.verifyDone();
    }

    void theChecksComeInTheirOrder_data()
    {
        QTest::addColumn<QString>("family");
        QTest::addColumn<QString>("first");
        QTest::addColumn<QString>("invNum");
        QTest::addColumn<QString>("field");
        QTest::addColumn<QString>("value");
        QTest::addColumn<QString>("message");

        const QString longest = QString(21, QChar(u'א'));
        QTest::newRow("1 empty name") << "  " << "דנה" << "0" << "" << "" << "השדות שם משפחה\\פרטי אינם יכולים להיות ריקים.";
        QTest::newRow("2 long name") << longest << "דנה" << "0" << "" << "" << "השדות שם משפחה\\פרטי מוגבלים לגודל של 20 תווים.";
        QTest::newRow("3 no people") << "לוי" << "דנה" << "abc" << "remark" << QString(41, u'x')
                                     << "השדה מס' מוזמנים חייב להכיל מספר הגדול מאפס.";
        QTest::newRow("4 remark") << "לוי" << "דנה" << "2" << "remark" << QString(41, u'x') << "השדה הערות מוגבל לגודל של 40 תווים.";
        QTest::newRow("5 phones") << "לוי" << "דנה" << "2" << "phones" << QString(31, u'5') << "השדה טלפונים מוגבל לגודל של 30 תווים.";
        QTest::newRow("6 address") << "לוי" << "דנה" << "2" << "address" << QString(51, u'x') << "השדה כתובת מוגבל לגודל של 50 תווים.";
        QTest::newRow("7 gift length") << "לוי" << "דנה" << "2" << "present" << QString(21, u'1') << "השדה מתנה מוגבל לגודל של 20 תווים.";
        QTest::newRow("8 gift not a number") << "לוי" << "דנה" << "2" << "present" << "מאה" << "השדה מתנה חייב להיות מספרי.";
        QTest::newRow("9 no such table") << "לוי" << "דנה" << "2" << "table" << "21" << "מספר השולחן אינו קיים במערכת.";
        QTest::newRow("10 seating a no") << "לוי" << "דנה" << "2" << "notcoming" << "3" << "הושבת אורח שלא מגיע לשולחן אינה אפשרית";
        QTest::newRow("11 table full") << "לוי" << "דנה" << "1" << "table" << "4" << "לא ניתן להושיב יותר מ- 15 איש בשולחן";
    }

    void theChecksComeInTheirOrder()
    {
        QFETCH(QString, family);
        QFETCH(QString, first);
        QFETCH(QString, invNum);
        QFETCH(QString, field);
        QFETCH(QString, value);
        QFETCH(QString, message);
        InvitationForm form = named(family, first);
        form.invNum = invNum;
        if (field == u"remark")
            form.remark = value;
        else if (field == u"phones")
            form.phones = value;
        else if (field == u"address")
            form.address = value;
        else if (field == u"present")
            form.present = value;
        else if (field == u"table")
            form.tableNo = value;
        else if (field == u"notcoming") {
            form.confirmNotOk = true;
            form.tableNo = value;
        }
        ui::InvitationDialog& dialog = openAdd();
        dialog.setForm(form);
        dialog.tabs()->setCurrentIndex(2);
        m_prompts.expectMessage(PromptIcon::None, message);
        dialog.cmdOK->click();
        QVERIFY(dialog.isVisible()); // the window stays, with all that was typed
        QCOMPARE(dialog.tabs()->currentIndex(), 2);
        QCOMPARE(dialog.form().familyName, family);
        QCOMPARE(m_wedding->count(QStringLiteral("select * from VELMORA_LIST")), 4);
    }

    void whatPassesTheChecks()
    {
        WeddingState& s = m_wedding->state;
        auto seated = [](int table) { return quint8(table == 4 ? 15 : table == 5 ? 13 : 0); };
        InvitationForm form = named(QStringLiteral("  ") + QString(18, QChar(u'א')) + QStringLiteral(" "), QStringLiteral("דנה"));
        form.invNum = QStringLiteral("12"); // typed: the list ends at 8
        QVERIFY(!guests::CheckInvitation(s, form, seated, 0));
        form.present = QStringLiteral("כלי מטבח");
        form.gift = InvitationForm::Gift::Other;
        QVERIFY(!guests::CheckInvitation(s, form, seated, 0));
        form.invNum = QStringLiteral("2");
        form.tableNo = QStringLiteral("20"); // exactly MaxTables
        QVERIFY(!guests::CheckInvitation(s, form, seated, 0));
        form.tableNo = QStringLiteral("5"); // 13 + 2 fills it exactly
        QVERIFY(!guests::CheckInvitation(s, form, seated, 0));
        form.invNum = QStringLiteral("3");
        QVERIFY(guests::CheckInvitation(s, form, seated, 0));
        form.tableNo = QStringLiteral("0");
        form.confirmNotOk = true;
        QVERIFY(!guests::CheckInvitation(s, form, seated, 0)); // no table: a "no" passes
        // An update at a full table counts its own people out.
        form = named(QStringLiteral("לוי"), QStringLiteral("רון"));
        form.tableNo = QStringLiteral("4");
        form.invNum = QStringLiteral("3");
        QVERIFY(!guests::CheckInvitation(s, form, seated, 3));
        form.invNum = QStringLiteral("4");
        QVERIFY(guests::CheckInvitation(s, form, seated, 3));
    }

    void addingByEnterKeepsTheDialogForTheNext()
    {
        ui::InvitationDialog& dialog = openAdd();
        QCOMPARE(dialog.windowTitle(), QStringLiteral("הוספת פרטי הזמנה חדשה למערכת"));
        QCOMPARE(dialog.cmbInvNum->currentText(), QStringLiteral("2"));
        QCOMPARE(dialog.cmbGroup->currentText(), m_state.CoupleName);
        QCOMPARE(dialog.cmbTableNo->count(), 20);
        QCOMPARE(dialog.cmbTableNo->currentText(), QString());
        dialog.cmbGroup->setCurrentIndex(2);
        dialog.txtFamilyName->setText(QStringLiteral(" ד'אמיקו "));
        dialog.txtFirstName->setText(QStringLiteral("שירה ״הגדולה״"));
        dialog.txtPhones->setText(QStringLiteral("03-5551234"));
        dialog.cmbTableNo->setEditText(QStringLiteral("0"));
        dialog.optPresCashe->setChecked(true);
        dialog.txtPresent->setText(QStringLiteral("100"));
        press(dialog.txtFirstName, Qt::Key_Return);

        QVERIFY(dialog.isVisible());
        QCOMPARE(dialog.txtFamilyName->text(), QString());
        QCOMPARE(dialog.cmbInvNum->currentText(), QStringLiteral("2"));
        QCOMPARE(dialog.cmbGroup->currentText(), m_state.HerFamily); // the next starts in the same group
        QVERIFY(dialog.optPresCheck->isChecked());
        store::Recordset stored = row(QStringLiteral("ד'אמיקו"), QStringLiteral("שירה ״הגדולה״"));
        QCOMPARE(stored.recordCount(), 1);
        QCOMPARE(stored.value(QStringLiteral("LIST_GROUP")).toString(), QStringLiteral("3"));
        QCOMPARE(stored.value(QStringLiteral("TABLE_NO")), QVariant(0)); // an addition keeps "0"
        QCOMPARE(stored.value(QStringLiteral("PRESENT_TYPE")), QVariant(1));
        QCOMPARE(stored.value(QStringLiteral("PRESENT")).toString(), QStringLiteral("100"));
        QCOMPARE(stored.value(QStringLiteral("ADDRESS")).toString(), QString());
        QCOMPARE(m_state.InvCount, qint16(5)); // the list behind shows it
        QCOMPARE(m_program.map().itemText(4), QStringLiteral("שולחן של 15"));

        m_prompts.expectMessage(PromptIcon::None, QStringLiteral("השדות שם משפחה\\פרטי אינם יכולים להיות ריקים."));
        press(dialog.txtFamilyName, Qt::Key_Enter);

        // "שמור" stores and closes; the same pair again is a duplicate.
        dialog.setForm(named(QStringLiteral("ד'אמיקו"), QStringLiteral("שירה ״הגדולה״ ")));
        m_prompts.expectMessage(PromptIcon::None, Duplicate);
        dialog.cmdOK->click();
        dialog.txtFirstName->setText(QStringLiteral("שירה"));
        dialog.optPresDiff->setChecked(true);
        dialog.txtPresent->setText(QStringLiteral("  סט כוסות "));
        dialog.cmbTableNo->setEditText(QStringLiteral("5"));
        dialog.chkConfirmNotOk->setChecked(true);
        dialog.cmbTableNo->setEditText(QString());
        dialog.cmdOK->click();
        QVERIFY(!dialog.isVisible());
        store::Recordset other = row(QStringLiteral("ד'אמיקו"), QStringLiteral("שירה"));
        QCOMPARE(other.value(QStringLiteral("PRESENT")).toString(), QStringLiteral("סט כוסות"));
        QCOMPARE(other.value(QStringLiteral("CONFIRM")), QVariant(2));
        QVERIFY(other.value(QStringLiteral("TABLE_NO")).isNull());
    }

    void duplicatesAreExactPairsOverAllRows()
    {
        // A filter hides "טל אור" (not coming): it is still found.
        m_program.main().action(QStringLiteral("mnuIgnoreCnfNotOk"))->trigger();
        ui::InvitationDialog& dialog = openAdd();
        dialog.setForm(named(QStringLiteral("טל"), QStringLiteral("אור")));
        m_prompts.expectMessage(PromptIcon::None, Duplicate);
        dialog.cmdOK->click();
        // Case counts: another pair.
        dialog.setForm(named(QStringLiteral("Tal"), QStringLiteral("Or")));
        dialog.cmdOK->click();
        QVERIFY(!dialog.isVisible());
        openAdd().setForm(named(QStringLiteral("tal"), QStringLiteral("Or")));
        dialog.cmdOK->click();
        QCOMPARE(m_wedding->count(QStringLiteral("select * from VELMORA_LIST where FIRST_NAME = 'Or'")), 2);
    }

    void tooManyPeopleAreRefusedByTheStoreWithItsMessage()
    {
        ui::InvitationDialog& dialog = openAdd();
        InvitationForm form = named(QStringLiteral("ענק"), QStringLiteral("משפחה"));
        form.invNum = QStringLiteral("300");
        dialog.setForm(form);
        m_prompts.expectMessage(PromptIcon::None,
                                QStringLiteral("ארעה שגיאה בנסיון הכנסת נתוני ההזמנה החדשים.\r\nהערך חורג מהתחום של השדה 'INV_NUM'."),
                                QStringLiteral("Err# 3349"));
        dialog.cmdOK->click();
        QVERIFY(dialog.isVisible());
        QCOMPARE(dialog.cmbInvNum->currentText(), QStringLiteral("300"));
        QCOMPARE(m_wedding->count(QStringLiteral("select * from VELMORA_LIST")), 4); // no half row
    }

    void updatingARowAtAFullTable()
    {
        // Grid row 2 is לוי רון, 3 people at table 4, which holds 15.
        ui::InvitationDialog& dialog = openUpdate(2, 2, QStringLiteral("האם לעדכן את ההזמנה ללוי רון?"));
        QCOMPARE(dialog.windowTitle(), QStringLiteral("עידכון פרטי הזמנה נוכחית במערכת"));
        QVERIFY(dialog.rowOpen());
        QCOMPARE(dialog.txtFamilyName->text(), QStringLiteral("לוי"));
        QCOMPARE(dialog.cmbTableNo->currentText(), QStringLiteral("4"));
        QCOMPARE(dialog.cmbInvNum->currentText(), QStringLiteral("3"));
        QVERIFY(dialog.chkConfirmOk->isChecked());
        QCOMPARE(m_state.SavedRow, qint16(2));

        dialog.cmbInvNum->setEditText(QStringLiteral("4"));
        m_prompts.expectMessage(PromptIcon::None, QStringLiteral("לא ניתן להושיב יותר מ- 15 איש בשולחן"));
        dialog.cmdOK->click();
        dialog.cmbInvNum->setEditText(QStringLiteral("3"));
        dialog.cmbTableNo->setEditText(QStringLiteral("5")); // 13 there: a move counts in full
        m_prompts.expectMessage(PromptIcon::None, QStringLiteral("לא ניתן להושיב יותר מ- 15 איש בשולחן"));
        dialog.cmdOK->click();
        QVERIFY(dialog.rowOpen()); // still open for the next try

        // While the dialog holds the row, the list reloads under another filter and group.
        m_program.main().action(QStringLiteral("mnuIgnoreNotCnf"))->trigger();
        m_program.main().cmbUserGroups()->setCurrentIndex(2);
        emit m_program.main().cmbUserGroups()->activated(2);

        dialog.cmbTableNo->setEditText(QStringLiteral("0"));
        dialog.txtPhones->setText(QStringLiteral("052-7654321"));
        dialog.cmdOK->click();
        QVERIFY(!dialog.isVisible());
        QVERIFY(!dialog.rowOpen());
        store::Recordset stored = row(QStringLiteral("לוי"), QStringLiteral("רון"));
        QCOMPARE(stored.value(QStringLiteral("PHONES")).toString(), QStringLiteral("052-7654321"));
        QCOMPARE(stored.value(QStringLiteral("INV_NUM")), QVariant(3));
        QVERIFY(stored.value(QStringLiteral("TABLE_NO")).isNull()); // an update empties "0"
        QCOMPARE(row(QStringLiteral("כהן"), QStringLiteral("דנה")).value(QStringLiteral("PHONES")).toString(),
                 QStringLiteral("050"));
        QCOMPARE(m_program.map().itemText(4), QStringLiteral("שולחן של 12"));
    }

    void keepingTheNamesIsNoDuplicateButTakingAnothersIs()
    {
        ui::InvitationDialog& dialog = openUpdate(1, 1, QStringLiteral("האם לעדכן את ההזמנה לכהן דנה?"));
        dialog.txtFirstName->setText(QStringLiteral("רון"));
        dialog.txtFamilyName->setText(QStringLiteral("לוי"));
        m_prompts.expectMessage(PromptIcon::None, Duplicate);
        press(dialog.txtPhones, Qt::Key_Return);
        dialog.txtFamilyName->setText(QStringLiteral("כהן"));
        dialog.txtFirstName->setText(QStringLiteral("דנה "));
        dialog.txtRemark->setPlainText(QStringLiteral("צמחונית"));
        press(dialog.txtPhones, Qt::Key_Return); // Enter saves and keeps the window, cleared
        QVERIFY(dialog.isVisible());
        QVERIFY(!dialog.rowOpen());
        QCOMPARE(dialog.txtFamilyName->text(), QString());
        QCOMPARE(row(QStringLiteral("כהן"), QStringLiteral("דנה")).value(QStringLiteral("REMARK")).toString(),
                 QStringLiteral("צמחונית"));
        dialog.cmdOK->click(); // nothing open any more: the window closes
        QVERIFY(!dialog.isVisible());

        // Answering No opens nothing.
        m_prompts.expectQuestion(QStringLiteral("האם לעדכן את ההזמנה לכהן דנה?"), PromptAnswer::No);
        m_program.main().UpdateInv();
        QVERIFY(!dialog.isVisible());
    }

    void severalRowsGetOnlyTheSentFlag()
    {
        // Swept upward from row 4 to row 2.
        ui::InvitationDialog& dialog = openUpdate(4, 2, QStringLiteral("האם לעדכן את קבוצת המוזמנים?"));
        QCOMPARE(m_state.InvRowFrom, qint16(2));
        QCOMPARE(m_state.InvRowTo, qint16(4));
        QVERIFY(m_state.InvMulti);
        QVERIFY(dialog.txtFamilyName->isHidden());
        QVERIFY(dialog.cmbTableNo->isHidden());
        QVERIFY(dialog.optPresDiff->isHidden());
        QVERIFY(!dialog.chkInvSent->isHidden());
        QVERIFY(!dialog.rowOpen());
        dialog.chkInvSent->setChecked(true);
        dialog.cmdOK->click();
        QVERIFY(!dialog.isVisible());
        QVERIFY(!dialog.txtFamilyName->isHidden()); // the fields are back for next time
        store::Recordset all = m_wedding->open().openRecordset(QStringLiteral("select * from VELMORA_LIST"));
        QStringList sent;
        for (; !all.eof(); all.moveNext()) {
            if (all.value(QStringLiteral("INV_STATUS")).toBool())
                sent << all.value(QStringLiteral("FAMILY_NAME")).toString();
        }
        QCOMPARE(sent, QStringList({"לוי", "גבאי", "טל"}));
        QCOMPARE(row(QStringLiteral("גבאי"), QStringLiteral("שי")).value(QStringLiteral("TABLE_NO")), QVariant(5));
        QCOMPARE(m_state.SavedRow, qint16(4));
    }

    void keysAreFilteredWithABeep()
    {
        ui::InvitationDialog& dialog = openAdd();
        dialog.cmbInvNum->setFocus();
        m_prompts.expectBeep().expectBeep();
        press(dialog.cmbInvNum->lineEdit(), Qt::Key_A, QStringLiteral("a"));
        press(dialog.cmbInvNum->lineEdit(), Qt::Key_Backspace, QStringLiteral("\b"));
        QCOMPARE(dialog.cmbInvNum->currentText(), QStringLiteral("2"));
        m_prompts.expectBeep();
        press(dialog.cmbTableNo->lineEdit(), Qt::Key_Minus, QStringLiteral("-"));
        m_prompts.expectBeep();
        press(dialog.cmbGroup, Qt::Key_B, QStringLiteral("ב"));

        // Enter in the number box stores, then beeps.
        dialog.setForm(named(QStringLiteral("אדלר"), QStringLiteral("נועם")));
        m_prompts.expectBeep();
        press(dialog.cmbInvNum->lineEdit(), Qt::Key_Return);
        QCOMPARE(m_wedding->count(QStringLiteral("select * from VELMORA_LIST where FAMILY_NAME = 'אדלר'")), 1);

        // Enter in the remark is a new line; Escape does nothing.
        dialog.txtRemark->setFocus();
        QTest::keyClick(dialog.txtRemark, Qt::Key_Return);
        QCOMPARE(dialog.txtRemark->toPlainText(), QStringLiteral("\n"));
        QTest::keyClick(&dialog, Qt::Key_Escape);
        QVERIFY(dialog.isVisible());
        dialog.cmdCancel->click();
        QVERIFY(!dialog.isVisible());
        QCOMPARE(m_wedding->count(QStringLiteral("select * from VELMORA_LIST")), 5);
    }


    void aLongPasteIsRefusedNotCut()
    {
        ui::InvitationDialog& dialog = openAdd();
        const QString paste = QString(200, QChar(u'ש'));
        for (QLineEdit* field : {dialog.txtFamilyName, dialog.txtFirstName, dialog.txtPhones, dialog.txtPresent})
            field->setText(paste);
        dialog.txtAddress->setPlainText(paste);
        dialog.txtRemark->setPlainText(paste);
        m_prompts.expectMessage(PromptIcon::None, QStringLiteral("השדות שם משפחה\\פרטי מוגבלים לגודל של 20 תווים."));
        dialog.cmdOK->click();
        QCOMPARE(dialog.txtAddress->toPlainText(), paste);
    }

    void groupsByPositionOnceTheOptionsWereApplied()
    {
        m_program.stop();
        WeddingState& s = m_wedding->state;
        s.NumOfGroups = 5;
        s.UserGroups = {s.CoupleName, s.HisFamily, s.HerFamily, QStringLiteral("חברים"), QStringLiteral("עבודה")};
        SaveOptions(s);
        m_wedding->addInvitation(test::invitation("אדלר", "נועם", 2, 1, QVariant(), "050", "5"));
        QVERIFY(m_program.start(m_wedding->folder()));
        ui::InvitationDialog& dialog = openAdd();
        QCOMPARE(dialog.cmbGroup->count(), 5);
        dialog.setForm(named(QStringLiteral("ברק"), QStringLiteral("גל")));
        dialog.cmbGroup->setCurrentText(QStringLiteral("חברים"));
        dialog.cmdOK->click();
        QCOMPARE(row(QStringLiteral("ברק"), QStringLiteral("גל")).value(QStringLiteral("LIST_GROUP")).toString(),
                 QStringLiteral("4"));
        ui::InvitationDialog& update = openUpdate(5, 5, QStringLiteral("האם לעדכן את ההזמנה לאדלר נועם?"));
        QCOMPARE(update.cmbGroup->currentText(), QStringLiteral("עבודה"));
        update.cmdCancel->click();
    }
};

VELMORA_TEST_MAIN(InvitationTest)
#include "test_invitation.moc"
