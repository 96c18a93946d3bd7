#pragma once

#include <algorithm>
#include <cstddef>
#include <optional>
#include <vector>

namespace Pricing {

/// The middle value, or the mean of the two middle ones; nullopt of nothing. NaN is not allowed.
inline std::optional<double> median(std::vector<double> values)
{
    if (values.empty())
        return std::nullopt;
    std::sort(values.begin(), values.end());
    const std::size_t half = values.size() / 2;
    if (values.size() % 2 == 1)
        return values[half];
    return values[half - 1] + (values[half] - values[half - 1]) / 2.0;
}

}
