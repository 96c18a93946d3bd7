#pragma once

#include "styledbackground_p.h"

#include <qwt_plot_canvas.h>

#include <optional>

/// The canvas of a plot, made for being painted anew at each step of a zoom.
///
/// Qwt's canvas draws into a pixmap, freed and taken anew at each replot, and under a style sheet fills its
/// background three times over. This one draws what a replot has changed straight to the screen. Only when it
/// is to be painted again without a replot, as under a moving tracker, does it keep its picture, and then
/// where Qwt's canvas keeps it; a curve that has changed without a replot is then seen as it is, all of it.
class PlotCanvas : public QwtPlotCanvas {
    Q_OBJECT

public:
    explicit PlotCanvas(QwtPlot* plot);
    ~PlotCanvas() override;

public Q_SLOTS:
    /// Takes the place of the base's slot, which QwtPlot calls by name. The base's own, called by a host,
    /// costs a pixmap and is right as well.
    void replot();

protected:
    /// Leaves a canvas with a border, a frame of its own or a background of more than one colour to Qwt.
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

private:
    bool isForQwt() const;
    /// The one opaque colour of the background, if it has one.
    std::optional<QColor> backgroundColor();

    void drawContents(QPainter& painter, const QColor& background);
    bool isStored() const;
    void store(const QColor& background);

    StyledBackground m_styledBackground;
    bool m_isPainted = false;
};
