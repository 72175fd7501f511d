#include "RunningProgram.h"
#include "TestMain.h"
#include "TestWedding.h"

#include "app/Product.h"
#include "app/StartFolder.h"
#include "app/ui/MainWindow.h"

#include <QDirIterator>
#include <QImage>
#include <QProcess>
#include <QStandardPaths>

using namespace velmora;

namespace {
struct Ran { int code; QString out, err; }; // code -1: missing or crashed
Ran run(const QString& program, const QStringList& arguments, const QStringList& environment = {})
{
    QProcess process;
    QProcessEnvironment changed = QProcessEnvironment::systemEnvironment();
    for (const QString& variable : environment)
        changed.insert(variable.section(u'=', 0, 0), variable.section(u'=', 1));
    process.setProcessEnvironment(changed);
    process.start(program, arguments);
    process.waitForFinished(600000);
    return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
            QString::fromLocal8Bit(process.readAllStandardOutput()), QString::fromLocal8Bit(process.readAllStandardError())};
}
} // namespace

class PackageTest : public QObject {
    Q_OBJECT
    QTemporaryDir m_dest;
    QString m_usr;
    QStringList m_files; // the installed tree, relative to its root

private slots:
    void initTestCase()
    {
        const Ran ran = run(VELMORA_CMAKE, {"--install", VELMORA_BUILD_DIR, "--prefix", "/usr"}, {"DESTDIR=" + m_dest.path()});
        QVERIFY2(ran.code == 0, qPrintable(ran.out + ran.err));
        m_usr = m_dest.filePath(QStringLiteral("usr/"));
        for (QDirIterator it(m_dest.path(), QDir::Files, QDirIterator::Subdirectories); it.hasNext();)
            m_files << QDir(m_dest.path()).relativeFilePath(it.next());
        m_files.sort();
    }

    // Program, designs, menu entry, metadata, icons, manual and notes; entry and metadata pass their validators.
    void theInstalledTree()
    {
        const QString entry = m_usr + "share/applications/il.co.velmora.Velmora.desktop";
        const QString metadata = m_usr + "share/metainfo/il.co.velmora.Velmora.metainfo.xml";
        for (const QString& file : {m_usr + "bin/velmora", entry, metadata, m_usr + "share/icons/hicolor/scalable/apps/velmora.svg",
                                    m_usr + "share/man/man1/velmora.1.gz", m_usr + "share/doc/velmora/copyright",
                                    m_usr + "share/doc/velmora/changelog.gz"})
            QVERIFY2(QFileInfo::exists(file), qPrintable(file));
        QVERIFY(!QDir(m_usr + "share/velmora/design").entryList({"*.gif"}).isEmpty());
        for (int size : {16, 24, 32, 48, 64, 128, 256})
            QCOMPARE(QImage(m_usr + QStringLiteral("share/icons/hicolor/%1x%1/apps/velmora.png").arg(size)).size(), QSize(size, size));
        const QStringList lines = QString::fromUtf8(test::fileBytes(entry)).split(u'\n');
        for (const char* line : {"Name[he]=ולמורה", "Categories=Office;", "Exec=velmora --documents"})
            QVERIFY2(lines.contains(QString::fromUtf8(line)), line);
        const Ran validated = run("desktop-file-validate", {entry});
        QVERIFY2(validated.code == 0 && validated.out.isEmpty(), qPrintable(validated.out));
        const Ran checked = run("appstreamcli", {"validate", "--no-net", metadata});
        QVERIFY2(checked.code == 0 || checked.code == -1, qPrintable(checked.out)); // -1: not installed
    }

    // The package holds the installed tree and depends on exactly what it needs; lintian, if there, finds no error.
    void theDebianPackage()
    {
        QTemporaryDir out;
        const Ran packed = run(VELMORA_CPACK, {"-G", "DEB", "-B", out.path(), "--config", VELMORA_BUILD_DIR "/CPackConfig.cmake"});
        QVERIFY2(packed.code == 0, qPrintable(packed.out + packed.err));
        const QString deb = out.filePath(QDir(out.path()).entryList({QStringLiteral("velmora_*.deb")}).value(0));
        QStringList contents, depends;
        for (const QString& line : run("dpkg-deb", {"-c", deb}).out.split(u'\n', Qt::SkipEmptyParts))
            if (!line.endsWith(u'/'))
                contents << line.section(QStringLiteral("./"), 1);
        contents.sort();
        QCOMPARE(contents, m_files);
        for (const QString& item : run("dpkg-deb", {"-f", deb, "Depends"}).out.split(u','))
            depends << item.trimmed().section(u' ', 0, 0);
        depends.sort();
        QCOMPARE(depends, QStringList({"fonts-liberation2", "libc6", "libgcc-s1", "libqt6core6", "libqt6gui6", "libqt6printsupport6",
                                       "libqt6serialport6", "libqt6widgets6", "libsqlite3-0", "libstdc++6", "qt6-qpa-plugins",
                                       "qt6-translations-l10n"}));
        const Ran lint = run("lintian", {"--fail-on", "error", deb});
        QVERIFY2(lint.code == 0 || lint.code == -1, qPrintable(lint.out)); // -1: not installed
    }

    // Where the wedding opens, by how it was started; the title names the folder unless it is the one started in.
    void theWeddingsFolder()
    {
        using Row = std::tuple<QStringList, QString, QString>; // arguments, started in, the wedding's folder
        for (const auto& [arguments, startedIn, wedding] :
             {Row{{"--documents"}, "work", "Documents/Velmora"}, Row{{}, "", "Documents/Velmora"}, Row{{}, "/", "Documents/Velmora"},
              Row{{}, "work", "work"}, Row{{"new/wedding"}, "work", "work/new/wedding"}, Row{{"."}, "", ""}}) {
            const auto label = qScopeGuard([&] { if (QTest::currentTestFailed()) qWarning() << arguments << "in" << startedIn; });
            QTemporaryDir home;
            const QDir at(home.path());
            at.mkpath(QStringLiteral("work"));
            const QString started = startedIn == u"/" ? startedIn : QDir::cleanPath(at.filePath(startedIn));
            const QString folder = QDir::cleanPath(at.filePath(wedding));
            const CommandLine line = ReadCommandLine(QStringList{"velmora"} + arguments);
            test::RunningProgram program;
            program.prompts.expectMessage(PromptIcon::None, QStringLiteral("תהליך יצירת מבנה הנתונים הסתיים בהצלחה."));
            program.windows = ui::StartIn(program.state, program.prompts,
                                          WeddingFolder(line, started, home.path(), at.filePath("Documents")), started);
            QVERIFY(line.starts() && program.windows && program.prompts.verifyDone());
            QVERIFY(QFileInfo::exists(folder + QStringLiteral("/Velmora.mdb")));
            const QString caption = QStringLiteral("רשימת מוזמנים");
            QCOMPARE(program.main().windowTitle(), folder == started ? caption : caption + QStringLiteral(" - \u200E") + folder);
        }
    }

    // Help and version answer without a display; a wrong line gets its fault and the usage on stderr.
    void theCommandLine()
    {
        using Row = std::tuple<QStringList, int, QString>;
        for (const auto& [arguments, code, shown] :
             {Row{{"--version"}, 0, product::Title + u' ' + product::version()}, Row{{"-h"}, 0, "Usage: velmora [options] [folder]"},
              Row{{"a", "b"}, 2, "Name one folder only."}, Row{{"--colour"}, 2, "Unknown option 'colour'"}}) {
            const auto label = qScopeGuard([&] { if (QTest::currentTestFailed()) qWarning() << arguments; });
            const Ran ran = run(VELMORA_PROGRAM, arguments, {"DISPLAY=", QStringLiteral("QT_QPA_PLATFORM=") + (code ? "offscreen" : "xcb")});
            QCOMPARE(ran.code, code);
            const QString said = code == 0 ? ran.out : ran.err;
            QVERIFY2(said.contains(shown) && (code == 0 || said.contains("Usage: velmora")), qPrintable(ran.out + ran.err));
        }
    }
};

VELMORA_TEST_MAIN(PackageTest)
#include "test_package.moc"
