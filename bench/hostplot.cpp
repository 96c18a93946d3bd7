#include "hostplot.h"

#include "support/testhost.h"

#include <plot2d/pricebased2dplotcurve.h>
#include <plot2d/pricebased2dplotlegend.h>
#include <plot2d/pricebased2dplotpicker.h>

#include <QApplication>

#include <qwt_plot_canvas.h>

namespace {

bool createHost()
{
    TestHost::createBoards();
    TestHost::createSecurities();
    TestHost::addSecurity(TestHost::future({{QStringLiteral("price_step"), QStringLiteral("0.01")},
        {QStringLiteral("cur_kotir"), QString::number(HostPlot::quote)}}));
    return true;
}

}

HostPlot::HostPlot(bool hasLegend)
    : PriceBased2dPlot(createHost())
{
    m_picker = new PriceBased2dPlotPicker(canvas());
    setIsinId(10);
    setBoardId(2);
    m_picker->initTimer();
    setCanvasObservers();
    if (hasLegend) {
        auto* const entries = new PriceBased2dPlotLegend(this);
        entries->initCore();
        insertLegend(entries, BottomLegend);
        connect(
            entries, SIGNAL(visibilityChanged(QString, bool)), this, SLOT(setCurveVisible(QString, bool)));
    }
    connect(this, SIGNAL(autoScaleEnabled(bool)), this, SLOT(setAutoScaleEnabled(bool)));
    connect(this, SIGNAL(updateAxisLabels()), this, SLOT(updateScaleLabels()));
    setAutoScaleEnabled(true);
    for (const int axis : {int(xBottom), int(yLeft)})
        setAxisFont(axis, QApplication::font());
    qobject_cast<QwtPlotCanvas*>(canvas())->setFrameStyle(QFrame::NoFrame);
}

void HostPlot::moveTo(double low, double high)
{
    setAxisScale(xBottom, low, high, 0.0);
    updateYAxisScale();
    Q_EMIT updateAxisLabels();
}

PriceBased2dPlotCurve* HostPlot::addCurve(const QString& title, const QPen& pen, bool antialiased)
{
    constexpr int firstType = 9;
    constexpr int types = 4;
    auto* const curve = new PriceBased2dPlotCurve(this, title);
    curve->setDataType(firstType + m_curves++ % types);
    curve->setPen(pen);
    curve->setLegendAttribute(QwtPlotCurve::LegendShowLine);
    curve->setRenderHint(QwtPlotItem::RenderAntialiased, antialiased);
    curve->attach(this);
    return curve;
}

PriceBased2dPlotCurve* HostPlot::addQuoteLine()
{
    PriceBased2dPlotCurve* const line = addCurve(QStringLiteral("quote"), QPen(Qt::red, 1.0), false);
    line->setDataType(PriceBased2dPlotCurve::quoteLineType);
    line->setStyle(QwtPlotCurve::Sticks);
    return line;
}

void HostPlot::showQuote(PriceBased2dPlotCurve& line, double low, double high)
{
    line.setSamples({QPointF(quote, low), QPointF(quote, high)});
    setCurKotirValue(quote);
    setCurKotirEnabled(true);
}

int HostPlot::nearest(double x, double y, const PriceBased2dPlotCurve** curve)
{
    const QPoint position(int(x * canvas()->width()), int(y * canvas()->height()));
    m_picker->setPosition(m_picker->transformedPoint(position));
    const ClosestPointParams found = m_picker->getClosestCurveParams(m_picker->usedCurves());
    *curve = found.curve;
    return found.index;
}
