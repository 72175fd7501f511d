#include "Modal.h"
#include "RunningProgram.h"
#include "SystemKeys.h"
#include "TestMain.h"
#include "TestWedding.h"

#include "app/ui/MainWindow.h"
#include "desktop/ui/AboutWindow.h"
#include "desktop/ui/HelpWindow.h"

#include <QAccessible>
#include <QAction>
#include <QDesktopServices>
#include <QLabel>
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

} // namespace

class DesktopTest : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<test::TestWedding> m_wedding;
    test::RunningProgram m_program;

    ui::MainWindow& start() { m_program.start(m_wedding->folder()); return m_program.main(); }
    QTableView& grid() const { return *m_program.main().grid(); }
    int topRow() const { return grid().rowAt(0) + 1; }
    desktop::ui::HelpWindow* helpWindow() const { return m_program.main().findChild<desktop::ui::HelpWindow*>(); }

    void wheel(QPoint angle, QPoint pixels = {}, bool overScrollBar = false)
    {
        QWidget* viewport = overScrollBar ? static_cast<QWidget*>(grid().verticalScrollBar()) : grid().viewport();
        const QPointF at(viewport->width() / 2.0, viewport->height() / 2.0);
        QWheelEvent event(at, viewport->mapToGlobal(at), pixels, angle, Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(viewport, &event);
    }

private slots:
    void init()
    {
        m_wedding = std::make_unique<test::TestWedding>();
        m_wedding->createWedding(100);
        for (int i = 0; i < 60; ++i)
            m_wedding->addInvitation(test::invitation(QStringLiteral("משפחה %1").arg(i, 2, 10, QChar(u'0')), "אורח", 1, 1));
    }

    void cleanup() { m_program.finish(); }

    void eachWheelStepMovesTheListOneRow_data()
    {
        QTest::addColumn<int>("before"); // notches down first; a hundred reach the end of the list
        QTest::addColumn<QPoint>("angle");
        QTest::addColumn<QPoint>("pixels");
        QTest::addColumn<bool>("overScrollBar");
        QTest::addColumn<int>("moved");
        QTest::newRow("one notch down") << 2 << QPoint(0, -120) << QPoint() << false << 1;
        QTest::newRow("a huge step down") << 2 << QPoint(0, -1200) << QPoint() << false << 1;
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
        if (before < 100)
            QCOMPARE(from, before + 1);
        else // the last row has reached the bottom, and the list went no further
            QVERIFY(grid().visualRect(grid().model()->index(59, 0)).bottom() <= grid().viewport()->height());
        wheel(angle, pixels, overScrollBar);
        QCOMPARE(topRow(), from + moved);
        QCOMPARE(grid().currentIndex().row(), 1); // the current row and the selection stay
        QCOMPARE(grid().selectionModel()->selectedRows(), QModelIndexList{grid().model()->index(1, 0)});
    }

    void theManualOpensFromEveryHelpCommand_data()
    {
        QTest::addColumn<QString>("command");
        for (const char* command : {"mnuProgramHelp", "popHelp", "Toolbar1_14", "F1"})
            QTest::newRow(command) << QString::fromLatin1(command);
    }

    void theManualOpensFromEveryHelpCommand()
    {
        QFETCH(QString, command);
        ui::MainWindow& main = start();
        QVERIFY(!helpWindow());
        for (int time = 0; time < 2; ++time) { // the second time, the same window comes forward
            if (command != u"F1")
                main.findChild<QAction*>(command)->trigger();
            else if (test::activate(&main))
                QTest::keyClick(main.grid(), Qt::Key_F1);
            const auto windows = main.findChildren<desktop::ui::HelpWindow*>();
            QVERIFY(windows.size() == 1 && windows[0]->isVisible());
        }
        QTextBrowser* browser = helpWindow()->browser();
        QVERIFY(browser->toPlainText().contains(QStringLiteral("יצוא ויבוא של חתונה")));
        QCOMPARE(browser->document()->firstBlock().textDirection(), Qt::RightToLeft);
    }

    // The about box's links open the browser and the mail program; its English button reads left to right.
    void theAboutBoxsLinksOpen()
    {
        ui::MainWindow& main = start();
        Desktop desktop;
        for (const char* scheme : {"http", "mailto"})
            QDesktopServices::setUrlHandler(QString::fromLatin1(scheme), &desktop, "open");
        QString webRead;
        test::NextModal about([&](QWidget* modal) {
            auto* box = static_cast<desktop::ui::AboutWindow*>(modal);
            webRead = QAccessible::queryAccessibleInterface(box->lblWeb())->text(QAccessible::Name);
            for (QLabel* link : {box->lblWeb(), box->lblMail()})
                QTest::mouseClick(link, Qt::LeftButton, {}, QPoint(link->width() / 2, link->height() / 2));
            QCOMPARE(modal->findChild<QPushButton*>(QStringLiteral("cmdSysInfo"))->layoutDirection(), Qt::LeftToRight);
            modal->findChild<QPushButton*>(QStringLiteral("cmdOK"))->click();
        });
        main.toolButton(13)->trigger();
        for (const char* scheme : {"http", "mailto"})
            QDesktopServices::unsetUrlHandler(QString::fromLatin1(scheme));
        QVERIFY(about.seen());
        QCOMPARE(webRead, QStringLiteral("www.velmora.co.il"));
        QCOMPARE(desktop.opened, QStringList({"http://www.velmora.co.il", "mailto:support@velmora.co.il"}));
    }

};

VELMORA_TEST_MAIN(DesktopTest)
#include "test_desktop.moc"
