// Edits in a child killed by SIGKILL at random: every returned edit survives, and the program starts as any day.
#include "../../tools/EditSchedule.h"
#include "RunningProgram.h"
#include "TestMain.h"
#include "TestWedding.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QRandomGenerator>
#include <QThread>

using namespace velmora;

class KillNine : public QObject {
    Q_OBJECT

private slots:
    void editsSurviveKill()
    {
        constexpr int TotalEdits = 1000, MinimumRounds = 50;
        test::TestWedding wedding;
        wedding.createWedding(100);
        const QString driver = QCoreApplication::applicationDirPath() + QStringLiteral("/../velmora-edits");
        auto run = [&](const QStringList& arguments, QProcess& child) { child.start(driver, QStringList{wedding.folder()} + arguments); };

        QRandomGenerator random(QRandomGenerator::global()->generate());
        int done = 0, rounds = 0, caughtInFlight = 0;
        double millisecondsPerEdit = 2;
        while (done < TotalEdits || rounds < MinimumRounds) {
            QVERIFY2(++rounds < 20 * MinimumRounds, "the edits make no headway");
            // About twenty edits a round, so that a thousand take fifty rounds or more.
            QProcess child;
            run({QString::number(std::min(done, TotalEdits - 1)), QString::number(std::min(TotalEdits, done + 40))}, child);
            QVERIFY(child.waitForReadyRead(10000));
            QElapsedTimer clock;
            clock.start();
            QThread::usleep(random.bounded(std::max(1, int(40'000 * millisecondsPerEdit))));
            child.kill();
            QVERIFY(child.waitForFinished(10000));
            QVERIFY2(child.exitStatus() == QProcess::CrashExit || child.exitCode() == 0, child.readAllStandardError());
            const QList<QByteArray> told = child.readAllStandardOutput().trimmed().split('\n');
            const int before = done;
            done = std::max(done, told.size() > 1 ? told.last().toInt() + 1 : 0);
            if (done > before)
                millisecondsPerEdit = clock.elapsed() / double(done - before) + 0.05;

            // The edit under way when the kill came is either all there or not at all.
            QProcess reader;
            run({QStringLiteral("--state")}, reader);
            QVERIFY(reader.waitForFinished(10000));
            const QStringList actual = QString::fromUtf8(reader.readAllStandardOutput()).trimmed().split(u'\n');
            const QStringList expected = edits::stateAfter(done, wedding.state.CoupleName);
            const bool inFlight = actual != expected && done < TotalEdits
                && actual == edits::stateAfter(done + 1, wedding.state.CoupleName);
            if (!inFlight)
                QCOMPARE(actual, expected);
            caughtInFlight += inFlight;
            startsNormally(wedding.folder(), int(actual.filter(QStringLiteral("row ")).size()));
        }
        qInfo("%d rounds, %d edits checked, %d kills after an edit was stored and before it was told", rounds, done,
              caughtInFlight);
    }

private:
    // The program on a copy of the wedding (its own close writes the map's places).
    void startsNormally(const QString& folder, int rows)
    {
        QTemporaryDir copy;
        for (const QString name : {"Velmora.mdb", "velmora.ini"})
            QVERIFY(QFile::copy(folder + u'/' + name, copy.path() + u'/' + name));
        test::RunningProgram program;
        QVERIFY(program.start(copy.path()));
        QVERIFY(program.prompts.history().empty());
        QCOMPARE(program.state.InvCount, rows);
    }
};

VELMORA_TEST_MAIN(KillNine)
#include "test_killnine.moc"
