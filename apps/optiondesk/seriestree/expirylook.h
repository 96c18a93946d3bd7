#pragma once

#include <QPen>
#include <QPixmap>

/// How the expiries of an underlying look beside the chosen one.
///
/// The colours are none of those that the chosen series' curves and their band have (see CurveLook), and
/// people with the common colour deficiencies tell them apart. Further expiries have the same colours in
/// other line styles.
namespace ExpiryLook {

/// How many expiries look different.
constexpr int count = 20;

/// The line of the expiry at a position among those of its underlying, 0 or above; after the last of count
/// it begins again.
QPen pen(int position);

/// The size of the pictures below, in the pixels of a widget.
constexpr int swatchWidth = 18;
constexpr int swatchHeight = 14;

/// A piece of a line on white, as it is on the plot, for a screen of this many device pixels to a pixel.
QPixmap swatch(const QPen& pen, double devicePixelRatio);

/// The mark of the chosen series, in the colour of its smile; on white as well.
QPixmap chosenMark(const QColor& color, double devicePixelRatio);

}
