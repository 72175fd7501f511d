#include "RunningProgram.h"
#include "TestMain.h"

#include "app/Product.h"
#include "app/StartFolder.h"
#include "app/ui/MainWindow.h"

#include <QProcess>

using namespace velmora;

namespace {

const QString Created = QStringLiteral("תהליך יצירת מבנה הנתונים הסתיים בהצלחה.");
const QString Caption = QStringLiteral("רשימת מוזמנים");

struct Ran {
    int exitCode;
    QString out, err;
};

// The built program, without a display unless `display` is given.
Ran runProgram(const QStringList& arguments, const char* display = nullptr)
{
    QProcess program;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(QStringLiteral("DISPLAY"));
    environment.remove(QStringLiteral("WAYLAND_DISPLAY"));
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QString::fromLatin1(display ? display : "xcb"));
    program.setProcessEnvironment(environment);
    program.start(QStringLiteral(VELMORA_PROGRAM), arguments);
    if (!program.waitForFinished(20000))
        program.kill();
    return {program.exitCode(), QString::fromLocal8Bit(program.readAllStandardOutput()),
            QString::fromLocal8Bit(program.readAllStandardError())};
}

} // namespace

class StartFolderTest : public QObject {
    Q_OBJECT

private slots:
    // Where the wedding opens, by how the program was started; the title names the folder
    // whenever it isn't the one the program was started in.
    void theWeddingsFolder_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("startedIn"); // under the home folder; "/" is the root
        QTest::addColumn<QString>("wedding");   // under the home folder
        QTest::newRow("from the menu") << QStringList{"--documents"} << "work" << "Documents/Velmora";
        QTest::newRow("in the home folder") << QStringList{} << "" << "Documents/Velmora";
        QTest::newRow("in the root folder") << QStringList{} << "/" << "Documents/Velmora";
        QTest::newRow("in a folder of its own") << QStringList{} << "work" << "work";
        QTest::newRow("a folder named, made") << QStringList{"new/wedding"} << "work" << "work/new/wedding";
        QTest::newRow("the home folder named") << QStringList{"."} << "" << "";
    }
    void theWeddingsFolder()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, startedIn);
        QFETCH(QString, wedding);
        QTemporaryDir home;
        const QDir at(home.path());
        at.mkpath(QStringLiteral("work"));
        const QString started = startedIn == u"/" ? startedIn : QDir::cleanPath(at.filePath(startedIn));
        const QString folder = QDir::cleanPath(at.filePath(wedding));
        const CommandLine line = ReadCommandLine(QStringList{"velmora"} + arguments);
        QVERIFY(line.starts());

        test::RunningProgram program;
        program.prompts.expectMessage(PromptIcon::None, Created);
        program.windows = ui::StartIn(program.state, program.prompts,
                                      WeddingFolder(line, started, home.path(), at.filePath("Documents")), started);
        QVERIFY(program.windows && program.prompts.verifyDone());
        QVERIFY(QFileInfo::exists(folder + QStringLiteral("/Velmora.mdb")));
        QCOMPARE(program.state.AppPath, folder + u'/');
        QCOMPARE(program.main().windowTitle(),
                 folder == started ? Caption : Caption + QStringLiteral(" - \u200E") + folder);
    }

    // A file where the folder should be: one clear message, and no start.
    void aFileForAFolder()
    {
        QTemporaryDir home;
        const QString file = home.filePath(QStringLiteral("wedding"));
        QFile(file).open(QIODevice::WriteOnly);
        test::RunningProgram program;
        program.prompts.expectMessage(PromptIcon::Critical,
                                      QStringLiteral("לא ניתן לפתוח חתונה בתיקייה: יש קובץ בשם זה.\n") + file);
        QVERIFY(!ui::StartIn(program.state, program.prompts, file, home.path()));
        QVERIFY(program.prompts.verifyDone());
    }

    // The terminal's questions are answered without a display; a wrong line gets its fault
    // and the help, on the error stream.
    void theCommandLine_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QString>("out");
        QTest::addColumn<QString>("err");
        const QString usage = QStringLiteral("Usage: velmora [options] [folder]");
        QTest::newRow("version") << QStringList{"--version"} << 0 << product::Title + u' ' + product::version() << "";
        QTest::newRow("help") << QStringList{"-h"} << 0 << usage << "";
        QTest::newRow("two folders") << QStringList{"a", "b"} << 2 << "" << "Name one folder only.";
        QTest::newRow("folder and menu") << QStringList{"--documents", "a"} << 2 << "" << "not both";
        QTest::newRow("unknown option") << QStringList{"--colour"} << 2 << "" << "Unknown option 'colour'";
    }
    void theCommandLine()
    {
        QFETCH(QStringList, arguments);
        QFETCH(int, exitCode);
        const Ran ran = runProgram(arguments, exitCode == 0 ? nullptr : "offscreen");
        QCOMPARE(ran.exitCode, exitCode);
        QFETCH(QString, out);
        QFETCH(QString, err);
        QCOMPARE(ran.out.isEmpty(), out.isEmpty());
        QVERIFY2(ran.out.contains(out) && ran.err.contains(err), qPrintable(ran.out + ran.err));
        if (exitCode != 0)
            QVERIFY(ran.err.contains(QStringLiteral("Usage: velmora")));
    }
};

VELMORA_TEST_MAIN(StartFolderTest)
#include "test_startfolder.moc"
