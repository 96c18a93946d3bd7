#include "monkey/invariants.h"
#include "monkey/memorywatch.h"
#include "monkey/messagewatch.h"
#include "monkey/monkeyhost.h"
#include "monkey/monkeyrun.h"
#include "support/testmain.h"

#include <qwt_legend_label.h>

#include <functional>
#include <limits>
#include <vector>

using Monkey::Snapshot;
using Spoil = std::function<void(Snapshot&)>;

Q_DECLARE_METATYPE(Spoil)

namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

QList<double> ticksFrom(double lower, double upper, double step)
{
    QList<double> ticks;
    for (int i = 0; lower + i * step <= upper; ++i)
        ticks.append(lower + i * step);
    return ticks;
}

Snapshot::Scale scale(double lower, double upper, double step)
{
    Snapshot::Scale result;
    result.lower = lower;
    result.upper = upper;
    result.ticks[QwtScaleDiv::MajorTick] = ticksFrom(lower, upper, step);
    result.ticks[QwtScaleDiv::MinorTick] = ticksFrom(lower, upper, step / 2.0);
    result.maxMajor = 8;
    result.maxMinor = 5;
    return result;
}

/// A plot of which everything holds.
Snapshot soundSnapshot()
{
    Snapshot snapshot;
    snapshot.prices = scale(70.0, 130.0, 10.0);
    snapshot.values = scale(10.0, 20.0, 2.0);
    snapshot.quoteLines = {{{{100.0, 9.0}, {100.0, 21.0}}, {{100.0, 0.0}, {100.0, 1.0}}}};
    snapshot.labels.candidates = ticksFrom(70.0, 130.0, 10.0);
    snapshot.labels.shown = {70.0, 100.0, 130.0};
    snapshot.labels.left = {70.0, 130.0};
    snapshot.labels.rectangles = {QRect(0, 0, 30, 10), QRect(100, 0, 30, 10), QRect(200, 0, 30, 10)};
    snapshot.legend.present = true;
    snapshot.legend.curves = QStringList{QStringLiteral("Smile"), QStringLiteral("Theory")};
    snapshot.legend.entries = {{QStringLiteral("Smile")}, {QStringLiteral("Theory")}};
    snapshot.autoScale = true;
    snapshot.expectedAutoScale = true;
    snapshot.autoScaleRange = std::pair<double, double>(10.0, 20.0);
    return snapshot;
}

Spoil quoteLine(const QVector<QPointF>& samples)
{
    return [samples](Snapshot& snapshot) { snapshot.quoteLines[0].samples = samples; };
}

Spoil bounds(double lower, double upper)
{
    return [lower, upper](Snapshot& snapshot) {
        snapshot.prices.lower = lower;
        snapshot.prices.upper = upper;
    };
}

QStringList soundAfter(Monkey::Host& host, const std::function<void()>& action)
{
    const Snapshot before = Monkey::snapshotOf(host);
    action();
    const Snapshot after = Monkey::snapshotOf(host);
    return {
        Monkey::Invariants::broken(before, before, true), Monkey::Invariants::broken(before, after, true)};
}

}

/// That the monkey's checks see what is broken: in made-up states, in a plot, and in a run.
class tst_invariants : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void soundStateHolds();
    void brokenStates_data();
    void brokenStates();
    void movedValues_data();
    void movedValues();
    void followedLabels();
    void brokenPlots_data();
    void brokenPlots();
    void manyTicksOfTheHostsStep();
    void manyLabelsComparedWithNeighbours();
    void messages();
    void memoryAtOnce();
    void memoryBetweenPlots();
    void runSaysWhatBroke();
};

void tst_invariants::soundStateHolds()
{
    const Snapshot sound = soundSnapshot();
    QCOMPARE(Monkey::Invariants::broken(sound, sound, true), QString());
    Snapshot other = sound;
    other.legend = Snapshot::Legend();
    other.labels = Snapshot::Labels();
    other.quoteLines.clear();
    QCOMPARE(Monkey::Invariants::broken(sound, other, true), QString());
    // The host's own samples are what they are.
    other.quoteLines = {{{{notANumber, infinity}}, {{notANumber, infinity}}}};
    QCOMPARE(Monkey::Invariants::broken(sound, other, true), QString());

    // Ticks that are one double need no thinning where a conversion leaves them without texts.
    other = sound;
    other.labels.candidates.prepend(other.labels.candidates.first());
    other.labels.shown = {other.labels.candidates[0], other.labels.candidates[1]};
    other.labels.rectangles = {QRect(), QRect()};
    QCOMPARE(Monkey::Invariants::broken(sound, other, true), QString());
}

void tst_invariants::brokenStates_data()
{
    QTest::addColumn<Spoil>("spoil");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char* name, const char* expected, const Spoil& spoil) {
        QTest::newRow(name) << spoil << QString::fromLatin1(expected);
    };
    row("no lower bound", "prices: bounds", bounds(notANumber, 130.0));
    row("infinite lower bound", "prices: bounds", bounds(-infinity, 130.0));
    row("infinite upper bound", "prices: bounds", bounds(70.0, infinity));
    row("reversed", "prices: bounds", bounds(130.0, 70.0));
    row("no width", "prices: bounds", bounds(70.0, 70.0));
    row("values too", "values: bounds", [](Snapshot& s) { s.values.upper = notANumber; });
    row("tick that is no number", "a tick that is not finite",
        [](Snapshot& s) { s.prices.ticks[QwtScaleDiv::MinorTick].last() = notANumber; });
    row("infinite tick", "a tick that is not finite",
        [](Snapshot& s) { s.prices.ticks[QwtScaleDiv::MediumTick].append(infinity); });
    row("ticks out of order", "ticks that do not ascend",
        [](Snapshot& s) { s.values.ticks[QwtScaleDiv::MajorTick].swapItemsAt(0, 1); });
    row("too many major ticks", "20 major ticks",
        [](Snapshot& s) { s.prices.ticks[QwtScaleDiv::MajorTick] = ticksFrom(1.0, 20.0, 1.0); });
    row("too many minor ticks", "ticks of one kind for",
        [](Snapshot& s) { s.prices.ticks[QwtScaleDiv::MinorTick] = ticksFrom(70.0, 130.0, 0.5); });

    row("quote line of three", "quote line: 3 samples",
        quoteLine({{100.0, 9.0}, {100.0, 10.0}, {100.0, 21.0}}));
    row("quote line without samples", "quote line: 0 samples", quoteLine({}));
    row("quote line at no price", "quote line: from", quoteLine({{notANumber, 9.0}, {notANumber, 21.0}}));
    row("quote line without an end", "quote line: from", quoteLine({{100.0, 9.0}, {100.0, infinity}}));
    row("quote line without a beginning", "quote line: from", quoteLine({{100.0, -infinity}, {100.0, 21.0}}));
    row("quote line aslant", "quote line: from", quoteLine({{100.0, 9.0}, {101.0, 21.0}}));
    row("quote line upside down", "quote line: from", quoteLine({{100.0, 21.0}, {100.0, 9.0}}));
    row("quote line of no length", "quote line: from", quoteLine({{100.0, 9.0}, {100.0, 9.0}}));

    row("labels out of order", "labels: they do not ascend",
        [](Snapshot& s) { s.labels.shown.swapItemsAt(0, 1); });
    row("label twice", "labels: 70 twice", [](Snapshot& s) {
        s.labels.candidates.prepend(70.0);
        s.labels.shown[1] = 70.0;
    });
    row("label of no tick", "labels: one is no candidate", [](Snapshot& s) { s.labels.shown[1] = 101.0; });
    row("label without a place", "labels: 2 rectangles for 3",
        [](Snapshot& s) { s.labels.rectangles.removeLast(); });
    row("neighbours overlap", "labels: 70 and 100 overlap",
        [](Snapshot& s) { s.labels.rectangles[1].moveLeft(29); });
    row("first and last overlap", "labels: 70 and 130 overlap",
        [](Snapshot& s) { s.labels.rectangles[2] = QRect(10, 0, 30, 10); });

    row("stranger in the legend", "legend: 1 widgets are not", [](Snapshot& s) { s.legend.strangers = 1; });
    row("curve without a place", "legend: 1 entries for 2 curves",
        [](Snapshot& s) { s.legend.entries.removeLast(); });
    row("entry of no curve", "legend: 3 entries for 2 curves",
        [](Snapshot& s) { s.legend.entries.append({QStringLiteral("Gone")}); });
    row("curve without an entry", "legend: 0 entries for a curve",
        [](Snapshot& s) { s.legend.entries[0].clear(); });
    row("curve with two entries", "legend: 2 entries for a curve",
        [](Snapshot& s) { s.legend.entries[1].append(QStringLiteral("Theory")); });
    row("entry of an old title", "legend: the entry \"Theory\" for the curve \"Smile\"",
        [](Snapshot& s) { s.legend.entries[0] = QStringList{QStringLiteral("Theory")}; });

    row("auto-scale off by itself", "auto-scale: it is off", [](Snapshot& s) { s.autoScale = false; });
    row("auto-scale on by itself", "auto-scale: it is on", [](Snapshot& s) { s.expectedAutoScale = false; });
    row("item of another plot", "items: 1 are of another plot", [](Snapshot& s) { s.foreignItems = 1; });
}

void tst_invariants::brokenStates()
{
    QFETCH(Spoil, spoil);
    QFETCH(QString, expected);
    const Snapshot sound = soundSnapshot();
    Snapshot spoilt = sound;
    spoil(spoilt);
    const QString broken = Monkey::Invariants::broken(sound, spoilt, false);
    QVERIFY2(broken.contains(expected), qPrintable(broken));
}

void tst_invariants::movedValues_data()
{
    QTest::addColumn<Spoil>("spoil");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char* name, const char* expected, const Spoil& spoil) {
        QTest::newRow(name) << spoil << QString::fromLatin1(expected);
    };
    row("not what the auto-scale finds", "instead of 10 .. 20", [](Snapshot&) {});
    row("not as low", "instead of 9 .. 18", [](Snapshot& s) { s.autoScaleRange = {9.0, 18.0}; });
    row("where it finds nothing", "where the auto-scale has no range",
        [](Snapshot& s) { s.autoScaleRange.reset(); });
    row("what it finds", "", [](Snapshot& s) { s.autoScaleRange = {10.0, 18.0}; });
    row("about the one value that it finds", "", [](Snapshot& s) {
        s.values = scale(13.0, 15.0, 1.0);
        s.autoScaleRange = {14.0, 14.0};
    });
    row("auto-scale off", "", [](Snapshot& s) { s.autoScale = s.expectedAutoScale = false; });
}

void tst_invariants::movedValues()
{
    QFETCH(Spoil, spoil);
    QFETCH(QString, expected);
    const Snapshot sound = soundSnapshot();
    Snapshot moved = sound;
    moved.values = scale(10.0, 18.0, 2.0);
    spoil(moved);
    const QString broken = Monkey::Invariants::broken(sound, moved, true);
    QVERIFY2(expected.isEmpty() ? broken.isEmpty() : broken.contains(expected), qPrintable(broken));
    // The host may do as it likes, and so may Qwt where the host leaves the range to it.
    QCOMPARE(Monkey::Invariants::broken(sound, moved, false), QString());
    Snapshot byQwt = sound;
    byQwt.valuesByQwt = true;
    QCOMPARE(Monkey::Invariants::broken(byQwt, moved, true), QString());
}

void tst_invariants::followedLabels()
{
    const Snapshot sound = soundSnapshot();
    Snapshot stale = sound;
    stale.labels.left = {70.0, 75.0};
    QCOMPARE(Monkey::Invariants::broken(sound, stale, true),
        QStringLiteral("labels left: they are of another scale"));
    // The host may set scales and choose labels later.
    QCOMPARE(Monkey::Invariants::broken(sound, stale, false), QString());
}

void tst_invariants::brokenPlots_data()
{
    QTest::addColumn<int>("way");
    QTest::addColumn<QString>("expected");
    QTest::newRow("reversed scale") << 0 << QStringLiteral("prices: bounds 130 and 70");
    QTest::newRow("values moved behind the auto-scale")
        << 1 << QStringLiteral("vertical scale: moved to 0 .. 1");
    QTest::newRow("flag set behind the host") << 2 << QStringLiteral("auto-scale: it is off");
    QTest::newRow("spoilt quote line") << 3 << QStringLiteral("quote line: from");
    QTest::newRow("spoilt entry") << 4 << QStringLiteral("legend: the entry \"Nobody\"");
    QTest::newRow("entry taken out") << 5 << QStringLiteral("legend: 0 entries for a curve");
}

void tst_invariants::brokenPlots()
{
    QFETCH(int, way);
    QFETCH(QString, expected);
    Monkey::Host host;
    host.addOrdinaryCurves();
    host.plot().resize(400, 300);
    host.plot().show();
    QCoreApplication::processEvents();
    host.plot().setAxisScale(QwtPlot::xBottom, 70.0, 130.0, 0.0);
    host.plot().updateYAxisScale();
    const std::function<void()> ways[] = {
        [&] { host.plot().QwtPlot::setAxisScale(QwtPlot::xBottom, 130.0, 70.0); },
        [&] { host.plot().QwtPlot::setAxisScale(QwtPlot::yLeft, 0.0, 1.0); },
        [&] { host.plot().setAutoScaleEnabled(false); },
        [&] {
            host.curves().entries().last().curve->setSamples(
                QVector<QPointF>{{notANumber, 0.0}, {notANumber, 1.0}});
        },
        [&] { host.legend()->findChild<QwtLegendLabel*>()->setText(QStringLiteral("Nobody")); },
        [&] {
            host.legend()
                ->legendWidget(host.plot().itemToInfo(host.curves().entries()[0].curve))
                ->setParent(nullptr);
        },
    };
    QPointer<QWidget> entry
        = host.legend()->legendWidget(host.plot().itemToInfo(host.curves().entries()[0].curve));
    const QStringList broken = soundAfter(host, [&] {
        ways[way]();
        host.plot().updateAxes();
    });
    if (entry && !entry->parent())
        delete entry;
    QCOMPARE(broken[0], QString());
    QVERIFY2(broken[1].contains(expected), qPrintable(broken[1]));
}

void tst_invariants::manyTicksOfTheHostsStep()
{
    Snapshot::Scale fine = scale(0.0, 1000.0, 1.0);
    fine.step = 1.0;
    QCOMPARE(Monkey::Invariants::scale(fine), QString());
    fine.ticks[QwtScaleDiv::MajorTick] = ticksFrom(0.0, 20000.0, 1.0);
    QCOMPARE(Monkey::Invariants::scale(fine), QStringLiteral("20001 major ticks"));
}

void tst_invariants::manyLabelsComparedWithNeighbours()
{
    Snapshot::Labels labels;
    labels.candidates = ticksFrom(0.0, 499.0, 1.0);
    labels.shown = labels.candidates;
    for (int i = 0; i < labels.shown.size(); ++i)
        labels.rectangles.append(QRect(20 * i, 0, 20, 10));
    QCOMPARE(Monkey::Invariants::labels(labels), QString());
    labels.rectangles[400].setRight(labels.rectangles[401].left());
    QCOMPARE(Monkey::Invariants::labels(labels), QStringLiteral("400 and 401 overlap"));
}

void tst_invariants::messages()
{
    Monkey::MessageWatch watch;
    QCOMPARE(watch.take(), QString());
    qWarning("something is odd");
    QVERIFY(watch.take().contains(QStringLiteral("something is odd")));
    QCOMPARE(watch.take(), QString());

    const QString ofPress = QStringLiteral("QPainter::begin: Paint device returned engine == 0, type: 2");
    qWarning("%s", qPrintable(ofPress));
    QCOMPARE(watch.takeAfterPress(), QString());
    qWarning("%s", qPrintable(ofPress));
    QCOMPARE(watch.take(), ofPress);
}

void tst_invariants::memoryAtOnce()
{
    const Monkey::MemoryWatch watch;
    QCOMPARE(watch.afterStep(), QString());
    // Written to, as only then it is in use.
    const std::vector<char> block(static_cast<std::size_t>(Monkey::MemoryWatch::mostAtOnce) * 9 / 8, 'x');
    QVERIFY(watch.afterStep().startsWith(QStringLiteral("memory: grown by ")));
}

void tst_invariants::memoryBetweenPlots()
{
    Monkey::MemoryWatch watch;
    QCOMPARE(watch.betweenPlots(), QString());
    const std::vector<char> block(
        static_cast<std::size_t>(Monkey::MemoryWatch::mostInTheLongRun) * 5 / 4, 'x');
    QVERIFY(watch.betweenPlots().startsWith(QStringLiteral("memory: grown by ")));
    QVERIFY(watch.growth() > Monkey::MemoryWatch::mostInTheLongRun);
}

void tst_invariants::runSaysWhatBroke()
{
    Monkey::Run run(3);
    run.onStep = [](const QString& text) {
        if (text.startsWith(QStringLiteral("1005 ")))
            qWarning("step without luck");
    };
    const QString broken = run.play(0, 1100);
    QVERIFY2(broken.startsWith(QStringLiteral("seed 3, step 1005 ")), qPrintable(broken));
    QVERIFY2(broken.contains(QStringLiteral("step without luck")), qPrintable(broken));
    QVERIFY2(broken.endsWith(QStringLiteral("--replay 3:1000:1006")), qPrintable(broken));
    QCOMPARE(run.tally().steps, 1005);
}

PLOT2D_TEST_MAIN(tst_invariants)
#include "tst_invariants.moc"
