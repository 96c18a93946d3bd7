// Qwt's own plot, panner and magnifier under random events, as a measure of what the monkey's plot bears. See
// CMakeLists.txt for how to run it.

#include "monkey/memorywatch.h"
#include "monkey/monkeyrandom.h"

#include <QApplication>
#include <QCoreApplication>
#include <QMouseEvent>
#include <QWheelEvent>

#include <qwt_plot.h>
#include <qwt_plot_canvas.h>
#include <qwt_plot_curve.h>
#include <qwt_plot_magnifier.h>
#include <qwt_plot_panner.h>

#include <sys/resource.h>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <exception>
#include <new>
#include <unistd.h>

namespace {

constexpr qint64 mebibyte = 1024 * 1024;
constexpr rlim_t mostMemory = rlim_t(2048) * mebibyte;
constexpr unsigned secondsOfStep = 60;

enum class Kind { Drag, Turn, Resize, SetSamples, SetScale, HandleEvents };

const char* nameOf(Kind kind)
{
    constexpr const char* names[] = {"drag", "wheel", "resize", "set samples", "set scale", "handle events"};
    return names[static_cast<int>(kind)];
}

volatile int currentStep = 0;
const char* volatile currentName = "";

/// For the end that nobody plans: without memory there is little that can be done.
[[noreturn]] void sayHowItEnds(const char* how)
{
    char text[200];
    const int length = std::snprintf(text, sizeof text, "plain Qwt ends at step %d (%s): %s\n",
        int(currentStep), static_cast<const char*>(currentName), how);
    const auto written = write(STDOUT_FILENO, text, static_cast<std::size_t>(length));
    _exit(written == length ? 1 : 2);
}

void onSignal(int number)
{
    sayHowItEnds(number == SIGALRM ? "a step takes more than a minute"
            : number == SIGSEGV    ? "segmentation fault"
                                   : "abort");
}

[[noreturn]] void onTerminate()
{
    try {
        if (const std::exception_ptr exception = std::current_exception())
            std::rethrow_exception(exception);
    } catch (const std::bad_alloc&) {
        sayHowItEnds("out of memory, at 2 GiB of address space");
    } catch (...) {
        sayHowItEnds("another exception");
    }
    sayHowItEnds("terminated");
}

/// A plot with a curve that its user pans by dragging the canvas, and zooms by the wheel.
class PlainPlot {
public:
    PlainPlot()
        : m_panner(m_plot.canvas())
        , m_magnifier(m_plot.canvas())
    {
        m_curve.attach(&m_plot);
        m_plot.resize(400, 300);
        m_plot.show();
        QCoreApplication::processEvents();
    }

    void step(Monkey::Random& random)
    {
        const Kind kind = random.of({Kind::Drag, Kind::Drag, Kind::Drag, Kind::Turn, Kind::Turn, Kind::Turn,
            Kind::Resize, Kind::SetSamples, Kind::SetScale, Kind::HandleEvents});
        currentName = nameOf(kind);
        perform(kind, random);
    }

private:
    void perform(Kind kind, Monkey::Random& random)
    {
        switch (kind) {
        case Kind::Drag:
            return drag(random);
        case Kind::Turn:
            return turn(random);
        case Kind::Resize:
            return resize(random);
        case Kind::SetSamples:
            m_curve.setSamples(random.samples());
            return m_plot.replot();
        case Kind::SetScale:
            return setScale(random);
        case Kind::HandleEvents:
            return QCoreApplication::processEvents();
        }
    }

    QPoint place(Monkey::Random& random) const
    {
        const QSize size = m_plot.canvas()->size();
        const int x = random.integer(0, std::max(0, size.width() - 1));
        return QPoint(x, random.integer(0, std::max(0, size.height() - 1)));
    }

    void send(QEvent::Type type, const QPoint& position, Qt::MouseButton button, Qt::MouseButtons buttons)
    {
        QMouseEvent event(
            type, position, m_plot.canvas()->mapToGlobal(position), button, buttons, Qt::NoModifier);
        QApplication::sendEvent(m_plot.canvas(), &event);
    }

    void drag(Monkey::Random& random)
    {
        const QPoint from = place(random);
        const QPoint to = place(random);
        send(QEvent::MouseButtonPress, from, Qt::LeftButton, Qt::LeftButton);
        send(QEvent::MouseMove, to, Qt::NoButton, Qt::LeftButton);
        send(QEvent::MouseButtonRelease, to, Qt::LeftButton, Qt::NoButton);
    }

    void turn(Monkey::Random& random)
    {
        const QPoint position = place(random);
        const int angle = random.of({120, 120, -120, -120, -120, 240, -240, 1200, -1200, 32767, -32768});
        QWheelEvent event(position, m_plot.canvas()->mapToGlobal(position), QPoint(), QPoint(0, angle),
            Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(m_plot.canvas(), &event);
    }

    void resize(Monkey::Random& random)
    {
        const int width = random.chance(6) ? random.of({0, 1, 2, 19, 40}) : random.integer(60, 400);
        m_plot.resize(width, random.chance(6) ? random.of({0, 1, 2, 19, 40}) : random.integer(40, 300));
    }

    void setScale(Monkey::Random& random)
    {
        const int axis = random.of({int(QwtPlot::xBottom), int(QwtPlot::yLeft)});
        const double lower = random.chance(5) ? random.anyDouble() : random.decimalNumber(60.0, 110.0);
        const double upper = random.chance(5) ? random.anyDouble() : lower + random.decimalNumber(0.5, 60.0);
        m_plot.setAxisScale(axis, lower, upper);
        m_plot.replot();
    }

    QwtPlot m_plot;
    QwtPlotCurve m_curve;
    QwtPlotPanner m_panner;
    QwtPlotMagnifier m_magnifier;
};

void limitMemory()
{
    const rlimit limit{mostMemory, mostMemory};
    if (setrlimit(RLIMIT_AS, &limit) != 0)
        std::perror("setrlimit");
    std::set_terminate(onTerminate);
    for (const int number : {SIGSEGV, SIGABRT, SIGALRM})
        std::signal(number, onSignal);
}

}

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const int steps = arguments.value(1, QStringLiteral("100000")).toInt();
    const quint64 seed = arguments.value(2, QStringLiteral("1")).toULongLong();
    limitMemory();

    PlainPlot plot;
    for (currentStep = 0; currentStep < steps; currentStep = currentStep + 1) {
        Monkey::Random random(seed, static_cast<std::uint64_t>(currentStep));
        alarm(secondsOfStep);
        plot.step(random);
        if (currentStep % 1000 == 0) {
            std::printf("step %d: %lld MiB\n", int(currentStep),
                static_cast<long long>(Monkey::residentMemory() / mebibyte));
            std::fflush(stdout);
        }
    }
    std::printf("plain Qwt survives %d steps of seed %llu\n", steps, static_cast<unsigned long long>(seed));
    return 0;
}
