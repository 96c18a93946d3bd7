#include "differential/plainnumbers.h"

#include <QLocale>

#include <cmath>

double Plain::roundedHalfUp(double value)
{
    if (value >= 0.0)
        return std::trunc(value + 0.5);
    const double below = std::trunc(value - 1.0);
    return std::trunc(value - below + 0.5) + below;
}

bool Plain::fuzzyEqual(double x, double y)
{
    const double distance = std::fabs(x - y);
    const double smaller = std::fabs(x) < std::fabs(y) ? std::fabs(x) : std::fabs(y);
    return distance * 1e12 <= smaller;
}

bool Plain::looselyEqual(double a, double b)
{
    const double distance = std::fabs(a - b);
    const double smaller = std::fabs(a) < std::fabs(b) ? std::fabs(a) : std::fabs(b);
    return distance * 100000000.0 <= smaller;
}

bool Plain::isNothing(double value)
{
    return std::fabs(value) <= 1e-12;
}

QString Plain::shortText(double value, int decimals)
{
    if (decimals < 0)
        decimals = 0;
    if (decimals > 10)
        decimals = 10;
    QString text = QLocale::system().toString(value, 'f', decimals);
    if (text.contains(QLocale::system().decimalPoint())) {
        while (text.endsWith(QLocale::system().zeroDigit()))
            text.remove(text.size() - 1, 1);
    }
    if (text.endsWith(QLocale::system().decimalPoint()))
        text.remove(text.size() - 1, 1);
    return text;
}

QString Plain::longText(double value, int decimals)
{
    if (decimals < 0)
        return QString();
    QString text = QString::number(value, 'f', decimals > 10 ? 10 : decimals);
    if (text.contains(QLatin1Char('.'))) {
        while (text.endsWith(QLatin1Char('0')))
            text.remove(text.size() - 1, 1);
    }
    if (text.endsWith(QLatin1Char('.'))) {
        text.remove(text.size() - 1, 1);
        if (text == QLatin1String("-0"))
            text = QStringLiteral("0");
    }
    return text;
}

int Plain::integerDigits(double value)
{
    int count = 1;
    while (value >= 10.0 || value <= -10.0) {
        value = value / 10.0;
        count = count + 1;
    }
    return count;
}

double Plain::roundedAt(double value, int decimals)
{
    if (decimals < -10)
        decimals = -10;
    if (decimals > 10)
        decimals = 10;
    const double factor = std::pow(10.0, decimals);
    const double scaled = value * factor;
    if (std::isnan(scaled) || std::isinf(scaled))
        return value;
    const double whole = roundedHalfUp(scaled);
    const bool fits = whole >= -9223372036854775808.0 && whole < 9223372036854775808.0;
    return fits ? static_cast<double>(static_cast<long long>(whole)) / factor : value;
}

double Plain::looseIntegerPart(double value)
{
    const bool fits = value >= -9223372036854775808.0 && value < 9223372036854775808.0;
    if (!fits)
        return value;
    const auto towardsZero = static_cast<double>(static_cast<long long>(value));
    const double fraction = value - towardsZero;
    if (looselyEqual(-1.0, fraction) || looselyEqual(1.0, fraction))
        return roundedHalfUp(value);
    return towardsZero;
}
