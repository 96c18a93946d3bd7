#pragma once

#include <QString>

/// The types of a field, with the codes that a view of a field reports.
enum class FieldType : int {
    /// An integer of 32 bits.
    Int32 = 1,
    /// An integer of 64 bits.
    Int64 = 2,
    /// A floating-point number.
    Double = 3,
    /// An exact number, decimal.
    Decimal = 4,
    /// A QString.
    Text = 5,
    /// Milliseconds since 1970-01-01 00:00:00 UTC, 64 bits.
    Moment = 6
};

/// The definition of a table's column.
struct TableColumnDef {
    /// By which the column is found.
    QString name;
    /// Of all of the column's fields.
    FieldType type = FieldType::Int32;
    /// Digits after the decimal point, 0 to 18; of meaning for FieldType::Decimal only.
    short decimals = 0;
};
