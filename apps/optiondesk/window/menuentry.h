#pragma once

#include <QKeySequence>
#include <QList>
#include <QString>

class QAction;
class QMenu;

/// An entry of a menu as the user reads it: its text with the mnemonic, its keys, the first of which the menu
/// shows, and its tip, also for the status bar.
struct MenuEntry {
    QString text;
    QList<QKeySequence> keys;
    QString tip;
};

/// Puts an entry at the end of a menu, which owns the action.
QAction* addEntry(QMenu& menu, const MenuEntry& entry);
