// The reader's character data: the parser's last piece, narrowed only when read (internal).
#pragma once

#include <cstddef>
#include <string>
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
    void Replace(const XMLCh* units, std::size_t length);
    void Clear();
    // The content as 8-bit text, narrowed anew on every call: an end tag reads it once.
    const std::string& Narrowed();
    // The same, written straight into target (replacing its content).
    void NarrowInto(std::string& target) const;

private:
    std::vector<XMLCh> m_units;  // only grows: the first m_length units, then a zero unit
    std::size_t m_length = 0;
    std::string m_narrowed;  // storage for Narrowed, reused
};

}  // namespace TargetOperations
