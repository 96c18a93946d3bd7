#include "desktest.h"
#include "livetable.h"
#include "support/testmain.h"

#include <window/deskdata.h>
#include <window/storedserieswatch.h>

#include <chain/chaintables.h>
#include <database/table.h>

/// What of the host's table concerns the list of series.
class tst_storedserieswatch : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void tellsOfANewSeries();
    void tellsOncePerTurn();
    void passesOverQuotes();
    void passesOverOtherRows_data();
    void passesOverOtherRows();
    void tellsOfChanges_data();
    void tellsOfChanges();
    void tellsOfASeriesThatGoes();
    void comparesAfterAReset();

private:
    Table& table() const { return *ChainTables::find().securities; }
    void change(const Record& record, const QString& column, const QVariant& value) const;
    // Announcements of one more turn of the event loop.
    int announced();

    std::unique_ptr<DeskData> m_data;
    std::unique_ptr<StoredSeriesWatch> m_watch;
    std::unique_ptr<QSignalSpy> m_spy;
    int m_futureIsinId = 0;
};

void tst_storedserieswatch::init()
{
    m_data = std::make_unique<DeskData>(QString());
    m_futureIsinId = m_data->import(DeskTest::chain(), 0);
    m_watch = std::make_unique<StoredSeriesWatch>();
    m_spy = std::make_unique<QSignalSpy>(m_watch.get(), SIGNAL(changed()));
}

void tst_storedserieswatch::cleanup()
{
    m_spy.reset();
    m_watch.reset();
    m_data.reset();
}

void tst_storedserieswatch::change(const Record& record, const QString& column, const QVariant& value) const
{
    table().changeRows({record}, [&](const Record&, const Table::FieldAccess& field) {
        field(table().columnIndex(column)).setVariant(value);
    });
}

int tst_storedserieswatch::announced()
{
    m_spy->clear();
    QCoreApplication::processEvents();
    return m_spy->size();
}

void tst_storedserieswatch::tellsOfANewSeries()
{
    QCOMPARE(announced(), 0);
    LiveTable::addSeries(m_futureIsinId, QStringLiteral("FRESH"));
    QCOMPARE(m_spy->size(), 0);
    QCOMPARE(announced(), 1);
    QCOMPARE(announced(), 0);
    m_data->import(DeskTest::chain(QStringLiteral("IMPORTED")), 0);
    QCOMPARE(announced(), 1);
}

void tst_storedserieswatch::tellsOncePerTurn()
{
    for (int i = 0; i < 20; ++i)
        LiveTable::addSeries(m_futureIsinId, QStringLiteral("S%1").arg(i));
    LiveTable::removeSeries(m_futureIsinId);
    QCOMPARE(announced(), 1);
    QCOMPARE(announced(), 0);
}

void tst_storedserieswatch::passesOverQuotes()
{
    const QVector<Record> options = LiveTable::options(m_futureIsinId);
    LiveTable::price(options, 101.0, 0.1);
    LiveTable::setQuote(m_futureIsinId, 101.0);
    LiveTable::takePrices(options);
    QCOMPARE(announced(), 0);
}

void tst_storedserieswatch::passesOverOtherRows_data()
{
    QTest::addColumn<QString>("column");
    QTest::addColumn<QVariant>("value");
    QTest::newRow("other board") << "board_id" << QVariant(2);
    QTest::newRow("no base code") << "base_code" << QVariant();
    QTest::newRow("no price step") << "price_step" << QVariant();
    QTest::newRow("no type") << "sectype" << QVariant();
    QTest::newRow("an option") << "sectype" << QVariant(QStringLiteral("O"));
    QTest::newRow("no id") << "isin_id" << QVariant();
}

void tst_storedserieswatch::passesOverOtherRows()
{
    QFETCH(QString, column);
    QFETCH(QVariant, value);
    const Record future = LiveTable::future(LiveTable::addSeries(m_futureIsinId, QStringLiteral("FRESH")));
    change(future, column, value);
    QCOMPARE(announced(), 0);
    table().removeRows({future});
    QCOMPARE(announced(), 0);
}

void tst_storedserieswatch::tellsOfChanges_data()
{
    QTest::addColumn<QString>("column");
    QTest::addColumn<QVariant>("value");
    QTest::newRow("base code") << "base_code" << QVariant(QStringLiteral("OTHER"));
    QTest::newRow("expiry") << "expdate" << QVariant(1750000000000LL);
    QTest::newRow("id") << "isin_id" << QVariant(77);
    QTest::newRow("moves to another board") << "board_id" << QVariant(2);
    QTest::newRow("becomes an option") << "sectype" << QVariant(QStringLiteral("O"));
    QTest::newRow("loses its price step") << "price_step" << QVariant();
}

void tst_storedserieswatch::tellsOfChanges()
{
    QFETCH(QString, column);
    QFETCH(QVariant, value);
    const Record future = LiveTable::future(m_futureIsinId);
    const QVariant before = future.value(table().columnIndex(column)).toVariant();
    change(future, column, value);
    QCOMPARE(announced(), 1);
    change(future, column, before);
    QCOMPARE(announced(), 1);
    change(future, column, value);
    change(future, column, before);
    QCOMPARE(announced(), 0);
}

void tst_storedserieswatch::tellsOfASeriesThatGoes()
{
    const QVector<Record> rows = LiveTable::removeSeries(m_futureIsinId);
    QCOMPARE(announced(), 1);
    table().appendRows(rows);
    QCOMPARE(announced(), 1);
    table().removeRows(rows);
    table().appendRows(rows);
    QCOMPARE(announced(), 0);
}

void tst_storedserieswatch::comparesAfterAReset()
{
    QVector<Record> rows;
    for (const Record& record : table().masterIndex())
        rows.append(record);
    table().resetRows(rows);
    QCOMPARE(announced(), 0);
    table().clear();
    QCOMPARE(announced(), 1);
    // The tables go before the watch, and there is none for another one.
    m_data.reset();
    QCOMPARE(announced(), 0);
}

PLOT2D_TEST_MAIN(tst_storedserieswatch)
#include "tst_storedserieswatch.moc"
