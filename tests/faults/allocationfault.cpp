#include "faults/allocationfault.h"

#include <cerrno>
#include <cstddef>
#include <cstdlib>
#include <new>

#if defined(__SANITIZE_ADDRESS__)
#define PLOT2D_WITHOUT_MALLOC
#endif

namespace {

thread_local bool isOpen = false;
thread_local long failing = 0;
thread_local long asked = 0;
thread_local long live = 0;

bool fails()
{
    return isOpen && ++asked == failing;
}

}

bool AllocationFault::coversMalloc()
{
#ifdef PLOT2D_WITHOUT_MALLOC
    return false;
#else
    return true;
#endif
}

AllocationFault::Window::Window(long number)
{
    failing = number;
    asked = 0;
    isOpen = true;
}

AllocationFault::Window::~Window()
{
    isOpen = false;
}

long AllocationFault::Window::count()
{
    return asked;
}

long AllocationFault::liveBlocks()
{
    return live;
}

#ifdef PLOT2D_WITHOUT_MALLOC

void* operator new(std::size_t size)
{
    void* const block = fails() ? nullptr : std::malloc(size ? size : 1);
    if (!block)
        throw std::bad_alloc();
    return block;
}

void* operator new[](std::size_t size)
{
    return operator new(size);
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    return fails() ? nullptr : std::malloc(size ? size : 1);
}

void* operator new[](std::size_t size, const std::nothrow_t& tag) noexcept
{
    return operator new(size, tag);
}

void operator delete(void* block) noexcept
{
    std::free(block);
}

void operator delete[](void* block) noexcept
{
    std::free(block);
}

void operator delete(void* block, std::size_t) noexcept
{
    std::free(block);
}

void operator delete[](void* block, std::size_t) noexcept
{
    std::free(block);
}

void operator delete(void* block, const std::nothrow_t&) noexcept
{
    std::free(block);
}

void operator delete[](void* block, const std::nothrow_t&) noexcept
{
    std::free(block);
}

#else

// The C library's own, and what takes their place. The operators new of the C++ library call these.
extern "C" {

void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
void __libc_free(void* block);

static void* counted(void* block)
{
    if (block)
        ++live;
    return block;
}

static void* noMemory()
{
    errno = ENOMEM;
    return nullptr;
}

void* malloc(std::size_t size) noexcept
{
    return fails() ? noMemory() : counted(__libc_malloc(size));
}

void* calloc(std::size_t count, std::size_t size) noexcept
{
    return fails() ? noMemory() : counted(__libc_calloc(count, size));
}

void* realloc(void* block, std::size_t size) noexcept
{
    if (fails())
        return noMemory();
    void* const moved = __libc_realloc(block, size);
    if (!block)
        return counted(moved);
    if (!moved && size == 0)
        --live;
    return moved;
}

void* memalign(std::size_t alignment, std::size_t size) noexcept
{
    return fails() ? noMemory() : counted(__libc_memalign(alignment, size));
}

void* aligned_alloc(std::size_t alignment, std::size_t size) noexcept
{
    return memalign(alignment, size);
}

int posix_memalign(void** block, std::size_t alignment, std::size_t size) noexcept
{
    void* const made = memalign(alignment, size);
    if (!made)
        return ENOMEM;
    *block = made;
    return 0;
}

void free(void* block) noexcept
{
    if (block)
        --live;
    __libc_free(block);
}
}

#endif
