// The keys of one property, in the order they were added (part of Property's layout).
#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "PropertyKey.h"

namespace TargetOperations {

// Nearly every property of a database has a single key: that one lives in the object itself,
// so such a property needs no block of its own for its keys. Further keys follow in a vector.
class PropertyKeyList {
public:
    class const_iterator {
    public:
        const_iterator(const PropertyKeyList* list, std::size_t at) : m_list(list), m_at(at) {}
        const PropertyKey& operator*() const { return (*m_list)[m_at]; }
        const PropertyKey* operator->() const { return &(*m_list)[m_at]; }
        const_iterator& operator++() {
            ++m_at;
            return *this;
        }
        bool operator==(const const_iterator& other) const { return m_at == other.m_at; }
        bool operator!=(const const_iterator& other) const { return m_at != other.m_at; }

    private:
        const PropertyKeyList* m_list;
        std::size_t m_at;
    };

    bool empty() const { return !m_first.has_value(); }
    std::size_t size() const { return m_first.has_value() ? 1 + m_more.size() : 0; }
    const PropertyKey& operator[](std::size_t at) const { return at == 0 ? *m_first : m_more[at - 1]; }
    const_iterator begin() const { return const_iterator(this, 0); }
    const_iterator end() const { return const_iterator(this, size()); }

    void push_back(const PropertyKey& key) {
        if (m_first.has_value()) {
            m_more.push_back(key);
        } else {
            m_first.emplace(key);
        }
    }
    void clear() {
        m_first.reset();
        m_more.clear();
    }

private:
    std::optional<PropertyKey> m_first;
    std::vector<PropertyKey> m_more;
};

}  // namespace TargetOperations
