#include "memory.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace test {
namespace {

// Counted without any order: it would keep from the thread sanitizer what threads share besides.
std::atomic<long> total{0};
std::atomic<long> live{0};
constexpr auto unordered = std::memory_order_relaxed;

thread_local long left = -1; // allocations until the failing one; negative: none fails
thread_local bool stays = false;

bool fails()
{
    if (left < 0)
        return false;
    if (left > 0) {
        --left;
        return false;
    }
    if (!stays)
        left = -1;
    return true;
}

} // namespace

long allocations()
{
    return total;
}

long live_blocks()
{
    return live;
}

FailingNew::FailingNew(long which, bool onwards)
{
    stays = onwards;
    left = which - 1;
}

FailingNew::~FailingNew()
{
    left = -1;
}

} // namespace test

// Not inlined: the compiler would take the pairs of new and free() for mistakes. The nothrow and array forms
// of the standard library call these.
[[gnu::noinline]] void *operator new(std::size_t size)
{
    if (test::fails())
        throw std::bad_alloc();
    void *block = std::malloc(size != 0 ? size : 1);
    if (block == nullptr)
        throw std::bad_alloc();
    test::total.fetch_add(1, test::unordered);
    test::live.fetch_add(1, test::unordered);
    return block;
}
[[gnu::noinline]] void operator delete(void *block) noexcept
{
    if (block == nullptr)
        return;
    test::live.fetch_sub(1, test::unordered);
    std::free(block);
}
[[gnu::noinline]] void operator delete(void *block, std::size_t) noexcept
{
    operator delete(block);
}
