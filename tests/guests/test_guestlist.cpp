#include "ScriptedPrompts.h"
#include "TestMain.h"
#include "TestWedding.h"

#include "guests/GuestList.h"
#include "guests/GuestListModel.h"

#include <QAbstractItemModelTester>
#include <QFont>

using namespace velmora;
using namespace velmora::guests;

namespace {

QVariantMap with(QVariantMap map, const QVariantMap& more)
{
    for (auto it = more.begin(); it != more.end(); ++it)
        map[it.key()] = it.value();
    return map;
}

} // namespace

class GuestListTest : public QObject {
    Q_OBJECT

private slots:
    void theQueryFollowsFiltersGroupAndOrder_data()
    {
        QTest::addColumn<bool>("hideNotComing");
        QTest::addColumn<bool>("hideNotConfirmed");
        QTest::addColumn<QString>("group");
        QTest::addColumn<QString>("order");
        QTest::addColumn<QString>("sql");

        const QString all = QStringLiteral("כל האורחים");
        const QString friends = QStringLiteral("חברים");
        QTest::newRow("all") << false << false << all << "" << "select * from VELMORA_LIST";
        QTest::newRow("all sorted") << false << false << all << "FAMILY_NAME"
                                    << "select * from VELMORA_LIST order by FAMILY_NAME ASC";
        QTest::newRow("not coming hidden") << true << false << all << ""
                                           << "select * from VELMORA_LIST where (CONFIRM <> 2)";
        QTest::newRow("unconfirmed hidden") << false << true << all << "TABLE_NO"
                                            << "select * from VELMORA_LIST where (CONFIRM between 1 and 2) order by TABLE_NO ASC";
        QTest::newRow("both hidden") << true << true << all << "" << "select * from VELMORA_LIST where (CONFIRM = 1)";
        QTest::newRow("group") << false << false << friends << ""
                               << "select * from VELMORA_LIST where LIST_GROUP = '4'";
        QTest::newRow("group sorted") << false << false << friends << "PRESENT"
                                      << "select * from VELMORA_LIST where LIST_GROUP = '4' order by PRESENT ASC";
        QTest::newRow("group, first filter, sorted")
            << true << false << friends << "FAMILY_NAME"
            << "select * from VELMORA_LIST where (CONFIRM <> 2) and (LIST_GROUP = '4') order by FAMILY_NAME ASC";
        QTest::newRow("group, second filter") << false << true << friends << ""
                                              << "select * from VELMORA_LIST where (CONFIRM between 1 and 2) and (LIST_GROUP = '4')";
        QTest::newRow("group, both filters") << true << true << friends << ""
                                             << "select * from VELMORA_LIST where (CONFIRM = 1) and (LIST_GROUP = '4')";
        QTest::newRow("unknown group") << false << false << QStringLiteral("אין כזו") << ""
                                       << "select * from VELMORA_LIST where LIST_GROUP = '0'";
    }

    void theQueryFollowsFiltersGroupAndOrder()
    {
        QFETCH(bool, hideNotComing);
        QFETCH(bool, hideNotConfirmed);
        QFETCH(QString, group);
        QFETCH(QString, order);
        QFETCH(QString, sql);
        test::TestWedding wedding;
        wedding.state.NumOfGroups = 5;
        wedding.state.UserGroups = {wedding.state.CoupleName, wedding.state.HisFamily, wedding.state.HerFamily,
                                    QStringLiteral("חברים"), QStringLiteral("עבודה")};
        ListView view{hideNotComing, hideNotConfirmed, order.isEmpty() ? QString() : QStringLiteral("ASC")};
        QCOMPARE(ListSql(wedding.state, group, order, view), sql);
    }

    void groupNumbersComeFromTheNamesOrTheGroupList()
    {
        test::TestWedding wedding;
        WeddingState& s = wedding.state;
        QCOMPARE(GroupNumber(s, s.CoupleName), 1);
        QCOMPARE(GroupNumber(s, s.HisFamily), 2);
        QCOMPARE(GroupNumber(s, s.HerFamily), 3);
        QCOMPARE(GroupNumber(s, QStringLiteral("חברים")), 0);
        s.HerFamily = s.HisFamily; // the bride's name is tested before the groom's
        QCOMPARE(GroupNumber(s, s.HisFamily), 3);

        s.NumOfGroups = 4;
        s.UserGroups = {QStringLiteral("א"), QStringLiteral("ב"), QStringLiteral("ג"), QStringLiteral("ד")};
        QCOMPARE(GroupNumber(s, QStringLiteral("ד")), 4);
        QCOMPARE(GroupNumber(s, s.CoupleName), 0);
        QCOMPARE(GroupNumber(s, QStringLiteral("ד ")), 0); // exact
        QVERIFY(CheckEvenNum(0) && CheckEvenNum(-2) && !CheckEvenNum(3));
    }

    void rowsCellsAndTotalsAsShown()
    {
        test::TestWedding wedding;
        wedding.createDatabase();
        wedding.addInvitation(with(test::invitation("כהן", "דנה", 2, 1), {{"TABLE_NO", 3}, {"INV_STATUS", true},
                                                                     {"PRESENT_TYPE", 1}, {"PRESENT", "500"},
                                                                     {"ADDRESS", QStringLiteral("הרצל 5, חיפה")}}));
        wedding.addInvitation(with(test::invitation("לוי", "רון", 3, 2), {{"PRESENT_TYPE", 0}, {"PRESENT", "250.5 בצ'ק"}}));
        wedding.addInvitation(with(test::invitation("גבאי", "שי", 1, 3), {{"PRESENT_TYPE", 2}, {"PRESENT", QStringLiteral("מצעים")}}));
        wedding.addInvitation(with(test::invitation("ברק", "גיל", 4, 0), {{"PRESENT_TYPE", 0}, {"PRESENT", "100.5"}}));
        wedding.addInvitation(with(test::invitation("טל", "אור", 2, 2), {{"PRESENT", "300"}})); // kind unknown: no money
        test::ScriptedPrompts prompts;
        GuestListModel model;
        QAbstractItemModelTester tester(&model);

        const ListOutcome outcome = InitList(wedding.state, prompts, model, wedding.state.AllGuests, {}, {});
        QVERIFY(!outcome.endProgram && outcome.hasRows && outcome.dialEnabled);
        QCOMPARE(outcome.caption, QStringLiteral("רשימה של כל האורחים"));
        QCOMPARE(model.rowCount(), 5);
        QCOMPARE(model.cellText(1, 0), QStringLiteral("כהן"));
        QCOMPARE(model.cellText(1, 3), QStringLiteral("2"));
        QCOMPARE(model.cellText(1, 5), QStringLiteral("מגיע"));
        QCOMPARE(model.cellText(1, 6), QStringLiteral("3"));
        QCOMPARE(model.cellText(1, 7), QStringLiteral("נשלחה"));
        QCOMPARE(model.cellText(1, 8), QStringLiteral("הרצל 5, חיפה"));
        QCOMPARE(model.cellText(1, 9), QStringLiteral("₪500"));
        QCOMPARE(model.cellText(2, 5), QStringLiteral("לא"));
        QCOMPARE(model.cellText(2, 6), QString());
        QCOMPARE(model.cellText(2, 7), QString());
        QCOMPARE(model.cellText(3, 5), QStringLiteral("??"));
        QCOMPARE(model.cellText(3, 9), QStringLiteral("מצעים"));
        QCOMPARE(model.cellText(4, 5), QString());
        QCOMPARE(model.cellText(5, 9), QStringLiteral("300"));

        // Money gifts only, by leading number, rounded half to even after each addition:
        // 500, then 750.5 -> 750, then 850.5 -> 850.
        QCOMPARE(wedding.state.PresentTotal, 850);
        QCOMPARE(wedding.state.InvCount, qint16(5));
        QCOMPARE(wedding.state.GuestsConfirmed, qint16(2));
        QCOMPARE(wedding.state.GuestsNotComing, qint16(5));
        QCOMPARE(wedding.state.GuestsUnknown, qint16(5));
        QCOMPARE(outcome.panels[1], QStringLiteral("מתנות ₪850"));
        QCOMPARE(outcome.panels[2], QStringLiteral("אישרו שלא מגיעים  5"));
        QCOMPARE(outcome.panels[3], QStringLiteral("ממתינים לאישור  5"));
        QCOMPARE(outcome.panels[4], QStringLiteral("אישרו שמגיעים  2"));
        QCOMPARE(outcome.panels[5], QStringLiteral("מס' ההזמנות  5"));
        QVERIFY(outcome.panels[0].isEmpty() && outcome.panels[6].isEmpty());

        // Grid row 2 (model row 1) is even and not coming: every cell grey, struck, tinted.
        for (int column = 0; column < ColumnCount; ++column) {
            const QModelIndex cell = model.index(1, column);
            QCOMPARE(cell.data(Qt::BackgroundRole).value<QColor>(), GuestListModel::evenRowBackground());
            QCOMPARE(cell.data(Qt::ForegroundRole).value<QColor>(), GuestListModel::notComingText());
            QVERIFY(cell.data(Qt::FontRole).value<QFont>().strikeOut());
            QVERIFY(!model.index(0, column).data(Qt::BackgroundRole).isValid());
            QVERIFY(!model.index(0, column).data(Qt::FontRole).isValid());
        }
        QCOMPARE(model.index(0, 3).data(Qt::TextAlignmentRole).value<Qt::Alignment>(), Qt::AlignCenter);
        QCOMPARE(model.headerData(7, Qt::Horizontal, Qt::TextAlignmentRole).value<Qt::Alignment>(), Qt::AlignCenter);
        QCOMPARE(model.headerData(6, Qt::Horizontal, Qt::DisplayRole).toString(), QStringLiteral("מס' שולחן"));
        QVERIFY(!wedding.state.WeddingDb.isOpen());

        // The totals are those of the rows shown.
        ListView hidden{true, true, {}};
        InitList(wedding.state, prompts, model, wedding.state.AllGuests, QStringLiteral("FAMILY_NAME"), hidden);
        QCOMPARE(model.rowCount(), 1);
        QCOMPARE(wedding.state.PresentTotal, 500);
        QCOMPARE(wedding.state.GuestsNotComing, qint16(0));
    }

    void anEmptyListOrGroupShowsOneEmptyRow()
    {
        test::TestWedding wedding;
        wedding.createDatabase();
        test::ScriptedPrompts prompts;
        GuestListModel model;
        ListOutcome outcome = InitList(wedding.state, prompts, model, wedding.state.AllGuests, {}, {});
        QVERIFY(!outcome.hasRows && !outcome.dialEnabled);
        QCOMPARE(model.rowCount(), 1);
        QVERIFY(!model.hasInvitations());
        QCOMPARE(outcome.panels[1], QStringLiteral("מתנות ₪0"));
        QCOMPARE(outcome.panels[5], QStringLiteral("מס' ההזמנות  0"));

        wedding.addInvitation(test::invitation("כהן", "דנה", 2, 1));
        wedding.state.CurGroup = wedding.state.HerFamily;
        outcome = InitList(wedding.state, prompts, model, wedding.state.CurGroup, {}, {});
        QCOMPARE(outcome.caption, QStringLiteral("רשימה של משפחת לוי"));
        QVERIFY(!outcome.hasRows);
        QCOMPARE(wedding.state.InvCount, qint16(0));
    }

    void theFirstRowsPhonesDecideTheDialButton()
    {
        test::TestWedding wedding;
        wedding.createDatabase();
        wedding.addInvitation(with(test::invitation("א", "א", 1, 1), {{"PHONES", QString()}}));
        wedding.addInvitation(test::invitation("ב", "ב", 1, 1));
        test::ScriptedPrompts prompts;
        GuestListModel model;
        QVERIFY(!InitList(wedding.state, prompts, model, wedding.state.AllGuests, {}, {}).dialEnabled);
        ListView descending{false, false, QStringLiteral("DESC")};
        QVERIFY(InitList(wedding.state, prompts, model, wedding.state.AllGuests, QStringLiteral("FAMILY_NAME"), descending)
                    .dialEnabled);
        QCOMPARE(model.cellText(1, 0), QStringLiteral("ב"));
    }

    void aNullInAPlainColumnIsReportedOnce()
    {
        test::TestWedding wedding;
        wedding.createDatabase();
        wedding.addInvitation({{"FAMILY_NAME", "א"}, {"FIRST_NAME", "א"}, {"CONFIRM", 1}});
        wedding.addInvitation({{"FAMILY_NAME", "ב"}, {"FIRST_NAME", "ב"}, {"CONFIRM", 1}, {"INV_NUM", 2}});
        test::ScriptedPrompts prompts;
        prompts.expectMessage(PromptIcon::Warning, QStringLiteral("שימוש לא חוקי בערך Null."));
        GuestListModel model;
        InitList(wedding.state, prompts, model, wedding.state.AllGuests, {}, {});
        QCOMPARE(model.rowCount(), 2); // the rows are still shown, their cells empty
        QCOMPARE(model.cellText(1, 2), QString());
        QCOMPARE(model.cellText(2, 3), QStringLiteral("2"));
        QCOMPARE(wedding.state.GuestsConfirmed, qint16(2));
    }

    void aDamagedFileEndsTheProgram()
    {
        test::TestWedding wedding;
        QFile file(wedding.state.databaseFile());
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("not a database at all, just words");
        file.close();
        test::ScriptedPrompts prompts;
        prompts.expectMessage(PromptIcon::Critical,
                              QStringLiteral("!ארעה שגיאה קריטית בתהליך שדרוג התוכנה\r\nwww.velmora.co.il\r\nsupport@velmora.co.il"),
                              QStringLiteral("שדרוג גירסת תוכנה"));
        GuestListModel model;
        QVERIFY(InitList(wedding.state, prompts, model, wedding.state.AllGuests, {}, {}).endProgram);
    }
};

VELMORA_TEST_MAIN(GuestListTest)
#include "test_guestlist.moc"
