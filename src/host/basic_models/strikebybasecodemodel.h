#pragma once

#include "database/record.h"

#include <QAbstractTableModel>
#include <QString>

#include <memory>
#include <vector>

class Table;

/// The distinct strikes of the options of a base code, one row and one column.
///
/// The model follows the table: a new strike is announced by rowsInserted, a strike whose last option went by
/// rowsRemoved, everything else (a new base code, a reset of the table, a changed strike) by modelReset.
/// Strikes that come or go together and are neighbours in the model are announced as one; when that would
/// make more than 32 announcements there is one modelReset instead. Rows that change in none of the fields
/// that the model reads, as by a new quote, are not announced.
///
/// An option is a row whose "sectype" is 'O'; one without a strike is passed over. Strikes are told apart
/// exactly; negative ones and zero are in the model like all others. Where "base_code" is no text column or
/// "strike" no decimal one there are no options.
/// Without a base code, or when the table is gone, the model is empty.
class StrikeByBaseCodeModel : public QAbstractTableModel {
    Q_OBJECT

public:
    /// The table may be null: the model stays empty then.
    explicit StrikeByBaseCodeModel(Table* table, QObject* parent = nullptr);
    ~StrikeByBaseCodeModel() override;

    /// One row for each strike; none below a row.
    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    /// One column; none below a row.
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    /// Qt::DisplayRole gives the strike's text, Qt::EditRole the strike as a decimal.
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    /// Sorts by strike (column 0) and keeps that order from then on; ascending after construction. Announced
    /// by layoutChanged, also when the order was that one before. Other columns are ignored.
    void sort(int column, Qt::SortOrder order = Qt::AscendingOrder) override;

    /// The record of the first option, in the table's order, of the strike at an index; null for an
    /// index that is not of this model.
    virtual Record record(const QModelIndex& index) const;

    /// Empty after construction.
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
    /// The rank of a row that takes part. The model shows the options of the highest rank alone; when that
    /// rank becomes another one, it is reset. The rank that is shown while there is no option is 0.
    virtual int rank(const Record& option) const;
    /// The rank of the options that are shown.
    int shownRank() const;
    /// Gathers the options anew between beginResetModel() and endResetModel().
    void rebuild();

private Q_SLOTS:
    void onRowsInserted(const QVector<Record>& records);
    void onRowsRemoved(const QVector<Record>& records);
    void onRowsChanged(const QVector<Record>& records);
    void onTableReset();

private:
    struct Private;

    bool isOwn(const QModelIndex& index) const;
    void showTopRank();
    void announceInserted(std::vector<decimal> strikes);
    void announceRemoved(std::vector<decimal> strikes);

    std::unique_ptr<Private> d;
};
