#include "plot2d/pricebased2dplotscaledraw.h"

#include "labelthinning_p.h"
#include "plot2d/pricebased2dplotcurve.h"
#include "qtversions_p.h"
#include "scalerange_p.h"
#include "ticklabels_p.h"
#include "ticktext_p.h"

#include <QApplication>
#include <QPainter>
#include <QPalette>

#include <qwt_interval.h>
#include <qwt_plot.h>
#include <qwt_scale_map.h>
#include <qwt_text.h>

#include <algorithm>
#include <cmath>

namespace {

constexpr int marginOfPlainLabels = 8;
/// Converted labels are shorter, and may stand closer.
constexpr int marginOfConvertedLabels = 4;

}

PriceBased2dPlotScaleDraw::PriceBased2dPlotScaleDraw(int axis)
    : m_axis(axis)
    , m_font(QApplication::font())
    , m_labelMargin(marginOfPlainLabels)
{
}

PriceBased2dPlotScaleDraw::~PriceBased2dPlotScaleDraw() = default;

QwtText PriceBased2dPlotScaleDraw::label(double value) const
{
    return ScaleRange::isUsable(scaleDiv()) ? TickText::text(convertedValue(value)) : QwtText();
}

void PriceBased2dPlotScaleDraw::setCurKotirEnabled(bool enabled)
{
    m_quoteFlags = enabled ? m_quoteFlags | QuoteEnabled : m_quoteFlags & ~QuoteEnabled;
}

void PriceBased2dPlotScaleDraw::setCurKotirValue(double quote)
{
    m_quote = quote;
}

void PriceBased2dPlotScaleDraw::updateCurKotirStatus()
{
    const QwtInterval range = scaleDiv().interval();
    const bool inside = isCurKotirEnabled() && range.minValue() < m_quote && m_quote < range.maxValue();
    m_quoteFlags = inside ? m_quoteFlags | QuoteInside : m_quoteFlags & ~QuoteInside;
}

void PriceBased2dPlotScaleDraw::updateCurKotirIndex(const QList<double>& ticks)
{
    m_quoteIndex = LabelThinning::quoteIndex(ticks, m_quote);
}

QList<double> PriceBased2dPlotScaleDraw::getTicks(const QwtScaleDiv& division) const
{
    if (!ScaleRange::isUsable(division))
        return QList<double>();
    return TickLabels::candidates(
        division.ticks(QwtScaleDiv::MajorTick), division.ticks(QwtScaleDiv::MediumTick));
}

void PriceBased2dPlotScaleDraw::setEqualDigitsNum()
{
    m_equalDigits = -1;
    if (const std::optional<int> digits = TickLabels::equalDigits(m_labelTicks)) {
        invalidateCache();
        m_equalDigits = *digits;
    }
}

int PriceBased2dPlotScaleDraw::findEqualDigitsInIntegerPart(long long a, long long b, int n)
{
    return TickLabels::equalDigitsInIntegerPart(a, b, n);
}

int PriceBased2dPlotScaleDraw::findEqualDigitsInFractionPart(double a, double b)
{
    return TickLabels::equalDigitsInFractionPart(a, b);
}

int PriceBased2dPlotScaleDraw::maxFractionLength() const
{
    return TickLabels::maxFractionLength(getTicks(scaleDiv()), m_equalDigits);
}

int PriceBased2dPlotScaleDraw::maxLabelWidth(const QFont& font) const
{
    const QList<double> ticks = getTicks(scaleDiv());
    if (ticks.isEmpty())
        return QwtScaleDraw::maxLabelWidth(font);
    double width = 0.0;
    for (const double tick : ticks) {
        if (scaleDiv().contains(tick))
            width = std::max(width, labelSize(font, tick).width());
    }
    return static_cast<int>(std::ceil(width));
}

double PriceBased2dPlotScaleDraw::extent(const QFont& font) const
{
    double sum = 0.0;
    if (hasComponent(Labels)) {
        sum = orientation() == Qt::Vertical ? maxLabelWidth(font) : maxLabelHeight(font);
        if (sum > 0.0)
            sum += spacing();
    }
    if (hasComponent(Ticks))
        sum += maxTickLength();
    if (hasComponent(Backbone))
        sum += std::max(1.0, QtVersions::penWidthOf(*this));
    return std::max(sum, minimumExtent());
}

QRect PriceBased2dPlotScaleDraw::tickLabelBoundingRect(double value) const
{
    // Beyond this many pixels Qt's rectangles of integers overflow.
    constexpr double farOffScreen = 1e8;
    if (!(std::abs(value) <= TickLabels::largestValue)
        || !(std::abs(scaleMap().transform(value)) <= farOffScreen))
        return QRect();

    const QRect rectangle = boundingLabelRect(m_font, value);
    if (!rectangle.isValid())
        return rectangle;
    const int half = m_labelMargin / 2;
    return rectangle.adjusted(-half, -half, half, half);
}

QList<QRect> PriceBased2dPlotScaleDraw::getBoundingRects(const QList<double>& ticks) const
{
    QList<QRect> rectangles;
    rectangles.reserve(ticks.size());
    for (const double tick : ticks)
        rectangles.append(tickLabelBoundingRect(tick));
    return rectangles;
}

std::pair<double, double> PriceBased2dPlotScaleDraw::getIntersectedPair(
    const QRect& first, const QRect& second, double a, double b) const
{
    return LabelThinning::intersectedPair(first, second, a, b);
}

QList<std::pair<double, double>> PriceBased2dPlotScaleDraw::overlappedLabels(const QList<double>& ticks) const
{
    return LabelThinning::overlaps(ticks, getBoundingRects(ticks),
        {m_quote, m_quoteIndex, isCurKotirEnabled() && isCurKotirInside()}, tickLabelBoundingRect(m_quote));
}

bool PriceBased2dPlotScaleDraw::removeOneTick(
    const std::pair<double, double>& overlap, QList<double>& ticks) const
{
    return LabelThinning::removeNeighbourOfQuote(
        overlap, {m_quote, m_quoteIndex, isCurKotirEnabled() && isCurKotirInside()}, ticks);
}

void PriceBased2dPlotScaleDraw::updateLabels()
{
    m_labelTicks.clear();
    m_quoteIndex = -1;
    m_equalDigits = -1;

    const QList<double> candidates = getTicks(scaleDiv());
    if (candidates.isEmpty())
        return;
    updateCurKotirStatus();
    updateCurKotirIndex(candidates);
    if (isCurKotirEnabled() && m_quoteIndex < 0)
        return;

    m_labelTicks = candidates;
    setEqualDigitsNum();
    if (!m_paintedOnce)
        return;

    m_labelMargin = isConversionEnabled() ? marginOfConvertedLabels : marginOfPlainLabels;
    const LabelThinning::Result thinned = LabelThinning::thinned(candidates,
        {m_quote, m_quoteIndex, isCurKotirEnabled() && isCurKotirInside()},
        [this](double value) { return tickLabelBoundingRect(value); });
    if (thinned.ticks.size() == candidates.size())
        return;
    m_labelTicks = thinned.ticks;
    m_quoteIndex = thinned.quoteIndex;
    setEqualDigitsNum();
}

bool PriceBased2dPlotScaleDraw::ticksShrinked(const QwtScaleDiv& division) const
{
    QList<double> ticks = m_labelTicks;
    if (division.isEmpty())
        ticks = getTicks(scaleDiv());
    else if (m_axis == QwtPlot::yLeft)
        ticks = getTicks(division);
    return TickLabels::readTheSame(ticks, [this](double value) { return convertedValue(value); });
}

void PriceBased2dPlotScaleDraw::draw(QPainter* painter, const QPalette& palette) const
{
    painter->save();
    QPen pen = painter->pen();
    pen.setWidthF(QtVersions::penWidthOf(*this));
    pen.setCosmetic(false);

    if (hasComponent(Labels))
        drawLabels(painter, palette);
    // Each in a state of its own: what an overridden drawTick() leaves in the painter ends with the ticks.
    pen.setColor(palette.color(QPalette::WindowText));
    pen.setCapStyle(Qt::FlatCap);
    if (hasComponent(Ticks)) {
        painter->save();
        painter->setPen(pen);
        drawTicks(painter);
        painter->restore();
    }
    if (hasComponent(Backbone)) {
        painter->save();
        painter->setPen(pen);
        drawBackbone(painter);
        painter->restore();
    }
    painter->restore();
}

void PriceBased2dPlotScaleDraw::drawLabels(QPainter* painter, const QPalette& palette) const
{
    painter->save();
    painter->setPen(palette.brush(QPalette::Current, QPalette::Text).color());
    std::stable_sort(m_labelTicks.begin(), m_labelTicks.end());
    for (const double tick : qAsConst(m_labelTicks))
        drawTickLabel(painter, palette, tick);
    // The quote's label needs no tick under it.
    if (m_quoteFlags != 0)
        drawTickLabel(painter, palette, m_quote);
    painter->restore();
}

void PriceBased2dPlotScaleDraw::drawTicks(QPainter* painter) const
{
    for (const auto type : {QwtScaleDiv::MinorTick, QwtScaleDiv::MediumTick, QwtScaleDiv::MajorTick}) {
        const QList<double> ticks = scaleDiv().ticks(type);
        for (const double tick : ticks) {
            if (scaleDiv().contains(tick))
                drawTick(painter, tick, tickLength(type));
        }
    }
}

void PriceBased2dPlotScaleDraw::drawTickLabel(QPainter* painter, const QPalette& palette, double value) const
{
    if (!painter || !scaleDiv().contains(value))
        return;
    const bool isQuote = m_quoteFlags != 0 && value == m_quote;
    painter->setPen(isQuote ? PriceBased2dPlotCurve::CurKotirCurveColor
                            : palette.brush(QPalette::Current, QPalette::Text).color());
    drawLabel(painter, value);
}
