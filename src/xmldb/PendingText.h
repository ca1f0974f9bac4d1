// The reader's character data: the parser's last piece, narrowed only when read (internal).
#pragma once

#include <cstddef>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include <xercesc/util/XercesDefs.hpp>

namespace TargetOperations {

// Most pieces of character data are the blanks between tags, and the next piece replaces
// them unread. A piece is therefore kept as the parser's units (one copy) and narrowed the
// first time an end tag reads it; the result is what NarrowTextInto gives for the piece.
class PendingText {
public:
    // Replaces the content by length units; a piece that runs on past length without a
    // zero unit keeps its units up to the first one, as NarrowTextInto reads it.
    void Replace(const XMLCh* units, std::size_t length) {
        // Inline: the parser calls this for every piece, the blanks between tags included.
        if (units != nullptr && units[length] == 0 && length < m_units.size()) {
            std::memcpy(m_units.data(), units, length * sizeof(XMLCh));
            m_units[length] = 0;
            m_length = length;
            return;
        }
        ReplaceSlowly(units, length);
    }
    void Clear();
    // The content as 8-bit text, narrowed anew on every call: an end tag reads it once. The
    // view stays valid until the next call and is followed by a zero byte.
    std::string_view Narrowed();
    // The same, written straight into target (replacing its content).
    void NarrowInto(std::string& target) const;

private:
    void ReplaceSlowly(const XMLCh* units, std::size_t length);

    std::vector<XMLCh> m_units;  // only grows: the first m_length units, then a zero unit
    std::size_t m_length = 0;
    // Storage for Narrowed, only grows. Not a string: resizing one fills it with zeros first.
    std::vector<char> m_narrowed;
};

}  // namespace TargetOperations
