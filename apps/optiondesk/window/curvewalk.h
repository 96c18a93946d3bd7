#pragma once

#include <QObject>
#include <QPointer>
#include <QString>

class PriceBased2dPlot;
class PriceBased2dPlotCurve;
class PriceBased2dPlotPicker;
class QKeyEvent;
class ReadOutItem;

/// Reads points of the curves out by keys, while the canvas or the plot has the keyboard.
///
/// Enter or F2 picks the point nearest to the cursor's last place, or the one nearest to the quote where the
/// cursor has not been over the visible part. While that is marked the arrows are the walk's: Left and Right
/// go to the next point at another visible price step, Up and Down to the next visible curve at the nearest
/// strike. Escape and the mouse end it. Without a mark, also where the point is out of sight, the arrows are
/// left to others.
class CurveWalk : public QObject {
    Q_OBJECT

public:
    /// The picker of a plot; it becomes the parent.
    CurveWalk(PriceBased2dPlot* plot, PriceBased2dPlotPicker* picker);

    bool isActive() const { return !m_curveTitle.isEmpty(); }

    /// Picks the first point; nothing where one is marked already or none is visible.
    void begin();

    /// Follows the curves after their samples or visibility have changed. Does not replot.
    void refresh();

    bool eventFilter(QObject* watched, QEvent* event) override;

public Q_SLOTS:
    void end();

Q_SIGNALS:
    void activeChanged(bool active);

private:
    bool isOurs(const QKeyEvent& event) const;
    void press(int key);
    void step(int direction);
    void changeCurve(int direction);
    void show(const PriceBased2dPlotCurve& curve, int index);
    void forgetPoint();

    QList<PriceBased2dPlotCurve*> curves() const;
    PriceBased2dPlotCurve* current() const;
    bool isPointShown() const;
    int nearestSample(const PriceBased2dPlotCurve& curve, double price) const;
    int nearestVisibleSample(const PriceBased2dPlotCurve& curve, double price) const;

    QPointer<PriceBased2dPlot> m_plot;
    QPointer<PriceBased2dPlotPicker> m_picker;
    /// The plot's, once attached.
    ReadOutItem* m_item;
    QString m_curveTitle;
    double m_strike = 0.0;
};
