#include "fieldreading_p.h"

#include <database/exception.h>
#include <database/table.h>

#include <QDateTime>

#include <algorithm>
#include <limits>

namespace {

[[noreturn]] void throwIncorrectType()
{
    throw Exception(QStringLiteral("Incorrect type conversion."));
}

qint64 momentOfText(const QString& text)
{
    static const QString formats[] = {QStringLiteral("yyyy.MM.dd HH:mm:ss.zzz"),
        QStringLiteral("yyyy-MM-dd HH:mm:ss"), QStringLiteral("yyyy.MM.dd"), QStringLiteral("yyyy-MM-dd")};

    QDateTime moment;
    for (const QString& format : formats) {
        moment = QDateTime::fromString(text, format);
        if (moment.isValid())
            break;
    }
    moment.setTimeSpec(Qt::UTC);
    return moment.toMSecsSinceEpoch();
}

}

FieldConstValue FieldReading::fieldOf(const Record& record, int column)
{
    const Table* table = record.table();
    return table ? table->dataPtr(record.row(), column) : FieldConstValue();
}

int FieldReading::toInt(const FieldConstValue& field)
{
    return static_cast<int>(std::clamp<long long>(
        toLongLong(field), std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
}

long long FieldReading::toLongLong(const FieldConstValue& field)
{
    if (field.isNull())
        return 0;
    switch (field.type()) {
    case FieldType::Int32:
        return field.toInt32();
    case FieldType::Int64:
        return field.toInt64();
    default:
        throwIncorrectType();
    }
}

double FieldReading::toDouble(const FieldConstValue& field)
{
    if (field.isNull())
        return 0.0;
    switch (field.type()) {
    case FieldType::Int32:
        return field.toInt32();
    case FieldType::Int64:
        return static_cast<double>(field.toInt64());
    case FieldType::Double:
        return field.toDouble();
    case FieldType::Decimal:
        return field.toDecimal().toDouble();
    default:
        throwIncorrectType();
    }
}

decimal FieldReading::toDecimal(const FieldConstValue& field)
{
    if (field.type() != FieldType::Decimal)
        throwIncorrectType();
    return field.toDecimal();
}

qint64 FieldReading::toMoment(const FieldConstValue& field)
{
    if (field.isNull())
        return 0;
    switch (field.type()) {
    case FieldType::Moment:
        return field.toMoment();
    case FieldType::Text:
        return momentOfText(field.toText());
    default:
        throwIncorrectType();
    }
}
