#pragma once

#include "../database/sampletable.h"

#include <database/postgresaddress.h>
#include <database/sharedstorage.h>
#include <database/table.h>

#include <QVariant>

/// One program of several on the same database: a storage and the table of SampleTable's columns in it, whose
/// key is the column "name".
struct SharingDesk {
    explicit SharingDesk(const QString& address, const QString& folder = QString());

    /// All fields of all rows, in their order.
    QVector<QVariantList> content() const;
    /// The record of the row of this id, null if there is none.
    Record row(int id) const;

    void append(int firstId, int count);
    void set(int id, SampleTable::Column column, const QVariant& value);
    void remove(int id);

    /// Whether the server has confirmed everything.
    bool isSettled() const { return storage.waitingCommits() == 0 && storage.problem().isEmpty(); }

    Table table;
    SharedStorage storage;
};
