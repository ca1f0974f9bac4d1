// Writing text into a caller's fixed-size character buffer (internal).
#pragma once

#include <cstdint>
#include <string>

namespace TargetOperations {

// At most size characters of text, the rest of the buffer zero-filled; no terminator when
// the text fills the buffer. A size of 0 writes nothing at all.
void CopyToCallerBuffer(char* buffer, std::uint32_t size, const std::string& text);

// Writes a terminator into buffer[0] unless the buffer has no room at all.
void ClearCallerBuffer(char* buffer, std::uint32_t size);

}  // namespace TargetOperations
