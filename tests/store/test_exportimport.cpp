#include "FullDisk.h"
#include "Modal.h"
#include "RunningProgram.h"
#include "TestMain.h"
#include "TestWedding.h"

#include "app/PendingFailure.h"
#include "app/Wedding.h"
#include "app/ui/MainWindow.h"
#include "app/ui/QtPrompts.h"
#include "budget/ui/BudgetWindow.h"
#include "store/Currency.h"
#include "store/ExportImport.h"

#include <QAction>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QTableView>

using namespace velmora;
using test::fileBytes;
using test::writeFile;

namespace {

const QString ImportQuestion = QStringLiteral("פעולה זו מייבאת מבנה נתונים והגדרות\r\n?של חתונה חיצונית, להמשיך");

// Every entry of a folder, a file with its bytes: what "nothing changed" means.
QMap<QString, QByteArray> snapshot(const QString& folder)
{
    QMap<QString, QByteArray> files;
    for (const QString& name : QDir(folder).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden))
        files.insert(name, fileBytes(folder + u'/' + name));
    return files;
}

// An export dialog by dialog; a path empty for a cancel, the second "-" when never asked.
struct ExportCase { bool earlier; QString first; PromptAnswer overwrite; QString second; bool copied; QString message; };

} // namespace

Q_DECLARE_METATYPE(ExportCase)

class ExportImportTest : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<test::TestWedding> m_wedding;
    std::unique_ptr<test::TestWedding> m_other; // the wedding brought in
    QTemporaryDir m_away;                          // where exports go
    test::RunningProgram m_program;
    test::ScriptedPrompts& m_prompts = m_program.prompts;

    QString app(const QString& name) const { return m_wedding->state.AppPath + name; }
    QString other(const QString& name) const { return m_other->state.AppPath + name; }
    QString away(const QString& name) const { return m_away.path() + u'/' + name; }
    ui::MainWindow& main() const { return m_program.main(); }

    void start() { QVERIFY(m_program.start(m_wedding->folder())); }
    void trigger(const char* name) { main().action(QString::fromLatin1(name))->trigger(); }
    void expectWarning(PromptAnswer answer) { m_prompts.expectQuestion(ImportQuestion, answer, QStringLiteral("אזהרת מערכת")); }
    void expectOverwrite(const QString& path, PromptAnswer answer)
    {
        m_prompts.expectBox(PromptIcon::Information, u'?' + path + QStringLiteral(" האם ברצונך לשכתב"), DefaultCaption,
                            PromptButtons::YesNo, PromptAnswer::No, answer);
    }

private slots:
    void init()
    {
        m_wedding = std::make_unique<test::TestWedding>();
        m_wedding->createWedding(100);
        m_wedding->addInvitation(test::invitation("כהן", "דנה", 2, 1));
        m_other = std::make_unique<test::TestWedding>();
        m_other->createWedding(30);
        for (const char* family : {"אבן", "ברק", "גל"})
            m_other->addInvitation(test::invitation(QString::fromUtf8(family), "יעל", 1, 1));
        QDir(m_away.path()).removeRecursively();
        QDir().mkpath(m_away.path());
    }

    void cleanup() { m_program.finish(); }

    void exportStopsWhereTheUserStops_data()
    {
        QTest::addColumn<ExportCase>("c");
        QTest::newRow("both files copied") << ExportCase{false, "w.mdb", PromptAnswer::No, "w.ini", true, ".פעולת יצוא מבנה הנתונים הצליחה"};
        QTest::newRow("cancel at the first dialog") << ExportCase{false, "", PromptAnswer::No, "-", false, ""};
        QTest::newRow("no to the overwrite") << ExportCase{true, "w.mdb", PromptAnswer::No, "-", false, ""};
        QTest::newRow("yes to the overwrite") << ExportCase{true, "w.mdb", PromptAnswer::Yes, "", true, ""};
        // Both copies fail; the first failure is told once, after the second dialog.
        QTest::newRow("both copies fail") << ExportCase{false, "gone/w.mdb", PromptAnswer::No, "gone/w.ini", false,
            QStringLiteral("!פעולת יצוא מבנה הנתונים נכשלה\r\nהנתיב '%1' לא נמצא.").arg(away("gone/w.mdb"))};
    }

    void exportStopsWhereTheUserStops()
    {
        QFETCH(ExportCase, c);
        const auto& [earlier, first, overwrite, second, databaseCopied, message] = c;
        const QByteArray earlierBytes("an earlier export");
        if (earlier)
            writeFile(away("w.mdb"), earlierBytes);
        start();
        m_prompts.expectSaveFile(first.isEmpty() ? std::nullopt : std::optional(away(first)));
        if (earlier)
            expectOverwrite(away(first), overwrite);
        if (second != u"-")
            m_prompts.expectSaveFile(second.isEmpty() ? std::nullopt : std::optional(away(second)));
        if (!message.isEmpty())
            m_prompts.expectMessage(message.startsWith(u'!') ? PromptIcon::Warning : PromptIcon::None, message);
        trigger("mnuExportDB");

        QMap<QString, QByteArray> left; // and no copy left half-way, no folder made
        if (second == u"w.ini" && databaseCopied)
            left["w.ini"] = fileBytes(app("velmora.ini"));
        if (earlier || databaseCopied)
            left["w.mdb"] = databaseCopied ? fileBytes(app("Velmora.mdb")) : earlierBytes;
        QCOMPARE(snapshot(m_away.path()), left);
        // The settings are looked for beside the database; the wedding's folder is current again.
        if (second != u"-")
            QCOMPARE(m_prompts.fileRequests().back().initialDir, QFileInfo(away(first)).absolutePath());
        if (!message.isEmpty())
            QCOMPARE(QDir::currentPath() + u'/', m_wedding->state.AppPath);
    }

    // Qt's own dialogs: our filters, the proposed name, and no overwrite question before ours.
    void theRealDialogsShowTheFiltersAndTheProposedName()
    {
        ui::QtPrompts prompts;
        QStringList shown; // filters, then the proposed file
        bool asksItself = true;
        for (const bool exporting : {true, false}) {
            const QString fileName = exporting ? "Velmora.mdb" : "velmora.ini";
            test::NextModal dialog([&](QWidget* modal) {
                auto* files = static_cast<QFileDialog*>(modal);
                shown = files->nameFilters() << files->selectedFiles().value(0);
                asksItself = !files->testOption(QFileDialog::DontConfirmOverwrite);
                QMetaObject::invokeMethod(modal, "reject", Qt::QueuedConnection);
            });
            PendingFailure pending;
            QString folder = m_away.path();
            QVERIFY(!(exporting ? store::ExportFile(m_wedding->state, prompts, fileName, pending, folder)
                                : store::ImportFile(m_wedding->state, prompts, fileName, pending, folder)));
            QCOMPARE(shown, (exporting ? QStringList{"Microsoft Database (*.mdb)"}
                                       : QStringList{"Windows Ini - File (*.ini)", "Backup File (*.old)"})
                                << away(fileName));
            QVERIFY(!pending && !(exporting && asksItself));
        }
    }

    void importStopsQuietlyAndKeepsWhatWasCopied_data()
    {
        QTest::addColumn<QString>("database"); // chosen in the first dialog; empty: cancel, "-": No to the warning
        QTest::newRow("no to the warning") << "-";
        QTest::newRow("cancel at the first dialog") << "";
        QTest::newRow("a typed path that isn't there") << "typed by hand.mdb"; // the earlier backup stays too
        QTest::newRow("cancel at the second dialog") << "other"; // no rollback: replaced, its backup beside it
    }

    void importStopsQuietlyAndKeepsWhatWasCopied()
    {
        QFETCH(QString, database);
        const bool databaseReplaced = database == u"other";
        start();
        writeFile(app("velmora.ini.old"), "a backup from before");
        const auto before = snapshot(m_wedding->folder());
        expectWarning(database == u"-" ? PromptAnswer::No : PromptAnswer::Yes);
        if (database != u"-")
            m_prompts.expectOpenFile(database.isEmpty() ? std::nullopt
                                                        : std::optional(databaseReplaced ? other("Velmora.mdb") : away(database)));
        if (databaseReplaced)
            m_prompts.expectOpenFile(std::nullopt);
        else if (!database.isEmpty() && database != u"-")
            m_prompts.expectMessage(PromptIcon::None, QStringLiteral(".קובץ המקור לא נמצא"));
        trigger("mnuImportDB");
        auto expected = before;
        if (databaseReplaced)
            expected["Velmora.mdb"] = fileBytes(other("Velmora.mdb")), expected["Velmora.mdb.old"] = before["Velmora.mdb"];
        QCOMPARE(snapshot(m_wedding->folder()), expected);
    }

    // In, back from the backup, in again: each import's backup replaces the one before.
    void importBringsAWeddingInAndABackupGoesBack()
    {
        start();
        main().openBudget(); // the ledger holds a connection of its own through the imports
        const auto ours = snapshot(m_wedding->folder()), theirs = snapshot(m_other->folder());
        for (int round = 1; round <= 3; ++round) {
            expectWarning(PromptAnswer::Yes);
            m_prompts.expectOpenFile(round == 1 ? other("Velmora.mdb") : app("Velmora.mdb.old"));
            m_prompts.expectOpenFile(round == 1 ? other("velmora.ini") : app("velmora.ini.old"));
            m_prompts.expectMessage(PromptIcon::None, QStringLiteral(".פעולת יבוא מבנה הנתונים הצליחה"));
            trigger("mnuImportDB");
            const bool back = round % 2 == 0;
            QMap<QString, QByteArray> expected; // each file in place, the one it replaced as its backup
            for (const QString& name : ours.keys())
                expected[name] = (back ? ours : theirs)[name], expected[name + ".old"] = (back ? theirs : ours)[name];
            QCOMPARE(snapshot(m_wedding->folder()), expected);
            QCOMPARE(main().grid()->model()->rowCount(), back ? 1 : 3); // the list shows it at once
            // The settings are looked for beside the database chosen.
            QCOMPARE(m_prompts.fileRequests().back().initialDir,
                     QFileInfo(round == 1 ? other("x") : app("x")).absolutePath());
        }
        QCOMPARE(m_program.state.MaxTables, quint8(100)); // the options change at the next start
        // What the ledger stores lands in the wedding's file now in place, not the one replaced.
        ui::BudgetWindow* ledger = main().budgetWindow();
        ledger->txtBudgetBranch[0]->setText(QStringLiteral("500"));
        ledger->cmdUpdate_Click();
        QCOMPARE(m_wedding->open().openRecordset(QStringLiteral("select B_DRESS from VELMORA_BUDGET")).value(0)
                     .value<store::Currency>().toString(), QStringLiteral("500"));
        QCOMPARE(snapshot(m_wedding->folder()).size(), 4);
    }

    void aFileThatIsntADatabaseEndsTheProgramAndTheBackupStays()
    {
        start();
        const QByteArray oldDatabase = fileBytes(app("Velmora.mdb"));
        writeFile(away("notes.mdb"), "shopping list, not a wedding");
        expectWarning(PromptAnswer::Yes);
        m_prompts.expectOpenFile(away("notes.mdb")).expectOpenFile(other("velmora.ini"));
        m_prompts.expectMessage(PromptIcon::Critical, QStringLiteral("!ארעה שגיאה קריטית בתהליך שדרוג התוכנה\r\n"
                                                      "www.velmora.co.il\r\nsupport@velmora.co.il"),
                                QStringLiteral("שדרוג גירסת תוכנה"));
        m_prompts.expectMapSaveQuestion(); // the end of the program, as ever
        trigger("mnuImportDB");
        QVERIFY(main().endRequested() && !main().isVisible());
        QCOMPARE(fileBytes(app("Velmora.mdb")), QByteArray("shopping list, not a wedding"));
        QCOMPARE(fileBytes(app("Velmora.mdb.old")), oldDatabase);
    }

    // A write that fails part-way (a full disk) leaves every file of the wedding whole.
    void aFailingWriteLeavesTheFilesWhole_data()
    {
        QTest::addColumn<int>("incoming"); // bytes of the chosen file
        QTest::addColumn<int>("current");  // bytes of the wedding's database
        QTest::addColumn<bool>("exporting");
        QTest::newRow("import: the incoming file doesn't fit") << 300000 << 2000 << false;
        QTest::newRow("import: the backup doesn't fit") << 2000 << 300000 << false;
        QTest::newRow("export over an earlier copy") << 2000 << 300000 << true;
    }

    void aFailingWriteLeavesTheFilesWhole()
    {
        QFETCH(int, incoming);
        QFETCH(int, current);
        QFETCH(bool, exporting);
        writeFile(app("Velmora.mdb"), QByteArray(current, 'c'));
        writeFile(app("Velmora.mdb.old"), "the backup kept from before");
        writeFile(away("chosen.mdb"), QByteArray(incoming, 'i'));
        const auto before = snapshot(m_wedding->folder());
        PendingFailure pending;
        QString folder;
        {
            const test::FullDisk disk(100000);
            if (exporting) {
                m_prompts.expectSaveFile(away("chosen.mdb"));
                expectOverwrite(away("chosen.mdb"), PromptAnswer::Yes);
                QVERIFY(store::ExportFile(m_wedding->state, m_prompts, store::DatabaseFileName, pending, folder));
            } else {
                m_prompts.expectOpenFile(away("chosen.mdb"));
                QVERIFY(store::ImportFile(m_wedding->state, m_prompts, store::DatabaseFileName, pending, folder));
            }
        }
        QVERIFY(pending);
        QCOMPARE(pending.failure().number(), 61);
        QVERIFY(pending.failure().text().startsWith(QStringLiteral("אין די מקום בדיסק לקובץ")));
        QCOMPARE(snapshot(m_wedding->folder()), before);
        QCOMPARE(snapshot(m_away.path()), (QMap<QString, QByteArray>{{"chosen.mdb", QByteArray(incoming, 'i')}}));
    }
};

VELMORA_TEST_MAIN(ExportImportTest)
#include "test_exportimport.moc"
