#include "pricingtestdata.h"

#include <QFile>
#include <QStringList>

#include <algorithm>

namespace PricingTest {

namespace {

// Rows of a file without its heading; none where it cannot be read.
QVector<QStringList> rows(const QString& fileName)
{
    QVector<QStringList> result;
    QFile file(QStringLiteral(PLOT2D_REALDATA_DIR "/") + fileName);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return result;
    file.readLine();
    while (!file.atEnd())
        result.append(QString::fromLatin1(file.readLine()).trimmed().split(QLatin1Char(',')));
    return result;
}

}

const QVector<double>& badNumbers()
{
    static const QVector<double> numbers{notANumber, infinity, -infinity, -1.0, 0.0, -0.0};
    return numbers;
}

OptionQuote settledQuote(OptionType type, const QString& strike, const QString& settlement)
{
    OptionQuote quote;
    quote.type = type;
    quote.strike = decimal::fromString(strike);
    quote.settlement = decimal::fromString(settlement);
    return quote;
}

OptionSeries crudeOilSeries()
{
    OptionSeries series;
    for (const QStringList& row : rows(QStringLiteral("wti_options_on_futures_2012-10-01.csv"))) {
        const OptionType type = row[0] == QLatin1String("C") ? OptionType::Call : OptionType::Put;
        OptionQuote quote = settledQuote(type, row[1], row[2]);
        quote.openInterest = row[3].toLongLong();
        quote.volume = row[4].toLongLong();
        quote.volatility = row[6].toDouble();
        series.quotes.append(quote);
    }
    // The file lists all calls, then all puts.
    std::stable_sort(series.quotes.begin(), series.quotes.end(),
        [](const OptionQuote& a, const OptionQuote& b) { return a.strike < b.strike; });
    return series;
}

decimal crudeOilPriceStep()
{
    return decimal::fromUnits(1, 2);
}

QMap<QString, OptionSeries> indexSeries()
{
    QMap<QString, OptionSeries> result;
    for (const QStringList& row : rows(QStringLiteral("dax_index_options_2012-02-10.csv"))) {
        QVector<OptionQuote>& quotes = result[row[0]].quotes;
        if (!row[2].isEmpty())
            quotes.append(settledQuote(OptionType::Call, row[1], row[2]));
        if (!row[3].isEmpty())
            quotes.append(settledQuote(OptionType::Put, row[1], row[3]));
    }
    return result;
}

decimal indexPriceStep()
{
    return decimal::fromUnits(1, 1);
}

}
