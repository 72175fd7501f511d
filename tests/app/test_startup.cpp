#include "ScriptedPrompts.h"
#include "TestMain.h"
#include "TestWedding.h"

#include "app/IniFile.h"
#include "app/Settings.h"
#include "app/Wedding.h"
#include "app/ui/MainWindow.h"
#include "app/ui/SplashWindow.h"
#include "app/ui/Startup.h"
#include "seating/ui/TableMapWindow.h"
#include "store/SampleWedding.h"

#include <QAction>
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QTableView>

using namespace velmora;

namespace {
const QString Created = QStringLiteral("תהליך יצירת מבנה הנתונים הסתיים בהצלחה.");
}

class StartupTest : public QObject {
    Q_OBJECT

private slots:
    void init() { test::clearUserStore(); }

    void aFirstStartInAnEmptyFolder()
    {
        QTemporaryDir dir;
        WeddingState state;
        test::ScriptedPrompts prompts;
        prompts.expectMessage(PromptIcon::None, Created);
        auto windows = ui::Main(state, prompts, dir.path());
        QVERIFY(windows);
        QVERIFY(prompts.verifyDone());

        QCOMPARE(state.AppPath, dir.path() + u'/');
        QVERIFY(!windows->splash->isVisible());
        QCOMPARE(windows->splash->lblWeddingCount->text(), QStringLiteral("עוד 0 ימים לחתונה..."));
        QCOMPARE(windows->splash->lblVersion->text(), QStringLiteral("Version 1.0.0"));
        QVERIFY(windows->main->isVisible());
        QVERIFY(!windows->tableMap->isVisible());
        QVERIFY(state.OptionsPending);
        QVERIFY(QFile::exists(dir.filePath(QStringLiteral("Velmora.mdb"))));
        const QString ini = dir.filePath(QStringLiteral("velmora.ini"));
        QCOMPARE(ReadIniValue(ini, "Options", "Couple", ""), QStringLiteral("שמות בני הזוג"));
        QCOMPARE(ReadIniValue(ini, "Options", "Wedding Date", ""), values::fromDate(QDate::currentDate()));

        ui::MainWindow& main = *windows->main;
        QCOMPARE(main.windowTitle(), QStringLiteral("רשימת מוזמנים"));
        QCOMPARE(main.lblWeddingCount()->text(), QStringLiteral("עוד 0 ימים לחתונה..."));
        QCOMPARE(main.lblList()->text(), QStringLiteral("רשימה של כל האורחים"));
        QCOMPARE(main.grid()->model()->rowCount(), 1);
        QCOMPARE(main.grid()->model()->columnCount(), 10);
        QCOMPARE(main.panel(6)->text(), QStringLiteral("מס' ההזמנות  0"));
        QCOMPARE(main.cmbUserGroups()->count(), 4);
        QCOMPARE(main.cmbUserGroups()->currentText(), QStringLiteral("כל האורחים"));
        for (const char* off : {"mnuUpdate", "mnuRemove", "mnuPrintEnvLables", "mnuPrintReport", "mnuPrintSittingNotes",
                                "popUpdate", "popDelete"})
            QVERIFY2(!main.action(QString::fromLatin1(off))->isEnabled(), off);
        QVERIFY(main.action(QStringLiteral("mnuDial"))->isEnabled() && main.toolButton(1)->isEnabled());
        QVERIFY(!main.toolButton(5)->isEnabled() && !main.toolButton(8)->isEnabled());
        prompts.expectMapSaveQuestion(PromptAnswer::Ok); // a first run has no places stored yet
        main.close();

        // The second start finds everything in place and says nothing.
        WeddingState again;
        auto second = ui::Main(again, prompts, dir.path());
        QVERIFY(second);
        QVERIFY(!again.OptionsPending);
        second->main->close(); // the places were kept: nothing to ask
    }

    void aSampleWeddingFillsTheGrid()
    {
        test::TestWedding wedding;
        wedding.createDatabase();
        {
            store::Database db = wedding.open();
            store::fillSampleWedding(db, store::SampleOptions{});
        }
        wedding.state.WeddingDate = QDate::currentDate().addDays(12);
        SaveOptions(wedding.state);

        WeddingState state;
        test::ScriptedPrompts prompts;
        auto windows = ui::Main(state, prompts, wedding.folder());
        QVERIFY(windows);
        ui::MainWindow& main = *windows->main;
        QCOMPARE(windows->splash->lblWeddingCount->text(), QStringLiteral("עוד 12 ימים לחתונה..."));
        QCOMPARE(main.grid()->model()->rowCount(), 300);
        QCOMPARE(state.InvCount, qint16(300));
        QCOMPARE(main.panel(6)->text(), QStringLiteral("מס' ההזמנות  300"));
        QCOMPARE(main.panel(2)->text(), QStringLiteral("מתנות ₪") + QString::number(state.PresentTotal));
        QVERIFY(main.toolButton(2)->isEnabled());
        QCOMPARE(main.grid()->layoutDirection(), Qt::RightToLeft);
        QCOMPARE(main.grid()->columnWidth(0), 83); // 1250 twips
        QCOMPARE(main.grid()->columnWidth(9), 53);
        prompts.expectMapSaveQuestion();
        main.close();
    }

    void aWeddingDateInThePastReadsZeroDays()
    {
        test::TestWedding wedding;
        wedding.createDatabase();
        wedding.state.WeddingDate = QDate(2020, 5, 17);
        SaveOptions(wedding.state);
        WeddingState state;
        test::ScriptedPrompts prompts;
        auto windows = ui::Main(state, prompts, wedding.folder());
        QCOMPARE(state.DaysLeft, 0);
        QCOMPARE(windows->main->lblWeddingCount()->text(), QStringLiteral("עוד 0 ימים לחתונה..."));
        QCOMPARE(state.WeddingDate, QDate(2020, 5, 17));
        prompts.expectMapSaveQuestion();
        windows->main->close();
    }

    void aDamagedDatabaseEndsTheStart()
    {
        QTemporaryDir dir;
        QFile file(dir.filePath(QStringLiteral("Velmora.mdb")));
        QVERIFY(file.open(QIODevice::WriteOnly)); // empty: exists, but no database
        file.close();
        WeddingState state;
        test::ScriptedPrompts prompts;
        prompts.expectMessage(PromptIcon::Critical,
                              QStringLiteral("!ארעה שגיאה קריטית בתהליך שדרוג התוכנה\r\nwww.velmora.co.il\r\nsupport@velmora.co.il"),
                              QStringLiteral("שדרוג גירסת תוכנה"));
        QVERIFY(!ui::Main(state, prompts, dir.path()));
        QCOMPARE(QFileInfo(file.fileName()).size(), 0); // not created anew
    }
};

VELMORA_TEST_MAIN(StartupTest)
#include "test_startup.moc"
