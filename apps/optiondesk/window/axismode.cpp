#include "window/axismode.h"

#include <basic_views/conversion.h>
#include <plot2d/pricebased2dplotconverter.h>

#include <qwt_scale_engine.h>

#include <algorithm>
#include <cmath>

namespace {

class PointsFromQuote : public Conversion {
public:
    explicit PointsFromQuote(double quote)
        : m_quote(quote)
    {
    }

    double forward(double price) const override { return price - m_quote; }
    double backward(double points) const override { return points + m_quote; }

private:
    double m_quote;
};

class PercentOfQuote : public Conversion {
public:
    explicit PercentOfQuote(double quote)
        : m_quote(quote)
    {
    }

    double forward(double price) const override { return price * 100.0 / m_quote; }
    double backward(double percent) const override { return percent * m_quote / 100.0; }

private:
    double m_quote;
};

Conversion* conversionFor(AxisMode mode, double quote)
{
    switch (mode) {
    case AxisMode::PointsFromQuote:
        return new PointsFromQuote(quote);
    case AxisMode::PercentOfQuote:
        return new PercentOfQuote(quote);
    case AxisMode::Price:
        break;
    }
    return nullptr;
}

}

const QVector<AxisModes::Description>& AxisModes::all()
{
    static const QVector<Description> modes{
        {AxisMode::Price, QStringLiteral("price"), QStringLiteral("&Prices")},
        {AxisMode::PointsFromQuote, QStringLiteral("points"), QStringLiteral("P&oints from the quote")},
        {AxisMode::PercentOfQuote, QStringLiteral("percent"), QStringLiteral("Per&cent of the quote")},
    };
    return modes;
}

std::optional<AxisMode> AxisModes::fromName(const QString& name)
{
    const auto mode = std::find_if(all().cbegin(), all().cend(),
        [&name](const Description& description) { return description.name == name; });
    return mode == all().cend() ? std::nullopt : std::optional<AxisMode>(mode->mode);
}

QString AxisModes::name(AxisMode mode)
{
    const auto description = std::find_if(
        all().cbegin(), all().cend(), [mode](const Description& each) { return each.mode == mode; });
    return description == all().cend() ? QString() : description->name;
}

void AxisModes::apply(AxisMode mode, double quote, PriceBased2dPlotConverter& converter)
{
    const bool usable = std::isfinite(quote) && quote > 0.0;
    const AxisMode shown = usable ? mode : AxisMode::Price;
    // Labels are short where they are relative; the quote itself has as many digits as it needs.
    constexpr int priceDecimals = 10;
    constexpr int relativeDecimals = 4;

    converter.setConversionEnabled(false);
    converter.setConvertionObject(conversionFor(shown, quote));
    converter.setConversionMethod(&Conversion::forward);
    converter.setMetricUnit(shown == AxisMode::PercentOfQuote ? QStringLiteral("%") : QString());
    converter.setPlusSignShown(shown == AxisMode::PointsFromQuote);
    converter.setDecimals(shown == AxisMode::Price ? priceDecimals : relativeDecimals);
    converter.setConversionEnabled(shown != AxisMode::Price);
}

double AxisModes::roundStep(AxisMode mode, double quote, double rangeOfPrices, int maxSteps)
{
    const double range = rangeOfPrices * 100.0 / quote;
    if (mode != AxisMode::PercentOfQuote || !(quote > 0.0) || !std::isfinite(range) || !(range > 0.0))
        return 0.0;
    constexpr unsigned int decimalBase = 10;
    return QwtScaleArithmetic::divideInterval(range, maxSteps, decimalBase) * quote / 100.0;
}

QString AxisModes::axisTitle(AxisMode mode)
{
    switch (mode) {
    case AxisMode::PointsFromQuote:
        return QStringLiteral("Strike, points from the quote");
    case AxisMode::PercentOfQuote:
        return QStringLiteral("Strike, percent of the quote");
    case AxisMode::Price:
        break;
    }
    return QStringLiteral("Strike");
}
