#pragma once

#include <QCoreApplication>
#include <QMouseEvent>
#include <QWidget>

#include <qwt_plot.h>

/// Moves the cursor to a price and a value over the canvas of a plot.
inline void moveCursor(QwtPlot& plot, double price, double value)
{
    const QPointF position(plot.transform(QwtPlot::xBottom, price), plot.transform(QwtPlot::yLeft, value));
    QMouseEvent move(
        QEvent::MouseMove, position, position, QCursor::pos(), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(plot.canvas(), &move);
}
