#pragma once

#include <QMetaType>
#include <QString>

#include <array>
#include <optional>

/// A fixed-point number of 27 digits before the decimal point and 18 behind it, and a sign.
class decimal {
public:
    static const decimal zero;
    static const decimal minimum;
    static const decimal maximum;

    constexpr decimal() = default;

    /// Rounded to a number of decimals, at most 18; the largest or smallest number for what is beyond them,
    /// zero for what is not finite.
    static decimal fromDouble(double value, short decimals);
    double toDouble() const;

    /// Reads what toText() gives, also with more zeros or a plus sign; nothing for any other text, more
    /// digits than there is room for included.
    static std::optional<decimal> fromText(const QString& text);
    /// C notation without zeros at the end.
    QString toText() const;

    friend bool operator==(const decimal& a, const decimal& b) { return a.compare(b) == 0; }
    friend bool operator!=(const decimal& a, const decimal& b) { return a.compare(b) != 0; }
    friend bool operator<(const decimal& a, const decimal& b) { return a.compare(b) < 0; }
    friend bool operator>(const decimal& a, const decimal& b) { return a.compare(b) > 0; }
    friend bool operator<=(const decimal& a, const decimal& b) { return a.compare(b) <= 0; }
    friend bool operator>=(const decimal& a, const decimal& b) { return a.compare(b) >= 0; }

    decimal operator-() const;
    /// A sum or difference beyond the range is the largest or smallest number.
    friend decimal operator+(const decimal& a, const decimal& b);
    friend decimal operator-(const decimal& a, const decimal& b) { return a + -b; }

private:
    /// Nine digits each, the first ones in front.
    using Groups = std::array<quint32, 5>;

    constexpr decimal(bool isNegative, const Groups& groups)
        : m_groups(groups)
        , m_isNegative(isNegative)
    {
    }

    int compare(const decimal& other) const;
    static decimal sumOf(bool isNegative, const Groups& a, const Groups& b);
    static decimal differenceOf(bool isNegative, const Groups& larger, const Groups& smaller);

    Groups m_groups{};
    /// Never of zero.
    bool m_isNegative = false;
};

Q_DECLARE_METATYPE(decimal)
