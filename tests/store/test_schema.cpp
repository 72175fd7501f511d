#include "FullDisk.h"
#include "ScriptedPrompts.h"
#include "TestMain.h"

#include "app/WeddingState.h"
#include "store/Schema.h"

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>

using namespace velmora;
using namespace velmora::store;

namespace {

QString sqlite3(const QString& file, const QString& sql)
{
    QProcess process;
    process.start(QStringLiteral("sqlite3"), {QStringLiteral("-readonly"), file, sql});
    if (!process.waitForFinished(10000))
        return QStringLiteral("<sqlite3 did not finish>");
    return QString::fromUtf8(process.readAllStandardOutput()) + QString::fromUtf8(process.readAllStandardError());
}

WeddingState stateIn(const QString& folder)
{
    WeddingState state;
    state.AppPath = folder + u'/';
    state.CrLf = QStringLiteral("\r\n");
    return state;
}

} // namespace

class SchemaTest : public QObject {
    Q_OBJECT

private slots:
    void createsBothTablesAndSaysSo()
    {
        QTemporaryDir dir;
        WeddingState state = stateIn(dir.path());
        test::ScriptedPrompts prompts;
        prompts.expectMessage(PromptIcon::None, QStringLiteral("תהליך יצירת מבנה הנתונים הסתיים בהצלחה."));
        QVERIFY(CreateNewDatabase(state, prompts));
        QVERIFY(state.WeddingDb.isOpen()); // left open for the first list load
        QCOMPARE(state.WeddingDb.path(), dir.filePath(QStringLiteral("Velmora.mdb")));
        state.WeddingDb.close();

        // Read back by an independent reader: name, declared type, NOT NULL, in file order.
        const QString file = dir.filePath(QStringLiteral("Velmora.mdb"));
        QCOMPARE(sqlite3(file, QStringLiteral("SELECT name FROM sqlite_schema WHERE type='table' ORDER BY rowid")),
                 QStringLiteral("VELMORA_LIST\nVELMORA_BUDGET\n"));
        QCOMPARE(sqlite3(file, QStringLiteral("SELECT name || ' ' || type || ' ' || \"notnull\" FROM "
                                              "pragma_table_info('VELMORA_LIST') ORDER BY cid")),
                 QStringLiteral("FIRST_NAME TEXT(20) 1\n"
                                "FAMILY_NAME TEXT(20) 1\n"
                                "INV_NUM TINYINT 0\n"
                                "REMARK TEXT(40) 0\n"
                                "LIST_GROUP TEXT(50) 0\n"
                                "CHECK SMALLINT 0\n"
                                "PHONES TEXT(30) 0\n"
                                "CONFIRM TINYINT 1\n"
                                "TABLE_NO TINYINT 0\n"
                                "INV_STATUS BOOLEAN 0\n"
                                "ADDRESS TEXT(50) 0\n"
                                "PRESENT_TYPE TINYINT 0\n"
                                "PRESENT TEXT(20) 0\n"));
        const QString budget = sqlite3(file, QStringLiteral("SELECT group_concat(name || ':' || type || ':' || \"notnull\", ' ') "
                                                            "FROM pragma_table_info('VELMORA_BUDGET')"));
        QVERIFY2(budget.startsWith(QStringLiteral("B_DRESS:CURRENCY:1 B_SUIT:CURRENCY:1 B_SHOES:CURRENCY:1")), qPrintable(budget));
        QVERIFY(budget.trimmed().endsWith(QStringLiteral("B_TIPS:CURRENCY:1 B_EXTRA:CURRENCY:1")));
        QCOMPARE(budget.count(QStringLiteral(":CURRENCY:1")), 30);
        // No keys, indexes, views or triggers: a table is its fields.
        QCOMPARE(sqlite3(file, QStringLiteral("SELECT count(*) FROM sqlite_schema WHERE type <> 'table'")), QStringLiteral("0\n"));

        // Empty text is allowed in these fields only.
        QStringList emptyAllowed;
        const TableDef list = Database::open(file).tableDef(ListTable);
        for (const FieldDef& field : list.fields()) {
            if (field.allowZeroLength)
                emptyAllowed << field.name;
        }
        QCOMPARE(emptyAllowed, QStringList({"REMARK", "PHONES", "ADDRESS", "PRESENT"}));
    }

    void aCreationThatFailsLeavesNothingAndTheNextOneWorks()
    {
        QTemporaryDir dir;
        WeddingState state = stateIn(dir.path());
        test::ScriptedPrompts prompts;
        prompts.expectMessage(PromptIcon::Critical,
                              QStringLiteral("!ארעה שגיאה קריטית בתהליך יצירת התוכנה\r\nwww.velmora.co.il\r\nsupport@velmora.co.il"),
                              QStringLiteral("שדרוג גירסת תוכנה"));
        {
            test::FullDisk full;
            QVERIFY(!CreateNewDatabase(state, prompts));
        }
        QVERIFY(!state.WeddingDb.isOpen());
        QCOMPARE(QDir(dir.path()).entryList(QDir::Files | QDir::Hidden), QStringList());

        prompts.expectMessage(PromptIcon::None, QStringLiteral("תהליך יצירת מבנה הנתונים הסתיים בהצלחה."));
        QVERIFY(CreateNewDatabase(state, prompts));
        QCOMPARE(QDir(dir.path()).entryList(QDir::Files), QStringList{QStringLiteral("Velmora.mdb")});
    }
};

VELMORA_TEST_MAIN(SchemaTest)
#include "test_schema.moc"
