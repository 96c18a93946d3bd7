#include "support/testhost.h"
#include "support/testmain.h"
#include "support/testplot.h"

#include <c_api/common.h>

#include <limits>

using TestHost::Row;

Q_DECLARE_METATYPE(FieldType)

namespace {

const QString incorrectType = QStringLiteral("Incorrect type conversion.");
constexpr double largest = std::numeric_limits<double>::max();
constexpr double infinity = std::numeric_limits<double>::infinity();

decimal number(const char* text)
{
    return TestHost::number(QString::fromLatin1(text));
}

}

/// The quote and the volatility bounds of a future.
class tst_securityquote : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void firstQuoteThatIsNotNull_data();
    void firstQuoteThatIsNotNull();
    void nullRecordHasNoQuote();
    void intervalWithoutWidthHasNoQuote_data();
    void intervalWithoutWidthHasNoQuote();
    void intervalIsTestedBeforeTheQuotes();
    void intervalNeedNotBeMarkedValid();
    void quoteOfAWrongType_data();
    void quoteOfAWrongType();
    void nullQuoteOfAWrongTypeIsNotRead();
    void laterQuoteOfAWrongTypeIsNotRead();
    void middleOfTheInterval_data();
    void middleOfTheInterval();

    void volatilityBounds_data();
    void volatilityBounds();
    void volatilityOfNoFuture_data();
    void volatilityOfNoFuture();
    void volatilityOfANullRecord();
    void volatilityOfAnotherTable();
    void volatilityTypes_data();
    void volatilityTypes();
    void volatilityOfAWrongType_data();
    void volatilityOfAWrongType();
    void volatilityOfAWrongTypeOfNoFutureIsNotRead();

    void tableDroppedWhileTheRecordLives();
};

void tst_securityquote::init()
{
    TestHost::createSecurities();
    TestHost::createBoards();
}

void tst_securityquote::cleanup()
{
    TestHost::dropSecurities();
    TestHost::dropBoards();
}

void tst_securityquote::firstQuoteThatIsNotNull_data()
{
    QTest::addColumn<Row>("quotes");
    QTest::addColumn<QString>("expected");
    QTest::newRow("all three") << Row{{"cur_kotir_real", "101"}, {"cur_kotir", "102"}, {"old_kotir", "103"}}
                               << "101";
    QTest::newRow("no real quote") << Row{{"cur_kotir", "102"}, {"old_kotir", "103"}} << "102";
    QTest::newRow("the old one only") << Row{{"old_kotir", "103"}} << "103";
    QTest::newRow("none: the middle") << Row() << "105";
    QTest::newRow("zero but not null") << Row{{"cur_kotir", "0"}, {"old_kotir", "103"}} << "0";
    QTest::newRow("real quote zero") << Row{{"cur_kotir_real", "0"}, {"cur_kotir", "102"}} << "0";
    QTest::newRow("negative") << Row{{"cur_kotir_real", "-7.5"}} << "-7.5";
    QTest::newRow("outside the interval") << Row{{"cur_kotir_real", "250.12345"}} << "250.12345";
}

void tst_securityquote::firstQuoteThatIsNotNull()
{
    QFETCH(Row, quotes);
    QFETCH(QString, expected);
    TestPlot plot(false);
    plot.setPriceInterval({100.0, 110.0, 5.0, true});
    const Record future = TestHost::addSecurity(TestHost::future(quotes));
    QCOMPARE(TestHost::text(plot.getKotirFromFutureRecord(future)), expected);
}

void tst_securityquote::nullRecordHasNoQuote()
{
    TestPlot plot(false);
    plot.setPriceInterval({100.0, 110.0, 5.0, true});
    QVERIFY(plot.getKotirFromFutureRecord(Record()) == decimal::zero);
}

void tst_securityquote::intervalWithoutWidthHasNoQuote_data()
{
    QTest::addColumn<double>("low");
    QTest::addColumn<double>("high");
    QTest::newRow("initial") << largest << -largest;
    QTest::newRow("equal") << 100.0 << 100.0;
    QTest::newRow("fuzzily equal") << 100.0 << 100.0 * (1.0 + 5e-13);
    QTest::newRow("inverted") << 110.0 << 100.0;
    QTest::newRow("barely inverted") << 100.0 * (1.0 + 5e-13) << 100.0;
    QTest::newRow("zero") << 0.0 << 0.0;
}

void tst_securityquote::intervalWithoutWidthHasNoQuote()
{
    QFETCH(double, low);
    QFETCH(double, high);
    TestPlot plot(false);
    plot.setPriceInterval({low, high, 5.0, true});
    const Record quoted = TestHost::addSecurity(TestHost::future({{"cur_kotir_real", "101"}}));
    const Record unquoted = TestHost::addSecurity(TestHost::future());
    QVERIFY(plot.getKotirFromFutureRecord(quoted) == decimal::zero);
    QVERIFY(plot.getKotirFromFutureRecord(unquoted) == decimal::zero);
}

void tst_securityquote::intervalIsTestedBeforeTheQuotes()
{
    TestHost::createSecurities(
        TestHost::withType(TestHost::securitiesColumns(), "cur_kotir_real", FieldType::Double));
    const TestPlot plot(false);
    const Record future = TestHost::addSecurity(TestHost::future({{"cur_kotir_real", 101.0}}));
    QVERIFY(plot.getKotirFromFutureRecord(future) == decimal::zero);
}

void tst_securityquote::intervalNeedNotBeMarkedValid()
{
    TestPlot plot(false);
    plot.setPriceInterval({100.0, 100.0 * (1.0 + 5e-12), 0.0, false});
    const Record future = TestHost::addSecurity(TestHost::future({{"cur_kotir_real", "101"}}));
    QCOMPARE(plot.getKotirFromFutureRecord(future), number("101"));
}

void tst_securityquote::quoteOfAWrongType_data()
{
    QTest::addColumn<QString>("column");
    QTest::addColumn<FieldType>("type");
    for (const char* column : {"cur_kotir_real", "cur_kotir", "old_kotir"}) {
        const QString name = QString::fromLatin1(column);
        QTest::addRow("%s with 32 bits", column) << name << FieldType::Int32;
        QTest::addRow("%s with 64 bits", column) << name << FieldType::Int64;
        QTest::addRow("%s as double", column) << name << FieldType::Double;
        QTest::addRow("%s as text", column) << name << FieldType::Text;
        QTest::addRow("%s as moment", column) << name << FieldType::Moment;
    }
}

void tst_securityquote::quoteOfAWrongType()
{
    QFETCH(QString, column);
    QFETCH(FieldType, type);
    TestHost::createSecurities(TestHost::withType(TestHost::securitiesColumns(), column, type));
    TestPlot plot(false);
    plot.setPriceInterval({100.0, 110.0, 5.0, true});
    const Record future = TestHost::addSecurity(TestHost::future({{column, 101}}));
    QCOMPARE(TestHost::thrownText([&] { plot.getKotirFromFutureRecord(future); }), incorrectType);
}

void tst_securityquote::nullQuoteOfAWrongTypeIsNotRead()
{
    TestHost::createSecurities(
        TestHost::withType(TestHost::securitiesColumns(), "cur_kotir_real", FieldType::Text));
    TestPlot plot(false);
    plot.setPriceInterval({100.0, 110.0, 5.0, true});
    const Record future = TestHost::addSecurity(TestHost::future({{"cur_kotir", "102"}}));
    QCOMPARE(plot.getKotirFromFutureRecord(future), number("102"));
}

void tst_securityquote::laterQuoteOfAWrongTypeIsNotRead()
{
    TestHost::createSecurities(
        TestHost::withType(TestHost::securitiesColumns(), "cur_kotir", FieldType::Double));
    TestPlot plot(false);
    plot.setPriceInterval({100.0, 110.0, 5.0, true});
    const Record future
        = TestHost::addSecurity(TestHost::future({{"cur_kotir_real", "101"}, {"cur_kotir", 102.0}}));
    QCOMPARE(plot.getKotirFromFutureRecord(future), number("101"));
}

void tst_securityquote::middleOfTheInterval_data()
{
    QTest::addColumn<double>("low");
    QTest::addColumn<double>("high");
    QTest::addColumn<QString>("expected");
    QTest::newRow("whole") << 100.0 << 110.0 << "105";
    QTest::newRow("half") << 100.0 << 105.0 << "102.5";
    QTest::newRow("five decimals, upwards") << 0.0 << 0.246914 << "0.12346";
    QTest::newRow("five decimals, downwards") << 0.0 << 0.246908 << "0.12345";
    QTest::newRow("negative") << -110.0 << -105.0 << "-107.5";
    QTest::newRow("about zero") << -5.0 << 5.0 << "0";
    QTest::newRow("sum overflows") << 1e308 << 1.7e308 << "0";
    QTest::newRow("infinite upper bound") << 100.0 << infinity << "0";
    QTest::newRow("all prices") << -infinity << infinity << "0";
    QTest::newRow("NaN") << std::numeric_limits<double>::quiet_NaN() << 110.0 << "0";
}

void tst_securityquote::middleOfTheInterval()
{
    QFETCH(double, low);
    QFETCH(double, high);
    QFETCH(QString, expected);
    TestPlot plot(false);
    plot.setPriceInterval({low, high, 5.0, true});
    const Record future = TestHost::addSecurity(TestHost::future());
    QCOMPARE(TestHost::text(plot.getKotirFromFutureRecord(future)), expected);
}

void tst_securityquote::volatilityBounds_data()
{
    QTest::addColumn<QVariant>("vmin");
    QTest::addColumn<QVariant>("vmax");
    QTest::addColumn<double>("low");
    QTest::addColumn<double>("high");
    const double lowest = gc_dVolatMinDefault;
    const double highest = gc_dVolatMaxDefault;
    const auto row = [](const char* name, const QVariant& vmin, const QVariant& vmax, double low,
                         double high) { QTest::newRow(name) << vmin << vmax << low << high; };
    row("in order", 0.2, 0.3, 0.2, 0.3);
    row("equal", 0.25, 0.25, 0.25, 0.25);
    row("swapped", 0.3, 0.2, 0.2, 0.3);
    row("swapped, upper on the default minimum", 0.3, lowest, lowest, 0.3);
    row("not swapped below the default minimum", 0.3, lowest * 0.99, 0.3, 0.3);
    row("swapped, lower on the default maximum", highest, 0.2, 0.2, highest);
    row("not swapped above the default maximum", highest * 1.01, 0.2, highest * 1.01, highest * 1.01);
    row("both null", QVariant(), QVariant(), lowest, highest);
    row("lower zero", 0.0, 0.3, lowest, 0.3);
    row("upper zero", 0.3, 0.0, 0.3, highest);
    row("upper null", 0.3, QVariant(), 0.3, highest);
    row("lower as good as zero", 1e-12, 0.3, lowest, 0.3);
    row("lower as good as zero, negative", -1e-12, 0.3, lowest, 0.3);
    row("lower not quite zero", 2e-12, 0.3, 1e-5, 0.3);
    row("upper as good as zero", 0.3, 1e-12, 0.3, highest);
    row("upper not quite zero", 0.3, 2e-12, 0.3, 0.3);
    row("upper zero, lower above the default", 5.0, 0.0, 5.0, 5.0);
    row("negative lower", -1.0, 0.3, 1e-5, 0.3);
    row("lower zero, upper negative", 0.0, -1.0, lowest, lowest);
    row("both negative", -0.5, -0.6, 1e-5, 1e-5);
    row("both below the floor", 1e-6, 2e-6, 1e-5, 1e-5);
    row("on the floor", 1e-5, 2e-5, 1e-5, 2e-5);
    row("lower zero, upper below the default minimum", 0.0, lowest / 2.0, lowest, lowest);
    const double none = std::numeric_limits<double>::quiet_NaN();
    row("lower NaN", none, 0.3, 1e-5, 0.3);
    row("upper NaN", 0.2, none, 0.2, 0.2);
    row("both NaN", none, none, 1e-5, 1e-5);
    row("lower infinite, negative", -infinity, 0.3, 1e-5, 0.3);
    row("upper infinite", 0.2, infinity, 0.2, infinity);
    row("upper infinite, negative", 0.2, -infinity, 0.2, 0.2);
    row("wider than the defaults", lowest / 2.0, highest * 2.0, lowest / 2.0, highest * 2.0);
}

void tst_securityquote::volatilityBounds()
{
    QFETCH(QVariant, vmin);
    QFETCH(QVariant, vmax);
    QFETCH(double, low);
    QFETCH(double, high);
    TestPlot plot(false);
    const Record future = TestHost::addSecurity(TestHost::future({{"volat_min", vmin}, {"volat_max", vmax}}));
    const auto bounds = plot.volatMinMax(future);
    QVERIFY2(bounds.first == low, qPrintable(QString::number(bounds.first, 'g', 17)));
    QVERIFY2(bounds.second == high, qPrintable(QString::number(bounds.second, 'g', 17)));
}

void tst_securityquote::volatilityOfNoFuture_data()
{
    QTest::addColumn<QVariant>("type");
    QTest::newRow("option") << QVariant("O");
    QTest::newRow("lower case") << QVariant("f");
    QTest::newRow("empty") << QVariant("");
    QTest::newRow("null") << QVariant();
}

void tst_securityquote::volatilityOfNoFuture()
{
    QFETCH(QVariant, type);
    TestPlot plot(false);
    const Record record = TestHost::addSecurity(
        TestHost::future({{"sectype", type}, {"volat_min", 0.2}, {"volat_max", 0.3}}));
    QVERIFY(plot.volatMinMax(record) == std::pair(gc_dVolatMinDefault, gc_dVolatMaxDefault));
}

void tst_securityquote::volatilityOfANullRecord()
{
    TestPlot plot(false);
    QVERIFY(plot.volatMinMax(Record()) == std::pair(gc_dVolatMinDefault, gc_dVolatMaxDefault));
}

void tst_securityquote::volatilityOfAnotherTable()
{
    const QString name = QStringLiteral("archive");
    TestHost::createTable(name, TestHost::securitiesColumns());
    const Record record = TestHost::addRow(name, TestHost::future({{"volat_min", 0.2}, {"volat_max", 0.3}}));
    TestPlot plot(false);
    const auto bounds = plot.volatMinMax(record);
    TestHost::dropTable(name);
    QVERIFY(bounds == std::pair(gc_dVolatMinDefault, gc_dVolatMaxDefault));
}

void tst_securityquote::volatilityTypes_data()
{
    QTest::addColumn<FieldType>("type");
    QTest::newRow("32 bits") << FieldType::Int32;
    QTest::newRow("64 bits") << FieldType::Int64;
    QTest::newRow("double") << FieldType::Double;
    QTest::newRow("decimal") << FieldType::Decimal;
}

void tst_securityquote::volatilityTypes()
{
    QFETCH(FieldType, type);
    for (const char* column : {"volat_min", "volat_max"}) {
        TestHost::createSecurities(
            TestHost::withType(TestHost::securitiesColumns(), QString::fromLatin1(column), type));
        TestPlot plot(false);
        const Record future = TestHost::addSecurity(TestHost::future({{"volat_min", 1}, {"volat_max", 2}}));
        QVERIFY(plot.volatMinMax(future) == std::pair(1.0, 2.0));
    }
}

void tst_securityquote::volatilityOfAWrongType_data()
{
    QTest::addColumn<QString>("column");
    QTest::addColumn<FieldType>("type");
    for (const char* column : {"volat_min", "volat_max"}) {
        QTest::addRow("%s as text", column) << QString::fromLatin1(column) << FieldType::Text;
        QTest::addRow("%s as moment", column) << QString::fromLatin1(column) << FieldType::Moment;
    }
}

void tst_securityquote::volatilityOfAWrongType()
{
    QFETCH(QString, column);
    QFETCH(FieldType, type);
    TestHost::createSecurities(TestHost::withType(TestHost::securitiesColumns(), column, type));
    TestPlot plot(false);
    const Record future = TestHost::addSecurity(TestHost::future({{column, 1}}));
    QCOMPARE(TestHost::thrownText([&] { plot.volatMinMax(future); }), incorrectType);
}

void tst_securityquote::volatilityOfAWrongTypeOfNoFutureIsNotRead()
{
    TestHost::createSecurities(
        TestHost::withType(TestHost::securitiesColumns(), "volat_min", FieldType::Text));
    TestPlot plot(false);
    const Record option = TestHost::addSecurity(TestHost::future({{"sectype", "O"}, {"volat_min", "0.2"}}));
    QVERIFY(plot.volatMinMax(option) == std::pair(gc_dVolatMinDefault, gc_dVolatMaxDefault));
}

void tst_securityquote::tableDroppedWhileTheRecordLives()
{
    TestPlot plot(false);
    plot.setPriceInterval({100.0, 110.0, 5.0, true});
    const Record future = TestHost::addSecurity(TestHost::future({{"cur_kotir", "101"}, {"volat_min", 0.2}}));
    TestHost::dropSecurities();
    // A record whose table is gone has only null fields.
    QCOMPARE(plot.getKotirFromFutureRecord(future), number("105"));
    QVERIFY(plot.volatMinMax(future) == std::pair(gc_dVolatMinDefault, gc_dVolatMaxDefault));
}

PLOT2D_TEST_MAIN(tst_securityquote)
#include "tst_securityquote.moc"
