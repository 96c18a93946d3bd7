#include "plot2d/pricebased2dplotpanner.h"

#include "fuzzyequality_p.h"
#include "panlimits_p.h"
#include "pixelvalue_p.h"
#include "plot2d/pricebased2dplot.h"
#include "qtversions_p.h"
#include "scaledivision_p.h"

#include <qwt_interval.h>
#include <qwt_plot_canvas.h>
#include <qwt_scale_div.h>

#include <cmath>

namespace {

constexpr int allAxes[] = {QwtPlot::yLeft, QwtPlot::yRight, QwtPlot::xBottom, QwtPlot::xTop};

PanLimits::Axis axisOf(const PriceBased2dPlot& plot, int axis)
{
    const QwtScaleDiv& division = plot.axisScaleDiv(axis);
    return {plot.canvasMap(axis), division.lowerBound(), division.upperBound(),
        QtVersions::isAxisVisible(plot, axis)};
}

/// Whether a shift moves nothing, by the tolerance of shifts that are not whole pixels.
bool isNoShift(double shift)
{
    return isFuzzyEqual(1.0 + shift, 1.0);
}

/// The range that Qwt's panner gives an axis when the canvas is dragged by an offset.
QwtInterval movedRange(const PriceBased2dPlot& plot, int axis, int dx, int dy)
{
    const PanLimits::Axis current = axisOf(plot, axis);
    const int shift = axis == QwtPlot::xBottom || axis == QwtPlot::xTop ? dx : dy;
    return QwtInterval(PixelValue::at(current.map, current.map.transform(current.lower) - shift),
        PixelValue::at(current.map, current.map.transform(current.upper) - shift));
}

bool isFinite(const QwtInterval& range)
{
    return std::isfinite(range.minValue()) && std::isfinite(range.maxValue())
        && std::isfinite(range.maxValue() - range.minValue());
}

/// A range without width is divisible too: values may be panned even if there is but one.
bool isDivisible(const PriceBased2dPlot& plot, int axis, const QwtInterval& range)
{
    return ScaleDivision::isDivisible(
        {range.minValue(), range.maxValue(), plot.axisMaxMajor(axis), plot.axisMaxMinor(axis), 0.0});
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

bool PriceBased2dPlotPanner::eventFilter(QObject* watched, QEvent* event)
{
    const QPointer<QObject> canvas(watched);
    return QwtPlotPanner::eventFilter(watched, event) || !canvas;
}

void PriceBased2dPlotPanner::announceAndMove(int dx, int dy)
{
    if (!canMove(dx, dy))
        return;
    const QPointer<PriceBased2dPlotPanner> self(this);
    if (m_autoScale)
        Q_EMIT autoScaleEnabled(false);
    if (!self || !m_plot)
        return;
    const QList<int> held = holdAxes(dx, dy);
    QwtPlotPanner::moveCanvas(dx, dy);
    if (!self)
        return;
    for (const int axis : held)
        setAxisEnabled(axis, true);
    Q_EMIT updateLabels();
}

bool PriceBased2dPlotPanner::canMove(int dx, int dy) const
{
    if (dx == 0 && dy == 0)
        return true;
    for (const int axis : allAxes) {
        if (!isAxisEnabled(axis) || !QtVersions::isAxisVisible(*m_plot, axis))
            continue;
        const QwtInterval range = movedRange(*m_plot, axis, dx, dy);
        const bool isOfView = axis == QwtPlot::xBottom || axis == QwtPlot::yLeft;
        if (!isFinite(range) || (isOfView && !isDivisible(*m_plot, axis, range)))
            return false;
    }
    return true;
}

QList<int> PriceBased2dPlotPanner::holdAxes(int dx, int dy)
{
    // Qwt's panner moves the hidden axes too, whatever comes out: on a canvas without height a hidden
    // vertical axis has no pixels to map its values to.
    QList<int> held;
    for (const int axis : allAxes) {
        if (isAxisEnabled(axis) && !isDivisible(*m_plot, axis, movedRange(*m_plot, axis, dx, dy))) {
            setAxisEnabled(axis, false);
            held << axis;
        }
    }
    return held;
}
