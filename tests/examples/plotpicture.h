#pragma once

#include <QColor>
#include <QImage>
#include <QPoint>

class QwtPlot;

/// The picture of a plot with all its axes, and where prices and values stand in it.
class PlotPicture {
public:
    explicit PlotPicture(QwtPlot& plot);

    /// Whether a pixel of the colour is within a number of pixels of a place, each way.
    bool isColored(double price, double value, const QColor& color, int reach = 1) const;
    /// Whether all pixels within that distance have the colour.
    bool isFilled(double price, double value, const QColor& color, int reach) const;

    /// The pixels of a colour on the canvas, on the axis of prices, and in the whole.
    int onCanvas(const QColor& color) const;
    int onPriceAxis(const QColor& color) const;
    int inAll(const QColor& color) const;

    static int count(const QImage& image, const QRect& area, const QColor& color);

private:
    QRect around(double price, double value, int reach) const;

    QwtPlot& m_plot;
    QImage m_image;
};
