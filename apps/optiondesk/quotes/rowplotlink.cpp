#include "quotes/rowplotlink.h"

#include "quotes/quotesmodel.h"
#include "quotes/quotesview.h"

#include <window/curvetracker.h>
#include <window/curvewalk.h>
#include <window/deskplot.h>

#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QScopedValueRollback>

RowPlotLink::RowPlotLink(QuotesView* view, QuotesModel* model, DeskPlot* plot)
    : QObject(view)
    , m_view(view)
    , m_model(model)
    , m_plot(plot)
{
    connect(view->selectionModel(), SIGNAL(currentRowChanged(QModelIndex, QModelIndex)), this,
        SLOT(onCurrentChanged(QModelIndex)));
    connect(view, SIGNAL(pressed(QModelIndex)), this, SLOT(onPressed(QModelIndex)));
    connect(plot->walk(), SIGNAL(pointShown(double)), this, SLOT(onPoint(double)));
    connect(plot->tracker(), SIGNAL(moved()), this, SLOT(onMoved()));
    connect(plot->tracker(), SIGNAL(refreshed()), this, SLOT(onRefreshed()));
    view->installEventFilter(this);
}

// Rows that come and go move the current one as well, without the user.
void RowPlotLink::onCurrentChanged(const QModelIndex& current)
{
    if (m_view->hasFocus())
        mark(current);
}

// Also of the row that is the current one already.
void RowPlotLink::onPressed(const QModelIndex& index)
{
    mark(index);
}

void RowPlotLink::mark(const QModelIndex& index)
{
    if (m_isFollowing || !m_plot || !index.isValid())
        return;
    m_isCursorLeading = false;
    const QScopedValueRollback<bool> following(m_isFollowing, true);
    m_plot->walk()->goTo(m_model->rows().at(index.row()).strike);
}

bool RowPlotLink::eventFilter(QObject* watched, QEvent* event)
{
    const bool isKey = event->type() == QEvent::KeyPress || event->type() == QEvent::ShortcutOverride;
    if (!isKey || static_cast<QKeyEvent*>(event)->key() != Qt::Key_Escape || !m_plot
        || !m_plot->walk()->isActive())
        return QObject::eventFilter(watched, event);
    if (event->type() == QEvent::KeyPress)
        m_plot->walk()->end();
    event->accept();
    return true;
}

void RowPlotLink::onPoint(double price)
{
    m_isCursorLeading = false;
    follow(price);
}

void RowPlotLink::onMoved()
{
    m_isCursorLeading = true;
    followCursor();
}

void RowPlotLink::onRefreshed()
{
    if (m_isCursorLeading)
        followCursor();
}

void RowPlotLink::followCursor()
{
    if (!m_plot)
        return;
    if (const std::optional<double> price = m_plot->tracker()->price())
        follow(*price);
    else if (m_view->isVisible())
        m_view->clearSelection();
}

void RowPlotLink::follow(double price)
{
    const int row = QuotesRows::nearest(m_model->rows(), price);
    if (m_isFollowing || row < 0 || !m_view->isVisible())
        return;
    const QScopedValueRollback<bool> following(m_isFollowing, true);
    const QModelIndex index = m_model->index(row, 0);
    m_view->selectionModel()->setCurrentIndex(
        index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    m_view->scrollTo(index);
}
