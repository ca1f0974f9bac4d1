// The driver-table keys tried for one CPU type (internal).
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace TargetOperations {

// The exact key first, then the wildcard retries: keyNumber divided by 10, 100, 1000 and
// 10000, each followed by "x", each followed by suffix. For 6474: 6474, 647x, 64x, 6x, 0x.
std::vector<std::string> CpuTypeKeys(std::uint32_t keyNumber, const std::string& suffix);

}  // namespace TargetOperations
