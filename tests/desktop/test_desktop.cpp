#include "Modal.h"
#include "RunningProgram.h"
#include "TestMain.h"
#include "TestWedding.h"

#include "app/ui/HebrewText.h"
#include "app/ui/MainWindow.h"
#include "desktop/About.h"
#include "desktop/Help.h"
#include "desktop/Links.h"
#include "desktop/ui/AboutWindow.h"
#include "desktop/ui/HelpWindow.h"

#include <QAccessible>
#include <QAction>
#include <QDesktopServices>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QScrollBar>
#include <QTableView>
#include <QTextBlock>
#include <QTextBrowser>
#include <QWheelEvent>

using namespace velmora;

namespace {

// Stands in for the browser and the mail program.
class Desktop : public QObject {
    Q_OBJECT

public:
    QStringList opened;

public slots:
    void open(const QUrl& url) { opened << url.toString(); }
};

// A program of that name on the PATH, that notes what it was given.
QString fakeProgram(const QString& folder, const QString& name)
{
    const QString path = folder + u'/' + name;
    QFile script(path);
    script.open(QIODevice::WriteOnly);
    script.write("#!/bin/sh\necho \"$0 $@\" > \"$0.ran\"\n");
    script.close();
    script.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    return path + QStringLiteral(".ran");
}

QString ranWith(const QString& marker)
{
    QFile file(marker);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()).trimmed() : QString();
}

} // namespace

class DesktopTest : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<test::TestWedding> m_wedding;
    test::RunningProgram m_program;
    test::ScriptedPrompts& m_prompts = m_program.prompts;
    QTemporaryDir m_bin; // the only folder on the PATH
    QByteArray m_path;

    ui::MainWindow& start()
    {
        m_program.start(m_wedding->folder());
        return m_program.main();
    }
    QTableView& grid() const { return *m_program.main().grid(); }
    int topRow() const { return grid().rowAt(0) + 1; }
    desktop::ui::HelpWindow* helpWindow() const
    {
        return m_program.main().findChild<desktop::ui::HelpWindow*>();
    }

    void wheel(QPoint angle, QPoint pixels = {}, bool overScrollBar = false)
    {
        QWidget* viewport = overScrollBar ? static_cast<QWidget*>(grid().verticalScrollBar()) : grid().viewport();
        const QPointF at(viewport->width() / 2.0, viewport->height() / 2.0);
        QWheelEvent event(at, viewport->mapToGlobal(at), pixels, angle, Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(viewport, &event);
    }

private slots:
    void initTestCase()
    {
        m_path = qgetenv("PATH");
        qputenv("PATH", m_bin.path().toUtf8());
    }

    void cleanupTestCase() { qputenv("PATH", m_path); }

    void init()
    {
        m_wedding = std::make_unique<test::TestWedding>();
        m_wedding->createWedding(100);
        store::Database db = m_wedding->open();
        db.inTransaction([&] {
            store::Recordset rs = db.openRecordset(QStringLiteral("select * from VELMORA_LIST"));
            for (int i = 0; i < 60; ++i) {
                const QVariantMap row = test::invitation(QStringLiteral("משפחה %1").arg(i, 2, 10, QChar(u'0')),
                                                         QStringLiteral("אורח"), 1, 1);
                rs.addNew();
                for (auto it = row.begin(); it != row.end(); ++it)
                    rs.setValue(it.key(), it.value());
                rs.update();
            }
        });
        QDir(m_bin.path()).removeRecursively();
        QDir().mkpath(m_bin.path());
    }

    void cleanup()
    {
        m_program.stop();
        m_prompts.verifyDone();
    }

    void eachWheelStepMovesTheListOneRow_data()
    {
        QTest::addColumn<int>("before"); // notches down first; a hundred reach the end of the list
        QTest::addColumn<QPoint>("angle");
        QTest::addColumn<QPoint>("pixels");
        QTest::addColumn<bool>("overScrollBar");
        QTest::addColumn<int>("moved");
        QTest::newRow("one notch down") << 2 << QPoint(0, -120) << QPoint() << false << 1;
        QTest::newRow("a huge step down") << 2 << QPoint(0, -1200) << QPoint() << false << 1;
        QTest::newRow("a fine step down") << 2 << QPoint(0, -15) << QPoint() << false << 1;
        QTest::newRow("a touchpad's pixels down") << 2 << QPoint() << QPoint(0, -15) << false << 1;
        QTest::newRow("one notch up") << 2 << QPoint(0, 120) << QPoint() << false << -1;
        QTest::newRow("an empty step") << 2 << QPoint() << QPoint() << false << 0;
        QTest::newRow("one notch over the scroll bar") << 2 << QPoint(0, -120) << QPoint() << true << 1;
        QTest::newRow("at the top, up") << 0 << QPoint(0, 120) << QPoint() << false << 0;
        QTest::newRow("at the end, down") << 100 << QPoint(0, -120) << QPoint() << false << 0;
        QTest::newRow("at the end, up") << 100 << QPoint(0, 120) << QPoint() << false << -1;
    }

    void eachWheelStepMovesTheListOneRow()
    {
        QFETCH(int, before);
        QFETCH(QPoint, angle);
        QFETCH(QPoint, pixels);
        QFETCH(bool, overScrollBar);
        QFETCH(int, moved);
        start();
        grid().selectionModel()->setCurrentIndex(grid().model()->index(1, 0),
                                                 QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
        for (int step = 0; step < before; ++step)
            wheel({0, -120});
        const int from = topRow();
        if (before < 100) {
            QCOMPARE(from, before + 1);
        } else { // the last row has reached the bottom, and the list went no further
            QVERIFY(from > 1 && from < 60);
            QVERIFY(grid().visualRect(grid().model()->index(59, 0)).bottom() <= grid().viewport()->height());
        }
        wheel(angle, pixels, overScrollBar);
        QCOMPARE(topRow(), from + moved);
        // The current row and the selection stay where they were.
        QCOMPARE(grid().currentIndex().row(), 1);
        QCOMPARE(grid().selectionModel()->selectedRows().size(), 1);
        QCOMPARE(grid().selectionModel()->selectedRows().first().row(), 1);
    }

    void theManualOpensFromEveryHelpCommand_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<QString>("caption");
        QTest::newRow("menu") << "mnuProgramHelp" << "עזרה...";
        QTest::newRow("pop-up") << "popHelp" << "...עזרה";
        QTest::newRow("button 14") << "Toolbar1_14" << "עזרה";
        QTest::newRow("F1") << "F1" << QString();
    }

    void theManualOpensFromEveryHelpCommand()
    {
        QFETCH(QString, command);
        QFETCH(QString, caption);
        ui::MainWindow& main = start();
        QVERIFY(!helpWindow());
        if (!caption.isEmpty())
            QCOMPARE(main.findChild<QAction*>(command)->text(), ui::hebrewParagraph(caption));
        for (int time = 0; time < 2; ++time) { // the second time, the same window comes forward
            if (command == u"F1") {
                main.activateWindow();
                QVERIFY(QTest::qWaitForWindowActive(&main));
                QTest::keyClick(main.grid(), Qt::Key_F1);
            }
            else
                main.findChild<QAction*>(command)->trigger();
            QVERIFY(helpWindow());
            QVERIFY(helpWindow()->isVisible());
            QCOMPARE(main.findChildren<desktop::ui::HelpWindow*>().size(), 1);
        }
        QTextBrowser* browser = helpWindow()->browser();
        QCOMPARE(browser->source(), QUrl(desktop::ManualUrl));
        QCOMPARE(helpWindow()->layoutDirection(), Qt::RightToLeft);
        QVERIFY(browser->toPlainText().contains(QStringLiteral("יצוא ויבוא של חתונה")));
        QCOMPARE(browser->document()->firstBlock().textDirection(), Qt::RightToLeft);
    }

    void theManualTellsEveryCommand()
    {
        ui::MainWindow& main = start();
        QTextDocument manual;
        QFile file(desktop::ManualResource);
        QVERIFY(file.open(QIODevice::ReadOnly));
        manual.setHtml(QString::fromUtf8(file.readAll()));
        const QString text = manual.toPlainText();
        QStringList missing;
        for (QAction* entry : main.menuBar()->actions()) {
            for (QAction* command : entry->menu()->actions()) {
                if (!command->isSeparator() && !text.contains(command->text()))
                    missing << command->text();
            }
        }
        for (int button = 1; button <= 14; ++button) {
            QAction* action = main.toolButton(button);
            if (!action->isSeparator() && !text.contains(QStringLiteral("\"%1\"").arg(action->text())))
                missing << action->text();
        }
        QVERIFY2(missing.isEmpty(), qPrintable(missing.join(u", ")));
    }

    void aCompiledHelpFileOpensWithItsViewerWhenBothAreThere_data()
    {
        QTest::addColumn<bool>("file");
        QTest::addColumn<bool>("viewer");
        QTest::newRow("file and viewer") << true << true;
        QTest::newRow("file, no viewer") << true << false;
        QTest::newRow("viewer, no file") << false << true;
    }

    void aCompiledHelpFileOpensWithItsViewerWhenBothAreThere()
    {
        QFETCH(bool, file);
        QFETCH(bool, viewer);
        const QString helpFile = m_wedding->state.AppPath + QStringLiteral("velmora.chm");
        if (file)
            QFile(helpFile).open(QIODevice::WriteOnly);
        const QString marker = viewer ? fakeProgram(m_bin.path(), QStringLiteral("kchmviewer")) : QString();
        ui::MainWindow& main = start();
        main.action(QStringLiteral("mnuProgramHelp"))->trigger();
        if (file && viewer) {
            QTRY_COMPARE(ranWith(marker), m_bin.path() + QStringLiteral("/kchmviewer ") + helpFile);
            QVERIFY(!helpWindow());
        } else {
            QVERIFY(helpWindow() && helpWindow()->isVisible());
        }
    }

    void linksGetTheirPrefix_data()
    {
        QTest::addColumn<QString>("target");
        QTest::addColumn<int>("kind");
        QTest::addColumn<QString>("opened");
        // Plain web and mail addresses: the about box's labels below.
        QTest::newRow("web with its prefix") << "http://www.velmora.co.il" << 0 << "http://www.velmora.co.il";
        QTest::newRow("capitals count") << "HTTP://velmora.co.il" << 0 << "http://HTTP://velmora.co.il";
        QTest::newRow("a secure address") << "https://velmora.co.il" << 0 << "http://https://velmora.co.il";
        QTest::newRow("shorter than the prefix") << "http:/" << 0 << "http://http:/";
        QTest::newRow("any other kind") << "www.velmora.co.il" << 7 << "www.velmora.co.il";
    }

    void linksGetTheirPrefix()
    {
        QFETCH(QString, target);
        QFETCH(int, kind);
        QFETCH(QString, opened);
        QCOMPARE(desktop::LinkTarget(target, quint8(kind)), opened);
    }

    void theAboutBoxStandsAndItsLinksOpen()
    {
        ui::MainWindow& main = start();
        Desktop desktop;
        QDesktopServices::setUrlHandler(QStringLiteral("http"), &desktop, "open");
        QDesktopServices::setUrlHandler(QStringLiteral("mailto"), &desktop, "open");
        QString caption;
        QMap<QString, QString> texts;
        QStringList pictures;
        QString webRead;
        test::NextModal about([&](QWidget* modal) {
            caption = modal->windowTitle();
            for (const char* name : {"lblTitle", "lblVersion", "lblDescription", "lblWeb", "lblMail"}) {
                auto* label = modal->findChild<QLabel*>(QString::fromLatin1(name));
                texts.insert(QString::fromLatin1(name), label ? label->text() : QString());
            }
            for (const char* name : {"imgLogo", "Image4", "imgHome", "imgEmail"}) {
                auto* label = modal->findChild<QLabel*>(QString::fromLatin1(name));
                if (label && !label->pixmap().isNull() && label->isVisible())
                    pictures << QStringLiteral("%1 %2x%3").arg(QString::fromLatin1(name)).arg(label->pixmap().width())
                                    .arg(label->pixmap().height());
            }
            auto* box = static_cast<desktop::ui::AboutWindow*>(modal);
            webRead = QAccessible::queryAccessibleInterface(box->lblWeb())->text(QAccessible::Name);
            for (QLabel* link : {box->lblWeb(), box->lblMail()})
                QTest::mouseClick(link, Qt::LeftButton, {}, QPoint(link->width() / 2, link->height() / 2));
            auto* sysInfo = modal->findChild<QPushButton*>(QStringLiteral("cmdSysInfo"));
            QCOMPARE(sysInfo->text(), QStringLiteral("&System Info..."));
            QCOMPARE(sysInfo->layoutDirection(), Qt::LeftToRight); // its texts are English
            modal->findChild<QPushButton*>(QStringLiteral("cmdOK"))->click();
        });
        main.toolButton(13)->trigger();
        QDesktopServices::unsetUrlHandler(QStringLiteral("http"));
        QDesktopServices::unsetUrlHandler(QStringLiteral("mailto"));
        QVERIFY(about.seen());
        QCOMPARE(caption, QStringLiteral("About Velmora"));
        QCOMPARE(texts["lblTitle"], QStringLiteral("Velmora"));
        QCOMPARE(texts["lblVersion"], QStringLiteral("Version %1.%2.%3")
                                          .arg(VELMORA_VERSION_MAJOR)
                                          .arg(VELMORA_VERSION_MINOR)
                                          .arg(VELMORA_VERSION_PATCH));
        QCOMPARE(texts["lblDescription"],
                 QStringLiteral("Velmora has been created to simplify the preparation stage of guest listing.\n"
                                " March 2001"));
        QCOMPARE(webRead, QStringLiteral("www.velmora.co.il"));
        QCOMPARE(pictures, QStringList({"imgLogo 276x54", "Image4 64x64", "imgHome 20x20", "imgEmail 20x20"}));
        QCOMPARE(desktop.opened,
                 QStringList({"http://www.velmora.co.il", "mailto:support@velmora.co.il"}));
    }

    void systemInfoStartsTheDesktopsToolOrSaysItIsntThere_data()
    {
        QTest::addColumn<QString>("installed");
        QTest::newRow("none") << QString();
        QTest::newRow("hardinfo") << "hardinfo";
    }

    void systemInfoStartsTheDesktopsToolOrSaysItIsntThere()
    {
        QFETCH(QString, installed);
        const QString marker = installed.isEmpty() ? QString() : fakeProgram(m_bin.path(), installed);
        if (installed.isEmpty())
            m_prompts.expectMessage(PromptIcon::None, QStringLiteral("System Information Is Unavailable At This Time"));
        desktop::ui::AboutWindow about(m_prompts);
        about.findChild<QPushButton*>(QStringLiteral("cmdSysInfo"))->click();
        if (!installed.isEmpty())
            QTRY_VERIFY(!ranWith(marker).isEmpty());
    }
};

VELMORA_TEST_MAIN(DesktopTest)
#include "test_desktop.moc"
