#include "host/basic_models/randomoptions.h"

#include <algorithm>
#include <optional>

namespace TestSupport {

RandomOptions::RandomOptions(quint64 seed)
    : m_random(seed)
    , m_table(makeSecurities())
{
}

void RandomOptions::step()
{
    const int kind = below(100);
    if (kind < 40) {
        const int place = below(3);
        const int position = place == 0 ? 0
            : place == 1                ? m_table->rowCount()
                                        : below(m_table->rowCount() + 1);
        m_table->insertRows(position, rows(below(6)));
    } else if (kind < 62) {
        m_table->removeRows(some(4));
    } else if (kind < 92) {
        change();
    } else if (kind < 95) {
        m_table->resetRows(rows(below(12)));
    } else if (kind < 96) {
        m_table->clear();
    } else if (kind < 98) {
        // The strikes lie so far apart that they make more runs than are announced one by one.
        m_table->appendRows(rows(120));
    } else {
        m_table->removeRows(some(1).mid(0, m_table->rowCount() - 10));
    }
}

FilterParams RandomOptions::filter()
{
    const auto any = [this](int value) { return below(2) == 0 ? -1 : value; };
    return {any(below(2)), any(below(2)), any(below(2)), any(below(2) == 0 ? 'C' : 'P')};
}

QString RandomOptions::baseCode()
{
    const QStringList codes{
        QString(), QStringLiteral("Cobalt"), QStringLiteral("AMBER"), QStringLiteral("AMBER")};
    return codes.at(below(codes.size()));
}

QVector<Record> RandomOptions::rows(int count)
{
    QVector<Record> made;
    for (int i = 0; i < count; ++i)
        made.append(makeOption(*m_table, row()));
    return made;
}

QVector<Record> RandomOptions::some(int oneOf)
{
    QVector<Record> chosen;
    for (const Record& record : m_table->masterIndex()) {
        if (below(oneOf) == 0)
            chosen.append(record);
    }
    return chosen;
}

OptionRow RandomOptions::row()
{
    const auto orNull = [this](const QVariant& value) { return below(10) == 0 ? QVariant() : value; };
    OptionRow made;
    const int range = below(4) == 0 ? 400 : 12;
    made.strike = orNull(QVariant::fromValue(decimal::fromUnits(below(range) - 2, 1)));
    made.baseCode = orNull(below(4) == 0 ? QStringLiteral("Cobalt") : QStringLiteral("AMBER"));
    made.sectype = orNull(below(6) == 0 ? QStringLiteral("F") : QStringLiteral("O"));
    made.optionType = orNull(below(2) == 0 ? QStringLiteral("C") : QStringLiteral("P"));
    made.session = orNull(below(4) - 1);
    made.stockId = orNull(below(2));
    made.boardId = orNull(below(2));
    made.futIsinId = orNull(below(2));
    return made;
}

void RandomOptions::change()
{
    const auto column = [this](const char* name) { return m_table->columnIndex(QString::fromLatin1(name)); };
    m_table->changeRows(some(5), [&](const Record&, const Table::FieldAccess& field) {
        const OptionRow now = row();
        switch (below(10)) {
        case 0:
            return field(column("strike")).setVariant(now.strike);
        case 1:
            return field(column("base_code")).setVariant(now.baseCode);
        case 2:
            return field(column("sectype")).setVariant(now.sectype);
        case 3:
            return field(column("option_type")).setVariant(now.optionType);
        case 4:
            return field(column("sess_id")).setVariant(now.session);
        case 5:
            return field(column("board_id")).setVariant(now.boardId);
        default:
            return field(column("bid")).setDecimal(decimal::fromUnits(below(1000), 2));
        }
    });
}

namespace {

bool isOption(const Table& table, const Record& record, const QString& baseCode)
{
    const auto text = [&](const char* column) {
        return record.field(table.columnIndex(QString::fromLatin1(column))).toString();
    };
    return !baseCode.isEmpty() && text("base_code") == baseCode && text("sectype") == QStringLiteral("O")
        && !text("strike").isEmpty();
}

std::optional<int> number(const Table& table, const Record& record, const char* column)
{
    const FieldConstValue value = record.value(table.columnIndex(QString::fromLatin1(column)));
    return value.isNull() ? std::nullopt : std::optional<int>(value.toInt32());
}

bool passes(const Table& table, const Record& record, const FilterParams& filter)
{
    const auto is = [&](int wanted, const char* column) {
        return wanted == -1 || number(table, record, column) == wanted;
    };
    const Field type = record.field(table.columnIndex(QStringLiteral("option_type")));
    return is(filter.stockId, "stock_id") && is(filter.boardId, "board_id")
        && is(filter.futIsinId, "fut_isin_id")
        && (filter.optionType == -1 || type.toString() == QString(QChar(filter.optionType)));
}

decimal strikeOf(const Table& table, const Record& record)
{
    return record.value(table.columnIndex(QStringLiteral("strike"))).toDecimal();
}

}

ExpectedStrikes expectedStrikes(const Table* table, const QString& baseCode)
{
    ExpectedStrikes expected;
    if (!table)
        return expected;
    for (const Record& record : table->masterIndex()) {
        if (isOption(*table, record, baseCode))
            expected.first.emplace(strikeOf(*table, record), record);
    }
    return expected;
}

ExpectedStrikes expectedStrikes(const Table* table, const QString& baseCode, const FilterParams& filter)
{
    ExpectedStrikes expected;
    if (!table)
        return expected;
    const auto sessionOf
        = [&](const Record& record) { return number(*table, record, "sess_id").value_or(0); };
    QVector<Record> options;
    for (const Record& record : table->masterIndex()) {
        if (!isOption(*table, record, baseCode) || !passes(*table, record, filter))
            continue;
        expected.session
            = options.isEmpty() ? sessionOf(record) : std::max(expected.session, sessionOf(record));
        options.append(record);
    }
    for (const Record& record : options) {
        if (sessionOf(record) == expected.session)
            expected.first.emplace(strikeOf(*table, record), record);
    }
    return expected;
}

}
