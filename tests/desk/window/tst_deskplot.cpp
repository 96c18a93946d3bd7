#include "desktest.h"
#include "shownplot.h"
#include "support/testmain.h"

#include <plot2d/pricebased2dplotcurve.h>
#include <plot2d/pricebased2dplotlegend.h>
#include <plot2d/pricebased2dplotpicker.h>
#include <plot2d/pricebased2dplotscaledraw.h>

#include <QRegularExpression>

#include <qwt_scale_map.h>
#include <qwt_scale_widget.h>

#include <cmath>

/// The plot of a series: its curves through the plot library, its scales, labels and legend.
class tst_deskplot : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m_shown = std::make_unique<ShownPlot>(); }
    void cleanup() { m_shown.reset(); }
    void attachesValidCurves_data();
    void attachesValidCurves();
    void fitsTheVisibleCurvesWithRoom();
    void labelsPercentInTheVolatilityView();
    void labelsStrikesRelativeToTheForward_data();
    void labelsStrikesRelativeToTheForward();
    void hidesWhatTheLegendUnchecks();
    void labelsFit_data();
    void labelsFit();
    void legendFits_data();
    void legendFits();
    void showsNothingAtAll();
    void resetsTheView();
    void tracksTheNearestPoint();

private:
    std::unique_ptr<ShownPlot> m_shown;
};

void tst_deskplot::attachesValidCurves_data()
{
    QTest::addColumn<int>("view");
    QTest::addColumn<QVector<int>>("types");
    QTest::newRow("volatility") << int(DeskView::Volatility) << QVector<int>{9, 10, 13, 0};
    QTest::newRow("value") << int(DeskView::Value) << QVector<int>{11, 12, 13, 0};
}

void tst_deskplot::attachesValidCurves()
{
    QFETCH(int, view);
    QFETCH(QVector<int>, types);
    // The other view's curves leave nothing behind.
    m_shown->show(DeskView(view) == DeskView::Value ? DeskView::Volatility : DeskView::Value);
    m_shown->show(DeskView(view));
    QVector<int> attached;
    const QList<PriceBased2dPlotCurve*> curves = m_shown->plot().attachedCurves(-1);
    for (const PriceBased2dPlotCurve* curve : curves) {
        attached.append(curve->dataType());
        QVERIFY2(curve->isValid(), qPrintable(curve->title().text()));
        QVERIFY(curve->isVisible());
    }
    std::sort(attached.begin(), attached.end());
    std::sort(types.begin(), types.end());
    QCOMPARE(attached, types);
    QVERIFY(!m_shown->plot().getFuture().isNull());
    QCOMPARE(m_shown->plot().itemList(QwtPlotItem::Rtti_PlotGrid).size(), 1);
}

void tst_deskplot::fitsTheVisibleCurvesWithRoom()
{
    m_shown->show(DeskView::Volatility);
    const QwtInterval prices = m_shown->plot().axisScaleDiv(QwtPlot::xBottom).interval();
    double low = 1e9;
    double high = 0.0;
    for (const int type : {9, 10, 13}) {
        const PriceBased2dPlotCurve* curve = m_shown->curve(type);
        QVERIFY(curve);
        for (int i = 0; i < int(curve->dataSize()); ++i) {
            const QPointF sample = curve->sample(i);
            if (!prices.contains(sample.x()))
                continue;
            low = std::min(low, sample.y());
            high = std::max(high, sample.y());
        }
    }
    const QwtInterval values = m_shown->plot().axisScaleDiv(QwtPlot::yLeft).interval();
    QVERIFY(values.minValue() < low && values.minValue() > low - 0.1 * (high - low));
    QVERIFY(values.maxValue() > high && values.maxValue() < high + 0.1 * (high - low));
}

void tst_deskplot::labelsPercentInTheVolatilityView()
{
    const auto* draw
        = dynamic_cast<PriceBased2dPlotScaleDraw*>(m_shown->plot().axisScaleDraw(QwtPlot::yLeft));
    QVERIFY(draw);
    m_shown->show(DeskView::Volatility);
    QCOMPARE(draw->label(0.3).text(), QStringLiteral("30%"));
    QCOMPARE(m_shown->plot().axisTitle(QwtPlot::yLeft).text(), QStringLiteral("Volatility"));
    QCOMPARE(m_shown->plot().axisTitle(QwtPlot::xBottom).text(), QStringLiteral("Strike"));
    m_shown->show(DeskView::Value);
    QCOMPARE(draw->label(3.0).text(), QStringLiteral("3"));
    QCOMPARE(m_shown->plot().axisTitle(QwtPlot::yLeft).text(), QStringLiteral("Value"));
}

void tst_deskplot::labelsStrikesRelativeToTheForward_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<QString>("atForward");
    QTest::newRow("points") << int(AxisMode::PointsFromQuote) << "[-+]?[0-9.]+"
                            << "0";
    QTest::newRow("percent") << int(AxisMode::PercentOfQuote) << "[0-9]+(\\.[0-9]{1,2})?%"
                             << "100%";
}

void tst_deskplot::labelsStrikesRelativeToTheForward()
{
    QFETCH(int, mode);
    QFETCH(QString, pattern);
    QFETCH(QString, atForward);
    const double forward = m_shown->show(DeskView::Volatility).market.forward;
    m_shown->plot().setAxisMode(AxisMode(mode));

    const QRegularExpression label(QRegularExpression::anchoredPattern(pattern));
    const QwtInterval all = m_shown->plot().axisScaleDiv(QwtPlot::xBottom).interval();
    for (const double part : {1.0, 0.5, 0.1}) {
        m_shown->plot().setAxisScale(QwtPlot::xBottom, forward - part * (forward - all.minValue()),
            forward + part * (all.maxValue() - forward), 0.0);
        m_shown->plot().replot();
        const QList<double> ticks
            = m_shown->plot().axisScaleDiv(QwtPlot::xBottom).ticks(QwtScaleDiv::MajorTick);
        QVERIFY(ticks.size() >= 2);
        QVERIFY(ticks.contains(forward));
        QCOMPARE(m_shown->plot().xAxisConvertedValue(forward), atForward);
        for (const double tick : ticks) {
            const QString text = m_shown->plot().xAxisConvertedValue(tick);
            QVERIFY2(label.match(text).hasMatch(), qPrintable(text));
        }
    }
    m_shown->plot().setAxisMode(AxisMode::Price);
    QVERIFY(!m_shown->plot().conversionEnabled(QwtPlot::xBottom));
}

void tst_deskplot::hidesWhatTheLegendUnchecks()
{
    m_shown->show(DeskView::Volatility);
    auto* legend = m_shown->plot().findChild<PriceBased2dPlotLegend*>();
    QVERIFY(legend);
    QCOMPARE(legend->findChildren<LabelWidget*>().size(), 4);
    legend->setCheckBoxChecked(QStringLiteral("Smile"), false);
    QVERIFY(!m_shown->curve(9)->isVisible());
    legend->setCheckBoxChecked(QStringLiteral("Forward"), false);
    QVERIFY(!m_shown->curve(0)->isVisible());
    QCOMPARE(
        DeskTest::countPixels(m_shown->picture().copy(m_shown->canvasRect().toRect()), ShownPlot::red), 0);

    // The choice holds for the next series.
    m_shown->show(DeskView::Volatility);
    QVERIFY(!m_shown->curve(9)->isVisible());
    QVERIFY(!m_shown->curve(0)->isVisible());
    legend->setCheckBoxChecked(QStringLiteral("Smile"), true);
    legend->setCheckBoxChecked(QStringLiteral("Forward"), true);
    QVERIFY(m_shown->curve(9)->isVisible());
    QVERIFY(
        DeskTest::countPixels(m_shown->picture().copy(m_shown->canvasRect().toRect()), ShownPlot::red) > 100);
}

void tst_deskplot::labelsFit_data()
{
    QTest::addColumn<double>("low");
    QTest::addColumn<double>("high");
    QTest::newRow("as shown first") << 0.0 << 0.0;
    // Ends of the axis next to a labelled price.
    QTest::newRow("labels at the ends") << 70.0 << 130.0;
    QTest::newRow("just inside") << 69.9 << 130.1;
    QTest::newRow("medium ticks at the ends") << 29.9 << 170.1;
}

void tst_deskplot::labelsFit()
{
    QFETCH(double, low);
    QFETCH(double, high);
    m_shown->show(DeskView::Volatility);
    if (low < high)
        m_shown->plot().setAxisScale(QwtPlot::xBottom, low, high, 0.0);
    m_shown->picture();
    const QwtScaleWidget* axis = m_shown->plot().axisWidget(QwtPlot::xBottom);
    const QwtScaleDraw* draw = axis->scaleDraw();
    int looked = 0;
    for (const int type : {int(QwtScaleDiv::MajorTick), int(QwtScaleDiv::MediumTick)}) {
        const QList<double> ticks = draw->scaleDiv().ticks(type);
        for (const double tick : ticks) {
            const QRect label = draw->boundingLabelRect(axis->font(), tick);
            QVERIFY2(axis->rect().contains(label), qPrintable(QString::number(tick)));
            ++looked;
        }
    }
    QVERIFY(looked > 4);
}

void tst_deskplot::legendFits_data()
{
    QTest::addColumn<QSize>("size");
    QTest::newRow("small") << QSize(560, 330);
    QTest::newRow("default") << QSize(1000, 560);
    QTest::newRow("large") << QSize(1900, 1000);
}

void tst_deskplot::legendFits()
{
    QFETCH(QSize, size);
    m_shown->show(DeskView::Volatility);
    m_shown->picture(size);
    const auto* legend = m_shown->plot().findChild<PriceBased2dPlotLegend*>();
    const QList<LabelWidget*> entries = legend->findChildren<LabelWidget*>();
    QCOMPARE(entries.size(), 4);
    for (const LabelWidget* entry : entries) {
        const QRect place(entry->mapTo(legend, QPoint()), entry->size());
        QVERIFY(legend->rect().contains(place));
        QVERIFY(entry->width() >= entry->sizeHint().width());
    }
}

void tst_deskplot::showsNothingAtAll()
{
    m_shown->show(DeskView::Volatility);
    m_shown->plot().showNothing(QStringLiteral("the reason"));
    QVERIFY(m_shown->plot().attachedCurves(-1).isEmpty());
    QVERIFY(m_shown->plot().itemList(QwtPlotItem::Rtti_PlotMarker).isEmpty());
    QCOMPARE(m_shown->plot().title().text(), QStringLiteral("the reason"));
    QCOMPARE(DeskTest::countPixels(m_shown->picture(), ShownPlot::red), 0);
}

void tst_deskplot::resetsTheView()
{
    m_shown->show(DeskView::Volatility);
    const QwtInterval prices = m_shown->plot().axisScaleDiv(QwtPlot::xBottom).interval();
    const QwtInterval values = m_shown->plot().axisScaleDiv(QwtPlot::yLeft).interval();
    m_shown->plot().setAutoScaleEnabled(false);
    m_shown->plot().setAxisScale(QwtPlot::xBottom, 95.0, 105.0, 0.0);
    m_shown->plot().setAxisScale(QwtPlot::yLeft, 0.0, 5.0, 0.0);
    m_shown->plot().updateAxes();
    QVERIFY(m_shown->plot().axisScaleDiv(QwtPlot::xBottom).interval() != prices);
    m_shown->plot().resetView();
    QCOMPARE(m_shown->plot().axisScaleDiv(QwtPlot::xBottom).interval(), prices);
    QCOMPARE(m_shown->plot().axisScaleDiv(QwtPlot::yLeft).interval(), values);
    QVERIFY(m_shown->plot().autoScaleEnabled());
}

void tst_deskplot::tracksTheNearestPoint()
{
    m_shown->show(DeskView::Volatility);
    m_shown->picture();
    auto* legend = m_shown->plot().findChild<PriceBased2dPlotLegend*>();
    for (const char* title : {"Smile", "Stated volatility"})
        legend->setCheckBoxChecked(QLatin1String(title), false);
    m_shown->picture();
    const PriceBased2dPlotCurve* points = m_shown->curve(13);
    const QPointF sample = points->sample(int(points->dataSize()) / 2);
    const QPointF position(m_shown->plot().canvasMap(QwtPlot::xBottom).transform(sample.x()),
        m_shown->plot().canvasMap(QwtPlot::yLeft).transform(sample.y()));
    QMouseEvent move(QEvent::MouseMove, position + QPointF(2.0, 2.0), position + QPointF(2.0, 2.0),
        QCursor::pos(), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(m_shown->plot().canvas(), &move);
    const auto* picker = m_shown->plot().findChild<PriceBased2dPlotPicker*>();
    QVERIFY(picker);
    QCOMPARE(picker->priceStep(), 0.01);
    const QString text = picker->trackerText(QPoint()).text();
    QVERIFY2(text.startsWith(QStringLiteral("Implied volatility\n")) && text.endsWith(QLatin1Char('%')),
        qPrintable(text));
    QVERIFY2(text.contains(m_shown->plot().xAxisConvertedValue(sample.x())), qPrintable(text));
}

PLOT2D_TEST_MAIN(tst_deskplot)
#include "tst_deskplot.moc"
