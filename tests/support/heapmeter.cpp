#include "support/heapmeter.h"

#include <cstddef>

#ifdef __SANITIZE_ADDRESS__
// Of the sanitizer's run-time; not every compiler brings the header.
extern "C" std::size_t __sanitizer_get_current_allocated_bytes(); // NOLINT(bugprone-reserved-identifier)
#else
#include <malloc.h>
#endif

namespace TestSupport {

qint64 heapInUse()
{
#ifdef __SANITIZE_ADDRESS__
    return static_cast<qint64>(__sanitizer_get_current_allocated_bytes());
#else
    const struct mallinfo2 info = mallinfo2();
    return static_cast<qint64>(info.uordblks + info.hblkhd);
#endif
}

qint64 heapGrowth(const std::function<void()>& cycle, int warmUps, int cycles)
{
    for (int i = 0; i < warmUps; ++i)
        cycle();
    const qint64 before = heapInUse();
    for (int i = 0; i < cycles; ++i)
        cycle();
    return heapInUse() - before;
}

int askedCycles(int usual)
{
    bool isNumber = false;
    const int asked = qEnvironmentVariableIntValue("PLOT2D_CYCLES", &isNumber);
    return isNumber && asked > 0 ? asked : usual;
}

}
