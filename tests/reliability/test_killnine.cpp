// A wedding edited by a child process that is killed with SIGKILL at random moments:
// after every kill the database is whole, every edit that had returned is in it, the
// settings file reads whole, and the program starts on the wedding as on any day.
#include "../../tools/EditSchedule.h"
#include "RunningProgram.h"
#include "TestMain.h"
#include "TestWedding.h"

#include "app/IniFile.h"
#include "app/SettingsKeys.h"
#include "seating/TableMap.h"
#include "store/Schema.h"

#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QThread>

#include <sqlite3.h>

using namespace velmora;
namespace edits = velmora::edits;

namespace {

constexpr int TotalEdits = 1000;
constexpr int MinimumRounds = 50;
const QString FirstCouple = QStringLiteral("נועה ואיתי");

// What the wedding holds once the first `done` edits of the schedule have run.
QStringList expectedAfter(int done)
{
    QStringList lines;
    const int blocks = (done + edits::BlockSize - 1) / edits::BlockSize;
    auto ran = [done](int block, int offset) { return block * edits::BlockSize + offset < done; };
    for (int block = 0; block < blocks; ++block) {
        for (int slot = 0; slot < 4; ++slot) {
            if (!ran(block, slot) || (slot == 2 && ran(block, 6)))
                continue;
            const int last = slot < 2 && ran(block, 4 + slot) ? block * edits::BlockSize + 4 + slot
                                                              : block * edits::BlockSize + slot;
            lines << QStringLiteral("row %1|%2|%3|%4|%5")
                         .arg(edits::familyName(block), edits::firstName(slot), edits::phonesOf(last))
                         .arg(edits::peopleOf(last))
                         .arg(edits::remarkOf(last));
        }
    }
    auto lastBlock = [&](int offset) {
        int found = -1;
        for (int block = 0; block < blocks; ++block)
            found = ran(block, offset) ? block : found;
        return found;
    };
    const int options = lastBlock(7);
    const QStringList groups = options < 0 ? QStringList() : edits::groupsOf(options);
    lines << QStringLiteral("couple ") + (options < 0 ? FirstCouple : edits::coupleOf(options));
    lines << QStringLiteral("groups ") + groups.join(u'|');
    const int places = lastBlock(8);
    for (int table = 1; table <= edits::PlacedTables && places >= 0; ++table)
        lines << QStringLiteral("table %1 %2, %3")
                     .arg(table)
                     .arg(seating::positionText(edits::placeLeft(places, table)),
                          seating::positionText(edits::placeTop(places, table)));
    const int budget = lastBlock(9);
    for (int branch = 0; budget >= 0 && branch < 30; ++branch)
        lines << QStringLiteral("budget %1").arg(edits::amountOf(budget, branch));
    lines.sort();
    return lines;
}

// What the wedding holds on disk, read as the next start would read it.
QStringList actualState(const WeddingState& state)
{
    QStringList lines;
    store::Database db = store::Database::open(state.databaseFile());
    for (store::Recordset rs = db.openRecordset(QStringLiteral("select * from VELMORA_LIST")); !rs.eof(); rs.moveNext())
        lines << QStringLiteral("row %1|%2|%3|%4|%5")
                     .arg(rs.value("FAMILY_NAME").toString(), rs.value("FIRST_NAME").toString(),
                          rs.value("PHONES").toString(), rs.value("INV_NUM").toString(), rs.value("REMARK").toString());
    for (store::Recordset rs = db.openRecordset(QStringLiteral("select * from VELMORA_BUDGET")); !rs.eof(); rs.moveNext())
        for (const store::BudgetBranch& branch : store::budgetBranches())
            lines << QStringLiteral("budget ") + rs.value(branch.field).value<store::Currency>().toString();
    db.close();

    const IniSnapshot ini(state.iniFile());
    const int groups = ini.value("Options", "NumOfGroups", "0").toInt();
    QStringList names;
    for (int position = 0; position < groups || ini.value("UserGroups", QStringLiteral("Group-%1").arg(position), "-") != u"-";
         ++position)
        names << ini.value("UserGroups", QStringLiteral("Group-%1").arg(position), "<missing>");
    lines << QStringLiteral("couple ") + ini.value("Options", "Couple", "<missing>");
    lines << QStringLiteral("groups ") + names.join(u'|');
    for (int table = 1; table <= edits::PlacedTables; ++table) {
        const QString place = ini.value("TablesMap", QStringLiteral("TableNum-%1").arg(table), keys::NoValue);
        if (place != keys::NoValue)
            lines << QStringLiteral("table %1 %2").arg(table).arg(place);
    }
    lines.sort();
    return lines;
}

// Opened writable, as the program opens it: a journal the kill left behind is rolled back.
QString integrity(const QString& file)
{
    sqlite3* db = nullptr;
    QString result;
    if (sqlite3_open_v2(QFile::encodeName(file).constData(), &db, SQLITE_OPEN_READWRITE, nullptr) == SQLITE_OK) {
        sqlite3_stmt* statement = nullptr;
        sqlite3_prepare_v2(db, "pragma integrity_check", -1, &statement, nullptr);
        while (sqlite3_step(statement) == SQLITE_ROW)
            result += QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(statement, 0)));
        sqlite3_finalize(statement);
    }
    sqlite3_close(db);
    return result;
}

// Ends in a line end, every line a section, a key with its value, or blank: nothing cut.
bool readsWhole(const QString& file)
{
    QFile ini(file);
    if (!ini.open(QIODevice::ReadOnly))
        return false;
    QByteArray text = ini.readAll();
    if (!text.endsWith('\n'))
        return false;
    text.chop(1);
    for (QByteArray line : text.split('\n')) {
        line = line.trimmed();
        if (!line.isEmpty() && !line.contains('=') && !line.endsWith(']'))
            return false;
    }
    return true;
}

} // namespace

class KillNine : public QObject {
    Q_OBJECT

private slots:
    void editsSurviveKill()
    {
        test::TestWedding wedding;
        wedding.createWedding(100);
        const QString driver = QCoreApplication::applicationDirPath() + QStringLiteral("/../velmora-edits");
        QVERIFY2(QFile::exists(driver), qPrintable(driver));

        QRandomGenerator random(QRandomGenerator::global()->generate());
        int done = 0;
        int rounds = 0;
        int caughtInFlight = 0; // rounds whose kill came after an edit was stored but before it was told
        double millisecondsPerEdit = 2;
        while (done < TotalEdits || rounds < MinimumRounds) {
            ++rounds;
            QVERIFY2(rounds < 20 * MinimumRounds, "the edits make no headway");
            // About twenty edits a round, so that a thousand need fifty rounds or more.
            const int to = std::min(TotalEdits, done + 40);
            QProcess child;
            child.start(driver, {wedding.folder(), QString::number(std::min(done, TotalEdits - 1)), QString::number(to)});
            QVERIFY(child.waitForReadyRead(10000));
            QElapsedTimer clock;
            clock.start();
            QThread::usleep(random.bounded(std::max(1, int(40'000 * millisecondsPerEdit))));
            child.kill();
            QVERIFY(child.waitForFinished(10000));
            const QList<QByteArray> told = child.readAllStandardOutput().trimmed().split('\n');
            QVERIFY2(child.exitStatus() == QProcess::CrashExit || child.exitCode() == 0, child.readAllStandardError());
            const int before = done;
            if (told.size() > 1)
                done = told.last().toInt() + 1;
            if (done > before)
                millisecondsPerEdit = clock.elapsed() / double(done - before) + 0.05;

            QCOMPARE(integrity(wedding.state.databaseFile()), QStringLiteral("ok"));
            QVERIFY2(readsWhole(wedding.state.iniFile()), "velmora.ini was cut");
            // The edit under way when the kill came is either all there or not at all.
            const QStringList actual = actualState(wedding.state);
            const QStringList expected = expectedAfter(done);
            if (actual != expected && (done == TotalEdits || actual != expectedAfter(done + 1))) {
                QStringList missing = expected, extra = actual;
                for (const QString& line : actual)
                    missing.removeOne(line);
                for (const QString& line : expected)
                    extra.removeOne(line);
                QFAIL(qPrintable(QStringLiteral("after %1 edits, missing: %2; not expected: %3")
                                     .arg(done)
                                     .arg(missing.join(u'/'), extra.join(u'/'))));
            }
            caughtInFlight += actual != expected;
            startsNormally(wedding, int(actual.filter(QRegularExpression(QStringLiteral("^row "))).size()));
        }
        qInfo("%d rounds, %d edits checked, %d kills after an edit was stored and before it was told", rounds, done,
              caughtInFlight);
    }

private:
    // The program on a copy of the wedding (its own close writes the map's places).
    void startsNormally(const test::TestWedding& wedding, int rows)
    {
        QTemporaryDir copy;
        for (const char* name : {"Velmora.mdb", "velmora.ini"})
            QVERIFY(QFile::copy(wedding.folder() + u'/' + QLatin1String(name), copy.path() + u'/' + QLatin1String(name)));
        test::RunningProgram program;
        QVERIFY(program.start(copy.path()));
        QVERIFY(program.prompts.history().empty());
        QCOMPARE(program.state.InvCount, rows);
    }
};

VELMORA_TEST_MAIN(KillNine)
#include "test_killnine.moc"
