#include "ScriptedPrompts.h"
#include "TestMain.h"
#include "TestWedding.h"

#include "app/PendingFailure.h"
#include "guests/GuestList.h"
#include "guests/GuestListModel.h"
#include "store/Schema.h"
#include "store/Upgrade.h"

using namespace velmora;
using namespace velmora::store;

namespace {

const QString Upgraded = QStringLiteral("תהליך שידרוג מבנה הנתונים הסתיים בהצלחה.");

// A wedding file as the earlier version made it: the first ten fields, no budget.
void createEarlierLayout(const QString& path, int columns = 10, bool budget = false)
{
    PendingFailure pending;
    Database db = Database::create(path);
    const auto& fields = listFields();
    appendTable(db, ListTable, std::vector<FieldDef>(fields.begin(), fields.begin() + columns), pending);
    if (budget)
        appendTable(db, BudgetTable, budgetFields(), pending);
    QVERIFY(!pending);
}

} // namespace

class UpgradeTest : public QObject {
    Q_OBJECT

private slots:
    void anEarlierFileIsBroughtUpToDateOnceKeepingItsRows()
    {
        test::TestWedding wedding;
        createEarlierLayout(wedding.state.databaseFile());
        for (int i = 0; i < 3; ++i)
            wedding.addInvitation({{"FAMILY_NAME", QStringLiteral("משפחה %1").arg(i)}, {"FIRST_NAME", "א"},
                                   {"INV_NUM", i + 1}, {"CONFIRM", 1}, {"REMARK", ""}, {"PHONES", "03"},
                                   {"LIST_GROUP", "2"}, {"TABLE_NO", 4}, {"INV_STATUS", true}});

        test::ScriptedPrompts prompts;
        prompts.expectMessage(PromptIcon::None, Upgraded);
        guests::GuestListModel model;
        guests::InitList(wedding.state, prompts, model, wedding.state.AllGuests, {}, {});
        QVERIFY(prompts.verifyDone());

        Database db = wedding.open();
        QCOMPARE(db.tableDef(BudgetTable).fields(), budgetFields());
        QCOMPARE(db.openRecordset(QStringLiteral("select * from VELMORA_BUDGET")).recordCount(), 0);
        Recordset rs = db.openRecordset(QStringLiteral("select * from VELMORA_LIST order by FAMILY_NAME"));
        QCOMPARE(rs.recordCount(), 3);
        QCOMPARE(rs.value(QStringLiteral("INV_NUM")).toInt(), 1);
        QCOMPARE(rs.value(QStringLiteral("TABLE_NO")).toInt(), 4);
        QVERIFY(rs.value(QStringLiteral("ADDRESS")).isNull());
        QVERIFY(rs.value(QStringLiteral("PRESENT")).isNull());
        db.close();
        // Upgraded rows show empty address and gift, and count no money.
        QCOMPARE(model.cellText(1, 8), QString());
        QCOMPARE(model.cellText(1, 9), QString());
        QCOMPARE(wedding.state.PresentTotal, 0);
        QCOMPARE(wedding.state.GuestsConfirmed, 6);

        // The next load is silent.
        guests::InitList(wedding.state, prompts, model, wedding.state.AllGuests, {}, {});
    }

    void onlyWhatIsMissingIsAdded_data()
    {
        QTest::addColumn<int>("columns");
        QTest::addColumn<bool>("budget");
        QTest::addColumn<bool>("upgraded");
        QTest::newRow("the gift missing") << 12 << true << true;
        QTest::newRow("the budget missing") << 13 << false << true;
        QTest::newRow("nothing missing") << 13 << true << false;
    }

    void onlyWhatIsMissingIsAdded()
    {
        QFETCH(int, columns);
        QFETCH(bool, budget);
        QFETCH(bool, upgraded);
        test::TestWedding wedding;
        createEarlierLayout(wedding.state.databaseFile(), columns, budget);
        test::ScriptedPrompts prompts;
        if (upgraded)
            prompts.expectMessage(PromptIcon::None, Upgraded);
        wedding.state.WeddingDb = wedding.open();
        QVERIFY(UpdateDatabase(wedding.state, prompts));
        QCOMPARE(wedding.open().tableDef(ListTable).fields(), listFields());
        QCOMPARE(wedding.open().tableDefCount(), 2);
    }

    void aFileThatIsNoWeddingIsCritical()
    {
        test::TestWedding wedding;
        {
            Database db = Database::create(wedding.state.databaseFile());
            TableDef other = db.createTableDef(QStringLiteral("OTHER"));
            other.appendField(other.createField(QStringLiteral("A"), FieldType::Byte));
            db.appendTableDef(other);
        }
        test::ScriptedPrompts prompts;
        prompts.expectMessage(PromptIcon::Critical,
                              QStringLiteral("!ארעה שגיאה קריטית בתהליך שדרוג התוכנה\r\nwww.velmora.co.il\r\nsupport@velmora.co.il"),
                              QStringLiteral("שדרוג גירסת תוכנה"));
        wedding.state.WeddingDb = wedding.open();
        QVERIFY(!UpdateDatabase(wedding.state, prompts));
    }
};

VELMORA_TEST_MAIN(UpgradeTest)
#include "test_upgrade.moc"
