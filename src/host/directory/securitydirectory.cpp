#include "directory/securitydirectory.h"

#include "directory/optionalfield.h"
#include "directory/securitiestable.h"
#include "tableindex_p.h"

class SecurityDirectory::Index {
public:
    enum KeySet { IsinAndBoard, Identity };

    TableIndex rows{SecuritiesTable::securitiesName,
        {{QStringLiteral("isin_id"), QStringLiteral("board_id")},
            {QStringLiteral("stock_id"), QStringLiteral("board_id"), QStringLiteral("sec_id")}}};
};

SecurityDirectory::SecurityDirectory()
    : m_index(std::make_unique<Index>())
{
}

SecurityDirectory::~SecurityDirectory() = default;

SecurityDirectory* SecurityDirectory::i()
{
    static SecurityDirectory directory;
    directory.m_index->rows.follow();
    return &directory;
}

Record SecurityDirectory::recordByIsinId(int isinId, int boardId) const
{
    return m_index->rows.first(Index::IsinAndBoard, RowKey{{isinId, boardId, 0}});
}

int SecurityDirectory::decimalsById(int stockId, int boardId, long long secId) const
{
    const Record security = m_index->rows.first(Index::Identity, RowKey{{stockId, boardId, secId}});
    const int column = m_index->rows.columnIndex(QStringLiteral("decimals"));
    const std::optional<qint64> decimals = OptionalField::integer(security.value(column));
    return decimals && *decimals >= 0 && *decimals <= decimal::maxDecimals ? static_cast<int>(*decimals) : -1;
}
