#include "database/database.h"

#include "database/table.h"

Database::Database() = default;

Database::~Database() = default;

Table* Database::table(const QString& name) const
{
    const auto found = m_tables.find(name);
    return found == m_tables.end() ? nullptr : found->second.get();
}

Table* Database::replaceTable(const QString& name, const QVector<TableColumnDef>& columns)
{
    removeTable(name);
    return m_tables.emplace(name, std::make_unique<Table>(columns)).first->second.get();
}

void Database::removeTable(const QString& name)
{
    // Whoever hears that the table goes does not find it any more.
    const auto taken = m_tables.extract(name);
}
