#pragma once

#include <QPointF>
#include <QRectF>

#include <optional>

/// How the wheel and a drag on an axis change the view. Pure functions; in rectangles of values the top is
/// the lowest value.
namespace ViewZoom {

/// The bounds of an axis.
struct Range {
    double lower = 0.0;
    double upper = 0.0;

    double width() const { return upper - lower; }
};

/// The notches of a wheel from the angle that it was turned by, in eighths of a degree: whole ones, towards
/// zero.
int notches(int angle);

/// What a number of notches multiplies the visible range with: a little less than 1 for positive ones.
/// Several notches at once count hardly more than one. Nothing for 0.
std::optional<double> factor(int notches);

/// What a wheel zoom starts from.
struct Start {
    Range prices;
    Range values;
    /// The rectangle of all curve samples.
    QRectF curves;
    /// The point to keep in its place.
    QPointF centre;
    /// Below 1 zooms in, above 1 out.
    double factor = 1.0;

    bool zoomsIn() const { return factor < 1.0; }
};

/// The widths of the visible prices and values after a zoom.
struct Spans {
    double price = 0.0;
    double value = 0.0;
};

/// Both shrink and grow by the factor; a view that covers the prices of the data already keeps its width, and
/// grows in height only while it is lower than the data. NaN for a view without width.
Spans zoomedSpans(const Start& start);

/// Whether spans are as small as a view may become by zooming in: narrower than the smallest step of strikes,
/// or lower than 1e-8.
bool isTooSmall(const Spans& spans, double minStep);

/// The view after a zoom, by the bounds that are computed: the lowest price and the highest value. The centre
/// keeps its relative place; a centre on the lower bound becomes the upper bound. An end of the data that is
/// visible stays where it is while zooming out, the right one before the left, the top before the bottom.
/// Nothing where one of the two bounds of the axis, that or the one a span away, is not finite.
std::optional<double> zoomedLowestPrice(const Start& start, const Spans& spans);
std::optional<double> zoomedHighestValue(const Start& start, const Spans& spans);

/// The bounds of an axis after one step of a drag on it: a tenth of the span less, evenly, or a tenth more
/// towards the side where data is still hidden. Nothing where the view covers the data already, has no room
/// to shrink, or would not be finite.
std::optional<Range> dragged(const Range& view, const Range& data, bool shrinks);

}
