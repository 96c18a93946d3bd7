#include "support/loopgap.h"
#include "support/testmain.h"

#include <QtTest>

using TestSupport::LoopGap;

/// The measure of how long an event loop stands still.
class tst_loopgap : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void noticesWhatBlocksTheLoop();
};

void tst_loopgap::noticesWhatBlocksTheLoop()
{
    constexpr qint64 blocked = 200; // ms
    constexpr int patience = 60000; // ms
    const LoopGap gap;
    QTRY_VERIFY_WITH_TIMEOUT(gap.turns() > 20, patience);
    QElapsedTimer timer;
    timer.start();
    // Before the loop goes on the gap is noticed already.
    while (gap.longest() < blocked)
        QVERIFY(timer.elapsed() < patience);
    const int turns = gap.turns();
    QTRY_VERIFY_WITH_TIMEOUT(gap.turns() > turns + 20, patience);
    QVERIFY(gap.longest() >= blocked);
}

PLOT2D_TEST_MAIN(tst_loopgap)
#include "tst_loopgap.moc"
