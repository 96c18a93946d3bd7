#include "plot2d/pricebased2dplotcurve.h"

#include "markerplacement_p.h"
#include "plot2d/pricebased2dplot.h"
#include "replotpause_p.h"
#include "sampleindex_p.h"

#include <QDataStream>

#include <qwt_plot_marker.h>
#include <qwt_symbol.h>
#include <qwt_text.h>

#include <algorithm>
#include <type_traits>

const QColor PriceBased2dPlotCurve::CurKotirCurveColor(Qt::red);

PriceBased2dPlotCurve::PriceBased2dPlotCurve(PriceBased2dPlot* plot, const QString& title)
    : QwtPlotCurve(title)
    , m_plot(plot)
{
}

PriceBased2dPlotCurve::PriceBased2dPlotCurve(PriceBased2dPlot* plot, const QwtText& title)
    : QwtPlotCurve(title)
    , m_plot(plot)
{
}

PriceBased2dPlotCurve::~PriceBased2dPlotCurve() = default;

bool PriceBased2dPlotCurve::isValidType(int type) const
{
    return type == quoteLineType || (type >= 9 && type <= markedType);
}

void PriceBased2dPlotCurve::setDataType(int type)
{
    if (type == -1 || isValidType(type))
        m_dataType = type;
}

bool PriceBased2dPlotCurve::isValid() const
{
    if (rtti() != QwtPlotItem::Rtti_PlotCurve || dataSize() == 0 || title().text().isEmpty())
        return false;

    const QRectF rectangle = boundingRect();
    if (rectangle.width() < 0.0 || rectangle.height() < 0.0)
        return false;

    const CurveStyle curveStyle = style();
    if (curveStyle != Lines && curveStyle != Sticks && curveStyle != Steps && curveStyle != Dots)
        return false;

    const bool lineInLegend = testLegendAttribute(LegendShowLine);
    if (!lineInLegend && !testLegendAttribute(LegendShowSymbol))
        return false;
    if (lineInLegend && (pen().style() == Qt::NoPen || !pen().color().isValid()))
        return false;

    if (!isValidType(m_dataType))
        return false;
    if (m_dataType != quoteLineType)
        return true;
    return pen().color() == CurKotirCurveColor && curveStyle == Sticks && dataSize() == 2;
}

void PriceBased2dPlotCurve::setVisible(bool on)
{
    // A host whose replot() deletes the curve must find nothing done with it afterwards.
    const std::weak_ptr<const bool> life = m_life;
    if (m_plot && m_dataType == quoteLineType) {
        if (on && !showQuote())
            return;
        if (!on)
            m_plot->setCurKotirEnabled(false);
        m_plot->updateAxisWidgets();
    } else if (m_plot && m_dataType == markedType) {
        // A marker that changes calls the host where Qwt replots by itself.
        const bool callsHost = m_plot->autoReplot();
        const QList<QwtPlotMarker*> markers = m_plot->attachedMarkers();
        for (QwtPlotMarker* marker : markers) {
            if (!callsHost || (!life.expired() && m_plot && m_plot->attachedMarkers().contains(marker)))
                marker->setVisible(on);
        }
    }
    if (!life.expired())
        QwtPlotItem::setVisible(on);
}

bool PriceBased2dPlotCurve::showQuote()
{
    const Record future = m_plot->getFuture();
    if (future.isNull())
        return false;
    const decimal quote = m_plot->getKotirFromFutureRecord(future);
    if (quote < decimal::zero)
        return false;
    m_plot->setCurKotirValue(quote.toDouble());
    m_plot->setCurKotirEnabled(true);
    return true;
}

void PriceBased2dPlotCurve::setMarkerSamples(const QVector<PriceBased2dPlotPoint>& points)
{
    if (m_dataType != markedType || !m_plot)
        return;

    const auto needed = static_cast<int>(std::count_if(
        points.cbegin(), points.cend(), [](const PriceBased2dPlotPoint& point) { return point.marked; }));
    // Who hears that markers come and go may delete the curve, and other markers.
    const std::weak_ptr<const bool> life = m_life;
    const ReplotPause pause(m_plot);
    QList<QwtPlotMarker*> markers = m_plot->attachedMarkers();
    dropSurplusMarkers(*m_plot, markers, needed);
    if (life.expired())
        return;
    markers += m_plot->createMarkers(needed - static_cast<int>(markers.size()), this);
    if (life.expired())
        return;
    keepAttached(*m_plot, markers);
    if (const auto samples = placeMarkers(points, markers, isVisible()))
        setSamples(*samples);
}

QColor PriceBased2dPlotCurve::getColor() const
{
    if (style() == Dots && symbol())
        return symbol()->pen().color();
    if (style() == Lines)
        return pen().color();
    return QColor();
}

void PriceBased2dPlotCurve::write(QDataStream& stream) const
{
    stream << isValid() << isVisible() << static_cast<qint32>(m_dataType);
}

void PriceBased2dPlotCurve::read(QDataStream& stream, CurveParams& params)
{
    static_assert(std::is_same_v<decltype(params.dataType), qint32>);
    stream >> params.isValid >> params.isVisible >> params.dataType;
    if (stream.status() != QDataStream::Ok)
        params = CurveParams();
}
