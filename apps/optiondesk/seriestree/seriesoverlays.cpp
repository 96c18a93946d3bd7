#include "seriestree/seriesoverlays.h"

#include "seriestree/overlaysamples.h"

#include <window/deskdata.h>
#include <window/deskplot.h>
#include <window/overlaycurve.h>
#include <window/seriesfollower.h>
#include <work/work.h>

#include <QElapsedTimer>

#include <algorithm>

namespace {

// Fewer are valued before a user could read what goes on.
constexpr int many = 8;

constexpr QSize legendIconSize(24, 13);
// Below the smile of the chosen series and its points.
constexpr double zOfOverlays = 18.0;

}

struct SeriesOverlays::Overlay {
    SeriesBeside look;
    SeriesFollower* follower = nullptr;
    /// The plot's; null while there is nothing to draw.
    OverlayCurve* curve = nullptr;
    /// Empty before it is valued for the first time, and where it cannot be.
    std::optional<ShownSeries> series;
    bool isCancelled = false;
};

SeriesOverlays::SeriesOverlays(DeskPlot* plot, const DeskData& data, QObject* parent)
    : QObject(parent)
    , m_plot(plot)
    , m_data(data)
    , m_fits(new SeriesFits(this))
    , m_work(new Work(this))
{
    connect(m_fits, SIGNAL(valued(QVector<int>)), this, SLOT(onValued(QVector<int>)));
    connect(m_work, SIGNAL(cancelWanted()), this, SLOT(cancel()));
    m_timer.setSingleShot(true);
    connect(&m_timer, SIGNAL(timeout()), this, SLOT(onTimeout()));
}

SeriesOverlays::~SeriesOverlays() = default;

void SeriesOverlays::show(const QVector<SeriesBeside>& series, DeskView view, const QDate& asOf)
{
    if (!m_plot)
        return;
    const bool isOther = asOf != m_asOf || m_data.smileModel() != m_smileModel;
    m_view = view;
    m_asOf = asOf;
    m_smileModel = m_data.smileModel();
    remove(isOther ? QVector<SeriesBeside>() : series);
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
    tellProgress();
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
        m_fits->drop(overlay->first);
        delete overlay->second->curve;
        delete overlay->second->follower;
        overlay = m_overlays.erase(overlay);
    }
}

SeriesOverlays::Overlay& SeriesOverlays::added(int futureIsinId)
{
    std::unique_ptr<Overlay>& overlay = m_overlays[futureIsinId];
    if (overlay) {
        if (overlay->isCancelled)
            wait(futureIsinId);
        return *overlay;
    }
    overlay = std::make_unique<Overlay>();
    overlay->follower = new SeriesFollower(this);
    overlay->follower->follow(futureIsinId);
    connect(overlay->follower, &SeriesFollower::changed, this, [this, futureIsinId] { wait(futureIsinId); });
    wait(futureIsinId);
    return *overlay;
}

void SeriesOverlays::wait(int futureIsinId)
{
    m_overlays.at(futureIsinId)->isCancelled = false;
    if (!m_waiting.contains(futureIsinId))
        m_waiting.append(futureIsinId);
    if (!m_timer.isActive() && !m_fits->isPending(futureIsinId))
        m_timer.start(0);
}

void SeriesOverlays::onTimeout()
{
    QVector<int> next;
    for (const int id : qAsConst(m_waiting)) {
        if (!m_fits->isPending(id))
            next.append(id);
    }
    if (next.isEmpty())
        return;
    QElapsedTimer clock;
    clock.start();
    start(next);
    tellProgress();
    // As long as the reading took, the next one waits; that of a series being valued until it is.
    m_timer.start(int(clock.elapsed()));
}

void SeriesOverlays::start(const QVector<int>& futureIsinIds)
{
    if (futureIsinIds.isEmpty())
        return;
    SeriesFacts facts;
    facts.asOf = m_asOf;
    const std::map<int, SeriesSnapshot> snapshots = m_data.snapshots(futureIsinIds, facts);
    for (const int id : futureIsinIds) {
        m_waiting.removeAll(id);
        const auto snapshot = snapshots.find(id);
        if (snapshot != snapshots.end()) {
            m_fits->start(id, snapshot->second);
            continue;
        }
        Overlay& overlay = *m_overlays.at(id);
        overlay.series.reset();
        fill(overlay);
    }
}

void SeriesOverlays::onValued(const QVector<int>& futureIsinIds)
{
    for (const int id : futureIsinIds) {
        Overlay& overlay = *m_overlays.at(id);
        overlay.series = m_fits->result(id);
        fill(overlay);
    }
    m_finished += futureIsinIds.size();
    followThem();
    tellProgress();
    if (!m_waiting.isEmpty() && !m_timer.isActive())
        m_timer.start(0);
}

void SeriesOverlays::finish()
{
    if (isFinished())
        return;
    m_timer.stop();
    start(QVector<int>(m_waiting));
    m_fits->finish();
    followThem();
    tellProgress();
}

void SeriesOverlays::cancel()
{
    m_timer.stop();
    for (const auto& [id, overlay] : m_overlays)
        overlay->isCancelled = overlay->isCancelled || m_waiting.contains(id) || m_fits->isPending(id);
    m_waiting.clear();
    m_fits->dropAll();
    tellProgress();
}

void SeriesOverlays::tellProgress()
{
    int left = m_waiting.size();
    for (const auto& [id, overlay] : m_overlays)
        left += m_fits->isPending(id) && !m_waiting.contains(id) ? 1 : 0;
    if (left == 0) {
        m_finished = 0;
        m_work->reach(100);
        m_work->end();
        return;
    }
    if (!m_work->isRunning()) {
        m_finished = 0;
        if (left < many)
            return;
        m_work->begin(tr("Fitting smiles"));
    }
    m_work->reach(100 * m_finished / (m_finished + left));
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
