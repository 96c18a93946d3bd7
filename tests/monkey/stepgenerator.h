#pragma once

#include "monkey/steps.h"

#include <cstdint>

namespace Monkey {

/// The step at a place of the endless series of a seed; the same on every platform, whatever came before.
///
/// Steps come in stretches of a mood: drags on the canvas or on an axis, turns of the wheel, the host at its
/// curves or at its settings, the legend, or anything. About one in three goes against the mood, and every
/// second stretch starts over.
Step stepAt(std::uint64_t seed, int number);

}
