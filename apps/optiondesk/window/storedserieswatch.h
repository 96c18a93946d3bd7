#pragma once

#include <database/record.h>

#include <QDate>
#include <QHash>
#include <QObject>
#include <QPointer>
#include <QTimer>
#include <QVector>

class Table;

/// Tells when series have come into the host's table "securities", have gone, or have got another base code
/// or expiry there.
///
/// Changes are gathered: however many rows a turn of the event loop brings, one announcement comes in the
/// next turn. The quotes of a feed are passed over.
class StoredSeriesWatch : public QObject {
    Q_OBJECT

public:
    /// Without the host's table there is nothing to tell.
    explicit StoredSeriesWatch(QObject* parent = nullptr);

Q_SIGNALS:
    /// ChainStore::series() names other series.
    void changed();

private Q_SLOTS:
    void onRows(const QVector<Record>& records);
    void onReset();
    void onTimeout();

private:
    /// What names a series; an id of 0 for rows that are none.
    struct Name {
        int futureIsinId = 0;
        QString baseCode;
        QDate expiry;

        friend bool operator==(const Name& a, const Name& b)
        {
            return a.futureIsinId == b.futureIsinId && a.baseCode == b.baseCode && a.expiry == b.expiry;
        }
    };

    Name nameOf(const Record& row) const;
    QHash<Record, Name> namesInTable() const;

    QPointer<Table> m_table;
    int m_typeColumn = -1;
    /// The series as announced last.
    QHash<Record, Name> m_names;
    QTimer m_timer;
};
