#include "PrintedPdf.h"
#include "RunningProgram.h"
#include "TestMain.h"
#include "TestWedding.h"

#include "app/ui/MainWindow.h"
#include "printing/ui/ReportPreview.h"
#include "store/SampleWedding.h"

#include <QAction>
#include <QDir>
#include <QFile>
#include <QPrinterInfo>
#include <QProcess>
#include <QStandardPaths>

#include <unistd.h>

using namespace velmora;

const QString Queue = QStringLiteral("Velmora");

// A real queue on a CUPS server of the test's own, whose backend keeps each job as sent, to be read back.
class CupsPrintTest : public QObject {
    Q_OBJECT

private:
    QTemporaryDir m_root;
    QProcess m_cupsd;
    QString m_job;

    QString startCups()
    {
        if (geteuid() != 0)
            return QStringLiteral("starting a CUPS server of its own needs root");
        const QString cupsd = QStandardPaths::findExecutable(QStringLiteral("cupsd"), {"/usr/sbin", "/usr/bin"});
        const QString lpadmin = QStandardPaths::findExecutable(QStringLiteral("lpadmin"), {"/usr/sbin", "/usr/bin"});
        if (cupsd.isEmpty() || lpadmin.isEmpty() || !QDir(QStringLiteral("/usr/lib/cups/filter")).exists())
            return QStringLiteral("CUPS is not installed (packages cups, cups-client)");
        const QString d = m_root.path();
        QFile::setPermissions(d, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner | QFile::ReadGroup
                                     | QFile::ExeGroup | QFile::ReadOther | QFile::ExeOther);
        for (const char* dir : {"conf", "spool/tmp", "state", "cache", "log", "bin/backend", "out"})
            QDir().mkpath(d + u'/' + QLatin1String(dir));
        for (const char* dir : {"cgi-bin", "daemon", "driver", "filter", "monitor", "notifier"})
            QFile::link(QStringLiteral("/usr/lib/cups/") + QLatin1String(dir), d + QStringLiteral("/bin/") + QLatin1String(dir));
        m_job = d + QStringLiteral("/out/job.pdf");
        test::writeFile(d + QStringLiteral("/bin/backend/keep"),
                        "#!/bin/sh\n"
                        "if [ $# -eq 0 ]; then echo 'direct keep \"Unknown\" \"Keeps each job\"'; exit 0; fi\n"
                        "out=\"${DEVICE_URI#keep:}\"\n"
                        "if [ -n \"$6\" ]; then cat \"$6\" > \"$out.part\"; else cat > \"$out.part\"; fi\n"
                        "mv \"$out.part\" \"$out\"\n");
        QFile::setPermissions(d + QStringLiteral("/bin/backend/keep"), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        test::writeFile(d + QStringLiteral("/conf/cupsd.conf"),
                        QStringLiteral("Listen %1/cups.sock\nLogLevel warn\nWebInterface No\nBrowsing No\n"
                                       "<Location />\n  Order allow,deny\n  Allow all\n</Location>\n").arg(d).toUtf8());
        test::writeFile(d + QStringLiteral("/conf/cups-files.conf"),
                        QStringLiteral("ServerRoot %1/conf\nRequestRoot %1/spool\nTempDir %1/spool/tmp\nStateDir %1/state\n"
                                       "CacheDir %1/cache\nServerBin %1/bin\nDataDir /usr/share/cups\nAccessLog %1/log/access_log\n"
                                       "ErrorLog %1/log/error_log\nPageLog %1/log/page_log\n").arg(d).toUtf8());
        m_cupsd.setProcessChannelMode(QProcess::MergedChannels);
        m_cupsd.start(cupsd, {"-f", "-c", d + QStringLiteral("/conf/cupsd.conf"), "-s",
                              d + QStringLiteral("/conf/cups-files.conf")});
        const QString socket = d + QStringLiteral("/cups.sock");
        for (int i = 0; i < 100 && !QFile::exists(socket) && m_cupsd.state() != QProcess::NotRunning; ++i)
            QTest::qWait(50);
        if (!QFile::exists(socket))
            return QStringLiteral("cupsd did not start: ") + QString::fromUtf8(m_cupsd.readAll());
        qputenv("CUPS_SERVER", socket.toUtf8());
        if (QProcess::execute(lpadmin, {"-p", Queue, "-v", QStringLiteral("keep:") + m_job, "-E", "-m", "raw"}) != 0)
            return QStringLiteral("lpadmin failed (its error above)");
        return {};
    }

private slots:
    void initTestCase()
    {
        const QString why = startCups();
        if (!why.isEmpty())
            QSKIP(qPrintable(QStringLiteral("no CUPS here: ") + why));
    }

    void cleanupTestCase()
    {
        m_cupsd.terminate();
        if (!m_cupsd.waitForFinished(5000))
            m_cupsd.kill();
    }

    void theReportPrintsOnARealQueue()
    {
        QVERIFY(QPrinterInfo::availablePrinterNames().contains(Queue)); // what the print dialog lists

        test::TestWedding wedding;
        wedding.createWedding(40, 12);
        store::Database db = wedding.open();
        store::fillSampleWedding(db, {.invitations = 100});
        db.close();
        test::RunningProgram program;
        QVERIFY(program.start(wedding.folder()));
        program.main().toolButton(8)->trigger();
        auto* preview = program.main().findChild<ui::ReportPreview*>();
        QVERIFY(preview && preview->pages().pages.size() == 3);

        PrinterRequest queue;
        queue.printerName = Queue;
        program.prompts.expectPrinter(queue);
        preview->printAction()->trigger();
        QVERIFY(program.prompts.verifyDone());
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(m_job), 30000);

        QCOMPARE(test::pdfPages(m_job), 3);
        const QString text = test::pdfText(m_job);
        for (const char* expected : {"רשימה של כל האורחים", "Page 2 of 3", "שם משפחה", "מס' ההזמנות"})
            QVERIFY2(text.contains(QString::fromUtf8(expected)), expected);
    }
};

VELMORA_TEST_MAIN(CupsPrintTest)
#include "test_cupsprint.moc"
