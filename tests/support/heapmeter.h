#pragma once

#include <QtGlobal>

#include <functional>

namespace TestSupport {

/// The bytes that this process has allocated on the heap and not freed; exact, as the allocator counts them.
/// Under AddressSanitizer it is the sanitizer's allocator that is asked.
qint64 heapInUse();

/// How many bytes a cycle leaves on the heap: the growth over so many cycles, after as many warm-up cycles as
/// fill caches of fonts, styles and numbers.
qint64 heapGrowth(const std::function<void()>& cycle, int warmUps, int cycles);

/// The number of cycles that the environment variable PLOT2D_CYCLES asks for, or the usual one.
int askedCycles(int usual);

}
