#include "plot2d/pricebased2dplotpanner.h"

#include "fuzzyequality_p.h"
#include "panlimits_p.h"
#include "plot2d/pricebased2dplot.h"
#include "scaledivision_p.h"

#include <qwt_plot_canvas.h>
#include <qwt_scale_div.h>

#include <cmath>

namespace {

PanLimits::Axis axisOf(const PriceBased2dPlot& plot, int axis)
{
    const QwtScaleDiv& division = plot.axisScaleDiv(axis);
    return {plot.canvasMap(axis), division.lowerBound(), division.upperBound(), plot.axisEnabled(axis)};
}

/// Whether a shift moves nothing, by the tolerance of shifts that are not whole pixels.
bool isNoShift(double shift)
{
    return isFuzzyEqual(1.0 + shift, 1.0);
}

}

PriceBased2dPlotPanner::PriceBased2dPlotPanner(QwtPlotCanvas* canvas)
    : QwtPlotPanner(canvas)
    , m_plot(qobject_cast<PriceBased2dPlot*>(plot()))
{
}

PriceBased2dPlotPanner::~PriceBased2dPlotPanner() = default;

void PriceBased2dPlotPanner::setAutoScaleEnabled(bool enabled)
{
    m_autoScale = enabled;
}

bool PriceBased2dPlotPanner::autoScaleEnabled() const
{
    return m_autoScale;
}

double PriceBased2dPlotPanner::getShiftUntilValue(double value, int axis, int side, double maxShift)
{
    if (!m_plot || axis < 0 || axis >= QwtPlot::axisCnt)
        return PanLimits::noShift;
    return PanLimits::shiftUntil(axisOf(*m_plot, axis), value, side, maxShift);
}

void PriceBased2dPlotPanner::moveCanvas(int dx, int dy)
{
    if (!m_plot)
        return;
    const PanLimits::Axis x = axisOf(*m_plot, QwtPlot::xBottom);
    const PanLimits::Axis y = axisOf(*m_plot, QwtPlot::yLeft);
    const auto view = PanLimits::draggedView(x, y, dx, dy);
    if (!view)
        return;
    const auto limits = PanLimits::limits(m_plot->curvesRectangle(), *view);
    if (!limits || !PanLimits::overlapInPrice(*view, *limits))
        return;
    if (PanLimits::isInside(*view, *limits)) {
        announceAndMove(dx, dy);
        return;
    }

    const double shiftX = PanLimits::limitedShiftX(x, *view, *limits, dx);
    const double shiftY = PanLimits::limitedShiftY(y, *view, *limits, dy);
    if (isNoShift(shiftY) && isNoShift(shiftX))
        return;
    // Halves away from zero: qRound() would not round negative halves so.
    announceAndMove(static_cast<int>(std::round(shiftX)), static_cast<int>(std::round(shiftY)));
}

void PriceBased2dPlotPanner::announceAndMove(int dx, int dy)
{
    if (!canMove(dx, dy))
        return;
    const QPointer<PriceBased2dPlotPanner> self(this);
    if (m_autoScale)
        Q_EMIT autoScaleEnabled(false);
    if (!self)
        return;
    QwtPlotPanner::moveCanvas(dx, dy);
    Q_EMIT updateLabels();
}

bool PriceBased2dPlotPanner::canMove(int dx, int dy) const
{
    // Qwt's panner moves all four axes, the hidden ones too, whatever comes out.
    for (int axis = 0; axis < QwtPlot::axisCnt; ++axis) {
        const PanLimits::Axis current = axisOf(*m_plot, axis);
        const int shift = axis == QwtPlot::xBottom || axis == QwtPlot::xTop ? dx : dy;
        const double lower = current.map.invTransform(current.map.transform(current.lower) - shift);
        const double upper = current.map.invTransform(current.map.transform(current.upper) - shift);
        if (!ScaleDivision::isDivisible(
                {lower, upper, m_plot->axisMaxMajor(axis), m_plot->axisMaxMinor(axis), 0.0}))
            return false;
    }
    return true;
}
