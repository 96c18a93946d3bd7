#include "plot2d/pricebased2dplotpicker.h"

#include "closestpoint_p.h"
#include "fieldreading_p.h"
#include "pixelvalue_p.h"
#include "plot2d/pricebased2dplot.h"
#include "plot2d/pricebased2dplotcurve.h"
#include "plot2d/pricebased2dplotlegend.h"
#include "plotitems_p.h"
#include "valuerange_p.h"

#include <QApplication>
#include <QTimer>

#include <qwt_scale_div.h>
#include <qwt_scale_map.h>

#include <limits>

PriceBased2dPlotPicker::PriceBased2dPlotPicker(QWidget* canvas)
    : QwtPlotPicker(canvas)
{
}

PriceBased2dPlotPicker::~PriceBased2dPlotPicker() = default;

void PriceBased2dPlotPicker::initTimer()
{
    constexpr int refreshMilliseconds = 1000;
    m_timer = new QTimer(this);
    m_timer->setInterval(refreshMilliseconds);
    setPriceStep();
    connect(m_timer, SIGNAL(timeout()), this, SLOT(setPriceStep()));
    m_timer->start();
}

void PriceBased2dPlotPicker::setPriceStep()
{
    m_priceStep = -1.0;
    const auto* owner = qobject_cast<const PriceBased2dPlot*>(plot());
    if (!owner)
        return;
    const Record future = owner->getFuture();
    if (future.isNull())
        return;
    const int column = owner->securityColumns()[SecurityColumn::PriceStep];
    m_priceStep = FieldReading::toDouble(FieldReading::fieldOf(future, column));
}

QPointF PriceBased2dPlotPicker::transformedPoint(const QPointF& canvasPosition) const
{
    if (!plot())
        return QPointF();
    return QPointF(PixelValue::at(plot()->canvasMap(xAxis()), canvasPosition.x()),
        PixelValue::at(plot()->canvasMap(yAxis()), canvasPosition.y()));
}

QList<PriceBased2dPlotCurve*> PriceBased2dPlotPicker::usedCurves() const
{
    QList<PriceBased2dPlotCurve*> used;
    const auto* owner = qobject_cast<const PriceBased2dPlot*>(plot());
    const auto* legend = owner ? qobject_cast<const PriceBased2dPlotLegend*>(owner->legend()) : nullptr;
    if (!legend)
        return used;

    const QList<PriceBased2dPlotCurve*> curves = PlotItems::curves(*owner);
    for (PriceBased2dPlotCurve* curve : curves) {
        bool found = false;
        if (curve->isValid() && legend->isCheckBoxChecked(curve->title().text(), &found) && found)
            used.append(curve);
    }
    return used;
}

ClosestPointParams PriceBased2dPlotPicker::getClosestCurveParams(
    const QList<PriceBased2dPlotCurve*>& curves) const
{
    ClosestPointParams nearest;
    if (!plot())
        return nearest;
    const QwtInterval prices = plot()->axisScaleDiv(QwtPlot::xBottom).interval();
    const QwtInterval values = plot()->axisScaleDiv(QwtPlot::yLeft).interval();
    const double price = ValueRange::snapped(m_position.x(), m_priceStep);
    const ClosestPointCalcParams params{prices.minValue(), prices.maxValue(), values.minValue(),
        values.maxValue(), price - prices.minValue(), m_position.y() - values.minValue()};

    double best = std::numeric_limits<double>::max();
    for (const PriceBased2dPlotCurve* curve : curves) {
        if (!curve || !curve->isValid() || !curve->isVisible()
            || curve->dataType() == PriceBased2dPlotCurve::quoteLineType)
            continue;
        const ClosestPointParams found = getClosestPointParams(curve, params);
        if (found.distance >= 0.0 && found.distance < best) {
            best = found.distance;
            nearest.curve = curve;
            nearest.index = found.index;
        }
    }
    return nearest;
}

ClosestPointParams PriceBased2dPlotPicker::getClosestPointParams(
    const PriceBased2dPlotCurve* curve, const ClosestPointCalcParams& params) const
{
    if (!curve || !ClosestPoint::isUsableStep(m_priceStep) || !ClosestPoint::isUsableView(params))
        return ClosestPointParams();
    if (const SampleIndex* index = curve->sampleIndex())
        return ClosestPoint::find(*index, params);
    return ClosestPoint::find(
        static_cast<int>(curve->dataSize()), [curve](int i) { return curve->sample(i); }, params);
}

QwtText PriceBased2dPlotPicker::renderedText(const QString& text) const
{
    if (text.isEmpty())
        return QwtText();

    constexpr double enlargement = 1.2;
    QFont font = plot() ? plot()->font() : QFont();
    const int pointSize = qRound(enlargement * QApplication::font().pointSize());
    // A font whose size is in pixels has no point size.
    if (pointSize > 0)
        font.setPointSize(pointSize);

    QwtText rendered(text);
    rendered.setFont(font);
    rendered.setRenderFlags((rendered.renderFlags() & ~Qt::AlignHCenter) | Qt::AlignLeft);
    return rendered;
}

QwtText PriceBased2dPlotPicker::trackerText(const QPoint&) const
{
    return m_trackerText;
}
