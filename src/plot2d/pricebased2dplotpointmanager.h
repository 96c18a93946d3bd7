#pragma once

#include "plot2d/plot2dexport.h"
#include "plot2d/priceinterval.h"

#include <basic_models/filterparams.h>

#include <QList>
#include <QObject>
#include <QPointer>

class PriceBased2dPlot;
class StrikeByBaseCodeModel;

/// Decides at which prices the host evaluates the curves of a plot.
///
/// It owns a strike model, keeps the plot's price interval up to date with it, and computes the points on
/// request. It draws nothing. For a base-code model the base code is that of the plot's future, or the plot's
/// own by setPlot(); a max-session model gets its base code by setPlot() and its filter by initCore().
class PLOT2D_EXPORT PriceBased2dPlotPointManager : public QObject {
    Q_OBJECT

public:
    /// A manager of a plot, which becomes its parent. Without a plot, or with one without a securities table,
    /// there is no model, and nothing to compute. Strikes that are there already are announced at once by
    /// updatePriceInterval(), which nobody hears yet: ask interval(). Throws Exception("Incorrect type
    /// conversion.") where the plot's future does.
    PriceBased2dPlotPointManager(bool maxSessionModel, PriceBased2dPlot* plot);
    ~PriceBased2dPlotPointManager() override;

    /// Hands the filter to a max-session model, which resets itself and so updates the interval; does nothing
    /// for the other model.
    void initCore(const FilterParams& params);
    /// The filter of a max-session model; every field -1 for the other model.
    FilterParams filterParams() const;

    /// The price interval that the plot holds; the reset value without a plot.
    PriceInterval interval() const;

    /// Changes the plot (not owned, null for none), and the model's base code to that of the plot where the
    /// two differ. The interval follows with the model's reset. Parent and model stay.
    void setPlot(PriceBased2dPlot* plot);

    /// The strike model, null if there is none; owned by the manager.
    StrikeByBaseCodeModel* model() const;

    /// The prices from, from + step, ... up to `to`, ascending; empty unless 0 < from < to and 0 < step <= to
    /// - from, for more than 100,000 steps, and for a step that does not move the price.
    QList<double> minStepPoints(double from, double to, double step);

    /// The prices at which curves are to be evaluated, ascending, over the whole range of strikes: at the
    /// price step where a hundred steps or fewer are visible, otherwise at the smallest distance of strikes,
    /// with about a hundred points in the visible part. Empty without a visible range, a valid interval or a
    /// price step above zero, for strikes that do not ascend, and, unless forced, while no strike is visible.
    QList<double> calcPlotPoints(bool force);

Q_SIGNALS:
    /// The plot has another interval, which is stored in it already.
    void priceIntervalChanged(const PriceInterval& interval);

public Q_SLOTS:
    /// Computes the interval anew, and stores it in the plot and announces it if it has changed; called by
    /// the model's signals. Throws Exception("Incorrect type conversion.") for strikes whose ids are no
    /// integers: the interval stays then.
    void updatePriceInterval();

private:
    PriceInterval currentInterval() const;
    void startModel();

    QPointer<StrikeByBaseCodeModel> m_model;
    QPointer<PriceBased2dPlot> m_plot;
    const bool m_maxSessionModel;
};
