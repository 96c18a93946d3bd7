#pragma once

#include <QColor>
#include <QList>
#include <QPointF>
#include <QRectF>
#include <QString>
#include <QVector>

#include <utility>

namespace Plain {

/// How a curve is drawn.
enum class Line { None, Lines, Sticks, Steps, Dots };

/// What decides about a curve.
struct Curve {
    int type = -1;
    bool visible = true;
    QString title;
    QVector<QPointF> samples;
    Line line = Line::Lines;
    bool legendShowsLine = true;
    bool legendShowsSymbol = false;
    bool hasPen = true;
    QColor color = Qt::black;

    bool isQuoteLine() const { return type == 0; }
    bool isValid() const;
    /// Of samples that are all finite: of such a width that the left side and it give the right one.
    QRectF rectangle() const;
};

/// 0 and 9 to 13.
bool isCurveType(int type);
/// The type that is left when another one was asked for.
int typeAfter(int type, int wanted);

using Range = std::pair<double, double>;

/// The lowest and the highest value between two prices.
Range valuesBetween(const QList<Curve>& curves, double x1, double x2);

/// The rectangle around the visible value curves that have samples.
QRectF rectangleAround(const QList<Curve>& curves);

}
