#include "database/columns_p.h"

Columns::Columns(Table* owner, const QVector<TableColumnDef>& definitions)
    : table(owner)
    , m_definitions(definitions.begin(), definitions.end())
    , m_columns(m_definitions.size())
{
}

int Columns::columnIndex(const QString& name) const
{
    for (std::size_t i = 0; i < m_definitions.size(); ++i) {
        if (m_definitions[i].name == name)
            return int(i);
    }
    return -1;
}

QList<TableColumnDef*> Columns::definitions()
{
    QList<TableColumnDef*> all;
    for (TableColumnDef& definition : m_definitions)
        all.append(&definition);
    return all;
}

int Columns::takePlace()
{
    if (!m_free.empty()) {
        const int place = m_free.back();
        m_free.pop_back();
        return place;
    }
    // Giving back needs no memory then.
    m_free.reserve(std::size_t(m_places) + 1);
    for (std::vector<QVariant>& column : m_columns)
        column.resize(std::size_t(m_places) + 1);
    return m_places++;
}

void Columns::giveBack(int place)
{
    for (std::vector<QVariant>& column : m_columns)
        column[std::size_t(place)].clear();
    m_free.push_back(place);
}

const QVariant& Columns::at(int place, int column) const
{
    return m_columns[std::size_t(column)][std::size_t(place)];
}

void Columns::set(int place, int column, const QVariant& value)
{
    m_columns[std::size_t(column)][std::size_t(place)] = value;
}

RowPlace::RowPlace(const std::shared_ptr<Columns>& owner)
    : columns(owner)
    , place(owner->takePlace())
{
}

RowPlace::~RowPlace()
{
    columns->giveBack(place);
}
