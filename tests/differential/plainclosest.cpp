#include "differential/plainclosest.h"

#include "differential/plainnumbers.h"

#include <cmath>
#include <limits>

Plain::Closest Plain::closestSample(const QVector<QPointF>& samples, const Cursor& cursor, double priceStep)
{
    Closest found;
    if (priceStep < 0.0 || fuzzyEqual(1.0, 1.0 + priceStep))
        return found;
    if (cursor.yMin > cursor.yMax || cursor.xMin >= cursor.xMax)
        return found;
    double best = std::numeric_limits<double>::max();
    const double width = cursor.xMax - cursor.xMin;
    const double height = cursor.yMax - cursor.yMin;
    for (int i = 0; i < samples.size(); ++i) {
        const double x = samples[i].x();
        const double y = samples[i].y();
        if (!(x >= cursor.xMin && x <= cursor.xMax && y >= cursor.yMin && y <= cursor.yMax))
            continue;
        const double sampleX = (x - cursor.xMin) * 100.0 / width;
        const double cursorX = cursor.x * 100.0 / width;
        double sampleY = 0.0;
        double cursorY = cursor.y;
        if (cursor.yMax != cursor.yMin) {
            sampleY = (y - cursor.yMin) * 100.0 / height;
            cursorY = cursor.y * 100.0 / height;
        }
        const double distance = std::fabs(cursorX - sampleX) + std::fabs(cursorY - sampleY);
        if (distance < best) {
            best = distance;
            found.sample = i;
            found.distance = distance;
        }
    }
    return found;
}

Plain::Closest Plain::closestCurve(
    const QList<Curve>& curves, const Cursor& view, const QPointF& place, double priceStep)
{
    Closest found;
    if (priceStep == 0.0)
        return found;
    Cursor cursor = view;
    cursor.x = roundedHalfUp(place.x() / priceStep) * priceStep - view.xMin;
    cursor.y = place.y() - view.yMin;
    double best = std::numeric_limits<double>::max();
    for (int i = 0; i < curves.size(); ++i) {
        if (!curves[i].isValid() || !curves[i].visible || curves[i].isQuoteLine())
            continue;
        const Closest own = closestSample(curves[i].samples, cursor, priceStep);
        if (own.distance >= 0.0 && own.distance < best) {
            best = own.distance;
            found.curve = i;
            found.sample = own.sample;
        }
    }
    return found;
}
