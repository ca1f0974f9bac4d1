// Everything the tool shows of one property, read once through the library's interfaces so
// that the text, JSON and DOT outputs agree.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <RLXPropertyHelper.h>

namespace rlxprop {

enum class NodeKind { Group, Boolean, Integer, Location, Location64, String };

const char* KindName(NodeKind kind);

struct AllowedValueView {
    std::string value;
    bool selected = false;
    bool disabled = false;
    bool hasAttribute = false;
    std::string key;
    std::uint32_t enumValue = 0;
    std::uint32_t category = 0;
    bool haltCpu = false;
    std::string sameLevelKey;
};

struct NodeView {
    std::string name;
    std::string description;
    NodeKind kind = NodeKind::Group;
    bool editable = true;
    bool disabled = false;
    bool haltCpu = false;
    std::uint32_t category = 0;
    std::int32_t enumValue = 0;
    std::string childKey;
    std::string sameLevelKey;

    bool boolValue = false;
    std::uint64_t numberValue = 0;  // integers and both location kinds
    std::string stringValue;
    std::uint32_t page = 0;
    std::uint32_t cookie = 0;
    std::uint64_t rangeLow = 0;
    std::uint64_t rangeHigh = 0;
    bool decimalDisplay = false;
    std::vector<AllowedValueView> allowed;  // strings only, as the property presents them

    std::vector<NodeView> children;
};

// Reads `property` and, down to `depth` levels below it (negative: all), its sub-properties.
NodeView ReadNode(TargetOperations::IProperty* property, int depth = -1);

// Finds the first node named `name` in pre-order (or the node at a "/"-separated path of
// names); returns a new reference or null.
TargetOperations::IProperty* FindNode(TargetOperations::IProperty* root, const std::string& name);

}  // namespace rlxprop
