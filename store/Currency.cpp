#include "store/Currency.h"

#include <cmath>
#include <limits>

namespace velmora::store {

std::optional<Currency> Currency::parse(const QString& input)
{
    const QString text = input.trimmed();
    if (text.isEmpty())
        return std::nullopt;
    int i = 0;
    bool negative = false;
    if (text[0] == u'-' || text[0] == u'+') {
        negative = text[0] == u'-';
        ++i;
    }
    qint64 whole = 0;
    int digits = 0;
    constexpr qint64 limit = std::numeric_limits<qint64>::max() / Scale / 10;
    for (; i < text.size() && text[i].isDigit(); ++i, ++digits) {
        if (whole > limit)
            return std::nullopt;
        whole = whole * 10 + text[i].digitValue();
    }
    qint64 fraction = 0;
    int fractionDigits = 0;
    bool roundUp = false;
    if (i < text.size() && text[i] == u'.') {
        for (++i; i < text.size() && text[i].isDigit(); ++i, ++digits) {
            if (fractionDigits < 4) {
                fraction = fraction * 10 + text[i].digitValue();
                ++fractionDigits;
            } else if (fractionDigits == 4) {
                roundUp = text[i].digitValue() >= 5;
                ++fractionDigits;
            }
        }
    }
    if (i != text.size() || digits == 0)
        return std::nullopt;
    for (int d = std::min(fractionDigits, 4); d < 4; ++d)
        fraction *= 10;
    qint64 units = whole * Scale + fraction + (roundUp ? 1 : 0);
    return Currency{negative ? -units : units};
}

std::optional<Currency> Currency::fromDouble(double value)
{
    const double scaled = std::round(value * Scale);
    if (!std::isfinite(scaled) || std::fabs(scaled) >= 9.2e18)
        return std::nullopt;
    return Currency{qint64(scaled)};
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
