#include "support/testhost.h"
#include "support/testmain.h"
#include "support/testplot.h"

#include <plot2d/pricebased2dplotlegend.h>

#include <QCheckBox>
#include <QTimer>
#include <QTimerEvent>

#include <qwt_scale_map.h>

#include <memory>

using Picker = PriceBased2dPlotPicker;
using Samples = QVector<QPointF>;

Q_DECLARE_METATYPE(FieldType)

class tst_pricebased2dplotpicker : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void priceSteps_data();
    void priceSteps();
    void priceStepsOfOtherTypes_data();
    void priceStepsOfOtherTypes();
    void priceStepIsUnknown();
    void timerRefreshes();

    void usedCurves();
    void usedCurvesWithoutALegend();

    void cursorIsSnapped_data();
    void cursorIsSnapped();
    void earlierCurveWins();
    void nearerCurveWins();
    void curvesThatAreNotPicked();
    void noStepNoPoint();
    void noPointWithoutTheFuture_data();
    void noPointWithoutTheFuture();
    void closestPointOfACurve();

    void transformedPoint();
    void renderedText_data();
    void renderedText();
    void trackerText();

private:
    void createPlot();
    void look(double left, double right, double bottom, double top);

    std::unique_ptr<TestPlot> m_plot;
    Picker* m_picker = nullptr;
    Record m_future;
};

void tst_pricebased2dplotpicker::init()
{
    TestHost::createSecurities();
    TestHost::createBoards();
    TestHost::addBoard(1, 2, true);
    m_future = TestHost::addSecurity(TestHost::future({{"price_step", "0.5"}}));
    createPlot();
}

void tst_pricebased2dplotpicker::cleanup()
{
    m_plot.reset();
    m_future = Record();
    TestHost::dropSecurities();
    TestHost::dropBoards();
}

void tst_pricebased2dplotpicker::createPlot()
{
    m_plot = std::make_unique<TestPlot>();
    m_plot->setBaseCode(QStringLiteral("Amber"));
    m_picker = m_plot->createPicker();
    look(0.0, 100.0, 0.0, 10.0);
}

void tst_pricebased2dplotpicker::look(double left, double right, double bottom, double top)
{
    m_plot->QwtPlot::setAxisScale(QwtPlot::xBottom, left, right);
    m_plot->QwtPlot::setAxisScale(QwtPlot::yLeft, bottom, top);
    m_plot->updateAxes();
}

void tst_pricebased2dplotpicker::priceSteps_data()
{
    QTest::addColumn<FieldType>("type");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<double>("expected");
    QTest::newRow("32 bits") << FieldType::Int32 << QVariant(3) << 3.0;
    QTest::newRow("64 bits") << FieldType::Int64 << QVariant(5000000000LL) << 5e9;
    QTest::newRow("double") << FieldType::Double << QVariant(0.1) << 0.1;
    for (const double none : {qQNaN(), qInf(), -qInf()})
        QTest::addRow("double, %f", none) << FieldType::Double << QVariant(none) << none;
    QTest::newRow("decimal") << FieldType::Decimal << QVariant("0.25") << 0.25;
    QTest::newRow("null decimal") << FieldType::Decimal << QVariant() << 0.0;
    QTest::newRow("null integer") << FieldType::Int32 << QVariant() << 0.0;
    QTest::newRow("null text") << FieldType::Text << QVariant() << 0.0;
}

void tst_pricebased2dplotpicker::priceSteps()
{
    QFETCH(FieldType, type);
    QFETCH(QVariant, value);
    QFETCH(double, expected);
    m_plot.reset();
    TestHost::createSecurities(
        TestHost::withType(TestHost::securitiesColumns(), QStringLiteral("price_step"), type));
    TestHost::addSecurity(TestHost::future({{"price_step", value}}));
    createPlot();
    QCOMPARE(m_picker->priceStep(), -1.0);
    m_picker->setPriceStep();
    QCOMPARE(m_picker->priceStep(), expected);
    QCOMPARE(m_plot->priceStep(), expected);
}

void tst_pricebased2dplotpicker::priceStepsOfOtherTypes_data()
{
    QTest::addColumn<FieldType>("type");
    QTest::addColumn<QVariant>("value");
    QTest::newRow("text") << FieldType::Text << QVariant("0.5");
    QTest::newRow("moment") << FieldType::Moment << QVariant(5);
}

void tst_pricebased2dplotpicker::priceStepsOfOtherTypes()
{
    QFETCH(FieldType, type);
    QFETCH(QVariant, value);
    m_picker->setPriceStep();
    QCOMPARE(m_picker->priceStep(), 0.5);
    m_plot.reset();
    TestHost::createSecurities(
        TestHost::withType(TestHost::securitiesColumns(), QStringLiteral("price_step"), type));
    const Record future = TestHost::addSecurity(TestHost::future());
    createPlot();
    m_picker->setPriceStep();
    QCOMPARE(m_picker->priceStep(), 0.0);
    TestHost::changeRow(future, {{"price_step", value}});
    QCOMPARE(TestHost::thrownText([this] { m_picker->setPriceStep(); }),
        QStringLiteral("Incorrect type conversion."));
    QCOMPARE(m_picker->priceStep(), -1.0);
}

void tst_pricebased2dplotpicker::priceStepIsUnknown()
{
    m_picker->setPriceStep();
    QCOMPARE(m_picker->priceStep(), 0.5);
    m_plot->setBaseCode(QStringLiteral("Cobalt"));
    m_picker->setPriceStep();
    QCOMPARE(m_picker->priceStep(), -1.0);

    QwtPlot other;
    Picker picker(other.canvas());
    picker.setPriceStep();
    QCOMPARE(picker.priceStep(), -1.0);
    QVERIFY(picker.usedCurves().isEmpty());
}

void tst_pricebased2dplotpicker::timerRefreshes()
{
    m_picker->initTimer();
    QCOMPARE(m_picker->priceStep(), 0.5);
    const QList<QTimer*> timers = m_picker->findChildren<QTimer*>(QString(), Qt::FindDirectChildrenOnly);
    QCOMPARE(timers.size(), 1);
    QVERIFY(timers.first()->isActive());
    QVERIFY(!timers.first()->isSingleShot());
    QCOMPARE(timers.first()->interval(), 1000);

    TestHost::changeRow(m_future, {{"price_step", "0.25"}});
    QCOMPARE(m_picker->priceStep(), 0.5);
    QTimerEvent tick(timers.first()->timerId());
    QCoreApplication::sendEvent(timers.first(), &tick);
    QCOMPARE(m_picker->priceStep(), 0.25);
}

void tst_pricebased2dplotpicker::usedCurves()
{
    auto* legend = new PriceBased2dPlotLegend(m_plot.get());
    m_plot->insertLegend(legend);
    const Samples samples{{1.0, 1.0}, {2.0, 2.0}};
    PriceBased2dPlotCurve* first = addCurve(*m_plot, 9, samples, QStringLiteral("first"));
    addCurve(*m_plot, 10, samples, QStringLiteral("unchecked"));
    addCurve(*m_plot, 10, {}, QStringLiteral("not valid"));
    PriceBased2dPlotCurve* quote = addCurve(*m_plot, 0, samples, QStringLiteral("quote"));
    PriceBased2dPlotCurve* hidden = addCurve(*m_plot, 11, samples, QStringLiteral("hidden"));
    PriceBased2dPlotCurve* unlisted = addCurve(*m_plot, 12, samples, QStringLiteral("not in the legend"));
    hidden->QwtPlotItem::setVisible(false);
    unlisted->detach();
    unlisted->setItemAttribute(QwtPlotItem::Legend, false);
    unlisted->attach(m_plot.get());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    first->setZ(100.0);
    legend->setCheckBoxChecked(QStringLiteral("unchecked"), false);
    QCOMPARE(m_picker->usedCurves(), QList<PriceBased2dPlotCurve*>({quote, hidden, first}));
}

void tst_pricebased2dplotpicker::usedCurvesWithoutALegend()
{
    addCurve(*m_plot, 9, {{1.0, 1.0}, {2.0, 2.0}}, QStringLiteral("curve"));
    QVERIFY(m_picker->usedCurves().isEmpty());
    m_plot->insertLegend(new QwtLegend);
    QVERIFY(m_picker->usedCurves().isEmpty());
}

void tst_pricebased2dplotpicker::cursorIsSnapped_data()
{
    QTest::addColumn<double>("cursor");
    QTest::addColumn<int>("index");
    // Of the samples at 99.8, 100.3 and 100.6 the middle one is the nearest to either cursor itself.
    QTest::newRow("up to 100.5") << 100.26 << 2;
    QTest::newRow("down to 100") << 100.24 << 0;
    QTest::newRow("half up") << 100.25 << 2;
}

void tst_pricebased2dplotpicker::cursorIsSnapped()
{
    QFETCH(double, cursor);
    look(90.0, 110.0, 0.0, 10.0);
    const auto* curve = addCurve(*m_plot, 9, {{99.8, 5.0}, {100.3, 5.0}, {100.6, 5.0}}, QStringLiteral("c"));
    m_picker->setPriceStep();
    m_picker->setPosition(QPointF(cursor, 5.0));
    const ClosestPointParams found = m_picker->getClosestCurveParams(m_plot->attachedCurves(-1));
    QCOMPARE(found.curve, curve);
    QTEST(found.index, "index");
    QCOMPARE(found.distance, -1.0);
}

void tst_pricebased2dplotpicker::earlierCurveWins()
{
    auto* left = addCurve(*m_plot, 9, {{40.0, 5.0}}, QStringLiteral("left"));
    auto* right = addCurve(*m_plot, 9, {{60.0, 5.0}, {40.0, 5.0}}, QStringLiteral("right"));
    m_picker->setPriceStep();
    m_picker->setPosition(QPointF(50.0, 5.0));
    QCOMPARE(m_picker->getClosestCurveParams({left, right}).curve, left);
    const ClosestPointParams found = m_picker->getClosestCurveParams({right, left});
    QCOMPARE(found.curve, right);
    QCOMPARE(found.index, 0);
}

void tst_pricebased2dplotpicker::nearerCurveWins()
{
    auto* far = addCurve(*m_plot, 9, {{50.0, 4.0}}, QStringLiteral("far"));
    auto* near = addCurve(*m_plot, 13, {{0.0, 0.0}, {59.0, 5.0}}, QStringLiteral("near"));
    m_picker->setPriceStep();
    m_picker->setPosition(QPointF(50.0, 5.0));
    const ClosestPointParams found = m_picker->getClosestCurveParams({far, nullptr, near});
    QCOMPARE(found.curve, near);
    QCOMPARE(found.index, 1);
}

void tst_pricebased2dplotpicker::curvesThatAreNotPicked()
{
    auto* hidden = addCurve(*m_plot, 9, {{50.0, 5.0}}, QStringLiteral("hidden"));
    hidden->QwtPlotItem::setVisible(false);
    auto* untitled = addCurve(*m_plot, 9, {{50.0, 5.0}}, QString());
    auto* quote = addCurve(*m_plot, 0, {{50.0, 5.0}, {50.0, 6.0}}, QStringLiteral("quote"));
    auto* outside = addCurve(*m_plot, 9, {{101.0, 5.0}, {50.0, 10.5}}, QStringLiteral("outside"));
    QVERIFY(quote->isValid());
    QVERIFY(quote->isVisible());
    m_picker->setPriceStep();
    m_picker->setPosition(QPointF(50.0, 5.0));
    const ClosestPointParams found
        = m_picker->getClosestCurveParams({nullptr, hidden, untitled, quote, outside});
    QVERIFY(!found.curve);
    QCOMPARE(found.index, -1);
    QCOMPARE(found.distance, -1.0);
}

void tst_pricebased2dplotpicker::noStepNoPoint()
{
    const auto* curve = addCurve(*m_plot, 9, {{50.0, 5.0}}, QStringLiteral("curve"));
    const auto find = [this] { return m_picker->getClosestCurveParams(m_plot->attachedCurves(-1)); };
    m_picker->setPosition(QPointF(50.0, 5.0));
    QCOMPARE(find().index, -1);
    m_picker->setPriceStep();
    QCOMPARE(find().index, 0);
    QCOMPARE(find().curve, curve);
    TestHost::changeRow(m_future, {{"price_step", QVariant()}});
    m_picker->setPriceStep();
    QCOMPARE(m_picker->priceStep(), 0.0);
    QCOMPARE(find().index, -1);
}

void tst_pricebased2dplotpicker::noPointWithoutTheFuture_data()
{
    QTest::addColumn<bool>("all");
    QTest::newRow("its row goes") << false;
    QTest::newRow("all rows go") << true;
}

void tst_pricebased2dplotpicker::noPointWithoutTheFuture()
{
    QFETCH(bool, all);
    const auto* curve = addCurve(*m_plot, 9, {{50.0, 5.0}}, QStringLiteral("curve"));
    const ClosestPointCalcParams params{0.0, 100.0, 0.0, 10.0, 50.0, 5.0};
    const auto find = [this] { return m_picker->getClosestCurveParams(m_plot->attachedCurves(-1)); };
    m_picker->initTimer();
    m_picker->setPosition(QPointF(50.0, 5.0));
    QCOMPARE(find().curve, curve);

    Table* table = m_future.table();
    if (all)
        TestHost::clear(table);
    else
        TestHost::removeRows({m_future});
    auto* timer = m_picker->findChild<QTimer*>(QString(), Qt::FindDirectChildrenOnly);
    QTimerEvent tick(timer->timerId());
    QCoreApplication::sendEvent(timer, &tick);
    QCOMPARE(m_picker->priceStep(), -1.0);
    QCOMPARE(m_plot->priceStep(), -1.0);
    QVERIFY(!find().curve);
    QCOMPARE(find().index, -1);
    QCOMPARE(find().distance, -1.0);
    QCOMPARE(m_picker->getClosestPointParams(curve, params).index, -1);

    TestHost::appendRow(table, m_future);
    QCoreApplication::sendEvent(timer, &tick);
    QCOMPARE(find().curve, curve);
}

void tst_pricebased2dplotpicker::closestPointOfACurve()
{
    const auto* curve = addCurve(*m_plot, 9, {{50.0, 4.0}, {52.0, 5.0}}, QStringLiteral("curve"));
    const auto* empty = addCurve(*m_plot, 9, {}, QStringLiteral("empty"));
    const ClosestPointCalcParams params{0.0, 100.0, 0.0, 10.0, 50.0, 5.0};
    QCOMPARE(m_picker->getClosestPointParams(curve, params).index, -1);
    m_picker->setPriceStep();
    const ClosestPointParams found = m_picker->getClosestPointParams(curve, params);
    QVERIFY(!found.curve);
    QCOMPARE(found.index, 1);
    QCOMPARE(found.distance, 2.0);
    QCOMPARE(m_picker->getClosestPointParams(nullptr, params).index, -1);
    QCOMPARE(m_picker->getClosestPointParams(empty, params).index, -1);
    const ClosestPointCalcParams inverted{0.0, 100.0, 10.0, 0.0, 50.0, 5.0};
    QCOMPARE(m_picker->getClosestPointParams(curve, inverted).index, -1);
}

void tst_pricebased2dplotpicker::transformedPoint()
{
    m_plot->resize(400, 300);
    m_plot->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_plot.get()));
    look(100.0, 200.0, 5.0, 6.0);
    m_plot->replot();
    const QwtScaleMap x = m_plot->canvasMap(QwtPlot::xBottom);
    const QwtScaleMap y = m_plot->canvasMap(QwtPlot::yLeft);
    QVERIFY(x.pDist() > 100.0 && y.pDist() > 100.0);
    QCOMPARE(m_picker->transformedPoint(QPointF(x.p1(), y.p1())), QPointF(100.0, 5.0));
    QCOMPARE(m_picker->transformedPoint(QPointF(x.p2(), y.p2())), QPointF(200.0, 6.0));
    const QPointF middle((x.p1() + x.p2()) / 2.0, (y.p1() + y.p2()) / 2.0);
    QCOMPARE(m_picker->transformedPoint(middle), QPointF(150.0, 5.5));
}

void tst_pricebased2dplotpicker::renderedText_data()
{
    QTest::addColumn<double>("application");
    QTest::addColumn<int>("expected");
    QTest::newRow("10 points") << 10.0 << 12;
    QTest::newRow("9 points") << 9.0 << 11;
    QTest::newRow("12 points") << 12.0 << 14;
    QTest::newRow("1 point") << 1.0 << 1;
    QTest::newRow("hardly any, which leaves the plot's") << 0.3 << 30;
}

void tst_pricebased2dplotpicker::renderedText()
{
    QFETCH(double, application);
    const QFont before = QApplication::font();
    QFont font = before;
    font.setPointSizeF(application);
    QApplication::setFont(font);
    QFont plotFont = m_plot->font();
    plotFont.setPointSize(30);
    plotFont.setItalic(true);
    m_plot->setFont(plotFont);
    const QwtText text = m_picker->renderedText(QStringLiteral("text"));
    QApplication::setFont(before);

    QCOMPARE(text.text(), QStringLiteral("text"));
    QTEST(text.font().pointSize(), "expected");
    QVERIFY(text.font().italic());
    QVERIFY(text.testPaintAttribute(QwtText::PaintUsingTextFont));
    QVERIFY(text.renderFlags() & Qt::AlignLeft);
    QVERIFY(!(text.renderFlags() & Qt::AlignHCenter));
    QVERIFY(text.renderFlags() & Qt::AlignVCenter);
    QCOMPARE(m_picker->renderedText(QString()), QwtText());
}

void tst_pricebased2dplotpicker::trackerText()
{
    QVERIFY(m_picker->trackerText(QPoint(1, 2)).isEmpty());
    QCOMPARE(m_picker->position(), QPointF(0.0, 0.0));
    m_picker->setPosition(QPointF(101.5, -2.0));
    QCOMPARE(m_picker->position(), QPointF(101.5, -2.0));
    const QwtText text = m_picker->renderedText(QStringLiteral("text"));
    m_picker->setTrackerText(text);
    QCOMPARE(m_picker->trackerText(QPoint(1, 2)), text);
    QCOMPARE(m_picker->trackerText(QPoint(300, 200)), text);
}

PLOT2D_TEST_MAIN(tst_pricebased2dplotpicker)
#include "tst_pricebased2dplotpicker.moc"
