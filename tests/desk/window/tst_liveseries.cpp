#include "desktest.h"
#include "livetable.h"
#include "support/testmain.h"

#include <window/deskdata.h>
#include <window/deskplot.h>
#include <window/deskwindow.h>
#include <window/seriesfollower.h>

#include <database/table.h>
#include <plot2d/pricebased2dplotcurve.h>
#include <plot2d/pricebased2dplotlegend.h>
#include <plot2d/pricebased2dplotpointmanager.h>
#include <plot2d/pricebased2dplotscaledraw.h>

#include <QWheelEvent>

#include <qwt_plot_layout.h>

/// The way from the host's table to the curves while the window is open.
class tst_liveseries : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void evaluatesAtThePlotPoints_data();
    void evaluatesAtThePlotPoints();
    void insertedStrikesReachTheSamples();
    void removedStrikesLeaveTheSamples();
    void zoomRefinesTheSamples_data();
    void zoomRefinesTheSamples();
    void refinesAfterWheelAndDrag();
    void gathersChanges();
    void hearsItsSeriesOnly();
    void keepsViewAndChoice();
    void followsTheAutoScale();
    void followsTheQuote();
    void anchorsTheTicksOnTheQuote_data();
    void anchorsTheTicksOnTheQuote();
    void keepsTheQuoteOfTheFeed();
    void comesBackWithItsPrices();

private:
    DeskPlot& plot() const { return *m_window->plot(); }
    PriceBased2dPlotCurve* curve(int type) const { return plot().attachedCurves(type).value(0); }
    QVector<Record> options() const { return LiveTable::options(m_futureIsinId); }
    void zoom(double low, double high) const;
    int visibleSamples(int type) const;

    std::unique_ptr<DeskData> m_data;
    std::unique_ptr<DeskWindow> m_window;
    std::unique_ptr<QSignalSpy> m_updates;
    int m_futureIsinId = 0;
};

namespace {

constexpr int smileType = 9;
constexpr int callType = 11;

}

void tst_liveseries::init()
{
    m_data = std::make_unique<DeskData>(QString());
    m_futureIsinId = m_data->import(DeskTest::chain(), 0);
    m_window = std::make_unique<DeskWindow>(*m_data, DeskView::Volatility);
    m_window->setAttribute(Qt::WA_DontShowOnScreen);
    m_window->resize(1000, 600);
    m_window->showSeries(m_futureIsinId, SeriesFacts());
    m_window->show();
    QCoreApplication::processEvents();
    m_updates = std::make_unique<QSignalSpy>(m_window->findChild<SeriesFollower*>(), SIGNAL(changed()));
}

void tst_liveseries::cleanup()
{
    m_updates.reset();
    m_window.reset();
    m_data.reset();
}

void tst_liveseries::zoom(double low, double high) const
{
    plot().setAxisScale(QwtPlot::xBottom, low, high, 0.0);
    plot().replot();
    Q_EMIT plot().updateAxisLabels();
}

int tst_liveseries::visibleSamples(int type) const
{
    const QwtInterval prices = plot().axisScaleDiv(QwtPlot::xBottom).interval();
    int count = 0;
    for (int i = 0; i < int(curve(type)->dataSize()); ++i)
        count += prices.contains(curve(type)->sample(i).x()) ? 1 : 0;
    return count;
}

void tst_liveseries::evaluatesAtThePlotPoints_data()
{
    QTest::addColumn<double>("low");
    QTest::addColumn<double>("high");
    QTest::newRow("all") << 58.0 << 142.0;
    QTest::newRow("some strikes") << 88.0 << 112.0;
    QTest::newRow("price steps") << 99.9 << 100.6;
}

void tst_liveseries::evaluatesAtThePlotPoints()
{
    QFETCH(double, low);
    QFETCH(double, high);
    zoom(low, high);
    const PriceInterval interval = plot().priceInterval();
    QVERIFY(interval.valid);
    QCOMPARE(interval.minPrice, 60.0);
    QCOMPARE(interval.maxPrice, 140.0);
    QCOMPARE(interval.minStep, 2.5);

    auto* points = plot().findChild<PriceBased2dPlotPointManager*>();
    QVERIFY(points);
    const QList<double> wanted = points->calcPlotPoints(false);
    QVERIFY(wanted.size() > 30);
    QSet<double> evaluated;
    for (int i = 0; i < int(curve(smileType)->dataSize()); ++i)
        evaluated.insert(curve(smileType)->sample(i).x());
    const auto& smile = *m_window->shownSeries()->smile;
    int looked = 0;
    for (const double point : wanted) {
        if (point < qMax(low, smile.minStrike()) || point > qMin(high, smile.maxStrike()))
            continue;
        QVERIFY2(evaluated.contains(point), qPrintable(QString::number(point)));
        ++looked;
    }
    QVERIFY(looked > 40);
}

void tst_liveseries::insertedStrikesReachTheSamples()
{
    const auto* points = plot().findChild<PriceBased2dPlotPointManager*>();
    QSignalSpy intervals(points, SIGNAL(priceIntervalChanged(PriceInterval)));
    const PriceBased2dPlotCurve* smile = curve(smileType);
    const double lastBefore = smile->sample(int(smile->dataSize()) - 1).x();
    LiveTable::addStrikes(m_futureIsinId, {142.5, 145.0});
    QCOMPARE(intervals.size(), 1);
    QCOMPARE(plot().priceInterval().maxPrice, 145.0);
    QTRY_COMPARE(m_updates->size(), 1);
    QCOMPARE(curve(smileType), smile);
    QVERIFY(lastBefore <= 140.0);
    QCOMPARE(smile->sample(int(smile->dataSize()) - 1).x(), 145.0);
    QCOMPARE(m_window->shownSeries()->data.options.quotes.size(), 2 * (DeskTest::strikeCount + 2));

    // A finer grid of strikes between the others.
    LiveTable::addStrikes(m_futureIsinId, {98.7});
    QVERIFY(qFuzzyCompare(plot().priceInterval().minStep, 1.2));
    QTRY_COMPARE(m_updates->size(), 2);
    QVERIFY(!intervals.isEmpty());
}

void tst_liveseries::removedStrikesLeaveTheSamples()
{
    QVector<Record> gone;
    const QVector<Record> all = options();
    const int strike = all.first().table()->columnIndex(QStringLiteral("strike"));
    for (const Record& record : all) {
        if (record.value(strike).toDecimal() != decimal::fromUnits(100, 0))
            gone.append(record);
    }
    all.first().table()->removeRows(gone);
    QTRY_COMPARE(m_updates->size(), 1);
    // One strike has no interval of its own, and still a forward to show.
    QVERIFY(plot().priceInterval().valid);
    QCOMPARE(plot().priceInterval().minPrice, 99.99);
    QCOMPARE(plot().priceInterval().maxPrice, 100.01);
    QCOMPARE(int(curve(smileType)->dataSize()), 1);
    QVERIFY(curve(0)->isVisible());

    all.first().table()->appendRows(gone);
    QTRY_COMPARE(m_updates->size(), 2);
    QCOMPARE(plot().priceInterval().minPrice, 60.0);
    QVERIFY(visibleSamples(smileType) > 90);
}

void tst_liveseries::zoomRefinesTheSamples_data()
{
    QTest::addColumn<double>("low");
    QTest::addColumn<double>("high");
    QTest::newRow("all") << 60.0 << 140.0;
    QTest::newRow("a quarter") << 90.0 << 110.0;
    QTest::newRow("three strikes") << 98.0 << 104.0;
    QTest::newRow("between two strikes") << 100.5 << 102.4;
    QTest::newRow("under a hundred price steps") << 100.0 << 100.2;
    QTest::newRow("over the end") << 130.0 << 141.0;
}

void tst_liveseries::zoomRefinesTheSamples()
{
    QFETCH(double, low);
    QFETCH(double, high);
    for (const DeskView view : {DeskView::Volatility, DeskView::Value}) {
        plot().showSeries(m_futureIsinId, *m_window->shownSeries(), view);
        zoom(low, high);
        for (const int type : view == DeskView::Volatility ? QVector<int>{9} : QVector<int>{11, 12}) {
            const int visible = visibleSamples(type);
            QVERIFY2(visible >= 90 && visible < 400, qPrintable(QString::number(visible)));
            QVERIFY2(curve(type)->dataSize() < 1000, qPrintable(QString::number(curve(type)->dataSize())));
        }
    }
}

void tst_liveseries::refinesAfterWheelAndDrag()
{
    const QPointF middle = plot().canvas()->geometry().center();
    // The plot asks where the cursor is.
    QCursor::setPos(plot().mapToGlobal(middle.toPoint()));
    for (int i = 0; i < 60 && plot().axisScaleDiv(QwtPlot::xBottom).interval().width() > 30.0; ++i) {
        QWheelEvent wheel(middle, plot().mapToGlobal(middle.toPoint()), QPoint(), QPoint(0, 120),
            Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&plot(), &wheel);
    }
    QVERIFY(plot().axisScaleDiv(QwtPlot::xBottom).interval().width() <= 30.0);
    QVERIFY(visibleSamples(smileType) >= 90);

    const QPoint onScale = plot().plotLayout()->scaleRect(QwtPlot::xBottom).center().toPoint();
    const double width = plot().axisScaleDiv(QwtPlot::xBottom).interval().width();
    QTest::mousePress(&plot(), Qt::LeftButton, Qt::NoModifier, onScale);
    for (int i = 1; i < 12; ++i) {
        QMouseEvent move(QEvent::MouseMove, onScale - QPoint(10 * i, 0), onScale - QPoint(10 * i, 0),
            QCursor::pos(), Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&plot(), &move);
    }
    QVERIFY(plot().axisScaleDiv(QwtPlot::xBottom).interval().width() < width / 2.0);
    QVERIFY(visibleSamples(smileType) >= 90);
}

void tst_liveseries::gathersChanges()
{
    for (int i = 0; i < 50; ++i)
        LiveTable::price(options(), 100.0, 0.001 * i);
    QCOMPARE(m_updates->size(), 0);
    QTRY_COMPARE(m_updates->size(), 1);
    QElapsedTimer clock;
    clock.start();
    const double volatility = m_window->shownSeries()->smile->volatility(100.0).value_or(0.0);
    QVERIFY(std::abs(volatility - DeskTest::volatility(100.0) - 0.049) < 1e-3);

    for (int i = 0; i < 50; ++i) {
        LiveTable::price(options(), 100.0, 0.1);
        QCoreApplication::processEvents();
    }
    QTRY_VERIFY(m_updates->size() >= 2);
    QVERIFY(m_updates->size() - 1 <= clock.elapsed() / SeriesFollower::shortestPause);
}

void tst_liveseries::hearsItsSeriesOnly()
{
    const int other = m_data->import(DeskTest::chain(QStringLiteral("OTHER")), 0);
    // The import took the loan back; the window lends it again where it has imported itself.
    QTRY_COMPARE(m_updates->size(), 1);
    QVERIFY(!m_updates->wait(4 * SeriesFollower::shortestPause));
    LiveTable::price(LiveTable::options(other), 100.0, 0.1);
    LiveTable::setQuote(other, 90.0);
    QVERIFY(!m_updates->wait(4 * SeriesFollower::shortestPause));
    LiveTable::price({options().first()}, 100.0, 0.1);
    QTRY_COMPARE(m_updates->size(), 2);
}

void tst_liveseries::keepsViewAndChoice()
{
    zoom(92.0, 109.0);
    plot().resetAutoScale();
    plot().setAxisScale(QwtPlot::yLeft, 0.2, 0.5, 0.0);
    plot().replot();
    auto* legend = plot().findChild<PriceBased2dPlotLegend*>();
    legend->setCheckBoxChecked(QStringLiteral("Smile"), false);
    const QwtInterval prices = plot().axisScaleDiv(QwtPlot::xBottom).interval();
    const QwtInterval values = plot().axisScaleDiv(QwtPlot::yLeft).interval();
    const QList<PriceBased2dPlotCurve*> curves = plot().attachedCurves(-1);
    const double before = curve(13)->sample(10).y();

    LiveTable::price(options(), 101.0, 0.05);
    QTRY_COMPARE(m_updates->size(), 1);
    QCOMPARE(plot().attachedCurves(-1), curves);
    QVERIFY(std::abs(curve(13)->sample(10).y() - before - 0.05) < 2e-3);
    QCOMPARE(plot().axisScaleDiv(QwtPlot::xBottom).interval(), prices);
    QCOMPARE(plot().axisScaleDiv(QwtPlot::yLeft).interval(), values);
    QVERIFY(!plot().autoScaleEnabled());
    // Without a quote of the future the forward moves with the options' prices.
    QVERIFY(std::abs(curve(0)->sample(0).x() - 101.0) < 1e-3);
    QVERIFY(!curve(smileType)->isVisible());
    bool found = false;
    QVERIFY(!legend->isCheckBoxChecked(QStringLiteral("Smile"), &found) && found);

    // A curve that comes anew is as the user left it.
    LiveTable::takePrices(options());
    QTRY_VERIFY(!m_window->shownSeries().has_value());
    LiveTable::price(options(), 100.0, 0.0);
    QTRY_VERIFY(m_window->shownSeries().has_value());
    QVERIFY(!curve(smileType)->isVisible());
}

void tst_liveseries::followsTheAutoScale()
{
    const double top = plot().axisScaleDiv(QwtPlot::yLeft).upperBound();
    LiveTable::price(options(), 100.0, 0.2);
    QTRY_COMPARE(m_updates->size(), 1);
    QVERIFY(plot().autoScaleEnabled());
    QVERIFY(plot().axisScaleDiv(QwtPlot::yLeft).upperBound() > top + 0.1);
}

void tst_liveseries::followsTheQuote()
{
    plot().setAxisMode(AxisMode::PointsFromQuote);
    const auto* draw = dynamic_cast<PriceBased2dPlotScaleDraw*>(plot().axisScaleDraw(QwtPlot::xBottom));
    QCOMPARE(LiveTable::quote(m_futureIsinId), QStringLiteral("100"));
    LiveTable::setQuote(m_futureIsinId, 103.5);
    QTRY_COMPARE(m_updates->size(), 1);
    QCOMPARE(curve(0)->sample(0).x(), 103.5);
    QCOMPARE(draw->curKotirValue(), 103.5);
    QCOMPARE(plot().xAxisConvertedValue(103.5), QStringLiteral("0"));
    QCOMPARE(m_window->shownSeries()->forwardSource, ForwardSource::Stated);
    // The desk does not hear itself.
    QVERIFY(!m_updates->wait(4 * SeriesFollower::shortestPause));

    QVERIFY(curve(0)->isVisible());
    LiveTable::setQuote(m_futureIsinId, 101.25);
    QTRY_COMPARE(m_updates->size(), 2);
    QCOMPARE(curve(0)->sample(1).x(), 101.25);
}

void tst_liveseries::anchorsTheTicksOnTheQuote_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<QStringList>("labels");
    QTest::newRow("points") << int(AxisMode::PointsFromQuote) << QStringList{"-10", "-5", "0", "+5", "+10"};
    QTest::newRow("percent") << int(AxisMode::PercentOfQuote)
                             << QStringList{"90%", "95%", "100%", "105%", "110%"};
}

void tst_liveseries::anchorsTheTicksOnTheQuote()
{
    QFETCH(int, mode);
    QFETCH(QStringList, labels);
    plot().setAxisMode(AxisMode(mode));
    zoom(90.0, 117.0);
    for (const double quote : {103.07, 102.91, 103.5}) {
        m_updates->clear();
        LiveTable::setQuote(m_futureIsinId, quote);
        QTRY_COMPARE(m_updates->size(), 1);
        QStringList shown;
        for (const double tick : plot().axisScaleDiv(QwtPlot::xBottom).ticks(QwtScaleDiv::MajorTick))
            shown.append(plot().xAxisConvertedValue(tick));
        for (const QString& label : qAsConst(labels))
            QVERIFY2(shown.contains(label), qPrintable(shown.join(QLatin1Char(' '))));
        QCOMPARE(plot().axisScaleDiv(QwtPlot::xBottom).interval(), QwtInterval(90.0, 117.0));
    }
}

void tst_liveseries::keepsTheQuoteOfTheFeed()
{
    SeriesFacts given;
    given.forward = 97.0;
    m_window->showSeries(m_futureIsinId, given);
    QCOMPARE(LiveTable::quote(m_futureIsinId), QStringLiteral("97"));
    LiveTable::setQuote(m_futureIsinId, 103.5);
    QTRY_COMPARE(m_updates->size(), 1);
    // What the user states has precedence, on the plot alone.
    QCOMPARE(curve(0)->sample(0).x(), 97.0);
    QVERIFY(!m_updates->wait(4 * SeriesFollower::shortestPause));
    m_window.reset();
    m_data.reset();
    QCOMPARE(LiveTable::quote(m_futureIsinId), QStringLiteral("103.5"));
}

void tst_liveseries::comesBackWithItsPrices()
{
    LiveTable::takePrices(options());
    QTRY_VERIFY(!m_window->shownSeries().has_value());
    QVERIFY(plot().attachedCurves(-1).isEmpty());
    QCOMPARE(LiveTable::quote(m_futureIsinId), QString());
    LiveTable::price(options(), 104.0, 0.0);
    QTRY_VERIFY(m_window->shownSeries().has_value());
    QVERIFY(std::abs(curve(0)->sample(0).x() - 104.0) < 1e-3);
    QVERIFY(curve(smileType));
    QVERIFY(!curve(callType));
}

PLOT2D_TEST_MAIN(tst_liveseries)
#include "tst_liveseries.moc"
