#include "plot2d/pricebased2dplotscaledraw.h"

#include <qwt_text.h>

PriceBased2dPlotScaleDraw::PriceBased2dPlotScaleDraw(int axis)
    : m_axis(axis)
{
}

PriceBased2dPlotScaleDraw::~PriceBased2dPlotScaleDraw() = default;

QwtText PriceBased2dPlotScaleDraw::label(double value) const
{
    const QwtScaleDiv& division = scaleDiv();
    if (division.isEmpty() || !division.interval().isValid())
        return QwtText();
    return QwtText(convertedValue(value), QwtText::AutoText);
}

void PriceBased2dPlotScaleDraw::updateLabels() { }

void PriceBased2dPlotScaleDraw::setCurKotirEnabled(bool enabled)
{
    m_quoteEnabled = enabled;
}
