#include "CpuTypeKeys.h"

namespace TargetOperations {

std::vector<std::string> CpuTypeKeys(std::uint32_t keyNumber, const std::string& suffix) {
    std::vector<std::string> keys;
    keys.push_back(std::to_string(keyNumber) + suffix);
    for (std::uint32_t divisor = 10; divisor <= 10000; divisor *= 10) {
        keys.push_back(std::to_string(keyNumber / divisor) + "x" + suffix);
    }
    return keys;
}

}  // namespace TargetOperations
