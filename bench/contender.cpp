#include "contender.h"

#include <QCoreApplication>
#include <QEvent>
#include <QImage>

#include <algorithm>
#include <limits>

void Contender::paint(QImage& image)
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::MetaCall);
    widget()->render(&image, QPoint(), QRegion(), QWidget::DrawWindowBackground | QWidget::DrawChildren);
}

namespace {

/// Extends a view by values; four at a time do not wait for each other.
void extend(BenchView& view, const double* values, std::ptrdiff_t count)
{
    constexpr std::ptrdiff_t lanes = 4;
    double low[lanes] = {view.low, view.low, view.low, view.low};
    double high[lanes] = {view.high, view.high, view.high, view.high};
    for (std::ptrdiff_t i = 0; i < count; ++i) {
        const std::ptrdiff_t lane = i % lanes;
        low[lane] = values[i] < low[lane] ? values[i] : low[lane];
        high[lane] = values[i] > high[lane] ? values[i] : high[lane];
    }
    view.low = *std::min_element(low, low + lanes);
    view.high = *std::max_element(high, high + lanes);
}

}

BenchView viewOf(const BenchData& data, double left, double right)
{
    const auto begin = std::lower_bound(data.prices.cbegin(), data.prices.cend(), left);
    const auto end = std::upper_bound(begin, data.prices.cend(), right);
    BenchView view{left, right, std::numeric_limits<double>::max(), std::numeric_limits<double>::lowest()};
    for (const QVector<double>& values : data.values)
        extend(view, values.constData() + (begin - data.prices.cbegin()), end - begin);
    return view.low <= view.high ? view : BenchView{left, right, 0.0, 1.0};
}

QColor curveColor(int curve)
{
    constexpr QRgb colors[] = {0xff1f77b4, 0xffd62728, 0xff2ca02c, 0xff9467bd, 0xffff7f0e};
    return QColor(colors[curve % 5]);
}
