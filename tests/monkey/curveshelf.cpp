#include "monkey/curveshelf.h"

#include <plot2d/pricebased2dplot.h>

#include <QPen>

namespace Monkey {

CurveShelf::~CurveShelf()
{
    clear();
}

void CurveShelf::add(PriceBased2dPlot& plot, int type, const QString& title, const QVector<QPointF>& samples)
{
    auto* curve = new PriceBased2dPlotCurve(&plot, title);
    curve->setDataType(type);
    curve->setSamples(samples);
    curve->setLegendAttribute(QwtPlotCurve::LegendShowLine);
    if (type == PriceBased2dPlotCurve::quoteLineType) {
        curve->setStyle(QwtPlotCurve::Sticks);
        curve->setPen(QPen(PriceBased2dPlotCurve::CurKotirCurveColor));
    }
    m_entries.append({curve, samples});
    curve->attach(&plot);
}

CurveShelf::Entry* CurveShelf::at(int number)
{
    return m_entries.isEmpty() ? nullptr : &m_entries[number % m_entries.size()];
}

void CurveShelf::remove(int number)
{
    if (m_entries.isEmpty())
        return;
    const Entry entry = m_entries.takeAt(number % m_entries.size());
    delete entry.curve;
}

void CurveShelf::clear()
{
    while (!m_entries.isEmpty())
        remove(0);
}

void CurveShelf::leaveToPlot()
{
    for (const Entry& entry : qAsConst(m_entries)) {
        if (!entry.curve->plot())
            delete entry.curve;
    }
    m_entries.clear();
}

}
