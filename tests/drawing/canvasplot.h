#pragma once

#include <plot2d/plotcanvas_p.h>

#include <QImage>
#include <QPainter>

#include <qwt_plot.h>
#include <qwt_plot_curve.h>
#include <qwt_plot_grid.h>

#include <functional>
#include <memory>

/// Plots with the library's canvas and with Qwt's, and pictures of them.
namespace CanvasPlot {

using Setup = std::function<void(QwtPlot&)>;

inline std::unique_ptr<QwtPlot> plotWith(
    const std::function<QWidget*(QwtPlot*)>& createCanvas, const Setup& setUp)
{
    auto plot = std::make_unique<QwtPlot>();
    plot->setCanvas(createCanvas(plot.get()));
    plot->resize(320, 240);
    auto* const grid = new QwtPlotGrid;
    grid->setPen(Qt::gray, 1.0);
    grid->attach(plot.get());
    auto* const curve = new QwtPlotCurve;
    curve->setSamples({{0.0, 0.0}, {1.0, 10.0}, {2.0, 3.0}});
    curve->attach(plot.get());
    plot->setAutoReplot(false);
    setUp(*plot);
    plot->replot();
    return plot;
}

inline std::unique_ptr<QwtPlot> ourPlot(const Setup& setUp)
{
    return plotWith([](QwtPlot* plot) { return new PlotCanvas(plot); }, setUp);
}

inline std::unique_ptr<QwtPlot> plainPlot(const Setup& setUp)
{
    return plotWith([](QwtPlot* plot) { return new QwtPlotCanvas(plot); }, setUp);
}

inline QwtPlotCanvas& canvasOf(QwtPlot& plot)
{
    return *qobject_cast<QwtPlotCanvas*>(plot.canvas());
}

/// Qwt's attribute alone leaves Qt's as it was, and Qt's alone is set anew when the canvas is polished.
inline void setTranslucent(QwtPlotCanvas& canvas)
{
    canvas.setPaintAttribute(QwtPlotCanvas::Opaque, false);
    canvas.setAttribute(Qt::WA_OpaquePaintEvent, false);
}

/// As on the widget's screen, or larger.
inline QImage picture(QWidget& widget, double scale = 1.0)
{
    const double pixelRatio = widget.devicePixelRatioF() * scale;
    QImage image(widget.size() * pixelRatio, QImage::Format_RGB32);
    image.setDevicePixelRatio(pixelRatio);
    image.fill(Qt::magenta);
    widget.render(&image);
    return image;
}

}
