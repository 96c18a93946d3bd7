#pragma once

#include <QObject>
#include <QPointer>

class PriceBased2dPlot;
class PriceBased2dPlotPicker;

/// Tells the picker, as the cursor moves over the canvas, which curve's point is nearest and what its tracker
/// shows (see ReadOut).
class CurveTracker : public QObject {
    Q_OBJECT

public:
    /// The picker of a plot; it becomes the parent.
    CurveTracker(PriceBased2dPlot* plot, PriceBased2dPlotPicker* picker);

    /// Reads out anew at a cursor that stands still over the canvas, after curves, quote or scales have
    /// changed. Does not replot. Nothing while the cursor is elsewhere or the picker is off, as in a drag.
    void refresh();

    bool eventFilter(QObject* watched, QEvent* event) override;

private Q_SLOTS:
    void comeFirst();

private:
    void track(const QPointF& canvasPosition);

    QPointer<PriceBased2dPlot> m_plot;
    QPointer<PriceBased2dPlotPicker> m_picker;
};
