#pragma once

#include "chain/csvreader.h"
#include "chain/headerfinder.h"
#include "chain/numberparser.h"
#include "chain/optionchain.h"

#include <QVector>

/// How the rows of a file are to be read.
struct RowFormat {
    QString fileName;
    QStringList names;
    ColumnMap columns;
    DecimalMark mark = DecimalMark::Point;
    /// Cells before the header's first: 1 where the rows are numbered and the header does not say so.
    int labelCells = 0;
    /// The column whose standard option codes tell what has no column of its own; -1 for none.
    int codeColumn = -1;

    /// The cell of a column, empty where the row has none.
    QString cell(const CsvRow& row, int column) const { return row.cells.value(column + labelCells); }
};

/// Decides by a file's first rows what its header leaves open: the decimal mark, whether "vol" is a volume or
/// a volatility and "underlying" a price or a code, whether the columns of dates are ones (one of year
/// fractions or days is not), and where the option's type comes from. Throws ChainError if that is nowhere.
RowFormat formatOfRows(const QString& fileName, const ChainHeader& header, const QVector<CsvRow>& rows);

/// The type that a cell names ("C", "put", "Calls", "PE" ...); empty for other texts.
std::optional<OptionType> parseOptionType(const QString& cell);
