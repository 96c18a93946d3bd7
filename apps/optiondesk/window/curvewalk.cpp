#include "window/curvewalk.h"

#include "window/readout.h"
#include "window/readoutitem.h"

#include <plot2d/pricebased2dplot.h>
#include <plot2d/pricebased2dplotcurve.h>
#include <plot2d/pricebased2dplotpicker.h>
#include <plot2d/pricebased2dplotscaledraw.h>

#include <QKeyEvent>

#include <algorithm>
#include <cmath>

namespace {

double quoteOf(const PriceBased2dPlot& plot)
{
    const auto* const axis
        = dynamic_cast<const PriceBased2dPlotScaleDraw*>(plot.axisScaleDraw(QwtPlot::xBottom));
    return axis ? axis->curKotirValue() : 0.0;
}

bool isVisible(const PriceBased2dPlot& plot, const QPointF& point)
{
    return plot.axisScaleDiv(QwtPlot::xBottom).contains(point.x())
        && plot.axisScaleDiv(QwtPlot::yLeft).contains(point.y());
}

template <typename Predicate>
int nearest(const PriceBased2dPlotCurve& curve, double price, const Predicate& counts)
{
    int found = -1;
    for (int i = 0; i < int(curve.dataSize()); ++i) {
        const QPointF sample = curve.sample(i);
        if (counts(sample)
            && (found < 0 || std::abs(sample.x() - price) < std::abs(curve.sample(found).x() - price)))
            found = i;
    }
    return found;
}

}

CurveWalk::CurveWalk(PriceBased2dPlot* plot, PriceBased2dPlotPicker* picker)
    : QObject(picker)
    , m_plot(plot)
    , m_picker(picker)
    , m_item(new ReadOutItem)
{
    m_item->attach(plot);
    plot->canvas()->setFocusPolicy(Qt::StrongFocus);
    plot->setFocusProxy(plot->canvas());
    // The arrows would move the mouse.
    for (const auto arrow : {QwtEventPattern::KeyLeft, QwtEventPattern::KeyRight, QwtEventPattern::KeyUp,
             QwtEventPattern::KeyDown})
        picker->setKeyPattern(arrow, Qt::Key_unknown);
    plot->canvas()->installEventFilter(this);
    plot->installEventFilter(this);
}

bool CurveWalk::eventFilter(QObject* watched, QEvent* event)
{
    const bool isMouse = event->type() == QEvent::MouseMove || event->type() == QEvent::MouseButtonPress;
    const bool isKey = event->type() == QEvent::KeyPress || event->type() == QEvent::ShortcutOverride;
    // Other events come also while the plot is being destroyed.
    if ((!isMouse && !isKey) || !m_plot || !m_picker)
        return QObject::eventFilter(watched, event);
    if (isMouse) {
        if (watched == m_plot->canvas() && isActive())
            end();
        return false;
    }
    const auto& key = *static_cast<QKeyEvent*>(event);
    if (!isOurs(key))
        return false;
    // The keys that are ours are no shortcuts of the window's.
    if (event->type() == QEvent::KeyPress)
        press(key.key());
    event->accept();
    return true;
}

bool CurveWalk::isOurs(const QKeyEvent& event) const
{
    if (event.modifiers() & ~Qt::KeypadModifier)
        return false;
    switch (event.key()) {
    case Qt::Key_F2:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return true;
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Up:
    case Qt::Key_Down:
        return isPointShown();
    case Qt::Key_Escape:
        return isActive();
    default:
        return false;
    }
}

void CurveWalk::press(int key)
{
    if (key == Qt::Key_Escape)
        end();
    else if (key == Qt::Key_Left || key == Qt::Key_Right)
        step(key == Qt::Key_Right ? 1 : -1);
    else if (key == Qt::Key_Up || key == Qt::Key_Down)
        changeCurve(key == Qt::Key_Down ? 1 : -1);
    else
        begin();
}

QList<PriceBased2dPlotCurve*> CurveWalk::curves() const
{
    QList<PriceBased2dPlotCurve*> all = m_picker->usedCurves();
    all.erase(std::remove_if(all.begin(), all.end(),
                  [this](const PriceBased2dPlotCurve* curve) {
                      return curve->dataType() == PriceBased2dPlotCurve::quoteLineType || !curve->isVisible()
                          || nearestSample(*curve, 0.0) < 0;
                  }),
        all.end());
    return all;
}

PriceBased2dPlotCurve* CurveWalk::current() const
{
    const QList<PriceBased2dPlotCurve*> all = curves();
    const auto found = std::find_if(all.begin(), all.end(),
        [this](const PriceBased2dPlotCurve* curve) { return curve->title().text() == m_curveTitle; });
    return found == all.end() ? nullptr : *found;
}

bool CurveWalk::isPointShown() const
{
    return isActive() && m_item->isVisible();
}

int CurveWalk::nearestSample(const PriceBased2dPlotCurve& curve, double price) const
{
    return nearest(curve, price, [this](const QPointF& sample) {
        return m_plot->axisScaleDiv(QwtPlot::xBottom).contains(sample.x());
    });
}

int CurveWalk::nearestVisibleSample(const PriceBased2dPlotCurve& curve, double price) const
{
    return nearest(curve, price, [this](const QPointF& sample) { return isVisible(*m_plot, sample); });
}

void CurveWalk::begin()
{
    if (isPointShown())
        return;
    if (isVisible(*m_plot, m_picker->position())) {
        const ClosestPointParams closest = m_picker->getClosestCurveParams(m_picker->usedCurves());
        if (closest.curve && closest.index >= 0) {
            show(*closest.curve, closest.index);
            return;
        }
    }
    const QList<PriceBased2dPlotCurve*> all = curves();
    for (const PriceBased2dPlotCurve* const curve : all) {
        const int index = nearestVisibleSample(*curve, quoteOf(*m_plot));
        if (index >= 0) {
            show(*curve, index);
            return;
        }
    }
}

void CurveWalk::step(int direction)
{
    const PriceBased2dPlotCurve* const curve = current();
    if (!curve)
        return;
    const double from = m_plot->roundedXValue(m_strike);
    const int count = int(curve->dataSize());
    for (int i = nearestSample(*curve, m_strike); i >= 0 && i < count; i += direction) {
        const double price = curve->sample(i).x();
        if (!m_plot->axisScaleDiv(QwtPlot::xBottom).contains(price))
            return;
        if ((m_plot->roundedXValue(price) - from) * direction > 0.0) {
            show(*curve, i);
            return;
        }
    }
}

void CurveWalk::changeCurve(int direction)
{
    const QList<PriceBased2dPlotCurve*> all = curves();
    const int count = all.size();
    const int position = all.indexOf(current());
    if (count == 0 || position < 0)
        return;
    const PriceBased2dPlotCurve& next = *all.at((position + direction + count) % count);
    show(next, nearestSample(next, m_strike));
}

void CurveWalk::show(const PriceBased2dPlotCurve& curve, int index)
{
    if (index < 0)
        return;
    const bool begins = !isActive();
    m_curveTitle = curve.title().text();
    m_strike = curve.sample(index).x();
    m_item->setVisible(true);
    m_picker->setTrackerText(QwtText());
    m_plot->replot();
    if (begins)
        Q_EMIT activeChanged(true);
}

void CurveWalk::forgetPoint()
{
    m_curveTitle.clear();
    m_item->setVisible(false);
    Q_EMIT activeChanged(false);
}

void CurveWalk::end()
{
    if (!isActive())
        return;
    forgetPoint();
    m_plot->replot();
}

void CurveWalk::refresh()
{
    if (!isActive())
        return;
    const PriceBased2dPlotCurve* const curve = current();
    if (!curve) {
        forgetPoint();
        return;
    }
    const int index = nearestSample(*curve, m_strike);
    m_item->setPoint(curve->sample(index));
    m_item->setVisible(isVisible(*m_plot, curve->sample(index)));
    m_item->setText(m_picker->renderedText(ReadOut::text(*m_plot, *m_picker, *curve, index)));
}
