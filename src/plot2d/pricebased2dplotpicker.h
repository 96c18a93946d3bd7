#pragma once

#include "plot2d/pricebased2dplotconverter.h"

#include <qwt_plot_picker.h>

/// Follows the cursor over the canvas of a plot and shows the tracker's text beside it.
class PLOT2D_EXPORT PriceBased2dPlotPicker : public QwtPlotPicker, public virtual PriceBased2dPlotConverter {
    Q_OBJECT

public:
    /// A picker of the plot whose canvas this is.
    explicit PriceBased2dPlotPicker(QWidget* canvas);
    ~PriceBased2dPlotPicker() override;

    /// The instrument's price step, -1.0 while unknown.
    double priceStep() const { return m_priceStep; }

private:
    double m_priceStep = -1.0;
};
