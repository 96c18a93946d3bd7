#pragma once

#include <QColor>
#include <QFont>
#include <QRectF>
#include <QVector>

#include <qwt_text.h>

class PriceBased2dPlot;
class QPainter;
class QwtPlotCurve;

/// The legend of a plot on paper: an entry for each visible curve, in the order of the plot's own legend, in
/// rows that are filled one after the other and stand in the middle.
class LegendRows {
public:
    /// The plot and its curves must outlive this object.
    explicit LegendRows(const PriceBased2dPlot& plot);

    /// The height that the rows need in a width, in pixels of the plot; 0 without a visible curve.
    double heightFor(double width) const;

    void paint(QPainter& painter, const QRectF& rectangle) const;

private:
    struct Entry {
        const QwtPlotCurve* curve;
        QwtText text;
        QSizeF size;
    };
    struct Row {
        QVector<Entry> entries;
        double width = 0.0;
    };

    void add(const QwtPlotCurve* curve);
    QVector<Row> rows(double width) const;
    double rowHeight() const;

    QVector<Entry> m_entries;
    QFont m_font;
    QColor m_color;
};
