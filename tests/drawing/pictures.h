#pragma once

#include "randomcurves.h"

#include <QImage>
#include <QPen>
#include <QRect>

#include <qwt_plot_curve.h>
#include <qwt_scale_map.h>

#include <functional>

/// Pictures of curves for comparison.
namespace Pictures {

/// A view of samples on an image, some of it outside of the canvas.
struct View {
    QSize image;
    QRect canvas;
    QwtScaleMap xMap;
    QwtScaleMap yMap;

    /// A sample's place in whole pixels.
    QPoint pixel(const QPointF& sample) const;
};

/// A view of samples as those of RandomCurves; some are mirrored.
View randomView(RandomCurves& random);

/// What is drawn into the canvas of a white image.
QImage drawn(const View& view, const std::function<void(QPainter&)>& draw);

/// A curve as its plot draws it.
QImage drawnCurve(const View& view, const QwtPlotCurve& curve);

/// Where two images differ; empty where they do not.
QString difference(const QImage& a, const QImage& b);

/// The mean difference of the pixels' red, green and blue, from 0 to 255.
double meanDifference(const QImage& a, const QImage& b);

}
