#include "position/positionpanel.h"

#include "position/legdelegate.h"
#include "position/legmodel.h"

#include <QAction>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QTableView>
#include <QToolButton>
#include <QVBoxLayout>

namespace Position {

PositionPanel::PositionPanel(LegModel* model, const QList<QAction*>& actions, QWidget* parent)
    : QWidget(parent)
    , m_model(model)
    , m_table(new QTableView(this))
    , m_summary(new QLabel(this))
{
    setUpTable();
    m_summary->setTextFormat(Qt::PlainText);
    m_summary->setWordWrap(true);
    m_summary->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_summary->setAccessibleName(tr("Worth of the position"));

    auto* const buttons = new QVBoxLayout;
    for (QAction* const action : actions) {
        auto* const button = new QToolButton(this);
        button->setDefaultAction(action);
        button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
        buttons->addWidget(button);
    }
    buttons->addStretch();
    auto* const upper = new QHBoxLayout;
    upper->addWidget(m_table, 1);
    upper->addLayout(buttons);
    auto* const all = new QVBoxLayout(this);
    all->setContentsMargins(6, 4, 6, 4);
    all->addLayout(upper, 1);
    all->addWidget(m_summary);
    connect(model, SIGNAL(refused(QString)), this, SLOT(onRefused(QString)));
    connect(model, SIGNAL(edited()), this, SLOT(forgetRefusal()));
    connect(m_table->selectionModel(), SIGNAL(currentChanged(QModelIndex, QModelIndex)), this,
        SLOT(forgetRefusal()));
}

void PositionPanel::setUpTable()
{
    m_table->setModel(m_model);
    m_table->setItemDelegate(new LegDelegate(m_table));
    m_table->setAccessibleName(tr("Legs of the position"));
    m_table->setSelectionMode(QAbstractItemView::SingleSelection);
    m_table->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed
        | QAbstractItemView::AnyKeyPressed | QAbstractItemView::SelectedClicked);
    m_table->setTabKeyNavigation(false);
    m_table->setCornerButtonEnabled(false);
    QHeaderView* const header = m_table->horizontalHeader();
    header->setSectionResizeMode(QHeaderView::Stretch);
    header->setSectionResizeMode(LegModel::Expiry, QHeaderView::ResizeToContents);
    header->setHighlightSections(false);
    // By itself a header measures what is in its rows only when it changes its own size.
    connect(m_model, SIGNAL(rowsInserted(QModelIndex, int, int)), header, SLOT(resizeSections()));
    connect(m_model, SIGNAL(rowsRemoved(QModelIndex, int, int)), header, SLOT(resizeSections()));
    connect(m_model, SIGNAL(dataChanged(QModelIndex, QModelIndex)), header, SLOT(resizeSections()));
    connect(m_model, SIGNAL(modelReset()), header, SLOT(resizeSections()));
    m_table->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    m_table->verticalHeader()->setDefaultSectionSize(m_table->fontMetrics().height() + 8);
    m_table->verticalHeader()->hide();
}

void PositionPanel::setSummary(const QString& text)
{
    m_worth = text;
    m_summary->setText(m_refusal.isEmpty() ? m_worth : m_refusal);
}

QString PositionPanel::summary() const
{
    return m_summary->text();
}

int PositionPanel::currentRow() const
{
    return m_table->currentIndex().row();
}

void PositionPanel::edit(int row)
{
    m_table->setCurrentIndex(m_model->index(row, 0));
    m_table->setFocus();
}

// Three legs are seen at once, and the plot keeps most of the window.
QSize PositionPanel::sizeHint() const
{
    constexpr int rows = 3;
    constexpr int frames = 24;
    const int height = m_table->horizontalHeader()->sizeHint().height()
        + rows * m_table->verticalHeader()->defaultSectionSize() + fontMetrics().height();
    return QSize(QWidget::sizeHint().width(), height + frames);
}

void PositionPanel::onRefused(const QString& reason)
{
    m_refusal = reason;
    setSummary(m_worth);
}

void PositionPanel::forgetRefusal()
{
    m_refusal.clear();
    setSummary(m_worth);
}

}
