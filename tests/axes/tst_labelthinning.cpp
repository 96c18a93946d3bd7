#include "plot2d/labelthinning_p.h"
#include "support/testmain.h"

#include <limits>

using LabelThinning::Overlap;
using LabelThinning::QuoteLabel;
using Values = QList<double>;

namespace {

/// A label of some pixels about its value, as high as all the others.
QRect label(double value, int width)
{
    return QRect(static_cast<int>(value) - width / 2, 0, width, 10);
}

LabelThinning::Measure labels(int width)
{
    return [width](double value) { return label(value, width); };
}

QuoteLabel drawnQuote(double value, const Values& ticks)
{
    return {value, LabelThinning::quoteIndex(ticks, value), true};
}

QuoteLabel hiddenQuote(double value, const Values& ticks)
{
    return {value, LabelThinning::quoteIndex(ticks, value), false};
}

Values everyTenth(int count)
{
    Values ticks;
    for (int i = 1; i <= count; ++i)
        ticks.append(10.0 * i);
    return ticks;
}

}

class tst_labelthinning : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void quoteIndex_data();
    void quoteIndex();
    void intersectedPair_data();
    void intersectedPair();
    void overlapsWithoutQuote();
    void overlapsOfTheQuote_data();
    void overlapsOfTheQuote();
    void overlapsNeedARectangleForEachTick();
    void hiddenQuoteBlocks();
    void removal_data();
    void removal();
    void removalDoesNotCheckWhatItErases();
    void thinned_data();
    void thinned();
    void parityIsThatOfTheSlot_data();
    void parityIsThatOfTheSlot();
    void indexIsKeptAfterASingleRemoval();
    void indexIsReadAnewInTheFirstRound();
    void singleRemovalEndsARound();
    void wideQuoteMayReachASecondLabel();
    void roundsRunOut();
    void aRoundCanLeaveNothing();
    void eachRoundMeasuresUpToTheSecondOverlap();
};

void tst_labelthinning::quoteIndex_data()
{
    QTest::addColumn<Values>("ticks");
    QTest::addColumn<double>("quote");
    QTest::addColumn<int>("expected");

    const Values ticks{10, 20, 30};
    QTest::newRow("below all") << ticks << 5.0 << 0;
    QTest::newRow("on the first") << ticks << 10.0 << 0;
    QTest::newRow("just above the first") << ticks << 10.000001 << 1;
    QTest::newRow("between") << ticks << 25.0 << 2;
    QTest::newRow("on the last") << ticks << 30.0 << 2;
    QTest::newRow("above all") << ticks << 31.0 << 3;
    QTest::newRow("infinite") << ticks << std::numeric_limits<double>::infinity() << 3;
    QTest::newRow("no tick") << Values{} << 5.0 << 0;
    QTest::newRow("quote of zero") << ticks << 0.0 << -1;
    QTest::newRow("negative quote") << Values{-2, -1} << -1.5 << -1;
    QTest::newRow("smallest quote") << ticks << std::numeric_limits<double>::denorm_min() << 0;
    QTest::newRow("first of equal ticks") << Values{10, 20, 20, 30} << 20.0 << 1;
}

void tst_labelthinning::quoteIndex()
{
    QFETCH(Values, ticks);
    QFETCH(double, quote);
    QTEST(LabelThinning::quoteIndex(ticks, quote), "expected");
}

void tst_labelthinning::intersectedPair_data()
{
    QTest::addColumn<QRect>("first");
    QTest::addColumn<QRect>("second");
    QTest::addColumn<bool>("expected");

    QTest::newRow("apart") << QRect(0, 0, 10, 10) << QRect(20, 0, 10, 10) << false;
    QTest::newRow("side by side") << QRect(0, 0, 10, 10) << QRect(10, 0, 10, 10) << false;
    QTest::newRow("by one pixel") << QRect(0, 0, 10, 10) << QRect(9, 0, 10, 10) << true;
    QTest::newRow("one above the other") << QRect(0, 0, 10, 10) << QRect(0, 10, 10, 10) << false;
    QTest::newRow("inside") << QRect(0, 0, 10, 10) << QRect(3, 3, 2, 2) << true;
    QTest::newRow("the same") << QRect(0, 0, 1, 1) << QRect(0, 0, 1, 1) << true;
    QTest::newRow("null") << QRect() << QRect(0, 0, 10, 10) << false;
    QTest::newRow("second null") << QRect(0, 0, 10, 10) << QRect() << false;
    // QRect alone would take a rectangle of negative width for its mirror image.
    QTest::newRow("negative width") << QRect(8, 0, -5, 10) << QRect(0, 0, 10, 10) << false;
    QTest::newRow("negative height") << QRect(0, 0, 10, 10) << QRect(0, 8, 10, -5) << false;
}

void tst_labelthinning::intersectedPair()
{
    QFETCH(QRect, first);
    QFETCH(QRect, second);
    QFETCH(bool, expected);
    const Overlap overlap = LabelThinning::intersectedPair(first, second, 3.0, 4.0);
    QCOMPARE(overlap, expected ? Overlap(3.0, 4.0) : Overlap(1.0, -1.0));
}

void tst_labelthinning::overlapsWithoutQuote()
{
    const Values ticks{0, 10, 30, 35, 40};
    QList<QRect> rectangles;
    for (const double tick : ticks)
        rectangles.append(label(tick, 12));
    const QList<Overlap> expected{{0.0, 10.0}, {30.0, 35.0}, {35.0, 40.0}};
    QCOMPARE(LabelThinning::overlaps(ticks, rectangles, {20.0, -1, true}, label(20.0, 100)), expected);
    QVERIFY(LabelThinning::overlaps({}, {}, {20.0, 0, true}, label(20.0, 100)).isEmpty());
    QVERIFY(LabelThinning::overlaps({10}, {label(10, 12)}, {20.0, -1, true}, label(10, 12)).isEmpty());
}

void tst_labelthinning::overlapsOfTheQuote_data()
{
    QTest::addColumn<double>("quote");
    QTest::addColumn<int>("width");
    QTest::addColumn<QList<Overlap>>("expected");

    // Ticks at 100, 200, 300 of 50 pixels.
    const auto row = [](const char* name, double quote, int width, const QList<Overlap>& expected) {
        QTest::newRow(name) << quote << width << expected;
    };
    row("before the first", 80, 50, {{80, 100}});
    row("far before the first", 40, 50, {});
    row("after the last", 320, 50, {{300, 320}});
    row("far after the last", 360, 50, {});
    row("between, too wide", 150, 60, {{100, 150}, {150, 200}});
    row("between, at the left one", 140, 50, {{100, 140}});
    row("between, at the right one", 160, 50, {{160, 200}});
    row("between", 150, 40, {});
    row("on the first", 100, 50, {{100, 100}});
    row("on one", 200, 50, {{200, 200}});
    row("on the last", 300, 50, {{300, 300}});
    // The quote stands between its neighbours: these are not compared with each other, nor with ticks beyond.
    row("over everything", 150, 1000, {{100, 150}, {150, 200}});
}

void tst_labelthinning::overlapsOfTheQuote()
{
    QFETCH(double, quote);
    QFETCH(int, width);
    const Values ticks{100, 200, 300};
    const QList<QRect> rectangles{label(100, 50), label(200, 50), label(300, 50)};
    QTEST(LabelThinning::overlaps(ticks, rectangles, drawnQuote(quote, ticks), label(quote, width)),
        "expected");
    QTEST(LabelThinning::overlaps(ticks, rectangles, hiddenQuote(quote, ticks), label(quote, width)),
        "expected");
}

void tst_labelthinning::overlapsNeedARectangleForEachTick()
{
    const QRect same = label(10, 50);
    QCOMPARE(LabelThinning::overlaps({10, 20}, {same, same}, {}, QRect()).size(), 1);
    QVERIFY(LabelThinning::overlaps({10, 20}, {same}, {}, QRect()).isEmpty());
    QVERIFY(LabelThinning::overlaps({10, 20}, {same, same, same}, {}, QRect()).isEmpty());
}

void tst_labelthinning::hiddenQuoteBlocks()
{
    const Values ticks{100, 200, 300};
    const QuoteLabel quote = hiddenQuote(210, ticks);
    // 50 pixels alone overlap with the quote's only; halving is the only way out.
    const LabelThinning::Result result = LabelThinning::thinned(ticks, quote, labels(50));
    QCOMPARE(result.ticks, Values{100});
    QCOMPARE(LabelThinning::thinned(ticks, drawnQuote(210, ticks), labels(50)).ticks, (Values{100, 300}));
    QCOMPARE(LabelThinning::thinned(ticks, {-1.0, -1, false}, labels(50)).ticks, ticks);
}

void tst_labelthinning::removal_data()
{
    QTest::addColumn<Overlap>("overlap");
    QTest::addColumn<bool>("drawn");
    QTest::addColumn<Values>("expected");

    const Values all{100, 150, 200};
    QTest::newRow("right neighbour") << Overlap(140, 150) << true << Values{100, 200};
    QTest::newRow("left neighbour") << Overlap(100, 140) << true << Values{150, 200};
    QTest::newRow("last") << Overlap(140, 200) << true << Values{100, 150};
    QTest::newRow("not drawn") << Overlap(140, 150) << false << all;
    QTest::newRow("without the quote") << Overlap(100, 150) << true << all;
    QTest::newRow("no overlap") << Overlap(1, -1) << true << all;
    QTest::newRow("inverted, with the quote") << Overlap(150, 140) << true << all;
    QTest::newRow("almost the quote") << Overlap(140.0000001, 150) << true << all;
    QTest::newRow("beyond the last") << Overlap(140, 201) << true << all;
    QTest::newRow("the quote twice") << Overlap(140, 140) << true << Values{100, 200};
}

void tst_labelthinning::removal()
{
    QFETCH(Overlap, overlap);
    QFETCH(bool, drawn);
    QFETCH(Values, expected);
    Values ticks{100, 150, 200};
    QCOMPARE(LabelThinning::removeNeighbourOfQuote(overlap, {140.0, 1, drawn}, ticks), expected.size() < 3);
    QCOMPARE(ticks, expected);
}

void tst_labelthinning::removalDoesNotCheckWhatItErases()
{
    Values ticks{100, 150, 200};
    QVERIFY(LabelThinning::removeNeighbourOfQuote({140, 160}, {140.0, 1, true}, ticks));
    QCOMPARE(ticks, (Values{100, 150}));
    QVERIFY(LabelThinning::removeNeighbourOfQuote({20, 140}, {140.0, 1, true}, ticks));
    QCOMPARE(ticks, Values{150});
    ticks.clear();
    QVERIFY(!LabelThinning::removeNeighbourOfQuote({20, 140}, {140.0, 1, true}, ticks));
}

void tst_labelthinning::thinned_data()
{
    QTest::addColumn<Values>("candidates");
    QTest::addColumn<double>("quote");
    QTest::addColumn<bool>("drawn");
    QTest::addColumn<int>("width");
    QTest::addColumn<Values>("expected");
    QTest::addColumn<int>("index");

    const auto row = [](const char* name, const Values& candidates, double quote, bool drawn, int width,
                         const Values& expected, int index) {
        QTest::newRow(name) << candidates << quote << drawn << width << expected << index;
    };
    const Values eight = everyTenth(8);
    row("nothing", {}, -1, false, 10, {}, -1);
    row("no overlap", eight, -1, false, 10, eight, -1);
    row("odd positions stay", eight, -1, false, 11, {20, 40, 60, 80}, -1);
    row("odd positions of what stayed", eight, -1, false, 21, {40, 80}, -1);
    row("one stays", eight, -1, false, 41, {80}, -1);
    row("two overlap", {10, 20}, -1, false, 11, {20}, -1);
    row("single overlap without the quote", {10, 20, 100}, -1, false, 11, {20}, -1);
    row("single overlap with the quote", {10, 40, 70}, 50, true, 11, {10, 70}, 2);
    row("single overlap with the left neighbour", {10, 40, 70}, 30, true, 11, {10, 70}, 1);
    row("tick exactly at the quote", {10, 40, 70}, 40, true, 11, {10, 70}, 1);
    row("the same, not drawn", {10, 40, 70}, 40, false, 11, {70}, 0);
    row("quote of zero", {-40, -30, -20, -10, 0, 10, 20, 30}, 0, false, 11, {-40, -20, 10, 30}, -1);
    row("quote of zero, two rounds", {-30, -20, -10, 0, 10, 20}, 0, false, 11, {-30, 20}, -1);
    row("quote before all", {10, 40, 70}, 5, true, 11, {40, 70}, 0);
    row("quote after all", {10, 40, 70}, 75, true, 11, {10, 40}, 3);
    row("quote after all that fit", {10, 40, 70}, 100, true, 11, {10, 40, 70}, 3);
    row("two overlaps with the quote", {10, 40, 50, 80}, 45, true, 11, {10, 80}, 1);
}

void tst_labelthinning::thinned()
{
    QFETCH(Values, candidates);
    QFETCH(double, quote);
    QFETCH(bool, drawn);
    QFETCH(int, width);
    const LabelThinning::Result result = LabelThinning::thinned(
        candidates, drawn ? drawnQuote(quote, candidates) : hiddenQuote(quote, candidates), labels(width));
    QTEST(result.ticks, "expected");
    QTEST(result.quoteIndex, "index");
}

void tst_labelthinning::parityIsThatOfTheSlot_data()
{
    QTest::addColumn<double>("quote");
    QTest::addColumn<int>("width");
    QTest::addColumn<Values>("expected");
    QTest::addColumn<int>("index");

    QTest::newRow("index 3") << 35.0 << 14 << Values{20, 50, 70, 90} << 1;
    QTest::newRow("index 4") << 45.0 << 14 << Values{10, 30, 60, 80, 100} << 2;
    QTest::newRow("index 3, two rounds") << 35.0 << 24 << Values{70} << 0;
    QTest::newRow("index 4, two rounds") << 45.0 << 24 << Values{10, 80} << 1;
    QTest::newRow("parity of the new index") << 55.0 << 24 << Values{20, 90} << 1;
    QTest::newRow("tick at the quote counts as above") << 50.0 << 10 << Values{10, 30, 60, 80, 100} << 2;
    QTest::newRow("before all") << 5.0 << 14 << Values{20, 40, 60, 80, 100} << 0;
    QTest::newRow("after all") << 105.0 << 14 << Values{10, 30, 50, 70, 90} << 5;
}

void tst_labelthinning::parityIsThatOfTheSlot()
{
    QFETCH(double, quote);
    QFETCH(int, width);
    const Values candidates = everyTenth(10);
    const LabelThinning::Result result
        = LabelThinning::thinned(candidates, hiddenQuote(quote, candidates), labels(width));
    QTEST(result.ticks, "expected");
    QTEST(result.quoteIndex, "index");
}

void tst_labelthinning::indexIsKeptAfterASingleRemoval()
{
    const Values ticks{10, 40, 70};
    const LabelThinning::Result result = LabelThinning::thinned(ticks, drawnQuote(45, ticks), labels(11));
    QCOMPARE(result.ticks, (Values{10, 70}));
    QCOMPARE(result.quoteIndex, 2);
}

void tst_labelthinning::indexIsReadAnewInTheFirstRound()
{
    // No label goes, but the quote, which was kept out, comes to stand between both.
    const auto measure = [](double value) { return label(value, value == 15 ? 0 : 14); };
    const LabelThinning::Result result = LabelThinning::thinned({10, 20}, {15.0, -1, false}, measure);
    QCOMPARE(result.ticks, (Values{10, 20}));
    QCOMPARE(result.quoteIndex, 1);
}

void tst_labelthinning::singleRemovalEndsARound()
{
    // The first round leaves 20, 50, 70 and 90, of which 50 alone is in the quote's way.
    const Values candidates = everyTenth(10);
    const LabelThinning::Result drawn
        = LabelThinning::thinned(candidates, drawnQuote(37, candidates), labels(16));
    QCOMPARE(drawn.ticks, (Values{20, 70, 90}));
    QCOMPARE(drawn.quoteIndex, 1);

    const LabelThinning::Result hidden
        = LabelThinning::thinned(candidates, hiddenQuote(37, candidates), labels(16));
    QCOMPARE(hidden.ticks, Values{70});
    QCOMPARE(hidden.quoteIndex, 0);
}

void tst_labelthinning::wideQuoteMayReachASecondLabel()
{
    // Neighbours alone are compared, and the neighbour's removal is not looked at again.
    const Values ticks{100, 130, 160};
    const auto measure = [](double value) { return label(value, value == 90 ? 100 : 20); };
    const LabelThinning::Result result = LabelThinning::thinned(ticks, drawnQuote(90, ticks), measure);
    QCOMPARE(result.ticks, (Values{130, 160}));
    QVERIFY(measure(90).intersects(measure(130)));
}

void tst_labelthinning::roundsRunOut()
{
    const LabelThinning::Result one = LabelThinning::thinned({10}, hiddenQuote(12, {10}), labels(11));
    QCOMPARE(one.ticks, Values{});
    QCOMPARE(one.quoteIndex, -1);

    const LabelThinning::Result two = LabelThinning::thinned({10, 20}, hiddenQuote(25, {10, 20}), labels(30));
    QCOMPARE(two.ticks, Values{});
    QCOMPARE(two.quoteIndex, -1);

    // The drawn quote takes the last label with it, and that ends the thinning in time.
    const LabelThinning::Result drawn
        = LabelThinning::thinned({10, 20}, drawnQuote(25, {10, 20}), labels(30));
    QCOMPARE(drawn.ticks, Values{});
    QCOMPARE(drawn.quoteIndex, 1);
}

void tst_labelthinning::aRoundCanLeaveNothing()
{
    const LabelThinning::Result between
        = LabelThinning::thinned({10, 20}, hiddenQuote(15, {10, 20}), labels(30));
    QCOMPARE(between.ticks, Values{});
    QCOMPARE(between.quoteIndex, 0);

    const Values three{10, 20, 30};
    const LabelThinning::Result after = LabelThinning::thinned(three, hiddenQuote(35, three), labels(100));
    QCOMPARE(after.ticks, Values{});
    QCOMPARE(after.quoteIndex, 0);
}

void tst_labelthinning::eachRoundMeasuresUpToTheSecondOverlap()
{
    QList<double> measured;
    const auto measure = [&measured](double value) {
        measured.append(value);
        return label(value, 21);
    };
    const Values candidates = everyTenth(8);
    LabelThinning::thinned(candidates, {}, measure);
    // The third label is the second overlap, from which on no other matters.
    const Values threeRounds = Values{10, 20, 30} + Values{20, 40, 60} + Values{40, 80};
    QCOMPARE(measured, threeRounds);

    measured.clear();
    LabelThinning::thinned(candidates, hiddenQuote(1000, candidates), measure);
    const Values withQuote = Values{1000, 10, 20, 30} + Values{1000, 10, 30, 50} + Values{1000, 10, 50};
    QCOMPARE(measured, withQuote);

    measured.clear();
    LabelThinning::thinned({}, {5.0, 0, true}, measure);
    QCOMPARE(measured, Values{});
}

PLOT2D_TEST_MAIN(tst_labelthinning)

#include "tst_labelthinning.moc"
