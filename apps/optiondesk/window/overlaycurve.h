#pragma once

#include <plot2d/pricebased2dplotcurve.h>

/// A curve of a series that is shown beside the chosen one.
///
/// Its data type is one of the desk's own, so that those by which the legend keeps the user's choices about
/// the chosen series' curves stay unique.
class OverlayCurve : public PriceBased2dPlotCurve {
public:
    static constexpr int overlayType = 100;

    /// Has its data type already; takes a pen, samples and a place on the plot from its maker.
    OverlayCurve(PriceBased2dPlot* plot, const QString& title)
        : PriceBased2dPlotCurve(plot, title)
    {
        setDataType(overlayType);
    }

    bool isValidType(int type) const override { return type == overlayType; }
};
