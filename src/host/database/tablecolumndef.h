#pragma once

#include <QString>

/// The types of a field, with the codes that a view of a field reports.
enum class FieldType : int {
    Int32 = 1,
    Int64 = 2,
    Double = 3,
    Decimal = 4,
    Text = 5,
    /// Milliseconds since 1970-01-01 00:00:00 UTC, 64 bits.
    Moment = 6
};

/// The definition of a table's column.
struct TableColumnDef {
    QString name;
    FieldType type = FieldType::Int32;
    /// Digits after the decimal point, 0 to 18; of meaning for FieldType::Decimal only.
    short decimals = 0;
};
