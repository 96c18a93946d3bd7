#pragma once

#include "window/futurequote.h"
#include "window/shownseries.h"

#include <chain/chainrows.h>
#include <chain/chainstore.h>

#include <QObject>
#include <QVector>

#include <map>
#include <memory>
#include <optional>

class SharedStorage;
class TableStorage;

/// A stored series as it was when it was read, with what the user says of it: a value that any thread may
/// value while the tables go on.
struct SeriesSnapshot {
    SeriesData data;
    SeriesFacts given;
    Pricing::SmileModel smileModel = Pricing::SmileModel::Spline;

    /// Throws Exception where the series has no forward, or a given date is not before the expiry.
    ShownSeries valued() const;
};

/// Makes a chain what the user says it is: sets the date of its prices, the expiry of the single series of a
/// chain that states none, and the forward of the series to show.
///
/// Gives the position of the series to show: that of the given expiry, else SeriesChoice::nearest(). Throws
/// Exception, with the chain in any state, where there is no such series, it has no forward, or a given date
/// is not before the expiry.
int applyFacts(const SeriesFacts& given, OptionChain* chain);

/// The chains in the host's tables and the database behind them.
///
/// The tables belong to the process; there is one object of this class at a time.
class DeskData {
public:
    /// Opens the database, a SQLite file that is made where there is none, or one on a PostgreSQL server
    /// where the text is an address of one; in memory for an empty name. Throws Exception where it is damaged
    /// or of something else, or cannot be reached.
    explicit DeskData(const QString& database);
    ~DeskData();

    /// The storage shared with other desks; null for a file and in memory.
    SharedStorage* shared() const { return m_shared; }

    /// Stores what waits, as far as that is possible at once; where it is not, the reason in one line.
    /// Nothing can be stored any more then.
    QString close();

    bool isEmpty() const;

    /// Stores a chain in one transaction and gives the ISIN id of the future of its series at a position, for
    /// show(). Throws Exception, with everything as it was, where that fails.
    int import(const OptionChain& chain, int position);

    /// The same in two steps, so that the rows can be made a few at a time: a chain's rows, and their
    /// storing.
    std::unique_ptr<ChainRows> rowsOf(const OptionChain& chain);
    int store(ChainRows& rows, int position);

    /// Stores the bundled samples.
    void importSamples();

    /// The future of the series to show first among those stored: of the given expiry, else the nearest of
    /// the first base code that has one. Throws Exception as applyFacts() does.
    int firstSeries(const SeriesFacts& given) const;

    /// All stored series, by base code, then by expiry.
    QVector<StoredSeries> series() const;

    /// The future of the same base code and expiry as that of the series shown last, if that one was replaced
    /// by another desk; the given one where it is still stored or nothing is known.
    int current(int futureIsinId) const;

    /// Values a stored series as it is now and lends its future the forward as quote until another one is
    /// shown; a quote that the future gets from elsewhere is its stated forward from then on. Throws
    /// Exception, with no quote lent, where it has no forward, or a given date is not before the expiry.
    ShownSeries show(int futureIsinId, const SeriesFacts& given);

    /// Values a stored series as it is now and lends it nothing. Throws Exception as show() does.
    ShownSeries valued(int futureIsinId, const SeriesFacts& given) const;

    /// Several series as they are now, by the ISIN ids of their futures; those that are not stored are left
    /// out.
    std::map<int, SeriesSnapshot> snapshots(
        const QVector<int>& futureIsinIds, const SeriesFacts& given) const;

    /// How smiles are fitted from the next series on that is valued; by the spline unless this is called.
    void setSmileModel(Pricing::SmileModel model) { m_smileModel = model; }
    Pricing::SmileModel smileModel() const { return m_smileModel; }

private:
    std::unique_ptr<TableStorage> m_storage;
    SharedStorage* m_shared = nullptr;
    FutureQuote m_quote;
    Pricing::SmileModel m_smileModel = Pricing::SmileModel::Spline;
    /// As shown last.
    StoredSeries m_series;
};
