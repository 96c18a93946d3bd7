#include "plotlook_p.h"

#include "replotpause_p.h"

#include <qwt_plot_grid.h>
#include <qwt_plot_marker.h>
#include <qwt_symbol.h>

const QColor PlotLook::canvasColor(Qt::white);

QString PlotLook::backgroundStyleSheet()
{
    return QStringLiteral("QWidget { background-color: %1 }").arg(canvasColor.name());
}

QPen PlotLook::solidPen(const QColor& color, double width)
{
    return QPen(QBrush(color), width, Qt::SolidLine, Qt::SquareCap, Qt::BevelJoin);
}

void PlotLook::setMinorGrid(QwtPlotGrid& grid, bool enabled)
{
    const QColor majorColor(QStringLiteral("#b2beb5"));
    const QColor minorColor(QStringLiteral("#cccccc"));

    const ReplotPause pause(grid.plot());
    grid.enableX(true);
    grid.enableY(true);
    grid.enableXMin(enabled);
    grid.enableYMin(enabled);
    grid.setMajorPen(majorColor, enabled ? 2.0 : 1.0, Qt::SolidLine);
    if (enabled)
        grid.setMinorPen(minorColor, 1.0, Qt::SolidLine);
}

QwtPlotMarker* PlotLook::createPointMarker(const QPen& curvePen)
{
    auto* marker = new QwtPlotMarker(QString());
    marker->setRenderHint(QwtPlotItem::RenderAntialiased, true);
    marker->setSymbol(
        new QwtSymbol(QwtSymbol::Rect, curvePen.brush(), solidPen(curvePen.color(), 4.0), QSize(4, 4)));
    return marker;
}
