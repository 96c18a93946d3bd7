#include "support/loudapplication.h"

#include "support/runtimefolder.h"

#include <QEvent>
#include <QMetaMethod>
#include <QPointer>
#include <QWidget>

#include <qwt_plot.h>
#include <qwt_scale_div.h>
#include <qwt_scale_widget.h>

#include <cmath>

namespace TestSupport {

namespace {

constexpr char isReported[] = "plot2d_test_scale_is_reported";

/// By their names: tests of the host alone know no library.
const char* const listenedClasses[] = {
    "PriceBased2dPlot", "PriceBased2dPlotLegend", "PriceBased2dPlotPanner", "PriceBased2dPlotPointManager"};

bool isLookedAtAfter(QEvent::Type type)
{
    switch (type) {
    case QEvent::LayoutRequest:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseMove:
    case QEvent::Paint:
    case QEvent::PolishRequest:
    case QEvent::Resize:
    case QEvent::Show:
    case QEvent::UpdateRequest:
    case QEvent::Wheel:
        return true;
    default:
        return false;
    }
}

/// Raises a counter as long as it lives, also when an exception ends the event.
class Raised {
public:
    explicit Raised(int& counter, bool isOn = true)
        : m_counter(counter)
        , m_by(isOn ? 1 : 0)
    {
        m_counter += m_by;
    }
    ~Raised() { m_counter -= m_by; }
    Raised(const Raised&) = delete;
    Raised& operator=(const Raised&) = delete;

private:
    int& m_counter;
    int m_by;
};

}

LoudApplication::LoudApplication(int& argc, char** argv)
    : QApplication(argc, argv)
{
    nameRuntimeFolder();
}

bool LoudApplication::notify(QObject* receiver, QEvent* event)
{
    const QEvent::Type type = event->type();
    // A plot sets the font of its scales when it is made.
    if (type == QEvent::FontChange)
        listenToScale(*receiver);
    QPointer<QWidget> window;
    if (m_depth == 0 && receiver->isWidgetType() && isLookedAtAfter(type))
        window = static_cast<QWidget*>(receiver)->window();
    bool isHandled = false;
    {
        const Raised depth(m_depth);
        const Raised painting(m_painting, type == QEvent::Paint);
        isHandled = QApplication::notify(receiver, event);
    }
    if (window)
        look(*window);
    return isHandled;
}

void LoudApplication::listenToScale(QObject& receiver)
{
    if (auto* scale = qobject_cast<QwtScaleWidget*>(&receiver))
        connect(scale, SIGNAL(scaleDivChanged()), this, SLOT(onScaleDivision()), Qt::UniqueConnection);
}

void LoudApplication::onScaleDivision()
{
    if (auto* plot = qobject_cast<QwtPlot*>(sender()->parent()))
        lookAtScales(*plot);
}

void LoudApplication::look(QWidget& window)
{
    if (auto* plot = qobject_cast<QwtPlot*>(&window)) {
        lookAtScales(*plot);
        listen(window);
    }
    const QList<QObject*> objects = window.findChildren<QObject*>();
    for (QObject* object : objects) {
        if (auto* plot = qobject_cast<QwtPlot*>(object))
            lookAtScales(*plot);
        listen(*object);
    }
}

void LoudApplication::lookAtScales(QwtPlot& plot)
{
    for (int axis = 0; axis < QwtPlot::axisCnt; ++axis) {
        const QwtScaleDiv& division = plot.axisScaleDiv(axis);
        if (std::isfinite(division.lowerBound()) && std::isfinite(division.upperBound()))
            continue;
        if (plot.property(isReported).toBool())
            continue;
        plot.setProperty(isReported, true);
        qWarning("axis %d goes from %g to %g", axis, division.lowerBound(), division.upperBound());
    }
}

void LoudApplication::listen(QObject& object)
{
    for (const char* name : listenedClasses) {
        if (!object.inherits(name))
            continue;
        const QMetaMethod slot = metaObject()->method(metaObject()->indexOfSlot("onSignal()"));
        // Those that the library's class declares itself, not those of Qt.
        for (const QMetaObject* type = object.metaObject(); type; type = type->superClass()) {
            if (qstrcmp(type->className(), name) != 0)
                continue;
            for (int i = type->methodOffset(); i < type->methodCount(); ++i) {
                if (type->method(i).methodType() == QMetaMethod::Signal)
                    connect(&object, type->method(i), this, slot, Qt::UniqueConnection);
            }
        }
    }
}

void LoudApplication::onSignal()
{
    if (m_painting == 0)
        return;
    const QMetaMethod signal = sender()->metaObject()->method(senderSignalIndex());
    qWarning("%s emits %s while something paints", sender()->metaObject()->className(),
        signal.methodSignature().constData());
}

}
