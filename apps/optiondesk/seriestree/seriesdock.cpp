#include "seriestree/seriesdock.h"

#include "seriestree/seriesoverlays.h"
#include "seriestree/seriestreemodel.h"
#include "seriestree/seriestreeview.h"

#include <plot2d/pricebased2dplotlegend.h>
#include <window/curvechoices.h>
#include <window/deskdata.h>
#include <window/deskplot.h>
#include <window/deskwindow.h>
#include <window/menuentry.h>
#include <window/storedserieswatch.h>
#include <work/workbar.h>

#include <QEvent>
#include <QMenu>

#include <algorithm>

namespace {

// With the tree beside it the plot keeps some 400 pixels.
constexpr int narrowestWindow = 560;

}

SeriesDock::SeriesDock(DeskWindow* window)
    : FoldingDock(tr("Series"), QStringLiteral("seriesDock"), narrowestWindow, window)
    , m_window(window)
    , m_model(new SeriesTreeModel(this))
    , m_view(new SeriesTreeView(m_model, this))
    , m_overlays(new SeriesOverlays(window->plot(), window->data(), this))
{
    setWidget(m_view);
    setAllowedAreas(Qt::LeftDockWidgetArea | Qt::RightDockWidgetArea);
    window->addDockWidget(Qt::LeftDockWidgetArea, this);
    window->viewMenu().addSeparator();
    addTo(window->viewMenu(),
        {tr("E&xpiries"), {QKeySequence(QStringLiteral("Ctrl+E"))},
            tr("Show or hide the tree of underlyings and expiries")});
    connect(m_view, SIGNAL(chosen(int)), window, SLOT(chooseSeries(int)));
    connect(m_model, SIGNAL(checksChanged()), this, SLOT(onChecksChanged()));
    connect(window->plot(), SIGNAL(seriesReplaced()), this, SLOT(onSeriesReplaced()));
    // Curves of the chosen series may have come again, and their entries in the legend come first.
    connect(window, SIGNAL(filterChanged()), this, SLOT(onSeriesReplaced()));
    connect(window, SIGNAL(shownChanged()), this, SLOT(onShownChanged()));
    connect(new StoredSeriesWatch(this), SIGNAL(changed()), this, SLOT(onStoredSeriesChanged()));
    connect(&window->plot()->choices(), SIGNAL(colorsChanged()), this, SLOT(onColorsChanged()));
    connect(window->plot()->legend(), SIGNAL(visibilityChanged(QString, bool)), this,
        SLOT(onVisibilityChanged(QString, bool)));
    window->workBar()->add(m_overlays->work());
    onColorsChanged();
    onStoredSeriesChanged();
}

QStringList SeriesDock::unchecked() const
{
    return m_model->unchecked();
}

void SeriesDock::setUnchecked(const QStringList& names)
{
    m_model->setUnchecked(names);
}

void SeriesDock::finish()
{
    m_overlays->finish();
}

// What is on the screen first is complete.
bool SeriesDock::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Show && watched == m_window)
        finish();
    return FoldingDock::eventFilter(watched, event);
}

void SeriesDock::onStoredSeriesChanged()
{
    m_model->setSeries(m_window->data().series());
    onSeriesReplaced();
}

void SeriesDock::onSeriesReplaced()
{
    const int chosen = m_window->futureIsinId();
    // A series just imported is shown before the watch of the table tells of it.
    if (!m_model->indexOf(chosen).isValid())
        m_model->setSeries(m_window->data().series());
    const bool isOther = chosen != m_model->chosen();
    m_model->setChosen(chosen);
    if (isOther)
        m_view->setCurrentIndex(m_model->indexOf(chosen));
    showOverlays();
}

void SeriesDock::onShownChanged()
{
    if (m_window->data().smileModel() != m_overlays->smileModel())
        showOverlays();
}

void SeriesDock::onColorsChanged()
{
    m_model->setChosenColor(m_window->plot()->choices().smileColor());
}

void SeriesDock::onChecksChanged()
{
    const QVector<SeriesBeside> before = m_beside;
    showOverlays();
    const bool isMore = std::any_of(m_beside.cbegin(), m_beside.cend(),
        [&before](const SeriesBeside& series) { return !before.contains(series); });
    if (isMore)
        m_overlays->finish();
    Q_EMIT checksChanged();
}

void SeriesDock::onVisibilityChanged(const QString& title, bool visible)
{
    const auto series = std::find_if(m_beside.cbegin(), m_beside.cend(),
        [&title](const SeriesBeside& each) { return each.title == title; });
    if (series != m_beside.cend() && m_model->setCheckedBeside(series->futureIsinId, visible))
        Q_EMIT checksChanged();
}

// The legend remembers titles, which expiries of several underlyings have.
void SeriesDock::matchLegend()
{
    auto* const legend = qobject_cast<PriceBased2dPlotLegend*>(m_window->plot()->legend());
    if (!legend)
        return;
    QStringList unchecked = legend->uncheckedItems();
    for (const SeriesBeside& series : qAsConst(m_beside)) {
        unchecked.removeAll(series.title);
        if (!m_model->isChecked(series.futureIsinId))
            unchecked.append(series.title);
    }
    legend->setUncheckedItems(unchecked);
}

void SeriesDock::showOverlays()
{
    m_beside = m_window->shownSeries() ? m_model->beside() : QVector<SeriesBeside>();
    matchLegend();
    m_overlays->show(m_beside, m_window->view(), m_window->given().asOf);
}
