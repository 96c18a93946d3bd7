#include "window/seriescurves.h"

#include "window/bandcurve.h"
#include "window/curvelook.h"
#include "window/overlaycurve.h"

#include <plot2d/pricebased2dplot.h>
#include <plot2d/pricebased2dplotcurve.h>

#include <QPen>

#include <qwt_plot_marker.h>
#include <qwt_symbol.h>

#include <algorithm>

SeriesCurves::SeriesCurves(PriceBased2dPlot& plot)
    : m_plot(plot)
{
}

// The types of two views overlap, the titles do not.
PriceBased2dPlotCurve* SeriesCurves::find(CurveRole role) const
{
    return find(CurveLook::dataType(role), CurveLook::title(role));
}

PriceBased2dPlotCurve* SeriesCurves::find(int dataType, const QString& title) const
{
    const QList<PriceBased2dPlotCurve*> curves = m_plot.attachedCurves(dataType);
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
    const QString title = CurveLook::title(samples.role);
    auto* const curve = samples.role == CurveRole::BidAskBand ? new BandCurve(&m_plot, title)
                                                              : new PriceBased2dPlotCurve(&m_plot, title);
    CurveLook::apply(samples, *curve);
    const QColor chosen = m_colors.value(curve->title().text());
    if (chosen.isValid() && CurveLook::hasFreeColor(*curve))
        CurveLook::setColor(*curve, chosen);
    fill(*curve, samples);
    curve->attach(&m_plot);
}

void SeriesCurves::setColor(const QString& title, const QColor& color)
{
    m_colors[title] = color;
    PriceBased2dPlotCurve* const curve = find(-1, title);
    if (!curve || !CurveLook::hasFreeColor(*curve))
        return;
    CurveLook::setColor(*curve, color);
    if (curve->dataType() == PriceBased2dPlotCurve::markedType)
        colorMarkers(color);
}

QColor SeriesCurves::color(CurveRole role) const
{
    return m_colors.value(CurveLook::title(role), CurveLook::color(role));
}

QColor SeriesCurves::color(const QString& title) const
{
    const PriceBased2dPlotCurve* const curve = find(-1, title);
    return curve ? curve->pen().color() : QColor();
}

void SeriesCurves::colorMarkers(const QColor& color)
{
    const QList<QwtPlotMarker*> markers = m_plot.attachedMarkers();
    for (QwtPlotMarker* const marker : markers) {
        const QwtSymbol& old = *marker->symbol();
        QPen pen = old.pen();
        pen.setColor(color);
        marker->setSymbol(new QwtSymbol(old.style(), QBrush(color), pen, old.size()));
    }
}

bool SeriesCurves::removeOthers(const QVector<CurveSamples>& curves)
{
    bool removed = false;
    const QList<PriceBased2dPlotCurve*> attached = m_plot.attachedCurves(-1);
    for (PriceBased2dPlotCurve* const curve : attached) {
        const bool stays = std::any_of(curves.begin(), curves.end(), [curve](const CurveSamples& samples) {
            return CurveLook::title(samples.role) == curve->title().text();
        });
        if (stays || curve->dataType() == OverlayCurve::overlayType)
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
