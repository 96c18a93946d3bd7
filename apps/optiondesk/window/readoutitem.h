#pragma once

#include <qwt_plot_item.h>
#include <qwt_text.h>

/// A ring around a point of the plot with a text beside it, inside the canvas.
///
/// No QwtPlotMarker: those with a symbol belong to the curve with marked points.
class ReadOutItem : public QwtPlotItem {
public:
    ReadOutItem();

    /// The ring alone, around a point in pixels, and the pixels that it touches.
    static void paintRing(QPainter* painter, const QPointF& center);
    static QRect ringBounds(const QPointF& center);

    void setPoint(const QPointF& point) { m_point = point; }
    QPointF point() const { return m_point; }
    void setText(const QwtText& text) { m_text = text; }
    QwtText text() const { return m_text; }

    int rtti() const override;
    void draw(QPainter* painter, const QwtScaleMap& xMap, const QwtScaleMap& yMap,
        const QRectF& canvasRect) const override;

private:
    QPointF m_point;
    QwtText m_text;
};
