#pragma once

#include <QMetaType>
#include <QString>

#include <optional>

namespace velmora::store {

// An exact money amount with four decimals, kept as ten-thousandths.
struct Currency {
    qint64 units = 0; // 1 = 0.0001

    static constexpr qint64 Scale = 10000;

    static Currency fromUnits(qint64 units) { return Currency{units}; }
    static Currency fromWhole(qint64 whole) { return Currency{whole * Scale}; }
    // Exact parse of a decimal text ("1234", "-12.5", " 0.0001 "); more than four decimals
    // round half away from zero. Nothing for text that isn't a plain decimal number.
    static std::optional<Currency> parse(const QString& text);
    // Rounds to the nearest ten-thousandth; nothing when out of range.
    static std::optional<Currency> fromDouble(double value);

    double toDouble() const { return double(units) / Scale; }
    // "1234.5" style: no trailing zeros, no group separators.
    QString toString() const;

    friend bool operator==(Currency a, Currency b) { return a.units == b.units; }
    friend Currency operator+(Currency a, Currency b) { return Currency{a.units + b.units}; }
};

} // namespace velmora::store

Q_DECLARE_METATYPE(velmora::store::Currency)
