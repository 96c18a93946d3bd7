#pragma once

#include <QList>

namespace Plain {

/// The ticks of a scale by their kinds.
struct Ticks {
    QList<double> major;
    QList<double> medium;
    QList<double> minor;
};

/// The price that a rescale factor means: the whole number next to it where that is less than one unit of the
/// strikes' last decimal away.
double anchor(double factor, int strikeDecimals);

/// Ticks moved sideways until the major one nearest to a price lies on it. `isEmpty` and the bounds are those
/// of the division asked for.
Ticks movedOnto(const Ticks& ticks, bool isEmpty, double price, double x1, double x2);

}
