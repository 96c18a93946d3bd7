#pragma once

#include "database/record.h"

#include <QString>
#include <QVector>

/// The keys by which desks know a shared row. Two desks that make the same row at the same time give it the
/// same key, so that it is stored once.
namespace RowKey {

/// The key that follows from some fields of a row; a null field, or no fields, makes it a new one that no
/// other row has.
QString of(const Record& record, const QVector<int>& keyColumns);

/// The key of the nth row, from 2, whose fields give the same key.
QString repeated(const QString& key, int number);

}
