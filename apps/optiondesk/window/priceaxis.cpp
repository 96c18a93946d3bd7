#include "window/priceaxis.h"

#include <plot2d/pricebased2dplot.h>
#include <plot2d/pricebased2dplotscaledraw.h>

#include <QFontMetrics>

#include <qwt_scale_widget.h>

#include <algorithm>
#include <cmath>

namespace {

constexpr int xBottom = QwtPlot::xBottom;

}

PriceAxis::PriceAxis(PriceBased2dPlot& plot)
    : m_plot(plot)
{
}

void PriceAxis::setName(const QString& prices)
{
    m_name = prices;
}

void PriceAxis::setMode(AxisMode mode)
{
    m_mode = mode;
}

bool PriceAxis::setReference(const AxisReference& reference)
{
    const bool isOther = reference != m_reference;
    m_reference = reference;
    return isOther;
}

void PriceAxis::apply()
{
    m_plot.setAxisTitle(xBottom, AxisModes::axisTitle(AxisModes::shown(m_mode, m_reference), m_name));
    if (auto* const draw = dynamic_cast<PriceBased2dPlotScaleDraw*>(m_plot.axisScaleDraw(xBottom)))
        AxisModes::apply(m_mode, m_reference, *draw);
    constexpr short hostDecimals = 5;
    const bool relative = m_plot.conversionEnabled(xBottom);
    m_plot.setRescaleFactor(relative ? decimal::fromDouble(m_reference.quote, hostDecimals) : decimal::zero);
}

// Whatever set the scale left the step to the axis, which knows prices alone. From another quote the same
// step leads to other ticks.
void PriceAxis::settleTicks(bool labelsChanged)
{
    if (m_reference.quote <= 0.0 || (m_mode == AxisMode::Price && !labelsChanged))
        return;
    m_plot.updateAxes();
    const QwtScaleDiv& current = m_plot.axisScaleDiv(xBottom);
    const QwtInterval prices = current.interval();
    const bool isAnchored = m_mode != AxisMode::Deviations && prices.contains(m_reference.quote);
    if (!isAnchored) {
        const auto division = AxisModes::roundDivision(
            m_mode, m_reference, prices, {m_plot.axisMaxMajor(xBottom), m_plot.axisMaxMinor(xBottom)});
        if (division) {
            if (*division != current)
                m_plot.setAxisScaleDiv(xBottom, *division);
            return;
        }
    }
    const double step
        = AxisModes::roundStep(m_mode, m_reference.quote, prices.width(), m_plot.axisMaxMajor(xBottom));
    if (labelsChanged || step != m_plot.axisStepSize(xBottom))
        m_plot.setAxisScale(xBottom, prices.minValue(), prices.maxValue(), step);
}

// Qwt makes room for the outermost labels of major ticks alone.
void PriceAxis::makeRoomForLabels(const PriceRange& prices)
{
    const QFontMetrics metrics(m_plot.axisFont(xBottom));
    int widest = metrics.horizontalAdvance(m_plot.xAxisConvertedValue(m_reference.quote));
    for (const double price : {prices.low, prices.high}) {
        // A tick is a round number of prices, or of the unit, which has one digit behind the point then.
        const QString label = m_mode == AxisMode::Deviations ? QStringLiteral("+0.5\u03c3")
                                                             : m_plot.xAxisConvertedValue(std::round(price));
        widest = std::max(widest, metrics.horizontalAdvance(label));
    }
    m_plot.axisWidget(xBottom)->setMinBorderDist(widest / 2 + 2, widest / 2 + 2);
    m_plot.axisWidget(QwtPlot::yLeft)->setMinBorderDist(metrics.height() / 2, metrics.height() / 2);
}
