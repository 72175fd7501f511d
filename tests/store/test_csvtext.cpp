#include "FullDisk.h"
#include "TestMain.h"
#include "TestWedding.h"

#include "store/CsvText.h"

#include <QFile>

using namespace velmora;
using store::CsvEncoding;

namespace {

// Rows as one text: cells joined by "|", rows by "/".
QString flat(const std::vector<QStringList>& rows)
{
    QStringList joined;
    for (const QStringList& row : rows)
        joined << row.join(u'|');
    return joined.join(u'/');
}

} // namespace

class CsvTextTest : public QObject {
    Q_OBJECT

private slots:
    // Files as spreadsheet programs save them, and the odd shapes people's files take.
    void reading_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("rows");
        QTest::addColumn<int>("encoding");
        QTest::addColumn<QString>("separator");
        QTest::newRow("UTF-8 with mark, quoted comma, quote and line break")
            << QByteArray("\xEF\xBB\xBF" "שם,הערה\r\n\"לוי, דנה\",\"אמרה \"\"כן\"\"\r\nבטלפון\"\r\n")
            << QStringLiteral("שם|הערה/לוי, דנה|אמרה \"כן\"\nבטלפון") << int(CsvEncoding::Utf8Bom) << ",";
        // "לוי;דנה;₪100" in the Hebrew code page, as an older spreadsheet saves it.
        QTest::newRow("Windows-1255 with semicolons")
            << QByteArray("\xEC\xE5\xE9;\xE3\xF0\xE4;\xA4" "100\r\n") << QStringLiteral("לוי|דנה|₪100")
            << int(CsvEncoding::Windows1255) << ";";
        QTest::newRow("tabs, no mark, blank and CR-only lines")
            << QByteArray("a\tb,c\r\r\n\t\n1\t\"2\"\r3\t4") << QStringLiteral("a|b,c/1|2/3|4") << int(CsvEncoding::Utf8)
            << "\t";
        QTest::newRow("UTF-16 text with its mark")
            << QByteArray("\xFF\xFE" "a\0\t\0\xD3\x05\n\0", 10) << QStringLiteral("a|ד") << int(CsvEncoding::Utf16) << "\t";
        QTest::newRow("a mark in the middle, ragged rows, stray quote inside a field")
            << QByteArray("a,b,c\n1\n\xEF\xBB\xBFx,y\"z") << QStringLiteral("a|b|c/1/x|y\"z") << int(CsvEncoding::Utf8)
            << ",";
        QTest::newRow("separator inside quotes doesn't count")
            << QByteArray("\"a;b;c\",d\n") << QStringLiteral("a;b;c|d") << int(CsvEncoding::Utf8) << ",";
    }
    void reading()
    {
        QFETCH(QString, rows);
        QFETCH(int, encoding);
        QFETCH(QString, separator);
        QFETCH(QByteArray, bytes);
        const store::CsvParse parsed = store::ParseCsv(bytes);
        QVERIFY2(parsed.table, qPrintable(parsed.error));
        QCOMPARE(flat(parsed.table->rows), rows);
        QCOMPARE(int(parsed.table->encoding), encoding);
        QCOMPARE(QString(parsed.table->separator), separator);
    }

    // Files that hold no list: a message each, never rows.
    void refused_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<qint64>("size");
        QTest::addColumn<QString>("message");
        const QString empty = QStringLiteral("הקובץ ריק.");
        QTest::newRow("empty") << QByteArray() << qint64(0) << empty;
        QTest::newRow("a mark and blanks") << QByteArray("\xEF\xBB\xBF \r\n,,\r\n") << qint64(0) << empty;
        QTest::newRow("binary") << QByteArray("\x89PNG\r\n\x1A\n\0\0\0\rIHDR", 16) << qint64(0)
                                << QStringLiteral("הקובץ אינו קובץ טקסט: לא ניתן לקרוא ממנו רשימה.");
        QTest::newRow("unbalanced quotes") << QByteArray("a,b\n\"c,d\ne,f\n") << qint64(0)
                                           << QStringLiteral("בשורה 2 נפתחו מרכאות שלא נסגרו עד סוף הקובץ.");
        QTest::newRow("50 MB") << QByteArray("a,b\n") << qint64(50) * 1024 * 1024
                               << QStringLiteral("הקובץ גדול מדי לרשימת מוזמנים: יותר מ-16 מגה-בתים.");
    }
    void refused()
    {
        QFETCH(QString, message);
        QFETCH(QByteArray, bytes);
        QFETCH(qint64, size);
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("in.csv"));
        test::writeFile(path, bytes);
        QVERIFY(!size || QFile::resize(path, size));
        const store::CsvParse parsed = store::ReadCsvFile(path);
        QVERIFY(!parsed.table);
        QCOMPARE(parsed.error, message);
    }

    // What is written reads back cell for cell, and quotes only where it must.
    void writing()
    {
        const QStringList cells = {QStringLiteral("כהן, לוי"), QStringLiteral("אמר \"שלום\""), QStringLiteral("שורה\r\nשנייה"),
                                   QStringLiteral(" רווח"), QString(), QStringLiteral("150")};
        QByteArray out = store::CsvBom();
        store::AppendCsvRow(out, cells);
        store::AppendCsvRow(out, {QStringLiteral("x"), QString()});
        QCOMPARE(out, QByteArray("\xEF\xBB\xBF\"כהן, לוי\",\"אמר \"\"שלום\"\"\",\"שורה\r\nשנייה\",\" רווח\",,150\r\nx,\r\n"));
        const store::CsvParse parsed = store::ParseCsv(out);
        QVERIFY(parsed.table);
        QStringList expected = cells;
        expected[2] = QStringLiteral("שורה\nשנייה"); // a break in a cell reads as a spreadsheet keeps it
        QCOMPARE(parsed.table->rows.front(), expected);
    }

    // A write that fails half-way keeps the file that was there.
    void failedWriteKeepsTheOldFile()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("out.csv"));
        QVERIFY(!store::WriteWholeFile(path, "old"));
        std::optional<QString> reason;
        {
            const test::FullDisk disk(4096);
            reason = store::WriteWholeFile(path, QByteArray(100000, 'x'));
        }
        QVERIFY(reason && !reason->isEmpty());
        QCOMPARE(test::fileBytes(path), QByteArray("old"));
    }
};

VELMORA_TEST_MAIN(CsvTextTest)
#include "test_csvtext.moc"
