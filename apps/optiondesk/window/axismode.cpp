#include "window/axismode.h"

#include <basic_views/conversion.h>
#include <plot2d/pricebased2dplotconverter.h>

#include <QCoreApplication>

#include <qwt_scale_engine.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>

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

// Log-moneyness in standard deviations; prices that are not positive have none.
class Deviations : public Conversion {
public:
    explicit Deviations(const AxisReference& reference)
        : m_reference(reference)
    {
    }

    double forward(double price) const override
    {
        if (!(price > 0.0))
            return std::numeric_limits<double>::quiet_NaN();
        return std::log(price / m_reference.quote) / m_reference.deviation;
    }
    double backward(double deviations) const override
    {
        return m_reference.quote * std::exp(deviations * m_reference.deviation);
    }

private:
    AxisReference m_reference;
};

bool isPositive(double value)
{
    return std::isfinite(value) && value > 0.0;
}

std::unique_ptr<Conversion> conversionFor(AxisMode mode, const AxisReference& reference)
{
    switch (AxisModes::shown(mode, reference)) {
    case AxisMode::PointsFromQuote:
        return std::make_unique<PointsFromQuote>(reference.quote);
    case AxisMode::PercentOfQuote:
        return std::make_unique<PercentOfQuote>(reference.quote);
    case AxisMode::Deviations:
        return std::make_unique<Deviations>(reference);
    case AxisMode::Price:
        break;
    }
    return nullptr;
}

QString unitOf(AxisMode mode)
{
    if (mode == AxisMode::Deviations)
        return QStringLiteral("\u03c3");
    return mode == AxisMode::PercentOfQuote ? QStringLiteral("%") : QString();
}

// From the lowest price that has a deviation, far below all that trade.
QwtInterval dividedRange(AxisMode mode, const AxisReference& reference, const QwtInterval& prices)
{
    constexpr double lowestDeviations = -12.0;
    if (mode != AxisMode::Deviations)
        return prices;
    const double lowest = reference.quote * std::exp(lowestDeviations * reference.deviation);
    return QwtInterval(std::max(prices.minValue(), lowest), prices.maxValue());
}

}

bool operator==(const AxisReference& a, const AxisReference& b)
{
    return a.quote == b.quote && a.deviation == b.deviation;
}

const QVector<AxisModes::Description>& AxisModes::all()
{
    static const QVector<Description> modes{
        {AxisMode::Price, QStringLiteral("price"), QT_TRANSLATE_NOOP("AxisModes", "Pr&ices")},
        {AxisMode::PointsFromQuote, QStringLiteral("points"),
            QT_TRANSLATE_NOOP("AxisModes", "P&oints from the quote")},
        {AxisMode::PercentOfQuote, QStringLiteral("percent"),
            QT_TRANSLATE_NOOP("AxisModes", "Per&cent of the quote")},
        {AxisMode::Deviations, QStringLiteral("deviations"),
            QT_TRANSLATE_NOOP("AxisModes", "&Deviations from the quote")},
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

AxisMode AxisModes::shown(AxisMode mode, const AxisReference& reference)
{
    const bool isUsable
        = isPositive(reference.quote) && (mode != AxisMode::Deviations || isPositive(reference.deviation));
    return isUsable ? mode : AxisMode::Price;
}

void AxisModes::apply(AxisMode mode, const AxisReference& reference, PriceBased2dPlotConverter& converter)
{
    const AxisMode used = shown(mode, reference);
    // Labels are short where they are relative; the quote itself has as many digits as it needs.
    constexpr int priceDecimals = 10;
    constexpr int relativeDecimals = 4;

    converter.setConversionEnabled(false);
    converter.setConvertionObject(conversionFor(used, reference).release());
    converter.setConversionMethod(&Conversion::forward);
    converter.setMetricUnit(unitOf(used));
    converter.setPlusSignShown(used == AxisMode::PointsFromQuote || used == AxisMode::Deviations);
    converter.setDecimals(used == AxisMode::Price ? priceDecimals : relativeDecimals);
    converter.setConversionEnabled(used != AxisMode::Price);
}

double AxisModes::roundStep(AxisMode mode, double quote, double rangeOfPrices, int maxSteps)
{
    if (mode != AxisMode::PercentOfQuote || !(quote > 0.0))
        return 0.0;
    const double range = rangeOfPrices * 100.0 / quote;
    if (!std::isfinite(range) || !(range > 0.0))
        return 0.0;
    constexpr unsigned int decimalBase = 10;
    return QwtScaleArithmetic::divideInterval(range, maxSteps, decimalBase) * quote / 100.0;
}

std::optional<QwtScaleDiv> AxisModes::roundDivision(
    AxisMode mode, const AxisReference& reference, const QwtInterval& prices, const Fineness& fineness)
{
    const std::unique_ptr<Conversion> conversion = conversionFor(mode, reference);
    const QwtInterval divided = dividedRange(mode, reference, prices);
    if (!conversion || !(divided.width() > 0.0))
        return std::nullopt;
    const double low = conversion->forward(divided.minValue());
    const double high = conversion->forward(divided.maxValue());
    // Narrower ranges have ticks that doubles cannot tell apart.
    constexpr double finest = 1e-9;
    const bool isDivisible = std::isfinite(low) && std::isfinite(high)
        && high - low > finest * std::max(std::abs(low), std::abs(high)) && fineness.maxMajorSteps > 0;
    if (!isDivisible)
        return std::nullopt;
    const QwtScaleDiv relative
        = QwtLinearScaleEngine().divideScale(low, high, fineness.maxMajorSteps, fineness.maxMinorSteps, 0.0);
    QwtScaleDiv division(prices.minValue(), prices.maxValue());
    for (int type = 0; type < QwtScaleDiv::NTickTypes; ++type) {
        QList<double> ticks;
        const QList<double> all = relative.ticks(type);
        for (const double tick : all)
            ticks.append(conversion->backward(tick));
        division.setTicks(type, ticks);
    }
    return division;
}

QString AxisModes::axisTitle(AxisMode mode, const QString& prices)
{
    switch (mode) {
    case AxisMode::PointsFromQuote:
        return QCoreApplication::translate("AxisModes", "%1, points from the quote").arg(prices);
    case AxisMode::PercentOfQuote:
        return QCoreApplication::translate("AxisModes", "%1, percent of the quote").arg(prices);
    case AxisMode::Deviations:
        return QCoreApplication::translate("AxisModes", "%1, standard deviations from the quote").arg(prices);
    case AxisMode::Price:
        break;
    }
    return prices;
}
