#include "answertimes.h"

#include "chainfeed.h"

#include <chain/chaintables.h>
#include <database/table.h>
#include <replay/quotereplay.h>
#include <window/deskplot.h>
#include <window/deskwindow.h>
#include <window/seriesfollower.h>

#include <QCoreApplication>
#include <QEventLoop>
#include <QMouseEvent>

#include <algorithm>

namespace {

constexpr double nanosecondsPerMillisecond = 1e6;
constexpr int eventMilliseconds = 4;

QPointF positionOf(int number, const QSize& size)
{
    // Over the whole width in 50 moves, in the middle half of the height.
    const double x = (number % 50 + 0.5) / 50.0;
    const double y = 0.25 + (number % 7) / 12.0;
    return {size.width() * x, size.height() * y};
}

bool hasLastPrices(const ChainFeed& feed, int futureIsinId)
{
    const Table& table = *ChainTables::find().securities;
    const int name = table.columnIndex(QStringLiteral("short_name"));
    const int isinId = table.columnIndex(QStringLiteral("isin_id"));
    const int last = table.columnIndex(QStringLiteral("last"));
    int found = 0;
    for (const Record& record : table.masterIndex()) {
        const bool isFuture = record.field(isinId).toString() == QString::number(futureIsinId);
        const int instrument = isFuture ? 0 : feed.instruments().indexOf(record.field(name).toString());
        if (instrument >= 0 && instrument < feed.quoteCount() && !record.value(last).isNull()
            && record.value(last).toDecimal() == feed.lastPrice(instrument))
            ++found;
    }
    return found == std::min(feed.instruments().size(), feed.quoteCount());
}

}

AnswerTimes::AnswerTimes(QWidget& target)
    : m_target(target)
{
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, SIGNAL(timeout()), SLOT(post()));
}

void AnswerTimes::start()
{
    m_target.installEventFilter(this);
    m_clock.start();
    m_timer.start(eventMilliseconds);
}

void AnswerTimes::stop()
{
    m_timer.stop();
    m_target.removeEventFilter(this);
    noteGap();
}

void AnswerTimes::post()
{
    if (m_isPosted)
        return;
    m_isPosted = true;
    ++m_posted;
    constexpr int movesPerKey = 10;
    if (m_posted % movesPerKey == 0) {
        const Qt::Key key = m_posted % (2 * movesPerKey) == 0 ? Qt::Key_Right : Qt::Key_Down;
        QCoreApplication::postEvent(&m_target, new QKeyEvent(QEvent::KeyPress, key, Qt::NoModifier));
        return;
    }
    QCoreApplication::postEvent(&m_target,
        new QMouseEvent(QEvent::MouseMove, positionOf(m_posted, m_target.size()), Qt::NoButton, Qt::NoButton,
            Qt::NoModifier));
}

bool AnswerTimes::eventFilter(QObject* watched, QEvent* event)
{
    // A key that belongs to an action does not come further than this.
    const bool isKey = event->type() == QEvent::ShortcutOverride || event->type() == QEvent::KeyPress;
    if (m_isPosted && (isKey || event->type() == QEvent::MouseMove)) {
        m_isPosted = false;
        ++m_handled;
        noteGap();
    }
    if (event->type() == QEvent::Paint)
        ++m_paints;
    return QObject::eventFilter(watched, event);
}

void AnswerTimes::noteGap()
{
    const qint64 now = m_clock.nsecsElapsed();
    const double gap = double(now - m_lastNanoseconds) / nanosecondsPerMillisecond;
    m_lastNanoseconds = now;
    const int round = int(double(now) / nanosecondsPerMillisecond) / roundMilliseconds;
    // A round that no event was handled in has the gap that goes over it.
    while (m_longestGaps.size() <= round)
        m_longestGaps.append(gap);
    m_longestGaps[round] = std::max(m_longestGaps.at(round), gap);
}

double AnswerTimes::medianGap() const
{
    QVector<double> gaps = m_longestGaps;
    const auto middle = gaps.begin() + gaps.size() / 2;
    std::nth_element(gaps.begin(), middle, gaps.end());
    return middle == gaps.end() ? 0.0 : *middle;
}

AnswerFigures measureAnswers(DeskWindow& window, int futureIsinId, int quotesPerSecond, double seconds)
{
    constexpr int patience = 60000;
    auto owned = std::make_unique<ChainFeed>(futureIsinId, quotesPerSecond, seconds);
    const ChainFeed& feed = *owned;
    QuoteReplay replay(ChainTables::find().securities, std::move(owned), futureIsinId, 1.0);
    AnswerTimes answers(*window.plot()->canvas());
    AnswerFigures figures;
    QEventLoop loop;
    QObject::connect(&replay, &QuoteReplay::finished, &loop, &QEventLoop::quit);
    QObject::connect(window.findChild<SeriesFollower*>(), &SeriesFollower::changed, &loop,
        [&figures] { ++figures.updates; });
    QTimer::singleShot(patience, &loop, &QEventLoop::quit);
    QElapsedTimer clock;
    clock.start();
    replay.start();
    answers.start();
    loop.exec();
    answers.stop();

    figures.seconds = double(clock.nsecsElapsed()) / nanosecondsPerMillisecond / 1000.0;
    figures.isComplete = replay.isFinished() && hasLastPrices(feed, futureIsinId);
    figures.quotes = feed.quoteCount();
    figures.userEvents = answers.handledCount();
    figures.paints = answers.paintCount();
    figures.medianGap = answers.medianGap();
    figures.longestGap = *std::max_element(answers.longestGaps().begin(), answers.longestGaps().end());
    return figures;
}

QString describe(const AnswerFigures& figures)
{
    return QStringLiteral("%1 quotes in %2 s, %3 updates, %4 paintings, %5 user events; longest gap %6 ms, "
                          "median of the rounds' longest %7 ms")
        .arg(figures.quotes)
        .arg(figures.seconds, 0, 'f', 2)
        .arg(figures.updates)
        .arg(figures.paints)
        .arg(figures.userEvents)
        .arg(figures.longestGap, 0, 'f', 1)
        .arg(figures.medianGap, 0, 'f', 1);
}
