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
    void reading()
    {
        using enum CsvEncoding;
        const struct { QByteArray bytes; QString rows; CsvEncoding encoding; char separator; } files[] = {
            {"\xEF\xBB\xBF" "שם,הערה\r\n\"לוי, דנה\",\"אמרה \"\"כן\"\"\r\nבטלפון\"\r\n", "שם|הערה/לוי, דנה|אמרה \"כן\"\nבטלפון",
             Utf8Bom, ','}, // quoted comma, quote and line break
            {"\xEC\xE5\xE9;\xE3\xF0\xE4;\xA4" "100\r\n", "לוי|דנה|₪100", Windows1255, ';'}, // as an older spreadsheet saves it
            {"a\tb,c\r\r\n\t\n1\t\"2\"\r3\t4", "a|b,c/1|2/3|4", Utf8, '\t'}, // blank and CR-only lines
            {QByteArray("\xFF\xFE" "a\0\t\0\xD3\x05\n\0", 10), "a|ד", Utf16, '\t'},
            {"a,b,c\n1\n\xEF\xBB\xBFx,y\"z", "a|b|c/1/x|y\"z", Utf8, ','}, // a mark mid-file, ragged rows, a stray quote
            {"\"a;b;c\",d\n", "a;b;c|d", Utf8, ','}, // a separator inside quotes doesn't count
        };
        for (const auto& file : files) {
            const store::CsvParse parsed = store::ParseCsv(file.bytes);
            QVERIFY2(parsed.table, qPrintable(parsed.error));
            QCOMPARE(flat(parsed.table->rows), file.rows);
            QVERIFY2(parsed.table->encoding == file.encoding && parsed.table->separator == file.separator,
                     qPrintable(file.rows));
        }
    }

    // Files that hold no list: a message each, never rows.
    void refused()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("in.csv")), empty = QStringLiteral("הקובץ ריק.");
        const struct { QByteArray bytes; qint64 size; QString message; } files[] = {
            {"", 0, empty},
            {"\xEF\xBB\xBF \r\n,,\r\n", 0, empty}, // a mark and blanks
            {QByteArray("\x89PNG\r\n\x1A\n\0\0\0\rIHDR", 16), 0, "הקובץ אינו קובץ טקסט: לא ניתן לקרוא ממנו רשימה."},
            {"a,b\n\"c,d\ne,f\n", 0, "בשורה 2 נפתחו מרכאות שלא נסגרו עד סוף הקובץ."},
            {"a,b\n", qint64(50) * 1024 * 1024, "הקובץ גדול מדי לרשימת מוזמנים: יותר מ-16 מגה-בתים."},
        };
        for (const auto& [bytes, size, message] : files) {
            test::writeFile(path, bytes);
            QVERIFY(!size || QFile::resize(path, size));
            const store::CsvParse parsed = store::ReadCsvFile(path);
            QVERIFY(!parsed.table);
            QCOMPARE(parsed.error, message);
        }
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
        QStringList expected = cells;
        expected[2] = QStringLiteral("שורה\nשנייה"); // a break in a cell reads as a spreadsheet keeps it
        QCOMPARE(store::ParseCsv(out).table.value().rows.front(), expected);
    }

    // A write that fails half-way keeps the file that was there.
    void failedWriteKeepsTheOldFile()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("out.csv"));
        QVERIFY(!store::WriteWholeFile(path, "old"));
        const auto reason = [&] {
            const test::FullDisk disk(4096);
            return store::WriteWholeFile(path, QByteArray(100000, 'x'));
        }();
        QVERIFY(reason && !reason->isEmpty());
        QCOMPARE(test::fileBytes(path), QByteArray("old"));
    }
};

VELMORA_TEST_MAIN(CsvTextTest)
#include "test_csvtext.moc"
