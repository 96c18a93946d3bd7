#include "desk/chain/chaintext.h"

#include "chain/chainerror.h"
#include "chain/chainreader.h"

#include <QBuffer>

namespace {

QString dayText(const QDate& day)
{
    return day.isValid() ? day.toString(Qt::ISODate) : QStringLiteral("-");
}

QString describeQuote(const OptionQuote& quote)
{
    QString text = QStringLiteral("%1 %2").arg(QLatin1Char(char(quote.type))).arg(quote.strike.toString());
    const auto add = [&text](const char* name, const QString& value) {
        text += QStringLiteral(" %1=%2").arg(QLatin1String(name), value);
    };
    const auto addPrice = [&add](const char* name, const std::optional<decimal>& price) {
        if (price)
            add(name, price->toString());
    };
    addPrice("b", quote.bid);
    addPrice("a", quote.ask);
    addPrice("l", quote.last);
    addPrice("s", quote.settlement);
    if (quote.volume)
        add("v", QString::number(*quote.volume));
    if (quote.openInterest)
        add("i", QString::number(*quote.openInterest));
    if (quote.volatility)
        add("iv", QString::number(*quote.volatility, 'g', 12));
    return text;
}

}

OptionChain ChainText::read(const QByteArray& text, const QString& name)
{
    QBuffer buffer;
    buffer.setData(text);
    buffer.open(QIODevice::ReadOnly);
    return readChain(buffer, name);
}

QString ChainText::errorOf(const QByteArray& text)
{
    try {
        read(text);
    } catch (const ChainError& error) {
        return QStringLiteral("%1: %2").arg(error.line()).arg(error.reason());
    }
    return {};
}

QStringList ChainText::describe(const OptionChain& chain)
{
    QStringList lines = {QStringLiteral("%1 %2 step %3 decimals %4")
                             .arg(chain.baseCode, dayText(chain.asOf), chain.priceStep.toString())
                             .arg(chain.decimals)};
    for (const OptionSeries& series : chain.series) {
        const QString forward
            = series.forward ? QString::number(*series.forward, 'g', 17) : QStringLiteral("-");
        lines.append(QStringLiteral("%1 %2").arg(dayText(series.expiry), forward));
        for (const OptionQuote& quote : series.quotes)
            lines.append(describeQuote(quote));
    }
    return lines;
}

QStringList ChainText::describeOptions(const OptionChain& chain)
{
    QStringList lines;
    for (const OptionSeries& series : chain.series) {
        for (const OptionQuote& quote : series.quotes)
            lines.append(describeQuote(quote));
    }
    return lines;
}
