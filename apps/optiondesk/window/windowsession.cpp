#include "window/windowsession.h"

#include "window/checkedbytes.h"
#include "window/commandline.h"
#include "window/deskdata.h"
#include "window/deskplot.h"
#include "window/desksession.h"
#include "window/deskwindow.h"
#include "window/exportactions.h"
#include "window/keptview.h"
#include "window/smilemodels.h"
#include "window/windowplace.h"

#include <database/exception.h>

#include <cmath>

namespace {

const auto placeKey = QStringLiteral("place");
const auto viewKey = QStringLiteral("view");
const auto axisKey = QStringLiteral("axis");
const auto smileKey = QStringLiteral("smile");
const auto seriesKey = QStringLiteral("series");

// In words that a reader of the file understands.
const auto shown = QStringLiteral("shown");
const auto hidden = QStringLiteral("hidden");

std::optional<StoredSeries> chosenSeries(const DeskWindow& window, const DeskData& deskData)
{
    const QVector<StoredSeries> all = deskData.series();
    for (const StoredSeries& series : all) {
        if (series.futureIsinId == window.futureIsinId())
            return series;
    }
    return std::nullopt;
}

QStringList seriesTexts(const DeskWindow& window, const DeskData& deskData)
{
    const auto series = chosenSeries(window, deskData);
    return series ? QStringList{series->baseCode, series->expiry.toString(Qt::ISODate)} : QStringList();
}

void showSeries(DeskWindow& window, const DeskData& deskData, const QStringList& texts)
{
    const int earlier = window.futureIsinId();
    const QVector<StoredSeries> all = deskData.series();
    for (const StoredSeries& series : all) {
        if (texts != QStringList{series.baseCode, series.expiry.toString(Qt::ISODate)})
            continue;
        try {
            if (series.futureIsinId != earlier)
                window.showSeries(series.futureIsinId, window.given());
        } catch (const Exception&) {
            window.showSeries(earlier, window.given());
        }
        return;
    }
}

bool isFirstView(const View& view, const ShownSeries& series)
{
    const PriceRange first = visiblePrices(series);
    const double tolerance = 1e-9 * view.prices.width();
    return view.autoScale && std::abs(first.low - view.prices.minValue()) <= tolerance
        && std::abs(first.high - view.prices.maxValue()) <= tolerance;
}

// Nothing where a start shows the same: tomorrow's prices may be others.
QStringList zoomTexts(const DeskWindow& window)
{
    const DeskPlot& plot = *window.plot();
    const View view{plot.axisScaleDiv(QwtPlot::xBottom).interval(),
        plot.axisScaleDiv(QwtPlot::yLeft).interval(), plot.autoScaleEnabled()};
    if (!window.shownSeries() || isFirstView(view, *window.shownSeries()))
        return QStringList();
    const SeriesData& data = window.shownSeries()->data;
    return KeptView{data.baseCode, data.options.expiry, window.view(), view}.toTexts();
}

void showZoom(DeskWindow& window, const QStringList& texts)
{
    const auto kept = KeptView::fromTexts(texts);
    if (!kept || !window.shownSeries())
        return;
    const SeriesData& data = window.shownSeries()->data;
    if (kept->baseCode == data.baseCode && kept->expiry == data.options.expiry
        && kept->drawn == window.view())
        kept->show(*window.plot());
}

void keepPlace(DeskSession& session, DeskWindow& window)
{
    session.keep(
        placeKey, [&] { return WindowPlace::toTexts(window); },
        [&](const QVariant& value) { WindowPlace::restore(window, value.toStringList()); });
    session.keep(
        QStringLiteral("docks"), [&] { return CheckedBytes::toTexts(window.saveState()); },
        [&](const QVariant& value) {
            // Qt reads without doubt what it has written, and crashes on what it has not.
            if (const auto state = CheckedBytes::fromTexts(value.toStringList()))
                window.restoreState(*state);
        });
}

void keepLook(DeskSession& session, DeskWindow& window)
{
    session.keep(
        viewKey, [&] { return viewName(window.view()); },
        [&](const QVariant& value) {
            window.setView(viewFromName(value.toString()).value_or(window.view()));
        });
    session.keep(
        axisKey, [&] { return AxisModes::name(window.axisMode()); },
        [&](const QVariant& value) {
            window.setAxisMode(AxisModes::fromName(value.toString()).value_or(window.axisMode()));
        });
    session.keep(
        QStringLiteral("grid"), [&] { return window.isGridVisible() ? shown : hidden; },
        [&](const QVariant& value) {
            window.setGridVisible(
                value.toString() == shown || (value.toString() != hidden && window.isGridVisible()));
        });
}

void keepPricing(DeskSession& session, DeskWindow& window)
{
    session.keep(
        smileKey, [&] { return SmileModels::key(window.smileModel()); },
        [&](const QVariant& value) {
            const auto model = SmileModels::fromKey(value.toString());
            if (model && *model != window.smileModel())
                window.setSmileModel(*model);
        });
    session.keep(
        QStringLiteral("filter"), [&] { return Pricing::toText(window.filter()); },
        [&](const QVariant& value) {
            window.setFilter(Pricing::filterFromText(value.toString()).value_or(window.filter()));
        });
}

void keepFiles(DeskSession& session, DeskWindow& window)
{
    session.keep(
        QStringLiteral("importFolder"), [&] { return window.importFolder(); },
        [&](const QVariant& value) { window.setImportFolder(value.toString()); });
    session.keep(
        QStringLiteral("exportFolder"), [&] { return window.exports()->folder(); },
        [&](const QVariant& value) { window.exports()->setFolder(value.toString()); });
    session.keep(
        QStringLiteral("exportScale"), [&] { return QString::number(window.exports()->scale()); },
        [&](const QVariant& value) { window.exports()->setScale(value.toInt()); });
}

}

void WindowSession::keep(
    DeskSession& session, DeskWindow& window, const DeskData& deskData, const CommandLine& options)
{
    keepPlace(session, window);
    keepLook(session, window);
    keepPricing(session, window);
    keepFiles(session, window);
    session.keep(
        seriesKey, [&] { return seriesTexts(window, deskData); },
        [&, hasChain = !options.chainFile.isEmpty()](const QVariant& value) {
            const QStringList texts = value.toStringList();
            // A chain just given is the one to see, at the expiry that was seen of it last.
            if (!hasChain || texts.value(0) == window.shownSeries()->data.baseCode)
                showSeries(window, deskData, texts);
        });
    // It is one of the view and the series.
    session.keep(
        QStringLiteral("zoom"), [&] { return zoomTexts(window); },
        [&](const QVariant& value) { showZoom(window, value.toStringList()); });
}

QStringList WindowSession::statedBy(const CommandLine& options)
{
    QStringList keys;
    if (options.statesView)
        keys << viewKey;
    if (options.statesAxisMode)
        keys << axisKey;
    if (options.statesSmileModel)
        keys << smileKey;
    if (options.statesSize || asksForFiles(options))
        keys << placeKey;
    if (options.forward || options.expiry.isValid())
        keys << seriesKey;
    return keys;
}
