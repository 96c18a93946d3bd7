#pragma once

#include <QMetaType>
#include <QString>
#include <QtGlobal>

/// An exact fixed-point number: a whole number of 1e-18 in 128 bits, so sums and comparisons never drift.
///
/// The range is minimum to maximum (about 1.7e20 to both sides of zero); a result beyond it saturates to
/// the nearer of the two. No operation has undefined behaviour.
class decimal {
public:
    /// 0, which a default decimal is.
    static const decimal zero;
    /// The least number.
    static const decimal minimum;
    /// The greatest number.
    static const decimal maximum;
    /// The most digits after the decimal point.
    static constexpr short maxDecimals = 18;

    /// Zero.
    constexpr decimal() = default;

    /// The value rounded to a number of decimals (clamped to 0 to 18). It is the exact binary value that
    /// is rounded, halves away from zero: 1.005 to two decimals is 1.00. Out of range saturates; NaN and
    /// infinities give zero.
    static decimal fromDouble(double value, short decimals);

    /// The number count * 10^-decimals; decimals from 0 to 18, clamped.
    static decimal fromUnits(qint64 count, short decimals);

    /// Reads [+-]digits[.digits] in C notation, nothing around it. More than 18 decimals are rounded,
    /// halves away from zero; out of range saturates. Anything else gives zero and sets *ok to false.
    static decimal fromString(const QString& text, bool* ok = nullptr);

    /// The nearest double, ties to even: what strtod gives for toString().
    double toDouble() const;

    /// C notation, as short as is exact: "-12.5", "3", "0".
    QString toString() const;

    /// The value rounded to a number of decimals (clamped to 0 to 18), halves away from zero.
    decimal rounded(short decimals) const;

    /// Negative, zero or positive as this number is less than, equal to or greater than the other.
    int compare(const decimal& other) const;
    /// Whether this number equals zero.
    bool isZero() const;

    /// The number with the other sign; minimum gives maximum.
    decimal operator-() const;
    /// The exact sum.
    decimal& operator+=(const decimal& other);
    /// The exact difference.
    decimal& operator-=(const decimal& other);
    /// The product rounded to 18 decimals, halves away from zero.
    decimal& operator*=(const decimal& other);

    /// As the operators that assign.
    /// @{
    friend decimal operator+(decimal a, const decimal& b) { return a += b; }
    friend decimal operator-(decimal a, const decimal& b) { return a -= b; }
    friend decimal operator*(decimal a, const decimal& b) { return a *= b; }
    /// @}
    /// By compare().
    /// @{
    friend bool operator==(const decimal& a, const decimal& b) { return a.compare(b) == 0; }
    friend bool operator!=(const decimal& a, const decimal& b) { return a.compare(b) != 0; }
    friend bool operator<(const decimal& a, const decimal& b) { return a.compare(b) < 0; }
    friend bool operator>(const decimal& a, const decimal& b) { return a.compare(b) > 0; }
    friend bool operator<=(const decimal& a, const decimal& b) { return a.compare(b) <= 0; }
    friend bool operator>=(const decimal& a, const decimal& b) { return a.compare(b) >= 0; }
    /// @}

private:
    struct Units;

    constexpr decimal(qint64 high, quint64 low)
        : m_high(high)
        , m_low(low)
    {
    }

    // Two's complement halves of the count of 1e-18.
    qint64 m_high = 0;
    quint64 m_low = 0;
};

Q_DECLARE_METATYPE(decimal)
