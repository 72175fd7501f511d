#include "TestMain.h"

#include "store/Currency.h"

#include <cmath>
#include <limits>

using velmora::store::Currency;

namespace {
constexpr qint64 Max = Currency::MaxUnits;
constexpr qint64 None = std::numeric_limits<qint64>::min(); // no value
} // namespace

class CurrencyTest : public QObject {
    Q_OBJECT

private slots:
    // Texts the budget's boxes meet; what the store does with them is in test_budget.
    void amountsAsPeopleWriteThem_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("numeric");
        QTest::addColumn<qint64>("units");
        QTest::newRow("grouped thousands") << "12,345,678.5" << true << qint64(123456785000);
        QTest::newRow("shekel before, blank") << "₪ 1,000.50" << true << qint64(10005000);
        QTest::newRow("shekel after") << "250 ₪" << true << qint64(2500000);
        QTest::newRow("sign after the shekel") << "₪-5" << true << qint64(-50000);
        QTest::newRow("plus and blanks") << "  +7  " << true << qint64(70000);
        QTest::newRow("exponent") << "1.5e3" << true << qint64(15000000);
        QTest::newRow("one unit") << "0.0001" << true << qint64(1);
        QTest::newRow("five decimals round") << "1.23456" << true << qint64(12346);
        QTest::newRow("point first") << ".5" << true << qint64(5000);
        QTest::newRow("tiny exponent") << "1e-999999999999" << true << qint64(0);
        QTest::newRow("largest") << "922337203685477.5807" << true << Max;
        QTest::newRow("smallest") << "-922337203685477.5807" << true << -Max;
        QTest::newRow("one unit over") << "922337203685477.5808" << true << None;
        QTest::newRow("rounds over the top") << "922337203685477.58075" << true << None;
        QTest::newRow("int64's own minimum") << "-922337203685477.5808" << true << None;
        QTest::newRow("exponent too large") << "1e15" << true << None;
        QTest::newRow("huge exponent") << "1e99999999999999999999" << true << None;
        QTest::newRow("10,000 digits") << QString(10000, u'9') << true << None;

        // Not amounts: stray letters, points or signs, groups other than three, bare exponents, other digits.
        for (const char* text : {"12abc", "1.2.3", "--5", "-₪-5", ".", "10,00", "1,2345", ",5", "1.000,5", "1 000", "1e", "١٢"})
            QTest::newRow(text) << QString::fromUtf8(text) << false << None;
    }
    void amountsAsPeopleWriteThem()
    {
        QFETCH(QString, text);
        QFETCH(bool, numeric);
        QFETCH(qint64, units);
        QCOMPARE(Currency::isAmountText(text), numeric);
        const std::optional<Currency> amount = Currency::fromAmountText(text);
        QCOMPARE(amount ? amount->units : None, units);
    }

    // Sums exact and at the edges of the range; the texts shown are the budget's (test_budget).
    void sumsAndDoubles()
    {
        for (const auto& [value, units] : {std::pair(922337203685477.0, qint64(9223372036854770000)), // largest whole
                                           {922337203685478.0, None}, {std::nan(""), None}, {-12.34567, qint64(-123457)}})
            QCOMPARE(Currency::fromDouble(value) ? Currency::fromDouble(value)->units : None, units);
        Currency sum;
        for (int i = 0; i < 10; ++i)
            sum = sum + *Currency::fromAmountText(QStringLiteral("0.1"));
        QCOMPARE(sum, Currency::fromWhole(1));
        QCOMPARE(Currency::add(Currency{Max - 1}, Currency{1})->units, Max);
        QVERIFY(!Currency::add(Currency{Max}, Currency{1}) && !Currency::add(Currency{-Max}, Currency{-1}));
    }
};

VELMORA_TEST_MAIN(CurrencyTest)
#include "test_currency.moc"
