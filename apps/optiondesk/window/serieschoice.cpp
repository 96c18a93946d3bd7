#include "window/serieschoice.h"

#include <database/exception.h>

namespace {

constexpr int enoughPoints = 10;

bool hasExpired(const SeriesData& data)
{
    return data.asOf.isValid() && data.options.expiry.isValid() && data.options.expiry <= data.asOf;
}

// -1 for a series without a forward.
int pointCount(const SeriesData& data, const std::optional<double>& givenForward)
{
    try {
        return valuedSeries(data, givenForward).analysis.points.size();
    } catch (const Exception&) {
        return -1;
    }
}

}

int SeriesChoice::ofExpiry(const QVector<QDate>& expiries, const QDate& expiry)
{
    return expiries.indexOf(expiry);
}

int SeriesChoice::nearest(
    int count, const std::function<SeriesData(int)>& read, const std::optional<double>& givenForward)
{
    struct Best {
        int position = -1;
        int points = -1;
    };
    Best best;
    Best bestExpired;
    for (int i = 0; i < count; ++i) {
        const SeriesData data = read(i);
        const bool expired = hasExpired(data);
        const int points = pointCount(data, givenForward);
        if (points >= enoughPoints && !expired)
            return i;
        Best& candidate = expired ? bestExpired : best;
        if (points > candidate.points)
            candidate = {i, points};
    }
    return best.position >= 0 ? best.position : bestExpired.position;
}
