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

        bool operator==(const Ids& other) const { return isinId == other.isinId && secId == other.secId; }
    };

    /// For the table as it is now; in a shared storage the rows that take the place of the replaced ones get
    /// their ids, by their short names. The storage that the rows are kept in must outlive this object.
    RowIds(const SecurityRows& rows, const QVector<Record>& replaced, TableStorage& storage);

    /// Ids that no row of the table has, but for replaced ones, and in a shared storage none of another
    /// desk's either. Exception if there are none left.
    Ids idsFor(const QString& shortName);

    /// Whether another object was made for a table with the same ids and the same rows to replace.
    bool areOfTheSameTableAs(const RowIds& other) const { return m_found == other.m_found; }

private:
    /// What the table has.
    struct Found {
        Ids last;
        QSet<qint64> used;
        QHash<QString, Ids> reusable;

        bool operator==(const Found& other) const;
    };

    static Found find(const SecurityRows& rows, const QVector<Record>& replaced, bool isShared);
    Ids nextIds();
    qint64 sharedNumber();

    TableStorage* m_storage;
    Found m_found;
    /// The largest ids, of those handed out, too.
    Ids m_last;
    /// Those that are not handed out yet.
    QHash<QString, Ids> m_reusable;
};
