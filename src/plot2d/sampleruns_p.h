#pragma once

#include <QPointF>

#include <qwt_scale_map.h>
#include <qwt_series_data.h>

#include <functional>

class SampleIndex;

/// The samples that stand between those which have no place in a picture.
namespace SampleRuns {

/// Calls draw(first, last) for every longest run of samples from begin up to, but without, end whose numbers,
/// also in pixels, are finite: handed any other, Qt may draw for minutes. The index is that of the series,
/// or null.
void forEach(const QwtSeriesData<QPointF>& series, const SampleIndex* index, const QwtScaleMap& xMap,
    const QwtScaleMap& yMap, int begin, int end, const std::function<void(int first, int last)>& draw);

}
