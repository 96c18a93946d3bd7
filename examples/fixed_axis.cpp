// Zoom along the prices only: the vertical axis stays as the host has set it, say to compare plots side by
// side.
#include "common/exampleplot.h"
#include "common/market.h"
#include "common/program.h"

#include <plot2d/pricebased2dplotcurve.h>
#include <plot2d/pricebased2dplotpanner.h>

#include <QApplication>
#include <QMouseEvent>
#include <QWheelEvent>

class FixedPlot : public ExamplePlot {
public:
    static constexpr double bottom = 0.24;
    static constexpr double top = 0.32;

    FixedPlot()
    {
        addCurve("Volatility", 9, QColor(0, 114, 178))->setSamples(Market::smile());
        setAutoScaleEnabled(false);
        setAxisScale(QwtPlot::yLeft, bottom, top, 0.02);
        canvas()->findChild<PriceBased2dPlotPanner*>()->setAxisEnabled(QwtPlot::yLeft, false);
        // With the auto-scale off this leaves the values' scale alone.
        updateYAxisScale();
    }

protected:
    // With Control the wheel zooms the prices alone; over the values it zooms nothing.
    void wheelEvent(QWheelEvent* event) override
    {
        if (mousePositionOnYScale(event->position()))
            return;
        QWheelEvent overPrices(event->position(), event->globalPosition(), event->pixelDelta(),
            event->angleDelta(), event->buttons(), Qt::ControlModifier, event->phase(), event->inverted());
        ExamplePlot::wheelEvent(&overPrices);
    }

    // A drag on the values begins nothing.
    void mousePressEvent(QMouseEvent* event) override
    {
        if (!mousePositionOnYScale(event->localPos()))
            ExamplePlot::mousePressEvent(event);
    }
};

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    Market::open();
    FixedPlot plot;
    return Program::show(plot);
}
