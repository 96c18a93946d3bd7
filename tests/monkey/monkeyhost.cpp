#include "monkey/monkeyhost.h"

#include "support/testhost.h"

#include <QScrollBar>
#include <QTimer>

#include <qwt_plot_canvas.h>
#include <qwt_plot_grid.h>

namespace Monkey {

namespace {

QVariant decimalOrNull(const QString& text)
{
    return text.isEmpty() ? QVariant() : QVariant(text);
}

QVector<QPointF> parabola(double lowest, double curvature)
{
    QVector<QPointF> samples;
    for (int price = 40; price <= 160; ++price)
        samples.append(QPointF(price, lowest + curvature * (price - 100) * (price - 100)));
    return samples;
}

}

Plot::Plot()
    : PriceBased2dPlot(true)
{
}

void Plot::curveIconReset(const PriceBased2dPlotCurve*) { }

void Plot::resizeEvent(QResizeEvent* event)
{
    PriceBased2dPlot::resizeEvent(event);
    updateScaleLabels();
}

Host::Host()
{
    createTable();
    m_plot = std::make_unique<Plot>();
    m_heard.hear(*m_plot); // Before a slot changes anything.
    m_plot->setBaseCode(QStringLiteral("Amber"));
    m_panner = m_plot->findChild<PriceBased2dPlotPanner*>();
    (new QwtPlotGrid)->attach(m_plot.get());
    createPicker();
    createLegend(QwtPlot::BottomLegend);
    createPoints();
    connect(m_plot.get(), SIGNAL(updateAxisLabels()), m_plot.get(), SLOT(updateScaleLabels()));
    connect(m_plot.get(), SIGNAL(updateAxisLabels()), this, SLOT(onUpdateAxisLabels()));
    connect(m_plot.get(), SIGNAL(autoScaleEnabled(bool)), m_plot.get(), SLOT(setAutoScaleEnabled(bool)));
    connect(m_plot.get(), SIGNAL(autoScaleEnabled(bool)), this, SLOT(onAutoScale(bool)));
}

Host::~Host()
{
    m_curves.leaveToPlot();
    m_plot.reset();
    m_options.clear();
    m_future = Record();
    TestHost::dropSecurities();
    TestHost::dropBoards();
}

void Host::createTable()
{
    TestHost::createSecurities();
    TestHost::createBoards();
    TestHost::addBoard(1, 2, true); // Without it the future is none.
    m_future = TestHost::addSecurity(TestHost::future({{QStringLiteral("decimals"), 2}}));
    setMarket(QStringLiteral("100"), QStringLiteral("0.25"));
    for (int strike = 70; strike <= 130; strike += 5)
        addStrike(QString::number(strike));
}

void Host::createPicker()
{
    delete m_picker;
    m_picker = new PriceBased2dPlotPicker(m_plot->canvas());
    m_plot->setPicker(m_picker);
    m_picker->initTimer();
    constexpr int day = 24 * 60 * 60 * 1000; // ms
    const QList<QTimer*> timers = m_picker->findChildren<QTimer*>();
    for (QTimer* timer : timers)
        timer->setInterval(day);
    m_plot->setCanvasObservers();
}

void Host::createLegend(int position)
{
    m_legend = new PriceBased2dPlotLegend(m_plot.get());
    m_legend->initCore();
    m_heard.hear(*m_legend);
    // Their menus would wait for the user in an event loop of their own.
    const QList<QScrollBar*> scrollBars = m_legend->findChildren<QScrollBar*>();
    for (QScrollBar* scrollBar : scrollBars)
        scrollBar->setContextMenuPolicy(Qt::NoContextMenu);
    m_plot->insertLegend(m_legend, static_cast<QwtPlot::LegendPosition>(position));
    connect(m_legend, SIGNAL(visibilityChanged(QString, bool)), m_plot.get(),
        SLOT(setCurveVisible(QString, bool)));
    connect(m_legend, SIGNAL(visibilityChanged(QString, bool)), this, SLOT(onVisibility()));
}

void Host::createPoints()
{
    delete m_points;
    m_points = new PriceBased2dPlotPointManager(false, m_plot.get());
    m_heard.hear(*m_points);
    m_points->updatePriceInterval();
}

void Host::addOrdinaryCurves()
{
    m_curves.add(*m_plot, 9, QStringLiteral("Smile"), parabola(10.0, 0.01));
    m_curves.add(*m_plot, 10, QStringLiteral("Theory"), parabola(12.0, 0.005));
    m_curves.add(*m_plot, PriceBased2dPlotCurve::markedType, QStringLiteral("Trades"), parabola(11.0, 0.008));
    m_curves.add(*m_plot, PriceBased2dPlotCurve::quoteLineType, QStringLiteral("Quote"),
        {QPointF(100.0, 0.0), QPointF(100.0, 1.0)});
}

void Host::setMarket(const QString& quote, const QString& priceStep)
{
    TestHost::changeRow(m_future,
        {{QStringLiteral("cur_kotir"), decimalOrNull(quote)},
            {QStringLiteral("price_step"), decimalOrNull(priceStep)}});
}

void Host::addStrike(const QString& strike)
{
    const int id = ++m_lastId;
    m_options.append(TestHost::addSecurity({{QStringLiteral("stock_id"), 1}, {QStringLiteral("board_id"), 2},
        {QStringLiteral("sec_id"), id}, {QStringLiteral("isin_id"), id},
        {QStringLiteral("base_code"), QStringLiteral("Amber")},
        {QStringLiteral("sectype"), QStringLiteral("O")}, {QStringLiteral("strike"), decimalOrNull(strike)},
        {QStringLiteral("decimals"), 2}, {QStringLiteral("sess_id"), 7}}));
}

void Host::removeStrike(int row)
{
    if (!m_options.isEmpty())
        TestHost::removeRows({m_options.takeAt(row % m_options.size())});
}

void Host::changeStrike(int row, const QString& strike)
{
    if (!m_options.isEmpty())
        TestHost::changeRow(
            m_options[row % m_options.size()], {{QStringLiteral("strike"), decimalOrNull(strike)}});
}

void Host::setAutoScale(bool on)
{
    m_autoScale = on;
    m_plot->setAutoScaleEnabled(on);
}

void Host::onUpdateAxisLabels()
{
    m_plot->updateYAxisScale();
    intervene(Listen::Labels);
}

void Host::onAutoScale(bool on)
{
    m_autoScale = on;
    intervene(Listen::AutoScale);
}

void Host::onVisibility()
{
    intervene(Listen::Visibility);
}

void Host::intervene(Listen::Signal signal)
{
    if (!m_listener || m_listener->signal != signal)
        return;
    const auto action = static_cast<Listen::Action>(m_listener->action);
    m_listener.reset();
    ++m_interventions;
    perform(action);
}

void Host::perform(Listen::Action action)
{
    switch (action) {
    case Listen::DeleteCurves:
        return m_curves.clear();
    case Listen::DeletePicker:
        delete m_picker;
        return;
    case Listen::DeletePanner:
        delete m_panner;
        return;
    case Listen::DeleteLegend:
        delete m_legend;
        return;
    case Listen::AddCurves:
        return addOrdinaryCurves();
    case Listen::HideWindow:
        return m_plot->hide();
    case Listen::Shrink:
        return m_plot->resize(0, 0);
    case Listen::SetScales:
        m_plot->setAxisScale(QwtPlot::xBottom, 80.0, 120.0, 0.0);
        m_plot->setAxisScale(QwtPlot::yLeft, 5.0, 20.0, 0.0);
        return m_plot->replot();
    }
}

}
