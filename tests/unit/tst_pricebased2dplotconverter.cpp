#include "support/childrun.h"
#include "support/qtversions.h"
#include "support/testhost.h"
#include "support/testmain.h"
#include "support/testplot.h"
#include "unit/conversions.h"

#include <plot2d/plot2dcommon.h>
#include <plot2d/pricebased2dplotconverter.h>
#include <plot2d/pricebased2dplotscaledraw.h>
#include <plot2d/pricebased2dplotscaleengine.h>

#include <QLocale>

#include <cmath>
#include <limits>
#include <memory>

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

void convertWith(PriceBased2dPlotConverter& converter, Conversion* object)
{
    converter.setConvertionObject(object);
    converter.setConversionMethod(&Conversion::forward);
    converter.setConversionEnabled(true);
}

PriceBased2dPlotConverter* converterOf(TestPlot& plot, int axis)
{
    return dynamic_cast<PriceBased2dPlotConverter*>(plot.axisScaleDraw(axis));
}

}

class tst_pricebased2dplotconverter : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();

    void stateAfterConstruction();
    void answersWhatWasSet();
    void disabledIsTheShortText_data();
    void disabledIsTheShortText();
    void disabledUsesNoConversion();
    void enabledWithoutObjectIsEmpty();
    void methodIsApplied();
    void virtualMethodIsThatOfTheObject();
    void convertedBefore_data();
    void convertedBefore();
    void convertedToNoNumber_data();
    void convertedToNoNumber();
    void unitAndSign_data();
    void unitAndSign();
    void unitIsNoFormat();
    void signAndUnitInALocale_data();
    void signAndUnitInALocale();

    void objectIsDeletedWhenReplaced();
    void objectIsDeletedForNull();
    void objectIsDeletedWithTheConverter();
    void sameObjectStays();

    void plotTellsWhatIsEnabled();
    void plotConvertsThePriceAxis();
    void plotHandsTheRescaleFactorOn();
};

void tst_pricebased2dplotconverter::initTestCase()
{
    TestHost::createSecurities();
    TestHost::createBoards();
}

void tst_pricebased2dplotconverter::cleanupTestCase()
{
    TestHost::dropSecurities();
    TestHost::dropBoards();
}

void tst_pricebased2dplotconverter::stateAfterConstruction()
{
    const PriceBased2dPlotConverter converter;
    QVERIFY(!converter.isConversionEnabled());
    QVERIFY(!converter.conversionObject());
    QVERIFY(converter.conversionMethod() == nullptr);
    QVERIFY(converter.metricUnit().isEmpty());
    QVERIFY(!converter.isPlusSignShown());
    QCOMPARE(converter.decimals(), 10);
}

void tst_pricebased2dplotconverter::answersWhatWasSet()
{
    PriceBased2dPlotConverter converter;
    auto* object = new Distance(100.0);
    converter.setConvertionObject(object);
    converter.setConversionMethod(&Conversion::backward);
    converter.setConversionEnabled(true);
    converter.setMetricUnit(QStringLiteral("%"));
    converter.setPlusSignShown(true);
    converter.setDecimals(3);
    QCOMPARE(converter.conversionObject(), static_cast<const Conversion*>(object));
    QVERIFY(converter.conversionMethod() == &Conversion::backward);
    QVERIFY(converter.isConversionEnabled());
    QCOMPARE(converter.metricUnit(), QStringLiteral("%"));
    QVERIFY(converter.isPlusSignShown());
    QCOMPARE(converter.decimals(), 3);
}

void tst_pricebased2dplotconverter::disabledIsTheShortText_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("decimals");
    QTest::newRow("1.5") << 1.5 << 10;
    QTest::newRow("zero") << 0.0 << 10;
    QTest::newRow("negative") << -1234567.875 << 10;
    QTest::newRow("rounded") << 2.71828 << 2;
    QTest::newRow("no decimals") << 2.71828 << 0;
    QTest::newRow("negative decimals") << 2.71828 << -3;
    QTest::newRow("many decimals") << 0.1 << 40;
}

void tst_pricebased2dplotconverter::disabledIsTheShortText()
{
    QFETCH(double, value);
    QFETCH(int, decimals);
    PriceBased2dPlotConverter converter;
    converter.setDecimals(decimals);
    QCOMPARE(converter.convertedValue(value), Plot2dCommon::fromDoubleToSystemStringShort(value, decimals));
}

void tst_pricebased2dplotconverter::disabledUsesNoConversion()
{
    PriceBased2dPlotConverter converter;
    auto* object = new Distance(100.0);
    convertWith(converter, object);
    converter.setConversionEnabled(false);
    QCOMPARE(converter.convertedValue(1.5), Plot2dCommon::fromDoubleToSystemStringShort(1.5, 10));
    QCOMPARE(object->calls, 0);
}

void tst_pricebased2dplotconverter::enabledWithoutObjectIsEmpty()
{
    PriceBased2dPlotConverter converter;
    converter.setConversionEnabled(true);
    converter.setMetricUnit(QStringLiteral("%"));
    for (const double value : {1.5, 0.0, -2.0})
        QVERIFY(converter.convertedValue(value).isEmpty());
    converter.setConversionMethod(&Conversion::forward);
    QVERIFY(converter.convertedValue(1.5).isEmpty());
}

void tst_pricebased2dplotconverter::methodIsApplied()
{
    PriceBased2dPlotConverter converter;
    auto* object = new Distance(100.0);
    convertWith(converter, object);
    QCOMPARE(converter.convertedValue(102.5), Plot2dCommon::fromDoubleToSystemStringShort(2.5, 10));
    QCOMPARE(object->calls, 1);
    converter.setConversionMethod(&Conversion::backward);
    QCOMPARE(converter.convertedValue(2.5), Plot2dCommon::fromDoubleToSystemStringShort(102.5, 10));
    converter.setConversionMethod(static_cast<ConversionMethod>(&Distance::percent));
    QCOMPARE(converter.convertedValue(150.0), Plot2dCommon::fromDoubleToSystemStringShort(50.0, 10));
    QCOMPARE(object->calls, 1);
}

void tst_pricebased2dplotconverter::virtualMethodIsThatOfTheObject()
{
    PriceBased2dPlotConverter converter;
    convertWith(converter, new Doubled(100.0));
    QCOMPARE(converter.convertedValue(102.5), Plot2dCommon::fromDoubleToSystemStringShort(5.0, 10));
    converter.setConversionMethod(static_cast<ConversionMethod>(&Distance::forward));
    QCOMPARE(converter.convertedValue(102.5), Plot2dCommon::fromDoubleToSystemStringShort(5.0, 10));
}

void tst_pricebased2dplotconverter::convertedBefore_data()
{
    QTest::addColumn<double>("value");
    QTest::newRow("NaN") << notANumber;
    QTest::newRow("infinity") << infinity;
    QTest::newRow("minus infinity") << -infinity;
}

void tst_pricebased2dplotconverter::convertedBefore()
{
    QFETCH(double, value);
    PriceBased2dPlotConverter converter;
    converter.setMetricUnit(QStringLiteral("%"));
    QVERIFY(converter.convertedValue(value).isEmpty());
    convertWith(converter, new Constant(2.0));
    QVERIFY(!converter.convertedValue(1.0).isEmpty());
    QVERIFY(converter.convertedValue(value).isEmpty());
}

void tst_pricebased2dplotconverter::convertedToNoNumber_data()
{
    convertedBefore_data();
}

void tst_pricebased2dplotconverter::convertedToNoNumber()
{
    QFETCH(double, value);
    PriceBased2dPlotConverter converter;
    converter.setMetricUnit(QStringLiteral("%"));
    convertWith(converter, new Constant(value));
    QVERIFY(converter.convertedValue(1.0).isEmpty());
}

void tst_pricebased2dplotconverter::unitAndSign_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<QString>("unit");
    QTest::addColumn<bool>("sign");
    QTest::addColumn<QString>("format");
    QTest::newRow("neither") << 2.0 << "" << false << "n";
    QTest::newRow("unit") << 2.0 << "%" << false << "nu";
    QTest::newRow("sign") << 2.0 << "" << true << "+n";
    QTest::newRow("both") << 2.0 << "%" << true << "+nu";
    QTest::newRow("unit with a blank") << 2.0 << " pt" << false << "nu";
    QTest::newRow("smallest positive") << std::numeric_limits<double>::denorm_min() << "" << true << "+n";
    QTest::newRow("zero") << 0.0 << "%" << true << "nu";
    QTest::newRow("minus zero") << -0.0 << "%" << true << "nu";
    QTest::newRow("negative") << -2.0 << "%" << true << "nu";
}

void tst_pricebased2dplotconverter::unitAndSign()
{
    QFETCH(double, value);
    QFETCH(QString, unit);
    QFETCH(bool, sign);
    QFETCH(QString, format);
    const QString number = Plot2dCommon::fromDoubleToSystemStringShort(value, 10);
    QString expected
        = format.contains(QLatin1Char('+')) ? QString(QLocale::system().positiveSign()) : QString();
    expected += number;
    if (format.contains(QLatin1Char('u')))
        expected += unit;

    PriceBased2dPlotConverter converter;
    converter.setMetricUnit(unit);
    converter.setPlusSignShown(sign);
    QCOMPARE(converter.convertedValue(value), expected);

    // The sign is that of the converted value.
    convertWith(converter, new Constant(value));
    for (const double before : {-7.0, 0.0, 7.0})
        QCOMPARE(converter.convertedValue(before), expected);
}

void tst_pricebased2dplotconverter::unitIsNoFormat()
{
    PriceBased2dPlotConverter converter;
    converter.setMetricUnit(QStringLiteral("%1%2%%"));
    QCOMPARE(converter.convertedValue(3.0), Plot2dCommon::fromDoubleToSystemStringShort(3.0, 10) + "%1%2%%");
}

void tst_pricebased2dplotconverter::signAndUnitInALocale_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("positive");
    QTest::addColumn<QString>("negative");
    QTest::newRow("C") << "C"
                       << "+1,234.5%"
                       << "-0.25%";
    QTest::newRow("de_DE") << "de_DE"
                           << "+1.234,5%"
                           << "-0,25%";
    QTest::newRow("ar_EG") << "ar_EG" << QStringLiteral("+\u0661\u066c\u0662\u0663\u0664\u066b\u0665%")
                           << QStringLiteral("-\u0660\u066b\u0662\u0665%");
}

void tst_pricebased2dplotconverter::signAndUnitInALocale()
{
    QFETCH(QString, locale);
    QFETCH(QString, positive);
    QFETCH(QString, negative);
    if (const char* other = TestVersions::otherSignsOf(locale))
        QSKIP(other);
    if (!TestSupport::isChild()) {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("LC_ALL"), locale);
        const TestSupport::ChildRun run = TestSupport::repeatRowInChild(environment);
        QVERIFY2(run.passed(), run.output);
        return;
    }
    QCOMPARE(QLocale::system().name(), locale);
    PriceBased2dPlotConverter converter;
    converter.setMetricUnit(QStringLiteral("%"));
    converter.setPlusSignShown(true);
    QCOMPARE(converter.convertedValue(1234.5), positive);
    QCOMPARE(converter.convertedValue(-0.25), negative);
}

void tst_pricebased2dplotconverter::objectIsDeletedWhenReplaced()
{
    bool firstDestroyed = false;
    bool secondDestroyed = false;
    PriceBased2dPlotConverter converter;
    converter.setConvertionObject(new Distance(1.0, &firstDestroyed));
    QVERIFY(!firstDestroyed);
    auto* second = new Distance(2.0, &secondDestroyed);
    converter.setConvertionObject(second);
    QVERIFY(firstDestroyed);
    QVERIFY(!secondDestroyed);
    QCOMPARE(converter.conversionObject(), static_cast<Conversion*>(second));
}

void tst_pricebased2dplotconverter::objectIsDeletedForNull()
{
    bool destroyed = false;
    PriceBased2dPlotConverter converter;
    convertWith(converter, new Distance(1.0, &destroyed));
    converter.setConvertionObject(nullptr);
    QVERIFY(destroyed);
    QVERIFY(!converter.conversionObject());
    QVERIFY(converter.convertedValue(1.0).isEmpty());
    converter.setConvertionObject(nullptr);
}

void tst_pricebased2dplotconverter::objectIsDeletedWithTheConverter()
{
    bool destroyed = false;
    auto converter = std::make_unique<PriceBased2dPlotConverter>();
    converter->setConvertionObject(new Distance(1.0, &destroyed));
    converter.reset();
    QVERIFY(destroyed);

    destroyed = false;
    std::unique_ptr<QwtScaleDraw> draw = std::make_unique<PriceBased2dPlotScaleDraw>(QwtPlot::xBottom);
    dynamic_cast<PriceBased2dPlotConverter&>(*draw).setConvertionObject(new Distance(1.0, &destroyed));
    draw.reset();
    QVERIFY(destroyed);
}

void tst_pricebased2dplotconverter::sameObjectStays()
{
    bool destroyed = false;
    PriceBased2dPlotConverter converter;
    auto* object = new Distance(100.0, &destroyed);
    convertWith(converter, object);
    converter.setConvertionObject(object);
    QVERIFY(!destroyed);
    QCOMPARE(converter.convertedValue(102.5), Plot2dCommon::fromDoubleToSystemStringShort(2.5, 10));
}

void tst_pricebased2dplotconverter::plotTellsWhatIsEnabled()
{
    TestPlot plot;
    const auto others = {int(QwtPlot::yLeft), int(QwtPlot::yRight), int(QwtPlot::xTop), -1, 99};
    QVERIFY(!plot.conversionEnabled(QwtPlot::xBottom));
    for (const int axis : others)
        QVERIFY(!plot.conversionEnabled(axis));

    converterOf(plot, QwtPlot::xBottom)->setConversionEnabled(true);
    QVERIFY(plot.conversionEnabled(QwtPlot::xBottom));
    for (const int axis : others)
        QVERIFY(!plot.conversionEnabled(axis));

    converterOf(plot, QwtPlot::xBottom)->setConversionEnabled(false);
    converterOf(plot, QwtPlot::yLeft)->setConversionEnabled(true);
    QVERIFY(!plot.conversionEnabled(QwtPlot::xBottom));
    for (const int axis : others)
        QVERIFY(plot.conversionEnabled(axis));
}

void tst_pricebased2dplotconverter::plotConvertsThePriceAxis()
{
    TestPlot plot;
    converterOf(plot, QwtPlot::yLeft)->setMetricUnit(QStringLiteral("vol"));
    QCOMPARE(plot.xAxisConvertedValue(1.5), Plot2dCommon::fromDoubleToSystemStringShort(1.5, 10));
    QVERIFY(plot.xAxisMetricUnit().isEmpty());

    PriceBased2dPlotConverter* price = converterOf(plot, QwtPlot::xBottom);
    price->setMetricUnit(QStringLiteral("pt"));
    convertWith(*price, new Distance(100.0));
    QCOMPARE(plot.xAxisMetricUnit(), QStringLiteral("pt"));
    QCOMPARE(plot.xAxisConvertedValue(102.5), price->convertedValue(102.5));
    QCOMPARE(plot.xAxisConvertedValue(102.5), Plot2dCommon::fromDoubleToSystemStringShort(2.5, 10) + "pt");
    QVERIFY(plot.xAxisConvertedValue(notANumber).isEmpty());
}

void tst_pricebased2dplotconverter::plotHandsTheRescaleFactorOn()
{
    TestPlot plot;
    const auto* engine = dynamic_cast<PriceBased2dPlotScaleEngine*>(plot.axisScaleEngine(QwtPlot::xBottom));
    QVERIFY(engine->rescaleFactor() == decimal::zero);
    const decimal factor = TestHost::number(QStringLiteral("102.75"));
    plot.setRescaleFactor(factor);
    QCOMPARE(engine->rescaleFactor(), factor);
    QVERIFY(plot.calls.isEmpty());
}

PLOT2D_TEST_MAIN(tst_pricebased2dplotconverter)
#include "tst_pricebased2dplotconverter.moc"
