#include "axes/scaledrawprobe.h"
#include "support/testmain.h"

#include <algorithm>

using Values = QList<double>;
using Pair = std::pair<double, double>;

namespace {

constexpr int bottomAxis = 2;
constexpr int leftAxis = 0;

/// A painted bottom axis of 1000 pixels, one for each unit, whose labels are all equally wide.
class PixelAxis : public ScaleDrawProbe {
public:
    explicit PixelAxis(const Values& candidates, bool painted = true)
        : ScaleDrawProbe(bottomAxis)
    {
        text = [](double) { return QStringLiteral("00"); };
        setPixelTicks(candidates);
        if (painted)
            setPaintedOnce();
    }

    /// The width of every label with its margin.
    int labelWidth() const { return tickLabelBoundingRect(500).width(); }

    void setQuote(double quote, bool enabled)
    {
        setCurKotirValue(quote);
        setCurKotirEnabled(enabled);
    }
};

/// Candidates from 100 on, some pixels apart.
Values row(int count, double distance)
{
    Values ticks;
    for (int i = 0; i < count; ++i)
        ticks.append(100.0 + i * distance);
    return ticks;
}

}

class tst_scaledraw_thinning : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void beforeTheFirstPaintAllLabelsStay();
    void noCandidates();
    void labelsSideBySideStay();
    void convertedLabelsStandCloser();
    void everyOtherLabelGoes();
    void singleOverlapWithTheQuoteCostsOne_data();
    void singleOverlapWithTheQuoteCostsOne();
    void tickAtTheQuoteGivesWay();
    void disabledQuoteBlocks();
    void quoteBeyondTheScaleBlocks();
    void quoteOfZeroBlanksTheAxis_data();
    void quoteOfZeroBlanksTheAxis();
    void disabledQuoteOfZeroPartsTheTicks_data();
    void disabledQuoteOfZeroPartsTheTicks();
    void indexMayBeTheNumberOfCandidates();
    void roundsRunOut();
    void equalDigitsAreThoseOfWhatStays();
    void stateIsBuiltAnew();
    void eachLabelIsMeasuredOnce();
    void overlapsOfTheClass();
    void removalOfTheClass();
    void leftAxisKeepsAll();
    void leftAxisKeepsAQuote();
};

void tst_scaledraw_thinning::beforeTheFirstPaintAllLabelsStay()
{
    PixelAxis axis(row(50, 1.0), false);
    axis.updateLabels();
    QCOMPARE(axis.labelTicks(), row(50, 1.0));
    axis.setPaintedOnce();
    axis.updateLabels();
    QVERIFY(axis.labelTicks().size() < 50);
}

void tst_scaledraw_thinning::noCandidates()
{
    PixelAxis axis({});
    axis.setQuote(500, true);
    axis.updateLabels();
    QCOMPARE(axis.labelTicks(), Values{});
    QCOMPARE(axis.curKotirIndex(), -1);
    QCOMPARE(axis.equalDigits(), -1);
    // Nor is the quote looked at.
    QVERIFY(!axis.isCurKotirInside());
}

void tst_scaledraw_thinning::labelsSideBySideStay()
{
    const int width = PixelAxis({}).labelWidth();
    PixelAxis fitting(row(8, width));
    fitting.updateLabels();
    QCOMPARE(fitting.labelTicks(), row(8, width));

    PixelAxis tight(row(8, width - 1));
    tight.updateLabels();
    QCOMPARE(tight.labelTicks().size(), 4);
}

void tst_scaledraw_thinning::convertedLabelsStandCloser()
{
    const int width = PixelAxis({}).labelWidth();
    PixelAxis axis(row(8, width - 4));
    axis.updateLabels();
    QCOMPARE(axis.labelTicks().size(), 4);
    axis.setConversionEnabled(true);
    axis.updateLabels();
    QCOMPARE(axis.labelTicks().size(), 8);

    axis.setPixelTicks(row(8, width - 5));
    axis.updateLabels();
    QCOMPARE(axis.labelTicks().size(), 4);
}

void tst_scaledraw_thinning::everyOtherLabelGoes()
{
    const int width = PixelAxis({}).labelWidth();
    const double third = width / 3.0;
    PixelAxis axis(row(11, third));
    axis.updateLabels();
    // Odd positions, and of these the odd ones again.
    QCOMPARE(axis.labelTicks(), (Values{100 + 3 * third, 100 + 7 * third}));
    QCOMPARE(axis.curKotirIndex(), -1);
}

void tst_scaledraw_thinning::singleOverlapWithTheQuoteCostsOne_data()
{
    QTest::addColumn<double>("quote");
    QTest::addColumn<int>("gone");
    QTest::addColumn<int>("index");

    QTest::newRow("right of a label") << 210.0 << 1 << 2;
    QTest::newRow("left of a label") << 190.0 << 1 << 1;
    QTest::newRow("on a label") << 200.0 << 1 << 1;
    QTest::newRow("right of the last") << 410.0 << 3 << 4;
    QTest::newRow("left of the first") << 90.0 << 0 << 0;
    QTest::newRow("free") << 150.0 << -1 << 1;
}

void tst_scaledraw_thinning::singleOverlapWithTheQuoteCostsOne()
{
    QFETCH(double, quote);
    QFETCH(int, gone);
    PixelAxis axis({100, 200, 300, 400});
    QVERIFY(axis.labelWidth() > 10 && axis.labelWidth() < 50);
    axis.setQuote(quote, true);
    axis.updateLabels();
    Values expected{100, 200, 300, 400};
    if (gone >= 0)
        expected.removeAt(gone);
    QCOMPARE(axis.labelTicks(), expected);
    QTEST(axis.curKotirIndex(), "index");
}

void tst_scaledraw_thinning::tickAtTheQuoteGivesWay()
{
    PixelAxis axis({100, 200, 300});
    axis.setQuote(200, true);
    axis.updateLabels();
    QCOMPARE(axis.labelTicks(), (Values{100, 300}));
}

void tst_scaledraw_thinning::disabledQuoteBlocks()
{
    PixelAxis axis({100, 200, 300, 400});
    axis.setQuote(210, false);
    axis.updateLabels();
    // The index is 2, its parity 0.
    QCOMPARE(axis.labelTicks(), (Values{100, 400}));
    axis.setQuote(250, false);
    axis.updateLabels();
    QCOMPARE(axis.labelTicks(), (Values{100, 200, 300, 400}));
}

void tst_scaledraw_thinning::quoteBeyondTheScaleBlocks()
{
    PixelAxis axis({100, 200, 990});
    axis.setQuote(1005, true);
    axis.updateLabels();
    QVERIFY(!axis.isCurKotirInside());
    QCOMPARE(axis.labelTicks(), Values{200});
    axis.setQuote(1200, true);
    axis.updateLabels();
    QCOMPARE(axis.labelTicks(), (Values{100, 200, 990}));
}

void tst_scaledraw_thinning::quoteOfZeroBlanksTheAxis_data()
{
    QTest::addColumn<double>("quote");
    QTest::addColumn<bool>("painted");

    for (const double quote : {0.0, -0.0, -1.0, -100.0}) {
        QTest::addRow("%g painted", quote) << quote << true;
        QTest::addRow("%g not painted", quote) << quote << false;
    }
}

void tst_scaledraw_thinning::quoteOfZeroBlanksTheAxis()
{
    QFETCH(double, quote);
    QFETCH(bool, painted);
    PixelAxis axis({100, 200}, painted);
    axis.setQuote(quote, true);
    axis.updateLabels();
    QCOMPARE(axis.labelTicks(), Values{});
    QCOMPARE(axis.curKotirIndex(), -1);
    QCOMPARE(axis.equalDigits(), -1);
    axis.setQuote(quote, false);
    axis.updateLabels();
    QCOMPARE(axis.labelTicks(), (Values{100, 200}));
}

void tst_scaledraw_thinning::disabledQuoteOfZeroPartsTheTicks_data()
{
    QTest::addColumn<double>("quote");
    QTest::addColumn<QList<int>>("candidates");
    QTest::addColumn<QList<int>>("expected");

    // In distances too short for a label, of which two in a row suffice.
    for (const double quote : {0.0, -0.0}) {
        QTest::addRow("%g, one round", quote)
            << quote << QList<int>{-4, -3, -2, -1, 0, 1, 2, 3} << QList<int>{-4, -2, 1, 3};
        // -3, -1, 0 and 2 after the first.
        QTest::addRow("%g, two rounds", quote)
            << quote << QList<int>{-3, -2, -1, 0, 1, 2} << QList<int>{-3, 2};
    }
}

void tst_scaledraw_thinning::disabledQuoteOfZeroPartsTheTicks()
{
    QFETCH(double, quote);
    QFETCH(QList<int>, candidates);
    QFETCH(QList<int>, expected);
    PixelAxis axis({});
    const int distance = axis.labelWidth() - 4;
    const auto ticks = [distance](const QList<int>& places) {
        Values values;
        for (const int place : places)
            values.append(place * distance);
        return values;
    };
    axis.setScaleDiv(QwtScaleDiv(-500, 500, {}, {}, ticks(candidates)));
    axis.setQuote(quote, false);
    axis.updateLabels();
    QCOMPARE(axis.labelTicks(), ticks(expected));
    QCOMPARE(axis.curKotirIndex(), -1);
}

void tst_scaledraw_thinning::indexMayBeTheNumberOfCandidates()
{
    PixelAxis axis({100, 200});
    axis.setQuote(500, true);
    axis.updateLabels();
    QCOMPARE(axis.curKotirIndex(), 2);
    QCOMPARE(axis.labelTicks(), (Values{100, 200}));
}

void tst_scaledraw_thinning::roundsRunOut()
{
    PixelAxis axis({100});
    axis.setQuote(105, false);
    axis.updateLabels();
    QCOMPARE(axis.labelTicks(), Values{});
    QCOMPARE(axis.curKotirIndex(), -1);
    QCOMPARE(axis.equalDigits(), -1);

    axis.setPixelTicks({100, 105});
    axis.setQuote(110, false);
    axis.updateLabels();
    QCOMPARE(axis.labelTicks(), Values{});
    QCOMPARE(axis.curKotirIndex(), -1);
}

void tst_scaledraw_thinning::equalDigitsAreThoseOfWhatStays()
{
    PixelAxis axis({111, 112, 250, 299});
    axis.updateLabels();
    QCOMPARE(axis.labelTicks(), (Values{112, 299}));
    QCOMPARE(axis.equalDigits(), 0);

    axis.setPixelTicks({111, 250, 258}, 10000.0);
    axis.setLength(100000.0);
    axis.setQuote(250.5, true);
    axis.updateLabels();
    QCOMPARE(axis.labelTicks(), (Values{111, 258}));
    QCOMPARE(axis.equalDigits(), 0);

    axis.setQuote(-1, false);
    axis.updateLabels();
    QCOMPARE(axis.equalDigits(), 2);
}

void tst_scaledraw_thinning::stateIsBuiltAnew()
{
    PixelAxis axis({1234, 1238});
    axis.setQuote(1236, true);
    axis.setScaleDiv(QwtScaleDiv(1000, 2000, {}, {}, {1234, 1238}));
    axis.updateLabels();
    axis.setScaleDiv(QwtScaleDiv());
    axis.updateLabels();
    QCOMPARE(axis.labelTicks(), Values{});
    QCOMPARE(axis.curKotirIndex(), -1);
    QCOMPARE(axis.equalDigits(), -1);
}

void tst_scaledraw_thinning::eachLabelIsMeasuredOnce()
{
    // Five rounds over 200 candidates: a round of overlaps ends with the second, and a label that was
    // measured is not made again for the next round.
    PixelAxis axis(row(200, 2.0));
    axis.setQuote(301, true);
    axis.asked.clear();
    axis.updateLabels();
    QVERIFY(axis.labelTicks().size() < 20);
    QCOMPARE(axis.asked.size(), 19);
    QCOMPARE(*std::max_element(axis.asked.cbegin(), axis.asked.cend()), 1);

    PixelAxis notPainted(row(200, 2.0), false);
    notPainted.updateLabels();
    QVERIFY(notPainted.asked.isEmpty());
}

void tst_scaledraw_thinning::overlapsOfTheClass()
{
    PixelAxis axis({100, 200, 210});
    QCOMPARE(axis.overlappedLabels({100, 200, 210}), (QList<Pair>{{200, 210}}));
    QCOMPARE(axis.overlappedLabels({}), QList<Pair>{});

    axis.setQuote(205, false);
    axis.updateCurKotirIndex({100, 200, 210});
    const QList<Pair> withQuote{{200, 205}, {205, 210}};
    QCOMPARE(axis.overlappedLabels({100, 200, 210}), withQuote);
    // Switched on, not yet known to be inside, and inside.
    axis.setQuote(205, true);
    QCOMPARE(axis.overlappedLabels({100, 200, 210}), withQuote);
    axis.updateCurKotirStatus();
    QCOMPARE(axis.overlappedLabels({100, 200, 210}), withQuote);
    // The index is the one found last, whatever the ticks are.
    QCOMPARE(axis.overlappedLabels({100, 200}), (QList<Pair>{{200, 205}}));
    QCOMPARE(axis.overlappedLabels({100}), QList<Pair>{});

    QCOMPARE(axis.getIntersectedPair(QRect(0, 0, 9, 9), QRect(8, 0, 9, 9), 1, 2), Pair(1, 2));
    QCOMPARE(axis.getIntersectedPair(QRect(0, 0, 9, 9), QRect(9, 0, 9, 9), 1, 2), Pair(1, -1));
    QCOMPARE(axis.getIntersectedPair(QRect(), QRect(0, 0, 9, 9), 1, 2), Pair(1, -1));
}

void tst_scaledraw_thinning::removalOfTheClass()
{
    PixelAxis axis({100, 200, 300});
    Values ticks{100, 200, 300};
    const auto removes = [&] { return axis.removeOneTick({200, 210}, ticks); };
    axis.setQuote(210, false);
    axis.updateCurKotirStatus();
    QVERIFY(!removes());
    axis.setQuote(210, true);
    QVERIFY(!removes());
    axis.updateCurKotirStatus();
    axis.setCurKotirEnabled(false);
    QVERIFY(!removes());
    axis.setCurKotirEnabled(true);
    QVERIFY(removes());
    QCOMPARE(ticks, (Values{100, 300}));
    QVERIFY(removes());
    QCOMPARE(ticks, Values{100});
    QVERIFY(!removes());
    QVERIFY(!axis.removeOneTick({1, -1}, ticks));
    QVERIFY(!axis.removeOneTick({90, 100}, ticks));
}

void tst_scaledraw_thinning::leftAxisKeepsAll()
{
    ScaleDrawProbe draw(leftAxis);
    draw.setLength(100);
    draw.setScaleDiv(QwtScaleDiv(0, 100, {}, {}, row(90, 0.1)));
    draw.updateLabels();
    QCOMPARE(draw.labelTicks(), row(90, 0.1));
    QCOMPARE(draw.labelMargin(), 8);
}

void tst_scaledraw_thinning::leftAxisKeepsAQuote()
{
    // No index, but ticks on both sides of -1 are still counted differently: of those below it the even
    // positions stay, of the others the odd ones.
    ScaleDrawProbe draw(leftAxis);
    draw.setPaintedOnce();
    draw.setScaleDiv(QwtScaleDiv(-50, 50, {}, {}, {-4, -3, -2, -1, 0, 1, 2, 3}));
    // Neighbours overlap, every other one does not.
    const int height = draw.tickLabelBoundingRect(0).height();
    QVERIFY(height > 0);
    draw.setLength(75 * height);
    draw.updateLabels();
    QCOMPARE(draw.curKotirIndex(), -1);
    // -4, -2, -1, 1 and 3 after the first round.
    QCOMPARE(draw.labelTicks(), (Values{-4, 1}));
}

PLOT2D_TEST_MAIN(tst_scaledraw_thinning)

#include "tst_scaledraw_thinning.moc"
