#include "directory/boarddirectory.h"

#include "directory/optionalfield.h"
#include "directory/securitiestable.h"
#include "tableindex_p.h"

class BoardDirectory::Index {
public:
    TableIndex rows{SecuritiesTable::boardsName, {{QStringLiteral("stock_id"), QStringLiteral("board_id")}}};
};

BoardDirectory::BoardDirectory()
    : m_index(std::make_unique<Index>())
{
}

BoardDirectory::~BoardDirectory() = default;

BoardDirectory* BoardDirectory::i()
{
    static BoardDirectory directory;
    directory.m_index->rows.follow();
    return &directory;
}

bool BoardDirectory::isAnonymById(int stockId, int boardId) const
{
    const Record board = m_index->rows.first(0, RowKey{{stockId, boardId, 0}});
    const int column = m_index->rows.columnIndex(QStringLiteral("is_anonym"));
    return OptionalField::integer(board.value(column)).value_or(0) != 0;
}
