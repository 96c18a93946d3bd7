#pragma once

#include <QObject>
#include <QString>
#include <QVector>

#include "database/tablecolumndef.h"

class Table;

/// The host's tables by name. The database owns them.
class Database : public QObject {
    Q_OBJECT

public:
    /// Without tables.
    explicit Database(QObject* parent = nullptr);
    ~Database() override;

    /// The table of that name, null if there is none.
    Table* table(const QString& name) const;

    /// Makes an empty table. A table of that name must not exist: Exception otherwise.
    Table* createTable(const QString& name, const QVector<TableColumnDef>& columns);

    /// Destroys the table of that name; false if there is none.
    bool dropTable(const QString& name);
};
