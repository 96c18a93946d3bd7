#pragma once

#include <plot2d/pricebased2dplotpicker.h>

#include <QPointF>
#include <QRectF>
#include <QVector>

#include <utility>

/// The answers about samples that an index is to give, found by looking at one sample after the other.
namespace PlainAnswers {

/// Two NaN are the same.
bool isSame(double a, double b);

/// The samples before the first one that is not finite.
int finiteCount(const QVector<QPointF>& samples);
bool isAscending(const QVector<QPointF>& samples);
QRectF boundingRectangle(const QVector<QPointF>& samples);
int lowerBound(const QVector<QPointF>& samples, double price);
int upperBound(const QVector<QPointF>& samples, double price);

/// The lowest and the highest value from begin up to, but without, end; infinite and inverted for none.
std::pair<double, double> bounds(const QVector<QPointF>& samples, int begin, int end);

/// The range of the values from x1 up to x2 of a curve alone, as the vertical auto-scale asks for it.
std::pair<double, double> valueRange(const QVector<QPointF>& samples, double x1, double x2);

/// The first of the nearest visible samples.
ClosestPointParams closestPoint(const QVector<QPointF>& samples, const ClosestPointCalcParams& params);

}

/// Gives a curve samples as two arrays.
void setAsArrays(PriceBased2dPlotCurve& curve, const QVector<QPointF>& samples);
