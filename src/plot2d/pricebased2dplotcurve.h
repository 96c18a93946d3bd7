#pragma once

#include "plot2d/plot2dexport.h"

#include <QColor>
#include <QPointer>
#include <QVector>

#include <qwt_plot_curve.h>

#include <memory>

class PriceBased2dPlot;
class QDataStream;
class SampleIndex;

/// One sample of a curve with marked points.
struct PriceBased2dPlotPoint {
    /// Its price.
    double x = 0.0;
    /// Its value.
    double y = 0.0;
    /// Whether the point carries a marker.
    bool marked = false;
};

/// A curve of values over prices.
///
/// Its data type says what it shows: -1 nothing yet, 0 the line at the current quote, 9 to 12 values that the
/// host computes, 13 such values with markers on some points. The constructors do not attach the curve: the
/// host does, once it is ready.
class PLOT2D_EXPORT PriceBased2dPlotCurve : public QwtPlotCurve {
public:
    /// What a curve writes of itself, and what read() finds.
    struct CurveParams {
        /// What PriceBased2dPlotCurve::isValid() said.
        bool isValid = false;
        /// Whether the curve was shown.
        bool isVisible = false;
        /// What the curve shows, by its data type.
        int dataType = 0;
    };

    /// The data type of the line at the current quote.
    static constexpr int quoteLineType = 0;
    /// The data type of values with markers on some points.
    static constexpr int markedType = 13;
    /// The colour that a valid quote line must have: red.
    static const QColor CurKotirCurveColor;

    /// A curve of a plot, which does not own it before it is attached, and may be null: then it has neither
    /// markers nor a quote to show. Its data type is -1.
    PriceBased2dPlotCurve(PriceBased2dPlot* plot, const QString& title);
    /// The same with a formatted title.
    PriceBased2dPlotCurve(PriceBased2dPlot* plot, const QwtText& title);
    ~PriceBased2dPlotCurve() override;

    /// Shows or hides the curve with all that belongs to it.
    ///
    /// The quote line takes the label of the quote on the price axis with it, and is shown only while the
    /// plot has a future whose quote is not negative; otherwise the call does nothing. The plot chooses the
    /// labels of that axis anew and replots. Throws what
    /// PriceBased2dPlot::getFuture() and getKotirFromFutureRecord() throw.
    ///
    /// A curve with marked points takes the plot's markers with it. That, and any other curve, is seen at the
    /// next replot.
    void setVisible(bool on) override;

    /// Whether the curve can be scaled to, picked and shown in a legend: it has a title, samples with a
    /// bounding rectangle, a style of lines, sticks, steps or dots, and a valid data type; and the legend
    /// shows its line (QwtPlotCurve::LegendShowLine, with a pen that draws in a valid colour) or its symbol
    /// (QwtPlotCurve::LegendShowSymbol). A quote line must also be red, drawn as sticks, and of two samples.
    virtual bool isValid() const;

    /// Whether the type is one of 0 and 9 to 13. A derived class may know others.
    virtual bool isValidType(int type) const;

    /// Stores -1 and every valid type; any other is ignored. Nothing is repainted.
    void setDataType(int type);
    /// What the curve shows; -1 after construction.
    int dataType() const { return m_dataType; }

    /// Replaces the samples of a curve of type 13 and puts the plot's markers on the marked ones, of which as
    /// many are made or deleted as needed. The markers are the plot's: of several such curves the last call
    /// wins. Nothing happens for another type or without a plot, and the samples stay when markers run out.
    /// Does not replot.
    void setMarkerSamples(const QVector<PriceBased2dPlotPoint>& points);

    using QwtPlotCurve::setSamples;
    /// Copies so many prices and values, none for a negative count; as of the base class, which takes up to
    /// twice the memory that the copies need.
    void setSamples(const double* prices, const double* values, int count);

    /// The colour of the line (style Lines) or of the symbol's pen (style Dots); invalid for other styles and
    /// for dots without a symbol.
    QColor getColor() const;

    /// Writes validity (bool), visibility (bool) and data type (32 bits, signed).
    void write(QDataStream& stream) const;

    /// Reads what write() wrote; from a short or broken stream, whose status stays, it reads false, false and
    /// 0.
    static void read(QDataStream& stream, CurveParams& params);

    /// The range of the samples, prices from left to right and values from top to bottom, invalid without
    /// samples: as of the base class, but for its rounding errors. Costs nothing for samples that are all
    /// finite.
    QRectF boundingRect() const override;

    /// Draws those of the samples from the one index to the other (inclusive; -1 for the last) that are seen.
    /// A sample that is not finite, or has no place in pixels, is a gap.
    void drawSeries(QPainter* painter, const QwtScaleMap& xMap, const QwtScaleMap& yMap,
        const QRectF& canvasRect, int from, int to) const override;

    /// What is known of the samples beforehand, as long as they stay as they are; null where the samples are
    /// of a class of the host's. For the library's own use.
    const SampleIndex* sampleIndex() const;

protected:
    /// Draws a stretch of samples (inclusive) as lines, in time that goes with the pixels and not with the
    /// samples where the pen allows that.
    void drawLines(QPainter* painter, const QwtScaleMap& xMap, const QwtScaleMap& yMap,
        const QRectF& canvasRect, int from, int to) const override;
    /// The same as steps.
    void drawSteps(QPainter* painter, const QwtScaleMap& xMap, const QwtScaleMap& yMap,
        const QRectF& canvasRect, int from, int to) const override;
    /// The same as sticks from the baseline.
    void drawSticks(QPainter* painter, const QwtScaleMap& xMap, const QwtScaleMap& yMap,
        const QRectF& canvasRect, int from, int to) const override;
    /// The same as dots.
    void drawDots(QPainter* painter, const QwtScaleMap& xMap, const QwtScaleMap& yMap,
        const QRectF& canvasRect, int from, int to) const override;
    /// The same as symbols.
    void drawSymbols(QPainter* painter, const QwtSymbol& symbol, const QwtScaleMap& xMap,
        const QwtScaleMap& yMap, const QRectF& canvasRect, int from, int to) const override;
    /// Indexes the samples anew.
    void dataChanged() override;

private:
    bool showQuote();
    bool isFilled() const;
    bool needsSeenSamplesOnly() const;
    double reachOfASample() const;

    int m_dataType = -1;
    QPointer<PriceBased2dPlot> m_plot;
    mutable std::unique_ptr<SampleIndex> m_index;
    /// Whose weak pointers tell whether the curve has outlived a call.
    std::shared_ptr<const bool> m_life = std::make_shared<const bool>(true);
};
