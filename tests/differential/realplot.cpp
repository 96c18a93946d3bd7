#include "differential/realplot.h"

#include "differential/plainlabels.h"
#include "differential/plainnumbers.h"

#include <plot2d/pricebased2dplotscaledraw.h>

namespace Differential {

RealPlot::RealPlot()
    : m_plot(shownPlot())
{
    if (!m_plot)
        return;
    connect(m_plot.get(), SIGNAL(updateAxisLabels()), SLOT(onLabels()));
    connect(m_plot.get(), SIGNAL(autoScaleEnabled(bool)), SLOT(onAutoScale(bool)));
}

void RealPlot::setUp(Random& random)
{
    setUpCurves(random);
    setUpRanges(random);
    m_view.followsCurves = random.oneIn(2);
    m_plot->setAutoScaleEnabled(m_view.followsCurves);
    PriceInterval interval;
    interval.minStep = m_minStep = random.oneIn(3)
        ? (m_view.prices.second - m_view.prices.first) * random.oneOf({0.9, 0.95, 1.0, 1.5})
        : 0.01;
    m_plot->setPriceInterval(interval);
    m_decimals = random.oneIn(3) ? random.whole(0, 3) : 10;
    static_cast<PriceBased2dPlotScaleDraw*>(m_plot->axisScaleDraw(QwtPlot::yLeft))->setDecimals(m_decimals);
    m_plot->replot();
    m_plot->updateLayout();
    m_seen.clear();
    m_plot->calls.clear();
}

void RealPlot::setUpCurves(Random& random)
{
    m_plot->detachItems(QwtPlotItem::Rtti_PlotItem, true);
    m_curves.clear();
    m_view.curves = randomCurves(random, Samples::Finite, 3);
    // Curves that are equally near.
    if (m_view.curves.size() > 1 && random.oneIn(4))
        m_view.curves[1].samples = m_view.curves[0].samples;
    for (Plain::Curve& curve : m_view.curves) {
        // Values that are no numbers of a view would leave no room for any other.
        for (QPointF& sample : curve.samples) {
            if (!(std::abs(sample.x()) < 1e6) || !(std::abs(sample.y()) < 1e6))
                sample = QPointF(110.0, 0.0);
        }
        m_curves << made(curve, m_plot.get()).release();
        m_curves.last()->attach(m_plot.get());
    }
}

void RealPlot::setUpRanges(Random& random)
{
    const double low = random.whole(80, 118) + random.oneOf({0.0, 0.5, 0.125});
    m_view.prices = Plain::Bounds(low, low + random.oneOf({2.0, 10.0, 25.0, 60.0, 0.5}));
    const double bottom = random.whole(-14, 8) + random.oneOf({0.0, 0.25});
    m_view.values = Plain::Bounds(bottom, bottom + random.oneOf({0.001, 1.0, 8.0, 20.0, 40.0, 1e-7}));
    m_plot->QwtPlot::setAxisScale(QwtPlot::xBottom, m_view.prices.first, m_view.prices.second);
    m_plot->QwtPlot::setAxisScale(QwtPlot::yLeft, m_view.values.first, m_view.values.second);
}

bool RealPlot::labelsAreEqual() const
{
    const QwtScaleDiv& division = m_plot->axisScaleDiv(QwtPlot::yLeft);
    const QList<double> ticks = Plain::labelCandidates(
        division.ticks(QwtScaleDiv::MajorTick), division.ticks(QwtScaleDiv::MediumTick));
    return Plain::labelsReadTheSame(
        ticks, [this](double value) { return Plain::shortText(value, m_decimals); });
}

void RealPlot::compare(Findings& findings)
{
    m_plot->updateAxes();
    const QwtInterval prices = m_plot->axisInterval(QwtPlot::xBottom);
    const QwtInterval values = m_plot->axisInterval(QwtPlot::yLeft);
    const double width = m_view.prices.second - m_view.prices.first;
    const double height = m_view.values.second - m_view.values.first;
    findings.compareNear("lowest price", m_view.prices.first, prices.minValue(), width);
    findings.compareNear("highest price", m_view.prices.second, prices.maxValue(), width);
    findings.compareNear("lowest value", m_view.values.first, values.minValue(), height);
    findings.compareNear("highest value", m_view.values.second, values.maxValue(), height);
    for (int i = 0; i < m_curves.size(); ++i) {
        const Plain::Curve& plain = m_view.curves[i];
        if (!plain.isQuoteLine() || plain.samples.size() != 2)
            continue;
        for (int end = 0; end < 2; ++end) {
            const QPointF sample = m_curves[i]->sample(end);
            findings.compare("price of the line", plain.samples[end].x(), sample.x());
            findings.compareNear("end of the line", plain.samples[end].y(), sample.y(), height + 1.0);
        }
    }
}

QString RealPlot::inWords() const
{
    return QStringLiteral("now prices %1, values %2, follows %3, price step %4, least step %5, decimals %6%7")
        .arg(told(m_view.prices), told(m_view.values), told(m_view.followsCurves), told(m_view.priceStep),
            told(m_minStep), told(m_decimals), told(m_view.curves));
}

}
