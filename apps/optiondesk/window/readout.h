#pragma once

#include <QCoreApplication>
#include <QString>

class PriceBased2dPlot;
class PriceBased2dPlotCurve;
class PriceBased2dPlotPicker;

/// What is said of a point of a curve, in the user's locale.
class ReadOut {
    Q_DECLARE_TR_FUNCTIONS(ReadOut)

public:
    /// Three lines: the curve's title; the sample's price, snapped to the price step, with its distance
    /// from the quote; the value as the picker converts it. Empty for an index outside the curve.
    static QString text(const PriceBased2dPlot& plot, const PriceBased2dPlotPicker& picker,
        const PriceBased2dPlotCurve& curve, int index);

    /// The distance of a price from the plot's quote, with its sign, in the unit of the horizontal axis.
    static QString distanceFromQuote(const PriceBased2dPlot& plot, double price);
};
