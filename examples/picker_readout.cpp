// A read-out at the cursor: the nearest point of the curves that the legend has checked.
#include "common/exampleplot.h"
#include "common/market.h"
#include "common/program.h"

#include <plot2d/pricebased2dplotcurve.h>
#include <plot2d/pricebased2dplotlegend.h>
#include <plot2d/pricebased2dplotpicker.h>

#include <QApplication>
#include <QMouseEvent>

/// Has the text ready before it is shown.
class ReadingPicker : public PriceBased2dPlotPicker {
public:
    using PriceBased2dPlotPicker::PriceBased2dPlotPicker;

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::MouseMove)
            read(static_cast<QMouseEvent*>(event)->localPos());
        return PriceBased2dPlotPicker::eventFilter(watched, event);
    }

private:
    void read(const QPointF& cursor)
    {
        setPosition(transformedPoint(cursor));
        const ClosestPointParams closest = getClosestCurveParams(usedCurves());
        if (!closest.curve)
            return setTrackerText(QwtText());
        const QPointF point = closest.curve->sample(closest.index);
        setTrackerText(renderedText(QString("%1\nstrike %2\n%3")
                                        .arg(closest.curve->title().text())
                                        .arg(point.x())
                                        .arg(convertedValue(point.y()))));
    }
};

class ReadingPlot : public ExamplePlot {
public:
    ReadingPlot()
    {
        auto* const picker = new ReadingPicker(canvas());
        picker->setDecimals(4);
        usePicker(picker);
        setTrackerColor(Qt::darkGreen);

        auto* const legend = new PriceBased2dPlotLegend(this);
        legend->initCore();
        insertLegend(legend, QwtPlot::BottomLegend);
        addCurve("Bid", 9, QColor(0, 114, 178))->setSamples(Market::smile(-0.01));
        addCurve("Ask", 10, QColor(230, 159, 0))->setSamples(Market::smile(0.01));
        updateYAxisScale();
    }
};

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    Market::open();
    ReadingPlot plot;
    return Program::show(plot);
}
