#define main exampleMain
#include "markers.cpp"
#undef main

#include "examples/plotpicture.h"
#include "support/testmain.h"

/// The example has a filled square on each marked sample and nowhere else.
class tst_example_markers : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { Market::open(); }

    void squaresStandOnMarkedSamples()
    {
        TradesPlot plot;
        compare(plot, 10);
        plot.mark(25);
        compare(plot, 25);
        plot.mark(5);
        compare(plot, 5);
    }

private:
    static void compare(TradesPlot& plot, int each)
    {
        const PlotPicture picture(plot);
        const QVector<QPointF> smile = Market::smile();
        int marked = 0;
        for (int i = 0; i < smile.size(); ++i) {
            marked += i % each == 0 ? 1 : 0;
            // Those at the ends are cut by the canvas, those beside a marked one may lie below its square.
            if (i < each || i + each >= smile.size() || (i % each != 0 && i % each != each / 2))
                continue;
            QCOMPARE(picture.isFilled(smile[i].x(), smile[i].y(), QColor(213, 94, 0), 2), i % each == 0);
        }
        QCOMPARE(plot.attachedMarkers().size(), marked);
    }
};

PLOT2D_TEST_MAIN(tst_example_markers)
#include "tst_example_markers.moc"
