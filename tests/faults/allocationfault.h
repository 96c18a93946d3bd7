#pragma once

/// Makes allocations of this thread fail, whoever asks for the memory: operator new, and malloc() and its
/// relatives, by which Qt's containers and the C library get theirs. Under AddressSanitizer, which has an
/// allocator of its own, it is operator new alone.
///
/// To be linked into a program of its own: it replaces the program's allocation functions.
namespace AllocationFault {

/// Whether malloc() takes part.
bool coversMalloc();

/// While it lives, the allocation of a number, counted from 1, fails; with 0 none does, and all are counted.
class Window {
public:
    explicit Window(long failing);
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;
    ~Window();

    /// The allocations so far.
    static long count();
};

/// The blocks that this thread has got and not given back since its start, where malloc() takes part; a
/// constant otherwise.
long liveBlocks();

}
