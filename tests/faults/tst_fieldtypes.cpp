#include "faults/hostcolumns.h"
#include "support/testmain.h"
#include "support/testplot.h"

#include <basic_models/strikebybasecodemodel.h>
#include <c_api/common.h>
#include <plot2d/pricebased2dplotpointmanager.h>

#include <qwt_scale_div.h>

#include <algorithm>
#include <memory>

using HostColumns::Change;
using Manager = PriceBased2dPlotPointManager;

Q_DECLARE_METATYPE(HostColumns::Change)

namespace {

const QString thrown = QStringLiteral("Incorrect type conversion.");
const QString code = QStringLiteral("Amber");
constexpr char securities[] = "securities";
constexpr char boards[] = "boards";
constexpr PriceInterval before{90.0, 130.0, 3.0, true};
constexpr int secondFuture = 11;

bool isAnyOf(const Change& change, const char* table, std::initializer_list<const char*> columns)
{
    return std::any_of(
        columns.begin(), columns.end(), [&](const char* column) { return change.isOf(table, column); });
}

bool isInteger(const Change& change)
{
    return change.type == FieldType::Int32 || change.type == FieldType::Int64;
}

bool isNumber(const Change& change)
{
    return isInteger(change) || change.type == FieldType::Double || change.type == FieldType::Decimal;
}

/// What a call answers, or the text that it throws.
template <typename Call> QString answer(Call call)
{
    QString result;
    const QString text = TestHost::thrownText([&] { result = call(); });
    return text == QLatin1String("nothing thrown") ? result : text;
}

QString describe(const PriceInterval& interval)
{
    return interval.valid
        ? QStringLiteral("%1 to %2 by %3").arg(interval.minPrice).arg(interval.maxPrice).arg(interval.minStep)
        : QStringLiteral("none");
}

/// The number of a row, from 1.
QString describe(const Record& record)
{
    if (record.isNull())
        return QStringLiteral("none");
    int row = 1;
    while (TestHost::recordAt(record.table(), row - 1) != record)
        ++row;
    return QString::number(row);
}

/// What no read may change.
QStringList stateOf(const PriceBased2dPlot& plot)
{
    QStringList state{plot.baseCode(), describe(plot.priceInterval())};
    for (const int axis : {int(QwtPlot::xBottom), int(QwtPlot::yLeft)}) {
        const QwtInterval range = plot.axisScaleDiv(axis).interval();
        state << QString::number(range.minValue()) << QString::number(range.maxValue());
    }
    for (const PriceBased2dPlotCurve* curve : plot.attachedCurves(-1))
        state << curve->title().text() << QString::number(curve->dataSize());
    return state;
}

}

/// Every column that is read, in each of the six types and without values: what is loud says so in the host's
/// words and changes nothing, all else is silent.
class tst_fieldtypes : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void cleanup();
    void futureOfABaseCode_data() { everyColumn(); }
    void futureOfABaseCode();
    void futureOfIds_data() { everyColumn(); }
    void futureOfIds();
    void quote_data() { everyColumn(); }
    void quote();
    void volatility_data() { everyColumn(); }
    void volatility();
    void priceStep_data() { everyColumn(); }
    void priceStep();
    void priceStepOfNoUse_data();
    void priceStepOfNoUse();
    void interval_data() { everyColumn(); }
    void interval();
    void intervalOfASession_data() { everyColumn(); }
    void intervalOfASession();
    void managerThatCannotStart_data() { everyColumn(); }
    void managerThatCannotStart();
    void worksAgainAfterwards();
    void recordOfANarrowTable();

private:
    static void everyColumn();
    static QString expectedFuture(const Change& change);
    static QString expectedInterval(const Change& change);
    std::unique_ptr<TestPlot> makePlot(const Change& change);
    void checkInterval(bool maxSession, const QString& expected);
};

void tst_fieldtypes::cleanup()
{
    TestHost::dropSecurities();
    TestHost::dropBoards();
}

void tst_fieldtypes::everyColumn()
{
    QTest::addColumn<Change>("change");
    const auto rows = [](const char* table, const TestHost::Columns& columns) {
        for (const TableColumnDef& column : columns) {
            for (const FieldType type : HostColumns::allTypes) {
                for (const bool isNull : {false, true})
                    QTest::addRow("%s.%s, %s%s", table, qPrintable(column.name), HostColumns::nameOf(type),
                        isNull ? ", null" : "")
                        << Change{QString::fromLatin1(table), column.name, type, isNull};
            }
        }
    };
    rows(securities, TestHost::securitiesColumns());
    rows(boards, TestHost::boardsColumns());
}

std::unique_ptr<TestPlot> tst_fieldtypes::makePlot(const Change& change)
{
    HostColumns::fill(change);
    auto plot = std::make_unique<TestPlot>(false);
    plot->setPriceInterval(before);
    plot->QwtPlot::setAxisScale(QwtPlot::xBottom, 95.0, 125.0);
    plot->QwtPlot::setAxisScale(QwtPlot::yLeft, 1.0, 2.0);
    plot->updateAxes();
    addCurve(*plot, 9, {{100.0, 1.0}, {110.0, 2.0}}, QStringLiteral("curve"));
    return plot;
}

QString tst_fieldtypes::expectedFuture(const Change& change)
{
    const QString first = QStringLiteral("1");
    const QString second = QStringLiteral("2");
    const QString none = QStringLiteral("none");
    if (isAnyOf(change, securities, {"stock_id", "board_id", "sess_id"}))
        return change.isNull ? none : isInteger(change) ? second : thrown;
    if (change.isOf(securities, "expdate")) {
        const bool isRead = change.type == FieldType::Moment || change.type == FieldType::Text;
        return change.isNull ? first : isRead ? second : thrown;
    }
    if (isAnyOf(change, securities, {"sectype", "base_code"}))
        return !change.isNull && change.type == FieldType::Text ? second : none;
    if (isAnyOf(change, boards, {"stock_id", "board_id", "is_anonym"}))
        return !change.isNull && isInteger(change) ? second : none;
    return second;
}

void tst_fieldtypes::futureOfABaseCode()
{
    QFETCH(Change, change);
    const auto plot = makePlot(change);
    plot->setBaseCode(code);
    const QStringList state = stateOf(*plot);
    QCOMPARE(answer([&] { return describe(plot->getFuture()); }), expectedFuture(change));
    QCOMPARE(stateOf(*plot), state);
}

void tst_fieldtypes::futureOfIds()
{
    QFETCH(Change, change);
    const auto plot = makePlot(change);
    plot->setIsinId(secondFuture);
    plot->setBoardId(2);
    const bool isFound
        = !isAnyOf(change, securities, {"isin_id", "board_id"}) || (!change.isNull && isInteger(change));
    QCOMPARE(answer([&] { return describe(plot->getFuture()); }),
        isFound ? QStringLiteral("2") : QStringLiteral("none"));
}

void tst_fieldtypes::quote()
{
    QFETCH(Change, change);
    const auto plot = makePlot(change);
    const Record future = TestHost::recordAt(plot->securitiesTable(), 1);
    const QStringList names{"cur_kotir_real", "cur_kotir", "old_kotir"};
    const QStringList quotes{"101", "102", "103", "110"};
    const int own = names.indexOf(change.column);
    // What comes before the column in question is not there, so that it is read.
    for (int i = 0; i < own; ++i)
        TestHost::changeRow(future, {{names.at(i), QVariant()}});
    const QString expected = own < 0        ? quotes.first()
        : change.isNull                     ? quotes.at(own + 1)
        : change.type == FieldType::Decimal ? quotes.at(own)
                                            : thrown;
    const QStringList state = stateOf(*plot);
    QCOMPARE(answer([&] { return TestHost::text(plot->getKotirFromFutureRecord(future)); }), expected);
    QCOMPARE(stateOf(*plot), state);
}

void tst_fieldtypes::volatility()
{
    QFETCH(Change, change);
    const auto plot = makePlot(change);
    double low = 1.0;
    double high = 2.0;
    bool isLoud = false;
    if (change.isOf(securities, "sectype") && (change.isNull || change.type != FieldType::Text)) {
        low = gc_dVolatMinDefault;
        high = gc_dVolatMaxDefault;
    } else if (change.isOf(securities, "volat_min") || change.isOf(securities, "volat_max")) {
        isLoud = !change.isNull && !isNumber(change);
        if (change.isNull)
            (change.column == QLatin1String("volat_min") ? low : high)
                = change.column == QLatin1String("volat_min") ? gc_dVolatMinDefault : gc_dVolatMaxDefault;
    }
    const auto describeBounds
        = [](double a, double b) { return QString::number(a) + QLatin1Char(' ') + QString::number(b); };
    const QStringList state = stateOf(*plot);
    QCOMPARE(answer([&] {
        const auto bounds = plot->volatMinMax(TestHost::recordAt(plot->securitiesTable(), 1));
        return describeBounds(bounds.first, bounds.second);
    }),
        isLoud ? thrown : describeBounds(low, high));
    QCOMPARE(stateOf(*plot), state);
}

void tst_fieldtypes::priceStep()
{
    QFETCH(Change, change);
    const auto plot = makePlot(change);
    plot->setBaseCode(code);
    PriceBased2dPlotPicker* picker = plot->createPicker();
    const QString future = expectedFuture(change);
    QString expected = QStringLiteral("1");
    if (change.isOf(securities, "price_step"))
        expected = change.isNull ? QStringLiteral("0") : isNumber(change) ? expected : thrown;
    if (future == thrown)
        expected = thrown;
    else if (future == QLatin1String("none"))
        expected = QStringLiteral("-1");
    const QStringList state = stateOf(*plot);
    const auto refresh = [&] {
        picker->setPriceStep();
        return QString::number(plot->priceStep());
    };
    QCOMPARE(answer(refresh), expected);
    if (expected == thrown)
        QCOMPARE(plot->priceStep(), -1.0);
    QCOMPARE(stateOf(*plot), state);
}

void tst_fieldtypes::priceStepOfNoUse_data()
{
    QTest::addColumn<double>("step");
    for (const double step : {qQNaN(), qInf(), -qInf(), 1e-13, -0.5})
        QTest::addRow("%g", step) << step;
}

// It rounds nothing, and gives no points.
void tst_fieldtypes::priceStepOfNoUse()
{
    QFETCH(double, step);
    const auto plot
        = makePlot({QLatin1String(securities), QStringLiteral("price_step"), FieldType::Double, false});
    plot->setBaseCode(code);
    PriceBased2dPlotPicker* picker = plot->createPicker();
    Manager manager(false, plot.get());
    picker->setPriceStep();
    QVERIFY(!manager.calcPlotPoints(true).isEmpty());
    const QStringList state = stateOf(*plot);
    TestHost::changeRow(TestHost::recordAt(plot->securitiesTable(), 1), {{"price_step", step}});
    picker->setPriceStep();
    QCOMPARE(plot->priceStep(), step);
    QCOMPARE(plot->roundedXValue(101.3), 101.3);
    QVERIFY(manager.calcPlotPoints(true).isEmpty());
    QCOMPARE(stateOf(*plot), state);
}

QString tst_fieldtypes::expectedInterval(const Change& change)
{
    const QString whole = QStringLiteral("100 to 120 by 10");
    const QString none = QStringLiteral("none");
    if (isAnyOf(change, securities, {"stock_id", "board_id", "sec_id"}))
        return change.isNull ? none : isInteger(change) ? whole : thrown;
    if (isAnyOf(change, securities, {"sectype", "base_code"}))
        return !change.isNull && change.type == FieldType::Text ? whole : none;
    if (change.isOf(securities, "strike"))
        return !change.isNull && change.type == FieldType::Decimal ? whole : none;
    if (change.isOf(securities, "decimals"))
        return !change.isNull && isInteger(change) ? whole : none;
    return whole;
}

void tst_fieldtypes::checkInterval(bool maxSession, const QString& expected)
{
    QFETCH(Change, change);
    const auto plot = makePlot(change);
    Manager manager(maxSession, plot.get());
    plot->setBaseCode(code);
    plot->setPriceInterval(before);
    QSignalSpy spy(&manager, SIGNAL(priceIntervalChanged(PriceInterval)));
    const QStringList state = stateOf(*plot);
    const auto update = [&] {
        manager.setPlot(plot.get());
        return describe(manager.interval());
    };
    QCOMPARE(answer(update), expected);
    QCOMPARE(spy.count(), expected == thrown ? 0 : 1);
    if (expected == thrown)
        QCOMPARE(stateOf(*plot), state);
    // Once more, without the model's help.
    plot->setPriceInterval(before);
    const auto recompute = [&] {
        manager.updatePriceInterval();
        return describe(manager.interval());
    };
    QCOMPARE(answer(recompute), expected);
    if (expected == thrown)
        QCOMPARE(stateOf(*plot), state);
}

void tst_fieldtypes::interval()
{
    QFETCH(Change, change);
    checkInterval(false, expectedInterval(change));
}

void tst_fieldtypes::intervalOfASession()
{
    QFETCH(Change, change);
    QString expected = expectedInterval(change);
    // A session that is null counts as one; one that is no integer has no options.
    if (change.isOf(securities, "sess_id") && !isInteger(change))
        expected = QStringLiteral("none");
    checkInterval(true, expected);
}

void tst_fieldtypes::managerThatCannotStart()
{
    QFETCH(Change, change);
    const auto plot = makePlot(change);
    plot->setBaseCode(code);
    const bool hasOptions = expectedFuture(change) != QLatin1String("none");
    QString expected = expectedInterval(change);
    if (expectedFuture(change) == thrown)
        expected = thrown;
    else if (!hasOptions)
        expected = describe(before);
    const QStringList state = stateOf(*plot);
    QCOMPARE(answer([&] {
        new Manager(false, plot.get());
        return describe(plot->priceInterval());
    }),
        expected);
    if (expected == thrown) {
        QCOMPARE(stateOf(*plot), state);
        QVERIFY(plot->findChildren<QObject*>().count()
            == std::make_unique<TestPlot>(false)->findChildren<QObject*>().count());
        // Nothing is left that would listen.
        TestHost::addSecurity({{"base_code", code}, {"sectype", "O"}, {"strike", "130"}});
        QCOMPARE(stateOf(*plot), state);
    }
}

// A model that was interrupted in the middle of its reset goes on with the next table.
void tst_fieldtypes::worksAgainAfterwards()
{
    const auto plot
        = makePlot({QLatin1String(securities), QStringLiteral("sec_id"), FieldType::Int32, false});
    Manager manager(false, plot.get());
    plot->setBaseCode(code);
    const auto sizes = [&manager] { return manager.model()->rowCount(); };
    manager.setPlot(plot.get());
    QCOMPARE(sizes(), 3);
    const Record added = TestHost::addSecurity({{"base_code", code}, {"sectype", "O"}, {"strike", "130"},
        {"stock_id", 1}, {"board_id", 2}, {"sec_id", 300}, {"decimals", 2}});
    QCOMPARE(describe(manager.interval()), QStringLiteral("100 to 130 by 10"));

    HostColumns::fill({QLatin1String(securities), QStringLiteral("sec_id"), FieldType::Text, false});
    TestPlot second;
    Manager broken(false, &second);
    second.setBaseCode(code);
    for (int i = 0; i < 3; ++i) {
        QCOMPARE(TestHost::thrownText([&] { broken.updatePriceInterval(); }), i ? thrown : "nothing thrown");
        if (i == 0)
            QCOMPARE(TestHost::thrownText([&] { broken.setPlot(&second); }), thrown);
    }
    QCOMPARE(broken.model()->rowCount(), 3);
    // Each change of the strikes is refused anew, and each leaves a model that is whole.
    const Record last = TestHost::recordAt(second.securitiesTable(), 4);
    QCOMPARE(TestHost::thrownText([&] { TestHost::removeRows({last}); }), thrown);
    QCOMPARE(broken.model()->rowCount(), 2);
    QCOMPARE(TestHost::thrownText([&] { TestHost::appendRow(second.securitiesTable(), last); }), thrown);
    QCOMPARE(broken.model()->rowCount(), 3);
    QCOMPARE(TestHost::text(broken.model()->strike(2)), QStringLiteral("120"));
    QCOMPARE(describe(second.priceInterval()), QStringLiteral("none"));
}

// The positions of the columns are those of "securities", and lie beyond the columns of another table.
void tst_fieldtypes::recordOfANarrowTable()
{
    const auto plot = makePlot({QLatin1String(boards), QStringLiteral("name"), FieldType::Text, false});
    const Record board = TestHost::addBoard(5, 6, true);
    QCOMPARE(TestHost::text(plot->getKotirFromFutureRecord(board)), QStringLiteral("110"));
    QVERIFY(plot->volatMinMax(board) == std::pair(gc_dVolatMinDefault, gc_dVolatMaxDefault));
}

PLOT2D_TEST_MAIN(tst_fieldtypes)
#include "tst_fieldtypes.moc"
