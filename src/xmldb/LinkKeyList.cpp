#include "LinkKeyList.h"

#include <algorithm>

#include "PropertyKeyNames.h"

namespace TargetOperations {

LinkKeyList::LinkKeyList(const char* key) { Append(key); }

LinkKeyList::LinkKeyList(const char* key, const std::vector<IProperty*>& list) : LinkKeyList(key) {
    for (IProperty* entry : list) {
        auto* property = dynamic_cast<Property*>(entry);
        if (property != nullptr && property->IsKeyName(key) && *property->GetSameLevelKey() != '\0') {
            Append(property->GetSameLevelKey());
        }
    }
}

bool LinkKeyList::AddSameLevelKeyOnce(const Property& property) {
    const char* sameLevelKey = property.GetSameLevelKey();
    if (*sameLevelKey == '\0' || IndexOf(sameLevelKey) != size()) return false;
    Append(sameLevelKey);
    return true;
}

std::size_t LinkKeyList::FirstMatchOf(const Property& property) const {
    std::size_t first = size();
    ForEachKeyName(property, [&](std::string_view name) { first = std::min(first, IndexOf(name)); });
    return first;
}

void LinkKeyList::Append(std::string_view key) {
    m_keys.emplace_back(key);
    if (m_keys.size() == kScanLimit + 1) {
        for (std::size_t i = 0; i < m_keys.size(); ++i) m_firstAt.emplace(m_keys[i], i);  // first wins
    } else if (m_keys.size() > kScanLimit + 1) {
        m_firstAt.emplace(m_keys.back(), m_keys.size() - 1);
    }
}

std::size_t LinkKeyList::IndexOf(std::string_view name) const {
    if (m_keys.size() > kScanLimit) {
        const auto found = m_firstAt.find(name);
        return found == m_firstAt.end() ? size() : found->second;
    }
    for (std::size_t i = 0; i < m_keys.size(); ++i) {
        if (m_keys[i] == name) return i;
    }
    return size();
}

}  // namespace TargetOperations
