#include "directory/boarddirectory.h"

#include "rowsearch_p.h"

BoardDirectory* BoardDirectory::i()
{
    static BoardDirectory directory;
    return &directory;
}

bool BoardDirectory::isAnonymById(int stockId, int boardId) const
{
    const Record board
        = RowSearch::first(QStringLiteral("boards"), {{"stock_id", stockId}, {"board_id", boardId}});
    return RowSearch::integer(board, "is_anonym").value_or(0) != 0;
}
