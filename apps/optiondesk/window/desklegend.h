#pragma once

#include <plot2d/pricebased2dplotlegend.h>

class PriceBased2dPlot;
class PriceBased2dPlotCurve;

/// The desk's legend. Its entries stand in as many columns as fit; where they need more than two rows and a
/// fifth of the plot's height, it scrolls. Their icons are sharp on any screen, grey
/// where an entry is unchecked, and each has a menu.
class DeskLegend : public PriceBased2dPlotLegend {
    Q_OBJECT

public:
    explicit DeskLegend(PriceBased2dPlot* plot);

    /// Lets the entries stand side by side in a width in pixels.
    void arrange(int width);

    /// Checks the entry of a curve and unchecks all others.
    void showOnly(const QString& title);
    void showAll();

    /// None: an entry's box decides how its icon is painted.
    void createResetIcons() override { }

    /// Paints the labels of the entries.
    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    /// The user asks for another colour of the curve of this title.
    void colorRequested(const QString& title);

protected:
    void contextMenuEvent(QContextMenuEvent* event) override;
    void updateWidget(QWidget* widget, const QwtLegendData& legendData) override;

private Q_SLOTS:
    void openMenuOfFocus();

private:
    QList<LabelWidget*> entries() const;
    QStringList titles() const;
    void limitHeight(const QList<LabelWidget*>& all);
    const PriceBased2dPlotCurve* curveOf(const QWidget* part) const;
    bool paintLabel(QwtLegendLabel& label) const;
    void openMenu(const PriceBased2dPlotCurve& curve, const QPoint& globalPosition);

    PriceBased2dPlot* m_plot;
};
