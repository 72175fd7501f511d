#include "Modal.h"
#include "RunningProgram.h"
#include "TestMain.h"
#include "TestWedding.h"

#include "app/Settings.h"
#include "app/Twips.h"
#include "app/Wedding.h"
#include "app/ui/MainWindow.h"
#include "app/ui/Startup.h"
#include "seating/ui/TableMapWindow.h"

#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QTableView>

using namespace velmora;

namespace {

QRect designed(int left, int top, int width, int height)
{
    return twipsRect(left, top - 810, width, height); // the toolbar stands above the client area
}

} // namespace

class MainWindowTest : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<test::TestWedding> m_wedding;
    test::RunningProgram m_program;
    WeddingState& m_state = m_program.state;
    test::ScriptedPrompts& m_prompts = m_program.prompts;
    std::unique_ptr<ui::Windows>& m_windows = m_program.windows;

    ui::MainWindow& start()
    {
        m_program.start(m_wedding->folder());
        return m_program.main();
    }

private slots:
    void init()
    {
        m_wedding = std::make_unique<test::TestWedding>();
        m_wedding->createWedding(100);
        m_wedding->addInvitation(test::invitation("כהן", "דנה", 2, 1));
        m_wedding->addInvitation(test::invitation("לוי", "רון", 1, 0, {}, QString(), QStringLiteral("2")));
    }

    void cleanup()
    {
        m_program.stop();
        m_prompts.verifyDone();
    }

    void theLoadLeavesEverythingInPlace()
    {
        ui::MainWindow& main = start();
        QCOMPARE(m_state.CrLf, QStringLiteral("\r\n"));
        QCOMPARE(m_state.AllGuests, QStringLiteral("כל האורחים"));
        QCOMPARE(m_state.CurGroup, m_state.AllGuests);
        QVERIFY(m_state.DialerFree && !m_state.DialPending);
        QCOMPARE(m_state.InvMode, quint8(1));
        QCOMPARE(m_state.TableViewMode, quint8(1)); // the map was set up after the list
        QCOMPARE(main.helpFile(), m_state.AppPath + QStringLiteral("velmora.chm"));
        QCOMPARE(main.panel(1)->text().isEmpty(), false);
        QCOMPARE(main.grid()->model()->rowCount(), 2);
        QCOMPARE(main.cmbUserGroups()->count(), 4);
        QVERIFY(!m_state.OptionsPending);
        QVERIFY(main.tmrDelay()->isActive());
        QCOMPARE(main.toolButton(10)->toolTip(), QStringLiteral("הדפסת מפת שולחנות"));
        QCOMPARE(main.toolButton(4)->isSeparator(), true);
        QCOMPARE(main.toolButton(11)->isSeparator(), true);
        QVERIFY(!main.toolButton(1)->icon().isNull());
    }

    void aFirstRunOpensTheOptionsOnceAfterTheWindowShows()
    {
        QTemporaryDir empty;
        m_prompts.expectMessage(PromptIcon::None, QStringLiteral("תהליך יצירת מבנה הנתונים הסתיים בהצלחה."));
        m_windows = ui::Main(m_state, m_prompts, empty.path());
        QVERIFY(m_state.OptionsPending);
        int opened = 0;
        QString caption;
        test::NextModal options([&](QWidget* modal) {
            ++opened;
            caption = modal->windowTitle();
            QVERIFY(m_windows->main->isVisible()); // the window was up first
            QMetaObject::invokeMethod(modal, "reject", Qt::QueuedConnection);
        });
        QTRY_VERIFY(options.seen());
        QCOMPARE(caption, QStringLiteral("הגדרות"));
        QVERIFY(!m_state.OptionsPending);
        QTest::qWait(700); // a few more ticks
        QCOMPARE(opened, 1);
        m_prompts.expectMapSaveQuestion(); // nothing stored yet in this new folder
        m_windows->main->close();
    }

    void theGridTakesTheGrowthAndTheGroupBoxKeepsRight()
    {
        ui::MainWindow& main = start();
        const QSize built = main.size();
        QCOMPARE(main.grid()->geometry(), designed(120, 1440, 11535, 4455));
        QCOMPARE(main.cmbUserGroups()->geometry(), designed(9480, 1080, 2175, 315));

        for (int change : {-1500, 3000}) { // narrower and lower, then wider and taller
            const int px = twipsToPixels(change);
            main.resize(built.width() + px, built.height() + px);
            QTRY_COMPARE(main.grid()->width(), twipsToPixels(11535) + px);
            QCOMPARE(main.grid()->height(), twipsToPixels(4455) + px);
            QCOMPARE(main.cmbUserGroups()->x(), twipsToPixels(9480) + px);
            QCOMPARE(main.findChild<QLabel*>(QStringLiteral("LblSelUserGroups"))->x(), twipsToPixels(9720) + px);
            QCOMPARE(main.lblList()->width(), twipsToPixels(11415) + px);
            QCOMPARE(main.lblWeddingCount()->geometry(), designed(240, 840, 3615, 255));
            QCOMPARE(main.grid()->pos(), designed(120, 1440, 0, 0).topLeft());
        }

        // Minimised, a resize changes nothing.
        const QRect before = main.grid()->geometry();
        main.setWindowState(Qt::WindowMinimized);
        main.grid()->setGeometry(before.adjusted(0, 0, -10, -10));
        main.ResizeForm();
        QCOMPARE(main.grid()->geometry(), before.adjusted(0, 0, -10, -10));
        main.setWindowState(Qt::WindowNoState);
        main.ResizeForm();
        QCOMPARE(main.grid()->geometry(), before);

        // A designed place that doesn't read is told once, and the layout stops there.
        main.grid()->setProperty("tag", QStringLiteral("120 x 11535 4455 "));
        m_prompts.expectMessage(PromptIcon::Warning, QStringLiteral("אי התאמה בסוג הנתונים."));
        main.ResizeForm();
        QCOMPARE(main.grid()->geometry(), before);
    }

    void thePlacementAndTheColumnsSurviveARestart()
    {
        ui::MainWindow& main = start();
        main.move(100, 80); // the outer corner
        main.resize(700, 500);
        main.grid()->setColumnWidth(0, 120);
        main.grid()->setColumnWidth(9, 30);
        m_prompts.expectMapSaveQuestion(PromptAnswer::Ok);
        main.close();
        UserStore store;
        QCOMPARE(store.read(keys::Window), QStringLiteral("0"));
        QCOMPARE(store.read(keys::MainLeft), QStringLiteral("1500"));
        QCOMPARE(store.read(keys::MainWidth), QStringLiteral("10500"));
        QCOMPARE(store.read(keys::ColWidth, 0), QStringLiteral("1800"));
        QCOMPARE(store.read(keys::ColWidth, 9), QStringLiteral("450"));

        ui::MainWindow& again = start();
        QCOMPARE(again.frameGeometry().topLeft(), QPoint(100, 80));
        QCOMPARE(again.size(), QSize(700, 500));
        QCOMPARE(again.grid()->columnWidth(0), 120);
        QCOMPARE(again.grid()->columnWidth(9), 30);
        QCOMPARE(again.grid()->columnWidth(1), twipsToPixels(1700));

        // Closed maximised: the state is kept, the normal rectangle stays as it was.
        again.showMaximized();
        again.close();
        QCOMPARE(store.read(keys::Window), QStringLiteral("2"));
        QCOMPARE(store.read(keys::MainLeft), QStringLiteral("1500"));
        ui::MainWindow& maximised = start();
        QVERIFY(maximised.windowState() & Qt::WindowMaximized);

        // Closed minimised: nothing of the placement changes.
        maximised.showMinimized();
        maximised.close();
        QCOMPARE(store.read(keys::Window), QStringLiteral("2"));
        QCOMPARE(store.read(keys::MainWidth), QStringLiteral("10500"));
    }

    void buttonTenFollowsTheMapsTick()
    {
        ui::MainWindow& main = start();
        QAction* tick = main.action(QStringLiteral("mnuShowTablesMap"));
        tick->trigger();
        QVERIFY(m_windows->tableMap->isVisible());
        QVERIFY(tick->isChecked());
        QVERIFY(main.toolButton(10)->isChecked());

        // The map closed by its own close box only hides, and the commands follow.
        m_prompts.expectMapSaveQuestion();
        m_windows->tableMap->close();
        QVERIFY(!m_windows->tableMap->isVisible());
        QVERIFY(!tick->isChecked());
        QVERIFY(!main.action(QStringLiteral("popShowTablesMap"))->isChecked());
        QVERIFY(!main.toolButton(10)->isChecked());

        // Whatever button is pressed, button 10 is first set to the menu's tick.
        tick->setChecked(true);
        main.toolButton(1)->trigger();
        QVERIFY(main.toolButton(10)->isChecked());
        tick->setChecked(false);

        main.toolButton(10)->trigger();
        QVERIFY(m_windows->tableMap->isVisible());
        QVERIFY(tick->isChecked());
        m_prompts.expectMapSaveQuestion(PromptAnswer::Ok);
        main.toolButton(10)->trigger();
        QVERIFY(!m_windows->tableMap->isVisible());
        QVERIFY(!tick->isChecked());
        QVERIFY(!main.toolButton(10)->isChecked());
    }

    void commandsFollowTheList()
    {
        ui::MainWindow& main = start();
        QVERIFY(main.action(QStringLiteral("mnuUpdate"))->isEnabled());
        QVERIFY(main.toolButton(5)->isEnabled()); // the first row has a phone
        main.action(QStringLiteral("mnuIgnoreNotCnf"))->trigger();
        main.action(QStringLiteral("mnuIgnoreCnfNotOk"))->trigger();
        QCOMPARE(main.grid()->model()->rowCount(), 1);
        // The list was followed by the map's recount.
        QCOMPARE(m_state.SqlText, QStringLiteral("select * from VELMORA_LIST where TABLE_NO > 0"));

        main.cmbUserGroups()->setCurrentIndex(2); // the groom's family: Ron, not confirmed
        emit main.cmbUserGroups()->activated(2);
        QCOMPARE(main.lblList()->text(), QStringLiteral("רשימה של משפחת כהן"));
        QVERIFY(!main.action(QStringLiteral("mnuUpdate"))->isEnabled());
        QVERIFY(!main.action(QStringLiteral("mnuPrintReport"))->isEnabled());
        QVERIFY(!main.toolButton(3)->isEnabled());
        QVERIFY(!main.toolButton(5)->isEnabled());
        QVERIFY(main.action(QStringLiteral("mnuAdd"))->isEnabled());
        QCOMPARE(main.panel(6)->text(), QStringLiteral("מס' ההזמנות  0"));
    }

    void aDoubleClickOnAnEmptyPanelOpensTheOptions()
    {
        ui::MainWindow& main = start();
        QString caption;
        test::NextModal options([&](QWidget* modal) {
            caption = modal->windowTitle();
            QCOMPARE(modal->parentWidget(), &main);
            QMetaObject::invokeMethod(modal, "reject", Qt::QueuedConnection);
        });
        QTest::mouseDClick(main.panel(2), Qt::LeftButton);
        QVERIFY(!options.seen()); // the gifts panel has text
        QTest::mouseDClick(main.panel(7), Qt::LeftButton);
        QVERIFY(options.seen());
        QCOMPARE(caption, QStringLiteral("הגדרות"));
    }
};

VELMORA_TEST_MAIN(MainWindowTest)
#include "test_mainwindow.moc"
