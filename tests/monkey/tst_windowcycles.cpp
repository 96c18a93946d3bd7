#include "monkey/messagewatch.h"
#include "monkey/monkeyhost.h"
#include "monkey/stepexecutor.h"
#include "monkey/stepgenerator.h"
#include "support/heapmeter.h"
#include "support/testmain.h"

#include <QCursor>
#include <QPixmapCache>

#include <memory>
#include <vector>

namespace {

/// Less than this a cycle is what Qt's and the system's own tables fluctuate by; the smallest object of a
/// plot is larger.
constexpr qint64 mostBytesOfCycle = 16;
constexpr int warmUps = 50;
constexpr int stepsOfCycle = 40;

/// The bytes that cycles leave behind, without what Qt has to say of events that no window system sends.
qint64 growthOf(const std::function<void()>& cycle, int cycles)
{
    Monkey::MessageWatch messages;
    const qint64 growth = TestSupport::heapGrowth(cycle, warmUps, cycles);
    if (const QString unexpected = messages.take(); !unexpected.isEmpty())
        qWarning("%s", qPrintable(unexpected));
    return growth;
}

/// A host and its whole window is made, used, and destroyed, which leaves nothing waiting.
void cycle(int number)
{
    {
        Monkey::Host host;
        Monkey::StepExecutor executor(host);
        executor.run(Monkey::StartOver{});
        for (int step = 0; step < stepsOfCycle; ++step)
            executor.run(Monkey::stepAt(11, stepsOfCycle * (number % 25) + step));
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCursor::setPos(0, 0);
    QCoreApplication::processEvents();
}

}

/// That making, using and destroying a plot with all that belongs to it leaves no memory behind.
class tst_windowcycles : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void leaveNothing();
    void leakIsSeen();
};

void tst_windowcycles::initTestCase()
{
    // Qt's style keeps pictures of scroll bars under names that are other ones for each palette.
    QPixmapCache::setCacheLimit(0);
}

void tst_windowcycles::leaveNothing()
{
    const int cycles = TestSupport::askedCycles(1000);
    int number = 0;
    const qint64 growth = growthOf([&number] { cycle(number++); }, cycles);
    qInfo("%d cycles: %lld bytes", cycles, static_cast<long long>(growth));
    QVERIFY2(growth < cycles * mostBytesOfCycle, qPrintable(QString::number(growth)));
}

void tst_windowcycles::leakIsSeen()
{
    // Kept in reach, as the leak checker reports what is out of it.
    std::vector<std::unique_ptr<char[]>> kept;
    int number = 0;
    const auto leakingCycle = [&] {
        cycle(number++);
        kept.push_back(std::make_unique<char[]>(2 * mostBytesOfCycle));
    };
    constexpr int cycles = 100;
    const qint64 growth = growthOf(leakingCycle, cycles);
    QVERIFY2(growth >= cycles * mostBytesOfCycle, qPrintable(QString::number(growth)));
}

PLOT2D_TEST_MAIN(tst_windowcycles)
#include "tst_windowcycles.moc"
