#pragma once

#include <QPen>
#include <QPixmap>

/// How the expiries of an underlying look beside the chosen one.
///
/// The colours are from the palette of M. Okabe and K. Ito ("Color Universal Design", 2008), which people
/// with any of the common colour deficiencies tell apart, without its yellow, too faint on white, and its
/// blue, that of the chosen series' smile. Further expiries have the same colours in other line styles.
namespace ExpiryLook {

/// How many expiries look different.
constexpr int count = 17;

/// The line of the expiry at a position among those of its underlying, 0 or above; after the last of count
/// it begins again.
QPen pen(int position);

/// The size of the pictures below, in the pixels of a widget.
constexpr int swatchWidth = 18;
constexpr int swatchHeight = 14;

/// A piece of a line on white, as it is on the plot, for a screen of this many device pixels to a pixel.
QPixmap swatch(const QPen& pen, double devicePixelRatio);

/// The mark of the chosen series, whose curves have the colours that the legend says.
QPixmap chosenMark(const QColor& color, double devicePixelRatio);

}
