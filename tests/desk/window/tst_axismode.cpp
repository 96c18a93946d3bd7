#include "support/testmain.h"

#include <basic_views/conversion.h>
#include <plot2d/pricebased2dplotconverter.h>
#include <window/axismode.h>

#include <cmath>
#include <limits>

namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

QString labelOf(AxisMode mode, double quote, double price)
{
    PriceBased2dPlotConverter converter;
    AxisModes::apply(mode, quote, converter);
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
    AxisModes::apply(AxisMode::PercentOfQuote, 80.0, converter);
    AxisModes::apply(AxisMode::Price, 80.0, converter);
    QCOMPARE(converter.convertedValue(88.125), QStringLiteral("88.125"));
    QVERIFY(!converter.isConversionEnabled());
    QVERIFY(!converter.conversionObject());
}

void tst_axismode::conversionsGoBack()
{
    for (const AxisMode mode : {AxisMode::PointsFromQuote, AxisMode::PercentOfQuote}) {
        PriceBased2dPlotConverter converter;
        AxisModes::apply(mode, 80.0, converter);
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

PLOT2D_TEST_MAIN(tst_axismode)
#include "tst_axismode.moc"
