#pragma once

#include <QObject>
#include <QString>

/// What its user is told of long work that goes on in other threads, and may stop. Lives in the thread of the
/// widgets, like all its functions.
class Work : public QObject {
    Q_OBJECT

public:
    /// Of what is done before anybody can say how much there is.
    static constexpr int unknownPercent = -1;

    explicit Work(QObject* parent = nullptr);

    bool isRunning() const { return m_isRunning; }
    QString text() const { return m_text; }
    /// 0 to 100, or unknownPercent.
    int percent() const { return m_percent; }

    /// The work has begun, or goes on as something else; the text says to its user what is done.
    void begin(const QString& text);
    /// How much is done; clamped to 100, and never less than before. Nothing where no work runs.
    void reach(int percent);
    /// Done, stopped or failed.
    void end();

    /// Asks whoever does the work to stop. Nothing where no work runs.
    void cancel();

Q_SIGNALS:
    void began();
    void reached(int percent);
    void ended();
    void cancelWanted();

private:
    bool m_isRunning = false;
    QString m_text;
    int m_percent = unknownPercent;
};
