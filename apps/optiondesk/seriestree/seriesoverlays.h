#pragma once

#include "seriestree/seriestreemodel.h"

#include <window/commandline.h>
#include <window/shownseries.h>

#include <QDate>
#include <QObject>
#include <QPointer>
#include <QTimer>

#include <map>
#include <memory>
#include <optional>

class DeskData;
class DeskPlot;
class OverlayCurve;
class SeriesFollower;

/// The curves of the series beside the chosen one on the desk's plot: of each its smile, or its theoretical
/// value, within 3.5 standard deviations of its forward.
///
/// The value is that of the out-of-the-money option, put below the forward and call above, so that one curve
/// says what there is to pay for. The curves follow their series in the host's table. Series are valued in
/// turns of the event loop that leave half of the time to the user.
class SeriesOverlays : public QObject {
    Q_OBJECT

public:
    /// The data must outlive this object.
    SeriesOverlays(DeskPlot* plot, const DeskData& data, QObject* parent);
    ~SeriesOverlays() override;

    /// Replaces the series, their order in the legend, and the view of them. The day of the prices is the
    /// user's, if valid. Series that stay are not valued again.
    void show(const QVector<SeriesBeside>& series, DeskView view, const QDate& asOf);

    /// Values at once what waits for its turn.
    void finish();
    bool isFinished() const { return m_waiting.isEmpty(); }

private Q_SLOTS:
    void onTimeout();

private:
    struct Overlay;

    void remove(const QVector<SeriesBeside>& staying);
    Overlay& added(int futureIsinId);
    void wait(int futureIsinId);
    void valueNext();
    void attach(Overlay& overlay);
    void fill(Overlay& overlay);
    void followThem();

    QPointer<DeskPlot> m_plot;
    const DeskData& m_data;
    DeskView m_view = DeskView::Volatility;
    QDate m_asOf;
    std::map<int, std::unique_ptr<Overlay>> m_overlays;
    /// The series as they are listed.
    QVector<int> m_order;
    /// Whether curves have come that may stand elsewhere in the legend than their series here.
    bool m_isUnordered = false;
    /// Series to value, in this order.
    QVector<int> m_waiting;
    QTimer m_timer;
};
