#include "plot2d/pricebased2dplot.h"

#include "futurelookup_p.h"
#include "guardedscaleengine_p.h"
#include "opaqueaxis_p.h"
#include "plot2d/pricebased2dplotpanner.h"
#include "plot2d/pricebased2dplotpicker.h"
#include "plot2d/pricebased2dplotscaledraw.h"
#include "plot2d/pricebased2dplotscaleengine.h"
#include "plotcanvas_p.h"
#include "plotitems_p.h"
#include "plotlook_p.h"

#include <database/database.h>
#include <database/icore.h>
#include <database/table.h>
#include <directory/securitydirectory.h>

#include <QMessageLogger>

#include <qwt_plot_canvas.h>
#include <qwt_plot_grid.h>
#include <qwt_plot_layout.h>
#include <qwt_scale_widget.h>
#include <qwt_text.h>

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
    setCanvas(new PlotCanvas(this));
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
    setAxisScaleEngine(xBottom, new PriceBased2dPlotScaleEngine(this, xBottom, decimalBase));
    setAxisScaleEngine(yLeft, new GuardedScaleEngine);
    setAxisScaleDraw(xBottom, new PriceBased2dPlotScaleDraw(xBottom));
    setAxisScaleDraw(yLeft, new PriceBased2dPlotScaleDraw(yLeft));
    axisWidget(xBottom)->installEventFilter(this);
}

// The axes own these objects, and a host may have replaced them by its own of whatever class.
PriceBased2dPlotScaleDraw* PriceBased2dPlot::xScaleDraw() const
{
    return dynamic_cast<PriceBased2dPlotScaleDraw*>(const_cast<QwtScaleDraw*>(axisScaleDraw(xBottom)));
}

PriceBased2dPlotScaleDraw* PriceBased2dPlot::yScaleDraw() const
{
    return dynamic_cast<PriceBased2dPlotScaleDraw*>(const_cast<QwtScaleDraw*>(axisScaleDraw(yLeft)));
}

PriceBased2dPlotScaleEngine* PriceBased2dPlot::scaleEngine() const
{
    return dynamic_cast<PriceBased2dPlotScaleEngine*>(const_cast<QwtScaleEngine*>(axisScaleEngine(xBottom)));
}

void PriceBased2dPlot::setUpLook()
{
    setCanvasBackground(QBrush(PlotLook::canvasColor));
    const QString styleSheet = PlotLook::backgroundStyleSheet();
    setStyleSheet(styleSheet);
    for (const int axis : {int(xBottom), int(yLeft)}) {
        new OpaqueAxis(axisWidget(axis));
        axisWidget(axis)->setStyleSheet(styleSheet);
    }
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
    // Qwt does not free the cursor that another one replaces.
    if (m_panner && !(m_hasPannerCursor && m_panner->cursor().shape() == Qt::ClosedHandCursor))
        m_panner->setCursor(Qt::ClosedHandCursor);
    m_hasPannerCursor = m_panner != nullptr;
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
    // A turned wheel and a dragged axis leave scales that wait for their replot: labels chosen before it
    // would be of those that were.
    updateAxes();
    for (PriceBased2dPlotScaleDraw* draw : {xScaleDraw(), yScaleDraw()}) {
        if (draw)
            draw->updateLabels();
    }
    replot();
}

void PriceBased2dPlot::updateAxisWidgets()
{
    const QPointer<PriceBased2dPlot> self(this);
    if (PriceBased2dPlotScaleDraw* draw = xScaleDraw())
        draw->updateLabels();
    replot();
    if (!self)
        return;
    if (PriceBased2dPlotScaleDraw* draw = xScaleDraw())
        draw->invalidateCache();
    updateAxes();
    replot();
    if (self)
        axisWidget(xBottom)->update();
}

void PriceBased2dPlot::setCurKotirEnabled(bool enabled)
{
    if (PriceBased2dPlotScaleDraw* draw = xScaleDraw())
        draw->setCurKotirEnabled(enabled);
}

void PriceBased2dPlot::setCurKotirValue(double quote)
{
    if (PriceBased2dPlotScaleDraw* draw = xScaleDraw())
        draw->setCurKotirValue(quote);
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

bool PriceBased2dPlot::conversionEnabled(int axis) const
{
    const PriceBased2dPlotScaleDraw* draw = axis == xBottom && xScaleDraw() ? xScaleDraw() : yScaleDraw();
    return draw && draw->isConversionEnabled();
}

QString PriceBased2dPlot::xAxisConvertedValue(double value) const
{
    return xScaleDraw() ? xScaleDraw()->convertedValue(value) : QString();
}

QString PriceBased2dPlot::xAxisMetricUnit() const
{
    return xScaleDraw() ? xScaleDraw()->metricUnit() : QString();
}

void PriceBased2dPlot::setRescaleFactor(const decimal& factor)
{
    if (scaleEngine())
        scaleEngine()->setRescaleFactor(factor);
}
