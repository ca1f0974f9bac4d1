// Where replacement records come from (internal). Both sources are fixed stubs; their
// answers are relied upon exactly as they stand.
#pragma once

#include <cstdint>
#include <string>

namespace TargetOperations {

struct ReplacementRecord {
    std::string keyName;
    std::uint32_t keyNumber = 0;
    std::string newName;
    std::string newDescription;
    std::uint32_t enumValue = 0;
};

// Records that rename whole properties: the source is always at its end.
bool ReadPropertyReplacement(ReplacementRecord& record);

// Records that replace allowed values: one process-wide counter, so the first read ever
// yields "Replace 0", the second "Replace 1" and every later read nothing.
bool ReadAllowedReplacement(ReplacementRecord& record);

}  // namespace TargetOperations
