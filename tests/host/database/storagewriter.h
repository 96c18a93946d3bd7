#pragma once

#include "database/tablecolumndef.h"

#include <QString>
#include <QVector>

/// What the program that is killed writes: a commit of number n replaces the counter in "counter" by n and
/// appends rowsPerCommit rows of n to "batches", and takes those of n - batchesKept away.
namespace StorageWriter {

constexpr int rowsPerCommit = 40;
constexpr int batchesKept = 30;

inline QString counterName()
{
    return QStringLiteral("counter");
}

inline QString batchesName()
{
    return QStringLiteral("batches");
}

inline QVector<TableColumnDef> counterColumns()
{
    return {{QStringLiteral("commit"), FieldType::Int32, 0}};
}

inline QVector<TableColumnDef> batchesColumns()
{
    return {{QStringLiteral("commit"), FieldType::Int32, 0},
        {QStringLiteral("position"), FieldType::Int32, 0}, {QStringLiteral("filling"), FieldType::Text, 0}};
}

}
