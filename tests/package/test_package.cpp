#include "TestMain.h"

#include "app/StartFolder.h"

#include <QDirIterator>
#include <QImage>
#include <QProcess>
#include <QStandardPaths>

namespace {

struct Ran {
    int exitCode;
    QString out;
};

Ran run(const QString& program, const QStringList& arguments, const QProcessEnvironment& environment = {})
{
    QProcess process;
    if (!environment.isEmpty())
        process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, arguments);
    process.waitForFinished(600000);
    return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
            QString::fromLocal8Bit(process.readAll())};
}

const QString Entry = QStringLiteral("share/applications/il.co.velmora.Velmora.desktop");

} // namespace

class PackageTest : public QObject {
    Q_OBJECT

    QTemporaryDir m_dest;
    QString m_usr;
    QStringList m_files; // the installed tree, relative to its root

private slots:
    void initTestCase()
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("DESTDIR"), m_dest.path());
        const Ran installed = run(QStringLiteral(VELMORA_CMAKE),
                                  {"--install", VELMORA_BUILD_DIR, "--prefix", "/usr"}, environment);
        QVERIFY2(installed.exitCode == 0, qPrintable(installed.out));
        m_usr = m_dest.filePath(QStringLiteral("usr"));
        for (QDirIterator it(m_dest.path(), QDir::Files, QDirIterator::Subdirectories); it.hasNext();)
            m_files << QDir(m_dest.path()).relativeFilePath(it.next());
        m_files.sort();
    }

    // The program with its menu entry, metadata, icons, manual page and Debian's notes, and
    // the place of the design pictures.
    void theInstalledTree()
    {
        for (const char* file : {"bin/velmora", "share/metainfo/il.co.velmora.Velmora.metainfo.xml",
                                 "share/icons/hicolor/scalable/apps/velmora.svg", "share/man/man1/velmora.1.gz",
                                 "share/doc/velmora/copyright", "share/doc/velmora/changelog.gz"})
            QVERIFY2(m_files.contains(QStringLiteral("usr/") + QLatin1String(file)), file);
        QVERIFY(m_files.contains(QStringLiteral("usr/") + Entry));
        QCOMPARE(velmora::ProgramDataFolder(m_usr + QStringLiteral("/bin")), m_usr + QStringLiteral("/share/velmora/"));
        for (int size : {16, 24, 32, 48, 64, 128, 256}) {
            const QString icon = QStringLiteral("%1/share/icons/hicolor/%2x%2/apps/velmora.png").arg(m_usr).arg(size);
            QCOMPARE(QImage(icon).size(), QSize(size, size));
        }

        QFile entry(m_usr + u'/' + Entry);
        QVERIFY(entry.open(QIODevice::ReadOnly));
        const QStringList lines = QString::fromUtf8(entry.readAll()).split(u'\n');
        for (const char* line : {"Name=Velmora", "Name[he]=ולמורה", "Categories=Office;", "Exec=velmora --documents"})
            QVERIFY2(lines.contains(QString::fromUtf8(line)), line);
        const Ran validated = run(QStringLiteral("desktop-file-validate"), {entry.fileName()});
        QVERIFY2(validated.exitCode == 0 && validated.out.isEmpty(), qPrintable(validated.out));
        if (QStandardPaths::findExecutable(QStringLiteral("appstreamcli")).isEmpty())
            return;
        const Ran metadata = run(QStringLiteral("appstreamcli"),
                                 {"validate", "--no-net", m_usr + "/share/metainfo/il.co.velmora.Velmora.metainfo.xml"});
        QVERIFY2(metadata.exitCode == 0, qPrintable(metadata.out));
    }

    // Started by its menu entry in the home folder, the installed program makes its wedding
    // in the documents folder.
    void startedFromTheMenu()
    {
        QTemporaryDir home;
        QProcess program;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("HOME"), home.path());
        environment.remove(QStringLiteral("XDG_CONFIG_HOME"));
        program.setProcessEnvironment(environment);
        program.setWorkingDirectory(home.path());
        program.start(m_usr + QStringLiteral("/bin/velmora"), {QStringLiteral("--documents")});
        QTRY_VERIFY_WITH_TIMEOUT(QFileInfo::exists(home.filePath(QStringLiteral("Documents/Velmora/Velmora.mdb"))), 20000);
        program.kill();
        program.waitForFinished();
        QVERIFY(!QFileInfo::exists(home.filePath(QStringLiteral("Velmora.mdb"))));
    }

    // The package holds the installed tree, and depends on exactly what it needs.
    void theDebianPackage()
    {
        QTemporaryDir out;
        const Ran packed = run(QStringLiteral(VELMORA_CPACK),
                               {"-G", "DEB", "-B", out.path(), "--config", VELMORA_BUILD_DIR "/CPackConfig.cmake"});
        QVERIFY2(packed.exitCode == 0, qPrintable(packed.out));
        const QStringList debs = QDir(out.path()).entryList({QStringLiteral("velmora_*.deb")});
        QCOMPARE(debs.size(), 1);
        const QString deb = out.filePath(debs.first());

        QStringList contents;
        for (const QString& line : run(QStringLiteral("dpkg-deb"), {"-c", deb}).out.split(u'\n'))
            if (!line.isEmpty() && !line.endsWith(u'/'))
                contents << line.section(QStringLiteral("./"), 1);
        contents.sort();
        QCOMPARE(contents, m_files);

        QStringList depends;
        for (const QString& item : run(QStringLiteral("dpkg-deb"), {"-f", deb, "Depends"}).out.split(u','))
            depends << item.trimmed().section(u' ', 0, 0);
        depends.sort();
        qInfo("Depends: %s", qPrintable(depends.join(u' ')));
        QCOMPARE(depends, QStringList({"fonts-liberation2", "libc6", "libgcc-s1", "libqt6core6", "libqt6gui6",
                                       "libqt6printsupport6", "libqt6serialport6", "libqt6widgets6", "libsqlite3-0",
                                       "libstdc++6", "qt6-qpa-plugins", "qt6-translations-l10n"}));
        if (QStandardPaths::findExecutable(QStringLiteral("lintian")).isEmpty())
            return;
        const Ran checked = run(QStringLiteral("lintian"), {"--fail-on", "error", deb});
        QVERIFY2(checked.exitCode == 0, qPrintable(checked.out));
    }
};

VELMORA_TEST_MAIN(PackageTest)
#include "test_package.moc"
