#pragma once

#include <window/deskdata.h>
#include <window/deskplot.h>
#include <window/viewcontrol.h>

#include <QtTest>

#include <memory>

/// A desk's plot of the test chain on the screen, its view under the user's control, and the user's hands.
/// Its clock stands still but for wait().
class ShownView {
public:
    enum Place { Canvas, Prices, Values, Title };

    /// The window is exposed unless isShown() says otherwise.
    ShownView();

    bool isShown() const { return m_shown; }
    DeskPlot& plot() { return *m_plot; }
    ViewControl& control() { return *m_control; }
    View view() const { return m_control->view(); }
    int futureIsinId() const { return m_futureIsinId; }
    /// The test chain's series with another forward and other volatilities.
    ShownSeries series(double forward, double volatilityShift);

    /// Sets ranges as they are after a zoom of both, with auto-scale off, and forgets the way there.
    void show(const QwtInterval& prices, const QwtInterval& values);
    /// Sets a range of prices with auto-scale on.
    void show(const QwtInterval& prices);

    /// The middle of a part of the plot, in the plot's coordinates.
    QPoint middle(Place place) const;
    /// Puts the mouse there.
    void putCursor(const QPoint& position) const;
    /// Turns the wheel under the cursor; the event has this time.
    void turn(int angle, Qt::KeyboardModifiers modifiers = Qt::NoModifier, int at = 1000);
    /// Presses, moves or releases the left button, or clicks a second time, at a position of the plot, with
    /// the event going to the widget there.
    void press(const QPoint& position);
    void move(const QPoint& position);
    void release(const QPoint& position);
    void drag(const QPoint& from, const QPoint& offset);
    void doubleClick(const QPoint& position, const QPoint& joltAtFirst = QPoint());
    void doubleClickAndHold(const QPoint& position, const QPoint& joltAtFirst = QPoint());
    void wait(qint64 milliseconds) { m_now += milliseconds; }

private:
    void send(QEvent::Type type, const QPoint& position, Qt::MouseButtons held);

    DeskData m_data;
    int m_futureIsinId = 0;
    std::unique_ptr<DeskPlot> m_plot;
    ViewControl* m_control = nullptr;
    qint64 m_now = 0;
    QPointer<QWidget> m_grabber;
    bool m_shown = false;
};

/// Whether two ranges are the same but for a part of their width.
inline bool isAbout(const QwtInterval& a, const QwtInterval& b, double part = 1e-9)
{
    return std::abs(a.minValue() - b.minValue()) <= part * b.width()
        && std::abs(a.maxValue() - b.maxValue()) <= part * b.width();
}

inline QByteArray inWords(const QwtInterval& range)
{
    return QByteArray::number(range.minValue(), 'g', 12) + " to "
        + QByteArray::number(range.maxValue(), 'g', 12);
}

inline QByteArray inWords(const View& view)
{
    return inWords(view.prices) + ", " + inWords(view.values) + (view.autoScale ? ", auto" : "");
}

#define COMPARE_VIEWS(view, expected)                                                                        \
    do {                                                                                                     \
        const View actualView = (view);                                                                      \
        const View expectedView = (expected);                                                                \
        QVERIFY2(actualView == expectedView, inWords(actualView) + " instead of " + inWords(expectedView));  \
    } while (false)
