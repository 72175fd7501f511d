#include "ScriptedPrompts.h"
#include "TestMain.h"
#include "TestWedding.h"

#include "budget/Budget.h"
#include "store/Schema.h"

using namespace velmora;
using budget::BudgetLedger;
using store::Currency;

namespace {

const QString Max = QStringLiteral("922337203685477");
const QString TotalTooLarge = QStringLiteral("התקציב הכולל גדול מהערך המקסימלי המותר");

// Thirty box texts: `fill` everywhere but the "index=text" overrides.
QStringList boxes(const QString& fill, const QStringList& overrides = {})
{
    QStringList texts(budget::BranchCount, fill);
    for (const QString& item : overrides) {
        const qsizetype at = item.indexOf(u'=');
        texts[item.left(at).toInt()] = item.mid(at + 1);
    }
    return texts;
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

// What a fresh look at the file shows: the boxes of a new load, or nothing for no row.
QStringList fileBoxes(test::TestWedding& wedding)
{
    if (wedding.count(QStringLiteral("select * from VELMORA_BUDGET")) == 0)
        return {};
    BudgetLedger ledger;
    ledger.open(wedding.state.databaseFile());
    QString sql;
    return ledger.load(sql);
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
        QTest::addColumn<QStringList>("typed");
        QTest::addColumn<BudgetLedger::Outcome>("outcome");
        QTest::addColumn<int>("focus");
        QTest::addColumn<QStringList>("stored"); // the boxes of a reload; empty: no row
        QTest::addColumn<QString>("sum");         // empty: "0" after the total's message

        using O = BudgetLedger::Outcome;
        QTest::newRow("first save of an empty table adds the row")
            << "" << QStringList{"3=250"} << O::Saved << -1 << boxes("0", {"3=250"}) << "250";
        QTest::newRow("emptied box on a new row: the row is refused")
            << "" << QStringList{"3=250", "5="} << O::Saved << -1 << QStringList() << "0";
        QTest::newRow("emptied and blank boxes on the row keep their values")
            << "100" << QStringList{"5=", "9=   ", "6=7"} << O::Saved << -1 << boxes("100", {"6=7"}) << "2907";
        QTest::newRow("largest field accepted")
            << "" << QStringList{"0=" + Max} << O::Saved << -1 << boxes("0", {"0=" + Max}) << Max;
        QTest::newRow("one more refused, nothing stored")
            << "100" << QStringList{"0=5", "29=922337203685478"} << O::TooLarge << -1 << boxes("100") << "";
        QTest::newRow("the largest amount's fraction reads over the limit")
            << "" << QStringList{"0=922337203685477.5807"} << O::TooLarge << -1 << QStringList() << "";
        QTest::newRow("10,000 digits refused")
            << "" << QStringList{"4=" + QString(10000, u'9')} << O::TooLarge << -1 << QStringList() << "";
        QTest::newRow("an exponent over the limit refused")
            << "" << QStringList{"4=1e15"} << O::TooLarge << -1 << QStringList() << "";
        QTest::newRow("thirty maxima: the row stands, the total overflows")
            << "" << boxes(Max) << O::Saved << -1 << boxes(Max) << "";
        QTest::newRow("grouped thousands stored whole")
            << "" << QStringList{"2=1,000", "3=₪ 1,250.5", "4=12 ₪"} << O::Saved << -1
            << boxes("0", {"2=1000", "3=1250.5", "4=12"}) << "2262.5";
        QTest::newRow("negatives lower the total")
            << "" << QStringList{"0=1000", "1=-250", "2=-₪0.5"} << O::Saved << -1
            << boxes("0", {"0=1000", "1=-250", "2=-0.5"}) << "749.5";
        QTest::newRow("five decimals rounded by the store")
            << "" << QStringList{"0=0.12345", "1=-0.00005", "2=7.00004"} << O::Saved << -1
            << boxes("0", {"0=0.1235", "1=-0.0001", "2=7"}) << "7.1234";
        QTest::newRow("a field the store can't hold keeps its value")
            << "100" << QStringList{"2=₪ 922337203685478", "3=1"} << O::Saved << -1 << boxes("100", {"3=1"}) << "2901";
        QTest::newRow("letters") << "100" << QStringList{"8=abc"} << O::Invalid << 8 << boxes("100") << "";
        QTest::newRow("two points") << "100" << QStringList{"8=1.2.3"} << O::Invalid << 8 << boxes("100") << "";
        QTest::newRow("two signs") << "100" << QStringList{"8=--5"} << O::Invalid << 8 << boxes("100") << "";
        QTest::newRow("Hebrew word") << "" << QStringList{"20=שמלה"} << O::Invalid << 20 << QStringList() << "";
        QTest::newRow("several wrong: the first gets the focus, before any limit")
            << "100" << QStringList{"0=922337203685478", "7=1.2.3", "3=x"} << O::Invalid << 3 << boxes("100") << "";
    }
    void aSaveChecksInOrderAndStoresWhatTheStoreTakes()
    {
        QFETCH(QString, existing);
        QFETCH(QStringList, typed);
        QFETCH(BudgetLedger::Outcome, outcome);
        QFETCH(int, focus);
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
        QCOMPARE(sql, QStringLiteral("select * from VELMORA_BUDGET"));
        QCOMPARE(ledger.isNew(), existing.isEmpty());
        QCOMPARE(texts, boxes(existing.isEmpty() ? QStringLiteral("0") : existing));
        if (typed.size() == budget::BranchCount) {
            texts = typed;
        } else {
            for (const QString& item : typed)
                texts[item.left(item.indexOf(u'=')).toInt()] = item.mid(item.indexOf(u'=') + 1);
        }

        if (outcome == BudgetLedger::Outcome::Invalid)
            m_prompts.expectMessage(PromptIcon::None, QStringLiteral("השדות חייבים להכיל ערך מיספרי בלבד."));
        if (outcome == BudgetLedger::Outcome::TooLarge)
            m_prompts.expectMessage(PromptIcon::None, QStringLiteral("אחד השדות גדול מהערך המקסימלי המותר"));
        int focused = -1;
        QCOMPARE(ledger.save(texts, m_prompts, [&](int box) { focused = box; }), outcome);
        QCOMPARE(focused, focus);
        QVERIFY(m_prompts.verifyDone());
        QCOMPARE(fileBoxes(wedding), stored);

        if (outcome != BudgetLedger::Outcome::Saved)
            return;
        const QStringList reloaded = ledger.load(sql);
        QCOMPARE(ledger.isNew(), stored.isEmpty());
        QCOMPARE(reloaded, stored.isEmpty() ? boxes("0") : stored);
        if (sum.isEmpty())
            m_prompts.expectMessage(PromptIcon::None, TotalTooLarge);
        QCOMPARE(budget::SumText(budget::SumOfBudget(reloaded, m_prompts)), sum.isEmpty() ? QStringLiteral("0") : sum);
    }

    void everyFieldKeepsItsExactValueThroughTheFile()
    {
        test::TestWedding wedding;
        wedding.createDatabase();
        QStringList values;
        for (int i = 0; i < budget::BranchCount; ++i)
            values << QStringLiteral("%1%2.%3%4").arg(i % 2 ? "-" : "").arg(qint64(1) << (i * 49 / 30)).arg(i, 3, 10, QChar(u'0')).arg(i % 9 + 1);
        values[0] = QStringLiteral("922337203685477.0001"); // reads as 922337203685477 for the limit
        values[1] = QStringLiteral("-922337203685477.5807");
        values[2] = QStringLiteral("0.0001");
        values[3] = QStringLiteral("-0.0001");
        values[4] = QStringLiteral("0");
        values[5] = QStringLiteral("123456789012.345");

        {
            BudgetLedger ledger;
            ledger.open(wedding.state.databaseFile());
            QString sql;
            ledger.load(sql);
            QCOMPARE(ledger.save(boxes("5"), m_prompts, [](int) {}), BudgetLedger::Outcome::Saved);
            ledger.load(sql);
            QVERIFY(!ledger.isNew());
            // The next save edits the one row.
            QCOMPARE(ledger.save(values, m_prompts, [](int) {}), BudgetLedger::Outcome::Saved);
            ledger.close();
        }
        QCOMPARE(wedding.count(QStringLiteral("select * from VELMORA_BUDGET")), 1);
        QCOMPARE(fileBoxes(wedding), values);
        store::Database db = wedding.open();
        store::Recordset rs = db.openRecordset(QStringLiteral("select * from VELMORA_BUDGET"));
        QCOMPARE(rs.value(QStringLiteral("B_DRESS")).value<Currency>().units, Currency::MaxWhole * Currency::Scale + 1);
        QCOMPARE(rs.value(QStringLiteral("B_SUIT")).value<Currency>().units, -Currency::MaxUnits);
        QCOMPARE(rs.value(QStringLiteral("B_EXTRA")).value<Currency>().toString(), values[29]);
    }

    void theTotalShowsThroughADouble_data()
    {
        QTest::addColumn<qint64>("units");
        QTest::addColumn<QString>("text");
        QTest::newRow("zero") << qint64(0) << "0";
        QTest::newRow("smallest unit") << qint64(1) << "0.0001";
        QTest::newRow("negative") << qint64(-7495000) << "-749.5";
        QTest::newRow("15 significant digits") << qint64(1234567890123456) << "123456789012.346";
        QTest::newRow("largest") << Currency::MaxUnits << "922337203685478";
    }
    void theTotalShowsThroughADouble()
    {
        QFETCH(qint64, units);
        QFETCH(QString, text);
        QCOMPARE(budget::SumText(Currency{units}), text);
    }

    void theTotalReadsEachBoxByItsLeadingNumber()
    {
        // What was typed and not stored counts by its leading number: "1,000" is 1, a
        // Hebrew word 0, an exponent counts whole.
        const QStringList typed = boxes("0", {"0=1,000", "1=שמלה", "2=  12abc", "3=1.5e3", "4=-0.00005", "5=0.00005"});
        QCOMPARE(budget::SumOfBudget(typed, m_prompts).units, (1 + 12 + 1500) * Currency::Scale);
        // One box beyond currency leaves the rest counted, then the total says so.
        m_prompts.expectMessage(PromptIcon::None, TotalTooLarge);
        QCOMPARE(budget::SumOfBudget(boxes("1", {"7=" + QString(400, u'9')}), m_prompts).units, 0);
    }
};

VELMORA_TEST_MAIN(BudgetTest)
#include "test_budget.moc"
