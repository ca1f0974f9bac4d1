// The keys of one property, in the order they were added (part of Property's layout).
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "PackedTexts.h"
#include "PropertyKey.h"

namespace TargetOperations {

// Nearly every property of a database has a single key with a short name: that one lives in
// the object itself, in 32 bytes. Anything else, a longer name or further keys, goes into one
// block of its own that holds a record per key and then the names, each followed by a zero.
// Names keep their whole length, zero bytes included.
class PropertyKeyList {
public:
    // One key as stored; the name stays valid until the list changes.
    struct Key {
        std::string_view name;
        std::uint32_t enumValue;
    };

    class const_iterator {
    public:
        const_iterator(const PropertyKeyList* list, std::size_t at) : m_list(list), m_at(at) {}
        Key operator*() const { return (*m_list)[m_at]; }
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

    PropertyKeyList() = default;
    PropertyKeyList(const PropertyKeyList& other);
    PropertyKeyList& operator=(const PropertyKeyList& other);
    ~PropertyKeyList();

    bool empty() const { return Count() == 0; }
    std::size_t size() const { return Count(); }
    Key operator[](std::size_t at) const;
    const_iterator begin() const { return const_iterator(this, 0); }
    const_iterator end() const { return const_iterator(this, size()); }

    void push_back(const PropertyKey& key) { push_back(key.KeyName(), key.EnumValue()); }
    void push_back(std::string_view name, std::uint32_t enumValue);
    void clear();

    // The longest name a single key keeps inside the object.
    static constexpr std::size_t kLongestInlineName = 23;

private:
    struct Record {
        std::uint32_t enumValue;
        PackedText name;
    };
    static constexpr std::uint32_t kInBlock = 0x80000000u;

    std::uint32_t Count() const { return m_count & ~kInBlock; }
    bool InBlock() const { return (m_count & kInBlock) != 0; }
    char* Block() const;
    const Record* Records() const;
    std::size_t BlockBytes() const;
    void SetBlock(char* block, std::size_t count);
    void Release();

    std::uint32_t m_count = 0;  // with kInBlock set while the keys are in a block
    std::uint32_t m_inlineEnum = 0;
    // A single key: its name and a zero. Otherwise: the address of the block.
    alignas(char*) char m_storage[kLongestInlineName + 1] = {};
};

}  // namespace TargetOperations
