#include "output/plotdrawing.h"

#include "output/legendrows.h"

#include <plot2d/pricebased2dplot.h>
#include <plot2d/pricebased2dplotscaledraw.h>

#include <QPainter>

#include <qwt_plot_renderer.h>

#include <algorithm>

namespace {

PriceBased2dPlotScaleDraw* drawOf(const QwtPlot* plot, int axis)
{
    auto* const draw = const_cast<QwtPlot*>(plot)->axisScaleDraw(axis);
    return dynamic_cast<PriceBased2dPlotScaleDraw*>(draw);
}

/// While it lives, the lines of an axis scale: one of no width is a pixel of the device however small that
/// is.
class ScalingPen {
public:
    explicit ScalingPen(PriceBased2dPlotScaleDraw& draw)
        : m_draw(draw)
        , m_width(draw.penWidth())
    {
        m_draw.setPenWidth(std::max(1, m_width));
    }
    ScalingPen(const ScalingPen&) = delete;
    ScalingPen& operator=(const ScalingPen&) = delete;
    ~ScalingPen() { m_draw.setPenWidth(m_width); }

private:
    PriceBased2dPlotScaleDraw& m_draw;
    int m_width;
};

/// While it lives, an axis of another length has the labels that fit there.
class FittingLabels {
public:
    FittingLabels(PriceBased2dPlotScaleDraw& draw, double length)
        : m_draw(draw)
        , m_length(draw.length())
    {
        // Until an axis counts as painted its labels overlap.
        m_draw.setPaintedOnce();
        m_draw.setLength(length);
        m_draw.updateLabels();
    }
    FittingLabels(const FittingLabels&) = delete;
    FittingLabels& operator=(const FittingLabels&) = delete;
    ~FittingLabels()
    {
        m_draw.setLength(m_length);
        m_draw.updateLabels();
    }

private:
    PriceBased2dPlotScaleDraw& m_draw;
    double m_length;
};

class Renderer : public QwtPlotRenderer {
public:
    Renderer() { setDiscardFlags(DiscardBackground | DiscardLegend); }

    void renderScale(const QwtPlot* plot, QPainter* painter, int axis, int startDist, int endDist,
        int baseDist, const QRectF& rectangle) const override
    {
        const auto paint = [&] {
            QwtPlotRenderer::renderScale(plot, painter, axis, startDist, endDist, baseDist, rectangle);
        };
        PriceBased2dPlotScaleDraw* const draw = drawOf(plot, axis);
        if (!draw) {
            paint();
            return;
        }
        const ScalingPen pen(*draw);
        if (axis != QwtPlot::xBottom) {
            paint();
            return;
        }
        const FittingLabels labels(*draw, rectangle.width() - startDist - endDist);
        paint();
    }
};

}

void PlotDrawing::paint(PriceBased2dPlot& plot, const QSizeF& size, QPainter& painter, const QRectF& target)
{
    const LegendRows legend(plot);
    const QMarginsF margins(plot.contentsMargins());
    const double legendWidth = size.width() - margins.left() - margins.right();
    const double legendHeight = std::min(legend.heightFor(legendWidth), size.height());
    const double plotHeight = size.height() - legendHeight;
    // The renderer scales by this on its own.
    const double ratioX = double(painter.device()->logicalDpiX()) / plot.logicalDpiX();
    const double ratioY = double(painter.device()->logicalDpiY()) / plot.logicalDpiY();

    painter.save();
    painter.translate(target.topLeft());
    painter.scale(target.width() / size.width(), target.height() / size.height());
    painter.fillRect(QRectF(QPointF(), size), plot.canvasBackground());
    painter.save();
    painter.scale(1.0 / ratioX, 1.0 / ratioY);
    Renderer().render(&plot, &painter, QRectF(0.0, 0.0, size.width() * ratioX, plotHeight * ratioY));
    painter.restore();
    legend.paint(painter, QRectF(margins.left(), plotHeight, legendWidth, legendHeight));
    painter.restore();
}
