#pragma once

#include <QObject>
#include <QPointer>

#include <optional>

class PriceBased2dPlot;
class HoverPicker;

/// Tells the picker, as the cursor moves over the canvas, which curve's point is nearest and what its tracker
/// shows (see ReadOut), and where that point is.
class CurveTracker : public QObject {
    Q_OBJECT

public:
    /// The picker of a plot; it becomes the parent.
    CurveTracker(PriceBased2dPlot* plot, HoverPicker* picker);

    /// Reads out anew at a cursor that stands still over the canvas, after curves, quote or scales have
    /// changed. Does not replot. Nothing while the cursor is elsewhere or the picker is off, as in a drag.
    void refresh();

    /// The price of the point that is read out, if it is one of the chosen series; those of others
    /// (OverlayCurve) have other strikes.
    std::optional<double> price() const { return m_price; }

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    /// The cursor has moved, and price() is that of the point nearest to it now.
    void moved();
    /// The same at a cursor that stands still (see refresh()).
    void refreshed();

private Q_SLOTS:
    void comeFirst();

private:
    void track(const QPointF& canvasPosition);

    QPointer<PriceBased2dPlot> m_plot;
    QPointer<HoverPicker> m_picker;
    std::optional<double> m_price;
};
