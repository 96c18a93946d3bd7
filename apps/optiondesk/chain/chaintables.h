#pragma once

#include <QStringList>

class Table;

/// The two tables of the host that hold an imported chain.
struct ChainTables {
    Table* securities = nullptr;
    Table* boards = nullptr;

    /// The tables "securities" and "boards" of the host's database, made with the host's columns where they
    /// do not exist yet. The database owns them. They are attached to no storage.
    static ChainTables make();

    /// The same, without making any: null where one does not exist.
    static ChainTables find();

    /// The columns that tell the rows of each table apart, whoever has imported them.
    static QStringList securitiesKey();
    static QStringList boardsKey();
};

/// The exchange and the board under which chains are stored.
constexpr int chainStockId = 1;
constexpr int chainBoardId = 1;
