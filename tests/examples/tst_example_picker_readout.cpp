#define main exampleMain
#include "picker_readout.cpp"
#undef main

#include "examples/cursor.h"
#include "examples/plotpicture.h"
#include "support/testmain.h"

namespace {

class Reading : public ReadingPlot {
public:
    QString text() const { return m_picker->trackerText(QPoint()).text(); }
};

}

/// The example tells of the point nearest to the cursor, and of checked curves only.
class tst_example_picker_readout : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { Market::open(); }

    void nearestPointIsTold()
    {
        Reading plot;
        plot.show();
        moveCursor(plot, 87.4, 0.258);
        QCOMPARE(plot.text(), QString("Bid\nstrike 87.5\n0.257"));
        moveCursor(plot, 87.4, 0.276);
        QCOMPARE(plot.text(), QString("Ask\nstrike 87.5\n0.277"));
        moveCursor(plot, 97.4, 0.2565);
        QCOMPARE(plot.text(), QString("Bid\nstrike 97.5\n0.257"));
    }

    void textIsDrawnBesideTheCursor()
    {
        Reading plot;
        plot.show();
        QCOMPARE(PlotPicture(plot).onCanvas(Qt::darkGreen), 0);
        moveCursor(plot, 92.5, 0.3);
        const PlotPicture picture(plot);
        QVERIFY(picture.onCanvas(Qt::darkGreen) > 50);
        // The text is at most some dozens of pixels away.
        QVERIFY(picture.isColored(92.5, 0.3, Qt::darkGreen, 60));
        QVERIFY(!picture.isColored(84.0, 0.3, Qt::darkGreen, 20));
    }

    void uncheckedCurveIsNotRead()
    {
        Reading plot;
        plot.show();
        qobject_cast<PriceBased2dPlotLegend*>(plot.legend())->setCheckBoxChecked("Bid", false);
        moveCursor(plot, 85.1, 0.27);
        QVERIFY2(plot.text().startsWith("Ask"), qPrintable(plot.text()));
    }
};

PLOT2D_TEST_MAIN(tst_example_picker_readout)
#include "tst_example_picker_readout.moc"
