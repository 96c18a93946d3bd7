#include "window/viewhistory.h"

#include <algorithm>

bool operator==(const View& a, const View& b)
{
    return a.prices == b.prices && a.autoScale == b.autoScale && (a.autoScale || a.values == b.values);
}

ViewHistory::ViewHistory(int mostSteps)
    : m_mostSteps(std::size_t(std::max(mostSteps, 1)))
{
}

bool ViewHistory::continuesLast(const Change& change) const
{
    if (!m_open)
        return false;
    switch (change.gesture) {
    case Gesture::WheelTurn:
    case Gesture::ZoomKey:
    case Gesture::PanKey:
        return m_open->kind == change.gesture && change.time >= m_open->time
            && change.time - m_open->time <= longestPause;
    case Gesture::DoubleClick:
        return m_open->kind == Gesture::Drag;
    case Gesture::Single:
    case Gesture::Drag:
        break;
    }
    return false;
}

void ViewHistory::add(const Change& change)
{
    if (change.before == change.after) {
        m_open.reset();
        return;
    }
    if (!continuesLast(change)) {
        m_past.push_back(change.before);
        if (m_past.size() > m_mostSteps)
            m_past.pop_front();
    }
    m_future.clear();
    m_open = OpenGesture{change.gesture, change.time};
}

std::optional<View> ViewHistory::move(const View& current, std::deque<View>& from, std::deque<View>& to)
{
    if (from.empty())
        return std::nullopt;
    m_open.reset();
    const View view = from.back();
    from.pop_back();
    to.push_back(current);
    return view;
}

std::optional<View> ViewHistory::undo(const View& current)
{
    return move(current, m_past, m_future);
}

std::optional<View> ViewHistory::redo(const View& current)
{
    return move(current, m_future, m_past);
}

void ViewHistory::clear()
{
    m_past.clear();
    m_future.clear();
    m_open.reset();
}
