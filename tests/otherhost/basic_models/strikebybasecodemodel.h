#pragma once

#include "database/decimal.h"
#include "database/record.h"

#include <QAbstractListModel>
#include <QPointer>
#include <QVector>

class Table;

/// The strikes of a base code's options in a table, each of them once.
///
/// It looks through the whole table whenever that has changed. Strikes that have come side by side are
/// announced by rowsInserted, those that have gone by rowsRemoved, all else by modelReset.
class StrikeByBaseCodeModel : public QAbstractListModel {
    Q_OBJECT

public:
    /// Shows nothing without a table, and when the table is gone.
    explicit StrikeByBaseCodeModel(Table* table, QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    void sort(int column, Qt::SortOrder order) override;

    /// The first option of the strike in the table's order; no row for an index that is not valid.
    virtual Record record(const QModelIndex& index) const;

    QString baseCode() const { return m_baseCode; }
    /// Shows nothing for an empty code.
    void setBaseCode(const QString& baseCode);

    /// Zero for a row that there is not.
    decimal strike(int row) const;
    /// The smallest distance of two strikes, 0.0 when there are less.
    double minStep() const;

protected:
    /// Which options of the base code count.
    virtual QVector<Record> chosen(const QVector<Record>& options) const;
    /// Reads the table and announces a reset.
    void reread();

private Q_SLOTS:
    void onTableChanged();

private:
    struct Option {
        decimal strike;
        Record record;
    };

    QVector<Option> readOptions(const QString& baseCode) const;
    void replaceRun(int first, int common, const QVector<Option>& options);

    QPointer<Table> m_table;
    QString m_baseCode;
    Qt::SortOrder m_order = Qt::AscendingOrder;
    QVector<Option> m_options;
};
