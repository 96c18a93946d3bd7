#include "position/breakevens.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace Position {

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

double snapped(double value, double rounding)
{
    return std::abs(value) <= rounding ? 0.0 : value;
}

// Adjacent ones become one.
void append(QVector<BreakEven>* found, const BreakEven& next)
{
    if (!found->isEmpty() && next.low <= found->last().high)
        found->last().high = std::max(found->last().high, next.high);
    else
        found->append(next);
}

void appendPoint(QVector<BreakEven>* found, double price)
{
    append(found, {price, price});
}

double crossing(const QPointF& a, const QPointF& b)
{
    const double price = a.x() + (b.x() - a.x()) * (a.y() / (a.y() - b.y()));
    return std::clamp(price, a.x(), b.x());
}

bool areApart(double a, double b)
{
    return (a < 0.0 && b > 0.0) || (a > 0.0 && b < 0.0);
}

void appendTail(const QPointF& last, double slope, QVector<BreakEven>* found)
{
    if (last.y() == 0.0 && slope == 0.0)
        append(found, {last.x(), infinity});
    if (!areApart(last.y(), slope))
        return;
    const double price = last.x() - last.y() / slope;
    if (std::isfinite(price))
        appendPoint(found, price);
}

double bisected(const std::function<double(double)>& at, double low, double high)
{
    const bool rises = at(low) < 0.0;
    constexpr int most = 200;
    for (int i = 0; i < most; ++i) {
        const double middle = low + (high - low) / 2.0;
        if (middle <= low || middle >= high)
            break;
        const double value = at(middle);
        if (value == 0.0)
            return middle;
        ((value < 0.0) == rises ? low : high) = middle;
    }
    return low + (high - low) / 2.0;
}

// The price between two others where the profit comes closest to zero from one side, by golden sections.
double closestToZero(const std::function<double(double)>& at, double low, double high)
{
    constexpr double golden = 0.6180339887498949;
    constexpr int sections = 60;
    double left = high - golden * (high - low);
    double right = low + golden * (high - low);
    const double sign = at(left) < 0.0 ? -1.0 : 1.0;
    double atLeft = sign * at(left);
    double atRight = sign * at(right);
    for (int i = 0; i < sections; ++i) {
        if (atLeft < atRight) {
            high = right;
            right = left;
            atRight = atLeft;
            left = high - golden * (high - low);
            atLeft = sign * at(left);
        } else {
            low = left;
            left = right;
            atLeft = atRight;
            right = low + golden * (high - low);
            atRight = sign * at(right);
        }
    }
    return atLeft < atRight ? left : right;
}

// Evenly spaced around the centres, evenly in the logarithm far from them.
QVector<double> searchedPrices(const QVector<double>& centres)
{
    constexpr int near = 1500;
    constexpr int far = 250;
    constexpr double nearby = 4.0;
    constexpr double faraway = 1e4;
    const auto [least, greatest] = std::minmax_element(centres.begin(), centres.end());
    const double low = *least / nearby;
    const double high = *greatest * nearby;
    QVector<double> prices = centres;
    for (int i = 0; i <= near; ++i)
        prices.append(low + (high - low) * i / near);
    for (int i = 1; i <= far; ++i) {
        const double factor = std::pow(faraway, static_cast<double>(i) / far);
        prices.append(low / factor);
        prices.append(high * factor);
    }
    std::sort(prices.begin(), prices.end());
    prices.erase(std::unique(prices.begin(), prices.end()), prices.end());
    return prices;
}

QVector<QPointF> sampled(const CurvedProfit& profit)
{
    QVector<QPointF> samples;
    const QVector<double> prices = searchedPrices(profit.centres);
    samples.reserve(prices.size());
    for (const double price : prices)
        samples.append({price, snapped(profit.at(price), profit.rounding)});
    return samples;
}

// Where a profit comes near to zero between its neighbours without crossing it at a sample.
void appendTouches(
    const CurvedProfit& profit, const QPointF& a, const QPointF& b, const QPointF& c, QVector<double>* roots)
{
    const bool turns = std::abs(b.y()) <= std::abs(a.y()) && std::abs(b.y()) < std::abs(c.y());
    if (!turns || a.y() * b.y() <= 0.0 || b.y() * c.y() <= 0.0)
        return;
    const double price = closestToZero(profit.at, a.x(), c.x());
    const double value = snapped(profit.at(price), profit.rounding);
    if (value == 0.0)
        roots->append(price);
    if (!areApart(value, b.y()))
        return;
    roots->append(bisected(profit.at, a.x(), price));
    roots->append(bisected(profit.at, price, c.x()));
}

}

QVector<BreakEven> breakEvens(const PolygonProfit& profit)
{
    QVector<BreakEven> found;
    if (profit.points.isEmpty())
        return found;
    QVector<QPointF> points = profit.points;
    for (QPointF& point : points)
        point.setY(snapped(point.y(), profit.rounding));
    for (int i = 0; i < points.size(); ++i) {
        if (points[i].y() == 0.0)
            appendPoint(&found, points[i].x());
        if (i + 1 == points.size())
            break;
        if (points[i].y() == 0.0 && points[i + 1].y() == 0.0)
            append(&found, {points[i].x(), points[i + 1].x()});
        if (areApart(points[i].y(), points[i + 1].y()))
            appendPoint(&found, crossing(points[i], points[i + 1]));
    }
    appendTail(points.last(), snapped(profit.lastSlope, profit.slopeRounding), &found);
    return found;
}

QVector<BreakEven> breakEvens(const CurvedProfit& profit)
{
    QVector<BreakEven> found;
    if (profit.centres.isEmpty())
        return found;
    const QVector<QPointF> samples = sampled(profit);
    for (int i = 0; i + 1 < samples.size(); ++i) {
        const QPointF& a = samples[i];
        const QPointF& b = samples[i + 1];
        if (a.y() == 0.0)
            append(&found, {a.x(), b.y() == 0.0 ? b.x() : a.x()});
        QVector<double> roots;
        if (areApart(a.y(), b.y()))
            roots.append(bisected(profit.at, a.x(), b.x()));
        if (i > 0)
            appendTouches(profit, samples[i - 1], a, b, &roots);
        for (const double root : qAsConst(roots))
            appendPoint(&found, root);
    }
    if (samples.last().y() == 0.0)
        appendPoint(&found, samples.last().x());
    appendTail(samples.last(), profit.lastSlope, &found);
    return found;
}

}
