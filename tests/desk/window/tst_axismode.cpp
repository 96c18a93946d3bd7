#include "support/testmain.h"

#include <basic_views/conversion.h>
#include <plot2d/pricebased2dplotconverter.h>
#include <window/axismode.h>

#include <cmath>
#include <limits>

namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

constexpr double infinity = std::numeric_limits<double>::infinity();

const auto relativeModes = {AxisMode::PointsFromQuote, AxisMode::PercentOfQuote, AxisMode::Deviations};

// The value that a label of a price shows.
double shownValue(AxisMode mode, const AxisReference& reference, double price)
{
    switch (mode) {
    case AxisMode::PointsFromQuote:
        return price - reference.quote;
    case AxisMode::PercentOfQuote:
        return price / reference.quote * 100.0;
    case AxisMode::Deviations:
        return std::log(price / reference.quote) / reference.deviation;
    case AxisMode::Price:
        break;
    }
    return price;
}

// Whether a value has at most two digits behind its leading zeros, as 0.25, 1500 and 40 have.
bool isRound(double value, double step)
{
    const double steps = value / step;
    return std::abs(steps - std::round(steps)) < 1e-6;
}

QString labelOf(AxisMode mode, double quote, double price)
{
    PriceBased2dPlotConverter converter;
    AxisModes::apply(mode, {quote, 0.125}, converter);
    return converter.convertedValue(price);
}

}

Q_DECLARE_METATYPE(AxisMode)

class tst_axismode : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void labels_data();
    void labels();
    void namesAreRead();
    void modeCanBeTakenBack();
    void conversionsGoBack();
    void roundSteps_data();
    void roundSteps();
    void needsItsReference();
    void roundDivisions();
    void noDivisions();
    void titles();
};

void tst_axismode::labels_data()
{
    QTest::addColumn<AxisMode>("mode");
    QTest::addColumn<double>("quote");
    QTest::addColumn<double>("price");
    QTest::addColumn<QString>("label");
    QTest::newRow("price") << AxisMode::Price << 92.85 << 95.5 << "95.5";
    QTest::newRow("points above") << AxisMode::PointsFromQuote << 92.85 << 102.85 << "+10";
    QTest::newRow("points below") << AxisMode::PointsFromQuote << 92.85 << 82.85 << "-10";
    QTest::newRow("points at the quote") << AxisMode::PointsFromQuote << 92.85 << 92.85 << "0";
    QTest::newRow("percent") << AxisMode::PercentOfQuote << 80.0 << 88.0 << "110%";
    QTest::newRow("percent at the quote") << AxisMode::PercentOfQuote << 80.0 << 80.0 << "100%";
    QTest::newRow("a deviation above")
        << AxisMode::Deviations << 100.0 << 100.0 * std::exp(0.125) << "+1\u03c3";
    QTest::newRow("half a deviation below")
        << AxisMode::Deviations << 100.0 << 100.0 * std::exp(-0.0625) << "-0.5\u03c3";
    QTest::newRow("no deviation") << AxisMode::Deviations << 100.0 << 100.0 << "0\u03c3";
    QTest::newRow("price without deviation") << AxisMode::Deviations << 100.0 << 0.0 << "";
    QTest::newRow("no quote") << AxisMode::PercentOfQuote << 0.0 << 88.0 << "88";
    QTest::newRow("negative quote") << AxisMode::PointsFromQuote << -1.0 << 88.0 << "88";
    QTest::newRow("quote of NaN") << AxisMode::PointsFromQuote << notANumber << 88.0 << "88";
}

void tst_axismode::labels()
{
    QFETCH(AxisMode, mode);
    QFETCH(double, quote);
    QFETCH(double, price);
    QTEST(labelOf(mode, quote, price), "label");
}

void tst_axismode::namesAreRead()
{
    for (const AxisModes::Description& description : AxisModes::all())
        QVERIFY(AxisModes::fromName(description.name) == description.mode);
    QVERIFY(!AxisModes::fromName(QStringLiteral("Points")));
    QVERIFY(!AxisModes::fromName(QString()));
}

void tst_axismode::modeCanBeTakenBack()
{
    PriceBased2dPlotConverter converter;
    AxisModes::apply(AxisMode::PercentOfQuote, {80.0, 0.1}, converter);
    AxisModes::apply(AxisMode::Price, {80.0, 0.1}, converter);
    QCOMPARE(converter.convertedValue(88.125), QStringLiteral("88.125"));
    QVERIFY(!converter.isConversionEnabled());
    QVERIFY(!converter.conversionObject());
}

void tst_axismode::conversionsGoBack()
{
    for (const AxisMode mode : relativeModes) {
        PriceBased2dPlotConverter converter;
        AxisModes::apply(mode, {80.0, 0.1}, converter);
        const Conversion* conversion = converter.conversionObject();
        QVERIFY(conversion);
        QCOMPARE(conversion->backward(conversion->forward(93.5)), 93.5);
    }
}

void tst_axismode::roundSteps_data()
{
    QTest::addColumn<AxisMode>("mode");
    QTest::addColumn<double>("quote");
    QTest::addColumn<double>("range");
    QTest::addColumn<double>("step");
    QTest::newRow("prices find theirs") << AxisMode::Price << 80.0 << 40.0 << 0.0;
    QTest::newRow("points find theirs") << AxisMode::PointsFromQuote << 80.0 << 40.0 << 0.0;
    QTest::newRow("ten percent") << AxisMode::PercentOfQuote << 80.0 << 40.0 << 8.0;
    QTest::newRow("half a percent") << AxisMode::PercentOfQuote << 200.0 << 6.0 << 1.0;
    QTest::newRow("no quote") << AxisMode::PercentOfQuote << 0.0 << 40.0 << 0.0;
    QTest::newRow("no range") << AxisMode::PercentOfQuote << 80.0 << 0.0 << 0.0;
    QTest::newRow("range of NaN") << AxisMode::PercentOfQuote << 80.0 << notANumber << 0.0;
}

void tst_axismode::roundSteps()
{
    QFETCH(AxisMode, mode);
    QFETCH(double, quote);
    QFETCH(double, range);
    QTEST(AxisModes::roundStep(mode, quote, range, 8), "step");
}

void tst_axismode::needsItsReference()
{
    for (const double bad : {0.0, -1.0, notANumber, infinity}) {
        for (const AxisMode mode : relativeModes)
            QVERIFY(AxisModes::shown(mode, {bad, 0.1}) == AxisMode::Price);
        QVERIFY(AxisModes::shown(AxisMode::Deviations, {100.0, bad}) == AxisMode::Price);
        QVERIFY(AxisModes::shown(AxisMode::PercentOfQuote, {100.0, bad}) == AxisMode::PercentOfQuote);
        PriceBased2dPlotConverter converter;
        AxisModes::apply(AxisMode::Deviations, {100.0, bad}, converter);
        QCOMPARE(converter.convertedValue(88.0), QStringLiteral("88"));
    }
}

void tst_axismode::roundDivisions()
{
    const AxisReference reference{92.85, 0.117};
    for (const AxisMode mode : relativeModes) {
        for (const QwtInterval& prices : {QwtInterval(95.0, 131.0), QwtInterval(60.0, 90.0),
                 QwtInterval(80.0, 110.0), QwtInterval(92.8, 92.9), QwtInterval(200.0, 200.5)}) {
            const auto division = AxisModes::roundDivision(mode, reference, prices, {8, 5});
            QVERIFY(division);
            QVERIFY(division->interval() == prices);
            const QList<double> ticks = division->ticks(QwtScaleDiv::MajorTick);
            QVERIFY(ticks.size() >= 2 && ticks.size() <= 11);
            const double step
                = std::abs(shownValue(mode, reference, ticks[1]) - shownValue(mode, reference, ticks[0]));
            const double digit = step / std::pow(10.0, std::floor(std::log10(step) + 1e-9));
            QVERIFY2(
                std::abs(digit - 1.0) < 1e-6 || std::abs(digit - 2.0) < 1e-6 || std::abs(digit - 5.0) < 1e-6,
                qPrintable(QString::number(step, 'g', 15)));
            for (const double tick : ticks) {
                QVERIFY(prices.contains(tick));
                QVERIFY(isRound(shownValue(mode, reference, tick), step));
            }
        }
    }
}

void tst_axismode::noDivisions()
{
    const AxisReference reference{92.85, 0.117};
    QVERIFY(!AxisModes::roundDivision(AxisMode::Price, reference, QwtInterval(80.0, 110.0), {}));
    QVERIFY(!AxisModes::roundDivision(AxisMode::Deviations, {92.85, 0.0}, QwtInterval(80.0, 110.0), {}));
    for (const AxisMode mode : relativeModes) {
        for (const QwtInterval& bad : {QwtInterval(), QwtInterval(80.0, 80.0), QwtInterval(notANumber, 90.0),
                 QwtInterval(80.0, infinity), QwtInterval(80.0, 80.0 + 1e-12)})
            QVERIFY(!AxisModes::roundDivision(mode, reference, bad, {}));
        QVERIFY(!AxisModes::roundDivision(mode, reference, QwtInterval(80.0, 110.0), {0, 0}));
    }
    // Nothing below zero has a logarithm.
    QVERIFY(!AxisModes::roundDivision(AxisMode::Deviations, reference, QwtInterval(-20.0, -10.0), {}));
    const auto across
        = AxisModes::roundDivision(AxisMode::Deviations, reference, QwtInterval(-20.0, 110.0), {});
    QVERIFY(across);
    QVERIFY(across->ticks(QwtScaleDiv::MajorTick).first() > 0.0);
    QCOMPARE(across->lowerBound(), -20.0);
}

void tst_axismode::titles()
{
    QSet<QString> all;
    for (const AxisModes::Description& each : AxisModes::all()) {
        const QString title = AxisModes::axisTitle(each.mode, QStringLiteral("Strike"));
        QVERIFY(title.startsWith(QStringLiteral("Strike")));
        all.insert(title);
    }
    QCOMPARE(all.size(), AxisModes::all().size());
}

PLOT2D_TEST_MAIN(tst_axismode)
#include "tst_axismode.moc"
