#include "AllowedItems.h"

#include <cstring>
#include <new>

namespace TargetOperations {

// Header, value records, attribute records, texts; every part 4-byte aligned.
struct AllowedItems::Block {
    std::uint32_t bytes;
    std::uint32_t valueCount;
    std::uint32_t attributeCount;
};

struct AllowedItems::AttributeRecord {
    PackedText keyName;
    PackedText sameLevelKey;
    std::uint32_t enumValue;
    std::uint32_t category;
    bool haltCpu;
    bool disabled;
};

template <typename ValueOf, typename AttributeOf>
AllowedItems::Block* AllowedItems::Build(std::size_t valueCount, ValueOf valueAt, std::size_t attributeCount,
                                         AttributeOf attributeAt) {
    if (valueCount == 0 && attributeCount == 0) return nullptr;
    const std::size_t recordBytes =
        sizeof(Block) + valueCount * sizeof(PackedText) + attributeCount * sizeof(AttributeRecord);
    std::size_t bytes = recordBytes;
    for (std::size_t i = 0; i < valueCount; ++i) bytes += PackedBytes(valueAt(i));
    for (std::size_t i = 0; i < attributeCount; ++i) {
        const Attribute attribute = attributeAt(i);
        bytes += PackedBytes(attribute.keyName) + PackedBytes(attribute.sameLevelKey);
    }
    CheckPackedBlockBytes(bytes, "allowed values of a string property exceed 4 GiB");

    auto* block = static_cast<Block*>(::operator new(bytes));
    block->bytes = static_cast<std::uint32_t>(bytes);
    block->valueCount = static_cast<std::uint32_t>(valueCount);
    block->attributeCount = static_cast<std::uint32_t>(attributeCount);
    char* base = reinterpret_cast<char*>(block);
    PackedTextWriter texts(base, recordBytes);
    auto* values = reinterpret_cast<PackedText*>(base + sizeof(Block));
    for (std::size_t i = 0; i < valueCount; ++i) values[i] = texts.Place(valueAt(i));
    auto* attributes = reinterpret_cast<AttributeRecord*>(values + valueCount);
    for (std::size_t i = 0; i < attributeCount; ++i) {
        const Attribute attribute = attributeAt(i);
        attributes[i] = AttributeRecord{texts.Place(attribute.keyName), texts.Place(attribute.sameLevelKey),
                                        attribute.enumValue,           attribute.category,
                                        attribute.haltCpu,             attribute.disabled};
    }
    return block;
}

namespace {

AllowedItems::Attribute FieldsOf(const ValueAttribute& attribute) {
    return AllowedItems::Attribute{attribute.KeyName(),  attribute.SameLevelKey(), attribute.EnumValue(),
                                   attribute.Category(), attribute.HaltCpu(),      attribute.IsDisabled()};
}

}  // namespace

AllowedItems::AllowedItems(const std::vector<std::string>& values, const std::vector<ValueAttribute>& attributes)
    : m_block(Build(
          values.size(), [&](std::size_t i) { return std::string_view(values[i]); }, attributes.size(),
          [&](std::size_t i) { return FieldsOf(attributes[i]); })) {}

AllowedItems::AllowedItems(const AllowedItems& other) : m_block(Copy(other.m_block)) {}

AllowedItems& AllowedItems::operator=(const AllowedItems& other) {
    if (this != &other) Adopt(Copy(other.m_block));
    return *this;
}

AllowedItems::~AllowedItems() { ::operator delete(m_block); }

// Records hold offsets from the start of the block, so a copy is the same bytes.
AllowedItems::Block* AllowedItems::Copy(const Block* block) {
    if (block == nullptr) return nullptr;
    void* copied = ::operator new(block->bytes);
    std::memcpy(copied, block, block->bytes);
    return static_cast<Block*>(copied);
}

void AllowedItems::Adopt(Block* block) {
    ::operator delete(m_block);
    m_block = block;
}

std::size_t AllowedItems::ValueCount() const { return m_block != nullptr ? m_block->valueCount : 0; }
std::size_t AllowedItems::AttributeCount() const { return m_block != nullptr ? m_block->attributeCount : 0; }

const PackedText* AllowedItems::Values() const {
    return reinterpret_cast<const PackedText*>(reinterpret_cast<const char*>(m_block) + sizeof(Block));
}

const AllowedItems::AttributeRecord* AllowedItems::Attributes() const {
    return reinterpret_cast<const AttributeRecord*>(Values() + m_block->valueCount);
}

AllowedItems::AttributeRecord* AllowedItems::Attributes() {
    return const_cast<AttributeRecord*>(static_cast<const AllowedItems*>(this)->Attributes());
}

std::string_view AllowedItems::Text(PackedText text) const {
    return ReadPacked(reinterpret_cast<const char*>(m_block), text);
}

std::string_view AllowedItems::Value(std::size_t at) const { return Text(Values()[at]); }

std::size_t AllowedItems::FindValue(std::string_view text) const {
    const std::size_t count = ValueCount();
    for (std::size_t i = 0; i < count; ++i) {
        if (Value(i) == text) return i;
    }
    return count;
}

bool AllowedItems::AnyValueHoldsZero() const {
    const std::size_t count = ValueCount();
    for (std::size_t i = 0; i < count; ++i) {
        if (Value(i).find('\0') != std::string_view::npos) return true;
    }
    return false;
}

AllowedItems::Attribute AllowedItems::AttributeAt(std::size_t at) const {
    const AttributeRecord& record = Attributes()[at];
    return Attribute{Text(record.keyName), Text(record.sameLevelKey), record.enumValue,
                     record.category,      record.haltCpu,            record.disabled};
}

ValueAttribute AllowedItems::MakeValueAttribute(std::size_t at) const {
    const Attribute fields = AttributeAt(at);
    ValueAttribute attribute(std::string(fields.keyName), fields.enumValue, fields.category, fields.haltCpu,
                             std::string(fields.sameLevelKey));
    attribute.SetDisabled(fields.disabled);
    return attribute;
}

bool AllowedItems::HoldsAttribute(const ValueAttribute& attribute) const {
    // Only an added attribute asks, seldom: the attribute's own comparison decides.
    const std::size_t count = AttributeCount();
    for (std::size_t i = 0; i < count; ++i) {
        if (MakeValueAttribute(i) == attribute) return true;
    }
    return false;
}

void AllowedItems::SetDisabled(std::size_t at, bool disabled) { Attributes()[at].disabled = disabled; }

void AllowedItems::AddValue(std::string_view value) {
    const std::size_t values = ValueCount();
    Adopt(Build(
        values + 1, [&](std::size_t i) { return i < values ? Value(i) : value; }, AttributeCount(),
        [&](std::size_t i) { return AttributeAt(i); }));
}

void AllowedItems::AddAttribute(const ValueAttribute& attribute) {
    const std::size_t attributes = AttributeCount();
    Adopt(Build(
        ValueCount(), [&](std::size_t i) { return Value(i); }, attributes + 1,
        [&](std::size_t i) { return i < attributes ? AttributeAt(i) : FieldsOf(attribute); }));
}

void AllowedItems::AppendAttributesTo(std::vector<ValueAttribute>& out) const {
    const std::size_t count = AttributeCount();
    out.reserve(out.size() + count);
    for (std::size_t i = 0; i < count; ++i) out.push_back(MakeValueAttribute(i));
}

void AllowedItems::DropValues() {
    if (ValueCount() == 0) return;
    Adopt(Build(
        0, [&](std::size_t i) { return Value(i); }, AttributeCount(), [&](std::size_t i) { return AttributeAt(i); }));
}

void AllowedItems::Clear() { Adopt(nullptr); }

}  // namespace TargetOperations
