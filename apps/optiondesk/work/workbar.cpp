#include "work/workbar.h"

#include "work/work.h"

#include <QAction>
#include <QApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QProgressBar>
#include <QToolButton>

#include <algorithm>

namespace {

constexpr int progressWidth = 120;
// The rest of the status bar keeps some room, whatever a file is called.
constexpr int longestText = 220;
constexpr int gap = 6;

}

WorkBar::WorkBar(QWidget* parent)
    : QWidget(parent)
    , m_label(new QLabel(this))
    , m_progress(new QProgressBar(this))
    , m_button(new QToolButton(this))
{
    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(gap);
    layout->addWidget(m_label);
    layout->addWidget(m_progress);
    layout->addWidget(m_button);
    m_label->setTextFormat(Qt::PlainText);
    m_progress->setFixedWidth(progressWidth);
    m_progress->setAccessibleName(tr("Progress"));
    m_button->setText(tr("Cancel"));
    m_button->setFocusPolicy(Qt::TabFocus);
    m_button->setAccessibleName(tr("Cancel"));
    m_button->setToolTip(tr("Stop what is going on"));
    connect(m_button, SIGNAL(clicked()), this, SLOT(cancel()));
    m_timer.setSingleShot(true);
    connect(&m_timer, SIGNAL(timeout()), this, SLOT(reveal()));
    hide();
    // The keys go to whatever has the focus.
    qApp->installEventFilter(this);
}

void WorkBar::add(Work* work)
{
    connect(work, SIGNAL(began()), this, SLOT(onBegan()));
    connect(work, SIGNAL(reached(int)), this, SLOT(onReached()));
    connect(work, SIGNAL(ended()), this, SLOT(onEnded()));
    connect(work, SIGNAL(destroyed()), this, SLOT(onEnded()));
    if (work->isRunning()) {
        m_running.append(work);
        onReached();
    }
}

Work* WorkBar::current() const
{
    return m_running.isEmpty() ? nullptr : m_running.last().data();
}

void WorkBar::setCancelAction(QAction* action)
{
    m_action = action;
    connect(action, SIGNAL(triggered()), this, SLOT(cancel()));
    refresh();
}

void WorkBar::cancel()
{
    if (Work* const work = current())
        work->cancel();
}

void WorkBar::onBegan()
{
    auto* const work = static_cast<Work*>(sender());
    if (!m_running.contains(work))
        m_running.append(work);
    if (!m_timer.isActive() && isHidden())
        m_timer.start(patience);
    refresh();
}

void WorkBar::onReached()
{
    refresh();
}

void WorkBar::onEnded()
{
    // Of work that is just being destroyed the pointers are null by now.
    m_running.erase(std::remove_if(m_running.begin(), m_running.end(),
                        [](const QPointer<Work>& work) { return !work || !work->isRunning(); }),
        m_running.end());
    refresh();
}

void WorkBar::reveal()
{
    setVisible(current() != nullptr);
}

void WorkBar::refresh()
{
    const Work* const work = current();
    if (m_action)
        m_action->setEnabled(work != nullptr);
    if (!work) {
        m_timer.stop();
        hide();
        return;
    }
    m_label->setText(fontMetrics().elidedText(work->text(), Qt::ElideMiddle, longestText));
    m_label->setToolTip(work->text());
    // A range of nothing is Qt's way to say that something goes on.
    const bool isKnown = work->percent() != Work::unknownPercent;
    m_progress->setRange(0, isKnown ? 100 : 0);
    if (isKnown)
        m_progress->setValue(work->percent());
    m_progress->setAccessibleDescription(work->text());
}

bool WorkBar::takesEscape(QObject* watched, QEvent* event) const
{
    const bool isKey = event->type() == QEvent::ShortcutOverride || event->type() == QEvent::KeyPress;
    if (!isKey || !current() || !watched->isWidgetType())
        return false;
    const auto* const key = static_cast<const QKeyEvent*>(event);
    return key->key() == Qt::Key_Escape && key->modifiers() == Qt::NoModifier
        && static_cast<QWidget*>(watched)->window() == window() && !QApplication::activePopupWidget()
        && QApplication::mouseButtons() == Qt::NoButton;
}

bool WorkBar::eventFilter(QObject* watched, QEvent* event)
{
    if (!takesEscape(watched, event))
        return QWidget::eventFilter(watched, event);
    // The override takes the key from the commands; it comes back as a key then.
    event->accept();
    if (event->type() == QEvent::KeyPress)
        cancel();
    return true;
}
