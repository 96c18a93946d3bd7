#include "window/curvetracker.h"

#include "window/hoverpicker.h"
#include "window/overlaycurve.h"
#include "window/readout.h"

#include <plot2d/pricebased2dplot.h>
#include <plot2d/pricebased2dplotcurve.h>

#include <QMouseEvent>

#include <qwt_scale_map.h>

CurveTracker::CurveTracker(PriceBased2dPlot* plot, HoverPicker* picker)
    : QObject(picker)
    , m_plot(plot)
    , m_picker(picker)
{
    comeFirst();
}

// Of several filters the last one comes first: the text is there before the picker shows it.
void CurveTracker::comeFirst()
{
    if (m_plot)
        m_plot->canvas()->installEventFilter(this);
}

bool CurveTracker::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::MouseMove && m_plot && m_picker) {
        track(static_cast<QMouseEvent*>(event)->localPos());
        Q_EMIT moved();
    }
    // The panner has suspended the picker since the press, and installs it again now.
    if (event->type() == QEvent::MouseButtonRelease)
        QMetaObject::invokeMethod(this, "comeFirst", Qt::QueuedConnection);
    return QObject::eventFilter(watched, event);
}

void CurveTracker::refresh()
{
    if (!m_plot || !m_picker || !m_picker->isEnabled())
        return;
    const QPoint cursor = m_picker->trackerPosition();
    if (cursor.x() < 0 || cursor.y() < 0)
        return;
    track(cursor);
    // A picker takes its text up when the mouse moves. No other object needs to know of this move on the
    // spot.
    QMouseEvent still(
        QEvent::MouseMove, cursor, cursor, QCursor::pos(), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    m_picker->eventFilter(m_plot->canvas(), &still);
    Q_EMIT refreshed();
}

void CurveTracker::track(const QPointF& canvasPosition)
{
    m_picker->setPosition(m_picker->transformedPoint(canvasPosition));
    const ClosestPointParams closest = m_picker->getClosestCurveParams(m_picker->usedCurves());
    QString text;
    std::optional<QPointF> point;
    m_price.reset();
    if (closest.curve && closest.index >= 0) {
        const QPointF sample = closest.curve->sample(closest.index);
        point = QPointF(m_plot->canvasMap(m_picker->xAxis()).transform(sample.x()),
            m_plot->canvasMap(m_picker->yAxis()).transform(sample.y()));
        if (closest.curve->dataType() != OverlayCurve::overlayType)
            m_price = sample.x();
        text = ReadOut::text(*m_plot, *m_picker, *closest.curve, closest.index);
    }
    QwtText rendered = m_picker->renderedText(text);
    // Curves under the text would make it hard to read.
    rendered.setBackgroundBrush(m_plot->canvasBackground());
    m_picker->setTrackerText(rendered);
    m_picker->setPoint(point);
}
