#pragma once

#include <sys/resource.h>

/// Bounds this process to some seconds of processor time and a gibibyte of memory: a loop without end, or one
/// that fills the memory, becomes a crash. The address space of a sanitized program is not bounded.
inline void limitProcess(rlim_t seconds)
{
    const rlimit time{seconds, seconds + 1};
    setrlimit(RLIMIT_CPU, &time);
    const rlimit core{0, 0};
    setrlimit(RLIMIT_CORE, &core);
#ifndef __SANITIZE_ADDRESS__
    constexpr rlim_t gibibyte = rlim_t{1} << 30;
    const rlimit memory{gibibyte, gibibyte};
    setrlimit(RLIMIT_AS, &memory);
#endif
}
