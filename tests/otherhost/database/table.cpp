#include "database/table.h"

#include "database/columns_p.h"

Table::Table(const QVector<TableColumnDef>& columns)
    : m_columns(std::make_shared<Columns>(this, columns))
{
}

Table::~Table()
{
    m_columns->table = nullptr;
}

int Table::columnIndex(const QString& name) const
{
    return m_columns->columnIndex(name);
}

QList<TableColumnDef*> Table::fieldDefs() const
{
    return m_columns->definitions();
}

FieldConstValue Table::dataPtr(int row, int column) const
{
    if (row < 0 || !m_columns->has(column))
        return FieldConstValue();
    return FieldConstValue(m_columns->typeOf(column), m_columns->at(row, column));
}

Record Table::makeRow()
{
    return Record(std::make_shared<const RowPlace>(m_columns));
}

void Table::write(const Record& record, int column, const QVariant& value)
{
    m_columns->set(record.row(), column, value);
}

void Table::announce()
{
    Q_EMIT changed();
}

void Table::setRows(const IndexList& rows)
{
    m_rows = rows;
    Q_EMIT changed();
}
