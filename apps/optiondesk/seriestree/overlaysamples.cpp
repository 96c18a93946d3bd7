#include "seriestree/overlaysamples.h"

#include <algorithm>

QVector<QPointF> OverlaySamples::of(const ShownSeries& series, DeskView view)
{
    constexpr int steps = 800;
    // A profit is that of the whole position.
    if (!series.smile || view == DeskView::Position)
        return {};
    const PriceRange visible = visiblePrices(series);
    const double low = std::max(visible.low, series.smile->minStrike());
    const double high = std::min(visible.high, series.smile->maxStrike());
    QVector<double> strikes;
    for (int i = 0; i <= steps && low < high; ++i)
        strikes.append(i < steps ? low + (high - low) * i / steps : high);
    if (view == DeskView::Volatility)
        return Pricing::volatilityCurve(*series.smile, strikes);
    return Pricing::theoreticalCurve(
        *series.smile, series.market, Pricing::ValueSide::OutOfTheMoney, strikes);
}
