#pragma once

#include "database/table.h"

#include <QVector>

/// A table with a column of each type, and rows that can be told apart by a number.
namespace SampleTable {

enum Column { Id, Count, Ratio, Price, Name, Time };

QVector<TableColumnDef> columns();

/// A row that is not in the table yet; all its fields follow from the id.
Record makeRow(Table& table, int id);
QVector<Record> makeRows(Table& table, int firstId, int count);

/// The ids of the table's rows in their order.
QVector<int> ids(const Table& table);
QVector<int> ids(const IndexList& list);
QVector<int> ids(const QVector<Record>& records);

}
