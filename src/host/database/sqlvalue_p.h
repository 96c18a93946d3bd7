#pragma once

#include "database/field.h"

#include <QVariant>

/// Fields as SQL values, so that numbers come back bit for bit.
///
/// Whole numbers and moments are integers. Decimals are texts in C notation. Doubles are the shortest texts
/// that read back as the same number, "-0", "inf", "-inf", "nan" and, for a NaN of other bits, "nan:" and the
/// bits as 16 hexadecimal digits: there is no number in SQL that is the same in every database and holds them
/// all.
namespace SqlValue {

QVariant fromField(const FieldConstValue& field, bool isSqlite);

/// False, and the field is null, if the value is none of what fromField() gives for the field's type.
bool toField(const QVariant& value, FieldValue field);

}
