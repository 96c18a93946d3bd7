#include "chain/rowparser.h"

#include "chain/chainbuilder.h"
#include "chain/chainerror.h"
#include "chain/chaintexts.h"
#include "chain/optioncode.h"

#include <algorithm>

namespace {

constexpr int maxCellInMessage = 40;

bool statesAnything(const OptionQuote& quote)
{
    return quote.bid || quote.ask || quote.last || quote.settlement || quote.volume || quote.openInterest
        || quote.volatility;
}

}

RowParser::RowParser(const RowFormat& format, ChainBuilder* builder)
    : m_format(format)
    , m_builder(*builder)
{
    for (const int column : m_format.columns.codes())
        m_codes.append({column, QString(), true});
    const ColumnMap& columns = m_format.columns;
    if (columns.isPercent(Side::Row) || columns.isPercent(Side::Call) || columns.isPercent(Side::Put))
        m_builder.setPercent();
}

void RowParser::parse(const CsvRow& row)
{
    checkCellCount(row);
    noteCodes(row);
    noteQuoteDate(row);
    ReadOption option;
    option.line = row.line;
    option.quote.strike = strikeOf(row);
    option.expiry = expiryOf(row);
    option.forward = positive(row, Column::Forward);
    option.underlying = positive(row, Column::UnderlyingPrice);
    if (m_format.columns.hasSides()) {
        addOption(row, option, OptionType::Call, Side::Call);
        addOption(row, option, OptionType::Put, Side::Put);
    } else {
        addOption(row, option, typeOf(row), Side::Row);
    }
}

QString RowParser::baseCode() const
{
    for (const Code& code : m_codes) {
        if (code.single && !code.value.isEmpty())
            return code.value;
    }
    return {};
}

void RowParser::checkCellCount(const CsvRow& row) const
{
    const int expected = m_format.columns.cellCount() + m_format.labelCells;
    const int most = std::max(expected, m_format.names.size() + m_format.labelCells);
    int filled = row.cells.size();
    while (filled > 0 && row.cells.at(filled - 1).isEmpty())
        --filled;
    if (row.cells.size() < expected || filled > most)
        throw ChainError(m_format.fileName, row.line,
            ChainTexts::tr("%1 cells instead of %2").arg(row.cells.size()).arg(expected));
}

void RowParser::noteCodes(const CsvRow& row)
{
    for (Code& code : m_codes) {
        QString value = m_format.cell(row, code.column);
        if (isMissingValue(value))
            continue;
        if (const std::optional<OptionCode> option = parseOptionCode(value))
            value = option->root;
        if (code.value.isEmpty())
            code.value = value;
        code.single = code.single && code.value == value;
    }
}

void RowParser::noteQuoteDate(const CsvRow& row) const
{
    const int column = m_format.columns.index(Column::QuoteDate);
    const QString cell = m_format.cell(row, column);
    if (column >= 0 && !isMissingValue(cell) && !m_builder.addQuoteDate(cell, row.line))
        fail(row, column, ChainTexts::tr("is no date, or not in the order of day and month before it"));
}

void RowParser::addOption(const CsvRow& row, ReadOption option, OptionType type, Side side) const
{
    OptionQuote& quote = option.quote;
    quote.type = type;
    quote.bid = amount(row, Column::Bid, side);
    quote.ask = amount(row, Column::Ask, side);
    quote.last = amount(row, Column::Last, side);
    quote.settlement = amount(row, Column::Settlement, side);
    quote.volume = count(row, Column::Volume, side);
    quote.openInterest = count(row, Column::OpenInterest, side);
    quote.volatility = volatility(row, side);
    // Of a call and a put side by side, the one without any value is not listed.
    if (side == Side::Row || statesAnything(quote))
        m_builder.add(option);
}

OptionType RowParser::typeOf(const CsvRow& row) const
{
    const int column = m_format.columns.index(Column::Type);
    if (column < 0) {
        const std::optional<OptionCode> code = parseOptionCode(m_format.cell(row, m_format.codeColumn));
        if (!code)
            fail(row, m_format.codeColumn, ChainTexts::tr("is no option code"));
        return code->type;
    }
    const std::optional<OptionType> type = parseOptionType(m_format.cell(row, column));
    if (!type)
        fail(row, column, ChainTexts::tr("is no option type, such as C, P, call or put"));
    return *type;
}

int RowParser::expiryOf(const CsvRow& row) const
{
    const int column = m_format.columns.index(Column::Expiry);
    if (column >= 0) {
        const std::optional<int> expiry = m_builder.expiries().add(m_format.cell(row, column));
        if (!expiry)
            fail(row, column, ChainTexts::tr("is no date, or not in the order of day and month before it"));
        return *expiry;
    }
    if (m_format.codeColumn < 0)
        return -1;
    const std::optional<OptionCode> code = parseOptionCode(m_format.cell(row, m_format.codeColumn));
    if (!code)
        fail(row, m_format.codeColumn, ChainTexts::tr("is no option code"));
    return m_builder.expiries().add(code->expiry.toString(Qt::ISODate)).value_or(-1);
}

decimal RowParser::strikeOf(const CsvRow& row) const
{
    const std::optional<decimal> strike = number(row, Column::Strike, Side::Row);
    if (!strike || *strike <= decimal::zero)
        fail(row, m_format.columns.index(Column::Strike), ChainTexts::tr("is no positive strike"));
    return *strike;
}

std::optional<decimal> RowParser::number(const CsvRow& row, Column column, Side side, bool* percent) const
{
    const int index = m_format.columns.index(column, side);
    const QString cell = m_format.cell(row, index);
    if (index < 0 || isMissingValue(cell))
        return std::nullopt;
    const std::optional<ParsedNumber> number = parseNumber(cell, m_format.mark);
    if (!number || (number->percent && !percent))
        fail(row, index, ChainTexts::tr("is no number"));
    if (percent)
        *percent = number->percent;
    return number->value;
}

std::optional<decimal> RowParser::amount(const CsvRow& row, Column column, Side side) const
{
    const std::optional<decimal> value = number(row, column, side);
    if (value && *value < decimal::zero)
        fail(row, m_format.columns.index(column, side), ChainTexts::tr("is negative"));
    return value;
}

std::optional<qint64> RowParser::count(const CsvRow& row, Column column, Side side) const
{
    const std::optional<decimal> value = amount(row, column, side);
    if (!value)
        return std::nullopt;
    if (value->rounded(0) != *value)
        fail(row, m_format.columns.index(column, side), ChainTexts::tr("is no whole number"));
    return value->toString().toLongLong();
}

std::optional<double> RowParser::volatility(const CsvRow& row, Side side) const
{
    bool percent = false;
    const std::optional<decimal> value = number(row, Column::Volatility, side, &percent);
    if (value && *value < decimal::zero)
        fail(row, m_format.columns.index(Column::Volatility, side), ChainTexts::tr("is negative"));
    if (percent)
        m_builder.setPercent();
    // A volatility of 0 is how tables state that there is none.
    if (!value || value->isZero())
        return std::nullopt;
    return value->toDouble();
}

std::optional<double> RowParser::positive(const CsvRow& row, Column column) const
{
    const std::optional<decimal> value = amount(row, column, Side::Row);
    if (!value || value->isZero())
        return std::nullopt;
    return value->toDouble();
}

void RowParser::fail(const CsvRow& row, int column, const QString& what) const
{
    throw ChainError(m_format.fileName, row.line,
        ChainTexts::tr("\"%1\" in column \"%2\" %3")
            .arg(m_format.cell(row, column).left(maxCellInMessage),
                m_format.names.value(column).left(maxCellInMessage), what));
}
