#pragma once

#include "monkey/curveshelf.h"
#include "monkey/signalwatch.h"
#include "monkey/steps.h"

#include <database/record.h>
#include <plot2d/pricebased2dplot.h>
#include <plot2d/pricebased2dplotlegend.h>
#include <plot2d/pricebased2dplotpanner.h>
#include <plot2d/pricebased2dplotpicker.h>
#include <plot2d/pricebased2dplotpointmanager.h>

#include <QObject>
#include <QPointer>
#include <QVector>

#include <memory>
#include <optional>

namespace Monkey {

/// A host's plot: it chooses its labels anew when its size has changed.
class Plot : public PriceBased2dPlot {
public:
    Plot();
    void setPicker(PriceBased2dPlotPicker* picker) { m_picker = picker; }
    void curveIconReset(const PriceBased2dPlotCurve* curve) override;

protected:
    void resizeEvent(QResizeEvent* event) override;
};

/// A plot as a host sets it up, with all that belongs to it: a future and options in the table of securities,
/// picker, panner, legend, point manager, and the connections between them. The tables are in place as long
/// as the host is. Timers fire on request only.
class Host : public QObject {
    Q_OBJECT

public:
    Host();
    ~Host() override;

    Plot& plot() { return *m_plot; }
    const Plot& plot() const { return *m_plot; }
    CurveShelf& curves() { return m_curves; }
    const CurveShelf& curves() const { return m_curves; }
    /// Null while there is none.
    PriceBased2dPlotPicker* picker() const { return m_picker; }
    PriceBased2dPlotPanner* panner() const { return m_panner; }
    PriceBased2dPlotLegend* legend() const { return m_legend; }
    PriceBased2dPlotPointManager* points() const { return m_points; }

    SignalWatch& heard() { return m_heard; }

    void createPicker();
    void createLegend(int position);
    void createPoints();

    /// Curves as a host has them: values, a curve with marked points, and the line at the quote.
    void addOrdinaryCurves();

    /// Decimals as texts, an empty one for no value.
    void setMarket(const QString& quote, const QString& priceStep);
    void addStrike(const QString& strike);
    /// By number, which starts again beyond the last.
    void removeStrike(int row);
    void changeStrike(int row, const QString& strike);

    void setAutoScale(bool on);
    /// What the plot's flag must be, by what the host has set and was asked for.
    bool expectedAutoScale() const { return m_panner && m_autoScale; }

    /// Once, in the host's slot of the next signal of this kind.
    void listen(const Listen& listener) { m_listener = listener; }
    /// How often that has happened so far.
    int interventions() const { return m_interventions; }

private Q_SLOTS:
    void onUpdateAxisLabels();
    void onAutoScale(bool on);
    void onVisibility();

private:
    void createTable();
    void intervene(Listen::Signal signal);
    void perform(Listen::Action action);

    SignalWatch m_heard;
    std::unique_ptr<Plot> m_plot;
    CurveShelf m_curves;
    QPointer<PriceBased2dPlotPicker> m_picker;
    QPointer<PriceBased2dPlotPanner> m_panner;
    QPointer<PriceBased2dPlotLegend> m_legend;
    QPointer<PriceBased2dPlotPointManager> m_points;
    Record m_future;
    QVector<Record> m_options;
    int m_lastId = 1000;
    bool m_autoScale = true;
    std::optional<Listen> m_listener;
    int m_interventions = 0;
};

}
