#include "ScriptedPrompts.h"
#include "TestMain.h"
#include "TestWedding.h"

#include "budget/Budget.h"
#include "budget/BudgetCsv.h"
#include "store/CsvText.h"
#include "store/Schema.h"

using namespace velmora;
using budget::BudgetLedger;
using store::Currency;

namespace {

const QString Max = QStringLiteral("922337203685477");
const QString TotalTooLarge = QStringLiteral("התקציב הכולל גדול מהערך המקסימלי המותר");

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
    store::Recordset rs = db.openRecordset(QStringLiteral("select * from VELMORA_BUDGET"));
    rs.addNew();
    for (int i = 0; i < budget::BranchCount; ++i)
        rs.setValue(store::budgetBranches()[size_t(i)].field, values[i]);
    rs.update();
}

} // namespace

Q_DECLARE_METATYPE(BudgetLedger::Outcome)

class BudgetTest : public QObject {
    Q_OBJECT

private:
    test::ScriptedPrompts m_prompts;

private slots:
    void cleanup() { m_prompts.verifyDone(); }

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

        test::TestWedding wedding;
        wedding.createDatabase();
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
        QCOMPARE(wedding.count(QStringLiteral("select * from VELMORA_BUDGET")), int(!stored.isEmpty()));
        const QStringList reloaded = ledger.load(sql); // read from the file afresh
        QCOMPARE(ledger.isNew(), stored.isEmpty());
        QCOMPARE(reloaded, stored.isEmpty() ? boxes("0") : stored);
        if (outcome != BudgetLedger::Outcome::Saved)
            return;
        if (sum.isEmpty())
            m_prompts.expectMessage(PromptIcon::None, TotalTooLarge);
        QCOMPARE(budget::SumText(budget::SumOfBudget(reloaded, m_prompts)), sum.isEmpty() ? QStringLiteral("0") : sum);
    }

    void theTotalReadsEachBoxByItsLeadingNumber()
    {
        // What was typed and not stored counts by its leading number: "1,000" is 1, a
        // Hebrew word 0, an exponent counts whole.
        const QStringList typed = boxes("0", {"0=1,000", "1=שמלה", "2=  12abc", "3=1.5e3", "4=-0.00005", "5=0.00005"});
        QCOMPARE(budget::SumOfBudget(typed, m_prompts).units, (1 + 12 + 1500) * Currency::Scale);
    }
    // The ledger as a list: each branch with its amount as a plain number, then the total;
    // an empty budget is zeros.
    void theLedgerAsAList()
    {
        test::TestWedding wedding;
        wedding.createDatabase();
        auto read = [&] {
            const store::CsvParse parsed = store::ParseCsv(budget::BudgetCsv(wedding.state.databaseFile()));
            return parsed.table ? parsed.table->rows : std::vector<QStringList>{};
        };
        std::vector<QStringList> rows = read();
        QCOMPARE(rows.size(), size_t(32));
        QCOMPARE(rows[1], (QStringList{QStringLiteral("שמלת כלה"), QStringLiteral("0")}));
        QCOMPARE(rows.back(), (QStringList{QStringLiteral("ס\"כ הוצאות"), QStringLiteral("0")}));
        storeRow(wedding, boxes("1000", {"0=1,234.5", "29=-34.25"}));
        rows = read();
        QCOMPARE(rows[1], (QStringList{QStringLiteral("שמלת כלה"), QStringLiteral("1234.5")}));
        QCOMPARE(rows[30], (QStringList{QStringLiteral("שונות"), QStringLiteral("-34.25")}));
        QCOMPARE(rows.back().last(), QStringLiteral("29200.25"));
    }
};

VELMORA_TEST_MAIN(BudgetTest)
#include "test_budget.moc"
