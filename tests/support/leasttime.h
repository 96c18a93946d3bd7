#pragma once

#include <QElapsedTimer>

#include <algorithm>
#include <functional>
#include <limits>

namespace TestSupport {

/// The least time of some runs, in nanoseconds: what else the machine does only adds to it.
inline qint64 leastTime(const std::function<void()>& work)
{
    constexpr int runs = 7;
    qint64 least = std::numeric_limits<qint64>::max();
    for (int i = 0; i < runs; ++i) {
        QElapsedTimer timer;
        timer.start();
        work();
        least = std::min(least, timer.nsecsElapsed());
    }
    return least;
}

}
