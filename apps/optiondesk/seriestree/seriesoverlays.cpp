#include "seriestree/seriesoverlays.h"

#include "seriestree/overlaysamples.h"

#include <database/exception.h>
#include <window/deskdata.h>
#include <window/deskplot.h>
#include <window/overlaycurve.h>
#include <window/seriesfollower.h>

#include <QElapsedTimer>

#include <algorithm>

namespace {

// After a turn of this length the event loop goes on.
constexpr int turnMilliseconds = 30;

constexpr QSize legendIconSize(24, 13);
// Below the smile of the chosen series and its points.
constexpr double zOfOverlays = 18.0;

}

struct SeriesOverlays::Overlay {
    SeriesBeside look;
    SeriesFollower* follower = nullptr;
    /// The plot's; null while there is nothing to draw.
    OverlayCurve* curve = nullptr;
    /// Empty before its first turn, and where the series cannot be valued.
    std::optional<ShownSeries> series;
};

SeriesOverlays::SeriesOverlays(DeskPlot* plot, const DeskData& data, QObject* parent)
    : QObject(parent)
    , m_plot(plot)
    , m_data(data)
{
    m_timer.setSingleShot(true);
    connect(&m_timer, SIGNAL(timeout()), this, SLOT(onTimeout()));
}

SeriesOverlays::~SeriesOverlays() = default;

void SeriesOverlays::show(const QVector<SeriesBeside>& series, DeskView view, const QDate& asOf)
{
    if (!m_plot)
        return;
    const bool otherDay = asOf != m_asOf;
    m_view = view;
    m_asOf = asOf;
    remove(otherDay ? QVector<SeriesBeside>() : series);
    for (const SeriesBeside& look : series) {
        Overlay& overlay = added(look.futureIsinId);
        overlay.look = look;
        // Those of the chosen series may be new: the others' entries stand after theirs.
        delete overlay.curve;
        overlay.curve = nullptr;
    }
    m_order.clear();
    for (const SeriesBeside& look : series) {
        m_order.append(look.futureIsinId);
        fill(added(look.futureIsinId));
    }
    m_isUnordered = false;
    m_plot->followOverlays();
}

void SeriesOverlays::remove(const QVector<SeriesBeside>& staying)
{
    for (auto overlay = m_overlays.begin(); overlay != m_overlays.end();) {
        const bool stays = std::any_of(staying.begin(), staying.end(),
            [overlay](const SeriesBeside& look) { return look.futureIsinId == overlay->first; });
        if (stays) {
            ++overlay;
            continue;
        }
        m_waiting.removeAll(overlay->first);
        delete overlay->second->curve;
        delete overlay->second->follower;
        overlay = m_overlays.erase(overlay);
    }
}

SeriesOverlays::Overlay& SeriesOverlays::added(int futureIsinId)
{
    std::unique_ptr<Overlay>& overlay = m_overlays[futureIsinId];
    if (overlay)
        return *overlay;
    overlay = std::make_unique<Overlay>();
    overlay->follower = new SeriesFollower(this);
    overlay->follower->follow(futureIsinId);
    connect(overlay->follower, &SeriesFollower::changed, this, [this, futureIsinId] { wait(futureIsinId); });
    wait(futureIsinId);
    return *overlay;
}

void SeriesOverlays::wait(int futureIsinId)
{
    if (!m_waiting.contains(futureIsinId))
        m_waiting.append(futureIsinId);
    if (!m_timer.isActive())
        m_timer.start(0);
}

void SeriesOverlays::onTimeout()
{
    QElapsedTimer clock;
    clock.start();
    while (!m_waiting.isEmpty() && clock.elapsed() < turnMilliseconds)
        valueNext();
    followThem();
    if (!m_waiting.isEmpty())
        m_timer.start(int(clock.elapsed()));
}

void SeriesOverlays::finish()
{
    if (m_waiting.isEmpty())
        return;
    m_timer.stop();
    while (!m_waiting.isEmpty())
        valueNext();
    followThem();
}

// Entries of a legend stand in the order in which their curves were attached.
void SeriesOverlays::followThem()
{
    if (!m_plot)
        return;
    for (const int futureIsinId : qAsConst(m_order)) {
        OverlayCurve* const curve = m_isUnordered ? m_overlays.at(futureIsinId)->curve : nullptr;
        if (!curve)
            continue;
        curve->detach();
        curve->attach(m_plot);
    }
    m_isUnordered = false;
    m_plot->followOverlays();
}

void SeriesOverlays::valueNext()
{
    const int futureIsinId = m_waiting.takeFirst();
    const auto found = m_overlays.find(futureIsinId);
    if (found == m_overlays.end() || !m_plot)
        return;
    Overlay& overlay = *found->second;
    SeriesFacts facts;
    facts.asOf = m_asOf;
    try {
        overlay.series = m_data.valued(futureIsinId, facts);
    } catch (const Exception&) {
        // Its prices may still come.
        overlay.series.reset();
    }
    fill(overlay);
}

void SeriesOverlays::fill(Overlay& overlay)
{
    const QVector<QPointF> samples
        = overlay.series ? OverlaySamples::of(*overlay.series, m_view) : QVector<QPointF>();
    if (samples.isEmpty()) {
        delete overlay.curve;
        overlay.curve = nullptr;
        return;
    }
    if (!overlay.curve)
        attach(overlay);
    overlay.curve->setSamples(samples);
}

void SeriesOverlays::attach(Overlay& overlay)
{
    overlay.curve = new OverlayCurve(m_plot, overlay.look.title);
    overlay.curve->setPen(overlay.look.pen);
    overlay.curve->setZ(zOfOverlays);
    overlay.curve->setRenderHint(QwtPlotItem::RenderAntialiased);
    overlay.curve->setLegendAttribute(QwtPlotCurve::LegendShowLine);
    overlay.curve->setLegendIconSize(legendIconSize);
    overlay.curve->attach(m_plot);
    m_isUnordered = true;
}
