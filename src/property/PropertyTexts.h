// A property's name and description, held together (part of Property's layout).
#pragma once

#include <cstddef>

#include "NameAndDescription.h"

namespace TargetOperations {

// Both texts share one buffer, "name", a zero, "description", a zero. Short pairs, the usual
// case for settings, live inside the object itself; longer ones take one block of their own.
// A database of many thousand properties then costs no allocation per property for its
// texts, or one instead of two. A pointer from Name or Description stays valid until the next
// SetName or SetDescription (or until the object goes).
class PropertyTexts {
public:
    explicit PropertyTexts(const NameAndDescription& nd);
    PropertyTexts(const PropertyTexts& other);
    PropertyTexts& operator=(const PropertyTexts& other);
    ~PropertyTexts();

    const char* Name() const { return m_text; }
    const char* Description() const { return m_text + m_descriptionAt; }

    // A null text leaves that text as it was.
    void SetName(const char* name);
    void SetDescription(const char* description);

    // Bytes the texts take inside the object, both zeros included.
    static constexpr std::size_t kInlineBytes = 64;

private:
    // Either text may come from this object itself: the new pair is put together before the
    // old storage goes.
    void Assign(const char* name, std::size_t nameLength, const char* description, std::size_t descriptionLength);
    bool IsInline() const { return m_text == m_inline; }

    // Every constructor assigns a pair at once; until then the object owns no block.
    char* m_text = m_inline;          // m_inline, or a block of its own
    std::size_t m_descriptionAt = 0;  // one past the zero that ends the name
    std::size_t m_length = 0;         // of everything before the final zero
    char m_inline[kInlineBytes];
};

}  // namespace TargetOperations
