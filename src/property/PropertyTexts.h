// A property's name and description, held together (part of Property's layout).
#pragma once

#include <cstddef>

#include "NameAndDescription.h"
#include "TextPair.h"

namespace TargetOperations {

// Both texts share one buffer. Short pairs, the usual case for settings, live inside the
// object itself; longer ones take one block of their own. A database of many thousand
// properties then costs no allocation per property for its texts, or one instead of two.
// A pointer from Name or Description stays valid until the next SetName or SetDescription
// (or until the object goes).
class PropertyTexts {
public:
    // Bytes the texts take inside the object, both zeros included.
    static constexpr std::size_t kInlineBytes = 64;

    explicit PropertyTexts(const NameAndDescription& nd)
        : m_pair(nd.Name().data(), nd.Name().size(), nd.Description().data(), nd.Description().size()) {}

    const char* Name() const { return m_pair.First(); }
    const char* Description() const { return m_pair.Second(); }

    // A null text leaves that text as it was.
    void SetName(const char* name) { m_pair.SetFirst(name); }
    void SetDescription(const char* description) { m_pair.SetSecond(description); }

private:
    TextPair<kInlineBytes> m_pair;
};

}  // namespace TargetOperations
