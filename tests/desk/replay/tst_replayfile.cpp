#include "memorystream.h"
#include "support/testmain.h"

#include <chain/chainerror.h>
#include <replay/replayfile.h>

#include <QBuffer>
#include <QTemporaryDir>

/// Recordings as files: what is read of good ones, and what is said of bad ones.
class tst_replayfile : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void reads_data();
    void reads();
    void refuses_data();
    void refuses();
    void endsAtTheBrokenRow();
    void readsAsItIsAsked();
    void boundsTheInstruments();
    void readsFiles();
    void refusesFiles();
};

namespace {

RecordedQuotes all(QuoteStream& stream)
{
    RecordedQuotes result;
    while (const std::optional<RecordedQuote> quote = stream.read())
        result.quotes.push_back(*quote);
    result.instruments = stream.instruments();
    return result;
}

std::unique_ptr<QBuffer> bufferOf(const QByteArray& text)
{
    auto buffer = std::make_unique<QBuffer>();
    buffer->setData(text);
    buffer->open(QIODevice::ReadOnly);
    return buffer;
}

RecordedQuotes readText(const QByteArray& text, int mostInstruments = ReplayFile::maxInstruments)
{
    const std::unique_ptr<QBuffer> buffer = bufferOf(text);
    ReplayFile file(*buffer, QStringLiteral("q.csv"), mostInstruments);
    return all(file);
}

QString errorOf(const QByteArray& text, int mostInstruments = ReplayFile::maxInstruments)
{
    try {
        readText(text, mostInstruments);
    } catch (const ChainError& error) {
        return error.text();
    }
    return {};
}

// Rows of one quote a millisecond, without end.
class EndlessDevice : public QIODevice {
public:
    EndlessDevice() { open(QIODevice::ReadOnly); }
    bool isSequential() const override { return true; }
    qint64 given() const { return m_given; }

protected:
    qint64 readData(char* data, qint64 maxSize) override
    {
        while (m_text.size() < maxSize)
            m_text += m_row < 0 ? QByteArray("time,instrument,last\n") : rowOf(m_row), ++m_row;
        std::copy_n(m_text.constData(), maxSize, data);
        m_text.remove(0, int(maxSize));
        m_given += maxSize;
        return maxSize;
    }
    qint64 writeData(const char*, qint64) override { return -1; }

private:
    static QByteArray rowOf(int number) { return QByteArray::number(number) + ",A,1\n"; }

    QByteArray m_text;
    int m_row = -1;
    qint64 m_given = 0;
};

// "TIME INSTRUMENT b=BID a=ASK l=LAST" with what is given, parted by "; ".
QString describe(const RecordedQuotes& recording)
{
    QStringList lines;
    for (const RecordedQuote& quote : recording.quotes) {
        QString line
            = QStringLiteral("%1 %2").arg(quote.time).arg(recording.instruments.value(quote.instrument));
        for (const auto& [field, letter] :
            {std::pair(QuoteField::Bid, 'b'), {QuoteField::Ask, 'a'}, {QuoteField::Last, 'l'}}) {
            if (quote.has(field))
                line += QStringLiteral(" %1=%2").arg(QLatin1Char(letter)).arg(quote.price(field).toString());
        }
        lines.append(line);
    }
    return lines.join(QStringLiteral("; "));
}

}

void tst_replayfile::reads_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("quotes");
    const auto row = [](const char* name, const QByteArray& text, const char* quotes) {
        QTest::newRow(name) << text << QString::fromLatin1(quotes);
    };
    row("all columns", "time,instrument,bid,ask,last\n0,A,1.25,1.5,1.4\n20,B,2,3,2.5\n20,A,1.3,,\n",
        "0 A b=1.25 a=1.5 l=1.4; 20 B b=2 a=3 l=2.5; 20 A b=1.3");
    row("other order, one more", "ask,seq,Symbol,Timestamp,bid\n1.5,7,A,5,1.25\n", "5 A b=1.25 a=1.5");
    row("words for none", "time,instrument,bid,ask,last\n0,A,-,n/a,\n", "0 A");
    row("prices of zero", "time,instrument,bid\n0,A,0\n", "0 A b=0");
    row("elapsed keeps its start", "time,instrument,last\n500,A,1\n700,A,2\n", "500 A l=1; 700 A l=2");
    row("epoch", "time,instrument,last\n1710489600000,A,1\n1710489600250,A,2\n", "0 A l=1; 250 A l=2");
    row("clock", "time,instrument,last\n09:30:00,A,1\n09:30:00.250,A,2\n", "0 A l=1; 250 A l=2");
    row("date and time", "time,instrument,last\n2024-03-15T23:59:59.900,A,1\n2024-03-16T00:00:00.000,A,2\n",
        "0 A l=1; 100 A l=2");
    row("semicolons and commas", "time;instrument;last\n0;A;1,5\n1;A;1,625\n", "0 A l=1.5; 1 A l=1.625");
    row("tabs", "time\tinstrument\tlast\n0\tA\t1.5\n", "0 A l=1.5");
    row("quoted names", "time,instrument,last\n0,\"A, B\",1.5\n", "0 A, B l=1.5");
    row("comments and empty lines", "# of Friday\n\ntime,instrument,last\n\n# open\n0,A,1\n", "0 A l=1");
    row("header as comment", "#time,instrument,last\n0,A,1\n", "0 A l=1");
    row("line ends of DOS, mark of UTF-8", "\xEF\xBB\xBFtime,instrument,last\r\n0,A,1\r\n", "0 A l=1");
    row("no line end at the end", "time,instrument,last\n0,A,1", "0 A l=1");
    row("empty cells at the end", "time,instrument,last\n0,A,1,,\n", "0 A l=1");
    row("names as they are", "time,instrument,last\n0,A 2024-04-19 C 81,1\n0,a 2024-04-19 C 81,2\n",
        "0 A 2024-04-19 C 81 l=1; 0 a 2024-04-19 C 81 l=2");
}

void tst_replayfile::reads()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, quotes);
    QCOMPARE(describe(readText(text)), quotes);
}

void tst_replayfile::refuses_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("start");
    QTest::addColumn<QString>("part");
    const auto row = [](const char* name, const QByteArray& text, const char* start, const char* part) {
        QTest::newRow(name) << text << QString::fromLatin1(start) << QString::fromLatin1(part);
    };
    const QByteArray header = "time,instrument,bid,ask,last\n";
    row("empty", "", "q.csv: ", "empty");
    row("header alone", header, "q.csv: ", "no quotes");
    row("no header", "0,A,1,2,3\n", "q.csv:1: ", "\"A\"");
    row("no time", "\ninstrument,bid\nA,1\n", "q.csv:2: ", "time");
    row("two bids", "time,instrument,bid,bid\n0,A,1,2\n", "q.csv:1: ", "\"bid\"");
    row("time goes back", header + "5,A,1,2,3\n4,A,1,2,3\n", "q.csv:3: ", "\"4\"");
    row("clock goes back", header + "23:59:59,A,1,2,3\n00:00:00,A,1,2,3\n", "q.csv:3: ", "00:00:00");
    row("offsets go back", header + "2024-03-15T08:00:00Z,A,1,2,3\n2024-03-15T09:00:00+02:00,A,1,2,3\n",
        "q.csv:3: ", "before");
    row("forms mixed", header + "5,A,1,2,3\n09:30:00,A,1,2,3\n", "q.csv:3: ", "form");
    row("elapsed and epoch", header + "5,A,1,2,3\n1710489600000,A,1,2,3\n", "q.csv:3: ", "form");
    row("no such time", header + "yesterday,A,1,2,3\n", "q.csv:2: ", "\"yesterday\" in column \"time\"");
    row("empty time", header + ",A,1,2,3\n", "q.csv:2: ", "time");
    row("negative time", header + "-1,A,1,2,3\n", "q.csv:2: ", "\"-1\"");
    row("no instrument", header + "0,,1,2,3\n", "q.csv:2: ", "instrument");
    row("no price", header + "0,A,1,2,x\n", "q.csv:2: ", "\"x\" in column \"last\"");
    row("negative price", header + "0,A,-1,2,3\n", "q.csv:2: ", "\"-1\" in column \"bid\"");
    row("percent", header + "0,A,1,2%,3\n", "q.csv:2: ", "\"2%\" in column \"ask\"");
    row("huge price", header + "0,A,1e15,2,3\n", "q.csv:2: ", "1e15");
    row("short row", header + "0,A,1,2,3\n1,A,1\n", "q.csv:3: ", "3 cells instead of 5");
    row("long row", header + "0,A,1,2,3,4\n", "q.csv:2: ", "6 cells instead of 5");
    row("open quote", header + "0,\"A,1,2,3\n", "q.csv:2: ", "quote");
    row("binary", header + QByteArray("0,A\0,1,2,3\n", 11), "q.csv:2: ", "");
    row("broken row far behind", header + QByteArray("0,A,1,2,3\n").repeated(2000) + "0,A,1,2,x\n",
        "q.csv:2002: ", "\"x\"");
}

void tst_replayfile::refuses()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, start);
    QFETCH(QString, part);
    const QString error = errorOf(text);
    QVERIFY2(error.startsWith(start), qPrintable(error));
    QVERIFY2(error.mid(start.size()).contains(part), qPrintable(error));
    QVERIFY2(!error.contains(QLatin1Char('\n')), qPrintable(error));
}

// The quotes before it are there.
void tst_replayfile::endsAtTheBrokenRow()
{
    const QByteArray text
        = "time,instrument,last\n" + QByteArray("5,A,1\n").repeated(1500) + "4,A,2\n6,A,3\n";
    const std::unique_ptr<QBuffer> buffer = bufferOf(text);
    ReplayFile file(*buffer, QStringLiteral("q.csv"));
    for (int i = 0; i < 1500; ++i)
        QVERIFY(file.read().has_value());
    QVERIFY_EXCEPTION_THROWN(file.read(), ChainError);

    // Of the first thousand rows it is known at once.
    const std::unique_ptr<QBuffer> early = bufferOf("time,instrument,last\n5,A,1\n4,A,2\n");
    QVERIFY_EXCEPTION_THROWN(ReplayFile(*early, QStringLiteral("q.csv")), ChainError);
}

void tst_replayfile::readsAsItIsAsked()
{
    EndlessDevice device;
    ReplayFile file(device, QStringLiteral("q.csv"));
    constexpr qint64 oneBlock = 65536;
    const qint64 first = device.given();
    QVERIFY2(first <= oneBlock, qPrintable(QString::number(first)));
    qint64 bytes = 0;
    for (int i = 0; i < 100000; ++i) {
        const std::optional<RecordedQuote> quote = file.read();
        QVERIFY(quote && quote->time == i);
        bytes += QByteArray::number(i).size() + int(qstrlen(",A,1\n"));
    }
    QVERIFY(device.given() > bytes);
    QVERIFY2(device.given() < bytes + 3 * oneBlock, qPrintable(QString::number(device.given() - bytes)));
}

void tst_replayfile::boundsTheInstruments()
{
    const QByteArray text = "time,instrument,last\n0,A,1\n0,B,2\n0,A,3\n";
    QCOMPARE(readText(text, 2).instruments, (QStringList{"A", "B"}));
    QCOMPARE(
        errorOf(text + "0,B,4\n0,C,5\n", 2), QStringLiteral("q.csv:6: there are more than 2 instruments"));
}

void tst_replayfile::readsFiles()
{
    const QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("q.csv")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("time,instrument,last\n3,A,1.5\n");
    file.close();
    ReplayFile replay(file.fileName());
    QCOMPARE(describe(all(replay)), QStringLiteral("3 A l=1.5"));
}

void tst_replayfile::refusesFiles()
{
    const QTemporaryDir folder;
    QVERIFY_EXCEPTION_THROWN(ReplayFile(folder.filePath(QStringLiteral("absent.csv"))), ChainError);
    QVERIFY_EXCEPTION_THROWN(ReplayFile(folder.path()), ChainError);
}

PLOT2D_TEST_MAIN(tst_replayfile)
#include "tst_replayfile.moc"
