#include "axes/scaledrawprobe.h"
#include "support/testmain.h"

using Values = QList<double>;

namespace {

constexpr int bottomAxis = 2;
constexpr int leftAxis = 0;

QwtScaleDiv division(const Values& major, const Values& medium = {})
{
    return QwtScaleDiv(0, 1000, {}, medium, major);
}

const QwtScaleDiv empty(0.0, 0.0);

/// 100 for every value below 500, and another text for each beyond.
QString text(double value)
{
    return value < 500 ? QStringLiteral("100") : QString::number(value);
}

}

class tst_tickshrinking : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void sameTexts_data();
    void sameTexts();
    void ticksAsGoodAsEqual();
    void leftAxisJudgesTheDivision();
    void bottomAxisJudgesItsLabels();
    void emptyDivisionMeansTheCandidates_data();
    void emptyDivisionMeansTheCandidates();
    void textsAreThoseOfTheConverter();
};

void tst_tickshrinking::sameTexts_data()
{
    QTest::addColumn<Values>("ticks");
    QTest::addColumn<bool>("expected");

    QTest::newRow("all read 100") << Values{100, 200, 300} << true;
    QTest::newRow("last pair differs") << Values{100, 200, 600} << false;
    QTest::newRow("first pair differs") << Values{600, 700} << false;
    QTest::newRow("single") << Values{100} << false;
    QTest::newRow("none") << Values{} << false;
}

void tst_tickshrinking::sameTexts()
{
    QFETCH(Values, ticks);
    ScaleDrawProbe draw(leftAxis);
    draw.text = text;
    QTEST(draw.ticksShrinked(division(ticks)), "expected");
}

void tst_tickshrinking::ticksAsGoodAsEqual()
{
    ScaleDrawProbe draw(leftAxis);
    QVERIFY(draw.ticksShrinked(division({500, 600, 600.000000001})));
    QVERIFY(!draw.ticksShrinked(division({500, 600, 600.0001})));
}

void tst_tickshrinking::leftAxisJudgesTheDivision()
{
    ScaleDrawProbe draw(leftAxis);
    draw.text = text;
    draw.setScaleDiv(division({600, 700}));
    draw.updateLabels();
    QVERIFY(draw.ticksShrinked(division({100, 200})));
    QVERIFY(!draw.ticksShrinked(division({100, 600})));
    // Medium ticks may carry labels too; an inverted division has none.
    QVERIFY(!draw.ticksShrinked(division({100, 200}, {600})));
    QVERIFY(!draw.ticksShrinked(QwtScaleDiv(1000, 0, {}, {}, {100, 200})));
}

void tst_tickshrinking::bottomAxisJudgesItsLabels()
{
    ScaleDrawProbe draw(bottomAxis);
    draw.text = text;
    draw.setScaleDiv(division({100, 200}));
    // No labels chosen yet.
    QVERIFY(!draw.ticksShrinked(division({100, 200})));
    draw.updateLabels();
    QVERIFY(draw.ticksShrinked(division({600, 700})));
    draw.setScaleDiv(division({600, 700}));
    QVERIFY(draw.ticksShrinked(division({600, 700})));
    draw.updateLabels();
    QVERIFY(!draw.ticksShrinked(division({100, 200})));
}

void tst_tickshrinking::emptyDivisionMeansTheCandidates_data()
{
    QTest::addColumn<int>("axis");
    QTest::newRow("left") << leftAxis;
    QTest::newRow("bottom") << bottomAxis;
}

void tst_tickshrinking::emptyDivisionMeansTheCandidates()
{
    QFETCH(int, axis);
    ScaleDrawProbe draw(axis);
    draw.text = text;
    QVERIFY(!draw.ticksShrinked(empty));
    draw.setScaleDiv(division({600, 700}));
    draw.updateLabels();
    draw.setScaleDiv(division({100, 200}));
    QVERIFY(draw.ticksShrinked(empty));
    draw.setScaleDiv(division({100, 600}));
    QVERIFY(!draw.ticksShrinked(empty));
}

void tst_tickshrinking::textsAreThoseOfTheConverter()
{
    ScaleDrawProbe draw(leftAxis);
    draw.setDecimals(0);
    QVERIFY(draw.ticksShrinked(division({100.1, 100.2, 100.3})));
    draw.setDecimals(1);
    QVERIFY(!draw.ticksShrinked(division({100.1, 100.2, 100.3})));
    // Enabled without an object: no text at all.
    draw.setDecimals(0);
    draw.setConversionEnabled(true);
    QVERIFY(!draw.ticksShrinked(division({100.1, 100.2, 100.3})));
}

PLOT2D_TEST_MAIN(tst_tickshrinking)

#include "tst_tickshrinking.moc"
