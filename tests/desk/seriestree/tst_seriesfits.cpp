#include "desk/window/desktest.h"
#include "support/testmain.h"

#include <seriestree/seriesdock.h>
#include <seriestree/seriesfits.h>
#include <seriestree/seriesoverlays.h>
#include <seriestree/seriestreemodel.h>
#include <window/deskplot.h>
#include <window/deskwindow.h>
#include <window/overlaycurve.h>
#include <work/work.h>
#include <work/workbar.h>

#include <QSignalSpy>

/// Series that are valued in other threads.
class tst_seriesfits : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void valuesAsOneThreadDoes_data();
    void valuesAsOneThreadDoes();
    void dropsOldSnapshots();
    void dropsWhatNobodyWants();
    void tellsOfWhatCannotBeValued();
    void goesWhileItWorks();
    void tellsTheProgressOfMany();
    void cancelsAFitOfMany();
    void closesDuringAFit();
    void finishesAtOnce();

private:
    static SeriesSnapshot snapshot(int number);
    void open();
    int overlayCount() const;

    std::unique_ptr<DeskData> m_data;
    std::unique_ptr<DeskWindow> m_window;
    SeriesOverlays* m_overlays = nullptr;
};

namespace {

constexpr int expiryCount = 40;
// A machine with other work, or the sanitizers, need long for so many fits.
constexpr int patience = 60000; // ms

}

// With another forward for each number.
SeriesSnapshot tst_seriesfits::snapshot(int number)
{
    const OptionChain chain = DeskTest::chain();
    SeriesSnapshot snapshot{
        {chain.baseCode, chain.asOf, chain.priceStep, chain.decimals, chain.series.first()}, {}};
    snapshot.given.forward = DeskTest::forward + 0.01 * number;
    return snapshot;
}

void tst_seriesfits::init()
{
    m_data = std::make_unique<DeskData>(QString());
}

void tst_seriesfits::cleanup()
{
    m_window.reset();
    m_data.reset();
}

void tst_seriesfits::open()
{
    OptionChain chain = DeskTest::chain();
    for (int i = 1; i <= expiryCount; ++i) {
        OptionSeries series = chain.series.first();
        series.expiry = series.expiry.addDays(7 * i);
        chain.series.append(series);
    }
    m_window = std::make_unique<DeskWindow>(*m_data, DeskView::Volatility);
    auto* const dock = new SeriesDock(m_window.get());
    m_overlays = dock->findChild<SeriesOverlays*>();
    m_window->resize(1000, 640);
    m_window->showSeries(m_data->import(chain, 0), SeriesFacts());
}

int tst_seriesfits::overlayCount() const
{
    return m_window->plot()->attachedCurves(OverlayCurve::overlayType).size();
}

void tst_seriesfits::valuesAsOneThreadDoes_data()
{
    QTest::addColumn<int>("model");
    for (const SmileModels::Description& model : SmileModels::all())
        QTest::newRow(qPrintable(SmileModels::name(model.model))) << int(model.model);
}

void tst_seriesfits::valuesAsOneThreadDoes()
{
    QFETCH(int, model);
    constexpr int count = 24;
    SeriesFits fits;
    int told = 0;
    connect(&fits, &SeriesFits::valued, this, [&](const QVector<int>& ids) {
        for (const int id : ids) {
            SeriesSnapshot same = snapshot(id);
            same.smileModel = Pricing::SmileModel(model);
            const ShownSeries expected = same.valued();
            const ShownSeries& found = *fits.result(id);
            QCOMPARE(found.market.forward, expected.market.forward);
            QVERIFY(found.smile->model() == expected.smile->model());
            for (double strike = 60.0; strike <= 140.0; strike += 0.5)
                QVERIFY(*found.smile->volatility(strike) == *expected.smile->volatility(strike));
            ++told;
        }
    });
    for (int id = 1; id <= count; ++id) {
        SeriesSnapshot one = snapshot(id);
        one.smileModel = Pricing::SmileModel(model);
        fits.start(id, one);
    }
    QCOMPARE(fits.pendingCount(), count);
    QTRY_COMPARE_WITH_TIMEOUT(told, count, patience);
    QCOMPARE(fits.pendingCount(), 0);
}

void tst_seriesfits::dropsOldSnapshots()
{
    constexpr int id = 7;
    SeriesFits fits;
    QVector<double> forwards;
    connect(&fits, &SeriesFits::valued, this, [&](const QVector<int>& ids) {
        QCOMPARE(ids, QVector<int>{id});
        forwards.append(fits.result(id)->market.forward);
    });
    for (int number = 1; number <= 20; ++number)
        fits.start(id, snapshot(number));
    QCOMPARE(fits.pendingCount(), 1);
    QTRY_VERIFY_WITH_TIMEOUT(!fits.isPending(id), patience);
    QCoreApplication::processEvents();
    QCOMPARE(forwards, QVector<double>{*snapshot(20).given.forward});
}

void tst_seriesfits::dropsWhatNobodyWants()
{
    SeriesFits fits;
    QVector<int> told;
    connect(&fits, &SeriesFits::valued, this, [&](const QVector<int>& ids) { told += ids; });
    fits.start(1, snapshot(1));
    fits.start(2, snapshot(2));
    fits.drop(1);
    fits.drop(9);
    fits.finish();
    QCOMPARE(told, QVector<int>{2});
    fits.start(3, snapshot(3));
    fits.dropAll();
    fits.finish();
    QCOMPARE(told, QVector<int>{2});
    QCOMPARE(fits.pendingCount(), 0);
}

void tst_seriesfits::tellsOfWhatCannotBeValued()
{
    SeriesFits fits;
    int told = 0;
    connect(&fits, &SeriesFits::valued, this, [&] {
        ++told;
        QVERIFY(!fits.result(1));
    });
    SeriesSnapshot bare = snapshot(0);
    bare.given.forward.reset();
    bare.data.options.quotes.clear();
    fits.start(1, bare);
    fits.finish();
    QCOMPARE(told, 1);
}

// What it was about to value it tells nobody of, and others go on.
void tst_seriesfits::goesWhileItWorks()
{
    constexpr int rounds = 20;
    SeriesFits others;
    QMap<int, double> told;
    connect(&others, &SeriesFits::valued, this, [&](const QVector<int>& ids) {
        for (const int id : ids)
            told.insert(id, others.result(id)->market.forward);
    });
    QVector<int> toldByGone;
    QMap<int, double> expected;
    for (int round = 0; round < rounds; ++round) {
        SeriesFits fits;
        connect(&fits, &SeriesFits::valued, this, [&](const QVector<int>& ids) { toldByGone += ids; });
        for (int id = 1; id <= round; ++id)
            fits.start(id, snapshot(id));
        others.start(round, snapshot(round));
        expected.insert(round, *snapshot(round).given.forward);
    }
    QCoreApplication::processEvents();
    QCOMPARE(toldByGone, QVector<int>());
    others.finish();
    QCOMPARE(told, expected);
    QCOMPARE(others.pendingCount(), 0);
}

void tst_seriesfits::tellsTheProgressOfMany()
{
    open();
    m_window->show();
    QVERIFY(m_overlays->isFinished());
    QCOMPARE(overlayCount(), expiryCount);
    QSignalSpy began(m_overlays->work(), SIGNAL(began()));
    QSignalSpy reached(m_overlays->work(), SIGNAL(reached(int)));
    QSignalSpy ended(m_overlays->work(), SIGNAL(ended()));
    m_window->setSmileModel(Pricing::SmileModel::Svi);
    QVERIFY(!m_overlays->isFinished());
    QTRY_COMPARE_WITH_TIMEOUT(ended.size(), 1, patience);
    QVERIFY(m_overlays->isFinished());
    QCOMPARE(began.size(), 1);
    int last = -1;
    for (const QList<QVariant>& signal : qAsConst(reached)) {
        QVERIFY(signal.first().toInt() > last);
        last = signal.first().toInt();
    }
    QCOMPARE(last, 100);
    QCOMPARE(overlayCount(), expiryCount);
}

void tst_seriesfits::cancelsAFitOfMany()
{
    open();
    m_window->show();
    m_window->setSmileModel(Pricing::SmileModel::Svi);
    QCOMPARE(m_window->workBar()->current(), m_overlays->work());
    QTest::keyClick(m_window->plot(), Qt::Key_Escape);
    QVERIFY(m_overlays->isFinished());
    QCOMPARE(m_window->workBar()->current(), nullptr);
    const int shown = overlayCount();
    QVERIFY(shown < expiryCount);
    m_overlays->finish();
    QCoreApplication::processEvents();
    QCOMPARE(overlayCount(), shown);
    QVERIFY(m_window->shownSeries().has_value());
    // They come with the next choice.
    m_window->setView(DeskView::Value);
    QTRY_COMPARE_WITH_TIMEOUT(overlayCount(), expiryCount, patience);
}

void tst_seriesfits::closesDuringAFit()
{
    open();
    m_window->show();
    m_window->setSmileModel(Pricing::SmileModel::Sabr);
    QVERIFY(!m_overlays->isFinished());
    m_window->close();
    m_window.reset();
    QCoreApplication::processEvents();
    // The next window shows all of them.
    open();
    m_overlays->finish();
    QCOMPARE(overlayCount(), expiryCount);
}

// As for a picture that is taken before any turn of the event loop.
void tst_seriesfits::finishesAtOnce()
{
    open();
    QVERIFY(!m_overlays->isFinished());
    m_overlays->finish();
    QVERIFY(m_overlays->isFinished());
    QCOMPARE(overlayCount(), expiryCount);
}

PLOT2D_TEST_MAIN(tst_seriesfits)
#include "tst_seriesfits.moc"
