#pragma once

#include <QString>

namespace Monkey {

/// The memory that this process has in use, in bytes; 0 where the system does not tell.
qint64 residentMemory();

/// Bounds on the memory that a long run takes. Two, as windows come and go:
///
/// At any moment the process may have grown by mostAtOnce since the watch began. The largest window, 4000
/// pixels long, with what Qt and Qwt keep of it (the window's image, the canvas's, that of a drag) takes some
/// tens of MiB; what runs away passes any bound.
///
/// Between plots, when all of one is deleted and the next not yet made, it may have grown by mostInTheLongRun
/// since the first plot went, which leaves fonts, styles and caches behind. A leak of 100 bytes in a step
/// comes to 10 MB in the 100,000 steps of the tests.
///
/// Under AddressSanitizer what is freed stays in quarantine (256 MiB) and every block has a red zone around
/// it, so that the bounds are larger by that.
class MemoryWatch {
public:
    static const qint64 mostAtOnce;
    static const qint64 mostInTheLongRun;

    MemoryWatch();

    /// What is wrong after a step, and between two plots; an empty text if nothing is.
    QString afterStep() const;
    QString betweenPlots();

    /// The growth between plots so far.
    qint64 growth() const { return m_growth; }

private:
    qint64 m_atFirst;
    qint64 m_afterFirstPlot = 0;
    qint64 m_growth = 0;
};

}
