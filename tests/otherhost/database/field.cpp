#include "database/field.h"

#include "database/exception.h"

const QVariant& FieldConstValue::valueOf(FieldType type) const
{
    if (isNull() || type != m_type)
        throw Exception(QStringLiteral("The field has no such value."));
    return m_value;
}

qint32 FieldConstValue::toInt32() const
{
    return valueOf(FieldType::Int32).toInt();
}

qint64 FieldConstValue::toInt64() const
{
    return valueOf(FieldType::Int64).toLongLong();
}

double FieldConstValue::toDouble() const
{
    return valueOf(FieldType::Double).toDouble();
}

decimal FieldConstValue::toDecimal() const
{
    return valueOf(FieldType::Decimal).value<decimal>();
}

QString FieldConstValue::toText() const
{
    return valueOf(FieldType::Text).toString();
}

qint64 FieldConstValue::toMoment() const
{
    return valueOf(FieldType::Moment).toLongLong();
}

char Field::toChar() const
{
    const QString text = toString();
    return text.isEmpty() ? '\0' : text.at(0).toLatin1();
}

QString Field::toString() const
{
    return m_value.isNull() || m_value.type() != FieldType::Text ? QString() : m_value.toText();
}
