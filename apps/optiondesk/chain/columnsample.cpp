#include "chain/columnsample.h"

#include "chain/chainerror.h"
#include "chain/optioncode.h"

#include <QHash>

#include <algorithm>

namespace {

// Days or years to expiry are below it, dates as numbers are above.
constexpr int longestDuration = 100000;

/// The first rows of a file under the format found so far.
class Sample {
public:
    Sample(const QVector<CsvRow>& rows, RowFormat* format)
        : m_rows(rows)
        , m_format(*format)
    {
    }

    void findLabels();
    void findMark();
    void resolveVolume(const QVector<Side>& sides);
    void resolveUnderlying();
    void dropFalseDates(Column column);
    void findCodes();

private:
    // The cells of a column that state something.
    QStringList cells(int column) const;
    bool isNumber(const QString& cell) const { return parseNumber(cell, m_format.mark).has_value(); }
    bool holdsVolatilities(int column) const;

    const QVector<CsvRow>& m_rows;
    RowFormat& m_format;
};

QStringList Sample::cells(int column) const
{
    QStringList result;
    for (const CsvRow& row : m_rows) {
        const QString cell = m_format.cell(row, column);
        if (column >= 0 && !isMissingValue(cell))
            result.append(cell);
    }
    return result;
}

// R's write.table() numbers the rows from 1 without a name for that column.
void Sample::findLabels()
{
    const int labelled = m_format.columns.cellCount() + 1;
    if (m_rows.size() < 2 || m_format.names.size() >= labelled)
        return;
    for (int index = 0; index < m_rows.size(); ++index) {
        const QStringList& row = m_rows.at(index).cells;
        if (row.size() != labelled || row.first() != QString::number(index + 1))
            return;
    }
    m_format.labelCells = 1;
}

void Sample::findMark()
{
    bool point = false;
    bool comma = false;
    for (int column = int(Column::Strike); column <= int(Column::UnderlyingOrCode); ++column) {
        const auto meaning = Column(column);
        if (meaning == Column::Type || meaning == Column::Expiry || meaning == Column::QuoteDate)
            continue;
        for (const Side side : {Side::Row, Side::Call, Side::Put}) {
            const QStringList texts = cells(m_format.columns.index(meaning, side));
            for (const QString& text : texts) {
                const std::optional<DecimalMark> mark = decimalMarkOf(text);
                point = point || mark == DecimalMark::Point;
                comma = comma || mark == DecimalMark::Comma;
            }
        }
    }
    m_format.mark = comma && !point ? DecimalMark::Comma : DecimalMark::Point;
}

bool Sample::holdsVolatilities(int column) const
{
    const QStringList texts = cells(column);
    return std::any_of(texts.begin(), texts.end(), [this](const QString& text) {
        const std::optional<ParsedNumber> number = parseNumber(text, m_format.mark);
        return number && (number->percent || number->value.rounded(0) != number->value);
    });
}

// Volumes are whole numbers, volatilities hardly ever all are.
void Sample::resolveVolume(const QVector<Side>& sides)
{
    ColumnMap& columns = m_format.columns;
    bool volatilities = false;
    for (const Side side : sides) {
        if (columns.has(Column::Volatility, side))
            volatilities = false;
        else if (columns.has(Column::Volume, side))
            volatilities = true;
        else
            volatilities = volatilities || holdsVolatilities(columns.index(Column::VolumeOrVolatility, side));
    }
    for (const Side side : sides)
        columns.reassign(
            Column::VolumeOrVolatility, volatilities ? Column::Volatility : Column::Volume, side);
}

void Sample::resolveUnderlying()
{
    const QStringList texts = cells(m_format.columns.index(Column::UnderlyingOrCode));
    if (std::all_of(texts.begin(), texts.end(), [this](const QString& text) { return isNumber(text); }))
        m_format.columns.reassign(Column::UnderlyingOrCode, Column::UnderlyingPrice);
    else
        m_format.columns.reassignToCode(Column::UnderlyingOrCode);
}

void Sample::dropFalseDates(Column column)
{
    const QStringList texts = cells(m_format.columns.index(column));
    const auto isDuration = [this](const QString& text) {
        const std::optional<ParsedNumber> number = parseNumber(text, m_format.mark);
        return number && number->value < decimal::fromUnits(longestDuration, 0);
    };
    if (std::all_of(texts.begin(), texts.end(), isDuration))
        m_format.columns.drop(column);
}

void Sample::findCodes()
{
    const auto isCode = [](const QString& text) { return parseOptionCode(text).has_value(); };
    for (const int column : m_format.columns.codes()) {
        const QStringList texts = cells(column);
        if (m_format.codeColumn < 0 && !texts.isEmpty() && std::all_of(texts.begin(), texts.end(), isCode))
            m_format.codeColumn = column;
    }
    const QStringList types = cells(m_format.columns.index(Column::Type));
    const bool typed = std::any_of(
        types.begin(), types.end(), [](const QString& text) { return parseOptionType(text).has_value(); });
    if (m_format.codeColumn >= 0 && !typed)
        m_format.columns.drop(Column::Type);
}

}

RowFormat formatOfRows(const QString& fileName, const ChainHeader& header, const QVector<CsvRow>& rows)
{
    RowFormat format;
    format.fileName = fileName;
    format.names = header.names;
    format.columns = header.columns;
    Sample sample(rows, &format);
    sample.findLabels();
    sample.findMark();
    if (format.columns.hasSides())
        sample.resolveVolume({Side::Call, Side::Put});
    else
        sample.resolveVolume({Side::Row});
    sample.resolveUnderlying();
    sample.dropFalseDates(Column::Expiry);
    sample.dropFalseDates(Column::QuoteDate);
    sample.findCodes();
    if (!format.columns.hasSides() && !format.columns.has(Column::Type) && format.codeColumn < 0)
        throw ChainError(fileName, header.line,
            QStringLiteral(
                "no column of the option's type (%1) and no columns of calls and puts (call_..., put_...)")
                .arg(columnExamples(Column::Type)));
    return format;
}

std::optional<OptionType> parseOptionType(const QString& cell)
{
    static const QHash<QString, OptionType> types
        = {{QStringLiteral("c"), OptionType::Call}, {QStringLiteral("call"), OptionType::Call},
            {QStringLiteral("calls"), OptionType::Call}, {QStringLiteral("ce"), OptionType::Call},
            {QStringLiteral("call option"), OptionType::Call}, {QStringLiteral("p"), OptionType::Put},
            {QStringLiteral("put"), OptionType::Put}, {QStringLiteral("puts"), OptionType::Put},
            {QStringLiteral("pe"), OptionType::Put}, {QStringLiteral("put option"), OptionType::Put}};
    const auto found = types.constFind(cell.trimmed().toLower());
    if (found == types.constEnd())
        return std::nullopt;
    return found.value();
}
