#include "database/database.h"

#include "database/exception.h"
#include "database/table.h"

Database::Database(QObject* parent)
    : QObject(parent)
{
}

Database::~Database() = default;

Table* Database::table(const QString& name) const
{
    // A table on its way out is no Table to qobject_cast any more, so it is never found here.
    for (QObject* child : children()) {
        Table* const candidate = qobject_cast<Table*>(child);
        if (candidate && candidate->name() == name)
            return candidate;
    }
    return nullptr;
}

Table* Database::createTable(const QString& name, const QVector<TableColumnDef>& columns)
{
    if (table(name))
        throw Exception(QStringLiteral("The table \"%1\" exists already.").arg(name));
    return new Table(name, columns, this);
}

bool Database::dropTable(const QString& name)
{
    Table* const dropped = table(name);
    delete dropped;
    return dropped != nullptr;
}
