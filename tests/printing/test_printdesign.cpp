#include "Modal.h"
#include "RunningProgram.h"
#include "ScriptedPrompts.h"
#include "TestMain.h"
#include "TestWedding.h"

#include "app/IniFile.h"
#include "app/ui/MainWindow.h"
#include "printing/PrintDesign.h"
#include "printing/ui/PrintDesignWindow.h"

#include <QAccessible>
#include <QAction>
#include <QCheckBox>
#include <QDir>
#include <QImageReader>
#include <QLabel>
#include <QPushButton>
#include <QRegularExpression>
#include <QStringDecoder>

using namespace velmora;
using printing::NoBackground;
using printing::ui::PrintDesignWindow;

class PrintDesignTest : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<test::TestWedding> m_wedding;
    test::ScriptedPrompts m_prompts;

    WeddingState& state() { return m_wedding->state; }
    QString designs() const { return printing::DesignFolder(m_wedding->state.AppPath); }

    void writeIni(const QList<std::pair<QString, QString>>& keys) { QVERIFY(WriteIniValues(state().iniFile(), "Print", keys)); }
    auto open(qint32 page) { state().PrintPage = page; return std::make_unique<PrintDesignWindow>(state(), m_prompts); }
    template <class T> static T* control(QWidget* window, const char* name) { return window->findChild<T*>(QString(name)); }
    static bool visible(QWidget* window, const char* name) { return control<QWidget>(window, name)->isVisibleTo(window); }
    static QColor textColour(QWidget* w, const char* n) { return control<QLabel>(w, n)->palette().color(QPalette::WindowText); }

private slots:
    void init()
    {
        m_wedding = std::make_unique<test::TestWedding>();
        QVERIFY(QDir().mkpath(designs()));
    }
    void cleanup() { m_prompts.verifyDone(); }

    // *.gif in any case, listed as found; with none, an earlier search's names stay. Rows add to the folder.
    void scanFilesTakesGifsOnly()
    {
        const struct { QStringList files, folders, taken; } rows[] = {
            {{}, {}, {}}, {{"d.gifx", "notes.txt"}, {"y.GIF"}, {}},
            {{"a.gif", "B.GIF", "c.Gif", "e.png", "gif"}, {"x.gif"}, {"B.GIF", "a.gif", "c.Gif"}}};
        for (const auto& [files, folders, taken] : rows) {
            const auto label = qScopeGuard([&] { if (QTest::currentTestFailed()) qWarning() << "row" << files; });
            for (const QString& name : files)
                test::writeFile(designs() + name, "GIF89a");
            for (const QString& name : folders)
                QVERIFY(QDir().mkpath(designs() + name));
            printing::DrvScan scan;
            scan.DesignFiles = QStringList{"earlier.gif"};
            QCOMPARE(scan.ScanFiles(designs() + "*.gif"), int(taken.size()));
            QStringList found = scan.DesignFiles;
            found.sort();
            QCOMPARE(found, taken.isEmpty() ? QStringList{"earlier.gif"} : taken);
            state().NoteStyle = "c.Gif";
            QCOMPARE(printing::LoadStyles(state()), QStringList(NoBackground) + (taken.isEmpty() ? taken : scan.DesignFiles));
            QCOMPARE(state().NoteStyle, taken.isEmpty() ? NoBackground : QString("c.Gif"));
        }
    }

    // A stored design is kept only when its file is listed under exactly that name.
    void storedDesignFallsBackSilently()
    {
        QImage picture(40, 20, QImage::Format_RGB32);
        picture.fill(Qt::yellow);
        QVERIFY(picture.save(designs() + "rings.gif", "PNG")); // a picture under a .gif name reads all the same
        const QDir shipped(QStringLiteral(VELMORA_SOURCE_DIR "/design"));
        QFile whole(shipped.filePath(shipped.entryList({"*.gif"}).first()));
        QVERIFY(whole.open(QIODevice::ReadOnly));
        test::writeFile(designs() + "olive.gif", whole.read(3000)); // a GIF cut short
        for (const auto& [stored, shown] : {std::pair<QString, QString>("rings.gif", "rings.gif"), {"gone.gif", NoBackground},
                                            {"Rings.gif", NoBackground}, {"   ", NoBackground}}) {
            const auto label = qScopeGuard([&] { if (QTest::currentTestFailed()) qWarning() << "stored" << stored; });
            writeIni({{"Note Background", stored}});
            auto window = open(printing::NotesPage);
            auto* list = control<QListWidget>(window.get(), "lstStyles");
            auto* image = control<QLabel>(window.get(), "imgBG");
            QCOMPARE(std::pair(list->currentItem()->text(), state().NoteStyle), std::pair(shown, shown));
            QCOMPARE(image->isVisibleTo(window.get()), shown != NoBackground);
            QCOMPARE(image->pixmap().isNull(), shown == NoBackground);

            // Typed letters pick nothing; a picture that can't be read leaves the preview empty.
            QTest::keyClick(list, Qt::Key_O, Qt::NoModifier);
            QCOMPARE(list->currentItem()->text(), shown);
            list->setCurrentItem(list->findItems("olive.gif", Qt::MatchExactly).first());
            QVERIFY(image->isVisibleTo(window.get()) && image->pixmap().isNull());
            list->setCurrentRow(0);
            QVERIFY(!image->isVisibleTo(window.get()));
            control<QPushButton>(window.get(), "cmdPrintNote")->click();
            QCOMPARE(test::iniValue(state().iniFile(), "Print", "Note Background"), NoBackground);
        }
    }

    // Each page reads and writes its own keys; the two share the frame and colour in memory.
    void eachPageKeepsItsOwnKeys()
    {
        writeIni({{"Label Frame", "True"}, {"Label Color", "255"}, {"Label Address", "False"}, {"Note Frame", "False"},
                  {"Note Color", "65280"}});
        auto notes = open(printing::NotesPage);
        QVERIFY(visible(notes.get(), "framSittingNotePrint") && !visible(notes.get(), "framLabelPrint"));
        QVERIFY(!visible(notes.get(), "shpNoteFrame"));
        QCOMPARE(textColour(notes.get(), "lblNoteName"), QColor(0, 255, 0));

        // The preview follows each choice at once.
        m_prompts.expectColour(QColor(0, 0, 255));
        control<QPushButton>(notes.get(), "cmdColor")->click();
        QCOMPARE(state().LabelColor, 16711680);
        QCOMPARE(textColour(notes.get(), "lblNoteTable"), QColor(0, 0, 255));
        control<QCheckBox>(notes.get(), "chkNoteFrame")->click();
        QVERIFY(visible(notes.get(), "shpNoteFrame") && visible(notes.get(), "LineNoteFrame"));
        control<QPushButton>(notes.get(), "cmdPrintNote")->click();
        notes.reset();

        auto labels = open(printing::LabelsPage);
        QCOMPARE(state().LabelColor, 255);
        QCOMPARE(textColour(labels.get(), "lblLabelName"), QColor(255, 0, 0));
        QVERIFY(control<QCheckBox>(labels.get(), "chkLabelFrame")->isChecked());
        QVERIFY(!control<QCheckBox>(labels.get(), "chkLabelAddress")->isChecked() && !visible(labels.get(), "lblLabelAddress"));
        control<QCheckBox>(labels.get(), "chkLabelAddress")->click();
        QVERIFY(state().LabelAddress && visible(labels.get(), "lblLabelAddress"));

        // A screen reader finds a name on every control the user can reach.
        for (QWidget* widget : labels->findChildren<QWidget*>())
            if (widget->focusPolicy() != Qt::NoFocus)
                QVERIFY2(!QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name).isEmpty(),
                         qPrintable(widget->objectName()));
        QCOMPARE(control<QLabel>(labels.get(), "Label1")->buddy(), control<QWidget>(labels.get(), "cmdColor"));

        // The dialog starts from its own value; a cancel takes it: black at first, then the last chosen.
        const std::vector<std::pair<std::optional<QColor>, qint32>> presses = {
            {std::nullopt, 0}, {QColor(0, 128, 0), 32768}, {std::nullopt, 32768}, {QColor(255, 0, 0), 255}};
        for (const auto& [answer, value] : presses) {
            m_prompts.expectColour(answer);
            control<QPushButton>(labels.get(), "cmdColor")->click();
            QCOMPARE(state().LabelColor, value);
        }
    }

    // Only a print button writes, in the order of the page; the window is gone before the report.
    void printWritesItsKeysInOrderThenBuilds()
    {
        writeIni({{"Label Color", "-2147483640"}});
        const QByteArray before = test::fileBytes(state().iniFile());
        QStringList events;
        const printing::ui::PrintCommands commands{
            [&] { events << (QApplication::activeModalWidget() ? "labels under the window" : "labels"); },
            [&] { events << "notes"; }};
        for (qint32 page : {printing::LabelsPage, printing::NotesPage}) {
            state().PrintPage = page;
            test::NextModal closing([](QWidget* window) { window->close(); });
            PrintDesignWindow::open(state(), m_prompts, commands, nullptr);
            QVERIFY(closing.seen());
        }
        QVERIFY(events.isEmpty());
        QCOMPARE(test::fileBytes(state().iniFile()), before);

        for (const char* button : {"cmdPrintLabel", "cmdPrintNote"}) {
            state().PrintPage = QByteArray(button) == "cmdPrintLabel" ? printing::LabelsPage : printing::NotesPage;
            test::NextModal printing([button](QWidget* window) { control<QPushButton>(window, button)->click(); });
            PrintDesignWindow::open(state(), m_prompts, commands, nullptr);
        }
        QCOMPARE(events, (QStringList{"labels", "notes"}));
        const QString written = QStringDecoder("windows-1255").decode(test::fileBytes(state().iniFile()));
        QCOMPARE(written.split(QRegularExpression("[\r\n]+"), Qt::SkipEmptyParts),
                 (QStringList{"[Print]", "Label Color=-2147483640", "Label Address=True", "Label Frame=False",
                              "Note Frame=False", "Note Color=0", "Note Background=עיצוב ללא רקע"}));
    }

    void theCommandsOpenTheirPage()
    {
        m_wedding->createWedding(20);
        m_wedding->addInvitation(test::invitation("כהן", "דנה", 2, 1));
        test::RunningProgram program;
        QVERIFY(program.start(m_wedding->folder()));
        for (const auto& [menu, button, page, title] : {std::tuple("mnuPrintEnvLables", 7, printing::LabelsPage, "עיצוב מדבקות"),
                                                        {"mnuPrintSittingNotes", 9, printing::NotesPage, "עיצוב פתקי הושבה"}}) {
            for (QAction* command : {program.main().action(menu), program.main().toolButton(button)}) {
                program.state.PrintPage = 0;
                QString shown;
                test::NextModal window([&](QWidget* modal) { shown = modal->windowTitle(), modal->close(); });
                command->trigger();
                QCOMPARE(shown, QString(title));
                QCOMPARE(program.state.PrintPage, page);
            }
        }
    }

    // A wedding without a design folder gets the shipped designs; a folder already there is the user's own.
    void newWeddingGetsTheShippedDesigns()
    {
        const QString shipped = QStringLiteral(VELMORA_SOURCE_DIR "/design");
        QVERIFY(QDir(designs()).removeRecursively());
        QVERIFY(printing::InstallDesigns(state().AppPath, shipped));
        const QStringList names = QDir(designs()).entryList(QDir::Files);
        QCOMPARE(names, QDir(shipped).entryList({"*.gif"}, QDir::Files));
        for (const QString& name : names) {
            QImageReader reader(designs() + name);
            QCOMPARE(reader.format(), QByteArray("gif"));
            const QSize size = reader.size();
            QVERIFY2(qAbs(double(size.width()) / size.height() - 3960.0 / 2025) < 0.01, qPrintable(name));
        }
        QCOMPARE(QDir(state().AppPath).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot), QStringList{"design"});

        QVERIFY(QFile::remove(designs() + names.first()));
        test::writeFile(designs() + "ours.gif", "GIF89a");
        QVERIFY(!printing::InstallDesigns(state().AppPath, shipped));
        QVERIFY(!QFile::exists(designs() + names.first()));
        QCOMPARE(printing::LoadStyles(state()).size(), names.size() + 1);
    }
};

VELMORA_TEST_MAIN(PrintDesignTest)
#include "test_printdesign.moc"
