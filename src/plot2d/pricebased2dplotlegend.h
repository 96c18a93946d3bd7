#pragma once

#include "plot2d/plot2dexport.h"

#include <QPointer>

#include <qwt_legend.h>

class QwtPlot;

/// The legend of a plot. Its entries are known by their texts, the titles of the curves that they show.
class PLOT2D_EXPORT PriceBased2dPlotLegend : public QwtLegend {
    Q_OBJECT

public:
    /// A legend of a plot, which becomes its parent.
    explicit PriceBased2dPlotLegend(QwtPlot* plot);
    ~PriceBased2dPlotLegend() override;

Q_SIGNALS:
    /// The user has checked or unchecked the entry of this text.
    void visibilityChanged(const QString& labelText, bool visible);

private:
    QPointer<QwtPlot> m_plot;
};
