#pragma once

#include "seriestree/seriesfits.h"
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
class Work;

/// The curves of the series beside the chosen one on the desk's plot: of each its smile, or its theoretical
/// value, within 3.5 standard deviations of its forward.
///
/// The value is that of the out-of-the-money option, put below the forward and call above, so that one curve
/// says what there is to pay for. The curves follow their series in the host's table: what stands there is
/// read in turns of the event loop that leave half of the time to the user, and valued in other threads.
/// While a series is being valued its next change waits, so that curves go on moving however fast quotes
/// come.
class SeriesOverlays : public QObject {
    Q_OBJECT

public:
    /// The data must outlive this object.
    SeriesOverlays(DeskPlot* plot, const DeskData& data, QObject* parent);
    ~SeriesOverlays() override;

    /// Replaces the series, their order in the legend, and the view of them. The day of the prices is the
    /// user's, if valid. Series that stay are not valued again, unless smiles are fitted otherwise now, or
    /// their valuing was cancelled.
    void show(const QVector<SeriesBeside>& series, DeskView view, const QDate& asOf);

    /// How the smiles of those shown were fitted.
    Pricing::SmileModel smileModel() const { return m_smileModel; }

    /// Values at once what waits for its turn.
    void finish();
    bool isFinished() const { return m_waiting.isEmpty() && m_fits->pendingCount() == 0; }

    /// What there is to see of it, where it is many series that are valued.
    Work* work() const { return m_work; }

public Q_SLOTS:
    /// Leaves what is not valued yet as it is.
    void cancel();

private Q_SLOTS:
    void onTimeout();
    void onValued(const QVector<int>& futureIsinIds);

private:
    struct Overlay;

    void remove(const QVector<SeriesBeside>& staying);
    Overlay& added(int futureIsinId);
    void wait(int futureIsinId);
    void start(const QVector<int>& futureIsinIds);
    void tellProgress();
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
    Pricing::SmileModel m_smileModel = Pricing::SmileModel::Spline;
    /// Series to value, in this order.
    QVector<int> m_waiting;
    SeriesFits* m_fits;
    Work* m_work;
    /// Of the series that the work is about.
    int m_finished = 0;
    QTimer m_timer;
};
