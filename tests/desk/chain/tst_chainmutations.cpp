#include "chain/chainerror.h"
#include "desk/chain/chaintext.h"
#include "support/testmain.h"

#include <random>

namespace {

const char* const sources[] = {
    "type,strike,settle,volume,iv,expiry\nC,50.5,1.25,10,25%,2012-03-16\nP,60,\"1,234.5\",,30%,16.03.2012\n"
    "C,70,NA,0,-,15-Jun-2012\n",
    "Strike;Call Bid;Call Ask;Put Bid;Put Ask;date\n6.500,5;1,25;1,30;2,5;2,75;01/02/2012\n"
    "6.600,5;;;3,5;3,75;01/02/2012\n",
    "#x\n,OI,LTP,BID,ASK,STRIKE,BID,ASK,LTP,OI,\n,1,2,3,4,50,5,6,7,8,\n,1,2,3,4,60,5,6,7,8,\n",
    "contractSymbol,strike,lastPrice\nAMB231215C00150000,150,1.5\nAMB231215P00150000,150,2.5\n"};

const QByteArray alphabet = "0123456789,;\t|\"'.-+%eECPcp/:#() \n\rNaAx\xe9\xc3\xa9\xff";

QByteArray mutated(QByteArray text, std::mt19937_64& random)
{
    const auto below = [&random](int limit) { return int(random() % quint64(limit)); };
    for (int count = 1 + below(4); count > 0; --count) {
        const int position = below(text.size());
        const int kind = below(4);
        if (kind == 0)
            text[position] = alphabet.at(below(alphabet.size()));
        else if (kind == 1)
            text.insert(position, alphabet.at(below(alphabet.size())));
        else if (kind == 2 && text.size() > 10)
            text.remove(position, 1 + below(5));
        else
            text.insert(position, text.mid(below(text.size()), 1 + below(20)));
    }
    return text;
}

// What is wrong with a chain; empty if nothing is.
QString flawOf(const OptionChain& chain)
{
    if (chain.baseCode.isEmpty() || chain.series.isEmpty() || chain.priceStep <= decimal::zero)
        return QStringLiteral("incomplete");
    QDate expiry;
    for (int index = 0; index < chain.series.size(); ++index) {
        const OptionSeries& series = chain.series.at(index);
        if (series.quotes.isEmpty() || (index > 0 && series.expiry <= expiry))
            return QStringLiteral("series out of order or empty");
        expiry = series.expiry;
        for (int quote = 0; quote < series.quotes.size(); ++quote) {
            const OptionQuote& one = series.quotes.at(quote);
            const bool ordered = quote == 0 || series.quotes.at(quote - 1).strike < one.strike
                || (series.quotes.at(quote - 1).strike == one.strike
                    && series.quotes.at(quote - 1).type == OptionType::Call && one.type == OptionType::Put);
            if (!ordered || one.strike <= decimal::zero)
                return QStringLiteral("options out of order");
            if (one.price().value_or(0.0) < 0.0 || one.volatility.value_or(1.0) <= 0.0)
                return QStringLiteral("negative value");
        }
    }
    return {};
}

}

/// Broken files end in a chain that is whole, or in an error that names a line of the file; nothing else.
class tst_chainmutations : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void mutations_data();
    void mutations();
};

void tst_chainmutations::mutations_data()
{
    QTest::addColumn<QByteArray>("source");
    for (const char* source : sources)
        QTest::newRow(QByteArray(source).left(20).simplified()) << QByteArray(source);
}

void tst_chainmutations::mutations()
{
    QFETCH(QByteArray, source);

    QCOMPARE(flawOf(ChainText::read(source)), QString());
    std::mt19937_64 random(76);
    int chains = 0;
    int errors = 0;
    for (int attempt = 0; attempt < 600; ++attempt) {
        const QByteArray text = mutated(source, random);
        try {
            const QString flaw = flawOf(ChainText::read(text));
            QVERIFY2(
                flaw.isEmpty(), qPrintable(flaw + " of " + QString::fromLatin1(text.toPercentEncoding())));
            ++chains;
        } catch (const ChainError& error) {
            const int lines = text.count('\n') + text.count('\r') + 1;
            QVERIFY2(error.line() >= 0 && error.line() <= lines, text.toPercentEncoding().constData());
            QVERIFY(!error.reason().isEmpty());
            ++errors;
        }
    }
    QVERIFY2(
        chains > 10 && errors > 100, qPrintable(QString("%1 chains, %2 errors").arg(chains).arg(errors)));
}

PLOT2D_TEST_MAIN(tst_chainmutations)
#include "tst_chainmutations.moc"
