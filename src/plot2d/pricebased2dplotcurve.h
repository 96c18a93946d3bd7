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
    /// Price.
    double x = 0.0;
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
        bool isValid = false;
        bool isVisible = false;
        int dataType = 0;
    };

    static constexpr int quoteLineType = 0;
    static constexpr int markedType = 13;
    /// The colour that a valid quote line must have.
    static const QColor CurKotirCurveColor;

    /// A curve of a plot, which may be null: then it has neither markers nor a quote to show.
    PriceBased2dPlotCurve(PriceBased2dPlot* plot, const QString& title);
    PriceBased2dPlotCurve(PriceBased2dPlot* plot, const QwtText& title);
    ~PriceBased2dPlotCurve() override;

    /// Shows or hides the curve with all that belongs to it.
    ///
    /// The quote line takes the label of the quote on the price axis with it, and is shown only while the
    /// plot has a future whose quote is not negative; otherwise the call does nothing. A curve with marked
    /// points takes the plot's markers with it.
    void setVisible(bool on) override;

    /// Whether the curve can be scaled to, picked and shown in a legend: it has a title, samples with a
    /// bounding rectangle, a style, a visible line where the legend shows one, and a valid data type. A quote
    /// line must also be red, drawn as sticks, and of two samples.
    virtual bool isValid() const;

    /// Whether the type is one of 0 and 9 to 13.
    virtual bool isValidType(int type) const;

    /// Stores -1 and every valid type; any other is ignored.
    void setDataType(int type);
    int dataType() const { return m_dataType; }

    /// Replaces the samples of a curve of type 13 and puts the plot's markers on the marked ones, of which as
    /// many are made or deleted as needed. The markers are the plot's: of several such curves the last call
    /// wins. Nothing happens for another type or without a plot, and the samples stay when markers run out.
    void setMarkerSamples(const QVector<PriceBased2dPlotPoint>& points);

    using QwtPlotCurve::setSamples;
    /// As of the base class, which takes up to twice the memory that the copies need.
    void setSamples(const double* prices, const double* values, int count);

    /// The colour of the line (style Lines) or of the symbol's pen (style Dots); invalid for other styles.
    QColor getColor() const;

    /// Writes validity (bool), visibility (bool) and data type (32 bits).
    void write(QDataStream& stream) const;

    /// Reads what write() wrote; from a short or broken stream, whose status stays, it reads false, false and
    /// 0.
    static void read(QDataStream& stream, CurveParams& params);

    /// As of the base class, but for its rounding errors. Costs nothing for samples that are all finite.
    QRectF boundingRect() const override;

    /// Draws the samples that are seen. A sample that is not finite, or has no place in pixels, is a gap.
    void drawSeries(QPainter* painter, const QwtScaleMap& xMap, const QwtScaleMap& yMap,
        const QRectF& canvasRect, int from, int to) const override;

    /// What is known of the samples beforehand, as long as they stay as they are; null where the samples are
    /// of a class of the host's. For the library's own use.
    const SampleIndex* sampleIndex() const;

protected:
    void drawLines(QPainter* painter, const QwtScaleMap& xMap, const QwtScaleMap& yMap,
        const QRectF& canvasRect, int from, int to) const override;
    void drawSteps(QPainter* painter, const QwtScaleMap& xMap, const QwtScaleMap& yMap,
        const QRectF& canvasRect, int from, int to) const override;
    void drawSticks(QPainter* painter, const QwtScaleMap& xMap, const QwtScaleMap& yMap,
        const QRectF& canvasRect, int from, int to) const override;
    void drawDots(QPainter* painter, const QwtScaleMap& xMap, const QwtScaleMap& yMap,
        const QRectF& canvasRect, int from, int to) const override;
    void drawSymbols(QPainter* painter, const QwtSymbol& symbol, const QwtScaleMap& xMap,
        const QwtScaleMap& yMap, const QRectF& canvasRect, int from, int to) const override;
    void dataChanged() override;

private:
    bool showQuote();
    bool isFilled() const;
    bool needsSeenSamplesOnly() const;
    int reachOfASample() const;

    int m_dataType = -1;
    QPointer<PriceBased2dPlot> m_plot;
    mutable std::unique_ptr<SampleIndex> m_index;
    /// Whose weak pointers tell whether the curve has outlived a call.
    std::shared_ptr<const bool> m_life = std::make_shared<const bool>(true);
};
