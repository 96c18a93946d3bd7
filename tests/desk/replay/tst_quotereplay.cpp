#include "recordings.h"
#include "support/testmain.h"

#include <database/table.h>
#include <replay/quotereplay.h>
#include <replay/replayfile.h>

#include <QBuffer>

#include <limits>

/// Recorded quotes over the time of a clock that the test moves.
class tst_quotereplay : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void writesWhatIsDue_data();
    void writesWhatIsDue();
    void waitsForTheStart();
    void tellsOfEachBatchOnce();
    void keepsUpWithManyQuotes_data();
    void keepsUpWithManyQuotes();
    void boundsItsTime_data();
    void boundsItsTime();
    void catchesUpAfterAStall();
    void countsUnknownInstruments();
    void endsWithTheTable();
    void endsWithTheTableInABatch();
    void endsInABatch();
    void endsInAReport();
    void takesInstrumentsAsTheyCome();
    void endsWhereTheRecordingGoesWrong();
    void readsNoFurtherThanDue();
    void runsByItself();

private Q_SLOTS:
    // Listeners of a test.
    void noteChange(const QVector<Record>& records);
    void destroyTable() { m_table.reset(); }
    void destroyReplay() { m_replay.reset(); }

private:
    void make(const RecordedQuotes& recording, std::optional<double> speed = 1.0);
    void make(std::unique_ptr<QuoteStream> quotes, std::optional<double> speed);
    // Sets the clock to milliseconds after the start and lets the replay work.
    void tickAt(double milliseconds);
    QString price(int row, const char* column) const;
    qint64 latest() const { return *std::max_element(m_seen.begin(), m_seen.end()); }

    std::unique_ptr<Table> m_table;
    std::unique_ptr<QuoteReplay> m_replay;
    qint64 m_now = 0;
    // What each look at the clock adds to it.
    qint64 m_stride = 0;
    int m_batches = 0;
    QVector<qint64> m_seen;
};

namespace {

using ReplayTable::futureIsinId;
using ReplayTable::instrumentCount;

constexpr qint64 startMicroseconds = 123456789;

}

void tst_quotereplay::init()
{
    m_table = ReplayTable::make();
    m_stride = 0;
    m_batches = 0;
    m_seen.clear();
}

void tst_quotereplay::cleanup()
{
    m_replay.reset();
    m_table.reset();
}

void tst_quotereplay::make(const RecordedQuotes& recording, std::optional<double> speed)
{
    make(std::make_unique<MemoryStream>(recording), speed);
}

void tst_quotereplay::make(std::unique_ptr<QuoteStream> quotes, std::optional<double> speed)
{
    m_now = startMicroseconds;
    m_replay = std::make_unique<QuoteReplay>(m_table.get(), std::move(quotes), futureIsinId, speed);
    m_replay->setClock([this] { return m_now += m_stride; });
}

void tst_quotereplay::tickAt(double milliseconds)
{
    m_now = startMicroseconds + qRound64(milliseconds * 1000.0);
    m_replay->tick();
}

QString tst_quotereplay::price(int row, const char* column) const
{
    return m_table->record(row).field(m_table->columnIndex(QString::fromLatin1(column))).toString();
}

// The last prices of the rows told of, which stand for the numbers of their quotes.
void tst_quotereplay::noteChange(const QVector<Record>& records)
{
    ++m_batches;
    for (const Record& record : records)
        m_seen.append(record.field(m_table->columnIndex(QStringLiteral("last"))).toString().toLongLong());
}

void tst_quotereplay::writesWhatIsDue_data()
{
    QTest::addColumn<double>("speed");
    QTest::newRow("as recorded") << 1.0;
    QTest::newRow("ten times as fast") << 10.0;
    QTest::newRow("half as fast") << 0.5;
}

void tst_quotereplay::writesWhatIsDue()
{
    QFETCH(double, speed);
    make(recording({{0, "O1", 1}, {100, "O1", 2}, {101, "O2", 3}, {500, "O1", 4}}), speed);
    const QSignalSpy finished(m_replay.get(), SIGNAL(finished()));
    m_replay->start();
    const auto state = [this] { return price(1, "last") + QLatin1Char(' ') + price(2, "last"); };
    QCOMPARE(state(), QStringLiteral(" "));
    tickAt(0.0);
    QCOMPARE(state(), QStringLiteral("1 "));
    tickAt(99.9 / speed);
    QCOMPARE(state(), QStringLiteral("1 "));
    tickAt(100.0 / speed);
    QCOMPARE(state(), QStringLiteral("2 "));
    tickAt(499.0 / speed);
    QCOMPARE(state(), QStringLiteral("2 3"));
    QCOMPARE(finished.size(), 0);
    QVERIFY(!m_replay->isFinished());
    tickAt(500.0 / speed);
    QCOMPARE(state(), QStringLiteral("4 3"));
    QCOMPARE(finished.size(), 1);
    QVERIFY(m_replay->isFinished());
    tickAt(1000.0 / speed);
    m_replay->start();
    tickAt(2000.0 / speed);
    QCOMPARE(finished.size(), 1);
}

void tst_quotereplay::waitsForTheStart()
{
    make(recording({{0, "O1", 1}}), std::nullopt);
    m_replay->tick();
    QCOMPARE(price(1, "last"), QString());
    m_replay->start();
    m_replay->tick();
    QCOMPARE(price(1, "last"), QStringLiteral("1"));
}

void tst_quotereplay::tellsOfEachBatchOnce()
{
    make(recording({{0, "O1", 1}, {5, "O2", 2}, {10, "O1", 3}, {15, "FUT", 4}, {30, "O3", 5}}));
    const QSignalSpy changed(m_table.get(), SIGNAL(rowsChanged(QVector<Record>)));
    m_replay->start();
    tickAt(20.0);
    QCOMPARE(changed.size(), 1);
    QCOMPARE(changed.first().first().value<QVector<Record>>(),
        (QVector<Record>{m_table->record(1), m_table->record(2), m_table->record(0)}));
    QCOMPARE(price(1, "last"), QStringLiteral("3"));
    QCOMPARE(price(0, "cur_kotir_real"), QStringLiteral("4"));
    tickAt(25.0);
    QCOMPARE(changed.size(), 1);
    tickAt(40.0);
    QCOMPARE(changed.size(), 2);
}

void tst_quotereplay::keepsUpWithManyQuotes_data()
{
    QTest::addColumn<double>("speed");
    QTest::newRow("as recorded") << 1.0;
    QTest::newRow("ten times as fast") << 10.0;
}

// Each tick comes 5 ms of the recording after the one before, so that no instrument has two quotes in a batch
// and a listener sees every single one.
void tst_quotereplay::keepsUpWithManyQuotes()
{
    QFETCH(double, speed);
    constexpr int count = 20000;
    constexpr int perSecond = 10000;
    constexpr double step = 5.0;
    make(numberedQuotes(count, perSecond), speed);
    connect(m_table.get(), SIGNAL(rowsChanged(QVector<Record>)), SLOT(noteChange(QVector<Record>)));
    m_replay->start();
    // The quotes of a millisecond are all due at its start.
    for (double time = step - 1.0; !m_replay->isFinished(); time += step) {
        QVERIFY(time < 2000.0);
        tickAt(time / speed);
    }
    QCOMPARE(m_batches, 400);
    QCOMPARE(m_seen.size(), count);
    for (int i = 0; i < count; ++i)
        QCOMPARE(m_seen.at(i), qint64(i));
    for (int row = 0; row < instrumentCount; ++row)
        QCOMPARE(price(row, "last"), QString::number(count - instrumentCount + row));
}

void tst_quotereplay::boundsItsTime_data()
{
    QTest::addColumn<bool>("timed");
    QTest::newRow("as fast as possible") << false;
    QTest::newRow("all due at once") << true;
}

void tst_quotereplay::boundsItsTime()
{
    QFETCH(bool, timed);
    constexpr int count = 1000;
    if (timed)
        make(numberedQuotes(count, 1000000000), 1.0);
    else
        make(numberedQuotes(count, 1), std::nullopt);
    connect(m_table.get(), SIGNAL(rowsChanged(QVector<Record>)), SLOT(noteChange(QVector<Record>)));
    m_replay->start();
    // A look at the clock each 64 quotes, the fifth ends the slice.
    m_stride = 1000;
    m_replay->tick();
    QCOMPARE(m_batches, 1);
    QCOMPARE(latest(), qint64(5 * 64 - 1));
    m_replay->tick();
    QCOMPARE(latest(), qint64(2 * 5 * 64 - 1));
    m_replay->tick();
    m_replay->tick();
    QCOMPARE(m_batches, 4);
    QCOMPARE(latest(), qint64(count - 1));
    QVERIFY(m_replay->isFinished());
}

void tst_quotereplay::catchesUpAfterAStall()
{
    make(numberedQuotes(1000, 1000));
    const QSignalSpy changed(m_table.get(), SIGNAL(rowsChanged(QVector<Record>)));
    m_replay->start();
    tickAt(20.0);
    tickAt(999.0);
    QCOMPARE(changed.size(), 2);
    QCOMPARE(price(instrumentCount - 1, "last"), QStringLiteral("999"));
    QVERIFY(m_replay->isFinished());
}

void tst_quotereplay::countsUnknownInstruments()
{
    make(recording({{0, "X2", 1}, {0, "O1", 2}, {0, "X1", 3}, {1, "X2", 4}, {2, "99", 5}}));
    const QSignalSpy unknown(m_replay.get(), SIGNAL(unknownInstruments(QStringList, int)));
    const QSignalSpy finished(m_replay.get(), SIGNAL(finished()));
    m_replay->start();
    tickAt(1.0);
    QCOMPARE(price(1, "last"), QStringLiteral("2"));
    QCOMPARE(unknown.size(), 0);
    tickAt(2.0);
    QCOMPARE(unknown.size(), 1);
    QCOMPARE(unknown.first().at(0).toStringList(), (QStringList{"X2", "X1", "99"}));
    QCOMPARE(unknown.first().at(1).toInt(), 4);
    QCOMPARE(finished.size(), 1);

    make(recording({{0, "O1", 1}}));
    const QSignalSpy none(m_replay.get(), SIGNAL(unknownInstruments(QStringList, int)));
    m_replay->start();
    tickAt(0.0);
    QVERIFY(m_replay->isFinished());
    QCOMPARE(none.size(), 0);
}

void tst_quotereplay::endsWithTheTable()
{
    make(recording({{0, "O1", 1}, {100, "O1", 2}, {200, "O1", 3}}));
    const QSignalSpy finished(m_replay.get(), SIGNAL(finished()));
    m_replay->start();
    tickAt(0.0);
    m_table.reset();
    QCOMPARE(finished.size(), 0);
    tickAt(100.0);
    tickAt(200.0);
    QCOMPARE(finished.size(), 1);
}

void tst_quotereplay::endsWithTheTableInABatch()
{
    make(recording({{0, "O1", 1}, {100, "O1", 2}}));
    const QSignalSpy finished(m_replay.get(), SIGNAL(finished()));
    connect(m_table.get(), SIGNAL(rowsChanged(QVector<Record>)), SLOT(destroyTable()));
    m_replay->start();
    tickAt(0.0);
    QVERIFY(!m_table);
    QCOMPARE(finished.size(), 1);
}

void tst_quotereplay::endsInABatch()
{
    make(recording({{0, "O1", 1}, {100, "O1", 2}}));
    connect(m_table.get(), SIGNAL(rowsChanged(QVector<Record>)), SLOT(destroyReplay()));
    m_replay->start();
    tickAt(0.0);
    QVERIFY(!m_replay);
    // What was written was no data of the table.
    QCOMPARE(price(1, "last"), QString());
}

void tst_quotereplay::endsInAReport()
{
    make(recording({{0, "X", 1}}));
    const QSignalSpy finished(m_replay.get(), SIGNAL(finished()));
    connect(m_replay.get(), SIGNAL(unknownInstruments(QStringList, int)), SLOT(destroyReplay()));
    m_replay->start();
    tickAt(0.0);
    QVERIFY(!m_replay);
    QCOMPARE(finished.size(), 0);
}

void tst_quotereplay::takesInstrumentsAsTheyCome()
{
    QBuffer buffer;
    QByteArray text = "time,instrument,last\n";
    // More than are read at once.
    for (int i = 0; i < 5000; ++i)
        text += QByteArray::number(i) + ",O1," + QByteArray::number(i) + '\n';
    buffer.setData(text + "5000,FUT,7\n5000,X,8\n5000,O2,9\n");
    buffer.open(QIODevice::ReadOnly);
    make(std::make_unique<ReplayFile>(buffer, QStringLiteral("q.csv")), 1.0);
    const QSignalSpy unknown(m_replay.get(), SIGNAL(unknownInstruments(QStringList, int)));
    m_replay->start();
    tickAt(4999.0);
    QCOMPARE(price(1, "last"), QStringLiteral("4999"));
    tickAt(5000.0);
    QVERIFY(m_replay->isFinished());
    QCOMPARE(price(0, "cur_kotir_real"), QStringLiteral("7"));
    QCOMPARE(price(2, "last"), QStringLiteral("9"));
    QCOMPARE(unknown.size(), 1);
    QCOMPARE(unknown.first().first().toStringList(), QStringList{"X"});
}

void tst_quotereplay::endsWhereTheRecordingGoesWrong()
{
    QBuffer buffer;
    buffer.setData("time,instrument,last\n" + QByteArray("0,O1,1\n").repeated(2000)
        + "9,X,2\n10,O1,3\n9,O1,4\n10,O1,5\n");
    buffer.open(QIODevice::ReadOnly);
    make(std::make_unique<ReplayFile>(buffer, QStringLiteral("q.csv")), 1.0);
    const QSignalSpy unknown(m_replay.get(), SIGNAL(unknownInstruments(QStringList, int)));
    const QSignalSpy failed(m_replay.get(), SIGNAL(failed(QString)));
    const QSignalSpy finished(m_replay.get(), SIGNAL(finished()));
    m_replay->start();
    tickAt(9.0);
    QCOMPARE(price(1, "last"), QStringLiteral("1"));
    QCOMPARE(failed.size(), 0);
    tickAt(10.0);
    QCOMPARE(price(1, "last"), QStringLiteral("3"));
    QCOMPARE(failed.size(), 1);
    const QString reason = failed.first().first().toString();
    QVERIFY2(reason.startsWith(QLatin1String("q.csv:2004: \"9\"")), qPrintable(reason));
    QCOMPARE(unknown.size(), 1);
    QCOMPARE(finished.size(), 1);
    tickAt(20.0);
    QCOMPARE(price(1, "last"), QStringLiteral("3"));
    QCOMPARE(failed.size(), 1);
}

void tst_quotereplay::readsNoFurtherThanDue()
{
    auto owned = std::make_unique<MemoryStream>(numberedQuotes(1000, 1000));
    const MemoryStream& stream = *owned;
    make(std::move(owned), 1.0);
    m_replay->start();
    // One quote is known before it is due.
    tickAt(99.0);
    QCOMPARE(stream.quotesLeft(), 899);
    tickAt(199.0);
    QCOMPARE(stream.quotesLeft(), 799);
}

// The only test of the real timer and clock.
void tst_quotereplay::runsByItself()
{
    m_replay = std::make_unique<QuoteReplay>(m_table.get(),
        std::make_unique<MemoryStream>(numberedQuotes(1000, 10000)), futureIsinId, std::nullopt);
    QSignalSpy finished(m_replay.get(), SIGNAL(finished()));
    m_replay->start();
    QCOMPARE(price(0, "last"), QString());
    QVERIFY(finished.wait(60000));
    QCOMPARE(price(instrumentCount - 1, "last"), QStringLiteral("999"));
}

PLOT2D_TEST_MAIN(tst_quotereplay)
#include "tst_quotereplay.moc"
