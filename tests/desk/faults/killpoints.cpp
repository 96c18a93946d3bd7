#include "desk/faults/killpoints.h"

#include <atomic>
#include <csignal>

#include <dlfcn.h>

// The headers that declare the calls below are left out: they define some of them inline.

namespace {

std::atomic<int> left{0};

void pass()
{
    if (left > 0 && --left == 0)
        std::raise(SIGKILL);
}

template <typename Call> Call* next(const char* name)
{
    return reinterpret_cast<Call*>(::dlsym(RTLD_NEXT, name));
}

using Open = int(const char*, int, ...);

// Of a file that is only read nothing changes.
void passIfWriting(int flags)
{
    constexpr int accessMode = 3;
    if ((flags & accessMode) != 0)
        pass();
}

}

void KillPoints::arm(int call)
{
    left = call;
}

void KillPoints::disarm()
{
    left = 0;
}

// What Qt and SQLite change files with.
extern "C" {

// A mode that the caller has left out is whatever stands in its register, and nobody looks at it.
int open(const char* file, int flags, unsigned mode)
{
    static Open* const call = next<Open>("open");
    passIfWriting(flags);
    return call(file, flags, mode);
}

int open64(const char* file, int flags, unsigned mode)
{
    static Open* const call = next<Open>("open64");
    passIfWriting(flags);
    return call(file, flags, mode);
}

#define KILL_POINT(result, name, parameters, arguments)                                                      \
    result name parameters                                                                                   \
    {                                                                                                        \
        static auto* const call = next<result parameters>(#name);                                            \
        pass();                                                                                              \
        return call arguments;                                                                               \
    }

KILL_POINT(long, write, (int file, const void* bytes, unsigned long size), (file, bytes, size))
KILL_POINT(long, pwrite, (int file, const void* bytes, unsigned long size, long at), (file, bytes, size, at))
KILL_POINT(
    long, pwrite64, (int file, const void* bytes, unsigned long size, long at), (file, bytes, size, at))
KILL_POINT(int, ftruncate, (int file, long size), (file, size))
KILL_POINT(int, ftruncate64, (int file, long size), (file, size))
KILL_POINT(int, fsync, (int file), (file))
KILL_POINT(int, fdatasync, (int file), (file))
KILL_POINT(int, fchmod, (int file, unsigned mode), (file, mode))
KILL_POINT(int, flock, (int file, int operation), (file, operation))
KILL_POINT(int, link, (const char* from, const char* to), (from, to))
KILL_POINT(
    int, linkat, (int in, const char* from, int into, const char* to, int flags), (in, from, into, to, flags))
KILL_POINT(int, rename, (const char* from, const char* to), (from, to))
KILL_POINT(int, renameat2, (int in, const char* from, int into, const char* to, unsigned flags),
    (in, from, into, to, flags))
KILL_POINT(int, unlink, (const char* file), (file))
}
