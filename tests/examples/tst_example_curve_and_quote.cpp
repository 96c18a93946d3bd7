#define main exampleMain
#include "curve_and_quote.cpp"
#undef main

#include "examples/plotpicture.h"
#include "support/testmain.h"

/// The example draws its curve through all samples, and the quote where it stands.
class tst_example_curve_and_quote : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { Market::open(); }

    void curveGoesThroughItsSamples()
    {
        QuotePlot plot;
        plot.resize(640, 400);
        const PlotPicture picture(plot);
        const QVector<QPointF> smile = Market::smile();
        for (int i = 1; i < smile.size() - 1; ++i) {
            if (smile[i].x() != Market::quote)
                QVERIFY2(picture.isColored(smile[i].x(), smile[i].y(), QColor(0, 114, 178)),
                    qPrintable(QString::number(smile[i].x())));
        }
    }

    void quoteHasALineAndALabel()
    {
        QuotePlot plot;
        plot.resize(640, 400);
        const PlotPicture picture(plot);
        for (const double value : {0.26, 0.28, 0.30, 0.32, 0.34}) {
            QVERIFY(picture.isColored(Market::quote, value, Qt::red));
            QVERIFY(!picture.isColored(Market::quote - 1.0, value, Qt::red));
        }
        QVERIFY(picture.onPriceAxis(Qt::red) > 10);
    }
};

PLOT2D_TEST_MAIN(tst_example_curve_and_quote)
#include "tst_example_curve_and_quote.moc"
