#pragma once

#include "plot2d/pricebased2dplotpicker.h"

#include <QPointF>

#include <functional>

class SampleIndex;

/// The sample nearest to a cursor.
namespace ClosestPoint {

/// Whether a price step is known and not zero: only then is there a nearest point.
bool isUsableStep(double priceStep);

/// Whether the visible ranges are in order: the prices of some width, the values of none or more.
bool isUsableView(const ClosestPointCalcParams& params);

/// The first of the visible samples nearest to the cursor, by the sum of the horizontal and the vertical
/// distance in percent of the visible ranges; its curve stays null. Where the vertical range has no width,
/// the cursor's vertical distance counts as it is. Nothing found where no sample is visible.
ClosestPointParams find(
    int count, const std::function<QPointF(int)>& sample, const ClosestPointCalcParams& params);

/// The same of indexed samples: of ascending and finite ones only those are looked at that can be nearest.
ClosestPointParams find(const SampleIndex& index, const ClosestPointCalcParams& params);

}
