#pragma once

#include <QPainter>
#include <QWidget>

#include <cmath>

/// Whether a painter on a widget puts the widget's pixels onto whole pixels of the device, as on its screen:
/// then a picture of the widget shows the same as drawing it does. Not so on screens of one and a half pixels
/// to one where the widget begins between pixels, nor where it is rendered larger than on its screen.
inline bool isOnPixelsOf(const QWidget& widget, const QPainter& painter)
{
    const QTransform& transform = painter.deviceTransform();
    const double pixelRatio = widget.devicePixelRatioF();
    return transform.type() <= QTransform::TxScale && transform.m11() == pixelRatio
        && transform.m22() == pixelRatio && std::floor(transform.dx()) == transform.dx()
        && std::floor(transform.dy()) == transform.dy();
}
