#include "tableinput.h"

#include <chain/chainerror.h>
#include <replay/replayfile.h>

#include <QBuffer>

#include <vector>

namespace {

constexpr NamedColumn columns[] = {{"time", CellKind::Time}, {"timestamp", CellKind::Time},
    {"instrument", CellKind::Code}, {"symbol", CellKind::Code}, {"bid", CellKind::Number},
    {"ask", CellKind::Number}, {"last", CellKind::Number}, {"remark", CellKind::Any}};

constexpr int mostInstruments = 50;
constexpr qint64 firstEpochTime = 100000000000;

struct Recording {
    std::vector<RecordedQuote> quotes;
    QStringList instruments;
};

const QString& fileName()
{
    static const QString name = QStringLiteral("quotes.csv");
    return name;
}

Recording readText(const QByteArray& text)
{
    QBuffer device;
    device.setData(text);
    device.open(QIODevice::ReadOnly);
    ReplayFile file(device, fileName(), mostInstruments);
    Recording recording;
    while (const std::optional<RecordedQuote> quote = file.read())
        recording.quotes.push_back(*quote);
    recording.instruments = file.instruments();
    FUZZ_EXPECT(!file.read());
    return recording;
}

void expectWhole(const Recording& recording)
{
    FUZZ_EXPECT(!recording.quotes.empty() && recording.instruments.size() <= mostInstruments);
    qint64 time = 0;
    int known = 0;
    for (const RecordedQuote& quote : recording.quotes) {
        FUZZ_EXPECT(quote.time >= time);
        time = quote.time;
        // Instruments are numbered as they come.
        FUZZ_EXPECT(quote.instrument >= 0 && quote.instrument <= known);
        known += quote.instrument == known ? 1 : 0;
        for (const QuoteField field : {QuoteField::Bid, QuoteField::Ask, QuoteField::Last})
            FUZZ_EXPECT(!quote.has(field) || quote.price(field) >= decimal::zero);
    }
    FUZZ_EXPECT(known == recording.instruments.size());
}

QByteArray written(const Recording& recording)
{
    QString text = QStringLiteral("time,instrument,bid,ask,last\n");
    for (const RecordedQuote& quote : recording.quotes) {
        QString name = recording.instruments.at(quote.instrument);
        name.replace(QLatin1Char('"'), QLatin1String("\"\""));
        text += QString::number(quote.time) + QLatin1String(",\"") + name + QLatin1Char('"');
        for (const QuoteField field : {QuoteField::Bid, QuoteField::Ask, QuoteField::Last})
            text += QLatin1Char(',') + (quote.has(field) ? quote.price(field).toString() : QString());
        text += QLatin1Char('\n');
    }
    return text.toUtf8();
}

bool isSame(const RecordedQuote& a, const RecordedQuote& b)
{
    bool same = a.time == b.time && a.instrument == b.instrument && a.given == b.given;
    for (const QuoteField field : {QuoteField::Bid, QuoteField::Ask, QuoteField::Last})
        same = same && (!a.has(field) || a.price(field) == b.price(field));
    return same;
}

}

/// A text is a recording in the order of its times, or an error that names one of its lines; and a recording
/// that was read is the same when it is written and read again.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzInput input(data, size);
    const QByteArray text = TableInput(input, columns, int(std::size(columns))).take();
    Recording recording;
    try {
        recording = readText(text);
    } catch (const ChainError& error) {
        const int lines = text.count('\n') + text.count('\r') + 1;
        FUZZ_EXPECT(error.line() >= 0 && error.line() <= lines);
        FUZZ_EXPECT(error.file() == fileName() && !error.reason().isEmpty());
        return 0;
    }
    expectWhole(recording);
    // Larger numbers are moments, not times since the start.
    if (recording.quotes.back().time >= firstEpochTime)
        return 0;
    const Recording again = readText(written(recording));
    FUZZ_EXPECT(again.instruments == recording.instruments && again.quotes.size() == recording.quotes.size());
    for (std::size_t i = 0; i < again.quotes.size(); ++i)
        FUZZ_EXPECT(isSame(again.quotes[i], recording.quotes[i]));
    return 0;
}
