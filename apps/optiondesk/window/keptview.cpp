#include "window/keptview.h"

#include <plot2d/pricebased2dplot.h>

#include <cmath>

namespace {

const auto automatic = QStringLiteral("auto");
const auto manual = QStringLiteral("fixed");

QString text(double number)
{
    return QString::number(number, 'g', 17);
}

std::optional<QwtInterval> interval(const QString& from, const QString& to)
{
    bool isFrom = false;
    bool isTo = false;
    const QwtInterval range(from.toDouble(&isFrom), to.toDouble(&isTo));
    const bool isGood = isFrom && isTo && std::isfinite(range.minValue()) && std::isfinite(range.maxValue())
        && range.minValue() < range.maxValue() && std::isfinite(range.width());
    return isGood ? std::make_optional(range) : std::nullopt;
}

bool fits(const QwtInterval& range, const QwtInterval& data, double smallest)
{
    constexpr double mostTimes = 10.0;
    constexpr double nearly = 1.0 - 1e-9;
    return range.intersects(data) && range.width() >= smallest * nearly
        && range.width() <= mostTimes * std::max(data.width(), smallest);
}

}

QStringList KeptView::toTexts() const
{
    return {baseCode, expiry.toString(Qt::ISODate), viewName(drawn), text(view.prices.minValue()),
        text(view.prices.maxValue()), text(view.values.minValue()), text(view.values.maxValue()),
        view.autoScale ? automatic : manual};
}

std::optional<KeptView> KeptView::fromTexts(const QStringList& texts)
{
    enum { Code, Expiry, Drawn, FromPrice, ToPrice, FromValue, ToValue, Scaling, Count };
    if (texts.size() != Count)
        return std::nullopt;
    const auto drawn = viewFromName(texts.at(Drawn));
    const auto prices = interval(texts.at(FromPrice), texts.at(ToPrice));
    const auto values = interval(texts.at(FromValue), texts.at(ToValue));
    const bool isAutomatic = texts.at(Scaling) == automatic;
    if (!drawn || !prices || !values || (!isAutomatic && texts.at(Scaling) != manual))
        return std::nullopt;
    return KeptView{texts.at(Code), QDate::fromString(texts.at(Expiry), Qt::ISODate), *drawn,
        {*prices, *values, isAutomatic}};
}

void KeptView::show(PriceBased2dPlot& plot) const
{
    const QRectF data = plot.curvesRectangle();
    const bool isSeen = !data.isNull()
        && fits(view.prices, QwtInterval(data.left(), data.right()), plot.priceInterval().minStep)
        && (view.autoScale || fits(view.values, QwtInterval(data.top(), data.bottom()), 0.0));
    if (!isSeen)
        return;
    plot.setAxisScale(QwtPlot::xBottom, view.prices.minValue(), view.prices.maxValue(), 0.0);
    if (view.autoScale != plot.autoScaleEnabled())
        Q_EMIT plot.autoScaleEnabled(view.autoScale);
    if (!view.autoScale)
        plot.setAxisScale(QwtPlot::yLeft, view.values.minValue(), view.values.maxValue(), 0.0);
    Q_EMIT plot.updateAxisLabels();
}
