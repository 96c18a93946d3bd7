#include "database/shared/sharedchanges_p.h"

#include <QDataStream>

namespace {

QDataStream& operator<<(QDataStream& stream, const TableColumnDef& column)
{
    return stream << column.name << qint32(column.type) << column.decimals;
}

QDataStream& operator>>(QDataStream& stream, TableColumnDef& column)
{
    qint32 type = 0;
    stream >> column.name >> type >> column.decimals;
    column.type = static_cast<FieldType>(type);
    return stream;
}

QDataStream& operator<<(QDataStream& stream, const SharedTableChanges::Placed& row)
{
    return stream << row.key << row.values;
}

QDataStream& operator>>(QDataStream& stream, SharedTableChanges::Placed& row)
{
    return stream >> row.key >> row.values;
}

QDataStream& operator<<(QDataStream& stream, const SharedTableChanges::Updated& row)
{
    return stream << row.key << row.fields;
}

QDataStream& operator>>(QDataStream& stream, SharedTableChanges::Updated& row)
{
    return stream >> row.key >> row.fields;
}

QDataStream& operator<<(QDataStream& stream, const SharedTableChanges& changes);
QDataStream& operator>>(QDataStream& stream, SharedTableChanges& changes);

/// Qt's own operators for vectors do not find those of the elements that are known to this file only.
template <typename T> void write(QDataStream& stream, const QVector<T>& list)
{
    stream << quint32(list.size());
    for (const T& element : list)
        stream << element;
}

template <typename T> void read(QDataStream& stream, QVector<T>& list)
{
    quint32 count = 0;
    stream >> count;
    list.clear();
    while (count-- > 0 && stream.status() == QDataStream::Ok) {
        T element;
        stream >> element;
        list.append(element);
    }
}

QDataStream& operator<<(QDataStream& stream, const SharedTableChanges& changes)
{
    stream << changes.table << changes.removed;
    write(stream, changes.columns);
    write(stream, changes.placed);
    write(stream, changes.updated);
    return stream;
}

QDataStream& operator>>(QDataStream& stream, SharedTableChanges& changes)
{
    stream >> changes.table >> changes.removed;
    read(stream, changes.columns);
    read(stream, changes.placed);
    read(stream, changes.updated);
    return stream;
}

}

QDataStream& operator<<(QDataStream& stream, const SharedCommit& commit)
{
    stream << commit.number;
    write(stream, commit.tables);
    return stream;
}

QDataStream& operator>>(QDataStream& stream, SharedCommit& commit)
{
    stream >> commit.number;
    read(stream, commit.tables);
    return stream;
}
