#define main exampleMain
#include "legend_memory.cpp"
#undef main

#include "examples/plotpicture.h"
#include "support/testmain.h"

#include <QTemporaryDir>

/// The example hides a curve with its check box, and hides it again after a restart.
class tst_example_legend_memory : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { Market::open(); }

    void hiddenCurveStaysHidden()
    {
        const QTemporaryDir folder;
        const QString file = folder.filePath("settings.ini");
        {
            Settings settings(file);
            RememberingPlot plot(settings);
            plot.show();
            QVERIFY(PlotPicture(plot).onCanvas(middle) > 300);
            legendOf(plot)->setCheckBoxChecked("Middle", false);
            QCOMPARE(PlotPicture(plot).onCanvas(middle), 0);
        }
        Settings settings(file);
        RememberingPlot plot(settings);
        plot.show();
        const PlotPicture picture(plot);
        QCOMPARE(picture.onCanvas(middle), 0);
        QVERIFY(picture.onCanvas(QColor(0, 114, 178)) > 300);
        QVERIFY(picture.onCanvas(QColor(230, 159, 0)) > 300);
        bool found = false;
        QVERIFY(!legendOf(plot)->isCheckBoxChecked("Middle", &found));
        QVERIFY(found);

        legendOf(plot)->setCheckBoxChecked("Middle", true);
        QVERIFY(PlotPicture(plot).onCanvas(middle) > 300);
    }

private:
    static PriceBased2dPlotLegend* legendOf(RememberingPlot& plot)
    {
        return qobject_cast<PriceBased2dPlotLegend*>(plot.legend());
    }

    const QColor middle = QColor(0, 158, 115);
};

PLOT2D_TEST_MAIN(tst_example_legend_memory)
#include "tst_example_legend_memory.moc"
