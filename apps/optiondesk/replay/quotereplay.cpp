#include "replay/quotereplay.h"

#include <database/exception.h>
#include <database/table.h>

#include <QElapsedTimer>
#include <QLoggingCategory>

namespace {

Q_LOGGING_CATEGORY(replayLog, "optiondesk.replay", QtWarningMsg)

constexpr int tickMilliseconds = 20;
constexpr qint64 sliceMicroseconds = 5000;
// Asking for the time costs as much as a few quotes.
constexpr int quotesPerLook = 64;
constexpr double microsecondsPerMillisecond = 1000.0;

QuoteReplay::Clock systemClock()
{
    QElapsedTimer timer;
    timer.start();
    return [timer] { return timer.nsecsElapsed() / 1000; };
}

}

QuoteReplay::QuoteReplay(Table* securities, std::unique_ptr<QuoteStream> quotes, int futureIsinId,
    std::optional<double> speed, QObject* parent)
    : QObject(parent)
    , m_quotes(std::move(quotes))
    , m_speed(speed)
    , m_writer(securities, m_quotes->instruments(), futureIsinId)
    , m_clock(systemClock())
{
    readNext();
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
    qCDebug(replayLog) << "started at the speed" << m_speed.value_or(0.0);
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
    if (self && m_state == State::Running && (!m_next || !m_writer.hasTable()))
        finish();
}

bool QuoteReplay::isDue(const RecordedQuote& quote, double elapsed) const
{
    return !m_speed || double(quote.time) * microsecondsPerMillisecond <= elapsed * *m_speed;
}

void QuoteReplay::readNext()
{
    try {
        m_next = m_quotes->read();
    } catch (const Exception& error) {
        m_next.reset();
        m_failure = error.text();
    }
    const QStringList& instruments = m_quotes->instruments();
    while (m_writer.instrumentCount() < instruments.size())
        m_writer.addInstrument(instruments.at(m_writer.instrumentCount()));
}

void QuoteReplay::note(const RecordedQuote& quote)
{
    if (m_writer.note(quote))
        return;
    m_unknown.insert(quote.instrument);
    ++m_unknownQuotes;
}

void QuoteReplay::takeDueQuotes()
{
    const qint64 now = m_clock();
    const auto elapsed = double(now - m_startTime);
    for (int taken = 1; m_next && isDue(*m_next, elapsed); ++taken) {
        note(*m_next);
        readNext();
        if (taken % quotesPerLook == 0 && m_clock() - now >= sliceMicroseconds)
            return;
    }
}

void QuoteReplay::finish()
{
    m_state = State::Finished;
    m_timer.stop();
    qCDebug(replayLog) << "ended after ms" << (m_clock() - m_startTime) / 1000 << "with"
                       << m_quotes->instruments().size() << "instruments," << m_unknownQuotes
                       << "quotes of unknown ones" << m_failure;
    const QPointer<QuoteReplay> self(this);
    if (m_unknownQuotes > 0) {
        QStringList names;
        const QStringList& instruments = m_quotes->instruments();
        for (int i = 0; i < instruments.size(); ++i) {
            if (m_unknown.contains(i))
                names.append(instruments.at(i));
        }
        Q_EMIT unknownInstruments(names, m_unknownQuotes);
    }
    if (self && !m_failure.isEmpty())
        Q_EMIT failed(m_failure);
    if (self)
        Q_EMIT finished();
}
