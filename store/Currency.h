#pragma once

#include <QMetaType>
#include <QString>

#include <limits>
#include <optional>

namespace velmora::store {

// An exact money amount with four decimals, kept as ten-thousandths. The range is
// ±922337203685477.5807, the same on both sides, so that negating never overflows.
struct Currency {
    qint64 units = 0; // 1 = 0.0001

    static constexpr qint64 Scale = 10000;
    static constexpr qint64 MaxUnits = std::numeric_limits<qint64>::max();
    static constexpr qint64 MaxWhole = MaxUnits / Scale; // 922337203685477

    static Currency fromUnits(qint64 units) { return Currency{units}; }
    static Currency fromWhole(qint64 whole) { return Currency{whole * Scale}; }
    // An amount as people here write money, the one rule for what the program takes as a
    // number of shekels and what the store converts:
    //   blanks around; one sign "+" or "-"; one "₪" before or after the number, blanks
    //   beside it allowed; digits, either plain or grouped by "," in threes ("1,000",
    //   "12,345,678"); a decimal point "."; an exponent "e" or "E" with an optional sign.
    // So "1,000", "₪ 1,000.50", "-₪5", "5 ₪" and "1.5e3" are amounts; "1.2.3", "--5",
    // "10,00" and "1,2345" are not. Conversion is exact; more than four decimals round
    // half away from zero.
    static bool isAmountText(const QString& text);
    // Nothing when the text is no amount or lies outside the range.
    static std::optional<Currency> fromAmountText(const QString& text);
    // Rounds to the nearest ten-thousandth; nothing when out of range.
    static std::optional<Currency> fromDouble(double value);
    // Nothing when the sum leaves the range.
    static std::optional<Currency> add(Currency a, Currency b);

    double toDouble() const { return double(units) / Scale; }
    // "1234.5" style: no trailing zeros, no group separators.
    QString toString() const;

    friend bool operator==(Currency a, Currency b) { return a.units == b.units; }
    friend Currency operator+(Currency a, Currency b) { return Currency{a.units + b.units}; }
};

} // namespace velmora::store

Q_DECLARE_METATYPE(velmora::store::Currency)
