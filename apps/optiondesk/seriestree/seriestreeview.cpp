#include "seriestree/seriestreeview.h"

#include "seriestree/expirylook.h"
#include "seriestree/seriestreemodel.h"

#include <QKeyEvent>
#include <QMouseEvent>

SeriesTreeView::SeriesTreeView(SeriesTreeModel* model, QWidget* parent)
    : QTreeView(parent)
    , m_model(model)
{
    setModel(model);
    setAccessibleName(tr("Series"));
    setAccessibleDescription(tr("Underlyings and their expiries"));
    setHeaderHidden(true);
    setUniformRowHeights(true);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setIconSize(QSize(ExpiryLook::swatchWidth, ExpiryLook::swatchHeight));
    setIndentation(fontMetrics().height() * 3 / 4);
    setFrameShape(QFrame::NoFrame);
    connect(this, SIGNAL(clicked(QModelIndex)), this, SLOT(onClicked(QModelIndex)));
    connect(model, SIGNAL(modelReset()), this, SLOT(expandAll()));
    expandAll();
}

QSize SeriesTreeView::sizeHint() const
{
    constexpr int rows = 12;
    const int row = qMax(sizeHintForRow(0), fontMetrics().height());
    return QSize(sizeHintForColumn(0) + 2 * frameWidth(), rows * row);
}

// One on a box would neither be told of nor make its row the current one.
void SeriesTreeView::mousePressEvent(QMouseEvent* event)
{
    const QPersistentModelIndex index = indexAt(event->pos());
    m_pressedState = index.data(Qt::CheckStateRole);
    QTreeView::mousePressEvent(event);
    if (index.isValid())
        setCurrentIndex(index);
}

// Two quick clicks on a box are two.
void SeriesTreeView::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (m_model->seriesAt(indexAt(event->pos())) == 0) {
        QTreeView::mouseDoubleClickEvent(event);
        return;
    }
    QMouseEvent press(QEvent::MouseButtonPress, event->localPos(), event->windowPos(), event->screenPos(),
        event->button(), event->buttons(), event->modifiers());
    mousePressEvent(&press);
}

// A click on the box comes as well, after it has changed the state.
void SeriesTreeView::onClicked(const QModelIndex& index)
{
    if (index.data(Qt::CheckStateRole) == m_pressedState)
        choose(index);
}

// The view's own word for Enter comes of double clicks as well, as of two on a box.
void SeriesTreeView::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        choose(currentIndex());
    else
        QTreeView::keyPressEvent(event);
}

void SeriesTreeView::choose(const QModelIndex& index)
{
    const int series = m_model->seriesAt(index);
    if (series > 0 && series != m_model->chosen())
        Q_EMIT chosen(series);
}
