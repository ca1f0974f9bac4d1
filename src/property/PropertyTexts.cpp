#include "PropertyTexts.h"

#include <cstring>
#include <string>

namespace TargetOperations {

PropertyTexts::PropertyTexts(const NameAndDescription& nd) {
    const std::string& name = nd.Name();
    const std::string& description = nd.Description();
    Assign(name.data(), name.size(), description.data(), description.size());
}

PropertyTexts::PropertyTexts(const PropertyTexts& other) { *this = other; }

PropertyTexts& PropertyTexts::operator=(const PropertyTexts& other) {
    if (this != &other) {
        Assign(other.m_text, other.m_descriptionAt - 1, other.Description(), other.m_length - other.m_descriptionAt);
    }
    return *this;
}

PropertyTexts::~PropertyTexts() {
    if (!IsInline()) delete[] m_text;
}

void PropertyTexts::SetName(const char* name) {
    if (name == nullptr) return;
    Assign(name, std::strlen(name), Description(), m_length - m_descriptionAt);
}

void PropertyTexts::SetDescription(const char* description) {
    if (description == nullptr) return;
    Assign(m_text, m_descriptionAt - 1, description, std::strlen(description));
}

void PropertyTexts::Assign(const char* name, std::size_t nameLength, const char* description,
                           std::size_t descriptionLength) {
    const std::size_t length = nameLength + 1 + descriptionLength;
    // The pair is put together aside first (on the stack when it fits inside), because name
    // or description may point into the storage being replaced.
    char staged[kInlineBytes];
    char* target = length + 1 <= kInlineBytes ? staged : new char[length + 1];
    std::memcpy(target, name, nameLength);
    target[nameLength] = '\0';
    std::memcpy(target + nameLength + 1, description, descriptionLength);
    target[length] = '\0';

    if (!IsInline()) delete[] m_text;
    if (target == staged) {
        std::memcpy(m_inline, staged, length + 1);
        m_text = m_inline;
    } else {
        m_text = target;
    }
    m_descriptionAt = nameLength + 1;
    m_length = length;
}

}  // namespace TargetOperations
