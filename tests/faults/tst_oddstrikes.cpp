#include "flow/strikes.h"
#include "support/testmain.h"
#include "support/testplot.h"

#include <basic_models/strikebybasecodemodel.h>
#include <plot2d/pricebased2dplotpointmanager.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <random>

using Manager = PriceBased2dPlotPointManager;

namespace {

constexpr quint64 seed = 20240918;
constexpr int decimals = 2;

/// What a manager should make of strikes, by the rules of the interval alone.
PriceInterval expectedInterval(QVector<decimal> strikes)
{
    std::sort(strikes.begin(), strikes.end());
    strikes.erase(std::unique(strikes.begin(), strikes.end()), strikes.end());
    const PriceInterval none;
    if (strikes.size() < 2)
        return none;
    const double low = strikes.first().toDouble();
    const double high = strikes.last().toDouble();
    if (std::abs(low) <= 1e-12 || std::abs(high) <= 1e-12)
        return none;
    if (std::abs(high - low) * 1e12 <= std::min(std::abs(low), std::abs(high)))
        return none;
    double least = high - low;
    for (int i = 1; i < strikes.size(); ++i)
        least = std::min(least, TestHost::difference(strikes.at(i), strikes.at(i - 1)).toDouble());
    // Of more than two the distance must be less than the whole, which no evenly spaced ones can break.
    const double step = decimal::fromDouble(least, decimals).toDouble();
    return std::abs(step) <= 1e-12 ? none : PriceInterval{low, high, step, true};
}

QVector<decimal> numbers(const char* texts)
{
    QVector<decimal> result;
    for (const QString& text : QString::fromLatin1(texts).split(QLatin1Char(' '), Qt::SkipEmptyParts))
        result << TestHost::number(text);
    return result;
}

}

Q_DECLARE_METATYPE(QVector<decimal>)

/// Strikes that no exchange would list, from the host's table through the model to interval, points and
/// curves.
class tst_oddstrikes : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void lists_data();
    void lists();
    void notANumber_data();
    void notANumber();
    void nullStrikes();
    void randomLists();

private:
    void add(const decimal& strike) { addOption("", {{"strike", QVariant::fromValue(strike)}}); }
    void addTogether(const QVector<decimal>& strikes);
    void checkPoints(Manager& manager, const char* what);

    std::unique_ptr<TestPlot> m_plot;
    Table* m_table = nullptr;
};

void tst_oddstrikes::init()
{
    m_table = TestHost::createSecurities();
    TestHost::createBoards();
    TestHost::addBoard(1, 2, true);
    TestHost::addSecurity(TestHost::future({{"price_step", "0.5"}}));
    m_plot = std::make_unique<TestPlot>();
    m_plot->setBaseCode(QStringLiteral("Amber"));
    m_plot->createPicker()->setPriceStep();
}

void tst_oddstrikes::cleanup()
{
    m_plot.reset();
    TestHost::dropSecurities();
    TestHost::dropBoards();
}

void tst_oddstrikes::addTogether(const QVector<decimal>& strikes)
{
    QVector<TestHost::Row> rows;
    for (const decimal& strike : strikes)
        rows << option("", {{"strike", QVariant::fromValue(strike)}});
    TestHost::addSecurities(rows);
}

// In whatever view: ascending, within the strikes, not more than a screen needs.
void tst_oddstrikes::checkPoints(Manager& manager, const char* what)
{
    const PriceInterval interval = manager.interval();
    const std::pair<double, double> views[] = {{-1.0, 1.0}, {1e-6, 2e-6}, {99.0, 121.0}, {100.0, 100.25},
        {0.0, 1e14}, {-1e308, 1e308}, {1e15, 1e15}};
    for (const auto& [low, high] : views) {
        m_plot->QwtPlot::setAxisScale(QwtPlot::xBottom, low, high);
        m_plot->updateAxes();
        for (const bool force : {false, true}) {
            const QList<double> points = manager.calcPlotPoints(force);
            QVERIFY2(interval.valid || points.isEmpty(), what);
            QVERIFY2(points.size() <= 100001 + 202, what);
            for (int i = 0; i < points.size(); ++i) {
                QVERIFY2(std::isfinite(points.at(i)) && points.at(i) >= interval.minPrice
                        && points.at(i) <= interval.maxPrice * (1.0 + 1e-12),
                    what);
                QVERIFY2(i == 0 || points.at(i) > points.at(i - 1), what);
            }
        }
    }
}

void tst_oddstrikes::lists_data()
{
    QTest::addColumn<QVector<decimal>>("strikes");
    QTest::addColumn<PriceInterval>("expected");
    const PriceInterval none;
    const auto row = [](const char* name, const char* strikes, const PriceInterval& expected) {
        QTest::newRow(name) << numbers(strikes) << expected;
    };
    row("none", "", none);
    row("one", "100", none);
    row("one, three times", "100 100 100", none);
    row("descending", "120 110 100", {100.0, 120.0, 10.0, true});
    row("up and down", "110 100 120 105", {100.0, 120.0, 5.0, true});
    row("each twice, descending", "120 120 110 110 100 100", {100.0, 120.0, 10.0, true});
    row("zero", "0", none);
    row("zero and one", "0 100", none);
    row("zero in front", "0 10 20 30", none);
    row("zero behind", "-20 -10 0", none);
    row("zero inside", "-10 0 10", {-10.0, 10.0, 10.0, true});
    row("negative", "-30 -20 -10", {-30.0, -10.0, 10.0, true});
    row("negative two", "-20 -10", {-20.0, -10.0, 10.0, true});
    row("below and above zero", "-10 10", {-10.0, 10.0, 20.0, true});
    row("smallest", "0.00001 0.00002", none);
    row("closer than the decimals", "100 100.001 100.002", none);
    row("rounded up to the decimals", "100 100.005 101", {100.0, 101.0, 0.01, true});
    row("as good as equal", "92233720368547 92233720368546", none);
    row("largest", "92233720368547 92233720360000", {92233720360000.0, 92233720368547.0, 8547.0, true});
    row("far apart", "0.01 92233720368547", {0.01, 92233720368547.0, 92233720368546.99, true});
}

void tst_oddstrikes::lists()
{
    QFETCH(QVector<decimal>, strikes);
    QFETCH(PriceInterval, expected);
    QCOMPARE(expectedInterval(strikes), expected);
    // One after the other, all at once, and before there is a manager.
    Manager manager(false, m_plot.get());
    for (const decimal& strike : qAsConst(strikes))
        add(strike);
    QCOMPARE(manager.interval(), expected);
    checkPoints(manager, "one after the other");
    QVector<Record> options;
    for (int i = 1; i < TestHost::rowCount(m_table); ++i)
        options << TestHost::recordAt(m_table, i);
    TestHost::removeRows(options);
    QCOMPARE(manager.interval(), PriceInterval());
    addTogether(strikes);
    QCOMPARE(manager.interval(), expected);
    checkPoints(manager, "all at once");
    m_plot->setPriceInterval(PriceInterval());
    const Manager late(false, m_plot.get());
    QCOMPARE(late.interval(), expected);
}

void tst_oddstrikes::notANumber_data()
{
    QTest::addColumn<double>("strike");
    constexpr double infinity = std::numeric_limits<double>::infinity();
    QTest::newRow("NaN") << std::numeric_limits<double>::quiet_NaN();
    QTest::newRow("infinite") << infinity;
    QTest::newRow("minus infinite") << -infinity;
    QTest::newRow("largest double") << std::numeric_limits<double>::max();
    QTest::newRow("smallest double") << std::numeric_limits<double>::denorm_min();
}

// A decimal holds no such number: what becomes of it is an ordinary strike, or none that counts.
void tst_oddstrikes::notANumber()
{
    QFETCH(double, strike);
    const decimal stored = decimal::fromDouble(strike, 5);
    QVERIFY(std::isfinite(stored.toDouble()));
    Manager manager(false, m_plot.get());
    QVector<decimal> strikes{
        TestHost::number(QStringLiteral("100")), TestHost::number(QStringLiteral("110"))};
    for (const decimal& one : qAsConst(strikes))
        add(one);
    const PriceInterval before = manager.interval();
    QVERIFY(before.valid);
    add(stored);
    const Record last = TestHost::recordAt(m_table, TestHost::rowCount(m_table) - 1);
    strikes << m_table->dataPtr(last.row(), m_table->columnIndex(QStringLiteral("strike"))).toDecimal();
    QCOMPARE(manager.interval(), expectedInterval(strikes));
    checkPoints(manager, QTest::currentDataTag());
    TestHost::removeRows({last});
    QCOMPARE(manager.interval(), before);
}

void tst_oddstrikes::nullStrikes()
{
    Manager manager(false, m_plot.get());
    addOption("100");
    for (int i = 0; i < 3; ++i)
        addOption("", {{"strike", QVariant()}});
    QVERIFY(!manager.interval().valid);
    const Record last = addOption("110");
    QCOMPARE(manager.interval(), (PriceInterval{100.0, 110.0, 10.0, true}));
    TestHost::changeRow(last, {{"strike", QVariant()}});
    QVERIFY(!manager.interval().valid);
    QVERIFY(manager.calcPlotPoints(true).isEmpty());
}

void tst_oddstrikes::randomLists()
{
    std::mt19937_64 random(seed);
    const QVector<decimal> odd = numbers("0 -1 1 -0.01 0.01 100 100.5 110 120 -100 99999 92233720368547 "
                                         "-92233720368547 0.00001 -0.00001 100.00001");
    Manager manager(false, m_plot.get());
    QVector<decimal> there;
    QVector<Record> records;
    for (int turn = 0; turn < 600; ++turn) {
        if (there.size() > 6 || (!there.isEmpty() && random() % 3 == 0)) {
            const int gone = int(random() % std::size_t(there.size()));
            there.removeAt(gone);
            TestHost::removeRows({records.takeAt(gone)});
        } else {
            there << odd.at(int(random() % std::size_t(odd.size())));
            records << addOption("", {{"strike", QVariant::fromValue(there.last())}});
        }
        QStringList texts;
        for (const decimal& strike : qAsConst(there))
            texts << TestHost::text(strike);
        const QString what
            = QStringLiteral("seed %1, turn %2: %3").arg(seed).arg(turn).arg(texts.join(QLatin1Char(' ')));
        QVERIFY2(manager.interval() == expectedInterval(there), qPrintable(what));
        if (turn % 20 == 0)
            checkPoints(manager, qPrintable(what));
    }
}

PLOT2D_TEST_MAIN(tst_oddstrikes)
#include "tst_oddstrikes.moc"
