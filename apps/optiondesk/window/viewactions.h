#pragma once

#include <QObject>
#include <QPointer>

class DeskPlot;
class QAction;
class QMenu;
class ViewControl;
struct MenuEntry;

/// The commands for the view of the desk's plot, as entries of a menu with their keys.
///
/// The keys count while the plot or its legend has the keyboard; the arrows and those of the walk along the
/// points only while the plot itself has it, so that elsewhere they still do what they do there.
class ViewActions : public QObject {
    Q_OBJECT

public:
    /// Puts the entries at the end of a menu, which becomes the parent.
    ViewActions(DeskPlot* plot, QMenu* menu);

    /// Shows and switches the plot's auto-scale; with an icon, for a tool bar.
    QAction* autoScaleAction() const { return m_autoScale; }

private Q_SLOTS:
    void onHistoryChanged();
    void onWalkChanged(bool active);
    void onWalk();

private:
    void addFits(QMenu& menu);
    void addZooms(QMenu& menu);
    void addPans(QMenu& menu);
    void addWalk(QMenu& menu);
    QAction* addForPlot(QMenu& menu, const MenuEntry& entry, const char* slot);
    QAction* addForCanvas(QMenu& menu, const MenuEntry& entry);

    QPointer<DeskPlot> m_plot;
    /// The plot's.
    QPointer<ViewControl> m_control;
    QAction* m_autoScale = nullptr;
    QAction* m_undo = nullptr;
    QAction* m_redo = nullptr;
    QAction* m_walk = nullptr;
    QAction* m_leave = nullptr;
};
