#include "quotes/quotesview.h"

#include "quotes/quotesmodel.h"

#include <QHeaderView>
#include <QItemSelectionModel>
#include <QScrollBar>

#include <algorithm>

QuotesView::QuotesView(QuotesModel* model, QWidget* parent)
    : QTableView(parent)
    , m_model(model)
{
    setModel(model);
    setAccessibleName(tr("Quotes"));
    setAccessibleDescription(tr("The options of the chosen expiry by strike"));
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setTabKeyNavigation(false);
    setCornerButtonEnabled(false);
    setWordWrap(false);
    setFrameShape(QFrame::NoFrame);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 4);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setMinimumSectionSize(1);
    connect(model, SIGNAL(modelReset()), this, SLOT(onReset()));
    onReset();
}

QSize QuotesView::sizeHint() const
{
    constexpr int rows = 12;
    constexpr int widest = 360;
    return QSize(std::min(widest, horizontalHeader()->length() + verticalScrollBar()->sizeHint().width()),
        horizontalHeader()->sizeHint().height() + rows * verticalHeader()->defaultSectionSize());
}

bool QuotesView::showColumns()
{
    bool changed = false;
    for (int i = 0; i < quotesColumnCount; ++i) {
        const bool isEmpty = !m_model->hasValues(QuotesColumn(i));
        changed = changed || isEmpty != isColumnHidden(i);
        setColumnHidden(i, isEmpty);
    }
    return changed;
}

void QuotesView::fitColumns()
{
    if (showColumns())
        resizeColumnsToContents();
    else
        widenColumns();
}

// Quotes come by the dozen a second: what is out of sight is not measured.
void QuotesView::widenColumns()
{
    QHeaderView& header = *horizontalHeader();
    const int precision = header.resizeContentsPrecision();
    header.setResizeContentsPrecision(0);
    for (int i = 0; i < quotesColumnCount; ++i) {
        const int needed = isColumnHidden(i) ? 0 : sizeHintForColumn(i);
        if (needed > columnWidth(i))
            setColumnWidth(i, needed);
    }
    header.setResizeContentsPrecision(precision);
}

void QuotesView::onReset()
{
    showColumns();
    resizeColumnsToContents();
    updateGeometry();
    m_isFresh = true;
    // The keyboard begins there, not in the first row; nothing is selected yet.
    selectionModel()->setCurrentIndex(atTheMoney(), QItemSelectionModel::NoUpdate);
    showAtTheMoney();
}

// Where the middle is turns out with the size.
void QuotesView::resizeEvent(QResizeEvent* event)
{
    QTableView::resizeEvent(event);
    if (m_isFresh)
        showAtTheMoney();
}

void QuotesView::paintEvent(QPaintEvent* event)
{
    m_isFresh = false;
    QTableView::paintEvent(event);
}

QModelIndex QuotesView::atTheMoney() const
{
    const QVector<QuotesRow>& rows = m_model->rows();
    for (int i = 0; i < rows.size(); ++i) {
        if (rows.at(i).isAtTheMoney)
            return m_model->index(i, 0);
    }
    return QModelIndex();
}

void QuotesView::showAtTheMoney()
{
    scrollTo(atTheMoney(), QAbstractItemView::PositionAtCenter);
}
