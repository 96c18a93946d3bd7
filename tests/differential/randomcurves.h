#pragma once

#include "differential/plaincurves.h"
#include "differential/random.h"

#include <memory>

class PriceBased2dPlot;
class PriceBased2dPlotCurve;

namespace Differential {

/// What samples may be like.
enum class Samples { Finite, Any };

/// A few samples, mostly in ascending prices from about 100 to 120, sometimes nasty; with Samples::Any now
/// and then one that is not finite.
QVector<QPointF> randomSamples(Random& random, Samples kind, int most = 12);

/// A curve that is mostly valid and visible; the most samples are as above.
Plain::Curve randomCurve(Random& random, Samples kind, int mostSamples = 12);
QList<Plain::Curve> randomCurves(Random& random, Samples kind, int most, int mostSamples = 12);

/// Mostly a few, now and then more than the library looks at one by one.
int randomLength(Random& random);

/// The library's curve of the same kind, not attached.
std::unique_ptr<PriceBased2dPlotCurve> made(const Plain::Curve& plain, PriceBased2dPlot* plot = nullptr);

QString told(const Plain::Curve& curve);
QString told(const QList<Plain::Curve>& curves);

}
