// The keys in play while one level is linked (internal).
#pragma once

#include <cstddef>
#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "../property/IProperty.h"

namespace TargetOperations {

class Property;

// The child key, then same-level keys in the order they came in. A level can bring in
// thousands of same-level keys, so past a handful the keys are also found through a map from
// each name to its first position, and a property is matched through its own few key names
// instead of by asking it about every key.
class LinkKeyList {
public:
    explicit LinkKeyList(const char* key);
    // The key, then the same-level key of every listed entry selected by that key, in list
    // order; a same-level key may stand twice.
    LinkKeyList(const char* key, const std::vector<IProperty*>& list);

    std::size_t size() const { return m_keys.size(); }
    // Stays valid while keys are added.
    const std::string& operator[](std::size_t at) const { return m_keys[at]; }
    const std::string& back() const { return m_keys.back(); }

    // Adds the same-level key of property unless it is empty or already listed; true when added.
    bool AddSameLevelKeyOnce(const Property& property);
    // Position of the first key under which property can be selected, or size().
    std::size_t FirstMatchOf(const Property& property) const;

private:
    void Append(std::string_view key);
    // Position of the first key equal to name, or size().
    std::size_t IndexOf(std::string_view name) const;

    static constexpr std::size_t kScanLimit = 8;

    std::deque<std::string> m_keys;  // a deque never moves them, so the map's views stay valid
    std::unordered_map<std::string_view, std::size_t> m_firstAt;  // filled once past kScanLimit
};

}  // namespace TargetOperations
