#include "output/legendrows.h"

#include "output/visiblecurves.h"

#include <plot2d/pricebased2dplot.h>
#include <plot2d/pricebased2dplotcurve.h>

#include <QPainter>

#include <qwt_abstract_legend.h>
#include <qwt_painter.h>
#include <qwt_symbol.h>

#include <algorithm>

namespace {

constexpr double betweenIconAndText = 6.0;
constexpr double betweenEntries = 22.0;
constexpr double rowMargin = 3.0;

// A horizontal line is sharp without antialiasing. Not the curve's own graphic, whose lines are of no width
// on some devices.
void paintIcon(QPainter& painter, const QRectF& place, const QwtPlotCurve& curve)
{
    painter.save();
    if (curve.testLegendAttribute(QwtPlotCurve::LegendShowLine) && curve.pen().style() != Qt::NoPen) {
        QPen pen = curve.pen();
        pen.setCapStyle(Qt::FlatCap);
        painter.setPen(pen);
        const double middle = place.center().y();
        QwtPainter::drawLine(&painter, QPointF(place.left(), middle), QPointF(place.right(), middle));
    }
    painter.setRenderHint(QPainter::Antialiasing);
    if (curve.testLegendAttribute(QwtPlotCurve::LegendShowSymbol) && curve.symbol())
        curve.symbol()->drawSymbol(&painter, place.center());
    painter.restore();
}

}

LegendRows::LegendRows(const PriceBased2dPlot& plot)
    : m_font(plot.legend() ? plot.legend()->font() : plot.font())
    , m_color(plot.palette().color(QPalette::Text))
{
    const QVector<const PriceBased2dPlotCurve*> curves = visibleCurves(plot);
    for (const PriceBased2dPlotCurve* const curve : curves)
        add(curve);
}

void LegendRows::add(const QwtPlotCurve* curve)
{
    QwtText text(curve->title().text(), QwtText::PlainText);
    text.setRenderFlags(Qt::AlignLeft | Qt::AlignVCenter);
    const QSizeF icon = curve->legendIconSize();
    const QSizeF label = text.textSize(m_font);
    m_entries.append({curve, text,
        {icon.width() + betweenIconAndText + label.width(), std::max(icon.height(), label.height())}});
}

double LegendRows::rowHeight() const
{
    double height = 0.0;
    for (const Entry& entry : m_entries)
        height = std::max(height, entry.size.height());
    return height + 2.0 * rowMargin;
}

QVector<LegendRows::Row> LegendRows::rows(double width) const
{
    QVector<Row> all;
    for (const Entry& entry : m_entries) {
        const double withEntry = all.isEmpty() ? 0.0 : all.last().width + betweenEntries + entry.size.width();
        if (all.isEmpty() || withEntry > width) {
            all.append({{entry}, entry.size.width()});
            continue;
        }
        all.last().entries.append(entry);
        all.last().width = withEntry;
    }
    return all;
}

double LegendRows::heightFor(double width) const
{
    return rows(width).size() * rowHeight();
}

void LegendRows::paint(QPainter& painter, const QRectF& rectangle) const
{
    painter.save();
    painter.setFont(m_font);
    painter.setPen(m_color);
    double top = rectangle.top();
    const QVector<Row> all = rows(rectangle.width());
    for (const Row& row : all) {
        double left = rectangle.left() + std::max(0.0, (rectangle.width() - row.width) / 2.0);
        for (const Entry& entry : row.entries) {
            const QSizeF size = entry.curve->legendIconSize();
            const QPointF corner(left, top + (rowHeight() - size.height()) / 2.0);
            paintIcon(painter, QRectF(corner, size), *entry.curve);
            QRectF place(left, top, entry.size.width(), rowHeight());
            place.setLeft(left + size.width() + betweenIconAndText);
            entry.text.draw(&painter, place);
            left += entry.size.width() + betweenEntries;
        }
        top += rowHeight();
    }
    painter.restore();
}
