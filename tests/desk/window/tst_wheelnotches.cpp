#include "support/testmain.h"

#include <window/wheelnotches.h>

#include <limits>
#include <random>

namespace {

using Turns = QVector<WheelNotches::Turn>;

enum Place { Canvas, Prices };

WheelNotches::Turn turn(int angle, qint64 time = 0)
{
    return {QPoint(0, angle), Qt::NoModifier, Canvas, time};
}

Turns many(int count, int angle)
{
    return Turns(count, turn(angle));
}

WheelNotches::Turn with(Qt::KeyboardModifiers modifiers, WheelNotches::Turn changed)
{
    changed.modifiers = modifiers;
    return changed;
}

WheelNotches::Turn at(Place place, WheelNotches::Turn changed)
{
    changed.place = place;
    return changed;
}

constexpr int mostNotches = std::numeric_limits<int>::max() / 120;

}

Q_DECLARE_METATYPE(Turns)

/// How small turns of a wheel become notches.
class tst_wheelnotches : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void gathers_data();
    void gathers();
    void tellsWhenANotchIsWhole();
    void losesNothingOnTheWay();
};

void tst_wheelnotches::gathers_data()
{
    QTest::addColumn<Turns>("turns");
    QTest::addColumn<QPoint>("sum");
    const auto row = [](const char* name, const Turns& turns, const QPoint& sum) {
        QTest::newRow(name) << turns << sum;
    };
    const qint64 pause = WheelNotches::longestPause;

    row("a notch", {turn(120)}, {0, 120});
    row("a notch back", {turn(-120)}, {0, -120});
    row("three notches at once", {turn(360)}, {0, 360});
    row("120 parts", many(120, 1), {0, 120});
    row("120 parts back", many(120, -1), {0, -120});
    row("119 parts", many(119, 1), {0, 0});
    row("halves", many(3, 60), {0, 120});
    row("more than a notch", many(2, 180), {0, 360});
    row("nothing at all", many(200, 0), {0, 0});

    row("nothing in between", {turn(60), turn(0), turn(60)}, {0, 120});
    row("the other direction drops the rest", {turn(119), turn(-1), turn(1)}, {0, 0});
    row("the other direction begins at nothing", {turn(60), turn(-60), turn(-60)}, {0, -120});

    row("as long as the hand rests", {turn(60, 1000), turn(60, 1000 + pause)}, {0, 120});
    row("a pause drops the rest", {turn(60, 1000), turn(60, 1001 + pause)}, {0, 0});
    row("the pause is between two turns", {turn(40, 0), turn(40, pause), turn(40, 2 * pause)}, {0, 120});
    row("after a pause from nothing", {turn(100, 0), turn(60, 2 * pause), turn(60, 2 * pause)}, {0, 120});
    row("a clock that was set back", {turn(60, 1000), turn(60, 999)}, {0, 0});

    const auto shift = [](int angle) { return with(Qt::ShiftModifier, turn(angle)); };
    row("with Shift", {shift(60), shift(60)}, {0, 120});
    row("Shift drops the rest", {turn(60), shift(60)}, {0, 0});
    row("Shift let go drops the rest", {shift(60), turn(60)}, {0, 0});
    row("and does not give it back", {turn(60), shift(60), turn(60)}, {0, 0});
    row("another modifier drops the rest", {shift(60), with(Qt::ControlModifier, turn(60))}, {0, 0});
    row("another place drops the rest", {turn(60), at(Prices, turn(60))}, {0, 0});

    const WheelNotches::Turn sideways{QPoint(60, 0), Qt::NoModifier, Canvas, 0};
    row("sideways", {sideways, sideways}, {120, 0});
    row("each axis for itself", {turn(60), sideways, turn(60)}, {0, 120});
    row("the further axis counts", Turns(12, {QPoint(10, -20), Qt::NoModifier, Canvas, 0}), {0, -240});
    row("of equals the vertical one", Turns(2, {QPoint(60, 60), Qt::NoModifier, Canvas, 0}), {0, 120});

    constexpr int largest = std::numeric_limits<int>::max();
    constexpr int smallest = std::numeric_limits<int>::min();
    row("the largest angle", {turn(119), turn(largest)}, {0, mostNotches * 120});
    row("the smallest angle", {turn(-119), turn(smallest)}, {0, -mostNotches * 120});
    row("the smallest to the side", {{QPoint(smallest, largest), Qt::NoModifier, Canvas, 0}},
        {-mostNotches * 120, 0});
}

void tst_wheelnotches::gathers()
{
    QFETCH(Turns, turns);
    WheelNotches notches;
    QPoint sum;
    for (const WheelNotches::Turn& one : qAsConst(turns)) {
        const QPoint angle = notches.add(one);
        QCOMPARE(angle.x() % WheelNotches::notch, 0);
        QCOMPARE(angle.y() % WheelNotches::notch, 0);
        sum += angle;
    }
    QTEST(sum, "sum");
}

void tst_wheelnotches::tellsWhenANotchIsWhole()
{
    WheelNotches notches;
    for (int i = 1; i <= 240; ++i)
        QCOMPARE(notches.add(turn(1)), QPoint(0, i % 120 == 0 ? 120 : 0));
}

void tst_wheelnotches::losesNothingOnTheWay()
{
    constexpr unsigned seed = 20240419;
    std::mt19937_64 engine(seed);
    for (int run = 0; run < 200; ++run) {
        const int direction = run % 2 ? -1 : 1;
        WheelNotches notches;
        int turned = 0;
        int told = 0;
        for (int i = 0; i < 50; ++i) {
            const int angle = direction * std::uniform_int_distribution<int>(0, 300)(engine);
            turned += angle;
            told += notches.add(turn(angle, 10 * i)).y();
            QVERIFY2(told == turned / 120 * 120, qPrintable(QStringLiteral("run %1").arg(run)));
        }
    }
}

PLOT2D_TEST_MAIN(tst_wheelnotches)
#include "tst_wheelnotches.moc"
