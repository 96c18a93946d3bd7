#pragma once

#include "sampletable.h"

#include <QStringList>

#include <functional>
#include <utility>

/// The signals of a table, in order: a letter and the ids of the rows.
class Journal : public QObject {
    Q_OBJECT

public:
    explicit Journal(const Table* table)
    {
        connect(table, SIGNAL(rowsInserted(QVector<Record>)), SLOT(onInserted(QVector<Record>)));
        connect(table, SIGNAL(rowsRemoved(QVector<Record>)), SLOT(onRemoved(QVector<Record>)));
        connect(table, SIGNAL(rowsChanged(QVector<Record>)), SLOT(onChanged(QVector<Record>)));
        connect(table, SIGNAL(reset()), SLOT(onReset()));
    }

    QStringList take() { return std::exchange(m_entries, QStringList()); }

    /// Run once, within the next signal.
    std::function<void()> reaction;

public Q_SLOTS:
    void onInserted(const QVector<Record>& records) { note('i', records); }
    void onRemoved(const QVector<Record>& records) { note('r', records); }
    void onChanged(const QVector<Record>& records) { note('c', records); }
    void onReset() { note('x', {}); }

private:
    void note(char letter, const QVector<Record>& records)
    {
        QString entry(QLatin1Char{letter});
        for (const int id : SampleTable::ids(records))
            entry += QStringLiteral(" %1").arg(id);
        m_entries << entry;
        if (const auto action = std::exchange(reaction, nullptr))
            action();
    }

    QStringList m_entries;
};
