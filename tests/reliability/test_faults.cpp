// Faults met for real: a full disk under every write, a read-only file and folder, a
// database another process holds locked, and two copies of the program on one wedding.
// Each gets its own message, or none where settings simply don't persist, and whatever
// was stored before stays byte for byte.
#include "FullDisk.h"
#include "RunningProgram.h"
#include "TestMain.h"
#include "TestWedding.h"

#include "app/IniFile.h"
#include "app/ui/MainWindow.h"
#include "budget/Budget.h"
#include "guests/Options.h"
#include "guests/Removal.h"
#include "guests/ui/InvitationDialog.h"
#include "seating/TableMap.h"
#include "store/Engine.h"

#include <QDir>
#include <QLineEdit>
#include <QProcess>
#include <QStandardPaths>

#include <functional>
#include <map>
#include <unistd.h>

using namespace velmora;

namespace {

const QString NoRoom = QStringLiteral("אין די מקום פנוי בדיסק.");
const QString ReadOnly = QStringLiteral("לא ניתן לעדכן: מסד הנתונים מיועד לקריאה בלבד.");
const QString Locked = QStringLiteral("לא ניתן לעדכן: מסד הנתונים נעול כעת על ידי תהליך אחר.");
const QString AddFailed = QStringLiteral("ארעה שגיאה בנסיון הכנסת נתוני ההזמנה החדשים.\r\n");
const QString Critical = QStringLiteral("\r\nwww.velmora.co.il\r\nsupport@velmora.co.il");
const QString UpgradeCaption = QStringLiteral("שדרוג גירסת תוכנה");

std::map<QString, QByteArray> snapshot(const QString& folder)
{
    std::map<QString, QByteArray> files;
    for (const QFileInfo& info : QDir(folder).entryInfoList(QDir::Files | QDir::Hidden)) {
        QFile file(info.filePath());
        file.open(QIODevice::ReadOnly);
        files[info.fileName()] = file.readAll();
    }
    return files;
}

QString sqlite3(const QString& file, const QString& sql)
{
    QProcess shell;
    shell.start(QStringLiteral("sqlite3"), {file, sql});
    shell.waitForFinished();
    return QString::fromUtf8(shell.readAllStandardOutput());
}

// A wedding of two invitations and a budget, as a user has it after a few evenings.
void fill(test::TestWedding& wedding)
{
    wedding.createWedding(20);
    wedding.addInvitation(test::invitation(QStringLiteral("כהן"), QStringLiteral("דנה"), 2, 1, 3));
    wedding.addInvitation(test::invitation(QStringLiteral("לוי"), QStringLiteral("רון"), 4, 0));
    store::Database db = wedding.open();
    store::Recordset budget = db.openRecordset(QStringLiteral("select * from VELMORA_BUDGET"));
    budget.addNew();
    for (int i = 0; i < budget.fieldCount(); ++i)
        budget.setValue(budget.fieldDef(i).name, 100 + i);
    budget.update();
    QVERIFY(WriteIniValue(wedding.state.iniFile(), QStringLiteral("TablesMap"), QStringLiteral("TableNum-1"),
                          QStringLiteral("100, 200")));
}

void addThroughDialog(test::RunningProgram& program)
{
    program.main().AddNewInv();
    ui::InvitationDialog& dialog = *program.main().invitationDialog();
    dialog.txtFamilyName->setText(QStringLiteral("מזרחי"));
    dialog.txtFirstName->setText(QStringLiteral("טל"));
    dialog.SaveInv();
    dialog.hide();
}

// The files stop changing: an immutable flag for root, whom permissions don't stop;
// plain permissions for everyone else. False when neither can be had here.
bool freeze(const QString& path, bool frozen)
{
    if (geteuid() != 0)
        return QFile::setPermissions(path, frozen ? QFile::ReadOwner | QFile::ExeOwner | QFile::ReadUser | QFile::ExeUser
                                                  : QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner
                                                        | QFile::ReadUser | QFile::WriteUser | QFile::ExeUser);
    return QProcess::execute(QStringLiteral("chattr"), {frozen ? QStringLiteral("+i") : QStringLiteral("-i"), path}) == 0;
}

} // namespace

class FaultsTest : public QObject {
    Q_OBJECT

private slots:
    void init() { test::clearUserStore(); }

    // Every write of the program on a disk that takes no byte more.
    void fullDisk_data()
    {
        QTest::addColumn<int>("path");
        for (int i = 0; i < int(std::size(writes())); ++i)
            QTest::newRow(writes()[i].name) << i;
    }

    void fullDisk()
    {
        QFETCH(int, path);
        const Write& write = writes()[path];
        test::TestWedding wedding;
        fill(wedding);
        if (path == UpgradeRow) // a file of the earlier layout, without the budget
            sqlite3(wedding.state.databaseFile(), QStringLiteral("drop table VELMORA_BUDGET;"));
        if (path == CreationRow)
            QFile::remove(wedding.state.databaseFile());
        const auto before = snapshot(wedding.folder());
        test::RunningProgram program;
        if (path >= FirstStartedRow)
            QVERIFY(program.start(wedding.folder()));
        if (!write.message.isEmpty())
            program.prompts.expectMessage(write.icon, write.message, write.caption);
        {
            test::FullDisk full;
            write.run(program, wedding.folder());
        }
        QVERIFY(program.prompts.verifyDone());
        QCOMPARE(snapshot(wedding.folder()), before);
        if (QFile::exists(wedding.state.databaseFile()))
            QCOMPARE(sqlite3(wedding.state.databaseFile(), QStringLiteral("pragma integrity_check;")), QStringLiteral("ok\n"));
        if (path >= FirstStartedRow)
            program.windows->main->hide(); // nothing more to save on the way out
    }

    void readOnly_data()
    {
        QTest::addColumn<bool>("wholeFolder");
        QTest::newRow("database file") << false;
        QTest::newRow("wedding folder") << true;
    }

    // The wedding opens and reads as always; a change is refused with the reason, and
    // settings simply don't persist.
    void readOnly()
    {
        QFETCH(bool, wholeFolder);
        test::TestWedding wedding;
        fill(wedding);
        const QString frozen = wholeFolder ? wedding.folder() : wedding.state.databaseFile();
        if (!freeze(frozen, true))
            QSKIP("No way to make a file read-only here: chattr +i needs CAP_LINUX_IMMUTABLE when running as root.");
        const auto before = snapshot(wedding.folder());
        test::RunningProgram program;
        const bool started = program.start(wedding.folder());
        if (started) {
            QCOMPARE(program.state.InvCount, 2);
            program.prompts.expectMessage(PromptIcon::None, AddFailed + ReadOnly, QStringLiteral("Err# 3027"));
            addThroughDialog(program);
            guests::OptionsForm options = guests::OptionsFromState(program.state);
            options.couple = QStringLiteral("זוג אחר");
            guests::ApplyOptions(program.state, options);
            program.windows->main->hide();
        }
        auto after = snapshot(wedding.folder());
        freeze(frozen, false);
        QVERIFY(started);
        QVERIFY(program.prompts.verifyDone());
        if (!wholeFolder) // the settings beside it still take the options
            after[QStringLiteral("velmora.ini")] = before.at(QStringLiteral("velmora.ini"));
        QCOMPARE(after, before);
    }

    // Another process holds the database: reading waits for it or is told so by the
    // lock's own failure, never by the critical upgrade message; and nothing ends.
    void lockedByAnotherProcess_data()
    {
        QTest::addColumn<QByteArray>("hold");
        QTest::addColumn<bool>("readable");
        QTest::newRow("writing") << QByteArray("BEGIN IMMEDIATE; INSERT INTO VELMORA_LIST (FIRST_NAME, FAMILY_NAME, CONFIRM) VALUES ('x', 'y', 0);") << true;
        QTest::newRow("exclusive") << QByteArray("BEGIN EXCLUSIVE;") << false;
    }

    void lockedByAnotherProcess()
    {
        QFETCH(QByteArray, hold);
        QFETCH(bool, readable);
        if (QStandardPaths::findExecutable(QStringLiteral("sqlite3")).isEmpty())
            QSKIP("The sqlite3 command line is not installed.");
        test::TestWedding wedding;
        fill(wedding);
        const auto before = snapshot(wedding.folder());
        QProcess holder;
        holder.start(QStringLiteral("sqlite3"), {wedding.state.databaseFile()});
        holder.write(hold + "\nSELECT 'held';\n");
        QVERIFY(holder.waitForReadyRead(5000));

        test::RunningProgram program;
        if (!readable)
            program.prompts.expectMessage(PromptIcon::Warning, Locked);
        QVERIFY(program.start(wedding.folder()));
        QCOMPARE(program.state.InvCount, readable ? 2 : 0);
        program.prompts.expectMessage(PromptIcon::None, AddFailed + Locked, QStringLiteral("Err# 3218"));
        addThroughDialog(program);
        QVERIFY(program.prompts.verifyDone());

        holder.write("ROLLBACK;\n.quit\n");
        QVERIFY(holder.waitForFinished(5000));
        QCOMPARE(snapshot(wedding.folder()), before);
        program.main().InitList(program.state.CurGroup, program.state.ListOrder);
        QCOMPARE(program.state.InvCount, 2);
        program.windows->main->hide();
    }

    // A second copy on the same wedding works beside the first: each change is the
    // other's at its next reload.
    void twoCopiesOnOneWedding()
    {
        test::TestWedding wedding;
        fill(wedding);
        test::RunningProgram first, second;
        QVERIFY(first.start(wedding.folder()));
        QVERIFY(second.start(wedding.folder()));
        addThroughDialog(first);
        QVERIFY(guests::RemoveInvitation(second.state, second.prompts, QStringLiteral("לוי"), QStringLiteral("רון")));
        for (test::RunningProgram* program : {&first, &second}) {
            program->main().InitList(program->state.CurGroup, program->state.ListOrder);
            QCOMPARE(program->state.InvCount, 2);
            QVERIFY(program->prompts.history().empty());
            program->windows->main->hide();
        }
        QCOMPARE(sqlite3(wedding.state.databaseFile(), QStringLiteral("pragma integrity_check;")), QStringLiteral("ok\n"));
    }

private:
    struct Write {
        const char* name;
        std::function<void(test::RunningProgram&, const QString& folder)> run;
        QString message; // empty: the write fails without a word
        PromptIcon icon = PromptIcon::None;
        QString caption = DefaultCaption;
    };
    static constexpr int CreationRow = 0, UpgradeRow = 1, FirstStartedRow = 2;

    static const std::vector<Write>& writes()
    {
        static const std::vector<Write> table = {
            {"creation", [](test::RunningProgram& p, const QString& folder) { QVERIFY(!p.start(folder)); },
             QStringLiteral("!ארעה שגיאה קריטית בתהליך יצירת התוכנה") + Critical, PromptIcon::Critical, UpgradeCaption},
            {"upgrade", [](test::RunningProgram& p, const QString& folder) { QVERIFY(!p.start(folder)); },
             QStringLiteral("!ארעה שגיאה קריטית בתהליך שדרוג התוכנה") + Critical, PromptIcon::Critical, UpgradeCaption},
            {"invitation added", [](test::RunningProgram& p, const QString&) { addThroughDialog(p); },
             AddFailed + NoRoom, PromptIcon::None, QStringLiteral("Err# 3035")},
            {"invitation removed",
             [](test::RunningProgram& p, const QString&) {
                 QVERIFY(!guests::RemoveInvitation(p.state, p.prompts, QStringLiteral("כהן"), QStringLiteral("דנה")));
             },
             QStringLiteral("ארעה שגיאה בנסיון המחיקה.")},
            {"options",
             [](test::RunningProgram& p, const QString&) {
                 guests::OptionsForm options = guests::OptionsFromState(p.state);
                 options.couple = QStringLiteral("זוג אחר");
                 options.groups << QStringLiteral("חברים");
                 guests::ApplyOptions(p.state, options);
             },
             {}},
            {"map places",
             [](test::RunningProgram& p, const QString&) {
                 seating::SaveTablePositions(p.state.iniFile(), QStringLiteral("/garden.gif"), {{1, 2}, {3, 4}, {5, 6}});
             },
             {}},
            {"budget",
             [](test::RunningProgram& p, const QString&) {
                 budget::BudgetLedger ledger;
                 ledger.open(p.state.databaseFile());
                 QString sql;
                 QStringList boxes = ledger.load(sql);
                 boxes.fill(QStringLiteral("5,000"));
                 QCOMPARE(ledger.save(boxes, p.prompts, [](int) {}), budget::BudgetLedger::Outcome::Saved);
                 ledger.close();
             },
             {}},
        };
        return table;
    }
};

VELMORA_TEST_MAIN(FaultsTest)
#include "test_faults.moc"
