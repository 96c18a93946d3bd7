// What a step of a user costs, counted.

#include "support/testhost.h"
#include "support/testmain.h"
#include "support/testplot.h"

#include <plot2d/pricebased2dplotlegend.h>
#include <plot2d/rememberingtextengine_p.h>
#include <plot2d/ticktext_p.h>

#include <QSet>
#include <QTest>
#include <QWheelEvent>

#include <qwt_plot_layout.h>
#include <qwt_scale_widget.h>

namespace {

/// Counts the paint events of the widgets it watches.
class PaintCounter : public QObject {
public:
    bool eventFilter(QObject*, QEvent* event) override
    {
        count += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }

    int count = 0;
};

class CountingLayout : public QwtPlotLayout {
public:
    void activate(const QwtPlot* plot, const QRectF& rect, Options options) override
    {
        ++count;
        QwtPlotLayout::activate(plot, rect, options);
    }

    int count = 0;
};

/// What was measured, and how often.
struct Measurements {
    int count = 0;
    QSet<QString> distinct;

    void add(const QFont& font, int flags, const QString& text)
    {
        ++count;
        distinct.insert(QStringLiteral("%1 %2 %3").arg(font.toString()).arg(flags).arg(text));
    }
};

/// Qwt's engine, with a record of its measurements.
class RecordingEngine : public QwtPlainTextEngine {
public:
    explicit RecordingEngine(Measurements& measurements)
        : m_measurements(measurements)
    {
    }
    QSizeF textSize(const QFont& font, int flags, const QString& text) const override
    {
        m_measurements.add(font, flags, text);
        return QwtPlainTextEngine::textSize(font, flags, text);
    }
    void textMargins(const QFont& font, const QString& text, double& left, double& right, double& top,
        double& bottom) const override
    {
        m_measurements.add(font, -1, QString());
        QwtPlainTextEngine::textMargins(font, text, left, right, top, bottom);
    }

private:
    Measurements& m_measurements;
};

/// A plot as a host shows it, with a legend, and auto-scale on.
class ShownPlot : public TestPlot {
public:
    ShownPlot()
    {
        createPicker();
        auto* const entries = new PriceBased2dPlotLegend(this);
        entries->initCore();
        insertLegend(entries, BottomLegend);
        connect(this, SIGNAL(updateAxisLabels()), this, SLOT(updateScaleLabels()));
        counted = new CountingLayout;
        setPlotLayout(counted);
        QVector<QPointF> samples;
        for (int i = 0; i <= 1000; ++i)
            samples.append(QPointF(i / 10.0, 10.0 + (i * 7919 % 101) / 50.0));
        for (int type = 9; type <= 12; ++type)
            addCurve(*this, type, samples, QStringLiteral("curve %1").arg(type));
        setAutoScaleEnabled(true);
        setAxisScale(xBottom, 0.0, 100.0, 0.0);
        updateYAxisScale();
        resize(800, 600);
        show();
        settle();
        canvas()->installEventFilter(&canvasPaints);
        for (const int axis : {int(xBottom), int(yLeft)})
            axisWidget(axis)->installEventFilter(&axisPaints);
    }

    /// Runs the event loop until nothing is left to do.
    static void settle()
    {
        for (int i = 0; i < 5; ++i)
            QCoreApplication::processEvents();
    }

    /// A notch of the wheel over the prices: zooms them, and fits the values.
    void zoomPrices(int notch)
    {
        const QPoint place = axisWidget(xBottom)->geometry().center();
        QCursor::setPos(mapToGlobal(place));
        QWheelEvent event(place, mapToGlobal(place), QPoint(), QPoint(0, 120 * notch), Qt::NoButton,
            Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(this, &event);
    }

    PaintCounter canvasPaints;
    PaintCounter axisPaints;
    CountingLayout* counted = nullptr;
};

}

class tst_PlotSteps : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void paintsOnceForATurnOfTheEventLoop();
    void laysOutAtMostOnceForAStep();
    void measuresEachLabelOnce();
};

void tst_PlotSteps::initTestCase()
{
    TestHost::createSecurities();
    TestHost::createBoards();
}

void tst_PlotSteps::paintsOnceForATurnOfTheEventLoop()
{
    ShownPlot plot;
    for (const int notches : {1, 5}) {
        const double width = plot.axisInterval(QwtPlot::xBottom).width();
        plot.canvasPaints.count = 0;
        plot.axisPaints.count = 0;
        for (int i = 0; i < notches; ++i)
            plot.zoomPrices(1);
        QCOMPARE(plot.canvasPaints.count, 0);
        ShownPlot::settle();
        QVERIFY(plot.axisInterval(QwtPlot::xBottom).width() < width);
        QCOMPARE(plot.canvasPaints.count, 1);
        // The values' axis may stay as it is.
        QVERIFY(plot.axisPaints.count == 1 || plot.axisPaints.count == 2);
    }
    // A replot of one's own, thrice.
    plot.canvasPaints.count = 0;
    for (int i = 0; i < 3; ++i)
        plot.replot();
    ShownPlot::settle();
    QCOMPARE(plot.canvasPaints.count, 1);
}

void tst_PlotSteps::laysOutAtMostOnceForAStep()
{
    ShownPlot plot;
    for (int step = 0; step < 10; ++step) {
        plot.counted->count = 0;
        plot.zoomPrices(1);
        ShownPlot::settle();
        QVERIFY(plot.counted->count <= 1);
    }
    plot.counted->count = 0;
    for (int i = 0; i < 3; ++i)
        plot.replot();
    ShownPlot::settle();
    QCOMPARE(plot.counted->count, 0);
}

void tst_PlotSteps::measuresEachLabelOnce()
{
    Measurements measurements;
    // The engine belongs to Qwt then.
    QwtText::setTextEngine(TickText::rememberedFormat(),
        new RememberingTextEngine(std::make_unique<RecordingEngine>(measurements)));
    ShownPlot plot;
    for (int step = 0; step < 60; ++step) {
        plot.zoomPrices(step < 30 ? 1 : -1);
        ShownPlot::settle();
    }
    QVERIFY(measurements.count > 20);
    QCOMPARE(measurements.count, measurements.distinct.size());

    measurements.count = 0;
    plot.replot();
    ShownPlot::settle();
    QCOMPARE(measurements.count, 0);
}

PLOT2D_TEST_MAIN(tst_PlotSteps)
#include "tst_plotsteps.moc"
