#include "AllowedItems.h"

#include <cstring>
#include <limits>
#include <new>
#include <stdexcept>

namespace TargetOperations {

// Header, value records, attribute records, texts; every part 4-byte aligned.
struct AllowedItems::Block {
    std::uint32_t bytes;
    std::uint32_t valueCount;
    std::uint32_t attributeCount;
};

struct AllowedItems::AttributeRecord {
    TextAt keyName;
    TextAt sameLevelKey;
    std::uint32_t enumValue;
    std::uint32_t category;
    bool haltCpu;
    bool disabled;
};

// Writes a block in two passes over the items it is given: one to size it, one to fill it.
class AllowedItems::Builder {
public:
    template <typename ValueAt, typename AttributeAt>
    static Block* Build(std::size_t valueCount, ValueAt valueAt, std::size_t attributeCount, AttributeAt attributeAt) {
        if (valueCount == 0 && attributeCount == 0) return nullptr;
        const std::size_t recordBytes =
            sizeof(Block) + valueCount * sizeof(TextAt) + attributeCount * sizeof(AttributeRecord);
        std::size_t bytes = recordBytes;
        for (std::size_t i = 0; i < valueCount; ++i) bytes += valueAt(i).size() + 1;
        for (std::size_t i = 0; i < attributeCount; ++i) {
            const Attribute attribute = attributeAt(i);
            bytes += attribute.keyName.size() + 1 + attribute.sameLevelKey.size() + 1;
        }
        if (bytes > std::numeric_limits<std::uint32_t>::max()) {
            throw std::length_error("allowed values of a string property exceed 4 GiB");
        }

        auto* block = static_cast<Block*>(::operator new(bytes));
        block->bytes = static_cast<std::uint32_t>(bytes);
        block->valueCount = static_cast<std::uint32_t>(valueCount);
        block->attributeCount = static_cast<std::uint32_t>(attributeCount);
        char* base = reinterpret_cast<char*>(block);
        std::size_t textAt = recordBytes;
        auto place = [&](std::string_view text) {
            TextAt placed{static_cast<std::uint32_t>(textAt), static_cast<std::uint32_t>(text.size())};
            if (!text.empty()) std::memcpy(base + textAt, text.data(), text.size());
            base[textAt + text.size()] = '\0';
            textAt += text.size() + 1;
            return placed;
        };

        auto* values = reinterpret_cast<TextAt*>(base + sizeof(Block));
        for (std::size_t i = 0; i < valueCount; ++i) values[i] = place(valueAt(i));
        auto* attributes = reinterpret_cast<AttributeRecord*>(values + valueCount);
        for (std::size_t i = 0; i < attributeCount; ++i) {
            const Attribute attribute = attributeAt(i);
            AttributeRecord& record = attributes[i];
            record.keyName = place(attribute.keyName);
            record.sameLevelKey = place(attribute.sameLevelKey);
            record.enumValue = attribute.enumValue;
            record.category = attribute.category;
            record.haltCpu = attribute.haltCpu;
            record.disabled = attribute.disabled;
        }
        return block;
    }
};

namespace {

AllowedItems::Attribute FieldsOf(const ValueAttribute& attribute) {
    return AllowedItems::Attribute{
        attribute.KeyName(), attribute.SameLevelKey(), nullptr, nullptr, attribute.EnumValue(), attribute.Category(),
        attribute.HaltCpu(), attribute.IsDisabled()};
}

}  // namespace

AllowedItems::AllowedItems(const std::vector<std::string>& values, const std::vector<ValueAttribute>& attributes)
    : m_block(Builder::Build(
          values.size(), [&](std::size_t i) { return std::string_view(values[i]); }, attributes.size(),
          [&](std::size_t i) { return FieldsOf(attributes[i]); })) {}

AllowedItems::AllowedItems(const AllowedItems& other) : m_block(Copy(other.m_block)) {}

AllowedItems& AllowedItems::operator=(const AllowedItems& other) {
    if (this != &other) {
        Block* copied = Copy(other.m_block);
        ::operator delete(m_block);
        m_block = copied;
    }
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

std::size_t AllowedItems::ValueCount() const { return m_block != nullptr ? m_block->valueCount : 0; }
std::size_t AllowedItems::AttributeCount() const { return m_block != nullptr ? m_block->attributeCount : 0; }

const AllowedItems::TextAt* AllowedItems::Values() const {
    return reinterpret_cast<const TextAt*>(reinterpret_cast<const char*>(m_block) + sizeof(Block));
}

const AllowedItems::AttributeRecord* AllowedItems::Attributes() const {
    return reinterpret_cast<const AttributeRecord*>(Values() + m_block->valueCount);
}

AllowedItems::AttributeRecord* AllowedItems::Attributes() {
    return const_cast<AttributeRecord*>(static_cast<const AllowedItems*>(this)->Attributes());
}

std::string_view AllowedItems::Text(const TextAt& text) const {
    return std::string_view(TextPointer(text), text.length);
}

const char* AllowedItems::TextPointer(const TextAt& text) const {
    return reinterpret_cast<const char*>(m_block) + text.at;
}

std::string_view AllowedItems::Value(std::size_t at) const { return Text(Values()[at]); }
const char* AllowedItems::ValueText(std::size_t at) const { return TextPointer(Values()[at]); }

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
        const std::string_view value = Value(i);
        if (value.find('\0') != std::string_view::npos) return true;
    }
    return false;
}

AllowedItems::Attribute AllowedItems::AttributeAt(std::size_t at) const {
    const AttributeRecord& record = Attributes()[at];
    return Attribute{Text(record.keyName),
                     Text(record.sameLevelKey),
                     TextPointer(record.keyName),
                     TextPointer(record.sameLevelKey),
                     record.enumValue,
                     record.category,
                     record.haltCpu,
                     record.disabled};
}

ValueAttribute AllowedItems::MakeValueAttribute(std::size_t at) const {
    const Attribute fields = AttributeAt(at);
    ValueAttribute attribute(std::string(fields.keyName), fields.enumValue, fields.category, fields.haltCpu,
                             std::string(fields.sameLevelKey));
    attribute.SetDisabled(fields.disabled);
    return attribute;
}

bool AllowedItems::HoldsAttribute(const ValueAttribute& attribute) const {
    const Attribute wanted = FieldsOf(attribute);
    const std::size_t count = AttributeCount();
    for (std::size_t i = 0; i < count; ++i) {
        const Attribute held = AttributeAt(i);
        if (held.keyName == wanted.keyName && held.enumValue == wanted.enumValue && held.category == wanted.category &&
            held.haltCpu == wanted.haltCpu && held.sameLevelKey == wanted.sameLevelKey &&
            held.disabled == wanted.disabled) {
            return true;
        }
    }
    return false;
}

void AllowedItems::SetDisabled(std::size_t at, bool disabled) { Attributes()[at].disabled = disabled; }

void AllowedItems::AddValue(std::string_view value) {
    const std::size_t values = ValueCount();
    Block* rebuilt = Builder::Build(
        values + 1, [&](std::size_t i) { return i < values ? Value(i) : value; }, AttributeCount(),
        [&](std::size_t i) { return AttributeAt(i); });
    ::operator delete(m_block);
    m_block = rebuilt;
}

void AllowedItems::AddAttribute(const ValueAttribute& attribute) {
    const std::size_t attributes = AttributeCount();
    Block* rebuilt = Builder::Build(
        ValueCount(), [&](std::size_t i) { return Value(i); }, attributes + 1,
        [&](std::size_t i) { return i < attributes ? AttributeAt(i) : FieldsOf(attribute); });
    ::operator delete(m_block);
    m_block = rebuilt;
}

void AllowedItems::AppendAttributesTo(std::vector<ValueAttribute>& out) const {
    const std::size_t count = AttributeCount();
    out.reserve(out.size() + count);
    for (std::size_t i = 0; i < count; ++i) out.push_back(MakeValueAttribute(i));
}

void AllowedItems::DropValues() {
    if (ValueCount() == 0) return;
    Block* rebuilt = Builder::Build(
        0, [&](std::size_t i) { return Value(i); }, AttributeCount(), [&](std::size_t i) { return AttributeAt(i); });
    ::operator delete(m_block);
    m_block = rebuilt;
}

void AllowedItems::Clear() {
    ::operator delete(m_block);
    m_block = nullptr;
}

}  // namespace TargetOperations
