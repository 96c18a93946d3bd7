#pragma once

#include "quotes/quotesrows.h"

#include <QAbstractTableModel>

/// The options of a series by strike, one row for each.
///
/// Numbers are texts in the user's locale, with as many decimals in a column as its numbers need; what is
/// absent is an empty text. Quotes that come change their rows alone.
class QuotesModel : public QAbstractTableModel {
    Q_OBJECT

public:
    explicit QuotesModel(QObject* parent = nullptr);

    /// Shows the rows of a series, ascending by strike. Rows of strikes that stay are kept, and change where
    /// their numbers have changed; another series than the one shown before resets the model.
    void show(int futureIsinId, const ShownSeries& series);
    /// Shows nothing.
    void clear();

    const QVector<QuotesRow>& rows() const { return m_rows; }

    /// Whether any row says anything in a column.
    bool hasValues(QuotesColumn column) const;

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

private:
    void fitRows(const QVector<QuotesRow>& fresh);
    void changeRows(const QVector<QuotesRow>& fresh);
    QString text(QuotesColumn column, double value) const;

    int m_futureIsinId = 0;
    QVector<QuotesRow> m_rows;
    int m_strikeDecimals = 0;
    int m_priceDecimals = 2;
};
