#include "desk/seriestree/seriesdesk.h"

#include <window/deskplot.h>

#include <QLayout>
#include <QTest>

#include <qwt_legend_label.h>

SeriesDesk::SeriesDesk(const OptionChain& chain)
    : m_data(std::make_unique<DeskData>(QString()))
{
    const int futureIsinId = m_data->import(chain, 0);
    m_window = std::make_unique<DeskWindow>(*m_data, DeskView::Volatility);
    m_dock = new SeriesDock(m_window.get());
    m_view = m_dock->findChild<SeriesTreeView*>();
    m_legend = m_window->findChild<DeskLegend*>();
    m_window->resize(1000, 640);
    m_window->showSeries(futureIsinId, SeriesFacts());
    m_window->show();
    if (!QTest::qWaitForWindowExposed(m_window.get()))
        qFatal("the window does not come");
}

QStringList SeriesDesk::overlays() const
{
    QStringList titles;
    const QList<PriceBased2dPlotCurve*> curves = m_window->plot()->attachedCurves(OverlayCurve::overlayType);
    for (const PriceBased2dPlotCurve* curve : curves) {
        if (curve->isVisible() && curve->isValid())
            titles.append(curve->title().text());
    }
    return titles;
}

OverlayCurve* SeriesDesk::overlay(const QString& title) const
{
    const QList<PriceBased2dPlotCurve*> curves = m_window->plot()->attachedCurves(OverlayCurve::overlayType);
    for (PriceBased2dPlotCurve* curve : curves) {
        if (curve->title().text() == title)
            return dynamic_cast<OverlayCurve*>(curve);
    }
    qFatal("no curve \"%s\"", qPrintable(title));
}

QStringList SeriesDesk::entries() const
{
    QStringList titles;
    const QLayout* layout = m_legend->contentsWidget()->layout();
    for (int i = 0; i < layout->count(); ++i)
        titles.append(layout->itemAt(i)->widget()->findChild<QwtLegendLabel*>()->text().text());
    return titles;
}

QModelIndex SeriesDesk::row(const QString& title) const
{
    const QAbstractItemModel& model = *m_view->model();
    const QModelIndexList found
        = model.match(model.index(0, 0), Qt::DisplayRole, title, 1, Qt::MatchExactly | Qt::MatchRecursive);
    if (found.isEmpty())
        qFatal("no row \"%s\"", qPrintable(title));
    return found.first();
}

QPoint SeriesDesk::boxOf(const QString& title) const
{
    QStyleOptionViewItem option;
    option.initFrom(m_view);
    option.rect = m_view->visualRect(row(title));
    option.features = QStyleOptionViewItem::HasCheckIndicator | QStyleOptionViewItem::HasDisplay
        | QStyleOptionViewItem::HasDecoration;
    option.decorationSize = m_view->iconSize();
    return m_view->style()->subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &option, m_view).center();
}
