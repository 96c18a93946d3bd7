#include "directory/securitiestable.h"

namespace {

// Five decimals hold every price and strike quoted, and are what a quote is computed to.
constexpr short priceDecimals = 5;

TableColumnDef column(const char* name, FieldType type, short decimals = 0)
{
    return {QString::fromLatin1(name), type, decimals};
}

TableColumnDef priceColumn(const char* name)
{
    return column(name, FieldType::Decimal, priceDecimals);
}

}

const QString SecuritiesTable::securitiesName = QStringLiteral("securities");
const QString SecuritiesTable::boardsName = QStringLiteral("boards");

QVector<TableColumnDef> SecuritiesTable::securitiesColumns()
{
    return {
        column("stock_id", FieldType::Int32),
        column("board_id", FieldType::Int32),
        column("sec_id", FieldType::Int64),
        column("isin_id", FieldType::Int32),
        column("fut_isin_id", FieldType::Int32),
        column("base_isin_id", FieldType::Int32),
        column("base_code", FieldType::Text),
        column("short_name", FieldType::Text),
        column("sectype", FieldType::Text),
        column("option_type", FieldType::Text),
        priceColumn("strike"),
        column("expdate", FieldType::Moment),
        column("sess_id", FieldType::Int32),
        priceColumn("price_step"),
        column("decimals", FieldType::Int32),
        priceColumn("cur_kotir_real"),
        priceColumn("cur_kotir"),
        priceColumn("old_kotir"),
        priceColumn("bid"),
        priceColumn("ask"),
        priceColumn("last"),
        priceColumn("settlement"),
        column("lasttime", FieldType::Moment),
        column("volume", FieldType::Int64),
        column("open_interest", FieldType::Int64),
        column("volat_min", FieldType::Double),
        column("volat_max", FieldType::Double),
        column("volat", FieldType::Double),
    };
}

QVector<TableColumnDef> SecuritiesTable::boardsColumns()
{
    return {
        column("stock_id", FieldType::Int32),
        column("board_id", FieldType::Int32),
        column("is_anonym", FieldType::Int32),
        column("name", FieldType::Text),
    };
}
