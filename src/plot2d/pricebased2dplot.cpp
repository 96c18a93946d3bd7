#include "plot2d/pricebased2dplot.h"

#include "futurelookup_p.h"
#include "guardedscaleengine_p.h"
#include "plot2d/pricebased2dplotcurve.h"
#include "plot2d/pricebased2dplotlegend.h"
#include "plot2d/pricebased2dplotpanner.h"
#include "plot2d/pricebased2dplotpicker.h"
#include "plot2d/pricebased2dplotscaledraw.h"
#include "plot2d/pricebased2dplotscaleengine.h"
#include "plotitems_p.h"
#include "plotlook_p.h"
#include "plotmouse_p.h"
#include "quoteline_p.h"
#include "scaledivision_p.h"
#include "valuerange_p.h"

#include <c_api/common.h>
#include <database/database.h>
#include <database/icore.h>
#include <database/table.h>
#include <directory/securitydirectory.h>

#include <QEvent>
#include <QMessageLogger>
#include <QMouseEvent>

#include <qwt_plot_canvas.h>
#include <qwt_plot_grid.h>
#include <qwt_plot_layout.h>
#include <qwt_plot_marker.h>
#include <qwt_scale_widget.h>
#include <qwt_text.h>

#include <algorithm>
#include <cmath>

PriceBased2dPlot::PriceBased2dPlot(bool init, const QwtText& title, QWidget* parent)
    : QwtPlot(title, parent)
    , m_securityDirectory(SecurityDirectory::i())
{
    construct(init);
}

PriceBased2dPlot::PriceBased2dPlot(bool init, QWidget* parent)
    : QwtPlot(parent)
    , m_securityDirectory(SecurityDirectory::i())
{
    construct(init);
}

PriceBased2dPlot::~PriceBased2dPlot() = default;

void PriceBased2dPlot::construct(bool init)
{
    qRegisterMetaType<PriceInterval>("PriceInterval");
    initSecColumns();
    if (init)
        initPlot();
}

void PriceBased2dPlot::initSecColumns()
{
    m_securitiesTable = ICore::instance()->database()->table(QStringLiteral("securities"));
    m_columns = SecurityColumns(m_securitiesTable);

    const QString missing = m_columns.missing();
    if (missing.isEmpty())
        return;
    // The place that operators look for in crash logs, fixed so that it does not move with the source.
    constexpr const char* file = "../../../src/plot2d/pricebased2dplot";
    constexpr int line = 1170;
    QMessageLogger(file, line, nullptr)
        .fatal("ASSERT failure in CHECK_COLUMNS_FUNC!\nUnsetted struct members found! Members position: "
               "%s\nFile %s, Line %d",
            missing.toLatin1().constData(), file, line);
}

void PriceBased2dPlot::initPlot()
{
    m_panner = new PriceBased2dPlotPanner(qobject_cast<QwtPlotCanvas*>(canvas()));
    m_panner->setMouseButton(Qt::LeftButton, Qt::NoModifier);
    setUpAxes();
    connect(m_panner, SIGNAL(updateLabels()), this, SIGNAL(updateAxisLabels()), Qt::UniqueConnection);
    connect(
        m_panner, SIGNAL(autoScaleEnabled(bool)), this, SIGNAL(autoScaleEnabled(bool)), Qt::UniqueConnection);
    setUpLook();
    setAutoReplot(false);
}

void PriceBased2dPlot::setUpAxes()
{
    constexpr unsigned int decimalBase = 10;
    m_scaleEngine = new PriceBased2dPlotScaleEngine(this, xBottom, decimalBase);
    setAxisScaleEngine(xBottom, m_scaleEngine);
    setAxisScaleEngine(yLeft, new GuardedScaleEngine);
    m_xScaleDraw = new PriceBased2dPlotScaleDraw(xBottom);
    m_yScaleDraw = new PriceBased2dPlotScaleDraw(yLeft);
    setAxisScaleDraw(xBottom, m_xScaleDraw);
    setAxisScaleDraw(yLeft, m_yScaleDraw);
    axisWidget(xBottom)->installEventFilter(this);
}

void PriceBased2dPlot::setUpLook()
{
    setCanvasBackground(QBrush(PlotLook::canvasColor));
    const QString styleSheet = PlotLook::backgroundStyleSheet();
    setStyleSheet(styleSheet);
    axisWidget(xBottom)->setStyleSheet(styleSheet);
    axisWidget(yLeft)->setStyleSheet(styleSheet);
}

QSize PriceBased2dPlot::minimumSizeHint() const
{
    return QSize(20, 20);
}

void PriceBased2dPlot::setZoomEnabled(bool enabled)
{
    m_zoomEnabled = enabled;
}

bool PriceBased2dPlot::autoScaleEnabled() const
{
    return m_panner && m_panner->autoScaleEnabled();
}

void PriceBased2dPlot::setAutoScaleEnabled(bool enable)
{
    if (m_panner)
        m_panner->setAutoScaleEnabled(enable);
}

void PriceBased2dPlot::resetAutoScale()
{
    if (autoScaleEnabled())
        Q_EMIT autoScaleEnabled(false);
}

QColor PriceBased2dPlot::getTrackerColor() const
{
    return m_picker ? m_picker->trackerPen().color() : QColor();
}

void PriceBased2dPlot::setTrackerColor(const QColor& color)
{
    if (!m_picker || color == getTrackerColor())
        return;
    const QColor used = color.isValid() ? color : QColor(Qt::black);
    m_picker->setRubberBandPen(PlotLook::solidPen(used, 1.0));
    m_picker->setTrackerPen(QPen(used));
}

void PriceBased2dPlot::setTrackerMode()
{
    if (m_picker)
        m_picker->setTrackerMode(QwtPicker::AlwaysOn);
}

void PriceBased2dPlot::resetTrackerMode()
{
    if (m_picker)
        m_picker->setTrackerMode(QwtPicker::AlwaysOff);
}

void PriceBased2dPlot::setCanvasObservers()
{
    setTrackerMode();
    if (m_picker)
        m_picker->setRubberBand(QwtPicker::CrossRubberBand);
    setTrackerColor(QColor());
    if (m_panner)
        m_panner->setCursor(Qt::ClosedHandCursor);
}

void PriceBased2dPlot::setGridVisible(bool visible)
{
    if (QwtPlotGrid* grid = PlotItems::grid(*this))
        grid->setVisible(visible);
}

void PriceBased2dPlot::setGridEnabled(bool enabled)
{
    if (QwtPlotGrid* grid = PlotItems::grid(*this))
        PlotLook::setMinorGrid(*grid, enabled);
}

void PriceBased2dPlot::updateScaleLabels()
{
    if (m_xScaleDraw)
        m_xScaleDraw->updateLabels();
    if (m_yScaleDraw)
        m_yScaleDraw->updateLabels();
    replot();
}

void PriceBased2dPlot::updateAxisWidgets()
{
    if (!m_xScaleDraw)
        return;
    m_xScaleDraw->updateLabels();
    replot();
    m_xScaleDraw->invalidateCache();
    updateAxes();
    replot();
    axisWidget(xBottom)->update();
}

void PriceBased2dPlot::setCurKotirEnabled(bool enabled)
{
    if (m_xScaleDraw)
        m_xScaleDraw->setCurKotirEnabled(enabled);
}

void PriceBased2dPlot::setCurKotirValue(double quote)
{
    if (m_xScaleDraw)
        m_xScaleDraw->setCurKotirValue(quote);
}

void PriceBased2dPlot::setPriceInterval(const PriceInterval& interval)
{
    m_priceInterval = interval;
}

PriceInterval PriceBased2dPlot::priceInterval() const
{
    return m_priceInterval;
}

double PriceBased2dPlot::priceStep() const
{
    return m_picker ? m_picker->priceStep() : -1.0;
}

bool PriceBased2dPlot::mousePositionOnXScale(const QPointF& position) const
{
    return plotLayout()->scaleRect(xBottom).contains(position);
}

bool PriceBased2dPlot::mousePositionOnYScale(const QPointF& position) const
{
    return plotLayout()->scaleRect(yLeft).contains(position);
}

bool PriceBased2dPlot::mousePositionOnScale(const QPointF& position) const
{
    return mousePositionOnXScale(position) || mousePositionOnYScale(position);
}

void PriceBased2dPlot::setIsinId(int id)
{
    m_instrument.setIsinId(id);
}

void PriceBased2dPlot::setBoardId(int id)
{
    m_instrument.setBoardId(id);
}

void PriceBased2dPlot::setBaseCode(const QString& code)
{
    m_instrument.setBaseCode(code);
}

Record PriceBased2dPlot::getFuture() const
{
    switch (m_instrument.kind()) {
    case InstrumentChoice::Kind::ExactInstrument:
        return getVirtualFuture(m_instrument.isinId(), m_instrument.boardId());
    case InstrumentChoice::Kind::EarliestOfBaseCode:
        return getMinimumDateExerciseFuture();
    case InstrumentChoice::Kind::None:
        break;
    }
    return Record();
}

Record PriceBased2dPlot::getVirtualFuture(int isinId, int boardId) const
{
    if (isinId < 1 || boardId <= 0)
        return Record();
    return m_securityDirectory->recordByIsinId(isinId, boardId);
}

Record PriceBased2dPlot::getMinimumDateExerciseFuture() const
{
    return FutureLookup::earliestFuture(m_securitiesTable, m_columns, m_instrument.baseCode());
}

decimal PriceBased2dPlot::getKotirFromFutureRecord(const Record& future) const
{
    return FutureLookup::quote(future, m_columns, m_priceInterval);
}

std::pair<double, double> PriceBased2dPlot::volatMinMax(const Record& future)
{
    return FutureLookup::volatilityBounds(future, m_securitiesTable, m_columns);
}

Table* PriceBased2dPlot::securitiesTable() const
{
    return m_securitiesTable;
}

void PriceBased2dPlot::setCurveVisible(const QString& curveTitle, bool visible)
{
    if (!qobject_cast<PriceBased2dPlotLegend*>(sender()) || curveTitle.isEmpty())
        return;

    PriceBased2dPlotCurve* curve = PlotItems::validCurve(*this, curveTitle);
    if (!curve)
        return;
    curve->setVisible(visible);
    if (curve->dataType() != PriceBased2dPlotCurve::quoteLineType)
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
    for (int i = 0; i < count; ++i) {
        QwtPlotMarker* marker = PlotLook::createPointMarker(curve->pen());
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
    // A horizontal scale that was set since the last replot is divided only now.
    updateAxes();
    if (!autoScaleEnabled()) {
        updateCurKotirPoints(0.0, 0.0, -1.0);
        replot();
        updateScaleLabels();
        return;
    }

    const auto [min, max] = minMaxYAtXRange();
    if (min > max && !commonFuzzyCompare(min, max)) {
        replot();
        return;
    }
    setAxisScale(yLeft, min, max, 0.0);
    replot();
    updateScaleLabels();
}

std::pair<double, double> PriceBased2dPlot::minMaxYAtXRange()
{
    const QwtScaleDiv& prices = axisScaleDiv(xBottom);
    if (prices.isEmpty() || !prices.interval().isValid())
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

    const bool empty = commonFuzzyCompare(min, max);
    if (axis == yLeft) {
        updateCurKotirPoints(min, max, -1.0);
        if (empty)
            setDivisibleScale(axis, min - 1.0, max + 1.0, step);
        else if (max - min > 1e-8)
            setDivisibleScale(axis, min, max, step);
    } else if (!empty) {
        setDivisibleScale(axis, min, max, step);
    }
}

void PriceBased2dPlot::setDivisibleScale(int axis, double min, double max, double step)
{
    // Far from zero the doubles are more than 1 apart, so that widening does not always widen.
    if (min < max && ScaleDivision::isDivisible({min, max, axisMaxMajor(axis), axisMaxMinor(axis), step}))
        QwtPlot::setAxisScale(axis, min, max, step);
}

double PriceBased2dPlot::roundedXValue(double x) const
{
    return ValueRange::snapped(x, priceStep());
}

QRectF PriceBased2dPlot::curvesRectangle() const
{
    return ValueRange::boundingRectangle(PlotItems::curves(*this));
}

bool PriceBased2dPlot::conversionEnabled(int axis) const
{
    const PriceBased2dPlotScaleDraw* draw = axis == xBottom && m_xScaleDraw ? m_xScaleDraw : m_yScaleDraw;
    return draw && draw->isConversionEnabled();
}

QString PriceBased2dPlot::xAxisConvertedValue(double value) const
{
    return m_xScaleDraw ? m_xScaleDraw->convertedValue(value) : QString();
}

QString PriceBased2dPlot::xAxisMetricUnit() const
{
    return m_xScaleDraw ? m_xScaleDraw->metricUnit() : QString();
}

void PriceBased2dPlot::setRescaleFactor(const decimal& factor)
{
    if (m_scaleEngine)
        m_scaleEngine->setRescaleFactor(factor);
}

bool PriceBased2dPlot::eventFilter(QObject* watched, QEvent* event)
{
    const bool handled = QwtPlot::eventFilter(watched, event);
    if (event->type() == QEvent::Paint && watched == axisWidget(xBottom) && m_xScaleDraw
        && !m_xScaleDraw->isPaintedOnce()) {
        m_xScaleDraw->setPaintedOnce();
        m_xScaleDraw->updateLabels();
    }
    return handled;
}

void PriceBased2dPlot::mousePressEvent(QMouseEvent* event)
{
    const bool begins = event->button() == Qt::LeftButton && mousePositionOnScale(event->localPos());
    m_pressPosition = begins ? event->localPos() : QPointF();
    m_dragPosition = QPointF();
    QWidget::mousePressEvent(event);
}

void PriceBased2dPlot::mouseMoveEvent(QMouseEvent* event)
{
    const PlotMouse::Target target{*this, m_picker, m_yScaleDraw};
    const PlotMouse::Drag drag{m_pressPosition, m_dragPosition, event->localPos()};
    if (m_zoomEnabled && !m_pressPosition.isNull() && PlotMouse::drag(target, drag)) {
        m_dragPosition = event->localPos();
        updateScaleLabels();
        updateAxisWidgets();
    }
    QWidget::mouseMoveEvent(event);
}

void PriceBased2dPlot::wheelEvent(QWheelEvent* event)
{
    if (m_zoomEnabled && PlotMouse::zoom({*this, m_picker, m_yScaleDraw}, *event))
        Q_EMIT updateAxisLabels();
}
