#pragma once

#include "replay/quotewriter.h"

#include <QSet>
#include <QTimer>

#include <functional>
#include <memory>
#include <optional>

/// Replays recorded quotes into the host's table "securities", as a feed of live prices would write them.
///
/// Every 20 ms all quotes that are due since the last time go in together: one rowsChanged() of the table
/// tells of them. Quotes of instruments that the table does not have are counted and passed over. The
/// prices are not stored and do not outlive this object: see QuoteWriter. Where the table is destroyed the
/// replay ends.
class QuoteReplay : public QObject {
    Q_OBJECT

public:
    /// Gives microseconds since any moment, never going back.
    using Clock = std::function<qint64()>;

    /// Replays with a positive factor on the time, or, without one, as fast as possible. It takes 5 ms of
    /// each 20 ms at most, so that the events of the application are not kept waiting; what is due and does
    /// not fit in comes later. "FUT" in the recording is the future of the given ISIN id. Throws Exception as
    /// QuoteWriter does.
    QuoteReplay(Table* securities, std::unique_ptr<QuoteStream> quotes, int futureIsinId,
        std::optional<double> speed, QObject* parent = nullptr);

    /// Replaces the clock, before start().
    void setClock(Clock clock);

    void start();
    bool isFinished() const { return m_state == State::Finished; }

public Q_SLOTS:
    /// Writes the quotes due. The timer of start() does that; of no effect before start() and at the end.
    void tick();

Q_SIGNALS:
    /// Once, before finished(): the instruments that the table did not have, in the order of the recording,
    /// and how many of the quotes were theirs. Not emitted where there are none.
    void unknownInstruments(const QStringList& names, int quotes);
    /// Once, before finished(): the recording went wrong behind the last quote written.
    void failed(const QString& reason);
    /// Once, when the last quote was written or the table is gone.
    void finished();

private:
    enum class State { Waiting, Running, Finished };

    bool isDue(const RecordedQuote& quote, double elapsed) const;
    void readNext();
    void note(const RecordedQuote& quote);
    void takeDueQuotes();
    void finish();

    const std::unique_ptr<QuoteStream> m_quotes;
    const std::optional<double> m_speed;
    QuoteWriter m_writer;
    Clock m_clock;
    QTimer m_timer;
    State m_state = State::Waiting;
    qint64 m_startTime = 0;
    /// Read, but not due yet; none behind the last one.
    std::optional<RecordedQuote> m_next;
    /// Why there is no further one; empty at the regular end.
    QString m_failure;
    QSet<int> m_unknown;
    int m_unknownQuotes = 0;
};
