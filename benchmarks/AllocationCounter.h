// Counts the bytes that operator new hands out and takes back in the whole process, the
// library's and the XML parser's included, and the highest count since the last reset. Counting
// costs time, so it runs only while a CountingAllocations object exists: timings stay clean.
#pragma once

#include <cstdint>

namespace rlx_bench {

class CountingAllocations {
public:
    CountingAllocations();
    ~CountingAllocations();
    CountingAllocations(const CountingAllocations&) = delete;
    CountingAllocations& operator=(const CountingAllocations&) = delete;
};

// Blocks taken back while counting that were handed out before it may make this negative.
std::int64_t BytesInUse();
// Starts a new peak at the current count.
void ResetPeakBytes();
std::int64_t PeakBytes();

}  // namespace rlx_bench
