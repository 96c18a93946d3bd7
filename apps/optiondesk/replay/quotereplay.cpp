#include "replay/quotereplay.h"

#include <database/table.h>

#include <QElapsedTimer>

namespace {

constexpr int tickMilliseconds = 20;
constexpr qint64 sliceMicroseconds = 5000;
// Asking for the time costs as much as a few quotes.
constexpr std::size_t quotesPerLook = 64;
constexpr double microsecondsPerMillisecond = 1000.0;

QuoteReplay::Clock systemClock()
{
    QElapsedTimer timer;
    timer.start();
    return [timer] { return timer.nsecsElapsed() / 1000; };
}

}

QuoteReplay::QuoteReplay(Table* securities, RecordedQuotes recording, int futureIsinId,
    std::optional<double> speed, QObject* parent)
    : QObject(parent)
    , m_recording(std::move(recording))
    , m_speed(speed)
    , m_writer(securities, m_recording.instruments, futureIsinId)
    , m_clock(systemClock())
{
    connect(&m_timer, SIGNAL(timeout()), SLOT(tick()));
}

void QuoteReplay::setClock(Clock clock)
{
    m_clock = std::move(clock);
}

void QuoteReplay::start()
{
    if (m_state != State::Waiting)
        return;
    m_state = State::Running;
    m_startTime = m_clock();
    m_timer.start(tickMilliseconds);
}

void QuoteReplay::tick()
{
    if (m_state != State::Running)
        return;
    const QPointer<QuoteReplay> self(this);
    if (m_writer.hasTable()) {
        takeDueQuotes();
        m_writer.flush();
    }
    // The table's listeners may have ended this object or, in an event loop of theirs, the replay.
    if (self && m_state == State::Running && (m_next == m_recording.quotes.size() || !m_writer.hasTable()))
        finish();
}

bool QuoteReplay::isDue(const RecordedQuote& quote, double elapsed) const
{
    return !m_speed || double(quote.time) * microsecondsPerMillisecond <= elapsed * *m_speed;
}

void QuoteReplay::takeDueQuotes()
{
    const qint64 now = m_clock();
    const auto elapsed = double(now - m_startTime);
    const std::size_t first = m_next;
    while (m_next < m_recording.quotes.size() && isDue(m_recording.quotes[m_next], elapsed)) {
        const RecordedQuote& quote = m_recording.quotes[m_next];
        if (!m_writer.note(quote)) {
            m_unknown.insert(quote.instrument);
            ++m_unknownQuotes;
        }
        ++m_next;
        const bool look = !m_speed && (m_next - first) % quotesPerLook == 0;
        if (look && m_clock() - now >= sliceMicroseconds)
            return;
    }
}

void QuoteReplay::finish()
{
    m_state = State::Finished;
    m_timer.stop();
    const QPointer<QuoteReplay> self(this);
    if (m_unknownQuotes > 0) {
        QStringList names;
        for (int i = 0; i < m_recording.instruments.size(); ++i) {
            if (m_unknown.contains(i))
                names.append(m_recording.instruments.at(i));
        }
        Q_EMIT unknownInstruments(names, m_unknownQuotes);
    }
    if (self)
        Q_EMIT finished();
}
