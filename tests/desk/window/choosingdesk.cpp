#include "choosingdesk.h"

#include "desktest.h"

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
