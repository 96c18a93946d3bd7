#include "monkey/stepexecutor.h"

#include "support/testhost.h"

#include <basic_views/conversion.h>
#include <plot2d/pricebased2dplotscaledraw.h>

#include <QCheckBox>
#include <QCoreApplication>
#include <QCursor>
#include <QMouseEvent>

#include <qwt_plot_canvas.h>
#include <qwt_plot_layout.h>
#include <qwt_symbol.h>

#include <cmath>
#include <limits>

// The part of the driver that does what the host does.

namespace Monkey {

namespace {

QString titleOf(int number)
{
    static const char* const titles[]
        = {"Smile", "Theory", "Bid", "Ask", "Quote", "Smile", "", "<b>Last</b> & more",
            "A title that is a good deal longer than any plot is wide, as hosts give them", "Trades"};
    constexpr int count = sizeof titles / sizeof *titles;
    return QString::fromLatin1(titles[number % count]);
}

class LinearConversion : public Conversion {
public:
    LinearConversion(double factor, double shift)
        : m_factor(factor)
        , m_shift(shift)
    {
    }
    double forward(double value) const override { return value * m_factor + m_shift; }
    double backward(double value) const override { return (value - m_shift) / m_factor; }

private:
    double m_factor;
    double m_shift;
};

/// Null for 0.
Conversion* conversionOf(int number)
{
    switch (number) {
    case 0:
        return nullptr;
    case 1:
        return new LinearConversion(1.0, -100.0);
    case 2:
        return new LinearConversion(100.0, 0.0);
    case 3:
        return new LinearConversion(0.0, 0.0);
    case 4:
        return new LinearConversion(std::numeric_limits<double>::quiet_NaN(), 0.0);
    default:
        return new LinearConversion(1e300, 0.0);
    }
}

QVector<PriceBased2dPlotPoint> marked(const QVector<QPointF>& samples, int markEvery)
{
    QVector<PriceBased2dPlotPoint> points;
    for (int i = 0; i < samples.size(); ++i)
        points.append({samples[i].x(), samples[i].y(), markEvery > 0 && i % markEvery == 0});
    return points;
}

void changeLook(PriceBased2dPlotCurve& curve, int look)
{
    static const QwtPlotCurve::CurveStyle styles[] = {QwtPlotCurve::Lines, QwtPlotCurve::Sticks,
        QwtPlotCurve::Steps, QwtPlotCurve::Dots, QwtPlotCurve::NoCurve};
    switch (look) {
    case 5:
        return curve.setSymbol(new QwtSymbol(QwtSymbol::UTriangle));
    case 6:
        return curve.setSymbol(new QwtSymbol(QwtSymbol::DTriangle));
    case 7:
        return curve.setSymbol(nullptr);
    case 8:
        return curve.setPen(QPen(Qt::NoPen));
    case 9:
        return curve.setPen(QPen(Qt::blue, 2.0, Qt::DashLine));
    default:
        return curve.setStyle(styles[look]);
    }
}

}

void StepExecutor::perform(const AddCurve& step)
{
    constexpr int most = 12;
    if (m_host.curves().entries().size() >= most)
        m_host.curves().remove(0);
    m_host.curves().add(m_plot, step.type, titleOf(step.title), step.samples);
}

void StepExecutor::perform(const SetSamples& step)
{
    if (CurveShelf::Entry* entry = m_host.curves().at(step.curve)) {
        entry->given = step.samples;
        entry->curve->setSamples(step.samples);
    }
}

void StepExecutor::perform(const SetMarkerSamples& step)
{
    CurveShelf::Entry* entry = m_host.curves().at(step.curve);
    if (!entry || entry->curve->dataType() != PriceBased2dPlotCurve::markedType)
        return;
    entry->given = step.samples;
    entry->curve->setMarkerSamples(marked(step.samples, step.markEvery));
}

void StepExecutor::perform(const Retitle& step)
{
    if (CurveShelf::Entry* entry = m_host.curves().at(step.curve))
        entry->curve->setTitle(titleOf(step.title));
}

void StepExecutor::perform(const ShowCurve& step)
{
    if (CurveShelf::Entry* entry = m_host.curves().at(step.curve))
        entry->curve->setVisible(step.on);
}

void StepExecutor::perform(const ChangeLook& step)
{
    if (CurveShelf::Entry* entry = m_host.curves().at(step.curve))
        changeLook(*entry->curve, step.look);
}

void StepExecutor::perform(const AttachCurve& step)
{
    if (CurveShelf::Entry* entry = m_host.curves().at(step.curve))
        entry->curve->attach(step.on ? &m_plot : nullptr);
}

void StepExecutor::perform(const DeleteCurve& step)
{
    m_host.curves().remove(step.curve);
}

void StepExecutor::perform(const ToggleEntry& step)
{
    if (!m_host.legend())
        return;
    const QList<QCheckBox*> boxes = m_host.legend()->findChildren<QCheckBox*>();
    if (boxes.isEmpty())
        return;
    QCheckBox* box = boxes[step.entry % boxes.size()];
    if (step.how == ToggleEntry::ClickBox)
        return box->click();
    if (step.how == ToggleEntry::ClickLabel) {
        QMouseEvent event(QEvent::MouseButtonPress, QPointF(1.0, 1.0), QPointF(1.0, 1.0), QCursor::pos(),
            Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(box->parentWidget(), &event);
        return;
    }
    m_host.legend()->setCheckBoxChecked(titleOf(step.entry), !box->isChecked());
}

void StepExecutor::perform(const StoreLegend&)
{
    if (m_host.legend())
        m_host.legend()->store(m_settings);
}

void StepExecutor::perform(const RestoreLegend& step)
{
    if (!m_host.legend())
        return;
    const QString key = QStringLiteral("legendItemKeys");
    QByteArray bytes = m_settings.value(key).toByteArray();
    if (step.damage > 0) {
        bytes.chop(step.damage);
        m_settings.setValue(key, bytes);
    }
    m_host.legend()->restore(m_settings);
}

void StepExecutor::perform(const RestoreUnchecked& step)
{
    if (!m_host.legend())
        return;
    m_host.legend()->setUncheckedItems(step.texts);
    m_host.legend()->restoreUncheckedItems();
}

void StepExecutor::perform(const ReplaceLegend& step)
{
    m_host.createLegend(step.position);
}

void StepExecutor::perform(const SetScale& step)
{
    m_plot.setAxisScale(step.axis, step.lower, step.upper, step.step);
    m_plot.replot();
}

void StepExecutor::perform(const LetQwtScale& step)
{
    m_plot.setAxisAutoScale(step.axis);
    m_plot.replot();
}

void StepExecutor::perform(const Switch& step)
{
    switch (step.what) {
    case Switch::AutoScale:
        return m_host.setAutoScale(step.on);
    case Switch::Zoom:
        return m_plot.setZoomEnabled(step.on);
    case Switch::QuoteLabel:
        m_plot.setCurKotirEnabled(step.on);
        return m_plot.updateAxisWidgets();
    case Switch::Grid:
        m_plot.setGridVisible(step.on);
        return m_plot.setGridEnabled(step.on);
    default:
        step.on ? m_plot.setTrackerMode() : m_plot.resetTrackerMode();
    }
}

void StepExecutor::perform(const SetInterval& step)
{
    m_plot.setPriceInterval({step.low, step.high, step.step, step.valid});
}

void StepExecutor::perform(const SetQuote& step)
{
    m_plot.setCurKotirValue(step.quote);
    m_plot.updateAxisWidgets();
}

void StepExecutor::perform(const SetMarket& step)
{
    m_host.setMarket(step.quote, step.priceStep);
}

void StepExecutor::perform(const MoveQuoteLine& step)
{
    m_plot.updateCurKotirPoints(step.low, step.high, step.quote);
}

void StepExecutor::perform(const Convert& step)
{
    auto* draw = dynamic_cast<PriceBased2dPlotScaleDraw*>(
        const_cast<QwtScaleDraw*>(m_plot.axisScaleDraw(step.axis)));
    if (!draw)
        return;
    draw->setConvertionObject(conversionOf(step.conversion));
    draw->setConversionMethod(&Conversion::forward);
    draw->setConversionEnabled(step.conversion != 0);
    draw->setPlusSignShown(step.conversion == 1);
    draw->setMetricUnit(step.conversion == 2 ? QStringLiteral("%") : QString());
    m_plot.updateAxisWidgets();
}

void StepExecutor::perform(const Rescale& step)
{
    m_plot.setRescaleFactor(step.factor.isEmpty() ? decimal::zero : TestHost::number(step.factor));
}

void StepExecutor::perform(const Refresh& step)
{
    switch (step.what) {
    case Refresh::Replot:
        return m_plot.replot();
    case Refresh::Labels:
        return m_plot.updateScaleLabels();
    case Refresh::Values:
        return m_plot.updateYAxisScale();
    case Refresh::AxisWidgets:
        return m_plot.updateAxisWidgets();
    default:
        m_plot.updateLayout();
    }
}

void StepExecutor::perform(const ChangeStrikes& step)
{
    if (step.what == ChangeStrikes::Add)
        m_host.addStrike(step.strike);
    else if (step.what == ChangeStrikes::Remove)
        m_host.removeStrike(step.row);
    else
        m_host.changeStrike(step.row, step.strike);
}

void StepExecutor::perform(const Evaluate& step)
{
    CurveShelf::Entry* entry = m_host.curves().at(step.curve);
    if (!entry || !m_host.points())
        return;
    QVector<QPointF> samples;
    const QList<double> prices = m_host.points()->calcPlotPoints(step.force);
    for (const double price : prices)
        samples.append(QPointF(price, 10.0 + 0.01 * (price - 100.0) * (price - 100.0)));
    entry->given = samples;
    entry->curve->setSamples(samples);
}

void StepExecutor::perform(const Remove& step)
{
    switch (step.what) {
    case Remove::Picker:
        delete m_host.picker();
        return;
    case Remove::Panner:
        delete m_host.panner();
        return;
    case Remove::Legend:
        m_plot.insertLegend(nullptr);
        return;
    default:
        delete m_host.points();
    }
}

void StepExecutor::perform(const NewPicker&)
{
    m_host.createPicker();
}

void StepExecutor::perform(const Track&)
{
    PriceBased2dPlotPicker* picker = m_host.picker();
    if (!picker)
        return;
    const QPoint cursor = m_plot.canvas()->mapFromGlobal(QCursor::pos());
    picker->setPosition(picker->transformedPoint(cursor));
    const ClosestPointParams found = picker->getClosestCurveParams(picker->usedCurves());
    if (!found.curve)
        return picker->setTrackerText(QwtText());
    const QPointF sample = found.curve->sample(found.index);
    picker->setTrackerText(picker->renderedText(
        picker->convertedValue(sample.x()) + QLatin1Char('\n') + picker->convertedValue(sample.y())));
}

void StepExecutor::perform(const Listen& step)
{
    m_host.listen(step);
}

void StepExecutor::perform(const StartOver& step)
{
    m_host.curves().clear();
    m_host.createPicker();
    if (!m_host.legend())
        m_host.createLegend(QwtPlot::BottomLegend);
    if (!m_host.points())
        m_host.createPoints();
    m_host.setMarket(QStringLiteral("100"), QStringLiteral("0.25"));
    perform(Convert{QwtPlot::xBottom, 0});
    perform(Convert{QwtPlot::yLeft, 0});
    m_plot.setRescaleFactor(decimal::zero);
    m_plot.setPriceInterval({70.0, 130.0, 5.0, true});
    m_plot.setZoomEnabled(true);
    m_host.setAutoScale(true);
    m_host.addOrdinaryCurves();
    m_plot.resize(step.width, step.height);
    m_plot.show();
    m_plot.setAxisScale(QwtPlot::xBottom, 85.0, 115.0, 0.0);
    m_plot.updateYAxisScale();
    QCoreApplication::processEvents();
}

}
