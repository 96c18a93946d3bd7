#pragma once

#include "window/viewhistory.h"
#include "window/wheelnotches.h"

#include <QObject>

#include <functional>
#include <optional>

class DeskPlot;
class QMouseEvent;
class QWheelEvent;

/// What the user does to the view of the desk's plot beyond the plot library's own handlers, by mouse and by
/// command, and the way back.
///
/// A double click on an axis fits that axis to the data, one on the canvas both. Small angles of the wheel
/// are gathered into notches. Escape takes a drag of an axis back. Every gesture that has changed the view,
/// also by the library's handlers, is a step that can be undone; what new data and a new size do is none.
/// What the data does not allow changes nothing, not even the auto-scale.
class ViewControl : public QObject {
    Q_OBJECT

public:
    /// Milliseconds since any moment.
    using Clock = std::function<qint64()>;

    /// Becomes a child of the plot. The clock tells which gestures belong together, where their events tell
    /// no time of their own.
    ViewControl(DeskPlot* plot, Clock clock);
    explicit ViewControl(DeskPlot* plot);

    View view() const;
    bool canUndo() const { return m_history.canUndo(); }
    bool canRedo() const { return m_history.canRedo(); }

    bool eventFilter(QObject* watched, QEvent* event) override;

public Q_SLOTS:
    /// Zoom like a notch of the wheel in the middle of the canvas; with auto-scale on, like one of the prices
    /// alone.
    void zoomIn();
    void zoomOut();
    /// Move the view by a tenth of what is visible, within the limits of a drag of the canvas. To the left
    /// and right the auto-scale stays on.
    void panLeft();
    void panRight();
    void panUp();
    void panDown();
    /// Shows all data. The auto-scale stays as it is.
    void fitAll();
    /// Shows the prices that a series begins with, with auto-scale on.
    void resetView();
    void setAutoScale(bool enabled);
    void undo();
    void redo();
    /// Forgets all steps.
    void forget();

Q_SIGNALS:
    /// There may be more or less to undo or redo.
    void historyChanged();

private:
    using Gesture = ViewHistory::Gesture;

    template <typename Action> void step(Gesture gesture, const Action& action);
    void note(const View& before, Gesture gesture, qint64 time);
    bool turnWheel(const QWheelEvent& event);
    bool press(const QMouseEvent& event);
    bool release(const QMouseEvent& event);
    bool doubleClick(const QMouseEvent& event);
    void endDrag();
    bool cancelDrag();
    void pan(int directionX, int directionY);
    void fitPrices();
    void fitValues();
    void show(const View& view);
    void switchAutoScale(bool enabled);
    void followScales();

    DeskPlot& m_plot;
    Clock m_clock;
    ViewHistory m_history;
    WheelNotches m_notches;
    /// At the last press of the mouse.
    std::optional<View> m_pressed;
    bool m_held = false;
    bool m_cancelled = false;
};
