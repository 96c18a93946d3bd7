#include "desktest.h"
#include "support/testmain.h"

#include <window/serieschoice.h>

/// Which of several series is shown first.
class tst_serieschoice : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void findsAnExpiry();
    void prefersTheNearestWithEnoughPoints_data();
    void prefersTheNearestWithEnoughPoints();
    void readsNoFurtherThanNeeded();
};

namespace {

// A series that expires so many days after its prices, with so many out-of-the-money options at strikes above
// the forward, besides the pair at the forward that tells it.
SeriesData seriesWith(int days, int points)
{
    const OptionChain chain = DeskTest::chain();
    SeriesData data{chain.baseCode, chain.asOf, chain.priceStep, chain.decimals, {}};
    data.options.expiry = data.asOf.addDays(days);
    int taken = 0;
    for (const OptionQuote& quote : chain.series.first().quotes) {
        const double strike = quote.strike.toDouble();
        const bool atForward = strike == DeskTest::forward;
        const bool isPoint = quote.type == OptionType::Call && strike >= DeskTest::forward;
        if ((atForward && points > 0) || (isPoint && taken < points))
            data.options.quotes.append(quote);
        taken += isPoint ? 1 : 0;
    }
    return data;
}

}

void tst_serieschoice::findsAnExpiry()
{
    const QVector<QDate> expiries{QDate(), QDate(2024, 3, 15), QDate(2024, 6, 21)};
    QCOMPARE(SeriesChoice::ofExpiry(expiries, QDate(2024, 6, 21)), 2);
    QCOMPARE(SeriesChoice::ofExpiry(expiries, QDate(2024, 6, 22)), -1);
    QCOMPARE(SeriesChoice::ofExpiry({}, QDate(2024, 6, 22)), -1);
}

void tst_serieschoice::prefersTheNearestWithEnoughPoints_data()
{
    QTest::addColumn<QVector<int>>("days");
    QTest::addColumn<QVector<int>>("points");
    QTest::addColumn<int>("chosen");
    QTest::newRow("the only one") << QVector<int>{30} << QVector<int>{2} << 0;
    QTest::newRow("nearest of good ones") << QVector<int>{30, 60} << QVector<int>{10, 14} << 0;
    QTest::newRow("nine are too few") << QVector<int>{30, 60} << QVector<int>{9, 10} << 1;
    QTest::newRow("most of poor ones") << QVector<int>{30, 60, 90} << QVector<int>{2, 7, 5} << 1;
    QTest::newRow("nearest of equals") << QVector<int>{30, 60} << QVector<int>{4, 4} << 0;
    QTest::newRow("not an expired one") << QVector<int>{-1, 0, 60} << QVector<int>{12, 12, 3} << 2;
    QTest::newRow("an expired one at last") << QVector<int>{-1, 60} << QVector<int>{3, 0} << 0;
    QTest::newRow("none has a forward") << QVector<int>{30, 60} << QVector<int>{0, 0} << -1;
    QTest::newRow("none at all") << QVector<int>{} << QVector<int>{} << -1;
}

void tst_serieschoice::prefersTheNearestWithEnoughPoints()
{
    QFETCH(QVector<int>, days);
    QFETCH(QVector<int>, points);
    QFETCH(int, chosen);
    const auto read = [&](int i) { return seriesWith(days[i], points[i]); };
    for (int i = 0; i < points.size(); ++i) {
        if (points[i] > 0)
            QCOMPARE(valuedSeries(read(i), std::nullopt).analysis.points.size(), points[i]);
    }
    QCOMPARE(SeriesChoice::nearest(days.size(), read, std::nullopt), chosen);
}

void tst_serieschoice::readsNoFurtherThanNeeded()
{
    QVector<int> readPositions;
    const auto read = [&](int i) {
        readPositions.append(i);
        return seriesWith(30 * (i + 1), i == 1 ? 12 : 3);
    };
    QCOMPARE(SeriesChoice::nearest(5, read, std::nullopt), 1);
    QCOMPARE(readPositions, (QVector<int>{0, 1}));
}

PLOT2D_TEST_MAIN(tst_serieschoice)
#include "tst_serieschoice.moc"
