#pragma once

#include "database/field.h"

#include <optional>

/// Reads fields whose type is not known for certain, without exceptions.
namespace OptionalField {

/// The number of an Int32 or Int64 field; none for null, for any other type and for no field at all.
std::optional<qint64> integer(const FieldConstValue& value);

/// The number of a Decimal field; none for null, for any other type and for no field at all.
std::optional<decimal> fixedPoint(const FieldConstValue& value);

/// The text of a Text field; none for null, for any other type and for no field at all.
std::optional<QString> text(const FieldConstValue& value);

}
