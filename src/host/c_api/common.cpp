#include "c_api/common.h"

#include <algorithm>
#include <cmath>

const double gc_dVolatMinDefault = 0.01;
const double gc_dVolatMaxDefault = 3.0;

bool commonFuzzyCompare(double first, double second)
{
    // The equality comes first: infinities have no finite distance.
    return !(first < second || first > second)
        ? !std::isnan(first) && !std::isnan(second)
        : std::abs(first - second) * 1e12 <= std::min(std::abs(first), std::abs(second));
}
