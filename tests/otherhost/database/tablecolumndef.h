#pragma once

#include <QString>

/// What a column holds.
enum class FieldType { Int32 = 1, Int64, Double, Decimal, Text, Moment };

struct TableColumnDef {
    QString name;
    FieldType type = FieldType::Int32;
    /// Digits after the decimal point of a column of decimals.
    short decimals = 0;
};
