#pragma once

#include "chain/optionchain.h"

#include <functional>
#include <memory>

class ChainRows;
class TableStorage;

/// Writes option chains into the host's tables "securities" and "boards".
///
/// A series becomes one future and its options on the board chainStockId, chainBoardId; the day of the
/// prices becomes the session, as yyyymmdd, 1 where it is not known.
class ChainImport {
public:
    /// The storage, open and with both tables of ChainTables::make() attached to it, must outlive this
    /// object.
    explicit ChainImport(TableStorage& storage);

    /// Stores a chain in one transaction. The stored series of the same base code and expiry are replaced,
    /// other series stay. The ISIN and security ids are new ones, beyond all those in the table; in a shared
    /// storage an instrument keeps its ids, for other desks show it.
    ///
    /// Whatever else the storage has not committed yet is committed along. Throws Exception for a chain that
    /// has no base code, no series, an empty one or no valid price step, before anything is changed; and when
    /// the rows cannot be made or written: the storage is then rolled back, and the tables and the database
    /// stand as at the last commit.
    void import(const OptionChain& chain);

    /// The same in two steps, between which time may pass: rows() makes none yet, and changes nothing;
    /// store() makes those that are still missing. Both throw as import() does.
    std::unique_ptr<ChainRows> rows(const OptionChain& chain);
    void store(ChainRows& rows);

    /// Stores the forward of a series, replacing the one stored; an empty optional takes it away. False if
    /// there is no future of that ISIN id on the chains' board. Throws Exception as import() does, also for a
    /// forward that is not positive and finite.
    bool storeForward(int futureIsinId, std::optional<double> forward);

private:
    // Makes a change and commits it; rolls the storage back when either fails.
    void commitChange(const std::function<void()>& change);

    TableStorage& m_storage;
};
