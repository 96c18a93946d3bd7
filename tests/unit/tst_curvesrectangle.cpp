#include "support/testhost.h"
#include "support/testmain.h"
#include "support/testplot.h"

#include <qwt_series_data.h>

#include <limits>
#include <memory>

namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

/// Samples that claim any bounding rectangle.
class FixedRectangle : public QwtPointSeriesData {
public:
    explicit FixedRectangle(const QRectF& rectangle)
        : QwtPointSeriesData({{0.0, 0.0}})
        , m_rectangle(rectangle)
    {
    }
    QRectF boundingRect() const override { return m_rectangle; }

private:
    QRectF m_rectangle;
};

PriceBased2dPlotCurve* addRectangle(TestPlot& plot, int type, const QRectF& rectangle)
{
    auto* curve = addCurve(plot, type, {}, "rectangle");
    curve->setData(new FixedRectangle(rectangle));
    return curve;
}

}

class tst_curvesrectangle : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void init();
    void cleanup();

    void rectangle_data();
    void rectangle();
    void rectangleOfCurvesThatDoNotCount();
    void rectangleOfInvalidCurves();
    void rectangleWithNaN();

private:
    std::unique_ptr<TestPlot> m_plot;
};

void tst_curvesrectangle::initTestCase()
{
    TestHost::createSecurities();
    TestHost::createBoards();
}

void tst_curvesrectangle::cleanupTestCase()
{
    TestHost::dropSecurities();
    TestHost::dropBoards();
}

void tst_curvesrectangle::init()
{
    m_plot = std::make_unique<TestPlot>();
}

void tst_curvesrectangle::cleanup()
{
    m_plot.reset();
}

void tst_curvesrectangle::rectangle_data()
{
    QTest::addColumn<QVector<QRectF>>("curves");
    QTest::addColumn<QRectF>("expected");
    QTest::newRow("no curves") << QVector<QRectF>() << QRectF();
    QTest::newRow("one") << QVector<QRectF>{{100, 1, 10, 4}} << QRectF(100, 1, 10, 4);
    QTest::newRow("overlapping") << QVector<QRectF>{{100, 1, 10, 4}, {105, -3, 20, 5}}
                                 << QRectF(100, -3, 25, 8);
    QTest::newRow("apart") << QVector<QRectF>{{1, 1, 1, 1}, {8, -9, 1, 1}, {4, 20, 0, 0}}
                           << QRectF(1, -9, 8, 29);
    QTest::newRow("a point") << QVector<QRectF>{{3, 4, 0, 0}} << QRectF(3, 4, 0, 0);
    QTest::newRow("negative width only") << QVector<QRectF>{{1, 1, -2, 3}} << QRectF();
    QTest::newRow("negative height only") << QVector<QRectF>{{1, 1, 2, -3}} << QRectF();
}

void tst_curvesrectangle::rectangle()
{
    QFETCH(QVector<QRectF>, curves);
    QFETCH(QRectF, expected);
    for (const QRectF& rectangle : curves)
        addRectangle(*m_plot, 9, rectangle);
    QCOMPARE(m_plot->curvesRectangle(), expected);
}

void tst_curvesrectangle::rectangleOfCurvesThatDoNotCount()
{
    addRectangle(*m_plot, 9, QRectF(0.0, 0.0, 99.0, 99.0))->setVisible(false);
    addRectangle(*m_plot, 0, QRectF(0.0, 0.0, 99.0, 99.0));
    addCurve(*m_plot, 9, {}, "no samples");
    auto* foreign = new QwtPlotCurve;
    foreign->setSamples(QVector<QPointF>{{0.0, 0.0}, {99.0, 99.0}});
    foreign->attach(m_plot.get());
    QCOMPARE(m_plot->curvesRectangle(), QRectF());
    QVERIFY(m_plot->curvesRectangle().isNull());
    addCurve(*m_plot, 9, {{50.0, 5.0}, {60.0, 6.0}}, "a");
    QCOMPARE(m_plot->curvesRectangle(), QRectF(50.0, 5.0, 10.0, 1.0));
}

void tst_curvesrectangle::rectangleOfInvalidCurves()
{
    addCurve(*m_plot, 9, {{50.0, 5.0}, {60.0, 6.0}}, QString());
    addCurve(*m_plot, -1, {{40.0, 5.0}, {55.0, 9.0}}, "without type");
    QCOMPARE(m_plot->curvesRectangle(), QRectF(40.0, 5.0, 20.0, 4.0));
}

void tst_curvesrectangle::rectangleWithNaN()
{
    addRectangle(*m_plot, 9, QRectF(notANumber, notANumber, notANumber, notANumber));
    QCOMPARE(m_plot->curvesRectangle(), QRectF());
    addRectangle(*m_plot, 9, QRectF(50.0, 5.0, 10.0, 1.0));
    addRectangle(*m_plot, 9, QRectF(notANumber, 4.0, 10.0, notANumber));
    addRectangle(*m_plot, 9, QRectF(notANumber, notANumber, notANumber, notANumber));
    QCOMPARE(m_plot->curvesRectangle(), QRectF(50.0, 4.0, 10.0, 2.0));
}

PLOT2D_TEST_MAIN(tst_curvesrectangle)
#include "tst_curvesrectangle.moc"
