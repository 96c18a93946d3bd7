#pragma once

#include "window/commandline.h"
#include "window/deskdata.h"
#include "window/shownseries.h"

#include <QMainWindow>

#include <optional>

class DeskPlot;
class ElidedLabel;
class ExportActions;
class ImportActions;
class PositionDesk;
class QAction;
class QActionGroup;
class QMenu;
class SeriesFollower;
class SeriesSelector;
class ViewActions;
class WorkBar;

/// The option desk's window: the plot of one series, the choice of the series, and the numbers behind it.
///
/// It follows the series in the host's table: quotes and strikes that change there are on the plot soon
/// after.
class DeskWindow : public QMainWindow {
    Q_OBJECT

public:
    /// The data must outlive the window.
    explicit DeskWindow(DeskData& deskData, DeskView view, QWidget* parent = nullptr);

    /// Shows a stored series. What the user states holds for this series, the date of the prices also for
    /// those that are chosen in the window later. Throws Exception where it cannot be shown.
    void showSeries(int futureIsinId, const SeriesFacts& given);

    /// The future of the series that is chosen, also where it cannot be shown, and what the user states of
    /// it; 0 before the first one.
    int futureIsinId() const { return m_futureIsinId; }
    const SeriesFacts& given() const { return m_given; }

    void setView(DeskView view);
    DeskView view() const { return m_view; }

    /// What the labels of the price axis show.
    void setAxisMode(AxisMode mode);
    AxisMode axisMode() const;

    void setGridVisible(bool visible);
    bool isGridVisible() const;

    /// Where the last chain was imported from by its user; empty before that. A folder that is not there is
    /// ignored.
    void setImportFolder(const QString& folder);
    QString importFolder() const;

    /// Which options of the chosen series are shown. The smile stays as it is.
    void setFilter(const Pricing::OptionFilter& filter);
    const Pricing::OptionFilter& filter() const { return m_filter; }

    /// How smiles are fitted, now and from now on.
    void setSmileModel(Pricing::SmileModel model);
    Pricing::SmileModel smileModel() const;

    /// Imports a chain's file at once, for whoever has no user to wait for, and shows its nearest series.
    /// Throws Exception, with all as it was, where that fails.
    void importChain(const QString& fileName);

    DeskPlot* plot() const { return m_plot; }
    DeskData& data() const { return m_data; }
    PositionDesk* position() const { return m_position; }
    ExportActions* exports() const { return m_exports; }
    ImportActions* imports() const { return m_imports; }
    /// In the status bar; other parts of the desk add their long work.
    WorkBar* workBar() const { return m_workBar; }
    /// Empty where the chosen series cannot be shown.
    const std::optional<ShownSeries>& shownSeries() const { return m_shown; }
    /// Other parts of the desk put their entries at its end.
    QMenu& viewMenu() const { return *m_viewMenu; }

public Q_SLOTS:
    /// Shows a text in the status bar for some time, over what it says of the series; nothing for an empty
    /// one. Not before the window is shown.
    void say(const QString& text);
    /// Shows a stored series, or says in the window why that cannot be.
    void chooseSeries(int futureIsinId);

Q_SIGNALS:
    /// shownSeries() is another series, has other numbers or another filter, or is empty now.
    void shownChanged();
    void filterChanged();

private Q_SLOTS:
    void onSeriesChanged();
    void onStoredSeriesChanged();
    void onPositionChanged();
    void onViewChosen(QAction* action);
    void onAxisModeChosen(QAction* action);
    void onGridToggled(bool shown);
    void onSmileModelChosen(QAction* action);
    void complain(const QString& title, const QString& text);

private:
    void storeRows(ChainRows& rows, int position);
    void createFileMenu();
    void createViewMenu();
    void createPositionMenu();
    void addViews(QMenu& menu);
    void addAxisModeActions(QMenu& menu);
    void addGridAction(QMenu& menu);
    void addSmileModels(QMenu& menu);
    void createToolBar();
    QAction* addAction(QMenu& menu, const QString& text, const QString& shortcut, const QString& tip);
    void draw();
    void tellOfSeries();
    void showReason(const QString& reason);

    DeskData& m_data;
    DeskView m_view;
    int m_futureIsinId = 0;
    SeriesFacts m_given;
    Pricing::OptionFilter m_filter;
    std::optional<ShownSeries> m_shown;

    DeskPlot* m_plot;
    PositionDesk* m_position;
    SeriesSelector* m_selector;
    SeriesFollower* m_follower;
    ElidedLabel* m_status;
    WorkBar* m_workBar;
    QMenu* m_viewMenu = nullptr;
    QActionGroup* m_axisModes = nullptr;
    QAction* m_grid = nullptr;
    QActionGroup* m_smileModels = nullptr;
    QAction* m_volatilityAction = nullptr;
    QAction* m_valueAction = nullptr;
    QAction* m_positionAction = nullptr;
    ViewActions* m_viewActions = nullptr;
    ExportActions* m_exports = nullptr;
    ImportActions* m_imports = nullptr;
};
