#pragma once

#include <QColor>
#include <QMouseEvent>
#include <QPainter>
#include <QPolygonF>

#include <qwt_abstract_scale_draw.h>
#include <qwt_clipper.h>
#include <qwt_global.h>
#include <qwt_plot.h>
#include <qwt_point_data.h>

/// What the versions of Qt (5 and 6) and of Qwt (6.1 and from 6.2) say differently.
namespace QtVersions {

/// A part of a colour, 0 to 1, as QColor takes it.
using ColorPart = decltype(QColor().alphaF());

/// Samples in an array of prices and one of values.
#if QWT_VERSION >= 0x060200
using PointArrays = QwtPointArrayData<double>;
#else
using PointArrays = QwtPointArrayData;
#endif

/// Where the mouse was, in the coordinates of the widget that gets the event.
inline QPointF positionOf(const QMouseEvent& event)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    return event.position();
#else
    return event.localPos();
#endif
}

/// Whether the painter puts lines half a pixel off, as Qt 4 did.
inline bool paintsAsQt4(const QPainter& painter)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    Q_UNUSED(painter)
    return false;
#else
    return painter.testRenderHint(QPainter::Qt4CompatiblePainting);
#endif
}

inline QPolygonF clippedLine(const QRectF& clip, const QPolygonF& line)
{
#if QWT_VERSION >= 0x060200
    return QwtClipper::clippedPolygonF(clip, line);
#else
    return QwtClipper::clipPolygonF(clip, line);
#endif
}

inline bool isAxisVisible(const QwtPlot& plot, int axis)
{
#if QWT_VERSION >= 0x060200
    return plot.isAxisVisible(axis);
#else
    return plot.axisEnabled(axis);
#endif
}

inline double penWidthOf(const QwtAbstractScaleDraw& draw)
{
#if QWT_VERSION >= 0x060200
    return draw.penWidthF();
#else
    return draw.penWidth();
#endif
}

}
