#pragma once

#include "database/record.h"

#include <QHash>
#include <QStringList>

#include <array>
#include <map>
#include <optional>

class Table;

/// The values of up to three key columns; those not used are 0.
struct RowKey {
    std::array<qint64, 3> values{};

    friend bool operator==(const RowKey& a, const RowKey& b) { return a.values == b.values; }
    friend bool operator!=(const RowKey& a, const RowKey& b) { return !(a == b); }
};

HashValue qHash(const RowKey& key, HashValue seed = 0);

/// Finds the rows of a table by key columns that hold whole numbers. A row with a null among them, or with a
/// column of another type, has no key and is never found.
class RowIndex {
public:
    /// One to three names.
    explicit RowIndex(const QStringList& columns);

    /// Forgets all rows and takes the columns' positions from a table, which may be null.
    void clear(const Table* table);

    /// Takes a row in that is not in yet; rows of the same key are ordered by the number, which no two rows
    /// share.
    void insert(const Record& record, qint64 order);
    void remove(const Record& record, qint64 order);
    /// Moves a row whose key columns may have been written.
    void update(const Record& record, qint64 order);

    int count(const RowKey& key) const;
    /// The first row of the key that stands in its table now with that key; null if there is none.
    Record first(const RowKey& key) const;

private:
    std::optional<RowKey> keyOf(const Record& record) const;
    void put(const Record& record, qint64 order, const std::optional<RowKey>& key);

    QStringList m_names;
    std::array<int, 3> m_columns{-1, -1, -1};
    QHash<RowKey, std::map<qint64, Record>> m_rows;
    QHash<Record, RowKey> m_keys;
};
