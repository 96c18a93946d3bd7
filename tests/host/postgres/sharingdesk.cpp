#include "sharingdesk.h"

#include "../database/storagefixture.h"

SharingDesk::SharingDesk(const QString& address, const QString& folder)
    : table(QStringLiteral("sample"), SampleTable::columns())
    , storage(PostgresAddress(address), folder)
{
    storage.open();
    storage.attach(&table, {QStringLiteral("name")});
}

QVector<QVariantList> SharingDesk::content() const
{
    return contentOf(table);
}

Record SharingDesk::row(int id) const
{
    for (const Record& record : table.masterIndex()) {
        if (record.value(SampleTable::Id).toInt32() == id)
            return record;
    }
    return Record();
}

void SharingDesk::append(int firstId, int count)
{
    table.appendRows(SampleTable::makeRows(table, firstId, count));
}

void SharingDesk::set(int id, SampleTable::Column column, const QVariant& value)
{
    table.changeRows(
        {row(id)}, [&](const Record&, const Table::FieldAccess& field) { field(column).setVariant(value); });
}

void SharingDesk::remove(int id)
{
    table.removeRows({row(id)});
}
