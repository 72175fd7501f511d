#include "RunningProgram.h"
#include "SystemKeys.h"
#include "TestMain.h"
#include "TestWedding.h"

#include "app/Twips.h"
#include "app/ui/MainWindow.h"
#include "budget/Budget.h"
#include "budget/BudgetCsv.h"
#include "budget/ui/BudgetWindow.h"
#include "printing/ui/PrinterTarget.h"
#include "store/CsvText.h"
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
using budget::BudgetLedger;
using store::Currency;

namespace {

const QString BudgetSql = QStringLiteral("select * from VELMORA_BUDGET");

const QString Max = QStringLiteral("922337203685477");

// Thirty box texts: `base`, or `fill` everywhere, but the "index=text" overrides.
QStringList boxes(QStringList texts, const QStringList& overrides)
{
    for (const QString& item : overrides) {
        const qsizetype at = item.indexOf(u'=');
        texts[item.left(at).toInt()] = item.mid(at + 1);
    }
    return texts;
}

QStringList boxes(const QString& fill, const QStringList& overrides = {})
{
    return boxes(QStringList(budget::BranchCount, fill), overrides);
}

void storeRow(test::TestWedding& wedding, const QStringList& values)
{
    store::Database db = wedding.open();
    store::Recordset rs = db.openRecordset(BudgetSql);
    rs.addNew();
    for (int i = 0; i < budget::BranchCount; ++i)
        rs.setValue(store::budgetBranches()[size_t(i)].field, values[i]);
    rs.update();
}

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

Q_DECLARE_METATYPE(BudgetLedger::Outcome)

class BudgetTest : public QObject {
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
        QCOMPARE(main.budgetWindow()->boxTexts(), boxes("0"));
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
        QCOMPARE(window.boxTexts(), boxes("0", {"0=1000", "29=-250.5"}));
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
        QTest::mouseClick(window.cmdUpdate, Qt::LeftButton); // a save has nowhere to go and says nothing
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


    void aSaveChecksInOrderAndStoresWhatTheStoreTakes_data()
    {
        QTest::addColumn<QString>("existing"); // every field of the row; empty: no row
        QTest::addColumn<QStringList>("typed");  // "index=text", or all thirty texts
        QTest::addColumn<BudgetLedger::Outcome>("outcome");
        QTest::addColumn<QStringList>("stored"); // the boxes of a reload; empty: no row
        QTest::addColumn<QString>("sum");         // empty: "0" after the total's message

        // Every field's own exact value, the extremes among them.
        QStringList exact;
        for (int i = 0; i < budget::BranchCount; ++i)
            exact << QStringLiteral("%1%2.%3%4").arg(i % 2 ? "-" : "").arg(qint64(1) << (i * 49 / 30)).arg(i, 3, 10, QChar(u'0')).arg(i % 9 + 1);
        exact[0] = QStringLiteral("922337203685477.0001"); // reads as 922337203685477 for the limit
        exact[1] = QStringLiteral("-922337203685477.5807");
        exact[2] = QStringLiteral("0.0001");

        using O = BudgetLedger::Outcome;
        QTest::newRow("adds the row") << "" << QStringList{"3=250"} << O::Saved << boxes("0", {"3=250"}) << "250";
        QTest::newRow("new row with an empty box refused")
            << "" << QStringList{"3=250", "5="} << O::Saved << QStringList() << "0";
        QTest::newRow("emptied and blank boxes on the row keep their values")
            << "100" << QStringList{"5=", "9=   ", "6=7"} << O::Saved << boxes("100", {"6=7"}) << "2907";
        QTest::newRow("every field's exact value edits the one row") << "5" << exact << O::Saved << exact << "";
        QTest::newRow("largest field accepted")
            << "" << QStringList{"0=" + Max} << O::Saved << boxes("0", {"0=" + Max}) << Max;
        QTest::newRow("one more refused, nothing stored")
            << "100" << QStringList{"0=" + Max, "29=922337203685478"} << O::TooLarge << boxes("100") << "";
        QTest::newRow("the largest amount's fraction reads over the limit")
            << "" << QStringList{"0=922337203685477.5807"} << O::TooLarge << QStringList() << "";
        QTest::newRow("thirty maxima stored, the total overflows") << "" << boxes(Max) << O::Saved << boxes(Max) << "";
        QTest::newRow("grouped thousands stored whole, negatives lower the total")
            << "" << QStringList{"2=1,000", "3=₪ 1,250.5", "4=12 ₪", "5=-₪0.5"} << O::Saved
            << boxes("0", {"2=1000", "3=1250.5", "4=12", "5=-0.5"}) << "2262";
        QTest::newRow("five decimals rounded by the store; the total in 15 digits")
            << "" << QStringList{"0=0.12345", "1=-0.00005", "2=7.00004", "3=123456789012.34567"} << O::Saved
            << boxes("0", {"0=0.1235", "1=-0.0001", "2=7", "3=123456789012.3457"}) << "123456789019.469";
        QTest::newRow("a field the store can't hold keeps its value")
            << "100" << QStringList{"2=₪ 922337203685478", "3=1"} << O::Saved << boxes("100", {"3=1"}) << "2901";
        QTest::newRow("several wrong: the first (box 3) gets the focus, before any limit")
            << "100" << QStringList{"0=922337203685478", "7=1.2.3", "3=x", "9=--5"} << O::Invalid << boxes("100") << "";
    }
    void aSaveChecksInOrderAndStoresWhatTheStoreTakes()
    {
        QFETCH(QString, existing);
        QFETCH(QStringList, typed);
        QFETCH(BudgetLedger::Outcome, outcome);
        QFETCH(QStringList, stored);
        QFETCH(QString, sum);

        test::TestWedding& wedding = *m_wedding;
        if (!existing.isEmpty())
            storeRow(wedding, boxes(existing));

        BudgetLedger ledger;
        ledger.open(wedding.state.databaseFile());
        QString sql;
        QStringList texts = ledger.load(sql);
        QCOMPARE(ledger.isNew(), existing.isEmpty());
        QCOMPARE(texts, boxes(existing.isEmpty() ? QStringLiteral("0") : existing));
        texts = typed.size() == budget::BranchCount ? typed : boxes(texts, typed);

        if (outcome == BudgetLedger::Outcome::Invalid)
            m_prompts.expectMessage(PromptIcon::None, QStringLiteral("השדות חייבים להכיל ערך מיספרי בלבד."));
        if (outcome == BudgetLedger::Outcome::TooLarge)
            m_prompts.expectMessage(PromptIcon::None, QStringLiteral("אחד השדות גדול מהערך המקסימלי המותר"));
        int focused = -1;
        QCOMPARE(ledger.save(texts, m_prompts, [&](int box) { focused = box; }), outcome);
        QCOMPARE(focused, outcome == BudgetLedger::Outcome::Invalid ? 3 : -1);
        QVERIFY(m_prompts.verifyDone());
        QCOMPARE(wedding.count(BudgetSql), int(!stored.isEmpty()));
        const QStringList reloaded = ledger.load(sql); // read from the file afresh
        QCOMPARE(ledger.isNew(), stored.isEmpty());
        QCOMPARE(reloaded, stored.isEmpty() ? boxes("0") : stored);
        if (outcome != BudgetLedger::Outcome::Saved)
            return;
        if (sum.isEmpty())
            m_prompts.expectMessage(PromptIcon::None, QStringLiteral("התקציב הכולל גדול מהערך המקסימלי המותר"));
        QCOMPARE(budget::SumText(budget::SumOfBudget(reloaded, m_prompts)), sum.isEmpty() ? QStringLiteral("0") : sum);
    }

    void theTotalReadsEachBoxByItsLeadingNumber()
    {
        // Typed, not stored: "1,000" counts 1, a Hebrew word 0, an exponent whole.
        const QStringList typed = boxes("0", {"0=1,000", "1=שמלה", "2=  12abc", "3=1.5e3", "4=-0.00005", "5=0.00005"});
        QCOMPARE(budget::SumOfBudget(typed, m_prompts).units, (1 + 12 + 1500) * Currency::Scale);
    }
    // The ledger as a list: each branch's amount as a plain number, then the total; empty is zeros.
    void theLedgerAsAList()
    {
        auto read = [&] {
            const store::CsvParse parsed = store::ParseCsv(budget::BudgetCsv(m_wedding->state.databaseFile()));
            return parsed.table ? parsed.table->rows : std::vector<QStringList>{};
        };
        std::vector<QStringList> rows = read();
        QCOMPARE(rows.size(), size_t(32));
        QCOMPARE(rows[1], (QStringList{QStringLiteral("שמלת כלה"), QStringLiteral("0")}));
        QCOMPARE(rows.back(), (QStringList{QStringLiteral("ס\"כ הוצאות"), QStringLiteral("0")}));
        storeRow(*m_wedding, boxes("1000", {"0=1,234.5", "29=-34.25"}));
        rows = read();
        QCOMPARE(rows[1], (QStringList{QStringLiteral("שמלת כלה"), QStringLiteral("1234.5")}));
        QCOMPARE(rows[30], (QStringList{QStringLiteral("שונות"), QStringLiteral("-34.25")}));
        QCOMPARE(rows.back().last(), QStringLiteral("29200.25"));
    }
};

VELMORA_TEST_MAIN(BudgetTest)
#include "test_budget.moc"
