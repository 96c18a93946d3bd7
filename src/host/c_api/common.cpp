#include "c_api/common.h"

#include <algorithm>
#include <cmath>

const double gc_dVolatMinDefault = 0.01;
const double gc_dVolatMaxDefault = 3.0;

bool commonFuzzyCompare(double first, double second)
{
    // Infinities have no distance: an infinite one would be within any tolerance of them.
    if (first == second)
        return true;
    const double distance = std::abs(first - second);
    return std::isfinite(distance) && distance * 1e12 <= std::min(std::abs(first), std::abs(second));
}
