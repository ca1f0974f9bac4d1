// A property's name and description, held in one block (part of Property's layout).
#pragma once

#include <cstddef>
#include <string>

#include "NameAndDescription.h"

namespace TargetOperations {

// Both texts share one string, "name", a zero, "description": a database of many thousand
// properties then costs one allocation per property for them instead of two. A pointer from
// Name or Description stays valid until the next SetName or SetDescription.
class PropertyTexts {
public:
    explicit PropertyTexts(const NameAndDescription& nd);

    const char* Name() const { return m_text.c_str(); }
    const char* Description() const { return m_text.c_str() + m_descriptionAt; }

    // A null text leaves that text as it was.
    void SetName(const char* name);
    void SetDescription(const char* description);

private:
    // Built aside and swapped in, so that either text may come from this object itself.
    void Rebuild(const char* name, std::size_t nameLength, const char* description, std::size_t descriptionLength);

    std::string m_text;
    std::size_t m_descriptionAt;  // one past the zero that ends the name
};

}  // namespace TargetOperations
