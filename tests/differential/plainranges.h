#pragma once

#include <QPointF>

#include <optional>
#include <utility>

namespace Plain {

/// The multiple of the price step next to a price, halves upwards.
double snappedPrice(double price, double priceStep);

/// Whether two prices in their order are further apart than doubles that should be equal.
bool areApart(double low, double high);

/// What an axis shows when it is asked for a range, nothing where it stays as it is. 0 is the vertical axis,
/// 2 the horizontal one.
std::optional<std::pair<double, double>> shownRange(int axis, double min, double max);

/// The ends of the line at the quote: a tenth of the values beyond them.
std::optional<std::pair<QPointF, QPointF>> quoteLine(double low, double high, double quote);

}
