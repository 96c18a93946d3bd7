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
    // Other events come also while the plot is being destroyed.
    if ((!isMouse && event->type() != QEvent::KeyPress) || !m_plot || !m_picker)
        return QObject::eventFilter(watched, event);
    if (isMouse) {
        if (watched == m_plot->canvas() && isActive())
            end();
        return false;
    }
    const auto* const key = static_cast<QKeyEvent*>(event);
    const bool plain = !(key->modifiers() & ~Qt::KeypadModifier);
    return plain && press(key->key());
}

bool CurveWalk::press(int key)
{
    const bool isArrow
        = key == Qt::Key_Left || key == Qt::Key_Right || key == Qt::Key_Up || key == Qt::Key_Down;
    if (key == Qt::Key_Escape && isActive())
        end();
    else if (!isArrow)
        return false;
    else if (!isActive())
        begin();
    else if (key == Qt::Key_Left || key == Qt::Key_Right)
        step(key == Qt::Key_Right ? 1 : -1);
    else
        changeCurve(key == Qt::Key_Down ? 1 : -1);
    return true;
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

int CurveWalk::nearestSample(const PriceBased2dPlotCurve& curve, double price) const
{
    int nearest = -1;
    for (int i = 0; i < int(curve.dataSize()); ++i) {
        const QPointF sample = curve.sample(i);
        if (!m_plot->axisScaleDiv(QwtPlot::xBottom).contains(sample.x()))
            continue;
        if (nearest < 0 || std::abs(sample.x() - price) < std::abs(curve.sample(nearest).x() - price))
            nearest = i;
    }
    return nearest;
}

void CurveWalk::begin()
{
    if (isVisible(*m_plot, m_picker->position())) {
        const ClosestPointParams closest = m_picker->getClosestCurveParams(m_picker->usedCurves());
        if (closest.curve && closest.index >= 0) {
            show(*closest.curve, closest.index);
            return;
        }
    }
    const QList<PriceBased2dPlotCurve*> all = curves();
    if (!all.isEmpty())
        show(*all.first(), nearestSample(*all.first(), quoteOf(*m_plot)));
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
    m_curveTitle = curve.title().text();
    m_strike = curve.sample(index).x();
    m_item->setVisible(true);
    m_picker->setTrackerText(QwtText());
    m_plot->replot();
}

void CurveWalk::end()
{
    m_curveTitle.clear();
    m_item->setVisible(false);
    m_plot->replot();
}

void CurveWalk::refresh()
{
    if (!isActive())
        return;
    const PriceBased2dPlotCurve* const curve = current();
    if (!curve) {
        m_curveTitle.clear();
        m_item->setVisible(false);
        return;
    }
    const int index = nearestSample(*curve, m_strike);
    m_item->setPoint(curve->sample(index));
    m_item->setText(m_picker->renderedText(ReadOut::text(*m_plot, *m_picker, *curve, index)));
}
