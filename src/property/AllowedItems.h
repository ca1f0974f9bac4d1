// The allowed values of a string property and their attributes (part of StringProperty's layout).
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "PackedTexts.h"
#include "ValueAttribute.h"

namespace TargetOperations {

// Both lists live in one block: a small header, a record per value and per attribute, then
// every text with a zero after it. A database holds tens of thousands of string properties
// with a handful of items each; as two vectors of strings and attributes they took two blocks
// and about 120 bytes per item, in one block they take one and about 40.
//
// The lists keep their own lengths: an attribute is "at the position of" the value with the
// same index, and either list may be the longer. Texts keep their whole length, zero bytes
// included, so comparisons read exactly what the caller stored. Appending rebuilds the block;
// a property's lists are written when it is made and seldom afterwards.
class AllowedItems {
public:
    // One attribute as its fields. Read from the block, both texts point into it and a zero
    // byte follows each.
    struct Attribute {
        std::string_view keyName;
        std::string_view sameLevelKey;
        std::uint32_t enumValue;
        std::uint32_t category;
        bool haltCpu;
        bool disabled;
    };

    AllowedItems() = default;
    AllowedItems(const std::vector<std::string>& values, const std::vector<ValueAttribute>& attributes);
    AllowedItems(const AllowedItems& other);
    AllowedItems& operator=(const AllowedItems& other);
    ~AllowedItems();

    std::size_t ValueCount() const;
    std::size_t AttributeCount() const;
    bool HasValues() const { return ValueCount() != 0; }

    // The value in its whole length; a zero byte follows it.
    std::string_view Value(std::size_t at) const;
    // Position of the first value equal to `text` (whole length), or ValueCount().
    std::size_t FindValue(std::string_view text) const;
    // True when some value holds a zero byte inside its length.
    bool AnyValueHoldsZero() const;

    Attribute AttributeAt(std::size_t at) const;
    ValueAttribute MakeValueAttribute(std::size_t at) const;
    bool HoldsAttribute(const ValueAttribute& attribute) const;  // all six fields alike
    void SetDisabled(std::size_t at, bool disabled);

    void AddValue(std::string_view value);
    void AddAttribute(const ValueAttribute& attribute);
    void AppendAttributesTo(std::vector<ValueAttribute>& out) const;
    void DropValues();
    void Clear();

private:
    struct Block;
    struct AttributeRecord;

    // Writes a block of these values and attributes: one pass to size it, one to fill it.
    template <typename ValueOf, typename AttributeOf>
    static Block* Build(std::size_t valueCount, ValueOf valueAt, std::size_t attributeCount, AttributeOf attributeAt);
    static Block* Copy(const Block* block);
    void Adopt(Block* block);  // frees the current block
    const PackedText* Values() const;
    const AttributeRecord* Attributes() const;
    AttributeRecord* Attributes();
    std::string_view Text(PackedText text) const;

    Block* m_block = nullptr;  // nullptr while both lists are empty
};

}  // namespace TargetOperations
