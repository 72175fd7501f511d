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

class UpgradeTest : public QObject {
    Q_OBJECT

private slots:
    // What an earlier version left out is added, once, and its rows stay (the first had ten fields, no budget).
    void onlyWhatIsMissingIsAdded_data()
    {
        QTest::addColumn<int>("columns");
        QTest::addColumn<bool>("budget");
        QTest::newRow("the first version") << 10 << false;
        QTest::newRow("the gift missing") << 12 << true;
        QTest::newRow("the budget missing") << 13 << false;
        QTest::newRow("nothing missing") << 13 << true;
    }

    void onlyWhatIsMissingIsAdded()
    {
        QFETCH(int, columns);
        QFETCH(bool, budget);
        test::TestWedding wedding;
        { // the file as the earlier version made it
            PendingFailure pending;
            Database db = Database::create(wedding.state.databaseFile());
            const auto& fields = listFields();
            appendTable(db, ListTable, std::vector<FieldDef>(fields.begin(), fields.begin() + columns), pending);
            if (budget)
                appendTable(db, BudgetTable, budgetFields(), pending);
            QVERIFY(!pending);
        }
        for (int i = 0; i < 3; ++i)
            wedding.addInvitation(test::invitation(QStringLiteral("משפחה %1").arg(i), "א", i + 1, 1, 4, "03", "2"));
        test::ScriptedPrompts prompts;
        if (columns < 13 || !budget)
            prompts.expectMessage(PromptIcon::None, QStringLiteral("תהליך שידרוג מבנה הנתונים הסתיים בהצלחה."));
        guests::GuestListModel model;
        guests::InitList(wedding.state, prompts, model, wedding.state.AllGuests, {}, {});
        QVERIFY(prompts.verifyDone());
        QCOMPARE(wedding.open().tableDef(ListTable).fields(), listFields());
        QCOMPARE(wedding.open().tableDef(BudgetTable).fields(), budgetFields());
        QCOMPARE(wedding.count(QStringLiteral("select * from VELMORA_BUDGET")), 0);
        QCOMPARE(wedding.count(QStringLiteral("select * from VELMORA_LIST where INV_NUM = 1 and TABLE_NO = 4 and "
                                              "ADDRESS is null and PRESENT is null")), 1);
        QCOMPARE(model.cellText(1, 8) + model.cellText(1, 9), QString()); // no address or gift shown, none counted
        QVERIFY(wedding.state.PresentTotal == 0 && wedding.state.GuestsConfirmed == 6);
        guests::InitList(wedding.state, prompts, model, wedding.state.AllGuests, {}, {}); // the next load is silent
    }
};

VELMORA_TEST_MAIN(UpgradeTest)
#include "test_upgrade.moc"
