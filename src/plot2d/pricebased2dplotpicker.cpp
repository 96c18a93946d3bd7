#include "plot2d/pricebased2dplotpicker.h"

PriceBased2dPlotPicker::PriceBased2dPlotPicker(QWidget* canvas)
    : QwtPlotPicker(canvas)
{
}

PriceBased2dPlotPicker::~PriceBased2dPlotPicker() = default;
