#include "support/testmain.h"

#include <plot2d/curvefolding_p.h>
#include <plot2d/softfolding_p.h>

#include <QTest>

#include <qwt_point_data.h>

#include <memory>

namespace {

QwtScaleMap pixels()
{
    QwtScaleMap map;
    map.setScaleInterval(0.0, 100.0);
    map.setPaintInterval(0.0, 100.0);
    return map;
}

}

/// A curve that goes further away than whole pixels reach is not folded, and the last place that can be is.
class tst_FoldingLimits : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void foldsOnlyWhatIsNear_data();
    void foldsOnlyWhatIsNear();
};

void tst_FoldingLimits::foldsOnlyWhatIsNear_data()
{
    QTest::addColumn<QPointF>("sample");
    QTest::addColumn<bool>("isNear");
    QTest::newRow("near") << QPointF(2.0, 50.0) << true;
    QTest::newRow("far right") << QPointF(1e12, 50.0) << false;
    QTest::newRow("far left") << QPointF(-1e12, 50.0) << false;
    QTest::newRow("far up") << QPointF(2.0, 1e12) << false;
    QTest::newRow("far down") << QPointF(2.0, -1e12) << false;
    QTest::newRow("just near, right") << QPointF(farAway - 1.0, 50.0) << true;
    QTest::newRow("just near, up") << QPointF(2.0, farAway - 1.0) << true;
    QTest::newRow("just near, down") << QPointF(2.0, 1.0 - farAway) << true;
    QTest::newRow("just far, right") << QPointF(farAway, 50.0) << false;
    QTest::newRow("just far, up") << QPointF(2.0, farAway) << false;
    QTest::newRow("just far, down") << QPointF(2.0, -farAway) << false;
}

void tst_FoldingLimits::foldsOnlyWhatIsNear()
{
    QFETCH(QPointF, sample);
    QFETCH(bool, isNear);
    const QwtPointSeriesData series({{1.0, 50.0}, sample, {3.0, 50.0}});
    const std::unique_ptr<SampleIndex> index = SampleIndex::of(&series);
    const CurveFolding::Stretch stretch{*index, pixels(), pixels(), 0, index->size()};
    const CurveFolding::Rows rows{0, 99};
    for (const auto shape : {CurveFolding::Shape::Straight, CurveFolding::Shape::HorizontalFirst})
        QCOMPARE(CurveFolding::strokes(stretch, shape, 1, rows).has_value(), isNear);
    QCOMPARE(CurveFolding::polylines(stretch).has_value(), isNear);
    QCOMPARE(SoftFolding::strokes(stretch).has_value(), isNear);
}

PLOT2D_TEST_MAIN(tst_FoldingLimits)
#include "tst_foldinglimits.moc"
