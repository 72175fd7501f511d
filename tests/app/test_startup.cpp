#include "Modal.h"
#include "RunningProgram.h"
#include "TestMain.h"
#include "TestWedding.h"

#include "app/Settings.h"
#include "app/WindowPlacement.h"
#include "app/ui/MainWindow.h"
#include "app/ui/SplashWindow.h"
#include "seating/ui/TableMapWindow.h"

#include <QLabel>
#include <QScreen>
#include <QTableView>

#include <sqlite3.h>

using namespace velmora;

namespace {

const QString Created = QStringLiteral("תהליך יצירת מבנה הנתונים הסתיים בהצלחה.");

// Invitations 1 to `count` of five people, answers 0 to 3 in turn, the first 300 at table 1, gifts of 100,000.
void insertInvitations(const QString& file, int count)
{
    sqlite3* db = nullptr;
    QCOMPARE(sqlite3_open(QFile::encodeName(file).constData(), &db), SQLITE_OK);
    const QByteArray sql = QStringLiteral(
        "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < %1) INSERT INTO VELMORA_LIST "
        "(FAMILY_NAME, FIRST_NAME, INV_NUM, REMARK, LIST_GROUP, PHONES, CONFIRM, TABLE_NO, INV_STATUS, ADDRESS, "
        "PRESENT_TYPE, PRESENT) SELECT 'משפחה ' || i, 'א', 5, '', '1', '050', i % 4, CASE WHEN i <= 300 THEN 1 END, "
        "0, '', 1, '100000' FROM n").arg(count).toUtf8();
    const int rc = sqlite3_exec(db, sql.constData(), nullptr, nullptr, nullptr);
    sqlite3_close(db);
    QCOMPARE(rc, SQLITE_OK);
}

} // namespace

class StartupTest : public QObject {
    Q_OBJECT

private slots:
    void init() { test::clearUserStore(); }

    // The first start makes the wedding, shows the window, and then opens the options once.
    void aFirstStartInAnEmptyFolder()
    {
        QTemporaryDir dir;
        test::RunningProgram program;
        program.prompts.expectMessage(PromptIcon::None, Created);
        QVERIFY(program.start(dir.path()) && program.prompts.verifyDone());
        ui::MainWindow& main = program.main();
        QVERIFY(!program.windows->splash->isVisible() && main.isVisible() && !program.map().isVisible());
        QCOMPARE(main.lblWeddingCount()->text(), QStringLiteral("עוד 0 ימים לחתונה..."));
        QVERIFY(!main.testAttribute(Qt::WA_Moved)); // nothing stored: the window system chooses the place
        int opened = 0;
        test::NextModal options([&](QWidget* modal) {
            ++opened;
            QMetaObject::invokeMethod(modal, "reject", Qt::QueuedConnection);
            QVERIFY(main.isVisible()); // the window was up first
        });
        QTRY_VERIFY(options.seen());
        QTest::qWait(700); // a few more ticks
        QVERIFY(opened == 1 && !program.state.OptionsPending);

        program.prompts.expectMapSaveQuestion(PromptAnswer::Ok); // a first run has no places stored yet
        main.close();

        // The second start says nothing; a placement off every screen comes onto one, title bar and all.
        UserStore store;
        store.write(keys::MainLeft, QString::number(INT_MAX));
        store.write(keys::MainTop, QStringLiteral("-90000"));
        store.write(keys::MainWidth, QString::number(INT_MAX));
        QVERIFY(program.start(dir.path()) && !program.state.OptionsPending);
        const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
        QVERIFY2(screen.contains(program.main().frameGeometry().topLeft()), "title bar off screen");
        QCOMPARE(program.main().width(), screen.width());
    }

    void aWeddingOfFortyThousandInvitationsCountsTrue()
    {
        test::TestWedding wedding;
        wedding.createWedding(100);
        insertInvitations(wedding.state.databaseFile(), 40000);
        test::RunningProgram program;
        const QString overFull = QStringLiteral("לא ניתן להושיב יותר מ- 15 איש בשולחן"); // table 1, at each refresh
        program.prompts.expectMessage(PromptIcon::None, overFull).expectMessage(PromptIcon::None, overFull);
        QVERIFY(program.start(wedding.folder()));
        ui::MainWindow& main = program.main();

        QCOMPARE(main.grid()->model()->rowCount(), 40000);
        QStringList panels;
        for (int number = 2; number <= 6; ++number)
            panels << main.panel(number)->text();
        QCOMPARE(panels, QStringList({"מתנות ₪4000000000", "אישרו שלא מגיעים  50000", "ממתינים לאישור  100000",
                                      "אישרו שמגיעים  50000", "מס' ההזמנות  40000"}));
        QCOMPARE(program.state.TableInfo[1].PeopleCount, 1500); // past a byte and the chair limit

        // The last row is the one acted on, and the grid comes back to it after a reload.
        main.grid()->selectionModel()->setCurrentIndex(main.listModel().index(39999, 2),
                                                       QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
        program.prompts.expectQuestion(QStringLiteral("האם לעדכן את ההזמנה למשפחה 40000 א?"), PromptAnswer::No);
        main.UpdateInv();
        QCOMPARE(program.state.InvRowFrom, 40000);
        main.rememberGridPosition();
        program.prompts.expectMessage(PromptIcon::None, overFull);
        main.refreshList();
        main.restoreGridPosition();
        QCOMPARE(main.grid()->currentIndex().row(), 39999);
    }

    void aDatabaseThatIsNoWeddingEndsTheStart()
    {
        for (const bool otherTable : {false, true}) {
            QTemporaryDir dir;
            const QString file = dir.filePath(QStringLiteral("Velmora.mdb"));
            if (!otherTable) {
                test::writeFile(file, {});
            } else {
                store::Database db = store::Database::create(file);
                store::TableDef other = db.createTableDef(QStringLiteral("OTHER"));
                other.appendField(other.createField(QStringLiteral("A"), store::FieldType::Byte));
                db.appendTableDef(other);
            }
            WeddingState state;
            test::ScriptedPrompts prompts;
            prompts.expectMessage(PromptIcon::Critical, QStringLiteral("!ארעה שגיאה קריטית בתהליך שדרוג התוכנה\r\n"
                                                        "www.velmora.co.il\r\nsupport@velmora.co.il"),
                                  QStringLiteral("שדרוג גירסת תוכנה"));
            QVERIFY(!ui::Main(state, prompts, dir.path()));
            QCOMPARE(QFileInfo(file).size() == 0, !otherTable); // the empty file is not made anew
        }
    }

    // Two screens side by side; built 800 by 450, at least 300 by 200.
    void aStoredPlacementIsBroughtOntoTheScreens()
    {
        const std::optional<int> no;
        const struct { const char* name; StoredPlacement stored; std::optional<QPoint> position; QSize size; } rows[] = {
            {"nothing stored", {}, {}, {800, 450}},
            {"only a size", {no, 50, 1000, 700}, {}, {1000, 700}},
            {"largest numbers", {INT_MAX, INT_MAX, INT_MAX, INT_MAX}, QPoint(1920, 0), {1280, 994}},
            {"smallest numbers", {INT_MIN, INT_MIN, INT_MIN, -1}, QPoint(0, 30), {800, 450}},
            {"too small", {10, 40, 5, 5}, QPoint(10, 40), {300, 200}},
            {"second screen", {2000, 100, 800, 600}, QPoint(2000, 100), {800, 600}},
            {"over its edge", {2900, 900, 800, 600}, QPoint(2400, 394), {800, 600}},
            {"monitor gone", {-1900, 300, 800, 600}, QPoint(0, 300), {800, 600}},
        };
        const QList<QRect> screens = {QRect(0, 30, 1920, 1050), QRect(1920, 0, 1280, 994)};
        for (const auto& row : rows) {
            const Placement placed = PlaceOnScreens(row.stored, QSize(800, 450), QSize(300, 200), screens);
            QVERIFY2(placed.position == row.position && placed.size == row.size, row.name);
        }
    }
};

VELMORA_TEST_MAIN(StartupTest)
#include "test_startup.moc"
