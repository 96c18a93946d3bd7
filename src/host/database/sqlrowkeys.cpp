#include "sqlrowkeys_p.h"

#include <limits>

std::optional<QVector<qint64>> SqlRowKeys::between(
    std::optional<qint64> before, std::optional<qint64> after, int count)
{
    // Keys beyond half of the range come from nowhere but a file that was tampered with.
    constexpr qint64 limit = std::numeric_limits<qint64>::max() / 2;
    const qint64 span = stride * count;
    qint64 first = stride;
    qint64 distance = stride;
    if (before && after) {
        if (*before < -limit || *after > limit || (*after - *before) / (qint64(count) + 1) < 1)
            return std::nullopt;
        distance = (*after - *before) / (qint64(count) + 1);
        first = *before + distance;
    } else if (before) {
        if (*before > limit - span)
            return std::nullopt;
        first = *before + stride;
    } else if (after) {
        if (*after < -limit + span)
            return std::nullopt;
        first = *after - span;
    }
    QVector<qint64> keys;
    keys.reserve(count);
    for (int i = 0; i < count; ++i)
        keys.append(first + distance * i);
    return keys;
}
