#pragma once

#include <window/curvechoices.h>
#include <window/deskdata.h>
#include <window/desklegend.h>
#include <window/deskplot.h>

#include <database/settings.h>
#include <plot2d/pricebased2dplotcurve.h>

#include <QTemporaryDir>

class QCheckBox;
class QwtLegendLabel;

/// A desk's plot of which the test is the user who chooses curves and colours, over starts of the desk.
class ChoosingDesk {
public:
    enum class Keeping { InSettings, Nowhere };

    ChoosingDesk();

    /// As the desk starts, with the quoted series; what another run has kept is read from the file.
    void start(DeskView view, Keeping keeping = Keeping::InSettings);
    void show(DeskView view, int futureIsinId);
    /// The same in a window that has the focus; false if none comes up.
    bool showWindow(DeskView view, int futureIsinId);
    /// The quoted series as its table has it.
    ShownSeries quotedSeries() { return data.show(quoted, SeriesFacts()); }

    /// Null if there is none of this title.
    PriceBased2dPlotCurve* curve(const QString& title) const;
    /// The titles of curves that are not shown, in the plot's order; a remark where a box says otherwise.
    QStringList hidden() const;
    /// The parts of a curve's entry; the process ends where there is none.
    LabelWidget* entry(const QString& title) const;
    QwtLegendLabel* label(const QString& title) const;
    QCheckBox* box(const QString& title) const;
    QString settingsFile() const { return folder.filePath(QStringLiteral("s.ini")); }

    QTemporaryDir folder;
    DeskData data;
    /// Futures: of a series with bids, asks and stated volatilities, and of one without.
    int quoted = 0;
    int plain = 0;
    std::unique_ptr<Settings> settings;
    std::unique_ptr<DeskPlot> plot;
    DeskLegend* legend = nullptr;
};
