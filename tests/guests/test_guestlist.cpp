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
    map.insert(more);
    return map;
}

} // namespace

class GuestListTest : public QObject {
    Q_OBJECT

private slots:
    void rowsCellsAndTotalsAsShown()
    {
        test::TestWedding wedding;
        wedding.createDatabase();
        wedding.addInvitation(with(test::invitation("כהן", "דנה", 2, 1, 3), {{"INV_STATUS", true}, {"PRESENT_TYPE", 1},
                                                                        {"PRESENT", "500"}, {"ADDRESS", "הרצל 5, חיפה"}}));
        wedding.addInvitation(with(test::invitation("לוי", "רון", 3, 2), {{"PRESENT_TYPE", 0}, {"PRESENT", "250.5 בצ'ק"}}));
        wedding.addInvitation(with(test::invitation("גבאי", "שי", 1, 3), {{"PRESENT_TYPE", 2}, {"PRESENT", "מצעים"}}));
        wedding.addInvitation(with(test::invitation("ברק", "גיל", 4, 0), {{"PRESENT_TYPE", 0}, {"PRESENT", "100.5"}}));
        wedding.addInvitation(with(test::invitation("טל", "אור", 2, 2), {{"PRESENT", "300"}})); // kind unknown: no money
        test::ScriptedPrompts prompts;
        GuestListModel model;
        QAbstractItemModelTester tester(&model);

        const ListOutcome outcome = InitList(wedding.state, prompts, model, wedding.state.AllGuests, {}, {});
        QVERIFY(!outcome.endProgram && outcome.hasRows && outcome.dialEnabled);
        QCOMPARE(outcome.caption, QStringLiteral("רשימה של כל האורחים"));
        QCOMPARE(model.rowCount(), 5);
        const QStringList shown[] = {
            {"כהן", "דנה", "050", "2", "", "מגיע", "3", "נשלחה", "הרצל 5, חיפה", "₪500"},
            {"לוי", "רון", "050", "3", "", "לא", "", "", "", "₪250.5 בצ'ק"},
            {"גבאי", "שי", "050", "1", "", "??", "", "", "", "מצעים"},
            {"ברק", "גיל", "050", "4", "", "", "", "", "", "₪100.5"},
            {"טל", "אור", "050", "2", "", "לא", "", "", "", "300"},
        };
        for (int row = 0; row < 5; ++row)
            for (int column = 0; column < ColumnCount; ++column)
                QCOMPARE(model.cellText(row + 1, column), shown[row][column]);

        // Money gifts only, by leading number, rounded half to even after each addition:
        // 500, then 750.5 -> 750, then 850.5 -> 850.
        QCOMPARE(QStringList(outcome.panels.begin(), outcome.panels.end()),
                 QStringList({"", "מתנות ₪850", "אישרו שלא מגיעים  5", "ממתינים לאישור  5", "אישרו שמגיעים  2",
                              "מס' ההזמנות  5", ""}));

        // Grid row 2 (model row 1) is even and not coming: every cell grey, struck, tinted.
        for (int column = 0; column < ColumnCount; ++column) {
            const QModelIndex cell = model.index(1, column);
            QCOMPARE(cell.data(Qt::BackgroundRole).value<QColor>(), GuestListModel::evenRowBackground());
            QCOMPARE(cell.data(Qt::ForegroundRole).value<QColor>(), GuestListModel::notComingText());
            QVERIFY(cell.data(Qt::FontRole).value<QFont>().strikeOut());
            QVERIFY(!model.index(0, column).data(Qt::BackgroundRole).isValid());
            QVERIFY(!model.index(0, column).data(Qt::FontRole).isValid());
        }
        QVERIFY(!wedding.state.WeddingDb.isOpen());

        // The totals are those of the rows shown.
        ListView hidden{true, true, {}};
        InitList(wedding.state, prompts, model, wedding.state.AllGuests, QStringLiteral("FAMILY_NAME"), hidden);
        QCOMPARE(model.rowCount(), 1);
        QCOMPARE(QList<qint64>({wedding.state.PresentTotal, wedding.state.GuestsNotComing}), QList<qint64>({500, 0}));
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
        QCOMPARE(model.cellText(1, 2) + u'|' + model.cellText(2, 3), "|2");
        QCOMPARE(wedding.state.GuestsConfirmed, 2);
    }
};

VELMORA_TEST_MAIN(GuestListTest)
#include "test_guestlist.moc"
