#include "common/exampleplot.h"

#include "common/market.h"

#include <plot2d/pricebased2dplotcurve.h>
#include <plot2d/pricebased2dplotpicker.h>

ExamplePlot::ExamplePlot()
    : PriceBased2dPlot(true)
{
    setIsinId(Market::isinId);
    setBoardId(Market::boardId);
    usePicker(new PriceBased2dPlotPicker(canvas()));
    setPriceInterval({Market::lowest, Market::highest, Market::priceStep, true});
    connect(this, SIGNAL(autoScaleEnabled(bool)), SLOT(setAutoScaleEnabled(bool)));
    connect(this, SIGNAL(updateAxisLabels()), SLOT(updateScaleLabels()));
    setAxisScale(QwtPlot::xBottom, Market::lowest, Market::highest, 0.0);
    resize(640, 400);
}

PriceBased2dPlotCurve* ExamplePlot::addCurve(const QString& title, int dataType, const QColor& color)
{
    auto* const curve = new PriceBased2dPlotCurve(this, title);
    curve->setDataType(dataType);
    curve->setPen(color, 2.0);
    curve->setLegendAttribute(QwtPlotCurve::LegendShowLine);
    curve->attach(this);
    return curve;
}

void ExamplePlot::usePicker(PriceBased2dPlotPicker* picker)
{
    delete m_picker;
    m_picker = picker;
    m_picker->initTimer();
    setCanvasObservers();
}
