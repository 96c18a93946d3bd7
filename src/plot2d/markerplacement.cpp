#include "markerplacement_p.h"

#include <qwt_plot_marker.h>

std::optional<QVector<QPointF>> placeMarkers(
    const QVector<PriceBased2dPlotPoint>& points, const QList<QwtPlotMarker*>& markers, bool visible)
{
    QVector<QPointF> samples;
    samples.reserve(points.size());
    auto marker = markers.cbegin();
    for (const PriceBased2dPlotPoint& point : points) {
        if (point.marked) {
            if (marker == markers.cend() || !*marker)
                return std::nullopt;
            (*marker)->setValue(point.x, point.y);
            (*marker)->setVisible(visible);
            ++marker;
        }
        samples.append(QPointF(point.x, point.y));
    }
    return samples;
}
