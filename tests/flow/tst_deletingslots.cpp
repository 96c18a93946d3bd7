#include "flow/shownplot.h"
#include "support/testmain.h"

#include <QCursor>
#include <QMouseEvent>
#include <QWheelEvent>

#include <qwt_plot_layout.h>
#include <qwt_scale_draw.h>

#include <functional>

namespace {

/// A plot that deletes itself in one of its virtual functions.
class MortalPlot : public TestPlot {
public:
    enum Place { Nowhere, Replot, Range, QuoteLine };

    void replot() override
    {
        if (!endsIn(Replot))
            TestPlot::replot();
    }
    std::pair<double, double> minMaxYAtXRange() override
    {
        return endsIn(Range) ? std::make_pair(1.0, 2.0) : TestPlot::minMaxYAtXRange();
    }
    void updateCurKotirPoints(double low, double high, double quote) override
    {
        if (!endsIn(QuoteLine))
            TestPlot::updateCurKotirPoints(low, high, quote);
    }

    Place place = Nowhere;
    /// The calls that the plot outlives.
    int callsBefore = 0;

private:
    bool endsIn(Place here)
    {
        if (place != here || callsBefore-- > 0)
            return false;
        delete this;
        return true;
    }
};

enum Action {
    WheelOverPrices,
    WheelOverValues,
    WheelInCanvas,
    WheelWithShift,
    WheelWithControl,
    DragOnPrices,
    DragOnValues,
    Pan
};

enum Signal { AutoScale, Labels };

const char* nameOf(Action action)
{
    static const char* const names[]
        = {"wheel over the prices", "wheel over the values", "wheel in the canvas", "wheel with Shift",
            "wheel with Control", "drag on the prices", "drag on the values", "pan"};
    return names[action];
}

void sendMouse(QWidget* widget, QEvent::Type type, const QPoint& place, Qt::MouseButtons buttons)
{
    const Qt::MouseButton button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
    QMouseEvent event(type, place, widget->mapToGlobal(place), button, buttons, Qt::NoModifier);
    QCoreApplication::sendEvent(widget, &event);
}

void drag(QWidget* widget, const QPoint& from, const QPoint& to)
{
    const QPointer<QWidget> guard(widget);
    sendMouse(widget, QEvent::MouseButtonPress, from, Qt::LeftButton);
    sendMouse(widget, QEvent::MouseMove, to, Qt::LeftButton);
    if (guard)
        sendMouse(widget, QEvent::MouseButtonRelease, to, Qt::NoButton);
}

void turnWheel(QWidget* widget, const QPoint& place, Qt::KeyboardModifiers modifiers)
{
    QCursor::setPos(widget->mapToGlobal(place));
    QWheelEvent event(
        place, QCursor::pos(), QPoint(), QPoint(0, 120), Qt::NoButton, modifiers, Qt::NoScrollPhase, false);
    QSpontaneKeyEvent::setSpontaneous(&event);
    qApp->notify(widget, &event);
}

/// Does it the way of a user: the events go to the widget under the cursor, and up from there.
void act(QwtPlot& plot, Action action)
{
    const int axis = action == WheelOverValues || action == DragOnValues ? QwtPlot::yLeft : QwtPlot::xBottom;
    QWidget* scale = plot.axisWidget(axis);
    const QPoint onScale = scale->mapFrom(&plot, plot.plotLayout()->scaleRect(axis).center().toPoint());
    const QPoint inCanvas = plot.canvas()->rect().center();
    switch (action) {
    case WheelOverPrices:
    case WheelOverValues:
        return turnWheel(scale, onScale, Qt::NoModifier);
    case WheelInCanvas:
        return turnWheel(plot.canvas(), inCanvas, Qt::NoModifier);
    case WheelWithShift:
        return turnWheel(plot.canvas(), inCanvas, Qt::ShiftModifier);
    case WheelWithControl:
        return turnWheel(plot.canvas(), inCanvas, Qt::ControlModifier);
    case DragOnPrices:
        return drag(scale, onScale, onScale + QPoint(-5, 0));
    case DragOnValues:
        return drag(scale, onScale, onScale + QPoint(0, -5));
    case Pan:
        return drag(plot.canvas(), inCanvas, inCanvas + QPoint(25, 15));
    }
}

}

Q_DECLARE_METATYPE(Action)
Q_DECLARE_METATYPE(Signal)
Q_DECLARE_METATYPE(MortalPlot::Place)

/// Slots and overridden functions that delete the plot, its panner or its curves while the mouse is at work.
class tst_deletingslots : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void init();
    void cleanup();

    void plotInASlot_data();
    void plotInASlot();
    void plotInAFunction_data();
    void plotInAFunction();
    void pannerInASlot_data();
    void pannerInASlot();
    void curvesInASlot_data();
    void curvesInASlot();
    void scaleDrawInReplot();

private:
    /// The combinations of an action and a signal that it leads to.
    static void rowsOfSignals();
    void onSignal(Signal signal, const std::function<void()>& slot);

    std::unique_ptr<MortalPlot> m_plot;
};

void tst_deletingslots::initTestCase()
{
    TestHost::createSecurities();
    TestHost::createBoards();
}

void tst_deletingslots::cleanupTestCase()
{
    TestHost::dropSecurities();
    TestHost::dropBoards();
}

void tst_deletingslots::init()
{
    m_plot = shownPlot<MortalPlot>();
    QVERIFY(m_plot);
    m_plot->fixedRange = std::make_pair(1.0, 2.0);
    addData(*m_plot, 0.0, 1000.0, 0.0, 100.0);
}

void tst_deletingslots::cleanup()
{
    m_plot.reset();
}

void tst_deletingslots::onSignal(Signal signal, const std::function<void()>& slot)
{
    if (signal == AutoScale)
        connect(m_plot.get(), QOverload<bool>::of(&PriceBased2dPlot::autoScaleEnabled), slot);
    else
        connect(m_plot.get(), &PriceBased2dPlot::updateAxisLabels, slot);
}

void tst_deletingslots::rowsOfSignals()
{
    QTest::addColumn<Action>("action");
    QTest::addColumn<Signal>("signal");
    for (const Action action : {WheelOverValues, WheelInCanvas, WheelWithShift, DragOnValues, Pan})
        QTest::addRow("%s, auto-scale", nameOf(action)) << action << AutoScale;
    for (const Action action :
        {WheelOverPrices, WheelOverValues, WheelInCanvas, WheelWithShift, WheelWithControl, Pan})
        QTest::addRow("%s, labels", nameOf(action)) << action << Labels;
}

void tst_deletingslots::plotInASlot_data()
{
    rowsOfSignals();
}

void tst_deletingslots::plotInASlot()
{
    QFETCH(Action, action);
    QFETCH(Signal, signal);
    onSignal(signal, [this] { m_plot.reset(); });
    act(*m_plot, action);
    QVERIFY(!m_plot);
}

void tst_deletingslots::plotInAFunction_data()
{
    QTest::addColumn<Action>("action");
    QTest::addColumn<bool>("autoScale");
    QTest::addColumn<MortalPlot::Place>("place");
    QTest::addColumn<int>("callsBefore");
    const auto rows = [](Action action, bool autoScale, MortalPlot::Place place, int calls) {
        static const char* const names[] = {"", "replot", "range", "quote line"};
        for (int i = 0; i < calls; ++i)
            QTest::addRow("%s, auto-scale %d, %s %d", nameOf(action), autoScale, names[place], i + 1)
                << action << autoScale << place << i;
    };
    for (const Action action : {WheelOverPrices, WheelWithControl}) {
        rows(action, true, MortalPlot::Range, 1);
        rows(action, true, MortalPlot::QuoteLine, 1);
        rows(action, true, MortalPlot::Replot, 2);
        rows(action, false, MortalPlot::QuoteLine, 1);
        rows(action, false, MortalPlot::Replot, 2);
    }
    for (const Action action : {WheelOverValues, WheelWithShift, WheelInCanvas})
        rows(action, true, MortalPlot::QuoteLine, 1);
    rows(DragOnPrices, true, MortalPlot::Range, 1);
    rows(DragOnPrices, true, MortalPlot::QuoteLine, 1);
    rows(DragOnPrices, true, MortalPlot::Replot, 5);
    rows(DragOnValues, true, MortalPlot::QuoteLine, 1);
    rows(DragOnValues, true, MortalPlot::Replot, 3);
    rows(Pan, true, MortalPlot::Replot, 1);
}

void tst_deletingslots::plotInAFunction()
{
    QFETCH(Action, action);
    QFETCH(bool, autoScale);
    QFETCH(MortalPlot::Place, place);
    QFETCH(int, callsBefore);
    m_plot->setAutoScaleEnabled(autoScale);
    MortalPlot* plot = m_plot.release();
    const QPointer<QwtPlot> guard(plot);
    plot->place = place;
    plot->callsBefore = callsBefore;
    act(*plot, action);
    QVERIFY(!guard);
}

void tst_deletingslots::pannerInASlot_data()
{
    rowsOfSignals();
}

void tst_deletingslots::pannerInASlot()
{
    QFETCH(Action, action);
    QFETCH(Signal, signal);
    const QPointer<PriceBased2dPlotPanner> panner = m_plot->findChild<PriceBased2dPlotPanner*>();
    onSignal(signal, [&panner] { delete panner; });
    act(*m_plot, action);
    QVERIFY(!panner);
    // The wheel and a drag on an axis do not need it; a drag of the canvas ends with it.
    const QwtInterval x = visible(*m_plot, QwtPlot::xBottom);
    const QwtInterval y = visible(*m_plot, QwtPlot::yLeft);
    const bool moved = x != QwtInterval(400.0, 600.0) || y != QwtInterval(40.0, 60.0);
    QCOMPARE(moved, action != Pan || signal != AutoScale);
}

void tst_deletingslots::curvesInASlot_data()
{
    rowsOfSignals();
}

void tst_deletingslots::curvesInASlot()
{
    QFETCH(Action, action);
    QFETCH(Signal, signal);
    QSignalSpy labels(m_plot.get(), SIGNAL(updateAxisLabels()));
    onSignal(signal, [this] { m_plot->detachItems(QwtPlotItem::Rtti_PlotItem, true); });
    act(*m_plot, action);
    QVERIFY(m_plot->itemList().isEmpty());
    QCOMPARE(labels.count(), action == DragOnValues ? 0 : 1);
}

void tst_deletingslots::scaleDrawInReplot()
{
    m_plot->onReplot = [this] {
        m_plot->onReplot = nullptr;
        m_plot->setAxisScaleDraw(QwtPlot::xBottom, new QwtScaleDraw);
    };
    m_plot->updateAxisWidgets();
    QVERIFY(!m_plot->onReplot);
}

PLOT2D_TEST_MAIN(tst_deletingslots)
#include "tst_deletingslots.moc"
