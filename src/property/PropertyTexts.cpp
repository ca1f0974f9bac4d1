#include "PropertyTexts.h"

#include <cstring>

namespace TargetOperations {

PropertyTexts::PropertyTexts(const NameAndDescription& nd) : m_descriptionAt(0) {
    const std::string& name = nd.Name();
    const std::string& description = nd.Description();
    Rebuild(name.data(), name.size(), description.data(), description.size());
}

void PropertyTexts::SetName(const char* name) {
    if (name == nullptr) return;
    Rebuild(name, std::strlen(name), Description(), m_text.size() - m_descriptionAt);
}

void PropertyTexts::SetDescription(const char* description) {
    if (description == nullptr) return;
    Rebuild(m_text.data(), m_descriptionAt - 1, description, std::strlen(description));
}

void PropertyTexts::Rebuild(const char* name, std::size_t nameLength, const char* description,
                            std::size_t descriptionLength) {
    std::string text;
    text.reserve(nameLength + 1 + descriptionLength);
    text.append(name, nameLength);
    text.push_back('\0');
    text.append(description, descriptionLength);
    m_text.swap(text);
    m_descriptionAt = nameLength + 1;
}

}  // namespace TargetOperations
