#include "window/menuentry.h"

#include <QAction>
#include <QMenu>

QAction* addEntry(QMenu& menu, const MenuEntry& entry)
{
    QAction* const action = menu.addAction(entry.text);
    action->setShortcuts(entry.keys);
    action->setToolTip(entry.tip);
    action->setStatusTip(entry.tip);
    return action;
}
