#pragma once

#include <QtGlobal>

#include <qwt_interval.h>

#include <deque>
#include <optional>

/// The part of the data that a plot shows.
struct View {
    QwtInterval prices;
    /// With auto-scale on these follow the data, and two views may differ in them.
    QwtInterval values;
    bool autoScale = true;
};

bool operator==(const View& a, const View& b);
inline bool operator!=(const View& a, const View& b)
{
    return !(a == b);
}

/// The views that a user has left, to go back to and forth again: a bounded number of steps. A gesture is one
/// step, however often it changes the view on its way.
class ViewHistory {
public:
    enum class Gesture { Single, Drag, DoubleClick, WheelTurn, ZoomKey, PanKey };

    /// What one event of a gesture has done.
    struct Change {
        View before;
        View after;
        Gesture gesture = Gesture::Single;
        /// Milliseconds of any clock that gestures of the same kind have in common.
        qint64 time = 0;
    };

    /// Turns of the wheel and strokes of a key belong together up to this pause, in milliseconds, between
    /// two of them.
    static constexpr qint64 longestPause = 500;

    /// Keeps at most this many steps, at least 1; the oldest go first.
    explicit ViewHistory(int mostSteps = 100);

    /// Makes a step, or lets the last one end in another view where the change continues its gesture: a turn
    /// of the wheel and a key another one of the same kind, a double click the drag that its first click may
    /// have been. A new step leaves nothing to redo. A change that has changed nothing makes no step and ends
    /// the gesture.
    void add(const Change& change);

    bool canUndo() const { return !m_past.empty(); }
    bool canRedo() const { return !m_future.empty(); }

    /// The view before the last step, or after the one undone last; nothing where there is none. The current
    /// view is the one to come back to.
    std::optional<View> undo(const View& current);
    std::optional<View> redo(const View& current);

    void clear();

private:
    struct OpenGesture {
        Gesture kind = Gesture::Single;
        qint64 time = 0;
    };

    bool continuesLast(const Change& change) const;
    std::optional<View> move(const View& current, std::deque<View>& from, std::deque<View>& to);

    std::size_t m_mostSteps;
    std::deque<View> m_past;
    std::deque<View> m_future;
    /// That of the last step, while it may go on.
    std::optional<OpenGesture> m_open;
};
