#include "RunningProgram.h"
#include "SystemKeys.h"
#include "TestMain.h"
#include "TestWedding.h"

#include "app/Twips.h"
#include "app/ui/MainWindow.h"
#include "budget/ui/BudgetWindow.h"
#include "printing/ui/PrinterTarget.h"
#include "store/Schema.h"

#include <QAccessible>
#include <QAction>
#include <QClipboard>
#include <QFile>
#include <QLineEdit>
#include <QProcess>
#include <QPushButton>
#include <QStandardPaths>

using namespace velmora;

namespace {

const QString BudgetSql = QStringLiteral("select * from VELMORA_BUDGET");

// Types as the user does: the box's text selected, then key presses carrying their text.
void typeInto(QLineEdit* box, const QString& text)
{
    box->setFocus();
    QTest::keySequence(box, QKeySequence::SelectAll);
    if (text.isEmpty())
        QTest::keyClick(box, Qt::Key_Backspace);
    else
        QTest::keyClicks(box, text);
}

// Every pixel of `area` is within a few steps of `colour`.
bool allNear(const QImage& image, const QRect& area, QColor colour)
{
    auto near = [](int a, int b) { return std::abs(a - b) <= 10; };
    for (int y = area.top(); y <= area.bottom(); ++y)
        for (int x = area.left(); x <= area.right(); ++x)
            if (const QRgb c = image.pixel(x, y); !near(qRed(c), colour.red()) || !near(qGreen(c), colour.green())
                                                  || !near(qBlue(c), colour.blue()))
                return false;
    return true;
}

} // namespace

class BudgetWindowTest : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<test::TestWedding> m_wedding;
    test::ScriptedPrompts m_prompts;
    std::unique_ptr<ui::BudgetWindow> m_window;

    ui::BudgetWindow& open()
    {
        m_window = std::make_unique<ui::BudgetWindow>(m_wedding->state, m_prompts);
        m_window->setAttribute(Qt::WA_DeleteOnClose, false);
        test::activate(m_window.get());
        return *m_window;
    }

private slots:
    void init() { m_wedding = std::make_unique<test::TestWedding>(); m_wedding->createDatabase(); }
    void cleanup() { m_window.reset(); m_prompts.verifyDone(); }

    void aSecondPressBringsTheSameLedgerForward()
    {
        test::TestWedding wedding;
        wedding.createWedding(100);
        test::RunningProgram program;
        QVERIFY(program.start(wedding.folder()));
        ui::MainWindow& main = program.main();
        main.toolButton(6)->trigger();
        QPointer<ui::BudgetWindow> ledger = main.budgetWindow();
        QVERIFY(ledger && ledger->isVisible());
        typeInto(ledger->txtBudgetBranch[2], QStringLiteral("450"));
        main.activateWindow(); // the window comes forward as it is, not read again
        main.toolButton(6)->trigger();
        QVERIFY(main.budgetWindow() == ledger && QTest::qWaitForWindowActive(ledger));
        QCOMPARE(ledger->txtBudgetBranch[2]->text(), QStringLiteral("450"));
        // Closing loses the typed text without a question; the next press reads the file.
        ledger->close();
        QTRY_VERIFY(!ledger);
        main.toolButton(6)->trigger();
        QCOMPARE(main.budgetWindow()->boxTexts(), QStringList(30, QStringLiteral("0")));
    }

    void tabWalksTheBoxesInIndexOrderAndEachReadsItsCaption()
    {
        ui::BudgetWindow& window = open();
        window.txtBudgetBranch[0]->setFocus();
        for (int i = 0; i < 30; ++i) {
            QLineEdit* box = window.txtBudgetBranch[size_t(i)];
            QCOMPARE(QApplication::focusWidget(), box);
            QCOMPARE(box->geometry(), twipsRect(i < 15 ? 5640 : 480, 960 + 480 * (i % 15), 2895, 375));
            QCOMPARE(QAccessible::queryAccessibleInterface(box)->text(QAccessible::Name).trimmed(),
                     store::budgetBranches()[size_t(i)].label);
            QTest::keyClick(box, Qt::Key_Tab);
        }
        QCOMPARE(QApplication::focusWidget(), window.cmdUpdate);
    }

    void aBoxThatIsNoNumberGetsTheFocusThenTheSaveShowsWhatIsStored()
    {
        ui::BudgetWindow& window = open();
        QApplication::clipboard()->setText(QStringLiteral("שמלת כלה"));
        typeInto(window.txtBudgetBranch[4], {});
        QTest::keySequence(window.txtBudgetBranch[4], QKeySequence::Paste);
        for (const auto& [box, text] : {std::pair{0, "1,000"}, {29, "-250.5"}, {20, "1.2.3"}, {8, "abc"}})
            typeInto(window.txtBudgetBranch[size_t(box)], QString::fromLatin1(text));
        const QStringList typed = window.boxTexts();

        m_prompts.expectMessage(PromptIcon::None, QStringLiteral("השדות חייבים להכיל ערך מיספרי בלבד."));
        QTest::mouseClick(window.cmdUpdate, Qt::LeftButton);
        QVERIFY(m_prompts.verifyDone());
        QCOMPARE(QApplication::focusWidget(), window.txtBudgetBranch[4]);
        QVERIFY(m_wedding->count(BudgetSql) == 0 && window.boxTexts() == typed);

        for (int box : {4, 8, 20})
            typeInto(window.txtBudgetBranch[size_t(box)], QStringLiteral("0"));
        QTest::mouseClick(window.cmdUpdate, Qt::LeftButton);
        QCOMPARE(m_wedding->count(BudgetSql), 1);
        QStringList shown(30, QStringLiteral("0"));
        shown[0] = QStringLiteral("1000");
        shown[29] = QStringLiteral("-250.5");
        QCOMPARE(window.boxTexts(), shown);
        QCOMPARE(window.lblSum->text(), QStringLiteral("749.5"));
    }

    void aFileThatWontOpenIsToldOnce()
    {
        QFile::remove(m_wedding->state.databaseFile());
        const QString why = test::failureIn([&] { store::Database::open(m_wedding->state.databaseFile()); }).text();
        QVERIFY(!why.isEmpty());
        m_prompts.expectMessage(PromptIcon::Warning, why);
        ui::BudgetWindow& window = open();
        QCOMPARE(window.lblSum->text(), QStringLiteral("0"));
        // A save has nowhere to go and says nothing.
        QTest::mouseClick(window.cmdUpdate, Qt::LeftButton);
    }

    void printing_data()
    {
        QTest::addColumn<QString>("target"); // under the test's folder; empty: cancelled
        QTest::addColumn<QString>("message");
        QTest::newRow("to a PDF file") << "ledger.pdf" << "המאזן התקציבי הודפס";
        QTest::newRow("cancelled: nothing said") << "" << "";
        QTest::newRow("a printer that fails") << "missing/folder/ledger.pdf" << "ארעה שגיאת הדפסה";
    }
    void printing()
    {
        QFETCH(QString, target);
        QFETCH(QString, message);
        ui::BudgetWindow& window = open();
        typeInto(window.txtBudgetBranch[0], QStringLiteral("777")); // printed although not saved
        PrinterRequest choice;
        choice.outputFile = m_wedding->folder() + u'/' + target;
        m_prompts.expectPrinter(!target.isEmpty() ? std::optional(choice) : std::nullopt);
        if (!message.isEmpty())
            m_prompts.expectMessage(PromptIcon::None, message);
        QTest::mouseDClick(window.imgPrint, Qt::LeftButton);
        QVERIFY(window.imgPrint->isVisible() && m_wedding->count(BudgetSql) == 0);
        if (target != u"ledger.pdf")
            return;

        // On screen the icon is there; on paper its place shows only the grey band.
        const QRect icon = window.imgPrint->geometry().adjusted(2, 2, -2, -2);
        const QColor band(0xE0, 0xE0, 0xE0);
        QVERIFY(!allNear(window.grab().toImage(), icon, band));
        const QString pdftoppm = QStandardPaths::findExecutable(QStringLiteral("pdftoppm"));
        if (pdftoppm.isEmpty())
            QSKIP("pdftoppm is needed to look at the page");
        const QString png = m_wedding->folder() + QStringLiteral("/page");
        const QStringList arguments{"-r", QString::number(ScreenDpi), "-png", "-singlefile", choice.outputFile, png};
        QCOMPARE(QProcess::execute(pdftoppm, arguments), 0);
        const QImage page(png + QStringLiteral(".png"));
        const QPoint origin = ui::printerFor(choice)->pageLayout().paintRectPixels(ScreenDpi).topLeft();
        QVERIFY(allNear(page, icon.translated(origin), band));
        // The first box is where the window has it, "777" on it.
        const QRect box = window.txtBudgetBranch[0]->geometry().translated(origin);
        QVERIFY(!allNear(page, box.adjusted(3, 3, -3, -3), Qt::white));
        QVERIFY(allNear(page, QRect(box.topLeft() + QPoint(4, 4), QSize(20, 4)), Qt::white));
    }
};

VELMORA_TEST_MAIN(BudgetWindowTest)
#include "test_budgetwindow.moc"
