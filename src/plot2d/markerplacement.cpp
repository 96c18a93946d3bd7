#include "markerplacement_p.h"

#include <qwt_plot_dict.h>
#include <qwt_plot_marker.h>

#include <algorithm>
#include <functional>

void dropSurplusMarkers(const QwtPlotDict& plot, QList<QwtPlotMarker*>& markers, int wanted)
{
    while (markers.size() > wanted) {
        QwtPlotMarker* const surplus = markers.takeLast();
        // Markers are among the last items, as they lie above the curves.
        if (plot.itemList().lastIndexOf(surplus) < 0)
            continue;
        surplus->detach();
        delete surplus;
    }
}

void keepAttached(const QwtPlotDict& plot, QList<QwtPlotMarker*>& markers)
{
    QwtPlotItemList items = plot.itemList();
    std::sort(items.begin(), items.end(), std::less<QwtPlotItem*>());
    const auto isGone = [&items](QwtPlotMarker* marker) {
        QwtPlotItem* const item = marker;
        return !std::binary_search(items.cbegin(), items.cend(), item, std::less<QwtPlotItem*>());
    };
    markers.erase(std::remove_if(markers.begin(), markers.end(), isGone), markers.end());
}

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
