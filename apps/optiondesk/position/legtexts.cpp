#include "position/legtexts.h"

#include <QLocale>
#include <QStringList>

#include <cmath>

namespace Position {

namespace {

constexpr double daysPerYear = 365.0;
constexpr double volatilityPoint = 0.01;
constexpr int greekDecimals = 4;

const auto separator = QStringLiteral(" \u00b7 ");

QLocale locale()
{
    QLocale locale;
    locale.setNumberOptions(QLocale::OmitGroupSeparator);
    return locale;
}

}

QString LegTexts::kind(LegKind kind)
{
    switch (kind) {
    case LegKind::Future:
        return tr("Future");
    case LegKind::Call:
        return tr("Call");
    case LegKind::Put:
        break;
    }
    return tr("Put");
}

QString LegTexts::expiry(const QDate& date)
{
    if (!date.isValid())
        return tr("none");
    //: The code of this language, whose names of months dates have
    const QLocale language(tr("en"));
    //: The form of a date, as QLocale::toString() takes it
    return language.toString(date, tr("d MMM yyyy"));
}

QString LegTexts::number(double value, int decimals)
{
    const QLocale userLocale = locale();
    const double factor = std::pow(10.0, decimals);
    // No minus before what is rounded to zero.
    const double rounded = std::round(value * factor) / factor;
    QString text = userLocale.toString(rounded == 0.0 ? 0.0 : rounded, 'f', decimals);
    if (!text.contains(userLocale.decimalPoint()))
        return text;
    while (text.endsWith(userLocale.zeroDigit()))
        text.chop(1);
    if (text.endsWith(userLocale.decimalPoint()))
        text.chop(1);
    return text;
}

QString LegTexts::signedNumber(double value, int decimals)
{
    const QString text = number(value, decimals);
    const bool isPositive = value > 0.0 && text != number(0.0, decimals);
    return isPositive ? locale().positiveSign() + text : text;
}

std::optional<double> LegTexts::number(const QString& text)
{
    bool ok = false;
    double value = QLocale().toDouble(text.trimmed(), &ok);
    // The point of programs and files is understood everywhere.
    if (!ok)
        value = QLocale::c().toDouble(text.trimmed(), &ok);
    return ok && std::isfinite(value) ? std::optional<double>(value) : std::nullopt;
}

QString LegTexts::breakEvens(const QVector<BreakEven>& all, int decimals)
{
    QStringList parts;
    for (const BreakEven& each : all) {
        const QString low = number(each.low, decimals);
        if (each.isPoint())
            parts.append(low);
        else if (std::isinf(each.high))
            parts.append(tr("above %1").arg(low));
        else
            parts.append(tr("%1 to %2").arg(low, number(each.high, decimals)));
    }
    if (parts.size() < 2)
        return parts.join(QString());
    const QString last = parts.takeLast();
    return tr("%1 and %2").arg(parts.join(QStringLiteral(", ")), last);
}

QString LegTexts::summary(const Profile& profile, int decimals)
{
    QStringList parts;
    const std::optional<double> today = profile.today(profile.forward());
    if (today)
        parts.append(tr("Profit now %1").arg(signedNumber(*today, decimals)));
    if (profile.atExpiry(profile.forward())) {
        const QString prices = breakEvens(profile.breakEvens(), decimals);
        parts.append(prices.isEmpty() ? tr("no break-even") : tr("break-even %1").arg(prices));
    }
    if (const std::optional<Pricing::Greeks> greeks = profile.greeks()) {
        parts.append(tr("delta %1").arg(signedNumber(greeks->delta, greekDecimals)));
        parts.append(tr("gamma %1").arg(signedNumber(greeks->gamma, greekDecimals)));
        parts.append(tr("vega %1 a point").arg(signedNumber(greeks->vega * volatilityPoint, greekDecimals)));
        parts.append(tr("theta %1 a day").arg(signedNumber(greeks->theta / daysPerYear, greekDecimals)));
    }
    if (!profile.isEmpty() && !today)
        parts.append(tr("no volatility to value the options with"));
    if (profile.leftOut() == 1)
        parts.append(tr("1 leg left out: its series is not there or has no forward"));
    else if (profile.leftOut() > 1)
        parts.append(tr(
            "%n legs left out: their series are not there or have no forward", nullptr, profile.leftOut()));
    return parts.join(separator);
}

}
