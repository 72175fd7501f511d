#include "Modal.h"
#include "RunningProgram.h"
#include "TestMain.h"
#include "TestWedding.h"

#include "app/IniFile.h"
#include "app/PendingFailure.h"
#include "app/Settings.h"
#include "app/Twips.h"
#include "app/Wedding.h"
#include "app/ui/MainWindow.h"
#include "app/ui/Startup.h"
#include "seating/TableMap.h"
#include "seating/ui/TableMapWindow.h"
#include "seating/ui/TableWindow.h"

#include <QAction>
#include <QComboBox>
#include <QTableView>
#include <QTreeWidget>

using namespace velmora;

namespace {

// The smallest GIF there is: one white pixel.
const QByteArray OnePixelGif = QByteArray::fromHex(
    "47494638396101000100800000ffffff00000021f90401000000002c00000000010001000002024401003b");

QString ini(const WeddingState& state, const QString& key)
{
    return ReadIniValue(state.iniFile(), QStringLiteral("TablesMap"), key, QStringLiteral("<none>"));
}

} // namespace

class TableMapTest : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<test::TestWedding> m_wedding;
    test::RunningProgram m_program;
    WeddingState& m_state = m_program.state;
    test::ScriptedPrompts& m_prompts = m_program.prompts;
    std::unique_ptr<ui::Windows>& m_windows = m_program.windows;

    ui::TableMapWindow& start()
    {
        m_program.start(m_wedding->folder());
        return m_program.map();
    }

    void stop() { m_program.stop(); }

    QPoint onScreen(ui::TableMapWindow& map, int table)
    {
        return map.mapView()->mapFromScene(map.item(table)->sceneBoundingRect().center());
    }

private slots:
    void init()
    {
        m_wedding = std::make_unique<test::TestWedding>();
        m_wedding->createWedding(20, 12);
        m_wedding->addInvitation(test::invitation("כהן", "דנה", 2, 2, 4, QString())); // not coming, still counted
        m_wedding->addInvitation(test::invitation("לוי", "רון", 3, 0, 4, QString()));
        m_wedding->addInvitation(test::invitation("גבאי", "שי", 9, 1, 7, QString()));
        m_wedding->addInvitation(test::invitation("טל", "אור", 1, 1, QVariant(), QString())); // not seated
        m_wedding->addInvitation(test::invitation("בר", "גיל", 1, 1, 0, QString()));          // not seated either
    }

    void cleanup()
    {
        stop();
        m_prompts.verifyDone();
    }

    void captionsReadBackAsPeople()
    {
        QCOMPARE(seating::TableCaption(10), QStringLiteral("שולחן של 10"));
        QCOMPARE(seating::SeatedCount(QStringLiteral("שולחן של 10")), quint8(10));
        QCOMPARE(seating::SeatedCount(QStringLiteral("שולחן של 9")), quint8(9));
        QCOMPARE(seating::SeatedCount(QStringLiteral("שולחן של 0")), quint8(0));
        QCOMPARE(seating::SeatedCount(QStringLiteral("7")), quint8(7)); // an item before its first refresh
        QCOMPARE(seating::SeatedCount(QString()), quint8(0));
        QCOMPARE(seating::positionText(1234.5), QStringLiteral("1234.5"));
        QCOMPARE(seating::positionText(0.1 + 0.2), QStringLiteral("0.3"));
    }

    void everySeatedInvitationCountsAtItsTable()
    {
        m_wedding->addInvitation(test::invitation("רחוק", "מאוד", 4, 1, 30, QString())); // above MaxTables: nowhere
        WeddingState& state = m_wedding->state;
        PendingFailure pending;
        QVERIFY(!seating::CountTables(state, pending));
        QVERIFY(!pending);
        QCOMPARE(int(state.TableInfo.size()), 21);
        QCOMPARE(state.TableInfo[4].PeopleCount, quint8(5));
        QCOMPARE(state.TableInfo[4].PeopleNames, QStringLiteral("כהן דנה , לוי רון , "));
        QCOMPARE(state.TableInfo[7].PeopleCount, quint8(9));
        QCOMPARE(state.TableInfo[0].PeopleCount, quint8(0));
        state.MaxChairs = 8;
        QVERIFY(seating::CountTables(state, pending));
    }

    void theMapShowsCountsWhateverTheListShows()
    {
        ui::TableMapWindow& map = start();
        QCOMPARE(map.itemCount(), 20);
        QCOMPARE(map.itemText(4), QStringLiteral("שולחן של 5"));
        QCOMPARE(map.itemText(7), QStringLiteral("שולחן של 9"));
        QCOMPARE(map.itemText(1), QStringLiteral("שולחן של 0"));
        QCOMPARE(map.SeatedCount(4), quint8(5));
        QCOMPARE(map.itemNames(4), QString()); // names only in the detailed list

        // A group and both filters on the list change nothing on the map.
        ui::MainWindow& main = *m_windows->main;
        main.action(QStringLiteral("mnuIgnoreNotCnf"))->trigger();
        main.action(QStringLiteral("mnuIgnoreCnfNotOk"))->trigger();
        main.cmbUserGroups()->setCurrentIndex(2);
        emit main.cmbUserGroups()->activated(2);
        QCOMPARE(main.grid()->model()->rowCount(), 1); // the empty row
        QCOMPARE(map.itemText(4), QStringLiteral("שולחן של 5"));

        map.ChangeTableViewMode(2);
        QCOMPARE(map.detailList()->currentIndex().isValid(), true);
        QCOMPARE(map.itemNames(4), QStringLiteral("כהן דנה , לוי רון , "));
        QCOMPARE(map.detailList()->topLevelItem(3)->text(0), QStringLiteral("שולחן של 5"));
        QVERIFY(map.toolButton(8)->isChecked() && !map.toolButton(7)->isChecked());
        QVERIFY(map.popupAction(QStringLiteral("popDetailed"))->isChecked());
        map.InitTableSetting(); // always back to the map
        QCOMPARE(m_state.TableViewMode, quint8(1));
        QVERIFY(map.toolButton(7)->isChecked());
    }

    void clickingATableSetsItAndItsCommands()
    {
        ui::TableMapWindow& map = start();
        map.show();
        QVERIFY(QTest::qWaitForWindowExposed(&map));
        QTest::mouseClick(map.mapView()->viewport(), Qt::LeftButton, {}, onScreen(map, 2));
        QCOMPARE(m_state.CurTable, quint8(2));
        QVERIFY(!map.toolButton(5)->isEnabled());
        QVERIFY(!map.popupAction(QStringLiteral("popTableSitView"))->isEnabled());
        QVERIFY(!map.popupAction(QStringLiteral("popUpdateTableNum"))->isEnabled());
        m_prompts.expectMessage(PromptIcon::None, QStringLiteral(".שולחן ריק מאנשים"));
        map.ViewTable(); // the menu entry is off, but the double click still asks

        QTest::mouseClick(map.mapView()->viewport(), Qt::LeftButton, {}, onScreen(map, 7));
        QCOMPARE(m_state.CurTable, quint8(7));
        QVERIFY(map.toolButton(5)->isEnabled());
        map.toolButton(5)->trigger();
        QVERIFY(map.tableWindow());
        QCOMPARE(map.tableWindow()->table(), 7);
        QCOMPARE(m_state.CurTableChairs, quint8(9));
        QVERIFY(map.tableWindow()->isVisible());

        QTest::mouseDClick(map.mapView()->viewport(), Qt::LeftButton, {}, onScreen(map, 4));
        QCOMPARE(map.tableWindow()->table(), 4); // a fresh window for the new table

        m_state.CurTable = 0; // as after the list gained the focus
        map.ViewTable();
        QCOMPARE(map.tableWindow()->table(), 4);
        m_prompts.expectMapSaveQuestion();
        map.close();
        QVERIFY(!map.isVisible());
    }

    void anOverFullTableIsReported()
    {
        m_wedding->state.MaxChairs = 8;
        SaveOptions(m_wedding->state);
        // Shown by each of the two refreshes of the start.
        m_prompts.expectMessage(PromptIcon::None, QStringLiteral("לא ניתן להושיב יותר מ- 8 איש בשולחן"));
        m_prompts.expectMessage(PromptIcon::None, QStringLiteral("לא ניתן להושיב יותר מ- 8 איש בשולחן"));
        ui::TableMapWindow& map = start();
        map.selectTable(7);
        m_prompts.expectMessage(PromptIcon::None, QStringLiteral("לא ניתן להושיב יותר מ- 8 איש בשולחן"));
        map.ViewTable();
        QVERIFY(!map.tableWindow());
        stop();
        m_wedding->state.MaxChairs = 12;
        SaveOptions(m_wedding->state);
    }

    void placesAreKeptAndComparedAsText()
    {
        ui::TableMapWindow& map = start();
        QVERIFY(map.TablePositionsChanged()); // nothing stored on a first run
        map.item(3)->setTwips(QPointF(1500, 2250.5));
        map.SaveTablePositions();
        QCOMPARE(ini(m_state, "TableNum-3"), QStringLiteral("1500, 2250.5"));
        QCOMPARE(ini(m_state, "GardenMapBackground"), QString());
        QVERIFY(!map.TablePositionsChanged());
        map.item(3)->setTwips(QPointF(1515, 2250.5));
        QVERIFY(map.TablePositionsChanged());
        map.item(3)->setTwips(QPointF(1500, 2250.5));
        stop();

        // Back at the next start; more tables have no key, fewer leave theirs in the file.
        m_wedding->state.MaxTables = 30;
        SaveOptions(m_wedding->state);
        ui::TableMapWindow& more = start();
        QCOMPARE(more.item(3)->twips(), QPointF(1500, 2250.5));
        QVERIFY(more.TablePositionsChanged());
        m_prompts.expectMapSaveQuestion(); // hidden map: the question is asked all the same
        m_windows->main->close();
        m_windows.reset();
    }

    void aDraggedTableMovesAndARefreshPutsItBack()
    {
        ui::TableMapWindow& map = start();
        // Only table 5 has a place stored.
        WriteIniValue(m_state.iniFile(), "TablesMap", "TableNum-5", "3000, 3000");
        map.InitTableView(m_state.TableViewMode);
        QCOMPARE(map.item(5)->twips(), QPointF(3000, 3000));
        map.show();
        QVERIFY(QTest::qWaitForWindowExposed(&map));

        const QPointF before = map.item(5)->pos();
        const QPoint grab = onScreen(map, 5);
        QTest::mousePress(map.mapView()->viewport(), Qt::LeftButton, {}, grab);
        QTest::mouseMove(map.mapView()->viewport(), grab + QPoint(20, 10));
        QTest::mouseMove(map.mapView()->viewport(), grab + QPoint(40, 30));
        QTest::mouseRelease(map.mapView()->viewport(), Qt::LeftButton, {}, grab + QPoint(40, 30));
        QCOMPARE(map.item(5)->pos(), before + QPointF(40, 30));
        QCOMPARE(m_state.CurTable, quint8(5));
        QVERIFY(map.TablePositionsChanged());

        // Table 6 was never stored: it stays where it is dragged.
        map.item(6)->setTwips(QPointF(4500, 600));
        map.InitTableView(m_state.TableViewMode);
        QCOMPARE(map.item(5)->twips(), QPointF(3000, 3000));
        QCOMPARE(map.item(6)->twips(), QPointF(4500, 600));

        // Switching to the list with unsaved changes asks; the list never moves a table.
        m_prompts.expectMapSaveQuestion(PromptAnswer::Ok);
        map.toolButton(8)->trigger();
        QCOMPARE(ini(m_state, "TableNum-6"), QStringLiteral("4500, 600"));
        map.SaveTablePositions();
        QCOMPARE(ini(m_state, "TableNum-6"), QStringLiteral("4500, 600"));
        map.close(); // in the list view nothing is asked
        QVERIFY(!map.isVisible());
    }

    void theDefaultLayoutForgetsEveryPlace()
    {
        ui::TableMapWindow& map = start();
        map.item(2)->setTwips(QPointF(9000, 9000));
        map.SaveTablePositions();
        const QString warning = QStringLiteral("פעולה זו תאפס את מפת השולחנות\r\n?למיקומי בררת המחדל של המערכת");
        m_prompts.expectBox(PromptIcon::Warning, warning, QStringLiteral("אזהרת מערכת"), PromptButtons::OkCancel,
                            PromptAnswer::Ok, PromptAnswer::Cancel);
        map.toolButton(3)->trigger();
        QCOMPARE(ini(m_state, "TableNum-2"), QStringLiteral("9000, 9000"));

        m_prompts.expectBox(PromptIcon::Warning, warning, QStringLiteral("אזהרת מערכת"), PromptButtons::OkCancel,
                            PromptAnswer::Ok, PromptAnswer::Ok);
        map.popupAction(QStringLiteral("popSetDefaultMap"))->trigger();
        QCOMPARE(ini(m_state, "TableNum-2"), QStringLiteral("<none>"));
        QVERIFY(map.item(2)->twips() != QPointF(9000, 9000));
        QVERIFY(map.TablePositionsChanged());
    }

    void theGardenPictureIsChosenAndKept()
    {
        ui::TableMapWindow& map = start();
        m_prompts.expectOpenFile(std::nullopt);
        map.toolButton(2)->trigger(); // cancelled: nothing at all
        QCOMPARE(m_prompts.fileRequests().back().filter, QStringLiteral("GIF Image (*.gif)|*.gif"));
        QCOMPARE(m_prompts.fileRequests().back().initialDir, m_state.AppPath);

        m_prompts.expectOpenFile(m_state.AppPath + QStringLiteral("nowhere.gif"));
        m_prompts.expectMessage(PromptIcon::None, QStringLiteral(".קובץ לא נמצא"));
        map.toolButton(2)->trigger();
        QCOMPARE(ini(m_state, "GardenMapBackground"), QStringLiteral("<none>"));

        const QString garden = m_state.AppPath + QStringLiteral("garden.gif");
        QFile file(garden);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(OnePixelGif);
        file.close();
        m_prompts.expectOpenFile(QStringLiteral("  ") + garden);
        map.toolButton(2)->trigger();
        QCOMPARE(ini(m_state, "GardenMapBackground"), garden);
        QCOMPARE(map.mapView()->backgroundPicture().size(), QSize(1, 1));

        // Not a picture at all: the path is kept, the program goes on.
        const QString words = m_state.AppPath + QStringLiteral("words.gif");
        QFile text(words);
        QVERIFY(text.open(QIODevice::WriteOnly));
        text.write("this is no picture");
        text.close();
        m_prompts.expectOpenFile(words);
        map.toolButton(2)->trigger();
        QCOMPARE(ini(m_state, "GardenMapBackground"), words);
        stop();

        // The next start shows the stored picture, and the list takes it off.
        WriteIniValue(m_wedding->state.iniFile(), "TablesMap", "GardenMapBackground", garden);
        ui::TableMapWindow& again = start();
        QCOMPARE(again.gardenMapFile(), garden);
        QCOMPARE(again.mapView()->backgroundPicture().size(), QSize(1, 1));
        again.ChangeTableViewMode(2);
        QVERIFY(again.mapView()->backgroundPicture().isNull());
    }
};

VELMORA_TEST_MAIN(TableMapTest)
#include "test_tablemap.moc"
