#pragma once

#include "support/testhost.h"

#include <QDateTime>

/// The tables of a market of two futures and three options, of which one column has a type of the test's
/// choice or holds nothing.
namespace HostColumns {

/// One column as another host might have made it.
struct Change {
    QString table;
    QString column;
    FieldType type = FieldType::Int32;
    bool isNull = false;

    bool isOf(const char* tableName, const char* columnName) const
    {
        return table == QLatin1String(tableName) && column == QLatin1String(columnName);
    }
};

constexpr FieldType allTypes[] = {FieldType::Int32, FieldType::Int64, FieldType::Double, FieldType::Decimal,
    FieldType::Text, FieldType::Moment};

inline const char* nameOf(FieldType type)
{
    static const char* const names[]
        = {"", "32-bit integer", "64-bit integer", "double", "decimal", "text", "moment"};
    return names[int(type)];
}

/// What stands for a value in a column of another type: the same number, the same day, and 70 for a text that
/// is no number.
inline QVariant converted(const QString& column, const QVariant& value, FieldType type)
{
    if (column == QLatin1String("expdate") && type == FieldType::Text)
        return QDateTime::fromMSecsSinceEpoch(value.toLongLong(), Qt::UTC)
            .toString(QStringLiteral("yyyy-MM-dd"));
    if (type == FieldType::Text)
        return value.toString();
    bool isNumber = false;
    const double number = value.toString().toDouble(&isNumber);
    constexpr int letter = 70;
    if (type == FieldType::Decimal)
        return isNumber ? QVariant(QString::number(number, 'f', 5)) : QVariant(letter);
    if (type == FieldType::Double)
        return isNumber ? QVariant(number) : QVariant(letter);
    return isNumber ? QVariant(qint64(number)) : QVariant(letter);
}

inline void addRow(const Change& change, const QString& table, TestHost::Row row)
{
    if (table == change.table && row.contains(change.column)) {
        const QVariant value = row.take(change.column);
        if (!change.isNull)
            row.insert(change.column, converted(change.column, value, change.type));
    }
    TestHost::addRow(table, row);
}

/// The first future expires after the second. Strikes are 100, 110 and 120, of two decimals.
inline void fill(const Change& change)
{
    const QString securities = QStringLiteral("securities");
    const QString boards = QStringLiteral("boards");
    using TestHost::withType;
    TestHost::createSecurities(change.table == securities
            ? withType(TestHost::securitiesColumns(), change.column, change.type)
            : TestHost::securitiesColumns());
    TestHost::createBoards(change.table == boards
            ? withType(TestHost::boardsColumns(), change.column, change.type)
            : TestHost::boardsColumns());
    addRow(change, boards, {{"stock_id", 1}, {"board_id", 2}, {"is_anonym", 1}, {"name", "main"}});

    const TestHost::Row rest{{"short_name", "short"}, {"option_type", "C"}, {"fut_isin_id", 11},
        {"base_isin_id", 3}, {"bid", "1"}, {"ask", "2"}, {"lasttime", TestHost::moment(2030, 1, 1)}};
    TestHost::Row common = TestHost::future(rest);
    common.insert(QStringLiteral("price_step"), QStringLiteral("1"));
    common.insert(QStringLiteral("decimals"), 2);
    common.insert(QStringLiteral("cur_kotir_real"), QStringLiteral("101"));
    common.insert(QStringLiteral("cur_kotir"), QStringLiteral("102"));
    common.insert(QStringLiteral("old_kotir"), QStringLiteral("103"));
    common.insert(QStringLiteral("volat_min"), 1.0);
    common.insert(QStringLiteral("volat_max"), 2.0);
    addRow(change, securities, common);
    common.insert(QStringLiteral("isin_id"), 11);
    common.insert(QStringLiteral("expdate"), TestHost::moment(2029, 6, 20));
    addRow(change, securities, common);
    common.insert(QStringLiteral("sectype"), QStringLiteral("O"));
    for (int i = 0; i < 3; ++i) {
        common.insert(QStringLiteral("isin_id"), 20 + i);
        common.insert(QStringLiteral("sec_id"), 200 + i);
        common.insert(QStringLiteral("strike"), 100 + 10 * i);
        addRow(change, securities, common);
    }
}

}
