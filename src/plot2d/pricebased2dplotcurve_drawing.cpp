#include "plot2d/pricebased2dplotcurve.h"

#include "curvepainter_p.h"
#include "qtversions_p.h"
#include "sampleindex_p.h"
#include "sampleruns_p.h"

#include <qwt_symbol.h>

#include <algorithm>
#include <cmath>

namespace {

QVector<double> copied(const double* numbers, int count)
{
    QVector<double> copy(std::max(count, 0));
    std::copy(numbers, numbers + copy.size(), copy.begin());
    return copy;
}

}

const SampleIndex* PriceBased2dPlotCurve::sampleIndex() const
{
    if (!m_index || !m_index->describes(data()))
        m_index = SampleIndex::of(data());
    return m_index.get();
}

void PriceBased2dPlotCurve::dataChanged()
{
    m_index = SampleIndex::of(data());
    QwtPlotCurve::dataChanged();
}

void PriceBased2dPlotCurve::setSamples(const double* prices, const double* values, int count)
{
    setData(new QtVersions::PointArrays(copied(prices, count), copied(values, count)));
}

QRectF PriceBased2dPlotCurve::boundingRect() const
{
    const SampleIndex* const index = sampleIndex();
    return index && index->isFinite() ? index->boundingRectangle() : QwtPlotCurve::boundingRect();
}

bool PriceBased2dPlotCurve::isFilled() const
{
    return brush().style() != Qt::NoBrush && brush().color().alpha() > 0;
}

bool PriceBased2dPlotCurve::needsSeenSamplesOnly() const
{
    const bool reachesAcross = orientation() == Qt::Horizontal;
    switch (style()) {
    case Lines:
    case Steps:
        // Qwt cuts lines off at the canvas: dashes begin there, wherever the samples do.
        return testPaintAttribute(ClipPolygons) && !(reachesAcross && isFilled());
    case Sticks:
        return !reachesAcross;
    case Dots:
        // A fill goes along all dots, from Qwt 6.2 on also along those that are not seen.
        return !(reachesAcross && isFilled());
    case NoCurve:
        return true;
    default:
        return false;
    }
}

double PriceBased2dPlotCurve::reachOfASample() const
{
    // Of a symbol made of a path, a picture or a drawing the size says nothing, and its pin may lie anywhere.
    const QRect around = symbol() ? symbol()->boundingRect() : QRect();
    const double left = around.left();
    const double right = around.right();
    const double height = double(around.bottom()) - around.top() + 1.0;
    return 2.0 + std::max({-left, right, right - left + 1.0, height, std::ceil(pen().widthF())});
}

void PriceBased2dPlotCurve::drawSeries(QPainter* painter, const QwtScaleMap& xMap, const QwtScaleMap& yMap,
    const QRectF& canvasRect, int from, int to) const
{
    const int last = to < 0 ? static_cast<int>(dataSize()) - 1 : to;
    const SampleIndex* const index = sampleIndex();
    if (!index || from < 0 || last >= index->size() || from > last || xMap.transformation()
        || !needsSeenSamplesOnly()) {
        QwtPlotCurve::drawSeries(painter, xMap, yMap, canvasRect, from, to);
        return;
    }
    const double reach = reachOfASample();
    const CurveFolding::Stretch all{*index, xMap, yMap, from, last + 1};
    const CurveFolding::Stretch seen
        = all.seenBetween(wholePixel(canvasRect.left() - reach), wholePixel(canvasRect.right() + reach));
    // Qwt draws symbols in portions of so many samples, and those of a portion that fall together once.
    constexpr int portion = 500;
    const int begin = symbol() ? seen.begin - (seen.begin - from) % portion : seen.begin;
    QwtPlotCurve::drawSeries(painter, xMap, yMap, canvasRect, begin, seen.end - 1);
}

void PriceBased2dPlotCurve::drawLines(QPainter* painter, const QwtScaleMap& xMap, const QwtScaleMap& yMap,
    const QRectF& canvasRect, int from, int to) const
{
    const SampleIndex* const index = sampleIndex();
    const bool isPlain = !isFilled() && !(testCurveAttribute(Fitted) && curveFitter());
    if (index && isPlain
        && CurvePainter::draw(
            *painter, {*index, xMap, yMap, from, to + 1}, canvasRect, CurveFolding::Shape::Straight))
        return;
    SampleRuns::forEach(*data(), index, xMap, yMap, from, to + 1,
        [&](int first, int last) { QwtPlotCurve::drawLines(painter, xMap, yMap, canvasRect, first, last); });
}

void PriceBased2dPlotCurve::drawSteps(QPainter* painter, const QwtScaleMap& xMap, const QwtScaleMap& yMap,
    const QRectF& canvasRect, int from, int to) const
{
    const SampleIndex* const index = sampleIndex();
    const bool verticalFirst = (orientation() == Qt::Vertical) != testCurveAttribute(Inverted);
    const auto shape
        = verticalFirst ? CurveFolding::Shape::VerticalFirst : CurveFolding::Shape::HorizontalFirst;
    if (index && !isFilled()
        && CurvePainter::draw(*painter, {*index, xMap, yMap, from, to + 1}, canvasRect, shape))
        return;
    SampleRuns::forEach(*data(), index, xMap, yMap, from, to + 1,
        [&](int first, int last) { QwtPlotCurve::drawSteps(painter, xMap, yMap, canvasRect, first, last); });
}

void PriceBased2dPlotCurve::drawSticks(QPainter* painter, const QwtScaleMap& xMap, const QwtScaleMap& yMap,
    const QRectF& canvasRect, int from, int to) const
{
    const SampleIndex* const index = sampleIndex();
    if (index && orientation() == Qt::Vertical
        && CurvePainter::drawSticks(*painter, {*index, xMap, yMap, from, to + 1}, canvasRect, baseline()))
        return;
    SampleRuns::forEach(*data(), index, xMap, yMap, from, to + 1,
        [&](int first, int last) { QwtPlotCurve::drawSticks(painter, xMap, yMap, canvasRect, first, last); });
}

void PriceBased2dPlotCurve::drawDots(QPainter* painter, const QwtScaleMap& xMap, const QwtScaleMap& yMap,
    const QRectF& canvasRect, int from, int to) const
{
    SampleRuns::forEach(*data(), sampleIndex(), xMap, yMap, from, to + 1,
        [&](int first, int last) { QwtPlotCurve::drawDots(painter, xMap, yMap, canvasRect, first, last); });
}

void PriceBased2dPlotCurve::drawSymbols(QPainter* painter, const QwtSymbol& curveSymbol,
    const QwtScaleMap& xMap, const QwtScaleMap& yMap, const QRectF& canvasRect, int from, int to) const
{
    SampleRuns::forEach(*data(), sampleIndex(), xMap, yMap, from, to + 1, [&](int first, int last) {
        QwtPlotCurve::drawSymbols(painter, curveSymbol, xMap, yMap, canvasRect, first, last);
    });
}
