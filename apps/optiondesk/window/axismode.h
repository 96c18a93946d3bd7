#pragma once

#include <QString>
#include <QVector>

#include <qwt_interval.h>
#include <qwt_scale_div.h>

#include <optional>

class PriceBased2dPlotConverter;

/// What the labels of the price axis show.
enum class AxisMode { Price, PointsFromQuote, PercentOfQuote, Deviations };

/// What prices are relative to.
struct AxisReference {
    /// The forward.
    double quote = 0.0;
    /// One standard deviation of the price's logarithm until expiry, the volatility at the forward times the
    /// root of the time; 0 where it is not known.
    double deviation = 0.0;
};

bool operator==(const AxisReference& a, const AxisReference& b);
inline bool operator!=(const AxisReference& a, const AxisReference& b)
{
    return !(a == b);
}

namespace AxisModes {

/// A mode with its name on the command line and in the menu.
struct Description {
    AxisMode mode;
    QString name;
    /// In English, to be translated in the context AxisModes.
    const char* menuText;
};

/// All modes, in the order of the menu.
const QVector<Description>& all();

/// The mode of a name on the command line.
std::optional<AxisMode> fromName(const QString& name);

/// Its name there.
QString name(AxisMode mode);

/// The mode itself where the reference allows it, a positive and finite quote and for deviations such a
/// deviation; otherwise prices.
AxisMode shown(AxisMode mode, const AxisReference& reference);

/// Lets a converter show prices in a mode, as far as shown() allows it.
void apply(AxisMode mode, const AxisReference& reference, PriceBased2dPlotConverter& converter);

/// The step between labelled prices, so that the labels of a range of prices are round numbers in a mode; 0
/// where the axis finds one by itself. The number of labels is at most that of the steps, 1 or more.
double roundStep(AxisMode mode, double quote, double rangeOfPrices, int maxSteps);

/// How finely an axis is divided.
struct Fineness {
    int maxMajorSteps = 8;
    int maxMinorSteps = 5;
};

/// A division of prices whose ticks are round numbers in a mode, wherever the quote is. Nothing where prices
/// themselves are shown, and for a range that cannot be divided.
std::optional<QwtScaleDiv> roundDivision(
    AxisMode mode, const AxisReference& reference, const QwtInterval& prices, const Fineness& fineness);

/// The title of the axis whose prices are called so.
QString axisTitle(AxisMode mode, const QString& prices);

}
