#pragma once

#include "plot2d/plot2dexport.h"

#include <QPointer>

#include <qwt_plot_panner.h>

class PriceBased2dPlot;
class QwtPlotCanvas;

/// Lets the user drag the canvas of a plot, and holds the plot's auto-scale flag.
class PLOT2D_EXPORT PriceBased2dPlotPanner : public QwtPlotPanner {
    Q_OBJECT

public:
    /// A panner of the plot whose canvas this is.
    explicit PriceBased2dPlotPanner(QwtPlotCanvas* canvas);
    ~PriceBased2dPlotPanner() override;

    /// Whether the vertical axis follows the curves; on after construction. Emits nothing.
    void setAutoScaleEnabled(bool enabled);
    bool autoScaleEnabled() const;

Q_SIGNALS:
    /// The scales have moved.
    void updateLabels();
    /// Panning asks for the auto-scale to be switched (off).
    void autoScaleEnabled(bool enable);

private:
    QPointer<PriceBased2dPlot> m_plot;
    bool m_autoScale = true;
};
