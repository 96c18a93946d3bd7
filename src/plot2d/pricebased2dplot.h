#pragma once

#include "plot2d/instrumentchoice.h"
#include "plot2d/plot2dexport.h"
#include "plot2d/priceinterval.h"
#include "plot2d/securitycolumns.h"

#include <database/decimal.h>
#include <database/record.h>

#include <QColor>
#include <QList>
#include <QPointer>
#include <QRectF>

#include <qwt_plot.h>

#include <utility>

class PriceBased2dPlotCurve;
class PriceBased2dPlotPanner;
class PriceBased2dPlotPicker;
class PriceBased2dPlotScaleDraw;
class PriceBased2dPlotScaleEngine;
class QwtPlotMarker;
class SecurityDirectory;

/// A plot of values (QwtPlot::yLeft) over the prices of one underlying future (QwtPlot::xBottom).
///
/// The host subclasses it, says which future to use, attaches curves and feeds them samples. Automatic replot
/// is off: what must show its effect calls replot() itself, and says so here. An operation of which nothing
/// is said emits no signal.
///
/// Operations that need an object which is not there (the picker before it is set, the panner, scale draws
/// and scale engine before initPlot()) do nothing, and those with a result say that nothing is known.
class PLOT2D_EXPORT PriceBased2dPlot : public QwtPlot {
    Q_OBJECT

public:
    /// A plot with a title. The host's table "securities" must have all the columns of SecurityColumn: a
    /// fatal message ends the process otherwise. With init false the subclass calls initPlot() itself.
    PriceBased2dPlot(bool init, const QwtText& title, QWidget* parent = nullptr);
    /// The same without a title.
    explicit PriceBased2dPlot(bool init, QWidget* parent = nullptr);
    ~PriceBased2dPlot() override;

    /// Gives the horizontal scale draw its first choice of labels when the axis is first painted.
    bool eventFilter(QObject* watched, QEvent* event) override;
    /// 20 by 20 pixels, whatever the content.
    QSize minimumSizeHint() const override;

    /// The range of the values of the visible value curves inside the visible prices, from the lower end
    /// (inclusive) to the upper (exclusive), both snapped to the price step. An inverted pair where there is
    /// none: no visible prices, none of the samples among them, or a sample that is not finite. (0, 0)
    /// without any curve to consider.
    virtual std::pair<double, double> minMaxYAtXRange();

    /// Moves the line at the current quote (the first attached curve of type 0, if it has two samples) to the
    /// price, and stretches it over the range from low to high and over the vertical scale, whichever reaches
    /// further. A negative quote keeps the line's price. Nothing for a line that would not be finite. Does
    /// not replot.
    virtual void updateCurKotirPoints(double low, double high, double quote);

    /// Called by the legend after it has put the grey placeholder in the place of a curve's icon; the curve
    /// is one of the attached ones.
    ///
    /// A host mostly shows a curve's icon in more places than the legend (a list of series, a button of a
    /// tool bar) and only the host knows them, so every plot must say what happens to those; an empty body is
    /// an answer.
    virtual void curveIconReset(const PriceBased2dPlotCurve* curve) = 0;

    /// Whether the wheel and a drag on an axis zoom; on after construction.
    void setZoomEnabled(bool enabled);

    /// Whether the vertical axis follows the curves; on after initPlot(), false before.
    bool autoScaleEnabled() const;
    /// Asks for the auto-scale to be switched off, by autoScaleEnabled(false), if it is on. It stays on until
    /// somebody calls setAutoScaleEnabled().
    void resetAutoScale();

    /// The colour of the tracker's text; invalid without a picker.
    QColor getTrackerColor() const;
    /// Colours rubber band (one pixel, solid) and tracker of the picker; an invalid colour gives black.
    /// Nothing happens without a picker, and where the tracker has that colour already.
    void setTrackerColor(const QColor& color);
    /// Shows the tracker whenever the cursor is over the canvas.
    void setTrackerMode();
    /// Hides the tracker.
    void resetTrackerMode();
    /// Shows the tracker, makes the rubber band a black cross, and gives the panner the cursor of a closed
    /// hand. To be called once the picker is set.
    void setCanvasObservers();

    /// Shows or hides the first attached grid. Does not replot.
    void setGridVisible(bool visible);
    /// Gives the first attached grid thick major and thin minor lines (true) or thin major ones
    /// alone, in both directions. Does not replot.
    void setGridEnabled(bool enabled);

    /// Chooses the labels of the horizontal axis anew, lays it out and paints it again; replots.
    void updateAxisWidgets();

    /// Whether the current quote has a label on the horizontal axis; off after construction. Does not replot.
    void setCurKotirEnabled(bool enabled);
    /// The price of that label; one outside the scale is not shown. Does not replot.
    void setCurKotirValue(double quote);

    /// Stores what the strikes span, as it is; the point manager does it. Nothing is recomputed or repainted.
    void setPriceInterval(const PriceInterval& interval);
    /// The interval that was stored last; the reset value after construction.
    PriceInterval priceInterval() const;
    /// The picker's price step; -1.0 while it is unknown or there is no picker.
    double priceStep() const;

    /// Whether a point, in pixels of the plot, lies on the horizontal scale.
    bool mousePositionOnXScale(const QPointF& position) const;
    /// Whether a point, in pixels of the plot, lies on the vertical scale.
    bool mousePositionOnYScale(const QPointF& position) const;
    /// Whether a point, in pixels of the plot, lies on either of the two.
    bool mousePositionOnScale(const QPointF& position) const;

    /// One half of an exact instrument; the base code is forgotten. An id below 1 is ignored. Nothing is
    /// recomputed or repainted, as with the other two setters of the instrument.
    void setIsinId(int id);
    /// The other half of an exact instrument; the base code is forgotten. An id below 1 is ignored.
    void setBoardId(int id);
    /// The future to plot is that of this base code with the earliest expiry; the ids are forgotten. An empty
    /// code is ignored.
    void setBaseCode(const QString& code);
    /// Empty while the instrument is an exact one or none.
    QString baseCode() const { return m_instrument.baseCode(); }

    /// The future to plot; a null record while neither way is complete or there is no such future.
    /// Throws Exception("Incorrect type conversion.") for a column of an unexpected type.
    Record getFuture() const;
    /// The security with this ISIN id on this board; a null record for ids below 1 and an unknown security.
    Record getVirtualFuture(int isinId, int boardId) const;
    /// The future of the base code with the earliest expiry, among those on an anonymous board that belong to
    /// a session; of equal ones the first in the table's order, a null record if there is none. Throws
    /// Exception("Incorrect type conversion.") for a column of an unexpected type.
    Record getMinimumDateExerciseFuture() const;
    /// The quote of a future: the one traded now, else the one shown now, else the one before, else the
    /// middle of the price interval. Zero for a null record and while the price interval has no width. Throws
    /// Exception("Incorrect type conversion.") for a quote that is no decimal.
    decimal getKotirFromFutureRecord(const Record& future) const;
    /// The bounds of a future's volatility, as fractions, at least 1e-5 and in ascending order; the host's
    /// defaults for what the record leaves null or zero, and for a record that is no future of the table.
    /// Throws Exception("Incorrect type conversion.") for a bound that is no number.
    std::pair<double, double> volatMinMax(const Record& future);

    /// The host's table "securities", which is not owned; null once the host has dropped it.
    Table* securitiesTable() const;
    /// Where the columns of that table stood at construction.
    const SecurityColumns& securityColumns() const { return m_columns; }

    /// The attached curves of a data type, in the plot's order, all of them for -1; the plot goes on owning
    /// them. A curve that refuses its own type is in the list of all only.
    QList<PriceBased2dPlotCurve*> attachedCurves(int type) const;
    /// New markers, squares in the colour of the curve's pen that no legend shows, attached to the plot and
    /// owned by it; none for a count below 1 or a null curve. The caller places them.
    QList<QwtPlotMarker*> createMarkers(int count, PriceBased2dPlotCurve* curve);
    /// The attached markers that carry a symbol, in the plot's order.
    QList<QwtPlotMarker*> attachedMarkers() const;

    /// Fits the vertical scale to minMaxYAtXRange() while auto-scale is on, otherwise only stretches the
    /// quote line; then replots and chooses the labels anew. An inverted range leaves scale and labels.
    /// Scales that were set before and wait for their replot are put in force first, so that the range is
    /// that of the prices to be seen.
    void updateYAxisScale();
    /// Sets the scale of yLeft or xBottom. Other axes, bounds that are not finite or inverted, and bounds and
    /// steps that Qwt cannot divide into a modest number of ticks are refused: the scale stays. A horizontal
    /// range without width is refused, a vertical one is widened by 1 to both sides, or refused where it is
    /// narrower than 1e-8 but not fuzzily empty. The quote line follows a vertical range, also one that the
    /// scale then refuses. Does not replot.
    void setAxisScale(int axis, double min, double max, double step);
    /// The price moved to the nearest multiple of the price step, halves upwards; unchanged while that is
    /// unknown or zero, and for a price too far off to be counted in steps.
    double roundedXValue(double x) const;
    /// The union of the bounding rectangles of the visible value curves (prices from left to right, values
    /// from top to bottom), valid or not; null if there is none.
    QRectF curvesRectangle() const;

    /// Whether the labels of an axis are converted: xBottom for the horizontal axis, any other for the
    /// vertical.
    bool conversionEnabled(int axis) const;
    /// The text that a price has as label of the horizontal axis; empty for one that is not finite.
    QString xAxisConvertedValue(double value) const;
    /// The unit behind the numbers of the horizontal axis.
    QString xAxisMetricUnit() const;
    /// The price on which the ticks of the horizontal axis are anchored, zero for none. Nothing is laid out
    /// or painted anew.
    void setRescaleFactor(const decimal& factor);

Q_SIGNALS:
    /// The wheel or a drag of the canvas has moved the scales: labels may be chosen anew. Sent after the
    /// move, once for each.
    void updateAxisLabels();
    /// The auto-scale should be switched, by the library always off: sent before the user moves the values,
    /// as long as it is on. Who listens calls setAutoScaleEnabled().
    void autoScaleEnabled(bool enable);

public Q_SLOTS:
    /// Shows or hides the first valid curve of this title and fits the vertical scale (only replots for the
    /// quote line). Serves legends only: a call that comes from no PriceBased2dPlotLegend's signal does
    /// nothing, nor does an empty or unknown title.
    void setCurveVisible(const QString& curveTitle, bool visible);
    /// Switches the auto-scale; the next updateYAxisScale() acts on it.
    void setAutoScaleEnabled(bool enable);
    /// Chooses the labels of both axes anew and replots. Scales that were set before and wait for their
    /// replot are put in force first, so that the labels are those of the scales to be seen.
    void updateScaleLabels();

protected:
    /// With the left button on a scale: a drag of that axis begins, and lasts until the next press.
    void mousePressEvent(QMouseEvent* event) override;
    /// A step of such a drag stretches or shrinks the axis, within the data; replots and chooses labels anew.
    /// One on the values emits autoScaleEnabled(false) before. A step that a scale would not take is none.
    void mouseMoveEvent(QMouseEvent* event) override;
    /// Zooms about the cursor; along the prices alone over their scale or with Control, along the values
    /// alone over theirs or with Shift. Emits autoScaleEnabled(false) before the values move and
    /// updateAxisLabels() after all. Nothing without a picker, and where a scale would not take its new
    /// range.
    void wheelEvent(QWheelEvent* event) override;

    /// Looks up the table "securities" and its columns; the constructor does it.
    void initSecColumns();
    /// Creates panner, scale engine and scale draws, which the plot owns, and gives the plot its look. To be
    /// called once.
    void initPlot();

private:
    SecurityColumns m_columns;
    QPointer<Table> m_securitiesTable;

protected:
    /// Set by the subclass, which creates it on the canvas; the canvas owns it.
    QPointer<PriceBased2dPlotPicker> m_picker;

private:
    QPointer<PriceBased2dPlotPanner> m_panner;

protected:
    /// The host's own object behind this plot, say the controller that feeds it; the library never uses it.
    /// It is here so that code which knows the plot alone finds its way back to the host, and guarded because
    /// the two may go in either order.
    QPointer<QObject> m_hostContext;

private:
    void construct(bool init);
    PriceBased2dPlotScaleDraw* xScaleDraw() const;
    PriceBased2dPlotScaleDraw* yScaleDraw() const;
    PriceBased2dPlotScaleEngine* scaleEngine() const;
    void setUpAxes();
    void setUpLook();

    bool m_zoomEnabled = true;
    QPointF m_pressPosition;
    QPointF m_dragPosition;
    PriceInterval m_priceInterval;
    SecurityDirectory* m_securityDirectory;
    InstrumentChoice m_instrument;
    bool m_hasPannerCursor = false;
};
