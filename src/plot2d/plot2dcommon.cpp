#include "plot2d/plot2dcommon.h"

#include "halfuprounding_p.h"

#include <QLocale>

#include <algorithm>
#include <cmath>

namespace {

constexpr int maxTextDecimals = 10;
constexpr int maxRoundDecimals = 10;

/// Takes the zeros off the end of a fraction, and then a point without one. Whether there was a fraction.
bool shortenFraction(QString& text, const QString& point, const QString& zero)
{
    if (!text.contains(point))
        return false;
    while (text.endsWith(zero))
        text.chop(zero.size());
    if (text.endsWith(point))
        text.chop(point.size());
    return true;
}

}

QString Plot2dCommon::fromDoubleToSystemStringShort(double value, int decimals)
{
    QString text = QLocale::system().toString(value, 'f', std::clamp(decimals, 0, maxTextDecimals));
    // Characters in Qt 5, texts of one in Qt 6.
    const QString point(QLocale::system().decimalPoint());
    const QString zero(QLocale::system().zeroDigit());
    shortenFraction(text, point, zero);
    return text;
}

QString Plot2dCommon::formattedValue(double value, int decimals)
{
    if (decimals < 0)
        return QString();

    QString text = QString::number(value, 'f', std::min(decimals, maxTextDecimals));
    // Only a text that had a fraction is relieved of a lone sign: "-0" of no decimals stays.
    if (shortenFraction(text, QStringLiteral("."), QStringLiteral("0")) && text == QLatin1String("-0"))
        text = QLatin1Char('0');
    return text;
}

int Plot2dCommon::integerLength(double value)
{
    Q_ASSERT_X(!std::isinf(value), "integerLength", "an infinity has no number of digits");
    if (std::isinf(value))
        return 1;

    int length = 1;
    while (value >= 10.0 || value <= -10.0) {
        value /= 10.0;
        ++length;
    }
    return length;
}

double Plot2dCommon::roundValue(double value, int decimals)
{
    const double factor = std::pow(10.0, std::clamp(decimals, -maxRoundDecimals, maxRoundDecimals));
    const auto rounded = HalfUpRounding::toInteger<qint64>(value * factor);
    return rounded ? static_cast<double>(*rounded) / factor : value;
}

bool Plot2dCommon::scaleDrawFuzzyCompare(double a, double b)
{
    return std::abs(a - b) * 100000000.0 <= std::min(std::abs(a), std::abs(b));
}
