#include "axes/axisrandom.h"
#include "axes/childlimits.h"
#include "plot2d/guardedscaleengine_p.h"
#include "plot2d/pricebased2dplotscaleengine.h"
#include "plot2d/scaledivision_p.h"
#include "support/childrun.h"
#include "support/testmain.h"

#include <cmath>
#include <functional>
#include <limits>

using ScaleDivision::Request;

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double largest = std::numeric_limits<double>::max();
constexpr double smallest = std::numeric_limits<double>::denorm_min();
constexpr int mostInts = std::numeric_limits<int>::max();

struct NamedRequest {
    const char* name;
    Request request;
};

/// What runs Qwt 6.1.4 out of memory: found by a search over bounds, steps and numbers of steps.
constexpr NamedRequest endless[] = {
    // The step overflows, and a NaN counts the minor steps.
    {"the largest range", {0.0, largest, 1, 5, 0.0}},
    {"its mirror image", {-largest, 0.0, 1, 1, 0.0}},
    {"inverted", {0.0, -1.1123576890961956e+308, 0, 100, 0.0}},
    {"both signs", {-6.2e307, 6.2e307, 1, 29, 0.0}},
    {"no major steps", {0.0, 1.2e308, 0, 5, 0.0}},
    {"negative major steps", {1e307, 1.5e308, -3, 5, 0.0}},
    {"base 2", {0.0, 9.2367916092753207e+307, 1, 100, 0.0, 2}},
    // More minor steps than memory.
    {"minor steps of a short range", {-17639205.0, -17639204.999999925, 5, mostInts, 0.0}},
    {"minor steps and no major ones", {210287032396570.0, 94576.38279550134, -5, 268435455, 0.0}},
    {"minor steps of many major ones", {0.0, 1000.0, 10000, 20000, 0.0}},
    {"minor steps of a given step", {49516.208508072326, 49516.302952744925, 28, 536870911, 2.2e307}},
    {"minor steps of a tiny step", {97110.341972341761, 97489.679245671228, 5, 4194303, 0.0006237}},
    {"minor steps of a vanishing step", {507.0, 507.00000000000125, 16777215, 536870911, 4.7e-24}},
    {"minor steps of a huge range", {-5.2479802874228236e307, 5.2479802874228236e307, 5, 33554431, 2.6e302}},
};

constexpr NamedRequest refused[] = {
    {"NaN below", {notANumber, 1.0, 5, 5, 0.0}},
    {"NaN above", {0.0, notANumber, 5, 5, 0.0}},
    {"infinite below", {-infinity, 1.0, 5, 5, 0.0}},
    {"infinite above", {0.0, infinity, 5, 5, 0.0}},
    {"both infinite", {infinity, infinity, 5, 5, 0.0}},
    {"of infinite width", {-largest, largest, 10, 5, 0.0}},
    {"wider than the largest double by less than that can be rounded to", {-1e290, largest, 10, 5, 0.0}},
    {"NaN as step", {0.0, 1.0, 5, 5, notANumber}},
    {"infinite step", {0.0, 1.0, 5, 5, infinity}},
    {"more steps than an int counts", {0.0, 1.0, 5, 5, 1e-10}},
    {"as many of a negative step", {0.0, 1.0, 5, 5, -1e-10}},
    {"denormal step", {0.0, 1.0, 5, 5, smallest}},
    {"denormal range", {0.0, smallest, 5, 5, 0.0}},
    {"denormal range and step", {0.0, 1e-310, 5, 5, 1e-311}},
};

constexpr NamedRequest accepted[] = {
    {"ordinary", {100.0, 200.0, 8, 5, 0.0}},
    {"inverted", {200.0, 100.0, 8, 5, 0.0}},
    {"empty", {5.0, 5.0, 8, 5, 0.0}},
    {"empty, with a step", {5.0, 5.0, 8, 5, 1.0}},
    {"no minor steps", {0.0, 1.0, 5, 0, 0.0}},
    {"negative numbers of steps", {0.0, 1.0, -5, -5, 0.0}},
    {"a huge range of few steps", {-5e307, 5e307, 10, 5, 0.0}},
    {"the largest range of some steps", {0.0, largest, 10, 5, 0.0}},
    {"the largest range of a step", {0.0, largest, 10, 5, 1e307}},
    {"a step wider than the range", {0.0, 1.0, 5, 100, 1e300}},
    {"the widest step", {0.0, 1.0, 5, 100, largest}},
    {"a narrow range", {0.0, 1e-299, 10, 5, 0.0}},
    {"one unit in the last place", {1e15, 1e15 + 0.125, 8, 5, 0.0}},
    {"one unit in the last place, with a step", {1e15, 1e15 + 0.125, 8, 5, 0.01}},
    {"the most of a plot", {0.0, 1.0, 10000, 100, 0.0}},
    {"many steps", {0.0, 1000.0, 8, 5, 0.001}},
    {"the most steps", {0.0, 1.0, 8, 100, 1e-9}},
    {"the most major steps", {0.0, 1.0, mostInts, 5, 0.0}},
};

QByteArray inFull(const Request& request)
{
    return QStringLiteral("{%1, %2, %3, %4, %5}")
        .arg(request.lower, 0, 'g', 17)
        .arg(request.upper, 0, 'g', 17)
        .arg(request.maxMajorSteps)
        .arg(request.maxMinorSteps)
        .arg(request.step, 0, 'g', 17)
        .toUtf8();
}

QwtScaleDiv divided(const QwtScaleEngine& engine, const Request& request)
{
    return engine.divideScale(
        request.lower, request.upper, request.maxMajorSteps, request.maxMinorSteps, request.step);
}

int ticksOf(const QwtScaleDiv& division)
{
    int count = 0;
    for (int type = 0; type < QwtScaleDiv::NTickTypes; ++type)
        count += static_cast<int>(division.ticks(type).size());
    return count;
}

}

class tst_divisibility : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void endlessIsRefused();
    void senselessIsRefused();
    void acceptedIsDivided();
    void randomRequests_data();
    void randomRequests();

private:
    void runInChild(rlim_t seconds, const std::function<void()>& test);
    template <std::size_t N> void checkRefused(const NamedRequest (&requests)[N]);
};

void tst_divisibility::runInChild(rlim_t seconds, const std::function<void()>& test)
{
    if (!TestSupport::isChild()) {
        const TestSupport::ChildRun run
            = TestSupport::repeatRowInChild(QProcessEnvironment::systemEnvironment());
        QVERIFY2(run.passed(), run.output.constData());
        return;
    }
    limitProcess(seconds);
    test();
}

template <std::size_t N> void tst_divisibility::checkRefused(const NamedRequest (&requests)[N])
{
    for (const NamedRequest& named : requests) {
        QVERIFY2(!ScaleDivision::isDivisible(named.request), named.name);

        GuardedScaleEngine guarded;
        PriceBased2dPlotScaleEngine engine(nullptr, 2, 10);
        for (QwtScaleEngine* each :
            {static_cast<QwtScaleEngine*>(&guarded), static_cast<QwtScaleEngine*>(&engine)}) {
            each->setBase(named.request.base);
            // Nothing was divided before.
            QVERIFY2(divided(*each, named.request) == QwtScaleDiv(), named.name);
            const QwtScaleDiv last = each->divideScale(100, 200, 8, 5, 0);
            QVERIFY2(divided(*each, named.request) == last, named.name);
        }
    }
}

void tst_divisibility::endlessIsRefused()
{
    runInChild(10, [this] { checkRefused(endless); });
}

void tst_divisibility::senselessIsRefused()
{
    runInChild(10, [this] { checkRefused(refused); });
}

void tst_divisibility::acceptedIsDivided()
{
    runInChild(20, [] {
        for (const NamedRequest& named : accepted) {
            QVERIFY2(ScaleDivision::isDivisible(named.request), named.name);
            const GuardedScaleEngine guarded;
            const PriceBased2dPlotScaleEngine engine(nullptr, 2, 10);
            const QwtScaleDiv expected = divided(QwtLinearScaleEngine(10), named.request);
            QVERIFY2(divided(guarded, named.request) == expected, named.name);
            QVERIFY2(divided(engine, named.request) == expected, named.name);
            QVERIFY2(ticksOf(expected) <= 2000000, named.name);
        }
    });
}

void tst_divisibility::randomRequests_data()
{
    QTest::addColumn<int>("base");
    for (const int base : {2, 7, 10, 1000000})
        QTest::addRow("base %d", base) << base;
}

void tst_divisibility::randomRequests()
{
    QFETCH(int, base);
    runInChild(60, [base] {
        AxisRandom random(static_cast<std::uint64_t>(base));
        GuardedScaleEngine engine;
        engine.setBase(static_cast<uint>(base));
        int divisible = 0;
        for (int i = 0; i < 1500; ++i) {
            Request request;
            request.base = engine.base();
            request.lower = random.value();
            const double width = std::pow(10.0, random.uniform(-323.0, 308.25));
            request.upper
                = random.chance(3) ? random.value() : request.lower + (random.chance(4) ? -width : width);
            request.maxMajorSteps
                = random.chance(3) ? mostInts >> random.integer(0, 30) : random.integer(-2, 20);
            request.maxMinorSteps
                = random.chance(3) ? mostInts >> random.integer(0, 30) : random.integer(-2, 20);
            if (random.chance(2))
                request.step = (request.upper - request.lower) * std::pow(10.0, random.uniform(-12.0, 12.0));
            const QwtScaleDiv before = engine.divideScale(0, random.integer(1, 9), 8, 5, 0);
            const QwtScaleDiv after = divided(engine, request);
            if (!ScaleDivision::isDivisible(request)) {
                QVERIFY2(after == before, inFull(request).constData());
                continue;
            }
            ++divisible;
            QVERIFY2(ticksOf(after) <= 12000000, inFull(request).constData());
        }
        QVERIFY(divisible > 300 && divisible < 1400);
    });
}

PLOT2D_TEST_MAIN(tst_divisibility)

#include "tst_divisibility.moc"
