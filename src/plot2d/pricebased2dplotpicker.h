#pragma once

#include "plot2d/pricebased2dplotconverter.h"

#include <QList>
#include <QPointF>

#include <qwt_plot_picker.h>
#include <qwt_text.h>

class PriceBased2dPlotCurve;
class QTimer;

/// What a search for the closest point starts from.
struct ClosestPointCalcParams {
    /// The visible prices.
    double xMin = 0.0;
    double xMax = 0.0;
    /// The visible values.
    double yMin = 0.0;
    double yMax = 0.0;
    /// The cursor's price, snapped to the price step, above xMin.
    double cursorX = 0.0;
    /// The cursor's value above yMin.
    double cursorY = 0.0;
};

/// What a search has found; an index of -1 means nothing.
struct ClosestPointParams {
    const PriceBased2dPlotCurve* curve = nullptr;
    double distance = -1.0;
    /// The sample's index within the curve.
    int index = -1;
};

/// Follows the cursor over the canvas of a plot, finds the curve point nearest to it, and shows the tracker's
/// text beside it.
///
/// The host's tracking code keeps position() and the stored text up to date: the position from
/// transformedPoint() of the cursor, the point from getClosestCurveParams(usedCurves()), the text as
/// renderedText().
class PLOT2D_EXPORT PriceBased2dPlotPicker : public QwtPlotPicker, public virtual PriceBased2dPlotConverter {
    Q_OBJECT

public:
    /// A picker of the plot whose canvas this is.
    explicit PriceBased2dPlotPicker(QWidget* canvas);
    ~PriceBased2dPlotPicker() override;

    /// Reads the price step now and once a second from now on. To be called once.
    void initTimer();

    /// The instrument's price step, -1.0 while unknown.
    double priceStep() const { return m_priceStep; }

    /// The cursor in plot coordinates (price, value); (0, 0) at first.
    void setPosition(const QPointF& position) { m_position = position; }
    QPointF position() const { return m_position; }

    /// The text that the tracker shows.
    void setTrackerText(const QwtText& text) { m_trackerText = text; }

    /// The plot coordinates of a position on the canvas; NaN along a canvas of no width or height.
    QPointF transformedPoint(const QPointF& canvasPosition) const;

    /// The valid curves whose entry in the plot's legend is checked, in the plot's order; none without a
    /// legend.
    QList<PriceBased2dPlotCurve*> usedCurves() const;

    /// The curve and sample nearest to position() among the visible, valid curves (the first of equally near
    /// ones); the line at the current quote is never found. The distance stays -1.0. Nothing while the price
    /// step is unknown or zero.
    ClosestPointParams getClosestCurveParams(const QList<PriceBased2dPlotCurve*>& curves) const;

    /// The visible sample of one curve nearest to the cursor, however far, and its distance: the horizontal
    /// plus the vertical one, each in percent of the visible range. The curve stays null.
    ClosestPointParams getClosestPointParams(
        const PriceBased2dPlotCurve* curve, const ClosestPointCalcParams& params) const;

    /// A text as the tracker shows it: left-aligned, in the plot's font at 1.2 times the application's point
    /// size.
    QwtText renderedText(const QString& text) const;

    /// The stored text, wherever the cursor is.
    QwtText trackerText(const QPoint& position) const override;

public Q_SLOTS:
    /// Reads the price step of the plot's future; -1.0 without one. Throws Exception("Incorrect type
    /// conversion.") for a price step that is no number.
    void setPriceStep();

private:
    double m_priceStep = -1.0;
    QTimer* m_timer = nullptr;
    QPointF m_position;
    QwtText m_trackerText;
};
