#include "chain/optionchain.h"
#include "support/testmain.h"

class tst_optionchain : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void price_data();
    void price();
};

void tst_optionchain::price_data()
{
    QTest::addColumn<QString>("bid");
    QTest::addColumn<QString>("ask");
    QTest::addColumn<QString>("settlement");
    QTest::addColumn<QString>("last");
    QTest::addColumn<QString>("expected");

    QTest::newRow("nothing") << ""
                             << ""
                             << ""
                             << ""
                             << "";
    QTest::newRow("middle") << "1.5"
                            << "2"
                            << "9"
                            << "8"
                            << "1.75";
    QTest::newRow("locked") << "2"
                            << "2"
                            << "9"
                            << "8"
                            << "2";
    QTest::newRow("crossed") << "2.5"
                             << "2"
                             << "9"
                             << "8"
                             << "9";
    QTest::newRow("no bid") << ""
                            << "2"
                            << "9"
                            << "8"
                            << "9";
    QTest::newRow("no ask") << "1"
                            << ""
                            << "9"
                            << "8"
                            << "9";
    QTest::newRow("bid of zero") << "0"
                                 << "2"
                                 << "9"
                                 << "8"
                                 << "9";
    QTest::newRow("both zero") << "0"
                               << "0"
                               << ""
                               << "8"
                               << "8";
    QTest::newRow("last") << ""
                          << ""
                          << ""
                          << "8"
                          << "8";
    QTest::newRow("one side only") << "1"
                                   << ""
                                   << ""
                                   << ""
                                   << "";
}

void tst_optionchain::price()
{
    QFETCH(QString, bid);
    QFETCH(QString, ask);
    QFETCH(QString, settlement);
    QFETCH(QString, last);
    QFETCH(QString, expected);

    const auto value = [](const QString& text) {
        return text.isEmpty() ? std::nullopt : std::optional<decimal>(decimal::fromString(text));
    };
    OptionQuote quote;
    quote.bid = value(bid);
    quote.ask = value(ask);
    quote.settlement = value(settlement);
    quote.last = value(last);
    QCOMPARE(quote.price() ? QString::number(*quote.price()) : QString(), expected);
}

PLOT2D_TEST_MAIN(tst_optionchain)
#include "tst_optionchain.moc"
