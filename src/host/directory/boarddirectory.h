#pragma once

#include <memory>

/// Finds boards in the host's "boards" table. Answers follow the table, also when it is dropped and made
/// anew; without a table no board is known.
class BoardDirectory {
public:
    /// The directory, made at the first call; never null.
    static BoardDirectory* i();

    /// Whether the board is anonymous (orders carry no counterparty); false for an unknown board.
    bool isAnonymById(int stockId, int boardId) const;

private:
    BoardDirectory();
    ~BoardDirectory();

    class Index;
    std::unique_ptr<Index> m_index;
};
