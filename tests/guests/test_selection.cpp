#include "RunningProgram.h"
#include "SystemKeys.h"
#include "TestMain.h"
#include "TestWedding.h"

#include "app/Wedding.h"
#include "app/ui/MainWindow.h"
#include "guests/ui/InvitationDialog.h"
#include "seating/ui/TableMapWindow.h"

#include <QAction>
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QMenu>
#include <QTableView>

using namespace velmora;

class SelectionTest : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<test::TestWedding> m_wedding;
    test::RunningProgram m_program;
    test::ScriptedPrompts& m_prompts = m_program.prompts;
    WeddingState& m_state = m_program.state;

    ui::MainWindow& main() { return m_program.main(); }
    QTableView* grid() { return main().grid(); }
    QWidget* cells() { return grid()->viewport(); }
    QString cellText(int gridRow, int column) { return main().listModel().cellText(gridRow, column); }
    QString invitations() { return main().panel(6)->text(); }
    int stored() { return m_wedding->count(QStringLiteral("select * from VELMORA_LIST")); }
    QPoint cell(int gridRow, int column) { return grid()->visualRect(grid()->model()->index(gridRow - 1, column)).center(); }

    void click(int gridRow, int column = 0) { QTest::mouseClick(cells(), Qt::LeftButton, {}, cell(gridRow, column)); }

    QList<int> selectedGridRows()
    {
        QList<int> rows;
        for (const QModelIndex& row : grid()->selectionModel()->selectedRows())
            rows << row.row() + 1;
        std::sort(rows.begin(), rows.end());
        return rows;
    }

    void sweep(int fromRow, int toRow)
    {
        QTest::mousePress(cells(), Qt::LeftButton, {}, cell(fromRow, 4));
        const int step = toRow > fromRow ? 1 : -1;
        for (int row = fromRow; row != toRow + step; row += step)
            QTest::mouseMove(cells(), cell(row, 4));
        QTest::mouseRelease(cells(), Qt::LeftButton, {}, cell(toRow, 4));
    }

    void remove(int gridRow, const QString& name, PromptAnswer answer = PromptAnswer::Yes)
    {
        click(gridRow);
        m_prompts.expectQuestion(QStringLiteral("האם למחוק את ההזמנה ל") + name + u'?', answer);
        main().action(QStringLiteral("mnuRemove"))->trigger();
    }

private slots:
    void init()
    {
        m_wedding = std::make_unique<test::TestWedding>();
        m_wedding->createWedding(10);
        m_wedding->addInvitation(test::invitation("כהן", "דנה", 2, 1, 1, "050"));
        m_wedding->addInvitation(test::invitation("אבן", "רון", 2, 0, 1, ""));
        m_wedding->addInvitation(test::invitation("ד'אמיקו", "שירה", 2, 2, QVariant(), "052", "2"));
        m_wedding->addInvitation(test::invitation("לוי", "גיל", 2, 3, 2, "053"));
        m_wedding->addInvitation(test::invitation("זך", "אור", 2, 1, 2, "054", "2"));
        m_wedding->addInvitation(test::invitation("בר", "טל", 2, 0, QVariant(), "055"));
        QVERIFY(m_program.start(m_wedding->folder()));
        QVERIFY(test::activate(&main()));
    }

    void cleanup() { m_program.finish(); }

    void clicksAndSweepsSelectWholeRuns()
    {
        // The dial button follows the row; a double click asks before it opens the row.
        QVERIFY(main().toolButton(5)->isEnabled());
        click(2); // no phones
        QVERIFY(!main().toolButton(5)->isEnabled());
        click(4, 8);
        QVERIFY(main().toolButton(5)->isEnabled());
        m_prompts.expectQuestion(QStringLiteral("האם לעדכן את ההזמנה לד'אמיקו שירה?"), PromptAnswer::No);
        click(3, 7); // a double click begins as a click
        QTest::mouseDClick(cells(), Qt::LeftButton, {}, cell(3, 7));
        QVERIFY(!main().invitationDialog() || !main().invitationDialog()->isVisible()); // No opens nothing

        click(3, 6);
        QCOMPARE(grid()->selectionModel()->selectedIndexes().size(), 10); // the whole row
        sweep(2, 5);
        QCOMPARE(selectedGridRows(), QList<int>({2, 3, 4, 5}));
        sweep(6, 3); // upward
        QCOMPARE(selectedGridRows(), QList<int>({3, 4, 5, 6}));

        // A right click leaves the selection; the pop-up's update takes the rows selected before.
        QTest::mouseClick(cells(), Qt::RightButton, {}, cell(1, 1));
        QTRY_VERIFY(main().popupMenu()->isVisible());
        main().popupMenu()->hide();
        m_prompts.expectQuestion(QStringLiteral("האם לעדכן את קבוצת המוזמנים?"), PromptAnswer::No);
        main().action(QStringLiteral("popUpdate"))->trigger();
        QCOMPARE(QList<int>({m_state.InvRowFrom, m_state.InvRowTo}), QList<int>({3, 6}));

        // Several rows can't be removed; nothing is asked.
        m_prompts.expectMessage(PromptIcon::None, QStringLiteral("לא ניתן למחוק קבוצה של מוזמנים, בחר הזמנה אחת בלבד למחיקה."));
        main().toolButton(3)->trigger();
        QCOMPARE(stored(), 6);
    }

    // Each double click turns the direction over, on another column all the same.
    void headersSortUpThenDown()
    {
        QHeaderView* header = grid()->horizontalHeader();
        for (const auto& [column, first] : {std::pair(0, "אבן"), std::pair(0, "לוי"), std::pair(2, ""), std::pair(2, "055")}) {
            const QPoint at(header->sectionViewportPosition(column) + header->sectionSize(column) / 2, header->height() / 2);
            QTest::mouseDClick(header->viewport(), Qt::LeftButton, {}, at);
            QCOMPARE(cellText(1, column), QString::fromUtf8(first));
        }
        QCOMPARE(m_state.SqlText, QStringLiteral("select * from VELMORA_LIST order by PHONES DESC"));
    }

    void filtersAndGroupNarrowTheListTogether()
    {
        QAction* popup = main().action(QStringLiteral("popIgnoreCnfNotOk"));
        popup->trigger();
        QVERIFY(main().action(QStringLiteral("mnuIgnoreCnfNotOk"))->isChecked()); // one setting, two ticks
        QCOMPARE(invitations(), QStringLiteral("מס' ההזמנות  5"));
        main().action(QStringLiteral("mnuIgnoreNotCnf"))->trigger();
        QCOMPARE(invitations(), QStringLiteral("מס' ההזמנות  2"));
        QCOMPARE(main().panel(5)->text(), QStringLiteral("אישרו שמגיעים  4"));

        m_program.chooseGroup(2);
        QCOMPARE(invitations(), QStringLiteral("מס' ההזמנות  1"));
        QCOMPARE(cellText(1, 0), QStringLiteral("זך"));
        popup->trigger();
        QCOMPARE(invitations(), QStringLiteral("מס' ההזמנות  2")); // the "no" of ד'אמיקו shows again

        // Typed keys in the group box are dropped without a word or a beep; arrows and Tab work.
        main().cmbUserGroups()->setFocus();
        for (int key : {0x5E0, int(Qt::Key_1), int(Qt::Key_Down)}) // נ would find the couple's group
            test::pressKey(key);
        QCOMPARE(main().cmbUserGroups()->currentIndex(), 3);
        QCOMPARE(invitations(), QStringLiteral("מס' ההזמנות  0"));
        QCOMPARE(main().lblList()->text(), QStringLiteral("רשימה של משפחת לוי"));
        for (const char* name : {"mnuUpdate", "mnuPrintReport", "Toolbar1_3", "Toolbar1_5"}) // nothing to act on
            QVERIFY2(!main().action(QString::fromLatin1(name))->isEnabled(), name);
        test::pressKey(Qt::Key_Tab);
        QVERIFY(!main().cmbUserGroups()->hasFocus());
    }

    void removingRowsOneByOne()
    {
        remove(3, QStringLiteral("ד'אמיקו שירה"), PromptAnswer::No);
        QCOMPARE(selectedGridRows(), QList<int>({3}));
        // A name with a quote goes like any other, and the grid keeps its place.
        remove(3, QStringLiteral("ד'אמיקו שירה"));
        QCOMPARE(stored(), 5);
        QCOMPARE(cellText(grid()->currentIndex().row() + 1, 0), QStringLiteral("לוי"));
        // The last row: the list comes back on its first row.
        remove(5, QStringLiteral("בר טל"));
        QCOMPARE(grid()->currentIndex().row(), 0);
        // The seat goes with the row.
        remove(3, QStringLiteral("לוי גיל"));
        QCOMPARE(m_program.map().itemText(2), QStringLiteral("שולחן של 2"));
    }

    void twoRowsOfOnePairAndTheOnlyRow()
    {
        m_program.stop();
        test::TestWedding lone;
        lone.createDatabase();
        lone.addInvitation(test::invitation("כפול", "זוג", 2, 1, QVariant(), "1"));
        lone.addInvitation(test::invitation("כפול", "זוג", 2, 1, QVariant(), "2"));
        QVERIFY(m_program.start(lone.folder()));
        for (int left : {1, 0}) {
            m_prompts.expectQuestion(QStringLiteral("האם למחוק את ההזמנה לכפול זוג?"), PromptAnswer::Yes);
            main().RemoveRecord();
            QCOMPARE(lone.count(QStringLiteral("select * from VELMORA_LIST where PHONES = '2'")), left);
        }
        QVERIFY(!main().action(QStringLiteral("mnuRemove"))->isEnabled() && !main().toolButton(3)->isEnabled());
        QCOMPARE(invitations(), QStringLiteral("מס' ההזמנות  0"));
        m_program.stop(); // before its folder goes
    }
};

VELMORA_TEST_MAIN(SelectionTest)
#include "test_selection.moc"
