#include "monkey/steps.h"

namespace Monkey {

namespace {

QString word(double value)
{
    return QString::number(value, 'g', 17);
}

QString word(int value)
{
    return QString::number(value);
}

QString word(bool value)
{
    return value ? QStringLiteral("on") : QStringLiteral("off");
}

QString word(const QString& value)
{
    return QLatin1Char('"') + value + QLatin1Char('"');
}

QString word(const QStringList& value)
{
    return word(value.join(QStringLiteral("\", \"")));
}

QString word(Qt::MouseButton value)
{
    return QStringLiteral("button %1").arg(static_cast<int>(value));
}

QString word(const QPoint& value)
{
    return QStringLiteral("(%1, %2)").arg(value.x()).arg(value.y());
}

QString word(const QPointF& value)
{
    return QLatin1Char('(') + word(value.x()) + QStringLiteral(", ") + word(value.y()) + QLatin1Char(')');
}

QString word(const Place& value)
{
    static const char* const areas[] = {"canvas", "prices", "values", "legend", "window", "outside"};
    return QString::fromLatin1(areas[static_cast<int>(value.area)]) + QLatin1Char(' ')
        + word(QPointF(value.across, value.down));
}

QString word(const QVector<QPointF>& value)
{
    QString result = QStringLiteral("%1 samples").arg(value.size());
    for (const QPointF& sample : value)
        result += QLatin1Char(' ') + word(sample);
    return result;
}

template <typename Fields> QString words(const char* name, const Fields& fields)
{
    QStringList result;
    std::apply([&result](const auto&... field) { (result.append(word(field)), ...); }, fields);
    const QString first = QString::fromLatin1(name);
    return result.isEmpty() ? first : first + QLatin1Char(' ') + result.join(QStringLiteral(", "));
}

}

bool isOfUser(const Step& step)
{
    return std::holds_alternative<Press>(step) || std::holds_alternative<Move>(step)
        || std::holds_alternative<Release>(step) || std::holds_alternative<DoubleClick>(step)
        || std::holds_alternative<Turn>(step) || std::holds_alternative<Type>(step);
}

QString text(const Step& step)
{
    return std::visit([](const auto& one) { return words(one.name, one.fields()); }, step);
}

}
