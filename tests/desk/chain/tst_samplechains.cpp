#include "chain/chainreader.h"
#include "chain/samplechains.h"
#include "support/testmain.h"

#include <QFileInfo>

class tst_samplechains : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void files();
    void chains_data();
    void chains();
    void parity_data();
    void parity();

private:
    static void addFiles();
};

void tst_samplechains::addFiles()
{
    QTest::addColumn<QString>("file");
    const QStringList files = sampleChainFiles();
    for (const QString& file : files)
        QTest::newRow(qPrintable(QFileInfo(file).fileName())) << file;
}

void tst_samplechains::files()
{
    const QStringList files = sampleChainFiles();
    QCOMPARE(files.size(), 3);
    for (const QString& file : files)
        QVERIFY(QFileInfo(file).size() < 60 * 1024);
}

void tst_samplechains::chains_data()
{
    addFiles();
}

void tst_samplechains::chains()
{
    QFETCH(QString, file);

    const OptionChain chain = readChain(file);
    QCOMPARE(chain.baseCode, QFileInfo(file).fileName().section('_', 0, 0).toUpper());
    QCOMPARE(chain.asOf, QDate(2024, 3, 15));
    QVERIFY(chain.series.size() >= 2);
    for (const OptionSeries& series : chain.series) {
        QVERIFY(series.expiry > chain.asOf);
        QVERIFY(series.quotes.size() >= 20);
        QCOMPARE(series.quotes.size() % 2, 0);
        for (const OptionQuote& quote : series.quotes) {
            QVERIFY(quote.settlement && quote.ask && quote.openInterest);
            QVERIFY(*quote.settlement < *quote.ask);
            QVERIFY(!quote.bid || *quote.bid < *quote.settlement);
            QVERIFY(*quote.openInterest >= 0);
            QVERIFY(!quote.volatility || (*quote.volatility > 0.05 && *quote.volatility < 1.0));
        }
    }
}

void tst_samplechains::parity_data()
{
    addFiles();
}

// A call less a put is the forward less the strike, within the rounding of both to the price step; the
// prices of a chain must all imply one forward.
void tst_samplechains::parity()
{
    QFETCH(QString, file);

    const OptionChain chain = readChain(file);
    const double step = chain.priceStep.toDouble();
    for (const OptionSeries& series : chain.series) {
        double lowest = 1e300;
        double highest = -1e300;
        for (int index = 0; index + 1 < series.quotes.size(); index += 2) {
            const OptionQuote& call = series.quotes.at(index);
            const OptionQuote& put = series.quotes.at(index + 1);
            QCOMPARE(call.strike, put.strike);
            // A price of one step may stand for less.
            if (call.settlement->toDouble() < 1.5 * step || put.settlement->toDouble() < 1.5 * step)
                continue;
            const double forward
                = call.strike.toDouble() + call.settlement->toDouble() - put.settlement->toDouble();
            lowest = std::min(lowest, forward);
            highest = std::max(highest, forward);
        }
        QVERIFY(highest - lowest <= 2.0 * step + 1e-9);
        if (series.forward)
            QVERIFY(*series.forward >= highest - step - 1e-9 && *series.forward <= lowest + step + 1e-9);
    }
}

PLOT2D_TEST_MAIN(tst_samplechains)
#include "tst_samplechains.moc"
