#include "PropertyKeyList.h"

#include <cstring>
#include <limits>
#include <stdexcept>

namespace TargetOperations {

PropertyKeyList::PropertyKeyList(const PropertyKeyList& other) { *this = other; }

PropertyKeyList& PropertyKeyList::operator=(const PropertyKeyList& other) {
    if (this == &other) return *this;
    char* copied = nullptr;
    if (other.InBlock()) {
        const std::size_t bytes = other.BlockBytes();
        copied = new char[bytes];
        std::memcpy(copied, other.Block(), bytes);  // records hold offsets: a copy is the same bytes
    }
    Release();
    if (copied != nullptr) {
        SetBlock(copied, other.Count());
    } else {
        m_count = other.m_count;
        m_inlineEnum = other.m_inlineEnum;
        std::memcpy(m_storage, other.m_storage, sizeof m_storage);
    }
    return *this;
}

PropertyKeyList::~PropertyKeyList() { Release(); }

char* PropertyKeyList::Block() const {
    char* block = nullptr;
    std::memcpy(&block, m_storage, sizeof block);
    return block;
}

const PropertyKeyList::Record* PropertyKeyList::Records() const { return reinterpret_cast<const Record*>(Block()); }

std::size_t PropertyKeyList::BlockBytes() const {
    const Record& last = Records()[Count() - 1];
    return std::size_t{last.at} + last.length + 1;
}

void PropertyKeyList::SetBlock(char* block, std::size_t count) {
    std::memcpy(m_storage, &block, sizeof block);
    m_count = static_cast<std::uint32_t>(count) | kInBlock;
    m_inlineEnum = 0;
}

void PropertyKeyList::Release() {
    if (InBlock()) delete[] Block();
    m_count = 0;
    m_inlineEnum = 0;
    m_storage[0] = '\0';
}

PropertyKeyList::Key PropertyKeyList::operator[](std::size_t at) const {
    if (!InBlock()) return Key{std::string_view(m_storage), m_inlineEnum};
    const Record& record = Records()[at];
    return Key{std::string_view(Block() + record.at, record.length), record.enumValue};
}

void PropertyKeyList::push_back(std::string_view name, std::uint32_t enumValue) {
    const std::size_t count = Count();
    if (count == 0 && name.size() <= kLongestInlineName && name.find('\0') == std::string_view::npos) {
        std::memcpy(m_storage, name.data(), name.size());
        m_storage[name.size()] = '\0';
        m_inlineEnum = enumValue;
        m_count = 1;
        return;
    }
    // A new block with one more record; the old keys' names are copied over from wherever
    // they are, before the old storage goes.
    std::size_t bytes = (count + 1) * sizeof(Record) + name.size() + 1;
    for (std::size_t i = 0; i < count; ++i) bytes += (*this)[i].name.size() + 1;
    if (count + 1 > (std::numeric_limits<std::uint32_t>::max() & ~kInBlock) ||
        bytes > std::numeric_limits<std::uint32_t>::max()) {
        throw std::length_error("the keys of a property exceed 4 GiB");
    }
    char* block = new char[bytes];
    auto* records = reinterpret_cast<Record*>(block);
    std::size_t textAt = (count + 1) * sizeof(Record);
    const auto place = [&](std::size_t i, std::string_view text, std::uint32_t number) {
        records[i] = Record{number, static_cast<std::uint32_t>(textAt), static_cast<std::uint32_t>(text.size())};
        if (!text.empty()) std::memcpy(block + textAt, text.data(), text.size());
        block[textAt + text.size()] = '\0';
        textAt += text.size() + 1;
    };
    for (std::size_t i = 0; i < count; ++i) {
        const Key key = (*this)[i];
        place(i, key.name, key.enumValue);
    }
    place(count, name, enumValue);
    Release();
    SetBlock(block, count + 1);
}

void PropertyKeyList::clear() { Release(); }

}  // namespace TargetOperations
