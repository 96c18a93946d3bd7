#include "output/curvetable.h"

#include "output/visiblecurves.h"

#include <plot2d/pricebased2dplotcurve.h>

#include <QMap>

#include <qwt_text.h>

#include <charconv>
#include <cmath>

namespace {

// One row for each sample of the curve that has most of them at the price.
using Rows = QVector<QVector<QByteArray>>;

QByteArray quoted(const QString& text)
{
    QByteArray field = text.toUtf8();
    const bool isPlain = !field.isEmpty() && !field.contains(',') && !field.contains('"')
        && !field.contains('\n') && !field.contains('\r') && field == field.trimmed();
    if (isPlain)
        return field;
    field.replace("\"", "\"\"");
    return '"' + field + '"';
}

QByteArray number(double value)
{
    if (!std::isfinite(value))
        return QByteArray();
    constexpr double smallestFixed = 1e-6;
    constexpr double largestFixed = 1e15;
    const double size = std::abs(value);
    const bool isFixed = size == 0.0 || (size >= smallestFixed && size < largestFixed);
    char digits[64];
    const auto end = std::to_chars(std::begin(digits), std::end(digits), value,
        isFixed ? std::chars_format::fixed : std::chars_format::scientific);
    return QByteArray(digits, int(end.ptr - digits));
}

QMap<double, Rows> rowsByPrice(const QVector<CurveTable::Column>& columns)
{
    QMap<double, Rows> byPrice;
    for (int column = 0; column < columns.size(); ++column) {
        QMap<double, int> used;
        for (const QPointF& sample : columns.at(column).samples) {
            if (!std::isfinite(sample.x()))
                continue;
            Rows& rows = byPrice[sample.x()];
            const int row = used[sample.x()]++;
            if (row == rows.size())
                rows.append(QVector<QByteArray>(columns.size()));
            rows[row][column] = number(sample.y());
        }
    }
    return byPrice;
}

QByteArray line(const QByteArray& first, const QVector<QByteArray>& others)
{
    QByteArray text = first;
    for (const QByteArray& field : others)
        text += ',' + field;
    return text + "\r\n";
}

}

QVector<CurveTable::Column> CurveTable::columns(const PriceBased2dPlot& plot)
{
    QVector<Column> found;
    const QVector<const PriceBased2dPlotCurve*> curves = visibleCurves(plot);
    for (const PriceBased2dPlotCurve* const curve : curves) {
        if (curve->dataType() == PriceBased2dPlotCurve::quoteLineType || curve->dataType() == barsType)
            continue;
        Column column{curve->title().text(), {}};
        for (std::size_t i = 0; i < curve->dataSize(); ++i)
            column.samples.append(curve->sample(int(i)));
        found.append(column);
    }
    return found;
}

QByteArray CurveTable::csv(const QString& priceTitle, const QVector<Column>& columns)
{
    QVector<QByteArray> titles;
    for (const Column& column : columns)
        titles.append(quoted(column.title));
    QByteArray text = line(quoted(priceTitle), titles);
    const QMap<double, Rows> byPrice = rowsByPrice(columns);
    for (auto price = byPrice.begin(); price != byPrice.end(); ++price) {
        for (const QVector<QByteArray>& row : price.value())
            text += line(number(price.key()), row);
    }
    return text;
}
