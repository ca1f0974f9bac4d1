// Explains failures that the exported functions report only by their result, by reading the
// same files with the library's own readers.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace rlxprop {

// The driver-table keys tried for a CPU type, in order (exact key, then the wildcards).
std::vector<std::string> CpuTypeKeysTried(std::uint32_t cpuType);

// The property file of the first key that a driver-table row matches, or "".
std::string PropertyFileForKeys(const std::string& directory, const std::vector<std::string>& keys);

// Throws the ToolError that explains why `fileName` in `directory` did not load as a
// property database (missing, or the reader's error text and severity).
[[noreturn]] void ExplainDatabaseFailure(const std::string& directory, const std::string& fileName,
                                         const std::string& what);

// Throws the ToolError that explains why the driver table of `directory` is unusable, or
// returns when it loads.
void CheckDriverTable(const std::string& directory);

// The path of `fileName` as the library builds it for `directory`.
std::string PathIn(const std::string& directory, const std::string& fileName);

}  // namespace rlxprop
