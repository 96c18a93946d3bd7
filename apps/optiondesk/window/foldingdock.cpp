#include "window/foldingdock.h"

#include "window/menuentry.h"

#include <QAction>
#include <QMainWindow>
#include <QMenu>
#include <QResizeEvent>

FoldingDock::FoldingDock(const QString& title, const QString& name, int narrowest, QMainWindow* window)
    : QDockWidget(title, window)
    , m_narrowest(narrowest)
{
    setObjectName(name);
    window->installEventFilter(this);
    connect(toggleViewAction(), SIGNAL(triggered(bool)), this, SLOT(onToggled(bool)));
}

void FoldingDock::addTo(QMenu& menu, const MenuEntry& entry)
{
    QAction* const action = toggleViewAction();
    action->setText(entry.text);
    action->setShortcuts(entry.keys);
    action->setToolTip(entry.tip);
    action->setStatusTip(entry.tip);
    menu.addAction(action);
}

bool FoldingDock::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Resize && watched == parentWidget())
        fold(static_cast<QResizeEvent*>(event)->size().width());
    return QDockWidget::eventFilter(watched, event);
}

void FoldingDock::fold(int windowWidth)
{
    const bool narrow = windowWidth < m_narrowest;
    if (narrow == m_isNarrow)
        return;
    m_isNarrow = narrow;
    // Before its window is shown, a dock is hidden without anybody having asked for it.
    const bool isWanted = !isHidden() || !testAttribute(Qt::WA_WState_ExplicitShowHide);
    if (narrow && isWanted && !isFloating()) {
        m_isFolded = true;
        hide();
    } else if (!narrow && m_isFolded) {
        m_isFolded = false;
        show();
    }
}

void FoldingDock::onToggled(bool shown)
{
    m_isFolded = false;
    if (shown && widget())
        widget()->setFocus();
}
