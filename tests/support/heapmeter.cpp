#include "support/heapmeter.h"

#ifdef __SANITIZE_ADDRESS__
#include <sanitizer/allocator_interface.h>
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
