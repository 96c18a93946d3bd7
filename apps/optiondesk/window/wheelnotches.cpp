#include "window/wheelnotches.h"

#include <algorithm>
#include <limits>

namespace {

/// The whole notches of an angle after what is left of those before; that is brought up to date.
int wholeNotches(int angle, int* rest)
{
    constexpr int largest = std::numeric_limits<int>::max();
    constexpr qint64 most = largest - largest % WheelNotches::notch;
    const bool turnsBack = (angle < 0) != (*rest < 0);
    const qint64 sum = qint64(angle) + (turnsBack ? 0 : *rest);
    *rest = int(sum % WheelNotches::notch);
    return int(std::clamp(sum - *rest, -most, most));
}

}

bool WheelNotches::continuesLast(const Turn& turn) const
{
    return turn.modifiers == m_last.modifiers && turn.place == m_last.place && turn.time >= m_last.time
        && turn.time - m_last.time <= longestPause;
}

QPoint WheelNotches::add(const Turn& turn)
{
    if (!continuesLast(turn))
        m_rest = QPoint();
    m_last = turn;
    const bool isHorizontal = qAbs(qint64(turn.angle.x())) > qAbs(qint64(turn.angle.y()));
    const int angle = isHorizontal ? turn.angle.x() : turn.angle.y();
    if (angle == 0)
        return QPoint();
    if (isHorizontal)
        return QPoint(wholeNotches(angle, &m_rest.rx()), 0);
    return QPoint(0, wholeNotches(angle, &m_rest.ry()));
}
