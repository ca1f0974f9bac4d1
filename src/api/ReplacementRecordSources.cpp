#include "ReplacementRecordSources.h"

namespace TargetOperations {

namespace {
std::uint32_t g_allowedReadCount = 0;
}

bool ReadPropertyReplacement(ReplacementRecord& /*record*/) { return false; }

bool ReadAllowedReplacement(ReplacementRecord& record) {
    const std::uint32_t read = g_allowedReadCount++;
    if (read == 0) {
        record = ReplacementRecord{};
        record.newName = "Replace 0";
        record.enumValue = 0x80030102u;
        return true;
    }
    if (read == 1) {
        record = ReplacementRecord{};
        record.newName = "Replace 1";
        record.enumValue = 0x8003010au;
        return true;
    }
    // Keep the counter from wrapping back to the two records after 2^32 reads.
    g_allowedReadCount = 2;
    return false;
}

}  // namespace TargetOperations
