#pragma once

#include <QVector>

/// How the entries of a legend stand in rows and columns.
namespace LegendColumns {

/// The most columns of entries, filled row by row, that stand side by side in a width; at least one. Widths
/// and the spacing between columns are in pixels.
int thatFit(const QVector<int>& entryWidths, int spacing, int width);

}
