#pragma once

#include <QObject>
#include <QPointer>
#include <QString>

class PriceBased2dPlot;
class PriceBased2dPlotCurve;
class PriceBased2dPlotPicker;
class ReadOutItem;

/// Reads points of the curves out by the arrow keys, while the canvas or the plot has the keyboard.
///
/// The first arrow picks the point nearest to the cursor's last place, or the one nearest to the quote where
/// the cursor has not been over the visible part. Left and Right go to the next visible point at another
/// price step, Up and Down to the next visible curve at the nearest strike, Escape and the mouse end it.
class CurveWalk : public QObject {
    Q_OBJECT

public:
    /// The picker of a plot; it becomes the parent.
    CurveWalk(PriceBased2dPlot* plot, PriceBased2dPlotPicker* picker);

    bool isActive() const { return !m_curveTitle.isEmpty(); }

    /// Follows the curves after their samples or visibility have changed. Does not replot.
    void refresh();

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool press(int key);
    void begin();
    void step(int direction);
    void changeCurve(int direction);
    void show(const PriceBased2dPlotCurve& curve, int index);
    void end();

    QList<PriceBased2dPlotCurve*> curves() const;
    PriceBased2dPlotCurve* current() const;
    int nearestSample(const PriceBased2dPlotCurve& curve, double price) const;

    QPointer<PriceBased2dPlot> m_plot;
    QPointer<PriceBased2dPlotPicker> m_picker;
    /// The plot's, once attached.
    ReadOutItem* m_item;
    QString m_curveTitle;
    double m_strike = 0.0;
};
