#define main exampleMain
#include "embedding.cpp"
#undef main

#include "examples/cursor.h"
#include "examples/plotpicture.h"
#include "support/testmain.h"

#include <plot2d/pricebased2dplotscaledraw.h>

#include <QFile>

#include <algorithm>

namespace {

constexpr double quote = 92.5;

class Embedded : public SmilePlot {
public:
    Embedded()
        : SmilePlot(quote)
    {
        resize(640, 400);
        show();
    }
    const PriceBased2dPlotScaleDraw* priceScale() const
    {
        return dynamic_cast<const PriceBased2dPlotScaleDraw*>(axisScaleDraw(xBottom));
    }
    void look(double from, double to)
    {
        setAxisScale(xBottom, from, to, 0.0);
        updateYAxisScale();
    }
    /// Of the labels that are drawn along the prices, without the room around them.
    int collidingTexts() const
    {
        constexpr int room = 4;
        QList<QRect> texts = priceScale()->getBoundingRects(priceScale()->labelTicks() << quote);
        std::sort(
            texts.begin(), texts.end(), [](const QRect& a, const QRect& b) { return a.left() < b.left(); });
        int count = 0;
        for (int i = 1; i < texts.size(); ++i)
            count += texts[i - 1].right() - room >= texts[i].left() + room;
        return count;
    }
    QString text() const { return m_picker->trackerText(QPoint()).text(); }
    PriceBased2dPlotLegend* entries() { return qobject_cast<PriceBased2dPlotLegend*>(legend()); }
};

QString contents(const char* name)
{
    QFile file(name);
    return file.open(QFile::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

}

/// The program in docs/embedding.md does what the text says.
class tst_embedding : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { openMarket(quote); }

    void programIsTheDocuments()
    {
        const QString program = contents(EMBEDDING_SOURCE);
        QVERIFY(!program.isEmpty());
        QVERIFY(contents(EMBEDDING_DOCUMENT).contains("\n```cpp\n" + program + "```\n"));
        QVERIFY2(program.count('\n') <= 80, qPrintable(QString::number(program.count('\n'))));
    }

    void curvesMarkersAndQuoteAreDrawn()
    {
        Embedded plot;
        const PlotPicture picture(plot);
        QVERIFY(picture.isColored(85.0, 0.295, Qt::darkBlue));
        QVERIFY(picture.isColored(95.0, 0.252, Qt::darkBlue));
        QVERIFY(picture.isFilled(82.5, 0.325, Qt::darkGreen, 2));
        QVERIFY(picture.isFilled(97.5, 0.265, Qt::darkGreen, 2));
        QVERIFY(picture.isColored(quote, 0.31, Qt::red));
        QVERIFY(picture.onPriceAxis(Qt::red) > 10);
    }

    void pickerReadsThePointAtTheCursor()
    {
        Embedded plot;
        moveCursor(plot, 84.9, 0.294);
        QCOMPARE(plot.text(), QString("85: 0.295"));
        moveCursor(plot, 97.0, 0.266);
        QCOMPARE(plot.text(), QString("97.5: 0.265"));
    }

    void labelsFollowTheWheel_data()
    {
        QTest::addColumn<int>("angle");
        QTest::newRow("in") << 120;
        QTest::newRow("out") << -120;
    }

    void labelsFollowTheWheel()
    {
        QFETCH(int, angle);
        Embedded plot;
        plot.resize(300, 300);
        plot.grab();
        if (angle < 0) // From nearer, as all there is to see is in view.
            plot.look(91.0, 94.0);
        for (int notch = 0; notch < 6; ++notch) {
            const QwtInterval before = plot.axisInterval(QwtPlot::xBottom);
            turnWheel(plot, angle);
            QVERIFY(plot.axisInterval(QwtPlot::xBottom) != before);
            const QList<double> labels = plot.priceScale()->labelTicks();
            const QList<double> ticks = plot.priceScale()->getTicks(plot.axisScaleDiv(QwtPlot::xBottom));
            QVERIFY(!labels.isEmpty());
            QVERIFY(std::includes(ticks.cbegin(), ticks.cend(), labels.cbegin(), labels.cend()));
            QCOMPARE(plot.collidingTexts(), 0);
        }
    }

    void legendHidesAndShows()
    {
        Embedded plot;
        plot.entries()->setCheckBoxChecked("Smile", false);
        plot.entries()->setCheckBoxChecked("Quote", false);
        const PlotPicture without(plot);
        QCOMPARE(without.onCanvas(Qt::darkBlue), 0);
        QCOMPARE(without.onCanvas(Qt::red), 0);
        QCOMPARE(without.onPriceAxis(Qt::red), 0);

        plot.entries()->setCheckBoxChecked("Smile", true);
        plot.entries()->setCheckBoxChecked("Quote", true);
        const PlotPicture with(plot);
        QVERIFY(with.isColored(85.0, 0.295, Qt::darkBlue));
        QVERIFY(with.isColored(quote, 0.31, Qt::red));
        QVERIFY(with.onPriceAxis(Qt::red) > 10);
    }
};

PLOT2D_TEST_MAIN(tst_embedding)
#include "tst_embedding.moc"
