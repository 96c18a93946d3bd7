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
    /// The lowest visible price.
    double xMin = 0.0;
    /// The highest visible price, above xMin.
    double xMax = 0.0;
    /// The lowest visible value.
    double yMin = 0.0;
    /// The highest visible value, not below yMin.
    double yMax = 0.0;
    /// The cursor's price, snapped to the price step, minus xMin.
    double cursorX = 0.0;
    /// The cursor's value minus yMin.
    double cursorY = 0.0;
};

/// What a search has found; an index of -1 means nothing.
struct ClosestPointParams {
    /// The curve found, not owned; set by getClosestCurveParams() alone.
    const PriceBased2dPlotCurve* curve = nullptr;
    /// In percent of the visible range; set by getClosestPointParams() alone.
    double distance = -1.0;
    /// The sample's index within its curve.
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
    /// A picker of the plot whose canvas this is; the canvas owns it. It knows no price step until
    /// initTimer() or setPriceStep().
    explicit PriceBased2dPlotPicker(QWidget* canvas);
    ~PriceBased2dPlotPicker() override;

    /// Reads the price step now and once a second from now on, as setPriceStep() does. To be called once.
    /// What setPriceStep() throws goes through the event loop then, which Qt does not bear.
    void initTimer();

    /// The instrument's price step as it was last read, -1.0 while unknown; 0.0 where the record has none.
    double priceStep() const { return m_priceStep; }

    /// The cursor in plot coordinates (price, value); (0, 0) at first.
    void setPosition(const QPointF& position) { m_position = position; }
    /// The cursor as it was last set.
    QPointF position() const { return m_position; }

    /// The text that the tracker shows from the cursor's next move on; empty after construction.
    void setTrackerText(const QwtText& text) { m_trackerText = text; }

    /// The plot coordinates (price, value) of a position on the canvas in pixels; NaN along a canvas of no
    /// width or height, (0, 0) without a plot.
    QPointF transformedPoint(const QPointF& canvasPosition) const;

    /// The valid curves whose entry in the plot's legend is checked, in the plot's order; none without a
    /// PriceBased2dPlotLegend. The plot goes on owning them.
    QList<PriceBased2dPlotCurve*> usedCurves() const;

    /// The curve and sample nearest to position() among the visible, valid curves (the first of equally near
    /// ones); null ones and the line at the current quote are passed over. The distance stays -1.0. Nothing
    /// while the price step is unknown or zero, and where no sample is visible.
    ClosestPointParams getClosestCurveParams(const QList<PriceBased2dPlotCurve*>& curves) const;

    /// The visible sample of one curve nearest to the cursor, however far, and its distance: the horizontal
    /// plus the vertical one, each in percent of the visible range. The curve stays null. Nothing for a null
    /// curve, for prices of no width or an inverted range, and while the price step is unknown or zero.
    ClosestPointParams getClosestPointParams(
        const PriceBased2dPlotCurve* curve, const ClosestPointCalcParams& params) const;

    /// A text as the tracker shows it: left-aligned, in the plot's font at 1.2 times the application's point
    /// size; an empty text stays one without a font.
    QwtText renderedText(const QString& text) const;

    /// The text of setTrackerText(), wherever the cursor is.
    QwtText trackerText(const QPoint& position) const override;

public Q_SLOTS:
    /// Reads the price step of the plot's future; -1.0 without one, 0.0 for a null field. Throws
    /// Exception("Incorrect type conversion.") for a price step that is no number: it is unknown then.
    void setPriceStep();

private:
    double m_priceStep = -1.0;
    QTimer* m_timer = nullptr;
    QPointF m_position;
    QwtText m_trackerText;
};
