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
    constexpr double margin = 8.0;
    const LegendRows legend(plot);
    QRectF inside = QRectF(QPointF(), size).adjusted(margin, margin, -margin, -margin / 2.0);
    QRectF rows = inside;
    rows.setTop(inside.bottom() - std::min(legend.heightFor(inside.width()), inside.height()));
    inside.setBottom(rows.top());
    // The renderer scales by this on its own.
    const double ratioX = double(painter.device()->logicalDpiX()) / plot.logicalDpiX();
    const double ratioY = double(painter.device()->logicalDpiY()) / plot.logicalDpiY();

    painter.save();
    painter.translate(target.topLeft());
    painter.scale(target.width() / size.width(), target.height() / size.height());
    painter.fillRect(QRectF(QPointF(), size), plot.canvasBackground());
    legend.paint(painter, rows);
    painter.scale(1.0 / ratioX, 1.0 / ratioY);
    Renderer().render(&plot, &painter, QTransform::fromScale(ratioX, ratioY).mapRect(inside));
    painter.restore();
}
