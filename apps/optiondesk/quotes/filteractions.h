#pragma once

#include <pricing/optionfilter.h>

#include <QObject>

class DeskWindow;
class QAction;
class QActionGroup;
class QMenu;
struct MenuEntry;

/// The commands that say which options of the chosen expiry a desk's window shows, as a menu of their own.
class FilterActions : public QObject {
    Q_OBJECT

public:
    /// The most deviations to choose.
    static constexpr int mostDeviations = 4;

    /// Puts the menu at the end of another one, which becomes the parent.
    FilterActions(DeskWindow* window, QMenu* menu);

    /// The menu's entries, also for other places: a box, and two groups to choose one of.
    QAction* outOfTheMoneyOnly() const { return m_outOfTheMoneyOnly; }
    QActionGroup* sides() const { return m_sides; }
    QActionGroup* deviations() const { return m_deviations; }

private Q_SLOTS:
    void onTriggered();
    void onFilterChanged();

private:
    void addSides(QMenu& menu);
    void addDeviations(QMenu& menu);
    QAction* add(QMenu& menu, const MenuEntry& entry, QActionGroup* group, int value);

    DeskWindow* m_window;
    QAction* m_outOfTheMoneyOnly = nullptr;
    QActionGroup* m_sides = nullptr;
    QActionGroup* m_deviations = nullptr;
};
