#pragma once

#include "window/axismode.h"
#include "window/shownseries.h"

class PriceBased2dPlot;

/// The price axis of the desk's plot: what its labels show, and that they are round numbers.
///
/// While the quote is in view the plot library anchors its ticks at it. Elsewhere, and for deviations, which
/// are no even steps of prices, the ticks are the desk's own.
class PriceAxis {
public:
    /// The plot must outlive this object.
    explicit PriceAxis(PriceBased2dPlot& plot);

    /// What the prices of the axis are called in its title.
    void setName(const QString& prices);
    const QString& name() const { return m_name; }
    void setMode(AxisMode mode);
    AxisMode mode() const { return m_mode; }
    /// What the labels are relative to; whether that is something else than before.
    bool setReference(const AxisReference& reference);
    double quote() const { return m_reference.quote; }

    /// Gives the axis its title and labels.
    void apply();

    /// Sees to it that the labels of the visible prices are round; with every change of the scale, or, with
    /// true, of mode and reference. Nothing for prices.
    void settleTicks(bool labelsChanged);

    /// Keeps the outermost labels of a range of prices inside the plot.
    void makeRoomForLabels(const PriceRange& prices);

private:
    PriceBased2dPlot& m_plot;
    AxisMode m_mode = AxisMode::Price;
    AxisReference m_reference;
    QString m_name;
};
