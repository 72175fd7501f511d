#include "store/Currency.h"

#include "app/TextNumbers.h"

#include <cmath>

namespace velmora::store {

namespace {

constexpr char16_t Shekel = u'\u20AA';

// A number read as its significant digits and the place of its decimal point, so that
// any length of text converts exactly.
struct Decimal {
    bool negative = false;
    QString digits;      // without leading zeros
    qint64 pointAt = 0;  // how many of the digits stand before the point; may be negative
};

bool isAsciiDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

class Reader {
public:
    explicit Reader(const QString& text) : m_text(Trim(text)) {}

    std::optional<Decimal> read()
    {
        bool signSeen = readSign();
        bool shekelSeen = false;
        if (peek() == Shekel) {
            shekelSeen = true;
            ++m_at;
            skipBlanks();
        }
        if (!signSeen)
            readSign();
        if (!readBody())
            return std::nullopt;
        if (!shekelSeen) {
            skipBlanks();
            if (peek() == Shekel)
                ++m_at;
        }
        if (m_at != m_text.size())
            return std::nullopt;
        return m_number;
    }

private:
    QChar peek() const { return m_at < m_text.size() ? m_text[m_at] : QChar(); }

    void skipBlanks()
    {
        while (m_at < m_text.size() && m_text[m_at] == u' ')
            ++m_at;
    }

    bool readSign()
    {
        if (peek() != u'-' && peek() != u'+')
            return false;
        m_number.negative = peek() == u'-';
        ++m_at;
        return true;
    }

    void digit(QChar c, bool fraction)
    {
        if (m_number.digits.isEmpty() && c == u'0') {
            if (fraction)
                --m_number.pointAt;
            return;
        }
        m_number.digits += c;
        if (!fraction)
            ++m_number.pointAt;
    }

    // Digits of the whole part; with grouping, the first group has one to three digits
    // and every "," is followed by exactly three.
    qsizetype readWhole()
    {
        qsizetype count = 0;
        qsizetype run = 0;
        bool grouped = false;
        while (m_at < m_text.size()) {
            const QChar c = m_text[m_at];
            if (isAsciiDigit(c)) {
                if (grouped && run == 3)
                    return -1;
                digit(c, false);
                ++run;
                ++count;
            } else if (c == u',') {
                if (run == 0 || run > 3 || (grouped && run != 3))
                    return -1;
                grouped = true;
                run = 0;
            } else {
                break;
            }
            ++m_at;
        }
        if (grouped && run != 3)
            return -1;
        return count;
    }

    bool readBody()
    {
        qsizetype count = readWhole();
        if (count < 0)
            return false;
        if (peek() == u'.') {
            ++m_at;
            for (; m_at < m_text.size() && isAsciiDigit(m_text[m_at]); ++m_at, ++count)
                digit(m_text[m_at], true);
        }
        if (count == 0)
            return false;
        if ((peek() == u'e' || peek() == u'E')) {
            ++m_at;
            bool negative = false;
            if (peek() == u'-' || peek() == u'+') {
                negative = peek() == u'-';
                ++m_at;
            }
            qint64 exponent = 0;
            qsizetype exponentDigits = 0;
            for (; m_at < m_text.size() && isAsciiDigit(m_text[m_at]); ++m_at, ++exponentDigits)
                exponent = std::min<qint64>(exponent * 10 + m_text[m_at].digitValue(), 1'000'000'000);
            if (exponentDigits == 0)
                return false;
            m_number.pointAt += negative ? -exponent : exponent;
        }
        return true;
    }

    QString m_text;
    qsizetype m_at = 0;
    Decimal m_number;
};

std::optional<Currency> toCurrency(const Decimal& number)
{
    const qint64 wholeUnits = number.pointAt + 4; // digits that make whole ten-thousandths
    if (number.digits.isEmpty() || wholeUnits < 0)
        return Currency{0};
    if (wholeUnits > 19)
        return std::nullopt;
    quint64 units = 0;
    for (qint64 i = 0; i < wholeUnits; ++i) {
        const int d = i < number.digits.size() ? number.digits[i].digitValue() : 0;
        units = units * 10 + quint64(d);
        if (units > quint64(Currency::MaxUnits))
            return std::nullopt;
    }
    if (wholeUnits < number.digits.size() && number.digits[wholeUnits].digitValue() >= 5) {
        if (units == quint64(Currency::MaxUnits))
            return std::nullopt;
        ++units;
    }
    return Currency{number.negative ? -qint64(units) : qint64(units)};
}

} // namespace

bool Currency::isAmountText(const QString& text)
{
    return Reader(text).read().has_value();
}

std::optional<Currency> Currency::fromAmountText(const QString& text)
{
    const std::optional<Decimal> number = Reader(text).read();
    return number ? toCurrency(*number) : std::nullopt;
}

std::optional<Currency> Currency::fromDouble(double value)
{
    if (!std::isfinite(value))
        return std::nullopt;
    // The whole part converts exactly; only the fraction is scaled, so that large amounts
    // don't pick up the error of value * 10000.
    const double whole = std::trunc(value);
    if (std::fabs(whole) > double(MaxWhole))
        return std::nullopt;
    const qint64 fraction = std::llround((value - whole) * Scale);
    qint64 units = 0;
    if (__builtin_add_overflow(qint64(whole) * Scale, fraction, &units) || units < -MaxUnits)
        return std::nullopt;
    return Currency{units};
}

std::optional<Currency> Currency::add(Currency a, Currency b)
{
    qint64 units = 0;
    if (__builtin_add_overflow(a.units, b.units, &units) || units < -MaxUnits)
        return std::nullopt;
    return Currency{units};
}

QString Currency::toString() const
{
    const bool negative = units < 0;
    const quint64 magnitude = negative ? quint64(-(units + 1)) + 1 : quint64(units);
    QString text = QString::number(magnitude / Scale);
    quint64 fraction = magnitude % Scale;
    if (fraction != 0) {
        QString digits = QString::number(fraction).rightJustified(4, u'0');
        while (digits.endsWith(u'0'))
            digits.chop(1);
        text += u'.' + digits;
    }
    return negative ? u'-' + text : text;
}

} // namespace velmora::store
