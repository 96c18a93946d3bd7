#include "quotes/quotesdock.h"

#include "quotes/filteractions.h"
#include "quotes/filterbar.h"
#include "quotes/quotesmodel.h"
#include "quotes/quotesview.h"
#include "quotes/rowplotlink.h"

#include <window/deskwindow.h>
#include <window/menuentry.h>

#include <QMenu>
#include <QVBoxLayout>

namespace {

// With the table beside it the plot keeps more than half of the window.
constexpr int narrowestWindow = 1150;

}

QuotesDock::QuotesDock(DeskWindow* window)
    : FoldingDock(tr("Quotes"), QStringLiteral("quotesDock"), narrowestWindow, window)
    , m_window(window)
    , m_filter(new FilterActions(window, &window->viewMenu()))
    , m_model(new QuotesModel(this))
    , m_view(new QuotesView(m_model, this))
{
    setWidget(contents());
    window->addDockWidget(Qt::RightDockWidgetArea, this);
    addTo(window->viewMenu(),
        {tr("&Quotes"), {QKeySequence(QStringLiteral("Ctrl+T"))},
            tr("Show or hide the table of the chosen expiry's quotes by strike")});
    new RowPlotLink(m_view, m_model, window->plot());
    connect(window, SIGNAL(shownChanged()), this, SLOT(onShownChanged()));
}

QWidget* QuotesDock::contents()
{
    auto* const widget = new QWidget(this);
    auto* const layout = new QVBoxLayout(widget);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(new FilterBar(*m_filter, widget));
    layout->addWidget(m_view);
    widget->setFocusProxy(m_view);
    return widget;
}

void QuotesDock::showEvent(QShowEvent* event)
{
    FoldingDock::showEvent(event);
    onShownChanged();
}

// A table that nobody sees costs nothing; one that will come with its window has its width by then.
void QuotesDock::onShownChanged()
{
    if (m_window->isVisible() && !isVisible())
        return;
    if (m_window->shownSeries())
        m_model->show(m_window->futureIsinId(), *m_window->shownSeries());
    else
        m_model->clear();
    m_view->fitColumns();
}
