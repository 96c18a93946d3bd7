#include "window/shownquotes.h"

#include <algorithm>

namespace {

using Pricing::VolatilityPoint;

}

ShownQuotes::ShownQuotes(const ShownSeries& series)
    : m_series(series)
    , m_volatility(volatilityAtForward(series))
{
}

bool ShownQuotes::contains(OptionType type, double strike) const
{
    return Pricing::passes(m_series.filter, type, strike, m_series.market, m_volatility);
}

QVector<VolatilityPoint> ShownQuotes::points() const
{
    QVector<VolatilityPoint> points;
    if (m_series.filter.outOfTheMoneyOnly) {
        std::copy_if(m_series.analysis.points.begin(), m_series.analysis.points.end(),
            std::back_inserter(points),
            [this](const VolatilityPoint& point) { return contains(point.type, point.strike); });
        return points;
    }
    for (const OptionQuote& quote : m_series.data.options.quotes) {
        if (!contains(quote.type, quote.strike.toDouble()))
            continue;
        const Pricing::ValuedQuote valued
            = Pricing::valueQuote(quote, m_series.market, m_series.data.priceStep);
        if (valued.point)
            points.append(*valued.point);
    }
    return points;
}

QVector<VolatilityPoint> ShownQuotes::onePerStrike() const
{
    QVector<VolatilityPoint> result;
    const QVector<VolatilityPoint> all = points();
    for (const VolatilityPoint& point : all) {
        if (result.isEmpty() || result.last().strike != point.strike)
            result.append(point);
        else if (point.type == Pricing::outOfTheMoneyType(point.strike, m_series.market.forward))
            result.last() = point;
    }
    return result;
}
