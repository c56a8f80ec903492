#include "support/allocations.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

std::atomic<size_t> g_count{0};
std::atomic<size_t> g_bytes{0};

} // namespace

Allocations AllocationsSoFar()
{
    return {g_count, g_bytes};
}

void* operator new(size_t size)
{
    ++g_count;
    g_bytes += size;
    void* block = malloc(size ? size : 1);
    if (!block)
        abort();
    return block;
}

void operator delete(void* block) noexcept
{
    free(block);
}

void operator delete(void* block, size_t) noexcept
{
    free(block);
}
