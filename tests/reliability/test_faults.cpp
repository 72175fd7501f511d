// Real faults: a full disk, read-only files, a locked database, two copies. Each gets its message; stored data stays.
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

#include <QDir>
#include <QLineEdit>
#include <QProcess>

#include <map>
#include <unistd.h>

using namespace velmora;
using Program = test::RunningProgram;

namespace {

const QString AddFailed = QStringLiteral("ארעה שגיאה בנסיון הכנסת נתוני ההזמנה החדשים.\r\n");
const QString Locked = QStringLiteral("לא ניתן לעדכן: מסד הנתונים נעול כעת על ידי תהליך אחר.");
const QString Critical = QStringLiteral("\r\nwww.velmora.co.il\r\nsupport@velmora.co.il");
const QString Upgrading = QStringLiteral("שדרוג גירסת תוכנה");

std::map<QString, QByteArray> snapshot(const QString& folder)
{
    std::map<QString, QByteArray> files;
    for (const QFileInfo& info : QDir(folder).entryInfoList(QDir::Files | QDir::Hidden))
        files[info.fileName()] = test::fileBytes(info.filePath());
    return files;
}

void sqlite3(const QString& file, const QString& sql) { QProcess::execute(QStringLiteral("sqlite3"), {file, sql}); }

// Two invitations, a budget and a table's place, as a user has them after an evening.
void fill(test::TestWedding& wedding)
{
    wedding.createWedding(20);
    wedding.addInvitation(test::invitation(QStringLiteral("כהן"), QStringLiteral("דנה"), 2, 1, 3));
    wedding.addInvitation(test::invitation(QStringLiteral("לוי"), QStringLiteral("רון"), 4, 0));
    sqlite3(wedding.state.databaseFile(), "insert into VELMORA_BUDGET values (" + QStringList(30, "10000").join(u',') + ')');
    WriteIniValue(wedding.state.iniFile(), QStringLiteral("TablesMap"), QStringLiteral("TableNum-1"), QStringLiteral("1, 2"));
}

void addInvitation(Program& program, const QString& = {})
{
    program.main().AddNewInv();
    ui::InvitationDialog& dialog = *program.main().invitationDialog();
    dialog.txtFamilyName->setText(QStringLiteral("מזרחי"));
    dialog.txtFirstName->setText(QStringLiteral("טל"));
    dialog.SaveInv();
    dialog.hide();
}

void applyOptions(Program& program, const QString& = {})
{
    guests::OptionsForm options = guests::OptionsFromState(program.state);
    options.couple = QStringLiteral("זוג אחר");
    options.groups << QStringLiteral("חברים");
    guests::ApplyOptions(program.state, options);
}

// Creation and upgrade happen at start, the rest in a running program; no message: the write fails silently.
const struct { const char* name; void (*run)(Program&, const QString& folder); QString message, caption; } Writes[] = {
    {"creation", [](Program& p, const QString& folder) { QVERIFY(!p.start(folder)); },
     QStringLiteral("!ארעה שגיאה קריטית בתהליך יצירת התוכנה") + Critical, Upgrading},
    {"upgrade", [](Program& p, const QString& folder) { QVERIFY(!p.start(folder)); },
     QStringLiteral("!ארעה שגיאה קריטית בתהליך שדרוג התוכנה") + Critical, Upgrading},
    {"invitation added", addInvitation, AddFailed + QStringLiteral("אין די מקום פנוי בדיסק."), QStringLiteral("Err# 3035")},
    {"invitation removed", [](Program& p, const QString&) { guests::RemoveInvitation(p.state, p.prompts, "כהן", "דנה"); },
     QStringLiteral("ארעה שגיאה בנסיון המחיקה."), DefaultCaption},
    {"options", applyOptions, {}, {}},
    {"map places", [](Program& p, const QString&) { seating::SaveTablePositions(p.state.iniFile(), "/a.gif", {{1, 2}}); }, {}, {}},
    {"budget", [](Program& p, const QString&) {
         budget::BudgetLedger ledger;
         QString sql;
         ledger.open(p.state.databaseFile());
         ledger.load(sql);
         ledger.save(QStringList(30, QStringLiteral("5,000")), p.prompts, [](int) {});
     }, {}, {}},
};

// Stops the files changing: an immutable flag for root, whom permissions don't stop.
bool freeze(const QString& path, bool frozen)
{
    if (geteuid() != 0)
        return QFile::setPermissions(path, QFile::ReadOwner | QFile::ExeOwner | (frozen ? QFile::Permissions() : QFile::WriteOwner));
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
        for (int i = 0; i < int(std::size(Writes)); ++i)
            QTest::newRow(Writes[i].name) << i;
    }

    void fullDisk()
    {
        QFETCH(int, path);
        test::TestWedding wedding;
        fill(wedding);
        if (path == 0)
            QFile::remove(wedding.state.databaseFile());
        if (path == 1) // a file of the earlier layout, without the budget
            sqlite3(wedding.state.databaseFile(), QStringLiteral("drop table VELMORA_BUDGET;"));
        const auto before = snapshot(wedding.folder());
        Program program;
        QVERIFY(path < 2 || program.start(wedding.folder()));
        if (!Writes[path].message.isEmpty())
            program.prompts.expectMessage(path < 2 ? PromptIcon::Critical : PromptIcon::None, Writes[path].message,
                                          Writes[path].caption);
        {
            test::FullDisk full;
            Writes[path].run(program, wedding.folder());
        }
        QVERIFY(program.prompts.verifyDone());
        QCOMPARE(snapshot(wedding.folder()), before);
        if (program.windows)
            program.windows->main->hide(); // nothing more to save on the way out
    }

    // The wedding opens as always (an exclusive lock: its warning); a change is refused with its reason.
    void refused_data()
    {
        QTest::addColumn<QString>("fault");
        QTest::newRow("read-only file") << "file";
        QTest::newRow("read-only folder") << "folder";
        QTest::newRow("locked, writing") << "BEGIN IMMEDIATE; DELETE FROM VELMORA_LIST;";
        QTest::newRow("locked, exclusive") << "BEGIN EXCLUSIVE;";
    }

    void refused()
    {
        QFETCH(QString, fault);
        test::TestWedding wedding;
        fill(wedding);
        const bool locking = fault.startsWith(u"BEGIN");
        const int rowsShown = fault.contains(u"EXCLUSIVE") ? 0 : 2;
        const QString frozen = fault == u"file" ? wedding.state.databaseFile() : wedding.folder();
        QProcess holder;
        if (locking) {
            holder.start(QStringLiteral("sqlite3"), {wedding.state.databaseFile()});
            holder.write(fault.toUtf8() + "\nSELECT 'held';\n");
            QVERIFY2(holder.waitForReadyRead(5000), "the sqlite3 command line is needed");
        } else if (!freeze(frozen, true)) {
            QSKIP("No way to make a file read-only here: as root, chattr +i needs CAP_LINUX_IMMUTABLE.");
        }
        const auto before = snapshot(wedding.folder());
        Program program;
        if (rowsShown == 0)
            program.prompts.expectMessage(PromptIcon::Warning, Locked);
        const bool started = program.start(wedding.folder());
        const int shown = program.state.InvCount;
        program.prompts.expectMessage(PromptIcon::None, AddFailed + (locking ? Locked : QStringLiteral("לא ניתן לעדכן: מסד הנתונים מיועד לקריאה בלבד.")),
                                      QStringLiteral("Err# ") + (locking ? "3218" : "3027"));
        if (started) {
            addInvitation(program);
            applyOptions(program);
        }
        auto after = snapshot(wedding.folder());
        holder.write("ROLLBACK;\n.quit\n");
        holder.waitForFinished(5000);
        if (!locking)
            freeze(frozen, false);
        QVERIFY(started);
        QCOMPARE(shown, rowsShown);
        QVERIFY(program.prompts.verifyDone());
        if (fault != u"folder") // the settings take the options
            after[QStringLiteral("velmora.ini")] = before.at(QStringLiteral("velmora.ini"));
        QCOMPARE(after, before);
        program.main().InitList(program.state.CurGroup, program.state.ListOrder); // free again
        QCOMPARE(program.state.InvCount, 2);
        program.windows->main->hide();
    }

    // A second copy works beside the first: each change is the other's at its next reload.
    void twoCopiesOnOneWedding()
    {
        test::TestWedding wedding;
        fill(wedding);
        Program first, second;
        QVERIFY(first.start(wedding.folder()) && second.start(wedding.folder()));
        addInvitation(first);
        QVERIFY(guests::RemoveInvitation(second.state, second.prompts, "לוי", "רון"));
        for (Program* program : {&first, &second}) {
            program->main().InitList(program->state.CurGroup, program->state.ListOrder);
            QVERIFY(program->state.InvCount == 2 && program->prompts.history().empty());
            program->windows->main->hide();
        }
    }
};

VELMORA_TEST_MAIN(FaultsTest)
#include "test_faults.moc"
