#include "chain/securityrows.h"

#include "chain/chaintables.h"
#include "chain/chaintexts.h"

#include <database/exception.h>
#include <database/table.h>

#include <QDateTime>
#include <QLocale>

SecurityRows::SecurityRows(Table& table)
    : m_table(table)
{
}

int SecurityRows::find(const char* name) const
{
    for (const FoundColumn& found : m_found) {
        if (found.name == name)
            return found.index;
    }
    m_found.push_back({name, m_table.columnIndex(QString::fromLatin1(name))});
    return m_found.back().index;
}

int SecurityRows::column(const char* name) const
{
    const int index = find(name);
    if (index < 0)
        throw Exception(ChainTexts::tr("The table \"%1\" has no column \"%2\".")
                            .arg(m_table.name(), QString::fromLatin1(name)));
    return index;
}

FieldConstValue SecurityRows::field(const Record& row, const char* column, FieldType type) const
{
    const FieldConstValue value = row.value(find(column));
    if (!value.isValid() || value.isNull() || value.type() != type)
        return {};
    return value;
}

std::optional<qint64> SecurityRows::integer(const Record& row, const char* column) const
{
    const FieldConstValue small = field(row, column, FieldType::Int32);
    if (small.isValid())
        return small.toInt32();
    const FieldConstValue large = field(row, column, FieldType::Int64);
    if (large.isValid())
        return large.toInt64();
    return std::nullopt;
}

std::optional<double> SecurityRows::real(const Record& row, const char* column) const
{
    const FieldConstValue value = field(row, column, FieldType::Double);
    return value.isValid() ? std::optional<double>(value.toDouble()) : std::nullopt;
}

std::optional<decimal> SecurityRows::fixedPoint(const Record& row, const char* column) const
{
    const FieldConstValue value = field(row, column, FieldType::Decimal);
    return value.isValid() ? std::optional<decimal>(value.toDecimal()) : std::nullopt;
}

QString SecurityRows::text(const Record& row, const char* column) const
{
    const FieldConstValue value = field(row, column, FieldType::Text);
    return value.isValid() ? value.toText() : QString();
}

QDate SecurityRows::day(const Record& row, const char* column) const
{
    const FieldConstValue value = field(row, column, FieldType::Moment);
    return value.isValid() ? QDateTime::fromMSecsSinceEpoch(value.toMoment(), Qt::UTC).date() : QDate();
}

bool SecurityRows::isOnChainBoard(const Record& row) const
{
    return integer(row, "stock_id") == qint64(chainStockId)
        && integer(row, "board_id") == qint64(chainBoardId);
}

FieldValue SecurityRows::writable(const Record& row, const char* name)
{
    return m_table.value(row, column(name));
}

void SecurityRows::setInteger(const Record& row, const char* column, std::optional<qint64> value)
{
    FieldValue view = writable(row, column);
    if (value && view.type() == FieldType::Int32)
        view.setInt32(qint32(*value));
    else if (value)
        view.setInt64(*value);
}

void SecurityRows::setReal(const Record& row, const char* column, std::optional<double> value)
{
    FieldValue view = writable(row, column);
    if (value)
        view.setDouble(*value);
}

void SecurityRows::setFixedPoint(const Record& row, const char* column, const std::optional<decimal>& value)
{
    FieldValue view = writable(row, column);
    if (value)
        view.setDecimal(*value);
}

void SecurityRows::setText(const Record& row, const char* column, const QString& value)
{
    writable(row, column).setText(value);
}

void SecurityRows::setDay(const Record& row, const char* column, const QDate& value)
{
    FieldValue view = writable(row, column);
    if (value.isValid())
        view.setMoment(QDateTime(value, QTime(0, 0), Qt::UTC).toMSecsSinceEpoch());
}

decimal exactDecimal(double value)
{
    return decimal::fromString(QString::number(value, 'f', QLocale::FloatingPointShortest));
}
