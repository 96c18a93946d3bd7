#include "gui/hostplot.h"

#include "support/testhost.h"
#include "support/testplot.h"

#include <QtTest>

#include <qwt_plot_grid.h>
#include <qwt_scale_div.h>
#include <qwt_scale_map.h>
#include <qwt_symbol.h>

#include <algorithm>
#include <cmath>

namespace {

constexpr double currentQuote = 520.0;
constexpr double stepOfPrices = 5.0;
constexpr int patience = 60000; // ms

QVector<QPointF> samplesOf(double (*value)(double))
{
    QVector<QPointF> samples;
    for (double price = 0.0; price <= 1000.0; price += 10.0)
        samples.append(QPointF(price, value(price)));
    return samples;
}

double snapped(double price)
{
    return stepOfPrices * std::floor(price / stepOfPrices + 0.5);
}

}

void openMarket()
{
    TestHost::createSecurities();
    TestHost::createBoards();
    TestHost::addBoard(1, 2, true);
    TestHost::addSecurity(TestHost::future(
        {{QStringLiteral("price_step"), stepOfPrices}, {QStringLiteral("cur_kotir"), currentQuote}}));
}

void closeMarket()
{
    TestHost::dropSecurities();
    TestHost::dropBoards();
}

HostPlot::HostPlot()
    : PriceBased2dPlot(true)
{
    setBaseCode(QStringLiteral("Amber"));
    setPriceInterval({0.0, 1000.0, 10.0, true});
    m_picker = new PriceBased2dPlotPicker(canvas());
    m_picker->initTimer();
    setCanvasObservers();

    auto* grid = new QwtPlotGrid;
    grid->setPen(Qt::lightGray);
    grid->attach(this);
    entries = new PriceBased2dPlotLegend(this);
    entries->initCore();
    insertLegend(entries, QwtPlot::RightLegend);
    connect(entries, SIGNAL(visibilityChanged(QString, bool)), SLOT(setCurveVisible(QString, bool)));
    connect(this, SIGNAL(autoScaleEnabled(bool)), SLOT(setAutoScaleEnabled(bool)));
    connect(this, SIGNAL(updateAxisLabels()), SLOT(updateScaleLabels()));
    addCurves();
}

HostPlot::~HostPlot() = default;

void HostPlot::addCurves()
{
    theory = addCurve(*this, 9,
        samplesOf([](double price) { return 10.0 + 80.0 * (price - 500.0) * (price - 500.0) / 250000.0; }),
        QStringLiteral("Theory"));
    theory->setPen(Qt::blue, 2.0);
    market = addCurve(
        *this, 10, samplesOf([](double price) { return 20.0 + 0.06 * price; }), QStringLiteral("Market"));
    market->setPen(Qt::darkGreen, 2.0);
    quote = addCurve(*this, PriceBased2dPlotCurve::quoteLineType, {{currentQuote, 0.0}, {currentQuote, 1.0}},
        QStringLiteral("Quote"));
    for (PriceBased2dPlotCurve* curve : {theory, market, quote}) {
        const QColor color = curve->pen().color();
        curve->setSymbol(new QwtSymbol(QwtSymbol::Rect, color, color, QSize(2, 2)));
        // As large as the placeholders of unchecked entries, so that the legend keeps its width.
        curve->setLegendIconSize(QSize(50, 13));
    }
    setCurKotirEnabled(true);
    setCurKotirValue(currentQuote);
}

bool HostPlot::comesUp()
{
    setGeometry(60, 40, 800, 500);
    show();
    if (!QTest::qWaitForWindowExposed(this, patience))
        return false;
    // No window manager gives the window the focus.
    activateWindow();
    if (!QTest::qWaitForWindowActive(this, patience))
        return false;
    look({400.0, 600.0}, {40.0, 60.0});
    return true;
}

void HostPlot::look(const QwtInterval& prices, const QwtInterval& values)
{
    QwtPlot::setAxisScale(xBottom, prices.minValue(), prices.maxValue());
    QwtPlot::setAxisScale(yLeft, values.minValue(), values.maxValue());
    updateAxes();
    updateCurKotirPoints(values.minValue(), values.maxValue(), currentQuote);
    updateScaleLabels();
    QCoreApplication::processEvents();
}

QwtInterval HostPlot::range(int axis)
{
    updateAxes();
    return axisScaleDiv(axis).interval();
}

QwtInterval HostPlot::panned(int axis, int pixels) const
{
    const QwtScaleMap map = canvasMap(axis);
    const double shift = pixels * map.sDist() / map.pDist() * (map.isInverting() ? 1.0 : -1.0);
    return QwtInterval(map.s1() + shift, map.s2() + shift);
}

QwtInterval HostPlot::valuesWithin(const QwtInterval& prices) const
{
    const double from = snapped(prices.minValue());
    const double to = snapped(prices.maxValue());
    QVector<double> values;
    for (const PriceBased2dPlotCurve* curve : {theory, market}) {
        for (int i = 0; curve->isVisible() && i < static_cast<int>(curve->dataSize()); ++i) {
            const QPointF sample = curve->sample(i);
            if (sample.x() >= from && sample.x() < to)
                values.append(sample.y());
        }
    }
    const auto [lowest, highest] = std::minmax_element(values.cbegin(), values.cend());
    return values.isEmpty() ? QwtInterval() : QwtInterval(*lowest, *highest);
}

QCheckBox* HostPlot::checkBox(const PriceBased2dPlotCurve* curve) const
{
    return entries->legendWidget(itemToInfo(const_cast<PriceBased2dPlotCurve*>(curve)))
        ->findChild<QCheckBox*>();
}

QwtLegendLabel* HostPlot::label(const PriceBased2dPlotCurve* curve) const
{
    return entries->legendWidget(itemToInfo(const_cast<PriceBased2dPlotCurve*>(curve)))
        ->findChild<QwtLegendLabel*>();
}
