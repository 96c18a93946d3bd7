#pragma once

#include <QList>

#include <optional>

namespace Plain {

/// The ticks of a scale by their kinds.
struct Ticks {
    QList<double> major;
    QList<double> medium;
    QList<double> minor;
};

/// What an axis asks of Qwt's division by tens; a step of 0 leaves the step to Qwt.
struct ScaleRequest {
    double lower = 0.0;
    double upper = 0.0;
    int majorSteps = 0;
    int minorSteps = 0;
    double step = 0.0;
};

/// Whether an axis takes the request, nothing where roundings decide or the limit has no number: it refuses
/// bounds and steps that are not finite, widths and chosen steps beyond doubles, widths that have no pixels,
/// more steps than an int counts, and more than ten million minor ticks.
std::optional<bool> canBeDivided(const ScaleRequest& request);

/// The price that a rescale factor means: the whole number next to it where that is less than one unit of the
/// strikes' last decimal away.
double anchor(double factor, int strikeDecimals);

/// Ticks moved sideways until the major one nearest to a price lies on it. `isEmpty` and the bounds are those
/// of the division asked for.
Ticks movedOnto(const Ticks& ticks, bool isEmpty, double price, double x1, double x2);

}
