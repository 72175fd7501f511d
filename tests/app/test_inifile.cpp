#include "FullDisk.h"
#include "TestMain.h"
#include "TestWedding.h"

#include "app/IniFile.h"

#include <QDir>
#include <QFile>
#include <QStringEncoder>

using namespace velmora;
using test::fileBytes;
using test::writeFile;

namespace {

QByteArray cp1255(const QString& text) { return QStringEncoder("windows-1255").encode(text); }

} // namespace

class IniFileTest : public QObject {
    Q_OBJECT

private:
    QTemporaryDir m_dir;
    QString m_file;

    int filesInFolder() const { return int(QDir(m_dir.path()).entryList(QDir::Files).size()); }

private slots:
    void init()
    {
        m_file = m_dir.filePath(QStringLiteral("velmora.ini"));
        QFile::remove(m_file);
    }

    void aMissingFileGivesDefaultsAndIsMadeByAWrite()
    {
        QCOMPARE(ReadIniValue(m_file, "Options", "Max Tables", "100"), QStringLiteral("100"));
        ClearIniSection(m_file, "Options");
        QVERIFY(!QFile::exists(m_file));

        for (const auto& [section, key, value] : {std::tuple("Options", "Couple", "דנה ויואב"), {"Options", "Max Tables", "40"},
                                                  {"Print", "Label Frame", "True"}, {"Options", "Max Chairs", ""}})
            QVERIFY(WriteIniValue(m_file, section, key, QString::fromUtf8(value)));
        // A line break in a value would make a new entry of it.
        QVERIFY(WriteIniValue(m_file, "Print", "Note Background", QStringLiteral("א\r\n[Options]\nCouple=x")));
        QCOMPARE(fileBytes(m_file), "[Options]\r\nCouple=" + cp1255(QStringLiteral("דנה ויואב"))
                                      + "\r\nMax Tables=40\r\nMax Chairs=\r\n\r\n[Print]\r\nLabel Frame=True\r\n"
                                      + "Note Background=" + cp1255(QStringLiteral("א [Options] Couple=x")) + "\r\n");
        QCOMPARE(ReadIniValue(m_file, "Options", "Max Chairs", "15"), QString()); // present but empty
        QCOMPARE(ReadIniValue(m_file, "Nowhere", "Couple", "x"), QStringLiteral("x"));

        const QString longValue = QString(300, QChar(u'א'));
        QVERIFY(WriteIniValue(m_file, "TablesMap", "GardenMapBackground", longValue));
        QCOMPARE(ReadIniValue(m_file, "TablesMap", "GardenMapBackground", ""), longValue.left(255));
        QVERIFY(fileBytes(m_file).contains(cp1255(longValue))); // kept whole on disk
        QCOMPARE(filesInFolder(), 1); // no temporary left behind
    }

    // An old file's code page is read and kept; UTF-8 only where it can't hold the text.
    void theFilesCodePage()
    {
        const QByteArray old = "; written by the old program\r\n[Options]\r\nCouple=" + cp1255(QStringLiteral("שירה ועומר"))
            + "\r\nHis Family = " + cp1255(QStringLiteral("משפחת כ\"ץ")) + "  \r\nWedding Date=05/03/2027\r\n"
            + "[UserGroups]\r\nGroup-0=" + cp1255(QStringLiteral("חברים ₪ ״צבא״")) + "\r\n";
        writeFile(m_file, old);
        QCOMPARE(ReadIniValue(m_file, "options", "COUPLE", ""), QStringLiteral("שירה ועומר")); // any case
        QCOMPARE(ReadIniValue(m_file, "Options", "His Family", ""), QStringLiteral("משפחת כ\"ץ")); // blanks trimmed
        QCOMPARE(ReadIniValue(m_file, "UserGroups", "Group-0", ""), QStringLiteral("חברים ₪ ״צבא״"));

        // A rewrite of one value leaves every other byte as it was.
        QVERIFY(WriteIniValue(m_file, "Options", "Wedding Date", "06/03/2027"));
        QCOMPARE(fileBytes(m_file), QByteArray(old).replace("05/03/2027", "06/03/2027"));

        // A new file takes UTF-8 for text the code page can't hold, and keeps it.
        QFile::remove(m_file);
        QVERIFY(WriteIniValue(m_file, "Options", "Couple", QStringLiteral("דנה")));
        QVERIFY(WriteIniValue(m_file, "UserGroups", "Group-3", QStringLiteral("Наташа и سارة")));
        QCOMPARE(fileBytes(m_file), "\xEF\xBB\xBF[Options]\r\nCouple=" + QStringLiteral("דנה").toUtf8()
                                      + "\r\n\r\n[UserGroups]\r\nGroup-3=" + QStringLiteral("Наташа и سارة").toUtf8() + "\r\n");
        QCOMPARE(ReadIniValue(m_file, "UserGroups", "Group-3", ""), QStringLiteral("Наташа и سارة"));
        QVERIFY(WriteIniValue(m_file, "Options", "Her Family", QStringLiteral("לוי")));
        QVERIFY(fileBytes(m_file).contains("Her Family=" + QStringLiteral("לוי").toUtf8()));
    }

    // A section is cleared whole, in every spelling; odd lines neither break reads nor get lost.
    void clearingAndOddLines()
    {
        writeFile(m_file, "[Options]\nNumOfGroups=6\n[UserGroups]\nGroup-0=a\nGroup-5=f\n\n[userGroups]\nGroup-9=z\n[Print]\nLabel Color=255\n");
        ClearIniSection(m_file, "UserGroups");
        QCOMPARE(fileBytes(m_file), QByteArray("[Options]\nNumOfGroups=6\n[Print]\nLabel Color=255\n"));
        QVERIFY(WriteIniValue(m_file, "Options", "Max Tables", "20")); // an LF file keeps LF line ends
        QCOMPARE(fileBytes(m_file), QByteArray("[Options]\nNumOfGroups=6\nMax Tables=20\n[Print]\nLabel Color=255\n"));

        const QByteArray odd = "Loose=before any section\r\n\xEF\xBB\xBF junk without equals\r\n[Options\r\n=blank key\r\n"
                               "no equals sign here\nMax Tables=30\n; Max Chairs=99\nMax Chairs=12\r"; // no line end but a CR
        writeFile(m_file, odd);
        QCOMPARE(ReadIniValue(m_file, "Options", "Max Tables", "100") + ReadIniValue(m_file, "Options", "Max Chairs", "15"),
                 QStringLiteral("3012"));
        QCOMPARE(ReadIniValue(m_file, "Options", "", "d") + ReadIniValue(m_file, "", "Loose", "d"), QStringLiteral("dd"));
        QVERIFY(WriteIniValue(m_file, "Options", "Couple", "x"));
        QCOMPARE(fileBytes(m_file), odd + "\nCouple=x\r\n");

        const QByteArray huge = "[Print]\r\nNote Background=" + QByteArray(2 * 1024 * 1024, 'q') + "\r\n";
        writeFile(m_file, huge);
        QCOMPARE(ReadIniValue(m_file, "Print", "Note Background", "").size(), 255);
        QVERIFY(WriteIniValue(m_file, "Print", "Note Color", "1"));
        QCOMPARE(fileBytes(m_file), huge + "Note Color=1\r\n");
    }

    void aFailedWriteLeavesTheFileAsItWas()
    {
        const QByteArray old = "[Options]\r\nCouple=" + cp1255(QStringLiteral("דנה ויואב")) + "\r\n[TablesMap]\r\nTableNum-1=0, 0\r\n";
        writeFile(m_file, old);
        {
            test::FullDisk full;
            QVERIFY(!WriteIniValue(m_file, "Options", "His Family", QStringLiteral("משפחת כהן")));
            QVERIFY(!WriteIniValues(m_file, "TablesMap", {{"TableNum-1", "10, 10"}, {"TableNum-2", "20, 20"}}));
            ClearIniSection(m_file, "TablesMap");
        }
        QCOMPARE(fileBytes(m_file), old);
        QCOMPARE(filesInFolder(), 1);

        QVERIFY(QDir(m_dir.path()).mkdir(QStringLiteral("folder.ini")));
        const QString folder = m_dir.filePath(QStringLiteral("folder.ini"));
        QCOMPARE(ReadIniValue(folder, "Options", "Couple", "d"), QStringLiteral("d"));
        QVERIFY(!WriteIniValue(folder, "Options", "Couple", "x"));
        QVERIFY(!WriteIniValue(m_dir.filePath(QStringLiteral("no/such/velmora.ini")), "Options", "Couple", "x"));
    }
};

VELMORA_TEST_MAIN(IniFileTest)
#include "test_inifile.moc"
