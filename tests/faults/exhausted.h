#pragma once

#include "faults/allocationfault.h"

#include <QtTest>

#include <new>
#include <optional>

/// How a call bore it that each of its allocations failed once.
struct Exhausted {
    /// What went wrong, with the number of the allocation; empty where nothing did.
    QString problem;
    /// The allocations that the call makes.
    long allocations = 0;
    /// How many of them ended it with std::bad_alloc; it can do without the others.
    long thrown = 0;
};

/// Makes the first allocation of a call fail, then the second, and so on until there is none left.
///
/// Each time the call either throws std::bad_alloc or gives the same result as ever; all that it took is
/// given back, and the same call right afterwards has that result again. A result needs an operator ==.
///
/// What prepare() does comes before each of the calls that fail, and fails nowhere. It is for calls that
/// change what they are called on: what these keep is not counted as lost.
template <typename Prepare, typename Call>
Exhausted exhaust(const Prepare& prepare, const Call& call, bool keeps = true)
{
    Exhausted found;
    // What is made once and kept is made now.
    prepare();
    call();
    prepare();
    const auto expected = call();
    for (long failing = 1; found.problem.isEmpty(); ++failing) {
        prepare();
        const long liveBefore = AllocationFault::liveBlocks();
        bool hasThrown = false;
        bool isSame = true;
        long asked = 0;
        try {
            std::optional<std::decay_t<decltype(expected)>> result;
            const AllocationFault::Window window(failing);
            // Counted also where the call is left by an exception.
            const auto note = qScopeGuard([&asked] { asked = AllocationFault::Window::count(); });
            result.emplace(call());
            isSame = *result == expected;
        } catch (const std::bad_alloc&) {
            hasThrown = true;
        }
        const long lost = AllocationFault::liveBlocks() - liveBefore;
        const auto tell = [&](const char* what) {
            found.problem = QStringLiteral("allocation %1: %2").arg(failing).arg(QLatin1String(what));
        };
        if (!isSame)
            tell("the call gives another result");
        else if (lost != 0 && !keeps)
            tell(qPrintable(QStringLiteral("%1 blocks are lost").arg(lost)));
        else if (!(call() == expected))
            tell("the next call gives another result");
        if (asked < failing && !hasThrown) {
            found.allocations = asked;
            return found;
        }
        found.thrown += hasThrown ? 1 : 0;
    }
    return found;
}

template <typename Call> Exhausted exhaust(const Call& call)
{
    return exhaust([] {}, call, false);
}
