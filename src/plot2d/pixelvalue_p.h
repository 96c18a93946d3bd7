#pragma once

#include <qwt_scale_map.h>

#include <cmath>
#include <limits>

/// What a scale shows at a pixel.
namespace PixelValue {

/// Whether pixels lead back to values: Qwt's map divides by nothing where an axis has no pixels, or an
/// infinite width.
inline bool isKnown(const QwtScaleMap& map)
{
    return map.pDist() > 0.0 && std::isfinite(map.sDist());
}

/// The value at a place in pixels, NaN where there is none.
inline double at(const QwtScaleMap& map, double place)
{
    return isKnown(map) ? map.invTransform(place) : std::numeric_limits<double>::quiet_NaN();
}

}
