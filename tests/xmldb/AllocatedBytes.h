// Bytes the process holds in live heap allocations, for the memory checks of the stress
// tests. Test-only; the one place that deals with how each runtime counts them.
#pragma once

#include <cstddef>

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
// From the sanitizer runtime (not every compiler ships the header that declares it).
extern "C" std::size_t __sanitizer_get_current_allocated_bytes();
#define RLX_TEST_COUNTS_ALLOCATIONS 1
#elif defined(__GLIBC__)
#include <malloc.h>
#define RLX_TEST_COUNTS_ALLOCATIONS 1
#else
#define RLX_TEST_COUNTS_ALLOCATIONS 0
#endif

namespace stress_test {

// Whether AllocatedBytes measures anything on this runtime.
constexpr bool kCountsAllocations = RLX_TEST_COUNTS_ALLOCATIONS != 0;

inline std::size_t AllocatedBytes() {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    return __sanitizer_get_current_allocated_bytes();
#elif defined(__GLIBC__)
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
#else
    return 0;
#endif
}

}  // namespace stress_test
