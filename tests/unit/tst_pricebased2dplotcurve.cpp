#include "support/testhost.h"
#include "support/testmain.h"
#include "support/testplot.h"

#include <qwt_series_data.h>
#include <qwt_symbol.h>
#include <qwt_text.h>

#include <functional>
#include <limits>

namespace {

using Change = std::function<void(PriceBased2dPlotCurve&)>;

/// Samples that claim any bounding rectangle.
class FixedRectangle : public QwtPointSeriesData {
public:
    explicit FixedRectangle(const QRectF& rectangle)
        : QwtPointSeriesData({{100.0, 1.0}, {110.0, 2.0}})
        , m_rectangle(rectangle)
    {
    }
    QRectF boundingRect() const override { return m_rectangle; }

private:
    QRectF m_rectangle;
};

/// A curve of another item type, which accepts one more data type.
class SpecialCurve : public PriceBased2dPlotCurve {
public:
    using PriceBased2dPlotCurve::PriceBased2dPlotCurve;
    int rtti() const override { return m_rtti; }
    bool isValidType(int type) const override
    {
        return type == 77 || PriceBased2dPlotCurve::isValidType(type);
    }

    int m_rtti = QwtPlotItem::Rtti_PlotCurve;
};

void makeValid(PriceBased2dPlotCurve& curve)
{
    curve.setTitle(QStringLiteral("a"));
    curve.setSamples(QVector<QPointF>{{100.0, 1.0}, {110.0, 2.0}});
    curve.setLegendAttribute(QwtPlotCurve::LegendShowLine);
    curve.setDataType(9);
}

void makeQuoteLine(PriceBased2dPlotCurve& curve)
{
    makeValid(curve);
    curve.setSamples(QVector<QPointF>{{105.0, 1.0}, {105.0, 2.0}});
    curve.setPen(QPen(Qt::red));
    curve.setStyle(QwtPlotCurve::Sticks);
    curve.setDataType(0);
}

}

Q_DECLARE_METATYPE(Change)

class tst_pricebased2dplotcurve : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();

    void constructors();
    void validTypes_data();
    void validTypes();
    void minusOneIsAlwaysStored();
    void typeOfASubclass();

    void validity_data();
    void validity();
    void validityOfTheLegend_data();
    void validityOfTheLegend();
    void validityOfTheQuoteLine_data();
    void validityOfTheQuoteLine();
    void validityOfAnotherItemType();
    void validityOfBoundsWithoutSamples();

    void samplesOfArraysAreCopies();
    void colors_data();
    void colors();
};

void tst_pricebased2dplotcurve::initTestCase()
{
    TestHost::createSecurities();
    TestHost::createBoards();
}

void tst_pricebased2dplotcurve::cleanupTestCase()
{
    TestHost::dropSecurities();
    TestHost::dropBoards();
}

void tst_pricebased2dplotcurve::constructors()
{
    TestPlot plot;
    const PriceBased2dPlotCurve plain(&plot, QStringLiteral("a"));
    QCOMPARE(plain.title().text(), QStringLiteral("a"));
    QCOMPARE(plain.dataType(), -1);
    QVERIFY(!plain.plot());
    QVERIFY(plain.isVisible());

    QwtText title(QStringLiteral("<b>b</b>"), QwtText::RichText);
    title.setColor(Qt::green);
    const PriceBased2dPlotCurve rich(&plot, title);
    QCOMPARE(rich.title(), title);
    QCOMPARE(rich.dataType(), -1);
    QVERIFY(plot.itemList().isEmpty());
}

void tst_pricebased2dplotcurve::validTypes_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<bool>("valid");
    for (int type = -2; type <= 15; ++type)
        QTest::addRow("%d", type) << type << (type == 0 || (type >= 9 && type <= 13));
    QTest::newRow("smallest") << std::numeric_limits<int>::min() << false;
    QTest::newRow("largest") << std::numeric_limits<int>::max() << false;
}

void tst_pricebased2dplotcurve::validTypes()
{
    QFETCH(int, type);
    QFETCH(bool, valid);
    PriceBased2dPlotCurve curve(nullptr, QStringLiteral("a"));
    QCOMPARE(curve.isValidType(type), valid);
    curve.setDataType(11);
    curve.setDataType(type);
    QCOMPARE(curve.dataType(), valid || type == -1 ? type : 11);
}

void tst_pricebased2dplotcurve::minusOneIsAlwaysStored()
{
    PriceBased2dPlotCurve curve(nullptr, QStringLiteral("a"));
    curve.setDataType(9);
    QVERIFY(!curve.isValidType(-1));
    curve.setDataType(-1);
    QCOMPARE(curve.dataType(), -1);
}

void tst_pricebased2dplotcurve::typeOfASubclass()
{
    SpecialCurve curve(nullptr, QStringLiteral("a"));
    makeValid(curve);
    curve.setDataType(77);
    QCOMPARE(curve.dataType(), 77);
    QVERIFY(curve.isValid());
}

void tst_pricebased2dplotcurve::validity_data()
{
    using Curve = PriceBased2dPlotCurve;
    QTest::addColumn<Change>("change");
    QTest::addColumn<bool>("valid");
    const auto row
        = [](const char* name, bool valid, const Change& change) { QTest::newRow(name) << change << valid; };
    row("unchanged", true, [](Curve&) {});
    row("hidden", true, [](Curve& curve) { curve.setVisible(false); });
    row("one sample", true, [](Curve& curve) { curve.setSamples(QVector<QPointF>{{100.0, 1.0}}); });
    row("no samples", false, [](Curve& curve) { curve.setSamples(QVector<QPointF>()); });
    row("no series data", false, [](Curve& curve) { curve.setData(nullptr); });
    row("empty title", false, [](Curve& curve) { curve.setTitle(QString()); });
    row("rectangle without size", true,
        [](Curve& curve) { curve.setData(new FixedRectangle(QRectF(1.0, 1.0, 0.0, 0.0))); });
    row("negative width", false,
        [](Curve& curve) { curve.setData(new FixedRectangle(QRectF(1.0, 1.0, -0.5, 1.0))); });
    row("negative height", false,
        [](Curve& curve) { curve.setData(new FixedRectangle(QRectF(1.0, 1.0, 1.0, -0.5))); });
    row("sticks", true, [](Curve& curve) { curve.setStyle(Curve::Sticks); });
    row("steps", true, [](Curve& curve) { curve.setStyle(Curve::Steps); });
    row("dots", true, [](Curve& curve) { curve.setStyle(Curve::Dots); });
    row("no curve", false, [](Curve& curve) { curve.setStyle(Curve::NoCurve); });
    row("user's style", false, [](Curve& curve) { curve.setStyle(Curve::UserCurve); });
    row("without type", false, [](Curve& curve) { curve.setDataType(-1); });
    for (const int type : {10, 11, 12, 13})
        row(qPrintable(QStringLiteral("type %1").arg(type)), true,
            [type](Curve& curve) { curve.setDataType(type); });
}

void tst_pricebased2dplotcurve::validity()
{
    QFETCH(Change, change);
    QFETCH(bool, valid);
    PriceBased2dPlotCurve curve(nullptr, QString());
    makeValid(curve);
    change(curve);
    QCOMPARE(curve.isValid(), valid);
}

void tst_pricebased2dplotcurve::validityOfTheLegend_data()
{
    using Curve = PriceBased2dPlotCurve;
    QTest::addColumn<Change>("change");
    QTest::addColumn<bool>("valid");
    const auto row
        = [](const char* name, bool valid, const Change& change) { QTest::newRow(name) << change << valid; };
    row("symbol in the legend", true, [](Curve& curve) {
        curve.setLegendAttribute(Curve::LegendShowLine, false);
        curve.setLegendAttribute(Curve::LegendShowSymbol);
    });
    row("brush alone in the legend", false, [](Curve& curve) {
        curve.setLegendAttribute(Curve::LegendShowLine, false);
        curve.setLegendAttribute(Curve::LegendShowBrush);
    });
    row("nothing in the legend", false,
        [](Curve& curve) { curve.setLegendAttribute(Curve::LegendShowLine, false); });
    row("line in the legend without pen", false, [](Curve& curve) { curve.setPen(QPen(Qt::NoPen)); });
    row("line and symbol in the legend without pen", false, [](Curve& curve) {
        curve.setLegendAttribute(Curve::LegendShowSymbol);
        curve.setPen(QPen(Qt::NoPen));
    });
    row("symbol in the legend without pen", true, [](Curve& curve) {
        curve.setLegendAttribute(Curve::LegendShowLine, false);
        curve.setLegendAttribute(Curve::LegendShowSymbol);
        curve.setPen(QPen(Qt::NoPen));
    });
    row("pen without colour", false, [](Curve& curve) { curve.setPen(QPen(QColor())); });
    row("symbol in the legend, pen without colour", true, [](Curve& curve) {
        curve.setLegendAttribute(Curve::LegendShowLine, false);
        curve.setLegendAttribute(Curve::LegendShowSymbol);
        curve.setPen(QPen(QColor()));
    });
}

void tst_pricebased2dplotcurve::validityOfTheLegend()
{
    validity();
}

void tst_pricebased2dplotcurve::validityOfTheQuoteLine_data()
{
    using Curve = PriceBased2dPlotCurve;
    QTest::addColumn<Change>("change");
    QTest::addColumn<bool>("valid");
    const auto row
        = [](const char* name, bool valid, const Change& change) { QTest::newRow(name) << change << valid; };
    row("red sticks of two points", true, [](Curve&) {});
    row("thick and dashed", true,
        [](Curve& curve) { curve.setPen(QPen(QColor(255, 0, 0), 3.0, Qt::DashLine)); });
    row("blue", false, [](Curve& curve) { curve.setPen(QPen(Qt::blue)); });
    row("dark red", false, [](Curve& curve) { curve.setPen(QPen(QColor(254, 0, 0))); });
    row("lines", false, [](Curve& curve) { curve.setStyle(Curve::Lines); });
    row("steps", false, [](Curve& curve) { curve.setStyle(Curve::Steps); });
    row("dots", false, [](Curve& curve) { curve.setStyle(Curve::Dots); });
    row("one point", false, [](Curve& curve) { curve.setSamples(QVector<QPointF>{{105.0, 1.0}}); });
    row("three points", false, [](Curve& curve) {
        curve.setSamples(QVector<QPointF>{{105.0, 1.0}, {105.0, 2.0}, {105.0, 3.0}});
    });
    row("no title", false, [](Curve& curve) { curve.setTitle(QString()); });
    row("no legend attribute", false,
        [](Curve& curve) { curve.setLegendAttribute(Curve::LegendShowLine, false); });
    row("blue three-point lines of another type", true, [](Curve& curve) {
        curve.setPen(QPen(Qt::blue));
        curve.setStyle(Curve::Lines);
        curve.setDataType(9);
    });
}

void tst_pricebased2dplotcurve::validityOfTheQuoteLine()
{
    QFETCH(Change, change);
    QFETCH(bool, valid);
    PriceBased2dPlotCurve curve(nullptr, QString());
    makeQuoteLine(curve);
    change(curve);
    QCOMPARE(curve.isValid(), valid);
}

void tst_pricebased2dplotcurve::validityOfAnotherItemType()
{
    SpecialCurve curve(nullptr, QString());
    makeValid(curve);
    QVERIFY(curve.isValid());
    curve.m_rtti = QwtPlotItem::Rtti_PlotUserItem;
    QVERIFY(!curve.isValid());
}

void tst_pricebased2dplotcurve::validityOfBoundsWithoutSamples()
{
    class Bounds : public QwtSeriesData<QPointF> {
    public:
        size_t size() const override { return 0; }
        QPointF sample(size_t) const override { return QPointF(); }
        QRectF boundingRect() const override { return QRectF(1.0, 2.0, 3.0, 4.0); }
    };
    PriceBased2dPlotCurve curve(nullptr, QString());
    makeValid(curve);
    QVERIFY(curve.isValid());
    curve.setSamples(new Bounds);
    QVERIFY(!curve.isValid());
}

void tst_pricebased2dplotcurve::samplesOfArraysAreCopies()
{
    double prices[] = {100.0, 101.0, 102.0};
    double values[] = {3.0, 5.0, 4.0};
    PriceBased2dPlotCurve curve(nullptr, QStringLiteral("curve"));
    curve.setSamples(prices, values, 2);
    prices[0] = 0.0;
    values[1] = 0.0;
    QCOMPARE(curve.dataSize(), size_t(2));
    QCOMPARE(curve.sample(0), QPointF(100.0, 3.0));
    QCOMPARE(curve.sample(1), QPointF(101.0, 5.0));
    curve.setSamples(prices, values, -1);
    QCOMPARE(curve.dataSize(), size_t(0));
    curve.setSamples(prices, values, 3);
    QCOMPARE(curve.dataSize(), size_t(3));
    const double* const nothing = nullptr;
    curve.setSamples(nothing, nothing, 0);
    QCOMPARE(curve.dataSize(), size_t(0));
}

void tst_pricebased2dplotcurve::colors_data()
{
    QTest::addColumn<int>("style");
    QTest::addColumn<bool>("symbol");
    QTest::addColumn<QColor>("expected");
    const QColor none;
    QTest::newRow("lines") << int(QwtPlotCurve::Lines) << false << QColor(Qt::green);
    QTest::newRow("lines with symbol") << int(QwtPlotCurve::Lines) << true << QColor(Qt::green);
    QTest::newRow("dots") << int(QwtPlotCurve::Dots) << false << none;
    QTest::newRow("dots with symbol") << int(QwtPlotCurve::Dots) << true << QColor(Qt::blue);
    QTest::newRow("sticks") << int(QwtPlotCurve::Sticks) << true << none;
    QTest::newRow("steps") << int(QwtPlotCurve::Steps) << true << none;
    QTest::newRow("no curve") << int(QwtPlotCurve::NoCurve) << true << none;
    QTest::newRow("user's style") << int(QwtPlotCurve::UserCurve) << true << none;
}

void tst_pricebased2dplotcurve::colors()
{
    QFETCH(int, style);
    QFETCH(bool, symbol);
    QFETCH(QColor, expected);
    PriceBased2dPlotCurve curve(nullptr, QStringLiteral("a"));
    curve.setPen(QPen(Qt::green));
    curve.setStyle(static_cast<QwtPlotCurve::CurveStyle>(style));
    if (symbol)
        curve.setSymbol(new QwtSymbol(QwtSymbol::Ellipse, QBrush(Qt::yellow), QPen(Qt::blue), QSize(5, 5)));
    QCOMPARE(curve.getColor(), expected);
    QCOMPARE(curve.getColor().isValid(), expected.isValid());
}

PLOT2D_TEST_MAIN(tst_pricebased2dplotcurve)
#include "tst_pricebased2dplotcurve.moc"
