#include "window/deskplot.h"

#include "window/curvechoices.h"
#include "window/curvetracker.h"
#include "window/curvewalk.h"
#include "window/desklegend.h"
#include "window/gridlines.h"
#include "window/hoverpicker.h"
#include "window/percentconversion.h"
#include "window/positioncurves.h"
#include "window/texts.h"
#include "window/viewfit.h"

#include <basic_models/filterparams.h>
#include <chain/chaintables.h>
#include <plot2d/pricebased2dplotcurve.h>
#include <plot2d/pricebased2dplotpointmanager.h>
#include <plot2d/pricebased2dplotscaledraw.h>

#include <QSignalBlocker>

#include <qwt_plot_canvas.h>
#include <qwt_plot_grid.h>
#include <qwt_plot_layout.h>
#include <qwt_plot_marker.h>
#include <qwt_scale_widget.h>
#include <qwt_text.h>

#include <algorithm>
#include <cmath>

namespace {

PriceRange firstPrices(const ShownSeries& series, DeskView view)
{
    return view == DeskView::Position ? PositionCurves::visiblePrices(series) : visiblePrices(series);
}

QString valueTitle(DeskView view)
{
    switch (view) {
    case DeskView::Volatility:
        return DeskPlot::tr("Volatility");
    case DeskView::Value:
        return DeskPlot::tr("Value");
    case DeskView::Position:
        break;
    }
    return DeskPlot::tr("Profit and loss");
}

PriceInterval intervalOf(const ShownSeries& series)
{
    PriceInterval interval;
    const QVector<OptionQuote>& quotes = series.data.options.quotes;
    if (quotes.isEmpty())
        return interval;
    decimal step = decimal::maximum;
    for (int i = 1; i < quotes.size(); ++i) {
        const decimal distance = quotes[i].strike - quotes[i - 1].strike;
        if (distance > decimal::zero && distance < step)
            step = distance;
    }
    const bool oneStrike = quotes.first().strike == quotes.last().strike;
    // A plot shows no quote over an interval without width.
    const decimal margin = oneStrike ? series.data.priceStep : decimal::zero;
    interval.minPrice = (quotes.first().strike - margin).toDouble();
    interval.maxPrice = (quotes.last().strike + margin).toDouble();
    interval.minStep = (oneStrike ? series.data.priceStep : step).toDouble();
    interval.valid = true;
    return interval;
}

void showAsPercent(PriceBased2dPlotConverter& converter, bool percent)
{
    converter.setConvertionObject(percent ? new PercentConversion : nullptr);
    converter.setConversionMethod(&Conversion::forward);
    converter.setConversionEnabled(percent);
    converter.setMetricUnit(percent ? QStringLiteral("%") : QString());
}

}

DeskPlot::DeskPlot(QWidget* parent)
    : PriceBased2dPlot(true, parent)
    , m_legend(new DeskLegend(this))
    , m_points(new PriceBased2dPlotPointManager(true, this))
    , m_curves(*this)
    , m_axis(*this)
    , m_marks(*this)
{
    setUpItems();
    setUpFonts();
    setUpObservers();
}

void DeskPlot::setUpItems()
{
    auto* const grid = new QwtPlotGrid;
    grid->attach(this);
    setGridEnabled(false);

    m_legend->initCore();
    insertLegend(m_legend, QwtPlot::BottomLegend);

    if (auto* const frame = qobject_cast<QwtPlotCanvas*>(canvas()))
        frame->setFrameStyle(QFrame::NoFrame);
    canvas()->setAccessibleName(tr("Plot"));
    canvas()->setAccessibleDescription(
        tr("The curves; F2 goes to the nearest point, the arrows then from point to point"));
    plotLayout()->setAlignCanvasToScales(true);
    for (const int axis : {int(xBottom), int(yLeft)})
        axisWidget(axis)->setSpacing(6);
    setContentsMargins(6, 6, 6, 4);
}

void DeskPlot::setUpFonts()
{
    QFont bold = font();
    bold.setBold(true);
    for (const int axis : {int(xBottom), int(yLeft)}) {
        setAxisFont(axis, font());
        QwtText title;
        title.setFont(bold);
        setAxisTitle(axis, title);
    }
    bold.setPointSizeF(bold.pointSizeF() * 1.2);
    QwtText title(QString(), QwtText::PlainText);
    title.setFont(bold);
    title.setRenderFlags(Qt::AlignHCenter | Qt::TextWordWrap);
    setTitle(title);
}

void DeskPlot::setUpObservers()
{
    auto* const picker = new HoverPicker(canvas());
    m_picker = picker;
    m_picker->initTimer();
    m_tracker = new CurveTracker(this, picker);
    m_walk = new CurveWalk(this, m_picker);
    connect(m_walk, SIGNAL(activeChanged(bool)), picker, SLOT(hidePoint()));
    setCanvasObservers();

    connect(m_legend, SIGNAL(visibilityChanged(QString, bool)), this, SLOT(setCurveVisible(QString, bool)));
    m_choices = new CurveChoices(this, m_legend, &m_curves);
    connect(this, SIGNAL(autoScaleEnabled(bool)), this, SLOT(setAutoScaleEnabled(bool)));
    connect(this, SIGNAL(updateAxisLabels()), this, SLOT(followScales()));
    connect(m_points, SIGNAL(priceIntervalChanged(PriceInterval)), this,
        SLOT(onPriceIntervalChanged(PriceInterval)));
    m_refineTimer.setSingleShot(true);
    connect(&m_refineTimer, SIGNAL(timeout()), this, SLOT(followScales()));
}

QString DeskPlot::priceTitle() const
{
    return m_view == DeskView::Position ? QStringLiteral("Price") : QStringLiteral("Strike");
}

void DeskPlot::setPlotTitle(const QString& text)
{
    QwtText changed = title();
    changed.setText(text, QwtText::PlainText);
    setTitle(changed);
}

void DeskPlot::removeCurves()
{
    m_series.reset();
    m_curves.clear();
    m_marks.hide();
    setCurKotirEnabled(false);
}

void DeskPlot::setInstrument(int futureIsinId, const QString& code)
{
    // The caller evaluates the curves when all is in place.
    const QSignalBlocker blocker(m_points);
    FilterParams filter;
    filter.stockId = chainStockId;
    filter.boardId = chainBoardId;
    filter.futIsinId = futureIsinId;
    m_points->initCore(filter);
    // The strikes' base code comes by the plot, which forgets it with an exact instrument.
    setBaseCode(code);
    m_points->setPlot(this);
    setIsinId(futureIsinId);
    setBoardId(chainBoardId);
    m_ownInterval = !priceInterval().valid;
    fillInterval();
}

void DeskPlot::fillInterval()
{
    if (m_ownInterval && m_series)
        setPriceInterval(intervalOf(*m_series));
}

void DeskPlot::onPriceIntervalChanged(const PriceInterval& interval)
{
    m_ownInterval = !interval.valid;
    fillInterval();
    m_sampledPrices.invalidate();
    // Strikes that come together may be announced one by one.
    m_refineTimer.start(0);
}

QVector<double> DeskPlot::strikesToEvaluate()
{
    m_refineTimer.stop();
    m_sampledPrices = axisScaleDiv(xBottom).interval();
    if (m_view == DeskView::Position)
        return PositionCurves::prices(*m_series, {m_sampledPrices.minValue(), m_sampledPrices.maxValue()});
    return CurveSet::smileStrikes(*m_series,
        {m_points->calcPlotPoints(true), priceInterval().minStep,
            {m_sampledPrices.minValue(), m_sampledPrices.maxValue()}});
}

void DeskPlot::refineCurves()
{
    updateAxes();
    if (m_series && m_sampledPrices != axisScaleDiv(xBottom).interval())
        m_curves.resample(CurveSet::smoothCurves(*m_series, m_view, strikesToEvaluate()));
}

void DeskPlot::setUpAxes(const ShownSeries& series, DeskView view)
{
    const bool volatility = view == DeskView::Volatility;
    m_axis.setName(view == DeskView::Position ? tr("Price") : tr("Strike"));
    m_axis.setReference({series.market.forward, logDeviation(series)});
    m_axis.apply();
    setAxisTitle(yLeft, valueTitle(view));
    auto* const draw = dynamic_cast<PriceBased2dPlotScaleDraw*>(axisScaleDraw(yLeft));
    for (PriceBased2dPlotConverter* const converter :
        {static_cast<PriceBased2dPlotConverter*>(draw), static_cast<PriceBased2dPlotConverter*>(m_picker)}) {
        if (!converter)
            continue;
        showAsPercent(*converter, volatility);
        converter->setPlusSignShown(view == DeskView::Position);
    }
    m_picker->setDecimals(volatility ? 2 : series.data.decimals + 1);
    m_firstPrices = firstPrices(series, view);
    m_axis.makeRoomForLabels(m_firstPrices);
}

void DeskPlot::replot()
{
    m_axis.settleTicks(false);
    GridLines::fit(*this);
    m_marks.placeLabels();
    if (m_walk)
        m_walk->refresh();
    PriceBased2dPlot::replot();
    if (m_walk && !m_walk->isActive())
        m_tracker->refresh();
}

void DeskPlot::setAxisMode(AxisMode mode)
{
    m_axis.setMode(mode);
    if (m_axis.quote() <= 0.0)
        return;
    m_axis.apply();
    m_axis.makeRoomForLabels(m_firstPrices);
    m_axis.settleTicks(true);
    updateAxes();
    updateScaleLabels();
    updateAxisWidgets();
}

void DeskPlot::showForward(const ShownSeries& series)
{
    moveForward(series);
    const QList<PriceBased2dPlotCurve*> lines = attachedCurves(PriceBased2dPlotCurve::quoteLineType);
    for (PriceBased2dPlotCurve* const line : lines)
        line->setVisible(true);
}

// Whether the label on the axis is shown is the line's affair.
void DeskPlot::moveForward(const ShownSeries& series)
{
    const double forward = series.market.forward;
    const bool moved = m_axis.setReference({forward, logDeviation(series)});
    updateCurKotirPoints(0.0, 0.0, forward);
    setCurKotirValue(forward);
    if (moved && m_axis.mode() != AxisMode::Price) {
        m_axis.apply();
        m_axis.settleTicks(true);
        updateAxisWidgets();
    }
    axisWidget(xBottom)->update();
}

void DeskPlot::setCurves(const ShownSeries& series)
{
    if (m_curves.set(CurveSet::curves(series, m_view, strikesToEvaluate()))) {
        m_choices->apply(m_view);
        m_legend->arrange(contentsRect().width());
    }
    m_marks.show(series, m_view);
}

void DeskPlot::showSeries(int futureIsinId, const ShownSeries& series, DeskView view)
{
    removeCurves();
    m_series = series;
    m_view = view;
    setInstrument(futureIsinId, series.data.baseCode);
    m_picker->setPriceStep();
    setPlotTitle(Texts::title(series));

    setUpAxes(series, view);
    showFirstPrices();
    m_curves.set(CurveSet::curves(series, view, strikesToEvaluate()));
    m_marks.show(series, view);
    showForward(series);
    m_choices->apply(view);
    m_legend->arrange(contentsRect().width());
    resetView();
    Q_EMIT seriesReplaced();
}

void DeskPlot::updateSeries(const ShownSeries& series)
{
    if (!m_series)
        return;
    m_series = series;
    fillInterval();
    m_picker->setPriceStep();
    if (title().text() != Texts::title(series))
        setPlotTitle(Texts::title(series));
    m_firstPrices = firstPrices(series, m_view);
    setCurves(series);
    moveForward(series);
    updateYAxisScale();
}

void DeskPlot::followOverlays()
{
    m_legend->restoreUncheckedItems();
    m_legend->arrange(contentsRect().width());
    updateYAxisScale();
}

void DeskPlot::showNothing(const QString& reason)
{
    removeCurves();
    m_legend->arrange(contentsRect().width());
    setPlotTitle(reason);
    replot();
    Q_EMIT seriesReplaced();
}

void DeskPlot::showFirstPrices()
{
    setAxisScale(xBottom, m_firstPrices.low, m_firstPrices.high, 0.0);
    // The vertical range is that of the prices on the axis.
    updateAxes();
}

void DeskPlot::resetView()
{
    showFirstPrices();
    Q_EMIT autoScaleEnabled(true);
    followScales();
}

std::pair<double, double> DeskPlot::minMaxYAtXRange()
{
    const auto [min, max] = PriceBased2dPlot::minMaxYAtXRange();
    return m_view == DeskView::Volatility ? ViewFit::allVolatilities(min, max) : ViewFit::allValues(min, max);
}

void DeskPlot::curveIconReset(const PriceBased2dPlotCurve*) { }

void DeskPlot::followScales()
{
    refineCurves();
    updateYAxisScale();
}

void DeskPlot::mouseMoveEvent(QMouseEvent* event)
{
    PriceBased2dPlot::mouseMoveEvent(event);
    // A drag on an axis is not announced.
    if (m_series && m_sampledPrices != axisScaleDiv(xBottom).interval())
        followScales();
}

void DeskPlot::resizeEvent(QResizeEvent* event)
{
    m_legend->arrange(contentsRect().width());
    PriceBased2dPlot::resizeEvent(event);
    // The room for labels has changed.
    updateScaleLabels();
}
