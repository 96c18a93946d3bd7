#include "quotes/filterbar.h"

#include "quotes/filteractions.h"

#include <QAction>
#include <QActionGroup>
#include <QComboBox>
#include <QHBoxLayout>
#include <QToolButton>

namespace {

QString plainText(const QAction& action)
{
    return action.text().remove(QLatin1Char('&'));
}

}

FilterBar::FilterBar(const FilterActions& actions, QWidget* parent)
    : QWidget(parent)
    , m_actions(actions)
{
    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(4, 2, 4, 2);
    auto* const moneyness = new QToolButton(this);
    moneyness->setDefaultAction(actions.outOfTheMoneyOnly());
    moneyness->setObjectName(QStringLiteral("outOfTheMoneyOnly"));
    moneyness->setAutoRaise(true);
    moneyness->setFocusPolicy(Qt::TabFocus);
    moneyness->setAccessibleName(plainText(*actions.outOfTheMoneyOnly()));
    layout->addWidget(moneyness);
    m_sides = addBox(*actions.sides(), tr("Calls or puts"), tr("Show calls, puts or both"));
    m_deviations = addBox(*actions.deviations(), tr("Strikes"),
        tr("Show strikes within so many standard deviations of the forward"));
    layout->addStretch();
    onActionsChanged();
}

QComboBox* FilterBar::addBox(const QActionGroup& group, const QString& name, const QString& tip)
{
    auto* const box = new QComboBox(this);
    box->setAccessibleName(name);
    box->setToolTip(tip);
    const QList<QAction*> actions = group.actions();
    for (const QAction* const action : actions) {
        box->addItem(action->iconText());
        connect(action, SIGNAL(toggled(bool)), this, SLOT(onActionsChanged()));
    }
    connect(box, SIGNAL(activated(int)), this, SLOT(onChosen(int)));
    layout()->addWidget(box);
    return box;
}

void FilterBar::onChosen(int index)
{
    const QActionGroup& group = sender() == m_sides ? *m_actions.sides() : *m_actions.deviations();
    group.actions().at(index)->trigger();
}

void FilterBar::onActionsChanged()
{
    follow(*m_actions.sides(), m_sides);
    follow(*m_actions.deviations(), m_deviations);
}

void FilterBar::follow(const QActionGroup& group, QComboBox* box)
{
    box->setCurrentIndex(group.actions().indexOf(group.checkedAction()));
}
