#include "CallerBuffer.h"

#include <algorithm>
#include <cstring>

namespace TargetOperations {

void CopyToCallerBuffer(char* buffer, std::uint32_t size, const std::string& text) {
    if (buffer == nullptr || size == 0) return;
    const std::size_t copied = std::min<std::size_t>(text.size(), size);
    std::memcpy(buffer, text.data(), copied);
    std::memset(buffer + copied, 0, size - copied);
}

void ClearCallerBuffer(char* buffer, std::uint32_t size) {
    if (buffer != nullptr && size != 0) buffer[0] = '\0';
}

}  // namespace TargetOperations
