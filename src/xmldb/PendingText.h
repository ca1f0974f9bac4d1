// The reader's character data: the parser's last piece, narrowed as it comes (internal).
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include <xercesc/util/XercesDefs.hpp>

#include "NarrowText.h"

namespace TargetOperations {

// Most pieces of character data are the blanks between tags, and the next piece replaces
// them unread. Each piece is narrowed straight into one buffer as it comes, in one pass with
// no call and several units at a time, which costs less than copying the parser's units
// would; an end tag then reads the text as it stands. The result is what NarrowText gives.
class PendingText {
public:
    // Replaces the content by length units; a piece that runs on past length without a
    // zero unit keeps its units up to the first one, as NarrowText reads it.
    void Replace(const XMLCh* units, std::size_t length) {
        // Inline: the parser calls this for every piece, the blanks between tags included. The
        // usual piece ends with a zero unit right at its count and holds none before it.
        if (units != nullptr && units[length] == 0 && length < m_narrowed.size() &&
            NarrowUnitsWithoutZero(units, length, m_narrowed.data())) {
            m_narrowed[length] = '\0';
            m_length = length;
            return;
        }
        ReplaceSlowly(units, length);
    }
    void Clear();
    // The content as 8-bit text. The view stays valid until the next change and is followed
    // by a zero byte.
    std::string_view Narrowed() const { return std::string_view(m_narrowed.data(), m_length); }

private:
    void ReplaceSlowly(const XMLCh* units, std::size_t length);

    // Only grows: the first m_length bytes, then a zero byte. Not a string: resizing one fills
    // it with zeros first.
    std::vector<char> m_narrowed = std::vector<char>(1, '\0');
    std::size_t m_length = 0;
};

}  // namespace TargetOperations
