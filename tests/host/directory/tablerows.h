#pragma once

#include <database/table.h>

#include <QVariant>
#include <QVector>

#include <initializer_list>
#include <utility>

namespace TestSupport {

using Fields = std::initializer_list<std::pair<const char*, QVariant>>;

/// A row of a table that is not in the table yet; fields that are not named stay null.
inline Record makeRow(Table& table, Fields fields)
{
    const Record row = table.createRow();
    for (const auto& [name, value] : fields)
        table.value(row, table.columnIndex(QString::fromLatin1(name))).setVariant(value);
    return row;
}

inline Record appendRow(Table& table, Fields fields)
{
    const Record row = makeRow(table, fields);
    table.appendRows({row});
    return row;
}

inline void changeRows(Table& table, const QVector<Record>& rows, Fields fields)
{
    table.changeRows(rows, [&](const Record&, const Table::FieldAccess& field) {
        for (const auto& [name, value] : fields)
            field(table.columnIndex(QString::fromLatin1(name))).setVariant(value);
    });
}

inline QVariant number(const char* text)
{
    return QVariant::fromValue(decimal::fromString(QString::fromLatin1(text)));
}

inline QVariant number64(qint64 value)
{
    return QVariant(static_cast<qlonglong>(value));
}

}
