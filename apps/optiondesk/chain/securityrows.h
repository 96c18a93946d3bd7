#pragma once

#include "chain/optionchain.h"

#include <database/record.h>

#include <QString>

#include <optional>
#include <vector>

class Table;

/// Reads and fills rows of the host's table "securities" by the names of its columns, which are literals.
class SecurityRows {
public:
    /// The table outlives this object.
    explicit SecurityRows(Table& table);

    Table& table() const { return m_table; }

    /// The value of a field; empty where the field is null, of another type or not in the table.
    std::optional<qint64> integer(const Record& row, const char* column) const;
    std::optional<double> real(const Record& row, const char* column) const;
    std::optional<decimal> fixedPoint(const Record& row, const char* column) const;
    QString text(const Record& row, const char* column) const;
    /// The day of a moment in UTC; invalid where it is null.
    QDate day(const Record& row, const char* column) const;

    /// Whether the row is on the board of the chains.
    bool isOnChainBoard(const Record& row) const;

    /// Fills a field of a row that is not in the table yet; nothing for an empty optional or an invalid day.
    /// Exception if the table has no such column or one of another type.
    void setInteger(const Record& row, const char* column, std::optional<qint64> value);
    void setReal(const Record& row, const char* column, std::optional<double> value);
    void setFixedPoint(const Record& row, const char* column, const std::optional<decimal>& value);
    void setText(const Record& row, const char* column, const QString& value);
    void setDay(const Record& row, const char* column, const QDate& value);

    /// The column's position. Exception if there is none.
    int column(const char* name) const;

private:
    struct FoundColumn {
        const char* name = nullptr;
        int index = -1;
    };

    int find(const char* name) const;
    FieldConstValue field(const Record& row, const char* column, FieldType type) const;
    FieldValue writable(const Record& row, const char* column);

    Table& m_table;
    /// Whoever goes through all rows asks for the same few literals again and again.
    mutable std::vector<FoundColumn> m_found;
};

/// The decimal number that is read back as the same double, for magnitudes of 1e-3 to 1e15.
decimal exactDecimal(double value);
