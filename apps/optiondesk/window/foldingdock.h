#pragma once

#include <QDockWidget>

class QMainWindow;
class QMenu;
struct MenuEntry;

/// A part at the side of a window that the user shows and hides, and that goes by itself while the window is
/// too narrow for it beside the plot.
class FoldingDock : public QDockWidget {
    Q_OBJECT

public:
    /// The name is that of the object, by which a window stores the places of its docks. Folds while the
    /// window is narrower than this, in pixels.
    FoldingDock(const QString& title, const QString& name, int narrowest, QMainWindow* window);

    /// Puts an entry that shows and hides the dock at the end of a menu. Shown by it, the dock stays in a
    /// narrow window as well, and takes the keyboard.
    void addTo(QMenu& menu, const MenuEntry& entry);

    bool eventFilter(QObject* watched, QEvent* event) override;

private Q_SLOTS:
    void onToggled(bool shown);

private:
    void fold(int windowWidth);

    int m_narrowest;
    bool m_isNarrow = false;
    bool m_isFolded = false;
};
