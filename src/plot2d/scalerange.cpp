#include "scalerange_p.h"

#include "scaledivision_p.h"

#include <c_api/common.h>

#include <qwt_plot.h>
#include <qwt_scale_div.h>

#include <cmath>

bool ScaleRange::isUsable(const QwtScaleDiv& division)
{
    return !division.isEmpty() && division.interval().isValid();
}

std::optional<QwtInterval> ScaleRange::shown(int axis, double min, double max)
{
    const bool empty = commonFuzzyCompare(min, max);
    if (axis != QwtPlot::yLeft)
        return empty ? std::nullopt : std::optional<QwtInterval>(QwtInterval(min, max));
    if (empty)
        return QwtInterval(min - 1.0, max + 1.0);
    return max - min > 1e-8 ? std::optional<QwtInterval>(QwtInterval(min, max)) : std::nullopt;
}

bool ScaleRange::isDivisible(const QwtPlot& plot, int axis, const QwtInterval& range, double step)
{
    const double lower = range.minValue();
    const double upper = range.maxValue();
    return lower < upper
        && ScaleDivision::isDivisible({lower, upper, plot.axisMaxMajor(axis), plot.axisMaxMinor(axis), step});
}

bool ScaleRange::isAcceptable(const QwtPlot& plot, int axis, double min, double max)
{
    if (!std::isfinite(min) || !std::isfinite(max) || min > max)
        return false;
    const std::optional<QwtInterval> range = shown(axis, min, max);
    return !range || isDivisible(plot, axis, *range, 0.0);
}
