#include "support/testmain.h"

#include <window/viewfit.h>

#include <cmath>
#include <limits>
#include <random>

namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

/// No range.
const QwtInterval none;

bool isAbout(const QwtInterval& range, const QwtInterval& expected)
{
    const double tolerance = 1e-12 * std::abs(expected.maxValue());
    return std::abs(range.minValue() - expected.minValue()) <= tolerance
        && std::abs(range.maxValue() - expected.maxValue()) <= tolerance;
}

QByteArray inFull(const QwtInterval& range)
{
    return QByteArray::number(range.minValue(), 'g', 17) + " to "
        + QByteArray::number(range.maxValue(), 'g', 17);
}

QRectF data(double left, double right, double low, double high)
{
    return QRectF(QPointF(left, low), QPointF(right, high));
}

#define COMPARE_RANGES(range, expected) QVERIFY2(isAbout(range, expected), inFull(range))

}

/// The views that the desk finds by itself.
class tst_viewfit : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void fitsPrices_data();
    void fitsPrices();
    void fitsValues_data();
    void fitsValues();
    void zoomsIn_data();
    void zoomsIn();
    void zoomsOut_data();
    void zoomsOut();
    void refuses_data();
    void refuses();
    void zoomingOutComesToAnEnd();
};

void tst_viewfit::fitsPrices_data()
{
    QTest::addColumn<QRectF>("curves");
    QTest::addColumn<double>("step");
    QTest::addColumn<QwtInterval>("expected");
    QTest::newRow("all prices") << data(50.0, 150.0, 0.2, 0.3) << 2.5 << QwtInterval(48.0, 152.0);
    QTest::newRow("one value") << data(50.0, 150.0, 0.2, 0.2) << 2.5 << QwtInterval(48.0, 152.0);
    QTest::newRow("negative prices") << data(-100.0, 0.0, 0.2, 0.3) << 2.5 << QwtInterval(-102.0, 2.0);
    QTest::newRow("one price") << data(100.0, 100.0, 0.2, 0.3) << 2.5 << QwtInterval(97.5, 102.5);
    QTest::newRow("one price, no step") << data(100.0, 100.0, 0.2, 0.3) << 0.0 << none;
    QTest::newRow("one price, negative step") << data(100.0, 100.0, 0.2, 0.3) << -1.0 << none;
    QTest::newRow("no data") << QRectF() << 2.5 << none;
    QTest::newRow("infinite price") << data(50.0, infinity, 0.2, 0.3) << 2.5 << none;
    QTest::newRow("price of NaN") << data(notANumber, 150.0, 0.2, 0.3) << 2.5 << none;
    QTest::newRow("widest of all") << data(-1e308, 1e308, 0.2, 0.3) << 2.5 << none;
    QTest::newRow("no room beside the data") << data(0.0, 1.79e308, 0.2, 0.3) << 2.5 << none;
}

void tst_viewfit::fitsPrices()
{
    QFETCH(QRectF, curves);
    QFETCH(double, step);
    QFETCH(QwtInterval, expected);
    const auto prices = ViewFit::allPrices(curves, step);
    QCOMPARE(prices.has_value(), expected != none);
    if (prices)
        COMPARE_RANGES(*prices, expected);
}

void tst_viewfit::fitsValues_data()
{
    QTest::addColumn<double>("low");
    QTest::addColumn<double>("high");
    QTest::addColumn<QwtInterval>("values");
    QTest::addColumn<QwtInterval>("volatilities");
    const auto row = [](const char* name, double low, double high, const QwtInterval& values,
                         const QwtInterval& volatilities) {
        QTest::newRow(name) << low << high << values << volatilities;
    };
    row("spread", 0.2, 0.6, QwtInterval(0.18, 0.62), QwtInterval(0.18, 0.62));
    row("close to nothing", 0.01, 1.01, QwtInterval(-0.04, 1.06), QwtInterval(0.0, 1.06));
    row("one", 0.25, 0.25, QwtInterval(0.25, 0.25), QwtInterval(0.125, 0.375));
    row("as good as one", 0.4, 0.4 + 1e-9, QwtInterval(0.4 - 5e-11, 0.4 + 1.05e-9),
        QwtInterval(0.2, 0.6 + 1.5e-9));
    row("nothing", 0.0, 0.0, QwtInterval(0.0, 0.0), QwtInterval(0.0, 1.0));
    row("no range", 1.0, -1.0, QwtInterval(1.0, -1.0), QwtInterval(1.0, -1.0));
}

void tst_viewfit::fitsValues()
{
    QFETCH(double, low);
    QFETCH(double, high);
    QFETCH(QwtInterval, values);
    QFETCH(QwtInterval, volatilities);
    const auto [lowest, highest] = ViewFit::allValues(low, high);
    COMPARE_RANGES(QwtInterval(lowest, highest), values);
    const auto [lowestOfAll, highestOfAll] = ViewFit::allVolatilities(low, high);
    COMPARE_RANGES(QwtInterval(lowestOfAll, highestOfAll), volatilities);
}

void tst_viewfit::zoomsIn_data()
{
    QTest::addColumn<QRectF>("curves");
    QTest::addColumn<double>("step");
    QTest::addColumn<double>("height");
    QTest::addColumn<QwtInterval>("prices");
    QTest::addColumn<QwtInterval>("values");
    const QRectF wide = data(0.0, 1000.0, 0.0, 100.0);
    QTest::newRow("about the middle")
        << wide << 1.0 << 20.0 << QwtInterval(410.0, 590.0) << QwtInterval(41.0, 59.0);
    QTest::newRow("hardly wide enough")
        << wide << 179.999 << 20.0 << QwtInterval(410.0, 590.0) << QwtInterval(41.0, 59.0);
    QTest::newRow("too narrow") << wide << 180.001 << 20.0 << none << none;
    QTest::newRow("hardly high enough")
        << wide << 1.0 << 1.2e-8 << QwtInterval(410.0, 590.0) << QwtInterval(50.0 - 0.54e-8, 50.0 + 0.54e-8);
    QTest::newRow("too low") << wide << 1.0 << 1.1e-8 << none << none;
    QTest::newRow("data beside the view")
        << data(0.0, 10.0, 0.0, 100.0) << 1.0 << 20.0 << QwtInterval(410.0, 590.0) << QwtInterval(41.0, 59.0);
    QTest::newRow("low data") << data(0.0, 1000.0, 0.0, 10.0) << 1.0 << 20.0 << QwtInterval(410.0, 590.0)
                              << QwtInterval(50.0, 59.0);
}

void tst_viewfit::zoomsIn()
{
    QFETCH(QRectF, curves);
    QFETCH(double, step);
    QFETCH(double, height);
    QFETCH(QwtInterval, prices);
    QFETCH(QwtInterval, values);
    const QwtInterval shownValues(50.0 - height / 2.0, 50.0 + height / 2.0);
    const auto zoomed = ViewFit::zoomedIn({{400.0, 600.0}, shownValues, curves}, step);
    QCOMPARE(zoomed.has_value(), prices != none);
    if (!zoomed)
        return;
    COMPARE_RANGES(zoomed->prices, prices);
    COMPARE_RANGES(zoomed->values, values);
}

void tst_viewfit::zoomsOut_data()
{
    QTest::addColumn<QRectF>("curves");
    QTest::addColumn<QwtInterval>("prices");
    QTest::addColumn<QwtInterval>("values");
    const QwtInterval samePrices(400.0, 600.0);
    const QwtInterval morePrices(390.0, 610.0);
    const QwtInterval sameValues(40.0, 60.0);
    const QwtInterval moreValues(39.0, 61.0);
    QTest::newRow("about the middle") << data(0.0, 1000.0, 0.0, 100.0) << morePrices << moreValues;
    QTest::newRow("left end visible")
        << data(450.0, 1000.0, 0.0, 100.0) << QwtInterval(400.0, 620.0) << moreValues;
    QTest::newRow("right end visible")
        << data(0.0, 550.0, 0.0, 100.0) << QwtInterval(380.0, 600.0) << moreValues;
    QTest::newRow("right end at the edge") << data(0.0, 600.0, 0.0, 100.0) << morePrices << moreValues;
    QTest::newRow("all prices visible") << data(450.0, 550.0, 0.0, 100.0) << samePrices << moreValues;
    QTest::newRow("all prices, as wide") << data(400.0, 600.0, 0.0, 100.0) << samePrices << moreValues;
    QTest::newRow("as wide, elsewhere") << data(500.0, 700.0, 0.0, 100.0) << samePrices << moreValues;
    QTest::newRow("lowest value visible")
        << data(0.0, 1000.0, 50.0, 100.0) << morePrices << QwtInterval(40.0, 62.0);
    QTest::newRow("highest value visible")
        << data(0.0, 1000.0, 0.0, 50.0) << morePrices << QwtInterval(38.0, 60.0);
    QTest::newRow("all values visible")
        << data(0.0, 1000.0, 40.5, 59.5) << morePrices << QwtInterval(60.0 - 1.1 * 19.0, 60.0);
    QTest::newRow("all is visible") << data(450.0, 550.0, 40.5, 59.5) << none << none;
    QTest::newRow("all is visible with room")
        << data(450.0, 550.0, 45.0, 55.0) << samePrices << QwtInterval(49.0, 60.0);
}

void tst_viewfit::zoomsOut()
{
    QFETCH(QRectF, curves);
    QFETCH(QwtInterval, prices);
    QFETCH(QwtInterval, values);
    const auto zoomed = ViewFit::zoomedOut({{400.0, 600.0}, {40.0, 60.0}, curves});
    QCOMPARE(zoomed.has_value(), prices != none);
    if (!zoomed)
        return;
    COMPARE_RANGES(zoomed->prices, prices);
    COMPARE_RANGES(zoomed->values, values);
}

void tst_viewfit::refuses_data()
{
    QTest::addColumn<QwtInterval>("prices");
    QTest::addColumn<QwtInterval>("values");
    QTest::addColumn<QRectF>("curves");
    const QwtInterval prices(400.0, 600.0);
    const QwtInterval values(40.0, 60.0);
    const QRectF wide = data(0.0, 1000.0, 0.0, 100.0);
    QTest::newRow("no prices") << none << values << wide;
    QTest::newRow("no values") << prices << none << wide;
    QTest::newRow("one price visible") << QwtInterval(400.0, 400.0) << values << wide;
    QTest::newRow("one value visible") << prices << QwtInterval(40.0, 40.0) << wide;
    QTest::newRow("no data") << prices << values << QRectF();
    QTest::newRow("data at one price") << prices << values << data(500.0, 500.0, 0.0, 100.0);
    QTest::newRow("infinite data") << prices << values << data(0.0, infinity, 0.0, 100.0);
    QTest::newRow("value of NaN") << prices << values << data(0.0, 1000.0, notANumber, 100.0);
    QTest::newRow("prices of NaN") << QwtInterval(notANumber, 600.0) << values << wide;
    QTest::newRow("infinite prices") << QwtInterval(400.0, infinity) << values << wide;
    QTest::newRow("prices too wide to grow")
        << QwtInterval(-8e307, 8e307) << values << data(-infinity, infinity, 0.0, 100.0);
}

void tst_viewfit::refuses()
{
    QFETCH(QwtInterval, prices);
    QFETCH(QwtInterval, values);
    QFETCH(QRectF, curves);
    QVERIFY(!ViewFit::zoomedIn({prices, values, curves}, 1.0));
    QVERIFY(!ViewFit::zoomedOut({prices, values, curves}));
}

void tst_viewfit::zoomingOutComesToAnEnd()
{
    constexpr unsigned seed = 11;
    std::mt19937_64 engine(seed);
    std::uniform_real_distribution<double> part(0.0, 1.0);
    for (int run = 0; run < 500; ++run) {
        const QRectF curves = data(50.0, 150.0, 0.1, 0.1 + part(engine));
        const double left = 50.0 + 90.0 * part(engine);
        const double low = curves.top() + 0.9 * curves.height() * part(engine);
        ViewFit::Start start{{left, left + 1.0 + 9.0 * part(engine)},
            {low, low + curves.height() * (0.01 + 0.09 * part(engine))}, curves};
        int steps = 0;
        while (const auto zoomed = ViewFit::zoomedOut(start)) {
            QVERIFY2(zoomed->prices.width() <= 1.1 * curves.width()
                    && zoomed->values.width() <= 1.1 * 1.1 * curves.height(),
                qPrintable(QStringLiteral("run %1").arg(run)));
            start = {zoomed->prices, zoomed->values, curves};
            QVERIFY2(++steps < 200, qPrintable(QStringLiteral("run %1").arg(run)));
        }
        QVERIFY2(start.prices.width() >= curves.width() && start.values.width() >= curves.height(),
            qPrintable(QStringLiteral("run %1").arg(run)));
    }
}

PLOT2D_TEST_MAIN(tst_viewfit)
#include "tst_viewfit.moc"
