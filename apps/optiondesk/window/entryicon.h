#pragma once

#include <QColor>
#include <QRect>

class QPainter;
class QwtPlotCurve;

/// What stands for a curve in a legend: a piece of its line, or its symbol.
namespace EntryIcon {

/// Paints it into a rectangle of the painter's coordinates, in a colour. Its edges lie between the pixels of
/// the device, so that it is sharp at every ratio of device pixels to those coordinates; a line is at least
/// one of them thick.
void paint(QPainter& painter, const QRect& rectangle, const QwtPlotCurve& curve, const QColor& color);

}
