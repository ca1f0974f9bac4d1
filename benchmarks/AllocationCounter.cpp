#include "AllocationCounter.h"

#include <atomic>
#include <cstdlib>
#include <new>

#include <malloc.h>

namespace rlx_bench {

namespace {

std::atomic<bool> g_counting{false};
std::atomic<std::int64_t> g_inUse{0};
std::atomic<std::int64_t> g_peak{0};

void Count(void* block) {
    if (!g_counting.load(std::memory_order_relaxed)) return;
    const auto size = static_cast<std::int64_t>(malloc_usable_size(block));
    const std::int64_t now = g_inUse.fetch_add(size, std::memory_order_relaxed) + size;
    std::int64_t peak = g_peak.load(std::memory_order_relaxed);
    while (now > peak && !g_peak.compare_exchange_weak(peak, now, std::memory_order_relaxed)) {
    }
}

void Uncount(void* block) {
    if (block == nullptr || !g_counting.load(std::memory_order_relaxed)) return;
    g_inUse.fetch_sub(static_cast<std::int64_t>(malloc_usable_size(block)), std::memory_order_relaxed);
}

void* Allocate(std::size_t size) {
    void* block = std::malloc(size == 0 ? 1 : size);
    if (block == nullptr) throw std::bad_alloc();
    Count(block);
    return block;
}

void Free(void* block) noexcept {
    Uncount(block);
    std::free(block);
}

}  // namespace

CountingAllocations::CountingAllocations() {
    g_inUse.store(0, std::memory_order_relaxed);
    g_peak.store(0, std::memory_order_relaxed);
    g_counting.store(true, std::memory_order_relaxed);
}

CountingAllocations::~CountingAllocations() { g_counting.store(false, std::memory_order_relaxed); }

std::int64_t BytesInUse() { return g_inUse.load(std::memory_order_relaxed); }

void ResetPeakBytes() { g_peak.store(g_inUse.load(std::memory_order_relaxed), std::memory_order_relaxed); }

std::int64_t PeakBytes() { return g_peak.load(std::memory_order_relaxed); }

}  // namespace rlx_bench

// The executable's replacements serve the shared libraries it loads as well.
void* operator new(std::size_t size) { return rlx_bench::Allocate(size); }
void* operator new[](std::size_t size) { return rlx_bench::Allocate(size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    try {
        return rlx_bench::Allocate(size);
    } catch (...) {
        return nullptr;
    }
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    try {
        return rlx_bench::Allocate(size);
    } catch (...) {
        return nullptr;
    }
}
void operator delete(void* block) noexcept { rlx_bench::Free(block); }
void operator delete[](void* block) noexcept { rlx_bench::Free(block); }
void operator delete(void* block, std::size_t) noexcept { rlx_bench::Free(block); }
void operator delete[](void* block, std::size_t) noexcept { rlx_bench::Free(block); }
void operator delete(void* block, const std::nothrow_t&) noexcept { rlx_bench::Free(block); }
void operator delete[](void* block, const std::nothrow_t&) noexcept { rlx_bench::Free(block); }
