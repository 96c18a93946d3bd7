#pragma once

#include "chain/securityrows.h"

#include <QHash>
#include <QSet>
#include <QVector>

class TableStorage;

/// Hands out ids for new rows of the host's table "securities".
class RowIds {
public:
    struct Ids {
        qint64 isinId = 0;
        qint64 secId = 0;
    };

    /// The rows and the storage that they are kept in must outlive this object.
    RowIds(const SecurityRows& rows, TableStorage& storage);

    /// In a shared storage the rows that take the place of these get their ids, by their short names.
    void reuse(const QVector<Record>& rows);

    /// Ids that no row of the table has, but for reuse(), and in a shared storage none of another desk's
    /// either. Exception if there are none left.
    Ids idsFor(const QString& shortName);

private:
    Ids nextIds();
    qint64 sharedNumber();

    const SecurityRows& m_rows;
    TableStorage& m_storage;
    Ids m_last;
    QSet<qint64> m_used;
    QHash<QString, Ids> m_reusable;
};
