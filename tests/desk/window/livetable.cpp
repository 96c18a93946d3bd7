#include "livetable.h"

#include "desktest.h"

#include <chain/chaintables.h>
#include <database/table.h>
#include <directory/securitydirectory.h>
#include <pricing/black.h>

namespace {

constexpr short priceDecimals = 4;

Table& securities()
{
    return *ChainTables::find().securities;
}

int column(const char* name)
{
    return securities().columnIndex(QString::fromLatin1(name));
}

decimal settlement(OptionType type, double strike, double forward, double volatilityShift)
{
    const Pricing::Market market{forward, 91.0 / 365.0};
    const double volatility = DeskTest::volatility(strike) + volatilityShift;
    return decimal::fromDouble(
        Pricing::blackPrice(type, strike, market, volatility).value_or(0.0), priceDecimals);
}

// The first of ids that no row has, far beyond those of imports.
int freeId()
{
    static int next = 1000000;
    constexpr int most = 10000;
    next += most;
    return next;
}

Record copyOf(const Record& record)
{
    Table& table = securities();
    const Record copy = table.createRow();
    for (int i = 0; i < table.columnCount(); ++i)
        table.value(copy, i).setVariant(record.value(i).toVariant());
    return copy;
}

}

QVector<Record> LiveTable::options(int futureIsinId)
{
    QVector<Record> records;
    for (const Record& record : securities().masterIndex()) {
        const FieldConstValue future = record.value(column("fut_isin_id"));
        if (!future.isNull() && future.toVariant().toInt() == futureIsinId)
            records.append(record);
    }
    return records;
}

void LiveTable::price(const QVector<Record>& records, double forward, double volatilityShift)
{
    securities().changeRows(records, [&](const Record& record, const Table::FieldAccess& field) {
        const auto type = OptionType(record.field(column("option_type")).toChar());
        const double strike = record.value(column("strike")).toDecimal().toDouble();
        field(column("settlement")).setDecimal(settlement(type, strike, forward, volatilityShift));
    });
}

void LiveTable::takePrices(const QVector<Record>& records)
{
    securities().changeRows(records, [](const Record&, const Table::FieldAccess& field) {
        for (const char* const name : {"settlement", "bid", "ask", "last"})
            field(column(name)).setNull();
    });
}

void LiveTable::addStrikes(int futureIsinId, const QVector<double>& strikes)
{
    Table& table = securities();
    const QVector<Record> present = options(futureIsinId);
    int id = freeId();
    QVector<Record> added;
    for (const double strike : strikes) {
        for (const OptionType type : {OptionType::Call, OptionType::Put}) {
            const Record copy = copyOf(present.first());
            table.value(copy, column("isin_id")).setVariant(id);
            table.value(copy, column("sec_id")).setVariant(qlonglong(id++));
            table.value(copy, column("option_type")).setText(QString(QLatin1Char(char(type))));
            table.value(copy, column("strike")).setDecimal(decimal::fromDouble(strike, 1));
            table.value(copy, column("settlement"))
                .setDecimal(settlement(type, strike, DeskTest::forward, 0.0));
            added.append(copy);
        }
    }
    table.appendRows(added);
}

Record LiveTable::future(int futureIsinId)
{
    return SecurityDirectory::i()->recordByIsinId(futureIsinId, chainBoardId);
}

int LiveTable::addSeries(int futureIsinId, const QString& baseCode)
{
    Table& table = securities();
    int id = freeId();
    const int copyIsinId = id;
    QVector<Record> added;
    for (const Record& record : QVector<Record>{future(futureIsinId)} + options(futureIsinId)) {
        const Record copy = copyOf(record);
        table.value(copy, column("base_code")).setText(baseCode);
        if (id != copyIsinId)
            table.value(copy, column("fut_isin_id")).setVariant(copyIsinId);
        table.value(copy, column("isin_id")).setVariant(id);
        table.value(copy, column("sec_id")).setVariant(qlonglong(id++));
        added.append(copy);
    }
    table.appendRows(added);
    return copyIsinId;
}

QVector<Record> LiveTable::removeSeries(int futureIsinId)
{
    const QVector<Record> gone = QVector<Record>{future(futureIsinId)} + options(futureIsinId);
    securities().removeRows(gone);
    return gone;
}

void LiveTable::setQuote(int futureIsinId, double quote)
{
    securities().changeRows({future(futureIsinId)}, [quote](const Record&, const Table::FieldAccess& field) {
        field(column("cur_kotir_real")).setDecimal(decimal::fromDouble(quote, priceDecimals));
    });
}

QString LiveTable::quote(int futureIsinId)
{
    return future(futureIsinId).field(column("cur_kotir_real")).toString();
}
