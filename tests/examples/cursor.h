#pragma once

#include <QCoreApplication>
#include <QCursor>
#include <QMouseEvent>
#include <QWheelEvent>
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

/// Turns the wheel over the middle of a plot's canvas, by 120 for a notch.
inline void turnWheel(QwtPlot& plot, int angle)
{
    const QPoint position = plot.canvas()->mapTo(&plot, plot.canvas()->rect().center());
    QCursor::setPos(plot.mapToGlobal(position));
    QWheelEvent turn(position, QCursor::pos(), QPoint(), QPoint(0, angle), Qt::NoButton, Qt::NoModifier,
        Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&plot, &turn);
}
