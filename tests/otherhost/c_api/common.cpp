#include "c_api/common.h"

#include <cmath>

const double gc_dVolatMinDefault = 0.02;
const double gc_dVolatMaxDefault = 4.0;

bool commonFuzzyCompare(double first, double second)
{
    constexpr double tolerance = 2e-12;
    const double larger = std::fmax(std::fabs(first), std::fabs(second));
    return first == second || (std::isfinite(larger) && std::fabs(first - second) <= larger * tolerance);
}
