#pragma once

#include "chain/columnsample.h"

class ChainBuilder;
struct ReadOption;

/// Turns the rows of a file into options. Throws ChainError, with the line, for a row of too few or too many
/// cells, for what is no number, date or type where one belongs, a strike that is not positive, and for a
/// negative price, volume or volatility.
class RowParser {
public:
    /// The builder outlives the parser.
    RowParser(const RowFormat& format, ChainBuilder* builder);

    void parse(const CsvRow& row);

    /// The code in the first column of codes that holds one value only, the root of an option code; empty
    /// if there is none.
    QString baseCode() const;

private:
    struct Code {
        int column = -1;
        QString value;
        bool single = true;
    };

    void checkCellCount(const CsvRow& row) const;
    void noteCodes(const CsvRow& row);
    void noteQuoteDate(const CsvRow& row) const;
    void addOption(const CsvRow& row, ReadOption option, OptionType type, Side side) const;
    OptionType typeOf(const CsvRow& row) const;
    int expiryOf(const CsvRow& row) const;
    decimal strikeOf(const CsvRow& row) const;
    std::optional<decimal> number(const CsvRow& row, Column column, Side side, bool* percent = nullptr) const;
    std::optional<decimal> amount(const CsvRow& row, Column column, Side side) const;
    std::optional<qint64> count(const CsvRow& row, Column column, Side side) const;
    std::optional<double> volatility(const CsvRow& row, Side side) const;
    std::optional<double> positive(const CsvRow& row, Column column) const;
    [[noreturn]] void fail(const CsvRow& row, int column, const QString& what) const;

    RowFormat m_format;
    ChainBuilder& m_builder;
    QVector<Code> m_codes;
};
