#pragma once

#include <QList>
#include <QPointer>
#include <QTimer>
#include <QWidget>

class QAction;
class QLabel;
class QProgressBar;
class QToolButton;
class Work;

/// The long work that goes on, for a status bar: what it is, how far it is, and a button that stops it. Of
/// several it is the one that began last.
///
/// Work that is done within patience is not shown. While work runs Escape stops it in the whole window,
/// unless a mouse button is down: then the key takes back what the mouse does.
class WorkBar : public QWidget {
    Q_OBJECT

public:
    /// In milliseconds.
    static constexpr int patience = 250;

    /// Hides itself until there is something to show.
    explicit WorkBar(QWidget* parent);

    /// The work may go at any time.
    void add(Work* work);

    /// The work that runs; null where there is none.
    Work* current() const;

    /// Triggers the button, and is enabled as long as work runs.
    void setCancelAction(QAction* action);

    bool eventFilter(QObject* watched, QEvent* event) override;

public Q_SLOTS:
    /// Asks the current work to stop.
    void cancel();

private Q_SLOTS:
    void onBegan();
    void onReached();
    void onEnded();
    void reveal();

private:
    void refresh();
    bool takesEscape(QObject* watched, QEvent* event) const;

    /// In the order in which they began.
    QList<QPointer<Work>> m_running;
    QLabel* m_label;
    QProgressBar* m_progress;
    QToolButton* m_button;
    QPointer<QAction> m_action;
    QTimer m_timer;
};
