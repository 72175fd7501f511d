#include "FullDisk.h"
#include "ScriptedPrompts.h"
#include "TestMain.h"
#include "TestWedding.h"

#include "app/WeddingState.h"
#include "app/PendingFailure.h"
#include "store/Schema.h"
#include "store/Upgrade.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>

using namespace velmora;
using namespace velmora::store;

namespace {

QString sqlite3(const QString& file, const QString& sql)
{
    QProcess process;
    process.start(QStringLiteral("sqlite3"), {QStringLiteral("-readonly"), file, sql});
    process.waitForFinished(10000);
    return QString::fromUtf8(process.readAllStandardOutput()) + QString::fromUtf8(process.readAllStandardError());
}

const QString Created = QStringLiteral("תהליך יצירת מבנה הנתונים הסתיים בהצלחה.");

} // namespace

class SchemaTest : public QObject {
    Q_OBJECT

private slots:
    void createsBothTablesAndSaysSo()
    {
        test::TestWedding wedding;
        WeddingState& state = wedding.state;
        test::ScriptedPrompts prompts;
        prompts.expectMessage(PromptIcon::None, Created);
        QVERIFY(CreateNewDatabase(state, prompts));
        const QString file = state.databaseFile();
        QVERIFY(state.WeddingDb.isOpen() && state.WeddingDb.path() == file); // left open for the first list load
        state.WeddingDb.close();

        // Read back by sqlite3 itself, in file order; a key, index, view or trigger would show.
        QCOMPARE(sqlite3(file, QStringLiteral("SELECT name || ' ' || type FROM sqlite_schema ORDER BY rowid")),
                 QStringLiteral("VELMORA_LIST table\nVELMORA_BUDGET table\n"));
        QCOMPARE(sqlite3(file, QStringLiteral("SELECT name || ' ' || type || ' ' || \"notnull\" FROM "
                                              "pragma_table_info('VELMORA_LIST') ORDER BY cid")),
                 QStringLiteral("FIRST_NAME TEXT(20) 1\nFAMILY_NAME TEXT(20) 1\nINV_NUM TINYINT 0\nREMARK TEXT(40) 0\n"
                                "LIST_GROUP TEXT(50) 0\nCHECK SMALLINT 0\nPHONES TEXT(30) 0\nCONFIRM TINYINT 1\n"
                                "TABLE_NO TINYINT 0\nINV_STATUS BOOLEAN 0\nADDRESS TEXT(50) 0\nPRESENT_TYPE TINYINT 0\n"
                                "PRESENT TEXT(20) 0\n"));
        const QString budget = sqlite3(file, QStringLiteral("SELECT group_concat(name || ':' || type || ':' || \"notnull\", ' ') "
                                                            "FROM pragma_table_info('VELMORA_BUDGET')"));
        QVERIFY2(budget.startsWith(QStringLiteral("B_DRESS:CURRENCY:1 ")) && budget.count(QStringLiteral(":CURRENCY:1")) == 30,
                 qPrintable(budget));
    }

    // Full before the guest list: nothing is left to start from; after it, the upgrade completes the file.
    void aCreationThatFailsLeavesWhatTheNextStartCanUse()
    {
        for (const bool listMade : {false, true}) {
            rlim_t room = 0;
            if (listMade) { // room for the guest list alone
                QTemporaryDir scratch;
                Database db = Database::create(scratch.filePath(QStringLiteral("list.mdb")), DatabaseLocale, DatabaseVersion);
                PendingFailure pending;
                appendTable(db, ListTable, listFields(), pending);
                db.close();
                room = rlim_t(QFileInfo(scratch.filePath(QStringLiteral("list.mdb"))).size());
            }
            test::TestWedding wedding;
            WeddingState& state = wedding.state;
            test::ScriptedPrompts prompts;
            prompts.expectMessage(PromptIcon::Critical, QStringLiteral("!ארעה שגיאה קריטית בתהליך יצירת התוכנה\r\n"
                                                        "www.velmora.co.il\r\nsupport@velmora.co.il"),
                                  QStringLiteral("שדרוג גירסת תוכנה"));
            {
                test::FullDisk full(room);
                QVERIFY(!CreateNewDatabase(state, prompts));
            }
            QVERIFY(!state.WeddingDb.isOpen());
            QCOMPARE(QDir(wedding.folder()).entryList(QDir::Files | QDir::Hidden),
                     listMade ? QStringList{QStringLiteral("Velmora.mdb")} : QStringList());
            if (!listMade) {
                prompts.expectMessage(PromptIcon::None, Created);
                QVERIFY(CreateNewDatabase(state, prompts));
                state.WeddingDb.close();
                continue;
            }
            state.WeddingDb = Database::open(state.databaseFile());
            prompts.expectMessage(PromptIcon::None, QStringLiteral("תהליך שידרוג מבנה הנתונים הסתיים בהצלחה."));
            QVERIFY(UpdateDatabase(state, prompts));
            state.WeddingDb.close();
            QCOMPARE(sqlite3(state.databaseFile(), QStringLiteral("select count(*) from VELMORA_BUDGET; pragma integrity_check;")),
                     QStringLiteral("0\nok\n"));
        }
    }
};

VELMORA_TEST_MAIN(SchemaTest)
#include "test_schema.moc"
