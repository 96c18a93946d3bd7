#pragma once

#include "window/commandline.h"
#include "window/curveset.h"
#include "window/positionmarks.h"
#include "window/priceaxis.h"
#include "window/seriescurves.h"
#include "window/shownseries.h"

#include <plot2d/pricebased2dplot.h>

#include <QTimer>

#include <qwt_interval.h>

#include <optional>

class CurveChoices;
class CurveTracker;
class CurveWalk;
class DeskLegend;
class PriceBased2dPlotPointManager;

/// The plot of one series: its curves over the strikes, with a grid, a legend, and the line at the forward.
///
/// The price interval follows the strikes in the host's table, and the smooth curves are evaluated anew
/// wherever the user zooms and pans, so that they have about a hundred samples in the visible part.
class DeskPlot : public PriceBased2dPlot {
    Q_OBJECT

public:
    /// The host's tables must exist (see ChainTables).
    explicit DeskPlot(QWidget* parent = nullptr);

    /// Replaces all curves. The future of this ISIN id on the chains' board is the plot's instrument; its
    /// quote must be the series' forward.
    void showSeries(int futureIsinId, const ShownSeries& series, DeskView view);

    /// Shows the same series with other numbers: curves that stay keep their objects, and the user keeps the
    /// view, the auto-scale and the choice of curves. Nothing without a series.
    void updateSeries(const ShownSeries& series);

    /// What the labels of the price axis show from now on: prices, or prices relative to the forward.
    void setAxisMode(AxisMode mode);

    /// After curves of other series have come, gone or changed: gives their entries in the legend the user's
    /// choices and their places, fits the vertical scale with auto-scale on, and replots.
    void followOverlays();

    /// Takes all curves away and says why instead of a title.
    void showNothing(const QString& reason);

    /// Shows the prices that showSeries() begins with, with auto-scale on.
    void resetView();

    /// What the prices of the curves are: strikes, or prices of the future.
    QString priceTitle() const;

    /// What the user chooses about the curves.
    CurveChoices& choices() const { return *m_choices; }

    /// The values of the curves with some room above and below, so that no point is cut.
    std::pair<double, double> minMaxYAtXRange() override;

    /// Sees to it that converted labels are round before it paints.
    void replot() override;

    /// The desk shows icons of curves in the legend alone.
    void curveIconReset(const PriceBased2dPlotCurve* curve) override;

    CurveWalk* walk() const { return m_walk; }
    CurveTracker* tracker() const { return m_tracker; }

Q_SIGNALS:
    /// Another series, another view of it, or nothing is shown: what was visible before has no meaning now.
    void seriesReplaced();

protected:
    void resizeEvent(QResizeEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;

private Q_SLOTS:
    void followScales();
    void onPriceIntervalChanged(const PriceInterval& interval);

private:
    void setUpItems();
    void setUpFonts();
    void setUpObservers();
    void removeCurves();
    void setInstrument(int futureIsinId, const QString& code);
    void fillInterval();
    QVector<double> strikesToEvaluate();
    void refineCurves();
    void showFirstPrices();
    void setUpAxes(const ShownSeries& series, DeskView view);
    void setCurves(const ShownSeries& series);
    void showForward(const ShownSeries& series);
    void moveForward(const ShownSeries& series);
    void setPlotTitle(const QString& text);

    DeskLegend* m_legend;
    PriceBased2dPlotPointManager* m_points;
    CurveTracker* m_tracker = nullptr;
    CurveWalk* m_walk = nullptr;
    CurveChoices* m_choices = nullptr;
    SeriesCurves m_curves;
    std::optional<ShownSeries> m_series;
    DeskView m_view = DeskView::Volatility;
    /// Whether the strikes in the table give no interval, as a single one.
    bool m_ownInterval = false;
    /// The visible prices that the smooth curves have their samples for; invalid when they need new ones.
    QwtInterval m_sampledPrices;
    QTimer m_refineTimer;
    PriceAxis m_axis;
    PositionMarks m_marks;
    PriceRange m_firstPrices;
};
