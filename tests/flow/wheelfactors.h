#pragma once

/// By what the wheel multiplies the visible ranges: by one notch, and by several at once. What tests of the
/// wheel expect stands here alone.
namespace WheelFactors {

constexpr double in = 0.9;
constexpr double out = 1.1;
constexpr double fastIn = 0.89;
constexpr double fastOut = 1.11;

}
