#include "window/viewactions.h"

#include "window/autoscaleicon.h"
#include "window/curvewalk.h"
#include "window/deskplot.h"
#include "window/menuentry.h"
#include "window/viewcontrol.h"

#include <QAction>
#include <QMenu>

ViewActions::ViewActions(DeskPlot* plot, QMenu* menu)
    : QObject(menu)
    , m_plot(plot)
    , m_control(new ViewControl(plot))
{
    addFits(*menu);
    menu->addSeparator();
    addZooms(*menu);
    addPans(*menu);
    menu->addSeparator();
    addWalk(*menu);
    connect(m_control, SIGNAL(historyChanged()), this, SLOT(onHistoryChanged()));
    connect(m_plot->walk(), SIGNAL(activeChanged(bool)), this, SLOT(onWalkChanged(bool)));
    onHistoryChanged();
    onWalkChanged(m_plot->walk()->isActive());
}

QAction* ViewActions::addForPlot(QMenu& menu, const MenuEntry& entry, const char* slot)
{
    QAction* const action = addEntry(menu, entry);
    action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    m_plot->addAction(action);
    connect(action, SIGNAL(triggered()), m_control, slot);
    return action;
}

QAction* ViewActions::addForCanvas(QMenu& menu, const MenuEntry& entry)
{
    QAction* const action = addEntry(menu, entry);
    action->setShortcutContext(Qt::WidgetShortcut);
    m_plot->canvas()->addAction(action);
    return action;
}

void ViewActions::addFits(QMenu& menu)
{
    m_autoScale = addEntry(menu,
        {tr("&Auto-scale"), {QKeySequence(QStringLiteral("Ctrl+A"))},
            tr("Keep the vertical axis at the visible curves")});
    m_autoScale->setIcon(autoScaleIcon(m_plot->palette()));
    m_autoScale->setIconVisibleInMenu(false);
    m_autoScale->setCheckable(true);
    m_autoScale->setChecked(m_plot->autoScaleEnabled());
    connect(m_autoScale, SIGNAL(toggled(bool)), m_control, SLOT(setAutoScale(bool)));
    connect(m_plot, SIGNAL(autoScaleEnabled(bool)), m_autoScale, SLOT(setChecked(bool)));

    addForPlot(menu,
        {tr("&Fit all"), {QKeySequence(Qt::Key_Home)}, tr("Show all data of the visible curves")},
        SLOT(fitAll()));
    connect(addEntry(menu,
                {tr("&Reset view"), {QKeySequence(QStringLiteral("Ctrl+0"))},
                    tr("Show the first range of strikes again")}),
        SIGNAL(triggered()), m_control, SLOT(resetView()));
}

void ViewActions::addZooms(QMenu& menu)
{
    addForPlot(menu,
        {tr("&Zoom in"), {QKeySequence(Qt::Key_Plus), QKeySequence(Qt::Key_Equal)},
            tr("Show a tenth less about the middle, with auto-scale on of the strikes alone")},
        SLOT(zoomIn()));
    addForPlot(menu,
        {tr("Zoom ou&t"), {QKeySequence(Qt::Key_Minus)},
            tr("Show a tenth more, up to all data, with auto-scale on of the strikes alone")},
        SLOT(zoomOut()));
    m_undo = addForPlot(menu,
        {tr("&Undo zoom or pan"), {QKeySequence(Qt::Key_Backspace)}, tr("Undo the last zoom, pan or fit")},
        SLOT(undo()));
    m_redo = addForPlot(menu,
        {tr("R&edo zoom or pan"), {QKeySequence(QStringLiteral("Shift+Backspace"))},
            tr("Redo the zoom, pan or fit undone last")},
        SLOT(redo()));
}

void ViewActions::addPans(QMenu& menu)
{
    struct Pan {
        MenuEntry entry;
        const char* slot;
    };
    QMenu& pans = *menu.addMenu(tr("Pa&n"));
    const Pan all[] = {
        {{tr("&Left"), {QKeySequence(Qt::Key_Left)}, tr("Go to lower strikes, up to the end of the data")},
            SLOT(panLeft())},
        {{tr("&Right"), {QKeySequence(Qt::Key_Right)}, tr("Go to higher strikes, up to the end of the data")},
            SLOT(panRight())},
        {{tr("&Up"), {QKeySequence(Qt::Key_Up)}, tr("Go to higher values, up to the end of the data")},
            SLOT(panUp())},
        {{tr("&Down"), {QKeySequence(Qt::Key_Down)}, tr("Go to lower values, up to the end of the data")},
            SLOT(panDown())},
    };
    for (const Pan& pan : all)
        connect(addForCanvas(pans, pan.entry), SIGNAL(triggered()), m_control, pan.slot);
}

// The walk takes these keys itself; the entries tell of them.
void ViewActions::addWalk(QMenu& menu)
{
    m_walk = addForCanvas(menu,
        {tr("&Walk the points"), {QKeySequence(Qt::Key_F2), QKeySequence(Qt::Key_Return)},
            tr("Mark the nearest point; the arrows then go from point to point")});
    m_walk->setCheckable(true);
    connect(m_walk, SIGNAL(triggered()), this, SLOT(onWalk()));
    m_leave = addForCanvas(
        menu, {tr("Leave t&he points"), {QKeySequence(Qt::Key_Escape)}, tr("Let the arrows pan again")});
    connect(m_leave, SIGNAL(triggered()), m_plot->walk(), SLOT(end()));
}

void ViewActions::onHistoryChanged()
{
    m_undo->setEnabled(m_control->canUndo());
    m_redo->setEnabled(m_control->canRedo());
}

void ViewActions::onWalkChanged(bool active)
{
    m_walk->setChecked(active);
    m_leave->setEnabled(active);
}

void ViewActions::onWalk()
{
    if (!m_plot)
        return;
    if (m_plot->walk()->isActive())
        m_plot->walk()->end();
    else
        m_plot->walk()->begin();
    onWalkChanged(m_plot->walk()->isActive());
}
