#pragma once

#include <QObject>
#include <QPoint>
#include <QStringList>

class QWidget;

/// The hand on mouse and keyboard: xdotool moves the real pointer of the X server and presses its buttons and
/// keys. Qt sees what any other client would make it see.
///
/// A call lets xdotool do all of its actions while this process waits, and then runs the event loop until
/// everything that came of them is handled. So the plot meets them as one that was busy in the meantime:
/// moves may reach it as one, and the cursor is where the last action left it. What shall be handled one by
/// one is done by one call each. No press is taken for the second of a double click unless the test sets the
/// application's interval of double clicks.
class Hand : public QObject {
    Q_OBJECT

public:
    Hand();
    ~Hand() override;

    /// Does actions in the words of xdotool ("click 4", "keydown shift"). The keyboard's focus must be in a
    /// window of this process. False, with a warning, if xdotool fails or the window hears nothing.
    bool does(const QStringList& actions);

    /// One motion to a place in a widget's coordinates, which may lie outside of it.
    bool movesTo(const QWidget* widget, const QPoint& place);
    /// A press and release of a button (1 left, 2 middle, 3 right, 4 wheel forward, 5 wheel back) there.
    bool clicks(const QWidget* widget, const QPoint& place, int button = 1);
    /// A press of the left button at one place, a number of moves, and the release at another.
    bool drags(const QWidget* widget, const QPoint& from, const QPoint& to, int moves);

    /// The action that moves to a place in a widget's coordinates.
    static QString moveAction(const QWidget* widget, const QPoint& place);

    /// How many mouse moves have reached windows of this process so far.
    int moves() const { return m_moves; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    int m_moves = 0;
    int m_marks = 0;
};
