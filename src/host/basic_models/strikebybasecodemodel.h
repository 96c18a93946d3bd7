#pragma once

#include "database/record.h"

#include <QAbstractTableModel>
#include <QPointer>
#include <QString>

#include <memory>

class Table;

/// The distinct strikes of the options of a base code, one row and one column.
///
/// The model follows the table: a new strike is announced by rowsInserted, a strike whose last option went by
/// rowsRemoved, everything else (a new base code, a reset of the table, a changed strike) by modelReset.
/// An option is a row whose "sectype" is 'O'; one without a strike is passed over.
/// Without a base code, or when the table is gone, the model is empty.
class StrikeByBaseCodeModel : public QAbstractTableModel {
    Q_OBJECT

public:
    explicit StrikeByBaseCodeModel(Table* table, QObject* parent = nullptr);
    ~StrikeByBaseCodeModel() override;

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    /// Qt::DisplayRole gives the strike's text, Qt::EditRole the strike as a decimal.
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    /// Sorts by strike (column 0) and keeps that order from then on; ascending after construction. Announced
    /// by layoutChanged.
    void sort(int column, Qt::SortOrder order = Qt::AscendingOrder) override;

    /// The record of the first option, in the table's order, of the strike at an index; null for an
    /// index that is not of this model.
    virtual Record record(const QModelIndex& index) const;

    QString baseCode() const;
    /// Resets the model, also when the code is the same.
    void setBaseCode(const QString& baseCode);

    /// The strike of a row; zero outside the rows.
    decimal strike(int row) const;

    /// The smallest distance between neighbouring strikes, exact until the conversion to a double; 0.0 with
    /// fewer than two strikes.
    double minStep() const;

protected:
    /// Whether a row of the table, an option of the base code with a strike, takes part.
    virtual bool accepts(const Record& option) const;
    /// Called before the strikes are gathered anew from the whole table.
    virtual void prepareRebuild();
    /// Whether rows that come, go or change may alter accepts() of other rows: then the model is reset.
    virtual bool acceptanceDependsOn(const QVector<Record>& records) const;
    Table* table() const;
    /// Gathers the strikes anew between beginResetModel() and endResetModel().
    void rebuild();

private Q_SLOTS:
    void onRowsInserted(const QVector<Record>& records);
    void onRowsRemoved(const QVector<Record>& records);
    void onRowsChanged(const QVector<Record>& records);
    void onTableReset();
    void onTableDestroyed();

private:
    struct Private;
    std::unique_ptr<Private> d;
};
