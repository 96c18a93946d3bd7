#pragma once

#include "support/testhost.h"
#include "support/testplot.h"

#include <plot2d/pricebased2dplotlegend.h>

#include <QCheckBox>
#include <QLayout>

#include <qwt_legend_label.h>
#include <qwt_symbol.h>

/// A legend that opens its placeholder icons.
class TestLegend : public PriceBased2dPlotLegend {
public:
    explicit TestLegend(QwtPlot* plot)
        : PriceBased2dPlotLegend(plot)
    {
    }
    using PriceBased2dPlotLegend::resetIcons;
};

/// A plot with a legend to its right.
struct LegendPlot {
    LegendPlot()
        : legend(new TestLegend(&plot))
    {
        legend->initCore();
        plot.insertLegend(legend, QwtPlot::RightLegend);
    }

    /// A valid curve with a symbol, so that it has a placeholder icon for some styles.
    PriceBased2dPlotCurve* add(
        const QString& title, int type = 9, QwtSymbol::Style style = QwtSymbol::DTriangle)
    {
        PriceBased2dPlotCurve* curve = addCurve(plot, type, {{1.0, 1.0}, {2.0, 2.0}}, title);
        curve->setSymbol(new QwtSymbol(style));
        return curve;
    }

    QWidget* entry(const PriceBased2dPlotCurve* curve) const
    {
        return legend->legendWidget(plot.itemToInfo(const_cast<PriceBased2dPlotCurve*>(curve)));
    }
    QCheckBox* checkBox(const PriceBased2dPlotCurve* curve) const
    {
        return entry(curve)->findChild<QCheckBox*>();
    }
    QwtLegendLabel* label(const PriceBased2dPlotCurve* curve) const
    {
        return entry(curve)->findChild<QwtLegendLabel*>();
    }
    QImage icon(const PriceBased2dPlotCurve* curve) const { return label(curve)->icon().toImage(); }
    QColor color(const PriceBased2dPlotCurve* curve) const { return label(curve)->text().color(); }

    TestPlot plot;
    QPointer<TestLegend> legend;
};
