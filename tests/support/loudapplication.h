#pragma once

#include <QApplication>

class QwtPlot;

namespace TestSupport {

/// The application of the tests. After every event that a widget has handled it looks at the plots of the
/// widget's window, it hears of every scale division that a plot gives to one of its axes, also a plot that
/// is never shown, and it listens to the signals of the library. It warns, which fails the test, of
/// - a scale whose bounds are not finite (once for each plot);
/// - a signal of the library while something paints: painting only draws.
class LoudApplication : public QApplication {
    Q_OBJECT

public:
    LoudApplication(int& argc, char** argv);

    bool notify(QObject* receiver, QEvent* event) override;

private Q_SLOTS:
    void onSignal();
    void onScaleDivision();

private:
    void look(QWidget& window);
    void listenToScale(QObject& receiver);
    void lookAtScales(QwtPlot& plot);
    void listen(QObject& object);

    int m_depth = 0;
    int m_painting = 0;
};

}
