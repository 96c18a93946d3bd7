#include "desktest.h"
#include "shownplot.h"
#include "support/testmain.h"

#include <plot2d/pricebased2dplotscaledraw.h>

#include <qwt_plot_marker.h>
#include <qwt_scale_map.h>

#include <algorithm>
#include <cmath>

/// What the curves of a series look like in pixels.
class tst_deskplotdrawing : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m_shown = std::make_unique<ShownPlot>(); }
    void cleanup() { m_shown.reset(); }
    void drawsTheForwardInItsColumn_data();
    void drawsTheForwardInItsColumn();
    void drawsTheSmileAlongItsPixels();
    void marksTradedStrikes();
    void drawsOneStrike();

private:
    std::unique_ptr<ShownPlot> m_shown;
};

namespace {

constexpr QRgb smileColor = qRgb(0x00, 0x72, 0xb2);
constexpr QRgb markerColor = qRgb(0xe6, 0x9f, 0x00);

}

void tst_deskplotdrawing::drawsTheForwardInItsColumn_data()
{
    QTest::addColumn<double>("forward");
    QTest::addColumn<int>("view");
    for (const double forward : {100.0, 93.37, 110.0}) {
        QTest::addRow("volatility, %g", forward) << forward << int(DeskView::Volatility);
        QTest::addRow("value, %g", forward) << forward << int(DeskView::Value);
    }
}

void tst_deskplotdrawing::drawsTheForwardInItsColumn()
{
    QFETCH(double, forward);
    QFETCH(int, view);
    SeriesFacts given;
    given.forward = forward;
    m_shown->show(DeskView(view), given);
    const QImage image = m_shown->picture();

    const PriceBased2dPlotCurve* line = m_shown->curve(0);
    QVERIFY(line);
    QCOMPARE(line->sample(0).x(), forward);
    QCOMPARE(line->sample(1).x(), forward);

    const double column
        = m_shown->canvasRect().left() + m_shown->plot().canvasMap(QwtPlot::xBottom).transform(forward);
    QMap<int, int> redColumns;
    const QRect canvas = m_shown->canvasRect().toRect();
    for (int x = canvas.left(); x <= canvas.right(); ++x)
        redColumns[x]
            = DeskTest::countPixels(image.copy(x, canvas.top(), 1, canvas.height()), ShownPlot::red);
    for (auto found = redColumns.cbegin(); found != redColumns.cend(); ++found) {
        // Curves and grid cross the line here and there.
        const bool isLine = found.value() > canvas.height() * 8 / 10;
        const bool expected = std::abs(found.key() + 0.5 - column) <= 1.0;
        QVERIFY2(!isLine || expected, qPrintable(QString::number(found.key())));
    }
    const int nearest = qFloor(column);
    const int height = std::max(redColumns.value(nearest), redColumns.value(qRound(column)));
    QVERIFY2(height > canvas.height() * 8 / 10, qPrintable(QString::number(height)));

    const auto* draw
        = dynamic_cast<PriceBased2dPlotScaleDraw*>(m_shown->plot().axisScaleDraw(QwtPlot::xBottom));
    QVERIFY(draw);
    QVERIFY(draw->isCurKotirEnabled());
    QCOMPARE(draw->curKotirValue(), forward);
}

void tst_deskplotdrawing::drawsTheSmileAlongItsPixels()
{
    const ShownSeries series = m_shown->show(DeskView::Volatility);
    const QImage image = m_shown->picture();
    const QwtScaleMap xMap = m_shown->plot().canvasMap(QwtPlot::xBottom);
    const QwtScaleMap yMap = m_shown->plot().canvasMap(QwtPlot::yLeft);
    int looked = 0;
    // Between the points, where no marker lies over or under the curve.
    for (double strike = 71.25; strike < 130.0; strike += 2.5) {
        const double volatility = series.smile->volatility(strike).value_or(0.0);
        const QPointF position
            = m_shown->canvasRect().topLeft() + QPointF(xMap.transform(strike), yMap.transform(volatility));
        const QRect around(qFloor(position.x()) - 1, qFloor(position.y()) - 3, 3, 7);
        QVERIFY2(
            DeskTest::countPixels(image.copy(around), smileColor) > 0, qPrintable(QString::number(strike)));
        ++looked;
    }
    QVERIFY(looked > 20);
}

void tst_deskplotdrawing::marksTradedStrikes()
{
    OptionChain chain = DeskTest::chain();
    QVector<OptionQuote>& quotes = chain.series.first().quotes;
    for (OptionQuote& quote : quotes)
        quote.volume
            = quote.strike == decimal::fromUnits(90, 0) || quote.strike == decimal::fromUnits(115, 0);
    m_shown->import(chain);
    m_shown->show(DeskView::Volatility);
    const QList<QwtPlotMarker*> markers = m_shown->plot().attachedMarkers();
    QCOMPARE(markers.size(), 2);
    QCOMPARE(markers[0]->xValue(), 90.0);
    QCOMPARE(markers[1]->xValue(), 115.0);
    for (const QwtPlotMarker* marker : markers)
        QVERIFY(std::abs(marker->yValue() - DeskTest::volatility(marker->xValue())) < 2e-3);

    const QImage image = m_shown->picture();
    const QwtScaleMap xMap = m_shown->plot().canvasMap(QwtPlot::xBottom);
    const QwtScaleMap yMap = m_shown->plot().canvasMap(QwtPlot::yLeft);
    const auto orangePixels = [&](double strike) {
        const QPointF position = m_shown->canvasRect().topLeft()
            + QPointF(xMap.transform(strike), yMap.transform(DeskTest::volatility(strike)));
        return DeskTest::countPixels(
            image.copy(qRound(position.x()) - 5, qRound(position.y()) - 5, 10, 10), markerColor);
    };
    QVERIFY(orangePixels(90.0) > 25);
    QVERIFY(orangePixels(115.0) > 25);
    QVERIFY(orangePixels(95.0) < 15);
}

void tst_deskplotdrawing::drawsOneStrike()
{
    OptionChain chain = DeskTest::chain();
    QVector<OptionQuote>& quotes = chain.series.first().quotes;
    quotes.erase(std::remove_if(quotes.begin(), quotes.end(),
                     [](const OptionQuote& quote) { return quote.strike != decimal::fromUnits(105, 0); }),
        quotes.end());
    m_shown->import(chain);
    m_shown->show(DeskView::Volatility);
    QVERIFY(m_shown->plot().priceInterval().valid);
    QVERIFY(m_shown->curve(0)->isVisible());
    QVERIFY(m_shown->curve(9));
    QVERIFY(DeskTest::countPixels(m_shown->picture(), ShownPlot::red) > 100);
}

PLOT2D_TEST_MAIN(tst_deskplotdrawing)
#include "tst_deskplotdrawing.moc"
