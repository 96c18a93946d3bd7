#include "sampleruns_p.h"

#include "sampleindex_p.h"

#include <cmath>

namespace {

bool isPlaced(const QPointF& sample, const QwtScaleMap& xMap, const QwtScaleMap& yMap)
{
    return std::isfinite(sample.x()) && std::isfinite(sample.y()) && std::isfinite(xMap.transform(sample.x()))
        && std::isfinite(yMap.transform(sample.y()));
}

/// Whether all samples are, because those at the ends of their ranges are.
bool areAllPlaced(const SampleIndex* index, const QwtScaleMap& xMap, const QwtScaleMap& yMap)
{
    if (!index || !index->isFinite() || xMap.transformation() || yMap.transformation())
        return false;
    const QRectF rectangle = index->boundingRectangle();
    return isPlaced(rectangle.topLeft(), xMap, yMap) && isPlaced(rectangle.bottomRight(), xMap, yMap);
}

}

void SampleRuns::forEach(const QwtSeriesData<QPointF>& series, const SampleIndex* index,
    const QwtScaleMap& xMap, const QwtScaleMap& yMap, int begin, int end,
    const std::function<void(int first, int last)>& draw)
{
    if (begin < end && areAllPlaced(index, xMap, yMap)) {
        draw(begin, end - 1);
        return;
    }
    int first = begin;
    for (int i = begin; i < end; ++i) {
        if (isPlaced(series.sample(static_cast<std::size_t>(i)), xMap, yMap))
            continue;
        if (first < i)
            draw(first, i - 1);
        first = i + 1;
    }
    if (first < end)
        draw(first, end - 1);
}
