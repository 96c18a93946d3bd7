#include "choosingdesk.h"

#include "desktest.h"

#include <QCheckBox>
#include <QLayout>
#include <QtTest>

#include <qwt_legend_label.h>

ChoosingDesk::ChoosingDesk()
    : data(QString())
    , quoted(data.import(DeskTest::quotedChain(), 0))
    , plain(data.import(DeskTest::chain(QStringLiteral("PLAIN")), 0))
{
}

void ChoosingDesk::start(DeskView view, Keeping keeping)
{
    plot.reset();
    settings.reset();
    plot = std::make_unique<DeskPlot>();
    legend = plot->findChild<DeskLegend*>();
    if (keeping == Keeping::InSettings) {
        settings = std::make_unique<Settings>(settingsFile());
        plot->choices().setSettings(settings.get());
    }
    plot->resize(1000, 500);
    show(view, quoted);
}

void ChoosingDesk::show(DeskView view, int futureIsinId)
{
    plot->showSeries(futureIsinId, data.show(futureIsinId, SeriesFacts()), view);
}

bool ChoosingDesk::showWindow(DeskView view, int futureIsinId)
{
    show(view, futureIsinId);
    plot->show();
    const bool isActive = QTest::qWaitForWindowActive(plot.get());
    QCoreApplication::processEvents();
    return isActive;
}

PriceBased2dPlotCurve* ChoosingDesk::curve(const QString& title) const
{
    const QList<PriceBased2dPlotCurve*> curves = plot->attachedCurves(-1);
    for (PriceBased2dPlotCurve* each : curves) {
        if (each->title().text() == title)
            return each;
    }
    return nullptr;
}

QStringList ChoosingDesk::hidden() const
{
    QStringList titles;
    const QList<PriceBased2dPlotCurve*> curves = plot->attachedCurves(-1);
    for (const PriceBased2dPlotCurve* each : curves) {
        const QString title = each->title().text();
        bool found = false;
        if (legend->isCheckBoxChecked(title, &found) != each->isVisible() || !found)
            titles << QStringLiteral("not as its box: ") + title;
        else if (!each->isVisible())
            titles << title;
    }
    return titles;
}

LabelWidget* ChoosingDesk::entry(const QString& title) const
{
    const QLayout* layout = legend->contentsWidget()->layout();
    for (int i = 0; i < layout->count(); ++i) {
        auto* widget = qobject_cast<LabelWidget*>(layout->itemAt(i)->widget());
        if (widget && widget->findChild<QwtLegendLabel*>()->text().text() == title)
            return widget;
    }
    qFatal("no entry %s", qPrintable(title));
}

QwtLegendLabel* ChoosingDesk::label(const QString& title) const
{
    return entry(title)->findChild<QwtLegendLabel*>();
}

QCheckBox* ChoosingDesk::box(const QString& title) const
{
    return entry(title)->findChild<QCheckBox*>();
}
