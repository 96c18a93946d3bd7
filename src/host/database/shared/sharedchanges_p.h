#pragma once

#include "database/tablecolumndef.h"

#include <QMetaType>
#include <QPair>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <QVector>

class QDataStream;

/// What one desk has changed in a table since its last commit. Values are as SqlValue makes them.
struct SharedTableChanges {
    /// A row that has come, or that takes the place of the row of the same key.
    struct Placed {
        QString key;
        QVariantList values;
    };
    /// New values of some fields of a row.
    struct Updated {
        QString key;
        QVector<QPair<int, QVariant>> fields;
    };

    QString table;
    QVector<TableColumnDef> columns;
    QStringList removed;
    QVector<Placed> placed;
    QVector<Updated> updated;

    bool isEmpty() const { return removed.isEmpty() && placed.isEmpty() && updated.isEmpty(); }
};

/// One commit of one desk, which the database takes as a whole and once.
struct SharedCommit {
    /// Counted up by the writer from 1.
    qint64 number = 0;
    QVector<SharedTableChanges> tables;
};

/// What has changed in a table on the server. Values are as FieldConstValue::toVariant() gives them.
struct SharedTableNews {
    struct Row {
        QString key;
        /// Rows stand in the order of these numbers; one that is placed anew gets a new number.
        qint64 order = 0;
        QVariantList values;
    };

    QString table;
    /// Whether these are all rows that there are.
    bool isWhole = false;
    /// In their order.
    QVector<Row> rows;
    QStringList removed;
};

struct SharedNews {
    /// The last commit of this desk that is contained.
    qint64 acknowledged = 0;
    QVector<SharedTableNews> tables;
};

QDataStream& operator<<(QDataStream& stream, const SharedCommit& commit);
/// A stream of anything else gives a status other than Ok or a commit that no database takes.
QDataStream& operator>>(QDataStream& stream, SharedCommit& commit);

Q_DECLARE_METATYPE(SharedNews)
