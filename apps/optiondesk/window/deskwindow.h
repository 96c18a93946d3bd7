#pragma once

#include "window/commandline.h"
#include "window/deskdata.h"
#include "window/shownseries.h"

#include <QMainWindow>

#include <optional>

class DeskPlot;
class ElidedLabel;
class QAction;
class QActionGroup;
class QMenu;
class SeriesFollower;
class SeriesSelector;
class ViewActions;

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

    /// What the labels of the price axis show.
    void setAxisMode(AxisMode mode);

    /// Imports a chain's file and shows its nearest series. Throws Exception, with all as it was, where that
    /// fails.
    void importChain(const QString& fileName);

    DeskPlot* plot() const { return m_plot; }
    const std::optional<ShownSeries>& shownSeries() const { return m_shown; }

private Q_SLOTS:
    void onSeriesChosen(int futureIsinId);
    void onSeriesChanged();
    void onStoredSeriesChanged();
    void onViewChosen(QAction* action);
    void onAxisModeChosen(QAction* action);
    void onGridToggled(bool shown);
    void onImport();
    void onSavePicture();

private:
    void createFileMenu();
    void createViewMenu();
    void addAxisModeActions(QMenu& menu);
    void addGridAction(QMenu& menu);
    void createToolBar();
    QAction* addAction(QMenu& menu, const QString& text, const QString& shortcut, const QString& tip);
    void draw();
    void tellOfSeries();
    void showReason(const QString& reason);
    void complain(const QString& title, const QString& text);

    DeskData& m_data;
    DeskView m_view;
    int m_futureIsinId = 0;
    SeriesFacts m_given;
    std::optional<ShownSeries> m_shown;

    DeskPlot* m_plot;
    SeriesSelector* m_selector;
    SeriesFollower* m_follower;
    ElidedLabel* m_status;
    QActionGroup* m_axisModes = nullptr;
    QAction* m_volatilityAction = nullptr;
    QAction* m_valueAction = nullptr;
    ViewActions* m_viewActions = nullptr;
};
