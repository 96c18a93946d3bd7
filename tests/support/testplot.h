#pragma once

#include <plot2d/pricebased2dplot.h>
#include <plot2d/pricebased2dplotcurve.h>
#include <plot2d/pricebased2dplotpicker.h>

#include <QEvent>
#include <QPen>
#include <QStringList>
#include <QVector>

#include <functional>
#include <optional>
#include <utility>

/// A plot that opens what a subclass may touch and keeps a record of its virtual calls.
class TestPlot : public PriceBased2dPlot {
public:
    explicit TestPlot(bool init = true, QWidget* parent = nullptr)
        : PriceBased2dPlot(init, parent)
    {
    }
    TestPlot(bool init, const QwtText& title, QWidget* parent = nullptr)
        : PriceBased2dPlot(init, title, parent)
    {
    }

    using PriceBased2dPlot::initPlot;
    using PriceBased2dPlot::m_hostContext;
    using PriceBased2dPlot::mouseMoveEvent;
    using PriceBased2dPlot::mousePressEvent;
    using PriceBased2dPlot::wheelEvent;

    void setPicker(PriceBased2dPlotPicker* picker) { m_picker = picker; }
    PriceBased2dPlotPicker* picker() const { return m_picker; }
    /// Makes a picker on the canvas and sets it.
    PriceBased2dPlotPicker* createPicker()
    {
        m_picker = new PriceBased2dPlotPicker(canvas());
        return m_picker;
    }

    void replot() override
    {
        // A copy, which outlives the plot.
        const std::function<bool()> replaces = replacesReplot;
        if (replaces && replaces())
            return;
        calls << QStringLiteral("replot");
        if (onReplot)
            onReplot();
        PriceBased2dPlot::replot();
    }

    void updateCurKotirPoints(double low, double high, double quote) override
    {
        calls << QStringLiteral("quote line %1 %2 %3").arg(low).arg(high).arg(quote);
        PriceBased2dPlot::updateCurKotirPoints(low, high, quote);
    }

    std::pair<double, double> minMaxYAtXRange() override
    {
        calls << QStringLiteral("range");
        return fixedRange ? *fixedRange : PriceBased2dPlot::minMaxYAtXRange();
    }

    void curveIconReset(const PriceBased2dPlotCurve* curve) override
    {
        calls << QStringLiteral("icon reset %1").arg(curve ? curve->title().text() : QString());
        if (onIconReset)
            onIconReset();
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::User)
            filtered << watched;
        return PriceBased2dPlot::eventFilter(watched, event);
    }

    /// The calls of replot(), updateCurKotirPoints(), minMaxYAtXRange() and curveIconReset() so far.
    QStringList calls;
    /// Called at the end of each curveIconReset(), and may delete the plot.
    std::function<void()> onIconReset;
    /// Called at the start of each replot().
    std::function<void()> onReplot;
    /// Called before it; true where it has deleted the plot.
    std::function<bool()> replacesReplot;
    /// What minMaxYAtXRange() answers instead of looking.
    std::optional<std::pair<double, double>> fixedRange;
    /// The objects whose QEvent::User came through the event filter.
    QVector<QObject*> filtered;
};

/// A new curve of a type with samples, a title and a line in the legend, attached to the plot, which owns it.
/// A quote line (type 0) gets the look that makes it valid.
inline PriceBased2dPlotCurve* addCurve(
    PriceBased2dPlot& plot, int type, const QVector<QPointF>& samples, const QString& title)
{
    auto* curve = new PriceBased2dPlotCurve(&plot, title);
    curve->setDataType(type);
    curve->setSamples(samples);
    curve->setLegendAttribute(QwtPlotCurve::LegendShowLine);
    if (type == PriceBased2dPlotCurve::quoteLineType) {
        curve->setStyle(QwtPlotCurve::Sticks);
        curve->setPen(QPen(Qt::red));
    }
    curve->attach(&plot);
    return curve;
}
