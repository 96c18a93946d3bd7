#include "desktest.h"
#include "support/heapmeter.h"
#include "support/testmain.h"

#include <window/deskdata.h>
#include <window/deskplot.h>
#include <window/deskwindow.h>

#include <QPixmapCache>

#include <functional>
#include <memory>
#include <vector>

/// That opening, using and closing the desk's window leaves no memory behind.
///
/// PLOT2D_CYCLES is the number of windows, 60 unless it says otherwise.
class tst_deskcycles : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void windowsLeaveNothing();
    void windowThatLeaksIsSeen();

private:
    void cycle(DeskData& data, int futureIsinId) const;
    qint64 growth(const std::function<void()>& afterEach, int cycles) const;
};

namespace {

constexpr int warmUps = 10;
/// The smallest of what the desk makes for a window is larger.
constexpr qint64 mostBytesOfWindow = 32;

}

void tst_deskcycles::initTestCase()
{
    // Qt's style keeps pictures under names that are other ones for each palette.
    QPixmapCache::setCacheLimit(0);
}

void tst_deskcycles::cycle(DeskData& data, int futureIsinId) const
{
    {
        DeskWindow window(data, DeskView::Volatility);
        window.showSeries(futureIsinId, SeriesFacts());
        window.resize(900, 600);
        window.show();
        QCoreApplication::processEvents();
        for (const DeskView view : {DeskView::Value, DeskView::Position, DeskView::Volatility}) {
            window.setView(view);
            QCoreApplication::processEvents();
        }
        window.setGridVisible(!window.isGridVisible());
        window.close();
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
}

qint64 tst_deskcycles::growth(const std::function<void()>& afterEach, int cycles) const
{
    DeskData data{QString()};
    const int futureIsinId = data.import(DeskTest::chain(), 0);
    const auto one = [&] {
        cycle(data, futureIsinId);
        afterEach();
    };
    return TestSupport::heapGrowth(one, warmUps, cycles);
}

void tst_deskcycles::windowsLeaveNothing()
{
    const int cycles = TestSupport::askedCycles(60);
    const qint64 left = growth([] {}, cycles);
    qInfo("%d cycles: %lld bytes", cycles, static_cast<long long>(left));
    QVERIFY2(left < cycles * mostBytesOfWindow, qPrintable(QString::number(left)));
}

void tst_deskcycles::windowThatLeaksIsSeen()
{
    constexpr int cycles = 20;
    std::vector<std::unique_ptr<char[]>> kept;
    const qint64 left
        = growth([&kept] { kept.push_back(std::make_unique<char[]>(2 * mostBytesOfWindow)); }, cycles);
    QVERIFY2(left >= cycles * mostBytesOfWindow, qPrintable(QString::number(left)));
}

PLOT2D_TEST_MAIN(tst_deskcycles)
#include "tst_deskcycles.moc"
