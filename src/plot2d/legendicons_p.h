#pragma once

#include <QMap>
#include <QPixmap>

/// The grey placeholders that unchecked entries of a legend show, 50 by 13 pixels on white, by
/// QwtSymbol::Style: a line for QwtSymbol::Rect, which stands for ordinary curves, and the two triangles.
namespace LegendIcons {

QMap<int, QPixmap> create();

}
