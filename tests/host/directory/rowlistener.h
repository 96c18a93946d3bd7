#pragma once

#include <database/table.h>

#include <QObject>
#include <QVector>

#include <functional>

namespace TestSupport {

/// Calls a function whenever a table's signal tells of rows.
class RowListener : public QObject {
    Q_OBJECT

public:
    RowListener(Table* table, const char* signal, std::function<void(const QVector<Record>&)> function)
        : m_function(std::move(function))
    {
        connect(table, signal, SLOT(onRows(QVector<Record>)));
    }

private Q_SLOTS:
    void onRows(const QVector<Record>& records) { m_function(records); }

private:
    std::function<void(const QVector<Record>&)> m_function;
};

}
