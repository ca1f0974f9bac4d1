// Texts packed behind fixed records in one block (part of the layout of the property's lists).
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <stdexcept>
#include <string_view>

namespace TargetOperations {

// Where a text of the block starts, counted from the start of the block, and how long it is.
// Offsets rather than addresses: a copy of the block is the same bytes.
struct PackedText {
    std::uint32_t at;
    std::uint32_t length;
};

// Bytes a packed text takes: the text and a zero after it.
inline std::size_t PackedBytes(std::string_view text) { return text.size() + 1; }

// Blocks are counted in 32 bits; what holds more has no place in a property.
inline void CheckPackedBlockBytes(std::size_t bytes, const char* what) {
    if (bytes > std::numeric_limits<std::uint32_t>::max()) throw std::length_error(what);
}

// The text in its whole length; a zero byte follows it in the block.
inline std::string_view ReadPacked(const char* block, PackedText text) {
    return std::string_view(block + text.at, text.length);
}

// Writes the texts of a block one after the other, each followed by a zero, starting behind
// the records.
class PackedTextWriter {
public:
    PackedTextWriter(char* block, std::size_t firstTextAt) : m_block(block), m_next(firstTextAt) {}

    PackedText Place(std::string_view text) {
        const PackedText placed{static_cast<std::uint32_t>(m_next), static_cast<std::uint32_t>(text.size())};
        if (!text.empty()) std::memcpy(m_block + m_next, text.data(), text.size());
        m_block[m_next + text.size()] = '\0';
        m_next += PackedBytes(text);
        return placed;
    }

private:
    char* m_block;
    std::size_t m_next;
};

}  // namespace TargetOperations
