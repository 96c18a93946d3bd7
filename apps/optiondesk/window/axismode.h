#pragma once

#include <QString>
#include <QVector>

#include <optional>

class PriceBased2dPlotConverter;

/// What the labels of the price axis show.
enum class AxisMode { Price, PointsFromQuote, PercentOfQuote };

namespace AxisModes {

/// A mode with its name on the command line and in the menu.
struct Description {
    AxisMode mode;
    QString name;
    QString menuText;
};

/// All modes, in the order of the menu.
const QVector<Description>& all();

/// The mode of a name on the command line.
std::optional<AxisMode> fromName(const QString& name);

/// Its name there.
QString name(AxisMode mode);

/// Lets a converter show prices in a mode, relative to a quote. A quote that is not positive and finite has
/// nothing relative to it: prices are shown then.
void apply(AxisMode mode, double quote, PriceBased2dPlotConverter& converter);

/// The step between labelled prices, so that the labels of a range of prices are round numbers in a mode; 0
/// where the axis finds one by itself. The number of labels is at most that of the steps, 1 or more.
double roundStep(AxisMode mode, double quote, double rangeOfPrices, int maxSteps);

/// The title of the axis.
QString axisTitle(AxisMode mode);

}
