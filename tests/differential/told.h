#pragma once

#include <QList>
#include <QRect>
#include <QRectF>
#include <QString>
#include <QStringList>
#include <QVector>

#include <cmath>
#include <optional>
#include <utility>

/// Values in full for the message of a difference, and whether two of them are the same.
namespace Differential {

inline QString told(double value)
{
    return QString::number(value, 'g', 17);
}
inline QString told(int value)
{
    return QString::number(value);
}
inline QString told(long long value)
{
    return QString::number(value);
}
inline QString told(bool value)
{
    return value ? QStringLiteral("yes") : QStringLiteral("no");
}
inline QString told(const QString& value)
{
    return QLatin1Char('"') + value + QLatin1Char('"');
}
inline QString told(const QPointF& value)
{
    return QStringLiteral("(%1; %2)").arg(told(value.x()), told(value.y()));
}
inline QString told(const QRect& value)
{
    return QStringLiteral("[%1..%2 x %3..%4]")
        .arg(value.left())
        .arg(value.right())
        .arg(value.top())
        .arg(value.bottom());
}
inline QString told(const QRectF& value)
{
    return QStringLiteral("[left %1, top %2, width %3, height %4]")
        .arg(told(value.left()), told(value.top()), told(value.width()), told(value.height()));
}
template <class T, class U> QString told(const std::pair<T, U>& value)
{
    return QStringLiteral("(%1; %2)").arg(told(value.first), told(value.second));
}
template <class T> QString told(const std::optional<T>& value)
{
    return value ? told(*value) : QStringLiteral("nothing");
}
template <class List> QString toldList(const List& values)
{
    QStringList texts;
    for (const auto& value : values)
        texts << told(value);
    return QLatin1Char('{') + texts.join(QStringLiteral(", ")) + QLatin1Char('}');
}
template <class T> QString told(const QList<T>& values)
{
    return toldList(values);
}
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0) // A vector is a list from then on.
template <class T> QString told(const QVector<T>& values)
{
    return toldList(values);
}
#endif
inline QString told(const QStringList& values)
{
    return toldList(values);
}

/// Exactly equal; all NaN are the same, and so are both zeros.
inline bool same(double a, double b)
{
    return a == b || (std::isnan(a) && std::isnan(b));
}
inline bool same(const QPointF& a, const QPointF& b)
{
    return same(a.x(), b.x()) && same(a.y(), b.y());
}
inline bool same(const QRectF& a, const QRectF& b)
{
    return same(a.left(), b.left()) && same(a.top(), b.top()) && same(a.width(), b.width())
        && same(a.height(), b.height());
}
template <class T> bool same(const T& a, const T& b)
{
    return a == b;
}
template <class T, class U> bool same(const std::pair<T, U>& a, const std::pair<T, U>& b)
{
    return same(a.first, b.first) && same(a.second, b.second);
}
template <class T> bool same(const std::optional<T>& a, const std::optional<T>& b)
{
    return a.has_value() == b.has_value() && (!a || same(*a, *b));
}
template <class T> bool same(const QList<T>& a, const QList<T>& b)
{
    bool equal = a.size() == b.size();
    for (int i = 0; equal && i < a.size(); ++i)
        equal = same(a[i], b[i]);
    return equal;
}
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
template <class T> bool same(const QVector<T>& a, const QVector<T>& b)
{
    bool equal = a.size() == b.size();
    for (int i = 0; equal && i < a.size(); ++i)
        equal = same(a[i], b[i]);
    return equal;
}
#endif

/// Whether two numbers differ by no more than rounding, for results that come by way of pixels.
inline bool isNear(double a, double b, double scale)
{
    return same(a, b) || std::abs(a - b) <= 1e-9 * scale;
}

}
