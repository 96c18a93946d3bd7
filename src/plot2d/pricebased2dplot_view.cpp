#include "plot2d/pricebased2dplot.h"

#include "plot2d/pricebased2dplotcurve.h"
#include "plot2d/pricebased2dplotlegend.h"
#include "plot2d/pricebased2dplotpanner.h"
#include "plot2d/pricebased2dplotpicker.h"
#include "plot2d/pricebased2dplotscaledraw.h"
#include "plotitems_p.h"
#include "plotlook_p.h"
#include "plotmouse_p.h"
#include "qtversions_p.h"
#include "quoteline_p.h"
#include "replotpause_p.h"
#include "scalerange_p.h"
#include "valuerange_p.h"

#include <c_api/common.h>

#include <QEvent>

#include <qwt_plot_marker.h>
#include <qwt_scale_widget.h>

#include <algorithm>
#include <cmath>
#include <optional>

// The part of the plot that works on what is attached to it and on its scales: curves, markers and the line
// at the quote, the vertical auto-scale, and the mouse.

void PriceBased2dPlot::setCurveVisible(const QString& curveTitle, bool visible)
{
    if (!qobject_cast<PriceBased2dPlotLegend*>(sender()) || curveTitle.isEmpty())
        return;

    PriceBased2dPlotCurve* curve = PlotItems::validCurve(*this, curveTitle);
    if (!curve)
        return;
    const bool isQuoteLine = curve->dataType() == PriceBased2dPlotCurve::quoteLineType;
    const QPointer<PriceBased2dPlot> self(this);
    curve->setVisible(visible);
    if (!self)
        return;
    if (!isQuoteLine)
        updateYAxisScale();
    else
        replot();
}

QList<PriceBased2dPlotCurve*> PriceBased2dPlot::attachedCurves(int type) const
{
    return type == -1 ? PlotItems::curves(*this) : PlotItems::curvesOfType(*this, type);
}

QList<QwtPlotMarker*> PriceBased2dPlot::createMarkers(int count, PriceBased2dPlotCurve* curve)
{
    QList<QwtPlotMarker*> markers;
    if (!curve)
        return markers;
    const ReplotPause pause(this);
    // Who hears of the first marker may delete the curve.
    const QPen pen = curve->pen();
    for (int i = 0; i < count; ++i) {
        QwtPlotMarker* marker = PlotLook::createPointMarker(pen);
        marker->attach(this);
        markers.append(marker);
    }
    return markers;
}

QList<QwtPlotMarker*> PriceBased2dPlot::attachedMarkers() const
{
    return PlotItems::symbolMarkers(*this);
}

void PriceBased2dPlot::updateCurKotirPoints(double low, double high, double quote)
{
    const QwtInterval scale = axisScaleDiv(yLeft).interval();
    low = std::min(low, scale.minValue());
    high = std::max(high, scale.maxValue());

    // The line is only moved, never made.
    PriceBased2dPlotCurve* line = PlotItems::quoteLine(*this);
    if (!line || line->dataSize() != 2)
        return;
    const std::optional<double> price = quote < 0.0 ? QuoteLine::price(*line) : quote;
    if (!price)
        return;
    if (const auto ends = QuoteLine::ends(low, high, *price))
        line->setSamples(QVector<QPointF>{ends->front(), ends->back()});
}

void PriceBased2dPlot::updateYAxisScale()
{
    const QPointer<PriceBased2dPlot> self(this);
    // A horizontal scale that was set since the last replot is divided only now.
    updateAxes();
    if (autoScaleEnabled()) {
        const auto [min, max] = minMaxYAtXRange();
        if (!self)
            return;
        if (min > max && !commonFuzzyCompare(min, max)) {
            replot();
            return;
        }
        setAxisScale(yLeft, min, max, 0.0);
    } else {
        updateCurKotirPoints(0.0, 0.0, -1.0);
    }
    if (self)
        replot();
    if (self)
        updateScaleLabels();
}

std::pair<double, double> PriceBased2dPlot::minMaxYAtXRange()
{
    const QwtScaleDiv& prices = axisScaleDiv(xBottom);
    if (!ScaleRange::isUsable(prices))
        return ValueRange::none;
    const double x1 = roundedXValue(prices.lowerBound());
    const double x2 = roundedXValue(prices.upperBound());
    if (!ValueRange::isProperRange(x1, x2))
        return ValueRange::none;
    return ValueRange::ofCurves(PlotItems::curves(*this), x1, x2);
}

void PriceBased2dPlot::setAxisScale(int axis, double min, double max, double step)
{
    if ((axis != yLeft && axis != xBottom) || !std::isfinite(min) || !std::isfinite(max) || min > max)
        return;

    const QPointer<PriceBased2dPlot> self(this);
    if (axis == yLeft)
        updateCurKotirPoints(min, max, -1.0);
    if (!self)
        return;
    const std::optional<QwtInterval> range = ScaleRange::shown(axis, min, max);
    if (range && ScaleRange::isDivisible(*this, axis, *range, step))
        QwtPlot::setAxisScale(axis, range->minValue(), range->maxValue(), step);
}

double PriceBased2dPlot::roundedXValue(double x) const
{
    return ValueRange::snapped(x, priceStep());
}

QRectF PriceBased2dPlot::curvesRectangle() const
{
    return ValueRange::boundingRectangle(PlotItems::curves(*this));
}

bool PriceBased2dPlot::eventFilter(QObject* watched, QEvent* event)
{
    const bool handled = QwtPlot::eventFilter(watched, event);
    PriceBased2dPlotScaleDraw* draw = xScaleDraw();
    if (event->type() == QEvent::Paint && watched == axisWidget(xBottom) && draw && !draw->isPaintedOnce()) {
        draw->setPaintedOnce();
        draw->updateLabels();
    }
    return handled;
}

void PriceBased2dPlot::mousePressEvent(QMouseEvent* event)
{
    const bool begins
        = event->button() == Qt::LeftButton && mousePositionOnScale(QtVersions::positionOf(*event));
    m_pressPosition = begins ? QtVersions::positionOf(*event) : QPointF();
    m_dragPosition = QPointF();
    QWidget::mousePressEvent(event);
}

void PriceBased2dPlot::mouseMoveEvent(QMouseEvent* event)
{
    const QPointer<PriceBased2dPlot> self(this);
    const PlotMouse::Target target{*this, m_picker, yScaleDraw()};
    const PlotMouse::Drag drag{m_pressPosition, m_dragPosition, QtVersions::positionOf(*event)};
    if (m_zoomEnabled && !m_pressPosition.isNull() && PlotMouse::drag(target, drag)) {
        if (self) {
            m_dragPosition = QtVersions::positionOf(*event);
            updateScaleLabels();
        }
        if (self)
            updateAxisWidgets();
    }
    if (self)
        QWidget::mouseMoveEvent(event);
}

void PriceBased2dPlot::wheelEvent(QWheelEvent* event)
{
    const QPointer<PriceBased2dPlot> self(this);
    if (m_zoomEnabled && PlotMouse::zoom({*this, m_picker, yScaleDraw()}, *event) && self)
        Q_EMIT updateAxisLabels();
    // An event that nobody accepts goes on to the parent, for which Qt would ask a widget that is no more.
    if (!self)
        event->accept();
}
