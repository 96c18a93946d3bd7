#include "directory/optionalfield.h"

namespace {

bool holds(const FieldConstValue& value, FieldType type)
{
    return value.isValid() && value.type() == type && !value.isNull();
}

}

std::optional<qint64> OptionalField::integer(const FieldConstValue& value)
{
    if (holds(value, FieldType::Int32))
        return value.toInt32();
    if (holds(value, FieldType::Int64))
        return value.toInt64();
    return std::nullopt;
}

std::optional<decimal> OptionalField::fixedPoint(const FieldConstValue& value)
{
    if (holds(value, FieldType::Decimal))
        return value.toDecimal();
    return std::nullopt;
}

std::optional<QString> OptionalField::text(const FieldConstValue& value)
{
    if (holds(value, FieldType::Text))
        return value.toText();
    return std::nullopt;
}
