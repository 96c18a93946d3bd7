#include "optionfilter.h"

#include <QStringList>

#include <cmath>

namespace Pricing {

namespace {

const auto outOfTheMoney = QStringLiteral("otm");
const auto anyMoneyness = QStringLiteral("all");

QString nameOf(OptionSide side)
{
    switch (side) {
    case OptionSide::Calls:
        return QStringLiteral("calls");
    case OptionSide::Puts:
        return QStringLiteral("puts");
    case OptionSide::CallsAndPuts:
        break;
    }
    return QStringLiteral("both");
}

bool isPositive(double value)
{
    return std::isfinite(value) && value > 0.0;
}

}

std::optional<double> deviationsFromForward(double strike, const Market& market, double volatility)
{
    if (!market.isValid() || !isPositive(strike) || !isPositive(volatility))
        return std::nullopt;
    const double deviations = std::log(strike / market.forward) / (volatility * std::sqrt(market.time));
    return std::isfinite(deviations) ? std::optional<double>(deviations) : std::nullopt;
}

bool passes(const OptionFilter& filter, OptionType type, double strike, const Market& market,
    double volatilityAtForward)
{
    if (filter.side != OptionSide::CallsAndPuts
        && (filter.side == OptionSide::Calls) != (type == OptionType::Call))
        return false;
    if (filter.outOfTheMoneyOnly && type != outOfTheMoneyType(strike, market.forward))
        return false;
    if (filter.deviations <= 0)
        return true;
    const std::optional<double> distance = deviationsFromForward(strike, market, volatilityAtForward);
    return !distance || std::abs(*distance) <= filter.deviations;
}

QString toText(const OptionFilter& filter)
{
    return QStringLiteral("%1 %2 %3")
        .arg(filter.outOfTheMoneyOnly ? outOfTheMoney : anyMoneyness, nameOf(filter.side))
        .arg(filter.deviations);
}

std::optional<OptionFilter> filterFromText(const QString& text)
{
    constexpr int partCount = 3;
    const QStringList parts = text.split(QLatin1Char(' '));
    if (parts.size() != partCount || (parts.at(0) != outOfTheMoney && parts.at(0) != anyMoneyness))
        return std::nullopt;
    OptionFilter filter;
    filter.outOfTheMoneyOnly = parts.at(0) == outOfTheMoney;
    bool isSide = false;
    for (const OptionSide side : {OptionSide::CallsAndPuts, OptionSide::Calls, OptionSide::Puts}) {
        if (parts.at(1) != nameOf(side))
            continue;
        filter.side = side;
        isSide = true;
    }
    bool isNumber = false;
    filter.deviations = parts.at(2).toInt(&isNumber);
    if (!isSide || !isNumber || filter.deviations < 0 || filter.deviations > mostDeviations)
        return std::nullopt;
    return filter;
}

}
