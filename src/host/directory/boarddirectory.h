#pragma once

#include <memory>

/// Finds boards in the host's "boards" table. Answers follow the table, also when it is dropped and made
/// anew; without a table no board is known.
///
/// The columns are read as those of the securities are: a board with a null id is not known, nor is any when
/// a column is missing or no integer. Whoever asks while handling a signal of the table calls i() before
/// connecting to the table.
class BoardDirectory {
public:
    /// The directory, made at the first call; never null. Each call makes it listen to the table of now.
    static BoardDirectory* i();

    /// Whether the board is anonymous (orders carry no counterparty): "is_anonym" is neither null nor 0.
    /// False for an unknown board; of several with these ids the first in the table's order counts.
    bool isAnonymById(int stockId, int boardId) const;

private:
    BoardDirectory();
    ~BoardDirectory();

    class Index;
    std::unique_ptr<Index> m_index;
};
