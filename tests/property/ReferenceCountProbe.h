// Reads a reference count through the counting interface itself, leaving it as it was.
#pragma once

#include <cstdint>

namespace PropertyTests {

// AddRef raises the count to n+1; the Release that follows hands back the count before its
// decrement, n+1 again, and restores n. So the current count is that result minus one.
template <typename Counted>
std::uint32_t CurrentCount(const Counted* object) {
    object->AddRef();
    return object->Release() - 1;
}

}  // namespace PropertyTests
