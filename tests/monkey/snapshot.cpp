#include "monkey/snapshot.h"

#include "monkey/monkeyhost.h"

#include <plot2d/pricebased2dplotscaledraw.h>

#include <QSet>

#include <qwt_legend_label.h>

namespace Monkey {

namespace {

Snapshot::Scale scaleOf(const Plot& plot, int axis)
{
    const QwtScaleDiv& division = plot.axisScaleDiv(axis);
    Snapshot::Scale scale;
    scale.lower = division.lowerBound();
    scale.upper = division.upperBound();
    for (int type = 0; type < QwtScaleDiv::NTickTypes; ++type)
        scale.ticks[static_cast<std::size_t>(type)] = division.ticks(type);
    scale.maxMajor = plot.axisMaxMajor(axis);
    scale.maxMinor = plot.axisMaxMinor(axis);
    scale.step = plot.axisStepSize(axis);
    return scale;
}

QVector<QPointF> samplesOf(const PriceBased2dPlotCurve& curve)
{
    QVector<QPointF> samples;
    for (std::size_t i = 0; i < curve.dataSize(); ++i)
        samples.append(curve.sample(static_cast<int>(i)));
    return samples;
}

QVector<Snapshot::QuoteLine> quoteLinesOf(const CurveShelf& curves)
{
    QVector<Snapshot::QuoteLine> lines;
    for (const CurveShelf::Entry& entry : curves.entries()) {
        if (entry.curve->dataType() == PriceBased2dPlotCurve::quoteLineType)
            lines.append({samplesOf(*entry.curve), entry.given});
    }
    return lines;
}

Snapshot::Labels labelsOf(Plot& plot)
{
    Snapshot::Labels labels;
    auto* draw = dynamic_cast<PriceBased2dPlotScaleDraw*>(
        const_cast<QwtScaleDraw*>(plot.axisScaleDraw(QwtPlot::xBottom)));
    if (!draw || !draw->isPaintedOnce())
        return labels;
    labels.left = draw->labelTicks();
    draw->updateLabels();
    labels.shown = draw->labelTicks();
    labels.candidates = draw->getTicks(draw->scaleDiv());
    labels.rectangles = draw->getBoundingRects(labels.shown);
    return labels;
}

Snapshot::Legend legendOf(const Host& host)
{
    Snapshot::Legend result;
    const PriceBased2dPlotLegend* legend = host.legend();
    if (!legend)
        return result;
    result.present = true;
    const QList<QWidget*> children = legend->findChildren<QWidget*>();
    const QSet<QWidget*> living(children.cbegin(), children.cend());
    const QList<PriceBased2dPlotCurve*> curves = host.plot().attachedCurves(-1);
    for (PriceBased2dPlotCurve* curve : curves) {
        result.curves.append(curve->title().text());
        QStringList texts;
        const QList<QWidget*> widgets = legend->legendWidgets(host.plot().itemToInfo(curve));
        for (QWidget* widget : widgets) {
            const bool isLiving = living.contains(widget);
            result.strangers += isLiving ? 0 : 1;
            const auto* label = isLiving ? widget->findChild<QwtLegendLabel*>() : nullptr;
            texts.append(label ? label->text().text() : QStringLiteral("(no label)"));
        }
        result.entries.append(texts);
    }
    return result;
}

int foreignItemsOf(const Plot& plot)
{
    int count = 0;
    const QwtPlotItemList items = plot.itemList();
    for (const QwtPlotItem* item : items)
        count += item->plot() == &plot ? 0 : 1;
    return count;
}

}

Snapshot snapshotOf(Host& host)
{
    Plot& plot = host.plot();
    Snapshot snapshot;
    snapshot.prices = scaleOf(plot, QwtPlot::xBottom);
    snapshot.values = scaleOf(plot, QwtPlot::yLeft);
    snapshot.quoteLines = quoteLinesOf(host.curves());
    snapshot.labels = labelsOf(plot);
    snapshot.legend = legendOf(host);
    snapshot.autoScale = plot.autoScaleEnabled();
    snapshot.expectedAutoScale = host.expectedAutoScale();
    snapshot.foreignItems = foreignItemsOf(plot);
    snapshot.valuesByQwt = plot.axisAutoScale(QwtPlot::yLeft);
    const std::pair<double, double> range = plot.minMaxYAtXRange();
    if (range.first <= range.second)
        snapshot.autoScaleRange = range;
    return snapshot;
}

}
