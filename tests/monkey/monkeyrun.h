#pragma once

#include "monkey/messagewatch.h"

#include <QString>
#include <QStringList>

#include <cstdint>
#include <functional>

namespace Monkey {

/// How often the user's steps did something, so that a run which does nothing is seen.
struct Tally {
    int steps = 0;
    int pans = 0;
    int zooms = 0;
    int axisDrags = 0;
    int thinnedLabels = 0;
    int intervals = 0;
    int interventions = 0;
};

/// A stretch of a seed's endless series of steps, each followed by the check of all invariants.
///
/// The series comes in pieces of plotLength steps, each on a plot of its own: a failure is repeated from the
/// beginning of its piece.
class Run {
public:
    static constexpr int plotLength = 1000;

    explicit Run(std::uint64_t seed);

    /// Called with the text of each step before it is done.
    std::function<void(const QString&)> onStep;

    /// Does the steps from one number up to another, which is not done any more. Returns what was broken, by
    /// which step, and how to repeat it; an empty text if nothing was.
    QString play(int from, int to);

    const Tally& tally() const { return m_tally; }
    /// A digest of everything that was seen after every step.
    std::uint64_t digest() const { return m_digest; }
    qint64 memoryGrowth() const { return m_memoryGrowth; }

private:
    QString playPiece(int from, int to);
    QString describe(int from, int number, const QString& broken) const;

    std::uint64_t m_seed;
    MessageWatch m_messages;
    Tally m_tally;
    std::uint64_t m_digest = 0;
    qint64 m_memoryGrowth = 0;
};

}
