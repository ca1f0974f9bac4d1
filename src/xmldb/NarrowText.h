// UTF-16 text from the XML parser as the readers' 8-bit text (internal).
#pragma once

#include <cstddef>
#include <string>

#include <xercesc/util/XercesDefs.hpp>

namespace TargetOperations {

// Keeps the low byte of each code unit up to the first zero unit. No transcoding: a unit
// above 0xFF is truncated, so U+0152 reads as 'R'.
std::string NarrowText(const XMLCh* text);

// The same into target, replacing its content and reusing its storage.
void NarrowTextInto(const XMLCh* text, std::string& target);

// Writes the low bytes of the first length units to out, up to the first zero unit; returns
// how many it wrote.
std::size_t NarrowUnits(const XMLCh* text, std::size_t length, char* out);

// The same for text whose length the parser already counted: one pass, and the text still
// ends at its first zero unit, before or after length.
void NarrowTextInto(const XMLCh* text, std::size_t length, std::string& target);

}  // namespace TargetOperations
