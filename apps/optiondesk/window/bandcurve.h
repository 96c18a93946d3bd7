#pragma once

#include <output/curvetable.h>
#include <plot2d/pricebased2dplotcurve.h>

/// Vertical bars, one for each pair of successive samples, which have the same price: from the lower end to
/// the upper one. Their edges lie between device pixels, so that they are sharp on any screen.
class BandCurve : public PriceBased2dPlotCurve {
public:
    /// Of the desk's own, beside those of the library.
    static constexpr int bandType = CurveTable::barsType;

    BandCurve(PriceBased2dPlot* plot, const QString& title);

    bool isValidType(int type) const override { return type == bandType; }

    void drawSeries(QPainter* painter, const QwtScaleMap& xMap, const QwtScaleMap& yMap,
        const QRectF& canvasRect, int from, int to) const override;

private:
    double barWidth(const QwtScaleMap& xMap) const;
};
