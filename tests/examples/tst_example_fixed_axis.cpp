#define main exampleMain
#include "fixed_axis.cpp"
#undef main

#include "examples/plotpicture.h"
#include "support/testmain.h"

#include <qwt_scale_widget.h>

/// The example zooms and pans along the prices, and its values stay.
class tst_example_fixed_axis : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { Market::open(); }

    void wheelZoomsThePricesAlone()
    {
        FixedPlot plot;
        plot.show();
        turnWheel(plot, plot.canvas()->geometry().center());
        const QwtInterval prices = plot.axisInterval(QwtPlot::xBottom);
        QVERIFY(prices.width() < Market::highest - Market::lowest - 1.0);
        compareValues(plot);
        compareCurve(plot);
    }

    void wheelOverTheValuesKeepsThem()
    {
        FixedPlot plot;
        plot.show();
        turnWheel(plot, plot.axisWidget(QwtPlot::yLeft)->geometry().center());
        compareValues(plot);
        QCOMPARE(plot.axisInterval(QwtPlot::xBottom), QwtInterval(Market::lowest, Market::highest));
    }

    void dragPansThePricesAlone()
    {
        FixedPlot plot;
        plot.show();
        turnWheel(plot, plot.canvas()->geometry().center());
        const QwtInterval before = plot.axisInterval(QwtPlot::xBottom);
        const QPoint center = plot.canvas()->rect().center();
        drag(plot.canvas(), center, center + QPoint(40, 60));
        QVERIFY(plot.axisInterval(QwtPlot::xBottom).minValue() < before.minValue());
        compareValues(plot);
        compareCurve(plot);
    }

    void dragOnTheValuesDoesNothing()
    {
        FixedPlot plot;
        plot.show();
        const QPoint onValues = plot.axisWidget(QwtPlot::yLeft)->geometry().center();
        drag(&plot, onValues, onValues + QPoint(0, 50));
        compareValues(plot);
        QCOMPARE(plot.axisInterval(QwtPlot::xBottom), QwtInterval(Market::lowest, Market::highest));
    }

private:
    static void turnWheel(QWidget& plot, const QPoint& position)
    {
        // The plot asks where the cursor is.
        QCursor::setPos(plot.mapToGlobal(position));
        QWheelEvent turn(position, plot.mapToGlobal(position), QPoint(), QPoint(0, 240), Qt::NoButton,
            Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&plot, &turn);
    }

    static void drag(QWidget* widget, const QPoint& from, const QPoint& to)
    {
        const auto send = [widget](QEvent::Type type, const QPoint& position, Qt::MouseButtons buttons) {
            QMouseEvent event(
                type, position, position, QCursor::pos(), Qt::LeftButton, buttons, Qt::NoModifier);
            QCoreApplication::sendEvent(widget, &event);
        };
        send(QEvent::MouseButtonPress, from, Qt::LeftButton);
        send(QEvent::MouseMove, to, Qt::LeftButton);
        send(QEvent::MouseButtonRelease, to, Qt::NoButton);
    }

    static void compareValues(FixedPlot& plot)
    {
        QCOMPARE(plot.axisInterval(QwtPlot::yLeft), QwtInterval(FixedPlot::bottom, FixedPlot::top));
    }

    static void compareCurve(FixedPlot& plot)
    {
        const PlotPicture picture(plot);
        QVERIFY(picture.isColored(90.0, 0.25575, QColor(0, 114, 178)));
        QVERIFY(!picture.isColored(90.0, 0.27, QColor(0, 114, 178)));
    }
};

PLOT2D_TEST_MAIN(tst_example_fixed_axis)
#include "tst_example_fixed_axis.moc"
