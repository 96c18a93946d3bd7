#include "support/heapmeter.h"
#include "support/testhost.h"
#include "support/testmain.h"
#include "support/testplot.h"

#include <plot2d/pricebased2dplotpanner.h>

namespace {

QPen rubberBandPen(const QColor& color)
{
    return QPen(QBrush(color, Qt::SolidPattern), 1.0, Qt::SolidLine, Qt::SquareCap, Qt::BevelJoin);
}

}

/// What a plot does with its picker.
class tst_pricebased2dplot_tracker : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();

    void trackerModeIsThePickers();
    void trackerColorIsThatOfTheTrackerPen();
    void trackerColorSetsBothPens();
    void invalidTrackerColorIsBlack();
    void sameTrackerColorDoesNothing();
    void invalidTrackerColorWhileBlackRewritesThePens();
    void canvasObservers();
    void cursorOfAHostIsReplaced();
    void noCursorIsLost();
    void nothingIsReplotted();
    void destroyedPickerIsForgotten();
};

void tst_pricebased2dplot_tracker::initTestCase()
{
    TestHost::createSecurities();
    TestHost::createBoards();
}

void tst_pricebased2dplot_tracker::cleanupTestCase()
{
    TestHost::dropSecurities();
    TestHost::dropBoards();
}

void tst_pricebased2dplot_tracker::trackerModeIsThePickers()
{
    TestPlot plot;
    const auto* picker = plot.createPicker();
    plot.setTrackerMode();
    QCOMPARE(picker->trackerMode(), QwtPicker::AlwaysOn);
    plot.resetTrackerMode();
    QCOMPARE(picker->trackerMode(), QwtPicker::AlwaysOff);
}

void tst_pricebased2dplot_tracker::trackerColorIsThatOfTheTrackerPen()
{
    TestPlot plot;
    auto* picker = plot.createPicker();
    picker->setRubberBandPen(QPen(Qt::red));
    picker->setTrackerPen(QPen(Qt::blue));
    QCOMPARE(plot.getTrackerColor(), QColor(Qt::blue));
}

void tst_pricebased2dplot_tracker::trackerColorSetsBothPens()
{
    TestPlot plot;
    auto* picker = plot.createPicker();
    picker->setTrackerPen(QPen(Qt::blue, 3.0, Qt::DashLine));
    plot.setTrackerColor(Qt::red);
    QCOMPARE(picker->rubberBandPen(), rubberBandPen(Qt::red));
    QCOMPARE(picker->trackerPen(), QPen(QColor(Qt::red)));
}

void tst_pricebased2dplot_tracker::invalidTrackerColorIsBlack()
{
    TestPlot plot;
    const auto* picker = plot.createPicker();
    plot.setTrackerColor(Qt::red);
    plot.setTrackerColor(QColor());
    QCOMPARE(picker->rubberBandPen(), rubberBandPen(Qt::black));
    QCOMPARE(picker->trackerPen(), QPen(QColor(Qt::black)));
}

void tst_pricebased2dplot_tracker::sameTrackerColorDoesNothing()
{
    TestPlot plot;
    auto* picker = plot.createPicker();
    const QPen tracker(QColor(Qt::red), 3.0, Qt::DashLine);
    const QPen band(QColor(Qt::blue), 5.0);
    picker->setTrackerPen(tracker);
    picker->setRubberBandPen(band);
    plot.setTrackerColor(Qt::red);
    QCOMPARE(picker->trackerPen(), tracker);
    QCOMPARE(picker->rubberBandPen(), band);
}

void tst_pricebased2dplot_tracker::invalidTrackerColorWhileBlackRewritesThePens()
{
    TestPlot plot;
    auto* picker = plot.createPicker();
    picker->setTrackerPen(QPen(QColor(Qt::black), 3.0, Qt::DashLine));
    picker->setRubberBandPen(QPen(QColor(Qt::blue), 5.0));
    plot.setTrackerColor(QColor());
    QCOMPARE(picker->rubberBandPen(), rubberBandPen(Qt::black));
    QCOMPARE(picker->trackerPen(), QPen(QColor(Qt::black)));
}

void tst_pricebased2dplot_tracker::canvasObservers()
{
    TestPlot plot;
    const auto* picker = plot.createPicker();
    plot.setTrackerColor(Qt::red);
    plot.resetTrackerMode();
    const auto* panner = plot.canvas()->findChild<PriceBased2dPlotPanner*>();
    QVERIFY(panner->cursor().shape() != Qt::ClosedHandCursor);

    plot.setCanvasObservers();
    QCOMPARE(picker->trackerMode(), QwtPicker::AlwaysOn);
    QCOMPARE(picker->rubberBand(), QwtPicker::CrossRubberBand);
    QCOMPARE(picker->rubberBandPen(), rubberBandPen(Qt::black));
    QCOMPARE(picker->trackerPen(), QPen(QColor(Qt::black)));
    QCOMPARE(panner->cursor().shape(), Qt::ClosedHandCursor);

    // It is the panner's own, not the canvas's of that moment.
    TestPlot other;
    other.createPicker();
    other.canvas()->setCursor(Qt::ClosedHandCursor);
    other.setCanvasObservers();
    other.canvas()->setCursor(Qt::ArrowCursor);
    QCOMPARE(other.canvas()->findChild<PriceBased2dPlotPanner*>()->cursor().shape(), Qt::ClosedHandCursor);

    plot.setCanvasObservers();
    QCOMPARE(panner->cursor().shape(), Qt::ClosedHandCursor);
}

void tst_pricebased2dplot_tracker::cursorOfAHostIsReplaced()
{
    TestPlot plot;
    plot.setCanvasObservers();
    auto* panner = plot.canvas()->findChild<PriceBased2dPlotPanner*>();
    panner->setCursor(Qt::ArrowCursor);
    plot.setCanvasObservers();
    QCOMPARE(panner->cursor().shape(), Qt::ClosedHandCursor);
}

void tst_pricebased2dplot_tracker::noCursorIsLost()
{
    TestPlot plot;
    constexpr int cycles = 500;
    const qint64 growth = TestSupport::heapGrowth([&] { plot.setCanvasObservers(); }, 10, cycles);
    QVERIFY2(growth < cycles * qint64(sizeof(QCursor)), qPrintable(QString::number(growth)));
}

void tst_pricebased2dplot_tracker::nothingIsReplotted()
{
    TestPlot plot;
    plot.createPicker();
    plot.setTrackerColor(Qt::red);
    plot.setCanvasObservers();
    plot.resetTrackerMode();
    QVERIFY(plot.calls.isEmpty());
}

void tst_pricebased2dplot_tracker::destroyedPickerIsForgotten()
{
    TestPlot plot;
    delete plot.createPicker();
    plot.setCanvasObservers();
    QVERIFY(!plot.getTrackerColor().isValid());
    QCOMPARE(plot.priceStep(), -1.0);
}

PLOT2D_TEST_MAIN(tst_pricebased2dplot_tracker)
#include "tst_pricebased2dplot_tracker.moc"
