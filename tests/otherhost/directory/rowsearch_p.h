#pragma once

#include "database/field.h"
#include "database/record.h"

#include <QString>

#include <initializer_list>
#include <optional>

/// Looks through the rows of a table, each time anew.
namespace RowSearch {

struct Id {
    const char* column;
    qint64 value;
};

/// The first row, in the table's order, that has all the ids; no row without the table or one of the columns.
Record first(const QString& tableName, std::initializer_list<Id> ids);

/// The number in a column of integers; nothing for a null, another type and a column that is not there.
std::optional<qint64> integer(const Record& record, const char* column);

}
