#include "desktest.h"
#include "support/testmain.h"

#include <window/deskdata.h>

#include <chain/chaintables.h>
#include <database/exception.h>
#include <database/table.h>
#include <directory/securitydirectory.h>

#include <QTemporaryDir>

/// The chains behind the desk: what is stored, what is chosen, and what is only lent.
class tst_deskdata : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void keepsAChainAcrossRestarts();
    void keepsWhatTheUserStates();
    void importsTheSamples();
    void choosesTheExpiry();
    void givesTheExpiryToASeriesWithout();
    void refusesContradictingDates();
    void refusesWithoutForward();
    void lendsTheForwardAndStoresItNot();
    void lendsToOneSeriesAtATime();
    void refusesAForeignDatabase_data();
    void refusesAForeignDatabase();
};

namespace {

OptionChain chainOfTwo()
{
    OptionChain chain = DeskTest::chain();
    OptionSeries later = chain.series.first();
    later.expiry = QDate(2024, 6, 21);
    chain.series.append(later);
    return chain;
}

int imported(DeskData& data, OptionChain chain, const SeriesFacts& given = SeriesFacts())
{
    const int position = applyFacts(given, &chain);
    return data.import(chain, position);
}

FieldConstValue quoteOf(int futureIsinId)
{
    const int column = ChainTables::find().securities->columnIndex(QStringLiteral("cur_kotir_real"));
    return SecurityDirectory::i()->recordByIsinId(futureIsinId, chainBoardId).value(column);
}

QString reasonOf(const std::function<void()>& action)
{
    try {
        action();
    } catch (const Exception& error) {
        return error.text();
    }
    return QString();
}

}

void tst_deskdata::keepsAChainAcrossRestarts()
{
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("desk.sqlite"));
    ShownSeries before;
    {
        DeskData data(file);
        QVERIFY(data.isEmpty());
        before = data.show(imported(data, DeskTest::chain()), SeriesFacts());
    }
    DeskData data(file);
    QVERIFY(!data.isEmpty());
    QCOMPARE(data.series().size(), 1);
    const ShownSeries after = data.show(data.firstSeries(SeriesFacts()), SeriesFacts());
    QCOMPARE(after.data.baseCode, QStringLiteral("TEST"));
    QCOMPARE(after.data.options.expiry, QDate(2024, 4, 2));
    QCOMPARE(after.data.asOf, QDate(2024, 1, 2));
    QCOMPARE(after.market.forward, before.market.forward);
    QCOMPARE(after.market.time, before.market.time);
    QCOMPARE(after.analysis.points.size(), before.analysis.points.size());
}

void tst_deskdata::keepsWhatTheUserStates()
{
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("desk.sqlite"));
    const SeriesFacts given{99.25, QDate(2024, 1, 3), QDate(2024, 4, 12)};
    {
        OptionChain chain = DeskTest::chain();
        chain.series.first().expiry = QDate();
        DeskData data(file);
        imported(data, chain, given);
    }
    DeskData data(file);
    const ShownSeries shown = data.show(data.firstSeries(SeriesFacts()), SeriesFacts());
    QCOMPARE(shown.data.options.expiry, given.expiry);
    QCOMPARE(shown.data.asOf, given.asOf);
    QCOMPARE(shown.market.forward, 99.25);
    QCOMPARE(shown.forwardSource, ForwardSource::Stated);
}

void tst_deskdata::importsTheSamples()
{
    DeskData data{QString()};
    QVERIFY(data.isEmpty());
    data.importSamples();
    QVERIFY(data.series().size() >= 3);
    const QVector<StoredSeries> all = data.series();
    for (const StoredSeries& series : all) {
        const ShownSeries shown = data.show(series.futureIsinId, SeriesFacts());
        QVERIFY2(shown.analysis.points.size() >= 10, qPrintable(series.baseCode));
        QCOMPARE(shown.timeSource, TimeSource::Dates);
    }
}

void tst_deskdata::choosesTheExpiry()
{
    DeskData data{QString()};
    SeriesFacts given;
    const auto expiryShown
        = [&data](int futureIsinId) { return data.show(futureIsinId, SeriesFacts()).data.options.expiry; };
    QCOMPARE(expiryShown(imported(data, chainOfTwo())), QDate(2024, 4, 2));
    given.expiry = QDate(2024, 6, 21);
    QCOMPARE(expiryShown(imported(data, chainOfTwo(), given)), QDate(2024, 6, 21));
    QCOMPARE(expiryShown(data.firstSeries(given)), QDate(2024, 6, 21));
    QCOMPARE(expiryShown(data.firstSeries(SeriesFacts())), QDate(2024, 4, 2));

    given.expiry = QDate(2024, 6, 22);
    OptionChain chain = chainOfTwo();
    const QString reason = reasonOf([&] { applyFacts(given, &chain); });
    QVERIFY2(reason.contains(QStringLiteral("2024-06-22")) && reason.contains(QStringLiteral("2024-04-02")),
        qPrintable(reason));
    QVERIFY(!reasonOf([&] { data.firstSeries(given); }).isEmpty());

    given = SeriesFacts();
    given.asOf = QDate(2024, 5, 1);
    QCOMPARE(expiryShown(data.firstSeries(given)), QDate(2024, 6, 21));
}

void tst_deskdata::givesTheExpiryToASeriesWithout()
{
    OptionChain chain = DeskTest::chain();
    chain.series.first().expiry = QDate();
    DeskData data{QString()};
    const int futureIsinId = imported(data, chain);
    SeriesFacts given;
    given.expiry = QDate(2024, 2, 1);
    QCOMPARE(data.firstSeries(given), futureIsinId);
    const ShownSeries shown = data.show(futureIsinId, given);
    QCOMPARE(shown.timeSource, TimeSource::Dates);
    QCOMPARE(shown.market.time, 30.0 / 365.0);
    // It is not stored without a chain.
    QCOMPARE(data.show(futureIsinId, SeriesFacts()).timeSource, TimeSource::Assumed);
}

void tst_deskdata::refusesContradictingDates()
{
    SeriesFacts given;
    given.asOf = QDate(2024, 4, 2);
    OptionChain chain = DeskTest::chain();
    QVERIFY(!reasonOf([&] { applyFacts(given, &chain); }).isEmpty());

    // The file's own dates are no reason to refuse it.
    chain = DeskTest::chain();
    chain.asOf = chain.series.first().expiry;
    QCOMPARE(applyFacts(SeriesFacts(), &chain), 0);
}

void tst_deskdata::refusesWithoutForward()
{
    OptionChain chain = DeskTest::chain();
    QVector<OptionQuote>& quotes = chain.series.first().quotes;
    quotes.erase(std::remove_if(quotes.begin(), quotes.end(),
                     [](const OptionQuote& quote) { return quote.type == OptionType::Call; }),
        quotes.end());
    OptionChain copy = chain;
    const QString reason = reasonOf([&] { applyFacts(SeriesFacts(), &copy); });
    QVERIFY2(reason.contains(QStringLiteral("forward")), qPrintable(reason));

    SeriesFacts given;
    given.forward = 100.0;
    DeskData data{QString()};
    QCOMPARE(data.show(imported(data, chain, given), SeriesFacts()).market.forward, 100.0);
}

void tst_deskdata::lendsTheForwardAndStoresItNot()
{
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("desk.sqlite"));
    {
        DeskData data(file);
        const int first = imported(data, DeskTest::chain());
        QVERIFY(quoteOf(first).isNull());
        SeriesFacts given;
        given.forward = 98.5;
        QCOMPARE(data.show(first, given).market.forward, 98.5);
        QCOMPARE(quoteOf(first).toDecimal(), decimal::fromUnits(985, 1));
        // The commit of this import must not take the loan along.
        imported(data, DeskTest::chain(QStringLiteral("OTHER")));
        data.show(first, given);
    }
    DeskData data(file);
    QCOMPARE(data.series().size(), 2);
    const QVector<StoredSeries> all = data.series();
    for (const StoredSeries& series : all)
        QVERIFY2(!series.forward, qPrintable(series.baseCode));
}

void tst_deskdata::lendsToOneSeriesAtATime()
{
    DeskData data{QString()};
    imported(data, chainOfTwo());
    const QVector<StoredSeries> all = data.series();
    QCOMPARE(all.size(), 2);
    data.show(all[0].futureIsinId, SeriesFacts());
    QVERIFY(!quoteOf(all[0].futureIsinId).isNull());
    QVERIFY(quoteOf(all[1].futureIsinId).isNull());
    data.show(all[1].futureIsinId, SeriesFacts());
    QVERIFY(quoteOf(all[0].futureIsinId).isNull());
    QVERIFY(!quoteOf(all[1].futureIsinId).isNull());
    // What was lent is not taken for stated.
    QCOMPARE(data.show(all[1].futureIsinId, SeriesFacts()).forwardSource, ForwardSource::Parity);
}

void tst_deskdata::refusesAForeignDatabase_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("text") << QByteArray("strike,price\n100,1\n").repeated(100);
    QTest::newRow("damaged") << QByteArray("SQLite format 3\0", 16) + QByteArray(4080, '\xa5');
}

void tst_deskdata::refusesAForeignDatabase()
{
    QFETCH(QByteArray, content);
    const QTemporaryDir folder;
    const QString name = DeskTest::write(folder.filePath(QStringLiteral("other.sqlite")), content);
    const QString reason = reasonOf([&] { DeskData data(name); });
    QVERIFY(!reason.isEmpty());
    QVERIFY2(!reason.contains(QLatin1Char('\n')), qPrintable(reason));
    QFile file(name);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), content);
}

PLOT2D_TEST_MAIN(tst_deskdata)
#include "tst_deskdata.moc"
