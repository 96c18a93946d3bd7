#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>
#include <QVector>

class DeskWindow;
class QWidget;

/// Posts mouse moves and keys to a widget as a user would make them, and takes the time between those that
/// were handled.
///
/// The time is parted into rounds. On a machine with other work a process is stopped now and then for longer
/// than any window should be silent; that spoils a round or two. What the window does itself, it does in all
/// of them: so it is the median of the rounds' longest gaps that tells of the window.
class AnswerTimes : public QObject {
    Q_OBJECT

public:
    static constexpr int roundMilliseconds = 300;

    /// The widget tracks the mouse.
    explicit AnswerTimes(QWidget& target);

    void start();
    void stop();

    int handledCount() const { return m_handled; }
    /// How often the widget was painted.
    int paintCount() const { return m_paints; }
    /// The longest gap of each round, in milliseconds; a gap counts in the round that it ends in.
    const QVector<double>& longestGaps() const { return m_longestGaps; }
    double medianGap() const;

    bool eventFilter(QObject* watched, QEvent* event) override;

private Q_SLOTS:
    void post();

private:
    void noteGap();

    QWidget& m_target;
    QTimer m_timer;
    QElapsedTimer m_clock;
    /// Of the event that was handled last, since the start.
    qint64 m_lastNanoseconds = 0;
    bool m_isPosted = false;
    int m_posted = 0;
    int m_handled = 0;
    int m_paints = 0;
    QVector<double> m_longestGaps;
};

/// What a window made of a feed.
struct AnswerFigures {
    /// Whether the feed came to its end in time, and what the table has of it is its last prices.
    bool isComplete = false;
    int quotes = 0;
    double seconds = 0.0;
    /// How often the window followed its series.
    int updates = 0;
    /// How often the curves were painted.
    int paints = 0;
    int userEvents = 0;
    /// Both in milliseconds; see AnswerTimes.
    double medianGap = 0.0;
    double longestGap = 0.0;
};

/// Feeds a shown window with quotes of a stored series, at a rate a second for some seconds, while a user
/// moves the mouse over the plot and walks its curves.
AnswerFigures measureAnswers(DeskWindow& window, int futureIsinId, int quotesPerSecond, double seconds);

/// The figures in one line.
QString describe(const AnswerFigures& figures);
