#include "flow/wheeltest.h"
#include "support/testmain.h"

/// What the plot says while the wheel turns, and when; and that painting is the host's affair.
class tst_wheelzoom_signals : public WheelTest {
    Q_OBJECT

private Q_SLOTS:
    void order_data();
    void order();
    void followedValuesAreReplotted();
    void autoScaleOffIsQuiet();
    void keptValuesAreAnnounced();
    void valuesGrowUpToTheData();
};

void tst_wheelzoom_signals::order_data()
{
    QTest::addColumn<Place>("place");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::addColumn<bool>("zoomsPrices");
    QTest::newRow("over the values") << Place::Values << Qt::KeyboardModifiers() << false;
    QTest::newRow("with Shift") << Place::Canvas << Qt::KeyboardModifiers(Qt::ShiftModifier) << false;
    QTest::newRow("in the canvas") << Place::Canvas << Qt::KeyboardModifiers() << true;
}

void tst_wheelzoom_signals::order()
{
    QFETCH(Place, place);
    QFETCH(Qt::KeyboardModifiers, modifiers);
    QFETCH(bool, zoomsPrices);
    addData(*m_plot, 0.0, 1000.0, 0.0, 100.0);
    putCursor(place);
    QStringList seen;
    const auto note = [&](const char* signal) {
        const auto state = [](bool old) { return old ? QStringLiteral("old") : QStringLiteral("new"); };
        seen << QStringLiteral("%1: prices %2, values %3")
                    .arg(QLatin1String(signal), state(prices() == m_prices), state(values() == m_values));
    };
    connect(m_plot.get(), QOverload<bool>::of(&PriceBased2dPlot::autoScaleEnabled), this,
        [&note] { note("auto-scale"); });
    connect(m_plot.get(), &PriceBased2dPlot::updateAxisLabels, this, [&note] { note("labels"); });
    m_plot->calls.clear();
    turn(notch, modifiers);
    QCOMPARE(seen,
        QStringList({QStringLiteral("auto-scale: prices old, values old"),
            QStringLiteral("labels: prices %1, values new").arg(zoomsPrices ? "new" : "old")}));
    QVERIFY(!m_plot->calls.contains(QStringLiteral("replot")));
}

void tst_wheelzoom_signals::followedValuesAreReplotted()
{
    addData(*m_plot, 0.0, 1000.0, 0.0, 100.0);
    m_plot->fixedRange = std::make_pair(1.0, 2.0);
    putCursor(Place::Prices);
    QStringList callsBeforeLabels;
    connect(
        m_plot.get(), &PriceBased2dPlot::updateAxisLabels, this, [&] { callsBeforeLabels = m_plot->calls; });
    m_plot->calls.clear();
    turn(notch);
    QCOMPARE(callsBeforeLabels,
        QStringList({QStringLiteral("range"), QStringLiteral("quote line 1 2 -1"), QStringLiteral("replot"),
            QStringLiteral("replot")}));
    QCOMPARE(m_plot->calls, callsBeforeLabels);
}

void tst_wheelzoom_signals::autoScaleOffIsQuiet()
{
    addData(*m_plot, 0.0, 1000.0, 0.0, 100.0);
    m_plot->setAutoScaleEnabled(false);
    putCursor(Place::Canvas);
    turn(notch);
    QCOMPARE(m_autoScale->count(), 0);
    QCOMPARE(m_labels->count(), 1);
}

void tst_wheelzoom_signals::keptValuesAreAnnounced()
{
    addData(*m_plot, 0.0, 1000.0, 40.0, 60.0);
    putCursor(Place::Values);
    m_plot->calls.clear();
    turn(-notch);
    COMPARE_RANGES(values(), m_values);
    QCOMPARE(m_autoScale->count(), 0);
    QCOMPARE(m_labels->count(), 1);
    QCOMPARE(m_plot->calls, QStringList());
}

void tst_wheelzoom_signals::valuesGrowUpToTheData()
{
    addData(*m_plot, 0.0, 1000.0, 39.0, 61.0);
    putCursor(Place::Values);
    const double centre = valueAt(cursorOn(m_plot->axisWidget(QwtPlot::yLeft))).y();
    turn(-notch);
    COMPARE_RANGES(values(), zoomed(m_values, centre, WheelFactors::out));
    QCOMPARE(m_autoScale->count(), 1);
}

PLOT2D_TEST_MAIN(tst_wheelzoom_signals)
#include "tst_wheelzoom_signals.moc"
