#pragma once

#include "window/commandline.h"
#include "window/shownseries.h"

#include <memory>

class PriceBased2dPlot;
class QwtPlotMarker;
class QwtPlotTextLabel;

/// What the plot shows beside the curves of a position: the line of no profit, the prices at the break-even
/// markers, and, where there is no position, what to do.
class PositionMarks {
public:
    /// The plot must outlive this object.
    explicit PositionMarks(PriceBased2dPlot& plot);
    ~PositionMarks();

    /// Shows what belongs to a view of a series whose curves are on the plot, and hides all else.
    void show(const ShownSeries& series, DeskView view);
    void hide();

    /// Keeps the prices at the markers inside the canvas; with every change of the scale.
    void placeLabels();

private:
    void labelMarkers(const ShownSeries& series);
    void showHint(const QString& text);

    PriceBased2dPlot& m_plot;
    /// Where the price stands at each marker if there is room.
    QVector<Qt::Alignment> m_places;
    /// Attached to the plot while they are shown.
    std::unique_ptr<QwtPlotMarker> m_zeroLine;
    std::unique_ptr<QwtPlotTextLabel> m_hint;
};
