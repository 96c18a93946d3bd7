#include "window/viewcontrol.h"

#include "window/deskplot.h"
#include "window/viewfit.h"

#include <plot2d/pricebased2dplotpanner.h>
#include <plot2d/pricebased2dplotscaledraw.h>

#include <QCursor>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QWheelEvent>

#include <qwt_plot_layout.h>

namespace {

constexpr int xBottom = QwtPlot::xBottom;
constexpr int yLeft = QwtPlot::yLeft;

enum Place { Elsewhere, OnPrices, OnValues, OnCanvas };

Place placeAt(const DeskPlot& plot, const QPointF& position)
{
    if (plot.mousePositionOnYScale(position))
        return OnValues;
    if (plot.mousePositionOnXScale(position))
        return OnPrices;
    return plot.plotLayout()->canvasRect().contains(position) ? OnCanvas : Elsewhere;
}

bool labelsReadTheSame(const DeskPlot& plot)
{
    const auto* const draw = dynamic_cast<const PriceBased2dPlotScaleDraw*>(plot.axisScaleDraw(yLeft));
    return draw && draw->ticksShrinked(QwtScaleDiv(0.0, 0.0));
}

ViewControl::Clock systemClock()
{
    QElapsedTimer timer;
    timer.start();
    return [timer] { return timer.elapsed(); };
}

}

ViewControl::ViewControl(DeskPlot* plot, Clock clock)
    : QObject(plot)
    , m_plot(*plot)
    , m_clock(std::move(clock))
{
    plot->installEventFilter(this);
    connect(plot, SIGNAL(seriesReplaced()), this, SLOT(forget()));
}

ViewControl::ViewControl(DeskPlot* plot)
    : ViewControl(plot, systemClock())
{
}

View ViewControl::view() const
{
    return {m_plot.axisScaleDiv(xBottom).interval(), m_plot.axisScaleDiv(yLeft).interval(),
        m_plot.autoScaleEnabled()};
}

// Events of the canvas and of the axes come to the plot when they have been handled there.
bool ViewControl::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::Wheel:
        return turnWheel(*static_cast<QWheelEvent*>(event));
    case QEvent::MouseButtonPress:
        return press(*static_cast<QMouseEvent*>(event));
    case QEvent::MouseButtonRelease:
        return release(*static_cast<QMouseEvent*>(event));
    case QEvent::MouseButtonDblClick:
        return doubleClick(*static_cast<QMouseEvent*>(event));
    case QEvent::MouseMove:
        return m_cancelled;
    case QEvent::KeyPress:
        return static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape && cancelDrag();
    default:
        return QObject::eventFilter(watched, event);
    }
}

template <typename Action> void ViewControl::step(Gesture gesture, const Action& action)
{
    const View before = view();
    action();
    note(before, gesture, m_clock());
}

void ViewControl::note(const View& before, Gesture gesture, qint64 time)
{
    // What happens while the mouse is held is part of the drag.
    if (m_held)
        return;
    m_history.add({before, view(), gesture, time});
    Q_EMIT historyChanged();
}

bool ViewControl::turnWheel(const QWheelEvent& event)
{
    const auto stated = qint64(event.timestamp());
    const qint64 time = stated > 0 ? stated : m_clock();
    const Place place = placeAt(m_plot, m_plot.mapFromGlobal(QCursor::pos()));
    const QPoint angle = m_notches.add({event.angleDelta(), event.modifiers(), place, time});
    if (angle.isNull())
        return true;
    QWheelEvent whole(event.position(), event.globalPosition(), event.pixelDelta(), angle, event.buttons(),
        event.modifiers(), event.phase(), event.inverted(), event.source());
    const View before = view();
    m_plot.event(&whole);
    note(before, Gesture::WheelTurn, time);
    return true;
}

bool ViewControl::press(const QMouseEvent& event)
{
    if (event.button() == Qt::LeftButton) {
        // A release may have gone elsewhere.
        endDrag();
        m_pressed = view();
        m_held = true;
    }
    return false;
}

bool ViewControl::release(const QMouseEvent& event)
{
    if (event.button() == Qt::LeftButton)
        endDrag();
    return false;
}

void ViewControl::endDrag()
{
    if (!m_held)
        return;
    m_held = false;
    m_cancelled = false;
    note(*m_pressed, Gesture::Drag, m_clock());
}

bool ViewControl::doubleClick(const QMouseEvent& event)
{
    const Place place = placeAt(m_plot, event.localPos());
    if (event.button() != Qt::LeftButton || place == Elsewhere)
        return false;
    endDrag();
    step(Gesture::DoubleClick, [this, place] {
        // The hand may have moved a little at the first click.
        if (m_pressed && m_pressed->autoScale)
            switchAutoScale(true);
        if (place != OnValues)
            fitPrices();
        if (place != OnPrices)
            fitValues();
    });
    m_pressed = view();
    m_held = true;
    return true;
}

bool ViewControl::cancelDrag()
{
    if (!m_held || view() == *m_pressed)
        return false;
    show(*m_pressed);
    m_cancelled = true;
    return true;
}

void ViewControl::pan(int directionX, int directionY)
{
    auto* const panner = m_plot.canvas()->findChild<PriceBased2dPlotPanner*>();
    if (!panner)
        return;
    constexpr int part = 10;
    // The data moves against the view, and pixels are counted downwards.
    const QSize size = m_plot.canvas()->contentsRect().size();
    step(Gesture::PanKey, [&] {
        const bool autoScale = m_plot.autoScaleEnabled();
        panner->moveCanvas(-directionX * size.width() / part, directionY * size.height() / part);
        if (directionY == 0 && autoScale && !m_plot.autoScaleEnabled()) {
            switchAutoScale(true);
            followScales();
        }
    });
}

void ViewControl::panLeft()
{
    pan(-1, 0);
}

void ViewControl::panRight()
{
    pan(1, 0);
}

void ViewControl::panUp()
{
    pan(0, 1);
}

void ViewControl::panDown()
{
    pan(0, -1);
}

void ViewControl::zoomIn()
{
    const View before = view();
    if (labelsReadTheSame(m_plot))
        return;
    const auto ranges = ViewFit::zoomedIn(
        {before.prices, before.values, m_plot.curvesRectangle()}, m_plot.priceInterval().minStep);
    if (ranges)
        step(Gesture::ZoomKey, [&] { show({ranges->prices, ranges->values, before.autoScale}); });
}

void ViewControl::zoomOut()
{
    const View before = view();
    const auto ranges = ViewFit::zoomedOut({before.prices, before.values, m_plot.curvesRectangle()});
    if (ranges)
        step(Gesture::ZoomKey, [&] { show({ranges->prices, ranges->values, before.autoScale}); });
}

void ViewControl::fitPrices()
{
    const auto prices = ViewFit::allPrices(m_plot.curvesRectangle(), m_plot.priceInterval().minStep);
    if (!prices)
        return;
    m_plot.setAxisScale(xBottom, prices->minValue(), prices->maxValue(), 0.0);
    followScales();
}

void ViewControl::fitValues()
{
    if (m_plot.autoScaleEnabled() || m_plot.curvesRectangle().isNull())
        return;
    const auto [low, high] = m_plot.minMaxYAtXRange();
    m_plot.setAxisScale(yLeft, low, high, 0.0);
    followScales();
}

void ViewControl::fitAll()
{
    step(Gesture::Single, [this] {
        fitPrices();
        fitValues();
    });
}

void ViewControl::resetView()
{
    step(Gesture::Single, [this] { m_plot.resetView(); });
}

void ViewControl::setAutoScale(bool enabled)
{
    if (enabled == m_plot.autoScaleEnabled())
        return;
    step(Gesture::Single, [this, enabled] {
        switchAutoScale(enabled);
        followScales();
    });
}

void ViewControl::undo()
{
    if (const auto previous = m_history.undo(view()))
        show(*previous);
    Q_EMIT historyChanged();
}

void ViewControl::redo()
{
    if (const auto next = m_history.redo(view()))
        show(*next);
    Q_EMIT historyChanged();
}

void ViewControl::forget()
{
    m_history.clear();
    m_pressed.reset();
    m_held = false;
    m_cancelled = false;
    Q_EMIT historyChanged();
}

void ViewControl::show(const View& view)
{
    m_plot.setAxisScale(xBottom, view.prices.minValue(), view.prices.maxValue(), 0.0);
    switchAutoScale(view.autoScale);
    if (!view.autoScale)
        m_plot.setAxisScale(yLeft, view.values.minValue(), view.values.maxValue(), 0.0);
    followScales();
}

void ViewControl::switchAutoScale(bool enabled)
{
    if (enabled != m_plot.autoScaleEnabled())
        Q_EMIT m_plot.autoScaleEnabled(enabled);
}

// The host's own slot listens.
void ViewControl::followScales()
{
    Q_EMIT m_plot.updateAxisLabels();
}
