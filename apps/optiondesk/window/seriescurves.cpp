#include "window/seriescurves.h"

#include "window/curvelook.h"

#include <plot2d/pricebased2dplot.h>
#include <plot2d/pricebased2dplotcurve.h>

#include <algorithm>

SeriesCurves::SeriesCurves(PriceBased2dPlot& plot)
    : m_plot(plot)
{
}

// The types of two views overlap, the titles do not.
PriceBased2dPlotCurve* SeriesCurves::find(CurveRole role) const
{
    const QList<PriceBased2dPlotCurve*> curves = m_plot.attachedCurves(CurveLook::dataType(role));
    const QString title = CurveLook::title(role);
    const auto found = std::find_if(curves.begin(), curves.end(),
        [&title](const PriceBased2dPlotCurve* curve) { return curve->title().text() == title; });
    return found == curves.end() ? nullptr : *found;
}

void SeriesCurves::fill(PriceBased2dPlotCurve& curve, const CurveSamples& samples)
{
    if (samples.points.isEmpty()) {
        curve.setSamples(samples.samples);
        return;
    }
    CurveLook::updateMarks(samples, curve);
    curve.setMarkerSamples(samples.points);
}

void SeriesCurves::attach(const CurveSamples& samples)
{
    auto* const curve = new PriceBased2dPlotCurve(&m_plot, CurveLook::title(samples.role));
    CurveLook::apply(samples, *curve);
    fill(*curve, samples);
    curve->attach(&m_plot);
}

bool SeriesCurves::removeOthers(const QVector<CurveSamples>& curves)
{
    bool removed = false;
    const QList<PriceBased2dPlotCurve*> attached = m_plot.attachedCurves(-1);
    for (PriceBased2dPlotCurve* const curve : attached) {
        const bool stays = std::any_of(curves.begin(), curves.end(), [curve](const CurveSamples& samples) {
            return CurveLook::title(samples.role) == curve->title().text();
        });
        if (stays)
            continue;
        // The markers are the plot's.
        if (curve->dataType() == PriceBased2dPlotCurve::markedType)
            curve->setMarkerSamples({});
        delete curve;
        removed = true;
    }
    return removed;
}

bool SeriesCurves::set(const QVector<CurveSamples>& curves)
{
    bool changed = removeOthers(curves);
    for (const CurveSamples& samples : curves) {
        if (PriceBased2dPlotCurve* const curve = find(samples.role)) {
            // The plot itself moves the line at the forward.
            if (samples.role != CurveRole::Forward)
                fill(*curve, samples);
            continue;
        }
        attach(samples);
        changed = true;
    }
    return changed;
}

void SeriesCurves::resample(const QVector<CurveSamples>& curves)
{
    for (const CurveSamples& samples : curves) {
        if (PriceBased2dPlotCurve* const curve = find(samples.role))
            fill(*curve, samples);
    }
}

void SeriesCurves::clear()
{
    removeOthers({});
}
