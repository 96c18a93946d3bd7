#pragma once

#include "chain/columnnames.h"

#include <QStringList>
#include <QVector>

#include <array>

/// Where in a row what stands, after the names in a header.
class ColumnMap {
public:
    ColumnMap() = default;
    explicit ColumnMap(const QStringList& header);

    /// The index of the cell, -1 if there is none.
    int index(Column column, Side side = Side::Row) const;
    bool has(Column column, Side side = Side::Row) const { return index(column, side) >= 0; }
    /// Whether the name of the volatility's column says that it is in percent.
    bool isPercent(Side side) const;
    /// Whether a row holds a call and a put.
    bool hasSides() const;
    /// The columns of codes, the likeliest for the underlying's first.
    const QVector<int>& codes() const { return m_codes; }
    /// How many cells the header has without empty ones at its end.
    int cellCount() const { return m_cellCount; }
    /// How many of the header's names are known.
    int knownCount() const { return m_knownCount; }

    /// Whether a strike is there, the option's type (or a code that may tell it), and a price or volatility.
    bool isComplete() const;
    /// Why one of two columns of the same name cannot be chosen; empty if there is no such pair.
    QString ambiguity() const { return m_ambiguity; }

    /// Takes a column as one of another meaning, unless there is one of that already.
    void reassign(Column from, Column to, Side side = Side::Row);
    /// Takes a column of UnderlyingOrCode as one of codes.
    void reassignToCode(Column from);
    /// Forgets a column.
    void drop(Column column, Side side = Side::Row);

private:
    struct Place {
        int cell = -1;
        int rank = 0;
        bool percent = false;
    };

    Place& place(Column column, Side side);
    const Place& place(Column column, Side side) const;
    bool hasValues(Side side) const;
    void take(const ColumnName& name, int cell, const QString& header);
    void assignMirrored(QVector<std::optional<ColumnName>>* names) const;

    std::array<std::array<Place, sideCount>, columnCount> m_places;
    QVector<int> m_codes;
    QVector<int> m_codeRanks;
    int m_cellCount = 0;
    int m_knownCount = 0;
    QString m_ambiguity;
};
