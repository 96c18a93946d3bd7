#include "chaincheck.h"
#include "chaincolumns.h"

#include <chain/chainerror.h>
#include <chain/chainreader.h>

#include <QBuffer>
#include <QLocale>
#include <QStringList>

namespace {

const QString& fileName()
{
    static const QString name = QStringLiteral("test.csv");
    return name;
}

OptionChain readText(const QByteArray& text, const ChainProgress& progress = ChainProgress())
{
    QBuffer device;
    device.setData(text);
    device.open(QIODevice::ReadOnly);
    return readChain(device, fileName(), progress);
}

template <typename Number> QString textOf(const std::optional<Number>& value)
{
    if constexpr (std::is_same_v<Number, decimal>)
        return value ? value->toString() : QString();
    else
        return value ? QString::number(*value) : QString();
}

QString textOf(const std::optional<double>& value)
{
    return value ? QString::number(*value, 'g', QLocale::FloatingPointShortest) : QString();
}

QString rowOf(const OptionChain& chain, const OptionSeries& series, const OptionQuote& quote)
{
    QStringList cells{QString(QLatin1Char(char(quote.type))), quote.strike.toString(), textOf(quote.bid),
        textOf(quote.ask), textOf(quote.last), textOf(quote.settlement), textOf(quote.volume),
        textOf(quote.openInterest), textOf(series.forward)};
    if (series.expiry.isValid())
        cells.append(series.expiry.toString(Qt::ISODate));
    if (chain.asOf.isValid())
        cells.append(chain.asOf.toString(Qt::ISODate));
    return cells.join(QLatin1Char(',')) + QLatin1Char('\n');
}

/// The chain as a table in the plainest form.
QByteArray written(const OptionChain& chain)
{
    QString text = QStringLiteral("type,strike,bid,ask,last,settle,volume,open interest,forward");
    if (chain.series.first().expiry.isValid())
        text += QStringLiteral(",expiry");
    if (chain.asOf.isValid())
        text += QStringLiteral(",quote date");
    text += QLatin1Char('\n');
    for (const OptionSeries& series : chain.series) {
        for (const OptionQuote& quote : series.quotes)
            text += rowOf(chain, series, quote);
    }
    return text.toUtf8();
}

void expectExplained(const ChainError& error, const QByteArray& text)
{
    // UTF-16 has more bytes than these in a line's end, never fewer.
    const int lines = text.count('\n') + text.count('\r') + 1;
    FUZZ_EXPECT(error.line() >= 0 && error.line() <= lines);
    FUZZ_EXPECT(error.file() == fileName() && !error.reason().isEmpty() && !error.isCancelled());
}

}

/// A text is a chain that is whole, or an error that names one of its lines; and a chain that was read is the
/// same when it is written and read again.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzInput input(data, size);
    const QByteArray text = TableInput(input, chainColumns, int(std::size(chainColumns))).take();
    OptionChain chain;
    try {
        chain = readText(text);
    } catch (const ChainError& error) {
        expectExplained(error, text);
        return 0;
    }
    ChainCheck::expectWhole(chain);
    ChainCheck::expectSame(chain, readText(written(chain)));
    try {
        readText(text, [](qint64 done, qint64 total) { return done < total; });
        FUZZ_EXPECT(false);
    } catch (const ChainError& error) {
        FUZZ_EXPECT(error.isCancelled());
    }
    return 0;
}
