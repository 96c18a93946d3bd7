#pragma once

#include "plot2d/pricebased2dplotconverter.h"

#include <QFont>
#include <QList>
#include <QRect>

#include <qwt_scale_draw.h>

#include <utility>

/// Draws an axis of a plot: its ticks, those labels that fit side by side, and the red label of the current
/// quote.
///
/// Which ticks keep a label is decided by updateLabels(), whenever the scale has changed and somebody asks
/// for it. Nothing here repaints: the axis's widget does, when the plot says so.
class PLOT2D_EXPORT PriceBased2dPlotScaleDraw : public QwtScaleDraw,
                                                public virtual PriceBased2dPlotConverter {
public:
    /// For an axis: QwtPlot::xBottom or QwtPlot::yLeft. Labels are measured with the application's font of
    /// this moment.
    explicit PriceBased2dPlotScaleDraw(int axis);
    ~PriceBased2dPlotScaleDraw() override;

    /// Draws labels, the quote's label in red (until the next updateLabels() also once it is switched off),
    /// all ticks (also those whose label was thinned away) and the backbone.
    void draw(QPainter* painter, const QPalette& palette) const override;

    /// The label's text, by convertedValue(); empty while the scale is empty or its interval is not valid.
    /// Plain texts come in a format of the library's own, which looks like Qwt's plain one and remembers the
    /// sizes of texts.
    QwtText label(double value) const override;

    /// The pixels that labels, ticks and backbone need across the axis: as Qwt's, with maxLabelWidth() of
    /// this class.
    double extent(const QFont& font) const override;

    /// Chooses anew which ticks carry a label. Before the axis was painted once all candidates do; from then
    /// on overlapping labels are thinned around the current quote. None does while the quote is switched on
    /// without a price above zero.
    virtual void updateLabels();

    /// Switches the label of the current quote; off after construction.
    void setCurKotirEnabled(bool enabled);
    /// Whether the label of the quote is switched on.
    bool isCurKotirEnabled() const { return (m_quoteFlags & QuoteEnabled) != 0; }
    /// Whether the quote lay strictly inside the scale at the last updateCurKotirStatus(), while it was
    /// switched on.
    bool isCurKotirInside() const { return (m_quoteFlags & QuoteInside) != 0; }
    /// Finds out whether the quote lies strictly inside the scale; updateLabels() does it.
    void updateCurKotirStatus();

    /// The price of the current quote; -1.0 after construction. One that is not finite lies on no scale.
    void setCurKotirValue(double quote);
    /// The price of the current quote as it was set.
    double curKotirValue() const { return m_quote; }

    /// Looks up how many of the ticks (ascending) lie below the quote; -1 for a quote of 0 or less.
    void updateCurKotirIndex(const QList<double>& ticks);
    /// The number of label ticks below the quote, -1 while that is unknown.
    int curKotirIndex() const { return m_quoteIndex; }

    /// Tells that the axis is being painted for the first time, from when on labels are thinned; the plot
    /// does.
    void setPaintedOnce() { m_paintedOnce = true; }
    /// Whether the axis was painted once.
    bool isPaintedOnce() const { return m_paintedOnce; }

    /// The ticks that carry a label, ascending.
    QList<double> labelTicks() const { return m_labelTicks; }
    /// Pixels around a label, half of them on each side: 4 with a conversion, 8 without (by the last
    /// updateLabels()).
    int labelMargin() const { return m_labelMargin; }
    /// The number of leading digits that neighbouring labels share; -1 where it cannot be told.
    int equalDigits() const { return m_equalDigits; }

    /// The ticks of a division that may carry a label: major ones, and medium ones off them. Empty for an
    /// empty division.
    QList<double> getTicks(const QwtScaleDiv& division) const;

    /// Finds the equal digits of the label ticks, and drops the cached labels where there is an answer.
    void setEqualDigitsNum();
    /// The number of leading digits that two non-negative integers of n digits share: 3 for 1234 and 1238. 0
    /// for equal integers and n of 1; -1 for a negative integer, one beyond 1e16, and n outside 1 to 16.
    int findEqualDigitsInIntegerPart(long long a, long long b, int n);
    /// The number of leading fraction digits, at most 10, that two values share: 2 for 12.345 and 12.349. -1
    /// unless the first is less than the second, and for values beyond 1e16.
    int findEqualDigitsInFractionPart(double a, double b);

    /// The number of fraction digits that the labels need, for hosts that shorten them: three more than those
    /// that neighbours share, at most 10, without zeros at the end. 0 while equalDigits() is unknown.
    int maxFractionLength() const;

    /// The width in pixels of the widest label among the candidates inside the scale, rounded up; Qwt's
    /// answer without candidates.
    int maxLabelWidth(const QFont& font) const;

    /// The rectangle of a label with its margin, in pixels of the axis's widget; a null one beyond 1e16
    /// and where the place is far off any screen.
    QRect tickLabelBoundingRect(double value) const;
    /// The rectangle of the label of each tick.
    QList<QRect> getBoundingRects(const QList<double>& ticks) const;

    /// (a, b) where both rectangles are valid and intersect, (1.0, -1.0) otherwise.
    std::pair<double, double> getIntersectedPair(
        const QRect& first, const QRect& second, double a, double b) const;

    /// The neighbours among the ticks, the quote included, whose labels overlap.
    QList<std::pair<double, double>> overlappedLabels(const QList<double>& ticks) const;

    /// Takes the tick that overlaps the quote's label out of the ticks (ascending), if that label is drawn;
    /// false where nothing was taken.
    bool removeOneTick(const std::pair<double, double>& overlap, QList<double>& ticks) const;

    /// Whether a division has become finer than its labels can show: all labelled neighbours read the same,
    /// or are closer than 1e-8. An empty division asks about the current one.
    bool ticksShrinked(const QwtScaleDiv& division) const;

    /// Draws one label, red at the current quote; nothing outside the scale and without a painter.
    void drawTickLabel(QPainter* painter, const QPalette& palette, double value) const;

    using QwtAbstractScaleDraw::invalidateCache;

private:
    enum QuoteFlag { QuoteEnabled = 1, QuoteInside = 2 };

    void drawLabels(QPainter* painter, const QPalette& palette) const;
    void drawTicks(QPainter* painter) const;

    int m_axis;
    mutable QList<double> m_labelTicks;
    QFont m_font;
    int m_labelMargin;
    bool m_paintedOnce = false;
    int m_quoteFlags = 0;
    double m_quote = -1.0;
    int m_quoteIndex = -1;
    int m_equalDigits = -1;
};
