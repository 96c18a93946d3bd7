#pragma once

#include <database/field.h>
#include <database/record.h>

/// Reading of host fields whose column type may differ from host to host. A type that a function cannot
/// convert throws Exception("Incorrect type conversion."); null is told by the null mask and never by the
/// value.
namespace FieldReading {

/// One field of a record; an invalid field for a null record or one whose table is gone.
FieldConstValue fieldOf(const Record& record, int column);

/// Integers of 32 bits as they are, of 64 bits clamped to the 32-bit range; null is 0.
int toInt(const FieldConstValue& field);

/// Integers of either width; null is 0.
long long toLongLong(const FieldConstValue& field);

/// Integers, doubles and decimals; null is 0.0.
double toDouble(const FieldConstValue& field);

/// A decimal that is not null.
decimal toDecimal(const FieldConstValue& field);

/// Milliseconds since the epoch of a moment or of a date's text, read as UTC ("yyyy.MM.dd HH:mm:ss.zzz",
/// "yyyy-MM-dd HH:mm:ss", "yyyy.MM.dd" or "yyyy-MM-dd"); null is 0, other text what an invalid date gives.
qint64 toMoment(const FieldConstValue& field);

}
