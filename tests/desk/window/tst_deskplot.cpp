#include "desktest.h"
#include "support/testmain.h"

#include <window/deskdata.h>
#include <window/deskplot.h>

#include <chain/chaintables.h>
#include <plot2d/pricebased2dplotcurve.h>
#include <plot2d/pricebased2dplotlegend.h>
#include <plot2d/pricebased2dplotpicker.h>
#include <plot2d/pricebased2dplotscaledraw.h>

#include <QRegularExpression>

#include <qwt_plot_grid.h>
#include <qwt_plot_marker.h>
#include <qwt_scale_map.h>
#include <qwt_scale_widget.h>

#include <cmath>

/// The plot of a series: its curves through the plot library, and what they look like in pixels.
class tst_deskplot : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void attachesValidCurves_data();
    void attachesValidCurves();
    void drawsTheForwardInItsColumn_data();
    void drawsTheForwardInItsColumn();
    void drawsTheSmileAlongItsPixels();
    void marksTradedStrikes();
    void fitsTheVisibleCurvesWithRoom();
    void labelsPercentInTheVolatilityView();
    void labelsStrikesRelativeToTheForward_data();
    void labelsStrikesRelativeToTheForward();
    void hidesWhatTheLegendUnchecks();
    void labelsFit_data();
    void labelsFit();
    void legendFits_data();
    void legendFits();
    void showsNothingAtAll();
    void resetsTheView();
    void tracksTheNearestPoint();
    void drawsOneStrike();

private:
    ShownSeries show(DeskView view, const SeriesFacts& given = SeriesFacts());
    QImage picture(const QSize& size = QSize(1000, 600));
    QRectF canvasRect() const { return m_plot->canvas()->geometry(); }

    std::unique_ptr<DeskData> m_data;
    std::unique_ptr<DeskPlot> m_plot;
    int m_futureIsinId = 0;
};

namespace {

constexpr QRgb smileColor = qRgb(0x00, 0x72, 0xb2);
constexpr QRgb markerColor = qRgb(0xe6, 0x9f, 0x00);
constexpr QRgb red = qRgb(255, 0, 0);

PriceBased2dPlotCurve* curveOf(const PriceBased2dPlot& plot, int type)
{
    const QList<PriceBased2dPlotCurve*> curves = plot.attachedCurves(type);
    return curves.size() == 1 ? curves.first() : nullptr;
}

}

void tst_deskplot::init()
{
    m_data = std::make_unique<DeskData>(QString());
    OptionChain chain = DeskTest::chain();
    for (OptionQuote& quote : chain.series.first().quotes)
        quote.volatility = DeskTest::volatility(quote.strike.toDouble());
    m_futureIsinId = m_data->import(chain, 0);
    m_plot = std::make_unique<DeskPlot>();
}

void tst_deskplot::cleanup()
{
    m_plot.reset();
    m_data.reset();
}

ShownSeries tst_deskplot::show(DeskView view, const SeriesFacts& given)
{
    const ShownSeries series = m_data->show(m_futureIsinId, given);
    m_plot->showSeries(m_futureIsinId, series, view);
    return series;
}

QImage tst_deskplot::picture(const QSize& size)
{
    m_plot->setAttribute(Qt::WA_DontShowOnScreen);
    m_plot->resize(size);
    m_plot->show();
    QCoreApplication::processEvents();
    return m_plot->grab().toImage();
}

void tst_deskplot::attachesValidCurves_data()
{
    QTest::addColumn<int>("view");
    QTest::addColumn<QVector<int>>("types");
    QTest::newRow("volatility") << int(DeskView::Volatility) << QVector<int>{9, 10, 13, 0};
    QTest::newRow("value") << int(DeskView::Value) << QVector<int>{11, 12, 13, 0};
}

void tst_deskplot::attachesValidCurves()
{
    QFETCH(int, view);
    QFETCH(QVector<int>, types);
    // The other view's curves leave nothing behind.
    show(DeskView(view) == DeskView::Value ? DeskView::Volatility : DeskView::Value);
    show(DeskView(view));
    QVector<int> attached;
    const QList<PriceBased2dPlotCurve*> curves = m_plot->attachedCurves(-1);
    for (const PriceBased2dPlotCurve* curve : curves) {
        attached.append(curve->dataType());
        QVERIFY2(curve->isValid(), qPrintable(curve->title().text()));
        QVERIFY(curve->isVisible());
    }
    std::sort(attached.begin(), attached.end());
    std::sort(types.begin(), types.end());
    QCOMPARE(attached, types);
    QVERIFY(!m_plot->getFuture().isNull());
    QCOMPARE(m_plot->itemList(QwtPlotItem::Rtti_PlotGrid).size(), 1);
}

void tst_deskplot::drawsTheForwardInItsColumn_data()
{
    QTest::addColumn<double>("forward");
    QTest::addColumn<int>("view");
    for (const double forward : {100.0, 93.37, 110.0}) {
        QTest::addRow("volatility, %g", forward) << forward << int(DeskView::Volatility);
        QTest::addRow("value, %g", forward) << forward << int(DeskView::Value);
    }
}

void tst_deskplot::drawsTheForwardInItsColumn()
{
    QFETCH(double, forward);
    QFETCH(int, view);
    SeriesFacts given;
    given.forward = forward;
    show(DeskView(view), given);
    const QImage image = picture();

    const PriceBased2dPlotCurve* line = curveOf(*m_plot, 0);
    QVERIFY(line);
    QCOMPARE(line->sample(0).x(), forward);
    QCOMPARE(line->sample(1).x(), forward);

    const double column = canvasRect().left() + m_plot->canvasMap(QwtPlot::xBottom).transform(forward);
    QMap<int, int> redColumns;
    const QRect canvas = canvasRect().toRect();
    for (int x = canvas.left(); x <= canvas.right(); ++x)
        redColumns[x] = DeskTest::countPixels(image.copy(x, canvas.top(), 1, canvas.height()), red);
    for (auto found = redColumns.cbegin(); found != redColumns.cend(); ++found) {
        // Curves and grid cross the line here and there.
        const bool isLine = found.value() > canvas.height() * 8 / 10;
        const bool expected = std::abs(found.key() + 0.5 - column) <= 1.0;
        QVERIFY2(!isLine || expected, qPrintable(QString::number(found.key())));
    }
    const int nearest = qFloor(column);
    const int height = std::max(redColumns.value(nearest), redColumns.value(qRound(column)));
    QVERIFY2(height > canvas.height() * 8 / 10, qPrintable(QString::number(height)));

    const auto* draw = dynamic_cast<PriceBased2dPlotScaleDraw*>(m_plot->axisScaleDraw(QwtPlot::xBottom));
    QVERIFY(draw);
    QVERIFY(draw->isCurKotirEnabled());
    QCOMPARE(draw->curKotirValue(), forward);
}

void tst_deskplot::drawsTheSmileAlongItsPixels()
{
    const ShownSeries series = show(DeskView::Volatility);
    const QImage image = picture();
    const QwtScaleMap xMap = m_plot->canvasMap(QwtPlot::xBottom);
    const QwtScaleMap yMap = m_plot->canvasMap(QwtPlot::yLeft);
    int looked = 0;
    // Between the points, where no marker lies over or under the curve.
    for (double strike = 71.25; strike < 130.0; strike += 2.5) {
        const double volatility = series.smile->volatility(strike).value_or(0.0);
        const QPointF position
            = canvasRect().topLeft() + QPointF(xMap.transform(strike), yMap.transform(volatility));
        const QRect around(qFloor(position.x()) - 1, qFloor(position.y()) - 3, 3, 7);
        QVERIFY2(
            DeskTest::countPixels(image.copy(around), smileColor) > 0, qPrintable(QString::number(strike)));
        ++looked;
    }
    QVERIFY(looked > 20);
}

void tst_deskplot::marksTradedStrikes()
{
    OptionChain chain = DeskTest::chain();
    QVector<OptionQuote>& quotes = chain.series.first().quotes;
    for (OptionQuote& quote : quotes)
        quote.volume
            = quote.strike == decimal::fromUnits(90, 0) || quote.strike == decimal::fromUnits(115, 0);
    m_futureIsinId = m_data->import(chain, 0);
    show(DeskView::Volatility);
    const QList<QwtPlotMarker*> markers = m_plot->attachedMarkers();
    QCOMPARE(markers.size(), 2);
    QCOMPARE(markers[0]->xValue(), 90.0);
    QCOMPARE(markers[1]->xValue(), 115.0);
    for (const QwtPlotMarker* marker : markers)
        QVERIFY(std::abs(marker->yValue() - DeskTest::volatility(marker->xValue())) < 2e-3);

    const QImage image = picture();
    const QwtScaleMap xMap = m_plot->canvasMap(QwtPlot::xBottom);
    const QwtScaleMap yMap = m_plot->canvasMap(QwtPlot::yLeft);
    const auto orangePixels = [&](double strike) {
        const QPointF position = canvasRect().topLeft()
            + QPointF(xMap.transform(strike), yMap.transform(DeskTest::volatility(strike)));
        return DeskTest::countPixels(
            image.copy(qRound(position.x()) - 5, qRound(position.y()) - 5, 10, 10), markerColor);
    };
    QVERIFY(orangePixels(90.0) > 25);
    QVERIFY(orangePixels(115.0) > 25);
    QVERIFY(orangePixels(95.0) < 15);
}

void tst_deskplot::fitsTheVisibleCurvesWithRoom()
{
    show(DeskView::Volatility);
    const QwtInterval prices = m_plot->axisScaleDiv(QwtPlot::xBottom).interval();
    double low = 1e9;
    double high = 0.0;
    for (const int type : {9, 10, 13}) {
        const PriceBased2dPlotCurve* curve = curveOf(*m_plot, type);
        QVERIFY(curve);
        for (int i = 0; i < int(curve->dataSize()); ++i) {
            const QPointF sample = curve->sample(i);
            if (!prices.contains(sample.x()))
                continue;
            low = std::min(low, sample.y());
            high = std::max(high, sample.y());
        }
    }
    const QwtInterval values = m_plot->axisScaleDiv(QwtPlot::yLeft).interval();
    QVERIFY(values.minValue() < low && values.minValue() > low - 0.1 * (high - low));
    QVERIFY(values.maxValue() > high && values.maxValue() < high + 0.1 * (high - low));
}

void tst_deskplot::labelsPercentInTheVolatilityView()
{
    const auto* draw = dynamic_cast<PriceBased2dPlotScaleDraw*>(m_plot->axisScaleDraw(QwtPlot::yLeft));
    QVERIFY(draw);
    show(DeskView::Volatility);
    QCOMPARE(draw->label(0.3).text(), QStringLiteral("30%"));
    QCOMPARE(m_plot->axisTitle(QwtPlot::yLeft).text(), QStringLiteral("Volatility"));
    QCOMPARE(m_plot->axisTitle(QwtPlot::xBottom).text(), QStringLiteral("Strike"));
    show(DeskView::Value);
    QCOMPARE(draw->label(3.0).text(), QStringLiteral("3"));
    QCOMPARE(m_plot->axisTitle(QwtPlot::yLeft).text(), QStringLiteral("Value"));
}

void tst_deskplot::labelsStrikesRelativeToTheForward_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<QString>("atForward");
    QTest::newRow("points") << int(AxisMode::PointsFromQuote) << "[-+]?[0-9.]+"
                            << "0";
    QTest::newRow("percent") << int(AxisMode::PercentOfQuote) << "[0-9]+(\\.[0-9]{1,2})?%"
                             << "100%";
}

void tst_deskplot::labelsStrikesRelativeToTheForward()
{
    QFETCH(int, mode);
    QFETCH(QString, pattern);
    QFETCH(QString, atForward);
    const double forward = show(DeskView::Volatility).market.forward;
    m_plot->setAxisMode(AxisMode(mode));

    const QRegularExpression label(QRegularExpression::anchoredPattern(pattern));
    const QwtInterval all = m_plot->axisScaleDiv(QwtPlot::xBottom).interval();
    for (const double part : {1.0, 0.5, 0.1}) {
        m_plot->setAxisScale(QwtPlot::xBottom, forward - part * (forward - all.minValue()),
            forward + part * (all.maxValue() - forward), 0.0);
        m_plot->replot();
        const QList<double> ticks = m_plot->axisScaleDiv(QwtPlot::xBottom).ticks(QwtScaleDiv::MajorTick);
        QVERIFY(ticks.size() >= 2);
        QVERIFY(ticks.contains(forward));
        QCOMPARE(m_plot->xAxisConvertedValue(forward), atForward);
        for (const double tick : ticks) {
            const QString text = m_plot->xAxisConvertedValue(tick);
            QVERIFY2(label.match(text).hasMatch(), qPrintable(text));
        }
    }
    m_plot->setAxisMode(AxisMode::Price);
    QVERIFY(!m_plot->conversionEnabled(QwtPlot::xBottom));
}

void tst_deskplot::hidesWhatTheLegendUnchecks()
{
    show(DeskView::Volatility);
    auto* legend = m_plot->findChild<PriceBased2dPlotLegend*>();
    QVERIFY(legend);
    QCOMPARE(legend->findChildren<LabelWidget*>().size(), 4);
    legend->setCheckBoxChecked(QStringLiteral("Smile"), false);
    QVERIFY(!curveOf(*m_plot, 9)->isVisible());
    legend->setCheckBoxChecked(QStringLiteral("Forward"), false);
    QVERIFY(!curveOf(*m_plot, 0)->isVisible());
    QCOMPARE(DeskTest::countPixels(picture().copy(canvasRect().toRect()), red), 0);

    // The choice holds for the next series.
    show(DeskView::Volatility);
    QVERIFY(!curveOf(*m_plot, 9)->isVisible());
    QVERIFY(!curveOf(*m_plot, 0)->isVisible());
    legend->setCheckBoxChecked(QStringLiteral("Smile"), true);
    legend->setCheckBoxChecked(QStringLiteral("Forward"), true);
    QVERIFY(curveOf(*m_plot, 9)->isVisible());
    QVERIFY(DeskTest::countPixels(picture().copy(canvasRect().toRect()), red) > 100);
}

void tst_deskplot::labelsFit_data()
{
    QTest::addColumn<double>("low");
    QTest::addColumn<double>("high");
    QTest::newRow("as shown first") << 0.0 << 0.0;
    // Ends of the axis next to a labelled price.
    QTest::newRow("labels at the ends") << 70.0 << 130.0;
    QTest::newRow("just inside") << 69.9 << 130.1;
    QTest::newRow("medium ticks at the ends") << 29.9 << 170.1;
}

void tst_deskplot::labelsFit()
{
    QFETCH(double, low);
    QFETCH(double, high);
    show(DeskView::Volatility);
    if (low < high)
        m_plot->setAxisScale(QwtPlot::xBottom, low, high, 0.0);
    picture();
    const QwtScaleWidget* axis = m_plot->axisWidget(QwtPlot::xBottom);
    const QwtScaleDraw* draw = axis->scaleDraw();
    int looked = 0;
    for (const int type : {int(QwtScaleDiv::MajorTick), int(QwtScaleDiv::MediumTick)}) {
        const QList<double> ticks = draw->scaleDiv().ticks(type);
        for (const double tick : ticks) {
            const QRect label = draw->boundingLabelRect(axis->font(), tick);
            QVERIFY2(axis->rect().contains(label), qPrintable(QString::number(tick)));
            ++looked;
        }
    }
    QVERIFY(looked > 4);
}

void tst_deskplot::legendFits_data()
{
    QTest::addColumn<QSize>("size");
    QTest::newRow("small") << QSize(560, 330);
    QTest::newRow("default") << QSize(1000, 560);
    QTest::newRow("large") << QSize(1900, 1000);
}

void tst_deskplot::legendFits()
{
    QFETCH(QSize, size);
    show(DeskView::Volatility);
    picture(size);
    const auto* legend = m_plot->findChild<PriceBased2dPlotLegend*>();
    const QList<LabelWidget*> entries = legend->findChildren<LabelWidget*>();
    QCOMPARE(entries.size(), 4);
    for (const LabelWidget* entry : entries) {
        const QRect place(entry->mapTo(legend, QPoint()), entry->size());
        QVERIFY(legend->rect().contains(place));
        QVERIFY(entry->width() >= entry->sizeHint().width());
    }
}

void tst_deskplot::showsNothingAtAll()
{
    show(DeskView::Volatility);
    m_plot->showNothing(QStringLiteral("the reason"));
    QVERIFY(m_plot->attachedCurves(-1).isEmpty());
    QVERIFY(m_plot->itemList(QwtPlotItem::Rtti_PlotMarker).isEmpty());
    QCOMPARE(m_plot->title().text(), QStringLiteral("the reason"));
    QCOMPARE(DeskTest::countPixels(picture(), red), 0);
}

void tst_deskplot::resetsTheView()
{
    show(DeskView::Volatility);
    const QwtInterval prices = m_plot->axisScaleDiv(QwtPlot::xBottom).interval();
    const QwtInterval values = m_plot->axisScaleDiv(QwtPlot::yLeft).interval();
    m_plot->setAutoScaleEnabled(false);
    m_plot->setAxisScale(QwtPlot::xBottom, 95.0, 105.0, 0.0);
    m_plot->setAxisScale(QwtPlot::yLeft, 0.0, 5.0, 0.0);
    m_plot->updateAxes();
    QVERIFY(m_plot->axisScaleDiv(QwtPlot::xBottom).interval() != prices);
    m_plot->resetView();
    QCOMPARE(m_plot->axisScaleDiv(QwtPlot::xBottom).interval(), prices);
    QCOMPARE(m_plot->axisScaleDiv(QwtPlot::yLeft).interval(), values);
    QVERIFY(m_plot->autoScaleEnabled());
}

void tst_deskplot::tracksTheNearestPoint()
{
    show(DeskView::Volatility);
    picture();
    auto* legend = m_plot->findChild<PriceBased2dPlotLegend*>();
    for (const char* title : {"Smile", "Stated volatility"})
        legend->setCheckBoxChecked(QLatin1String(title), false);
    picture();
    const PriceBased2dPlotCurve* points = curveOf(*m_plot, 13);
    const QPointF sample = points->sample(int(points->dataSize()) / 2);
    const QPointF position(m_plot->canvasMap(QwtPlot::xBottom).transform(sample.x()),
        m_plot->canvasMap(QwtPlot::yLeft).transform(sample.y()));
    QMouseEvent move(QEvent::MouseMove, position + QPointF(2.0, 2.0), position + QPointF(2.0, 2.0),
        QCursor::pos(), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(m_plot->canvas(), &move);
    const auto* picker = m_plot->findChild<PriceBased2dPlotPicker*>();
    QVERIFY(picker);
    QCOMPARE(picker->priceStep(), 0.01);
    const QString text = picker->trackerText(QPoint()).text();
    QVERIFY2(text.startsWith(QStringLiteral("Implied volatility\n")) && text.endsWith(QLatin1Char('%')),
        qPrintable(text));
    QVERIFY2(text.contains(m_plot->xAxisConvertedValue(sample.x())), qPrintable(text));
}

void tst_deskplot::drawsOneStrike()
{
    OptionChain chain = DeskTest::chain();
    QVector<OptionQuote>& quotes = chain.series.first().quotes;
    quotes.erase(std::remove_if(quotes.begin(), quotes.end(),
                     [](const OptionQuote& quote) { return quote.strike != decimal::fromUnits(105, 0); }),
        quotes.end());
    m_futureIsinId = m_data->import(chain, 0);
    show(DeskView::Volatility);
    QVERIFY(m_plot->priceInterval().valid);
    QVERIFY(curveOf(*m_plot, 0)->isVisible());
    QVERIFY(curveOf(*m_plot, 9));
    QVERIFY(DeskTest::countPixels(picture(), red) > 100);
}

PLOT2D_TEST_MAIN(tst_deskplot)
#include "tst_deskplot.moc"
