#include "PropertyKeyList.h"

#include <cstring>

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
    return std::size_t{last.name.at} + last.name.length + 1;
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
    return Key{ReadPacked(Block(), record.name), record.enumValue};
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
    std::size_t bytes = (count + 1) * sizeof(Record) + PackedBytes(name);
    for (std::size_t i = 0; i < count; ++i) bytes += PackedBytes((*this)[i].name);
    // A block within 4 GiB holds far fewer records than the count's 31 bits could number.
    CheckPackedBlockBytes(bytes, "the keys of a property exceed 4 GiB");
    char* block = new char[bytes];
    auto* records = reinterpret_cast<Record*>(block);
    PackedTextWriter texts(block, (count + 1) * sizeof(Record));
    for (std::size_t i = 0; i < count; ++i) {
        const Key key = (*this)[i];
        records[i] = Record{key.enumValue, texts.Place(key.name)};
    }
    records[count] = Record{enumValue, texts.Place(name)};
    Release();
    SetBlock(block, count + 1);
}

void PropertyKeyList::clear() { Release(); }

}  // namespace TargetOperations
