#pragma once

#include "chain/optionchain.h"
#include "chain/rowids.h"
#include "chain/securityrows.h"

/// The rows of a chain for the host's table "securities", made a few at a time. Until they are put into the
/// table nobody sees them.
class ChainRows {
public:
    /// The table and the storage that it is attached to must outlive this object. The chain is one that
    /// ChainImport takes.
    ChainRows(Table& table, const OptionChain& chain, TableStorage& storage);

    /// How many rows there will be, and how many are made.
    int count() const { return m_count; }
    int madeCount() const { return m_made.size(); }

    /// Makes as many more, as far as there are; whether all are made. Throws Exception where the table has no
    /// ids left, or lacks a column.
    bool makeSome(int most);

    /// All rows, with ids for the table as it is now: where it has changed since the rows were begun they are
    /// made anew. Throws as makeSome() does.
    QVector<Record> finish();

    /// The rows of the stored series that the chain's take the place of.
    QVector<Record> replaced() const;

    /// The future of the series at a position of the chain; 0 before it is made.
    int futureIsinId(int position) const { return m_futureIsinIds.value(position, 0); }

private:
    void restart(const RowIds& ids);
    Record makeRow(const OptionSeries& series, const QString& nameEnd);
    Record makeFuture(const OptionSeries& series);
    Record makeOption(const OptionSeries& series, const OptionQuote& quote);

    SecurityRows m_rows;
    OptionChain m_chain;
    TableStorage& m_storage;
    int m_count = 0;
    QVector<Record> m_made;
    /// Of the series that are begun.
    QVector<int> m_futureIsinIds;
    /// In the series begun last.
    int m_quotesMade = 0;
    RowIds m_ids;
};
