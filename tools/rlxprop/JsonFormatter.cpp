#include <nlohmann/json.hpp>

#include "Formatters.h"

namespace rlxprop {

namespace {

using nlohmann::ordered_json;

ordered_json NodeJson(const NodeView& node) {
    ordered_json j;
    j["name"] = node.name;
    j["description"] = node.description;
    j["kind"] = KindName(node.kind);
    switch (node.kind) {
        case NodeKind::Group: j["value"] = nullptr; break;
        case NodeKind::Boolean: j["value"] = node.boolValue; break;
        case NodeKind::String: j["value"] = node.stringValue; break;
        default: j["value"] = node.numberValue; break;
    }
    j["editable"] = node.editable;
    j["disabled"] = node.disabled;
    j["haltCpu"] = node.haltCpu;
    j["category"] = node.category;
    j["enumValue"] = node.enumValue;
    j["childKey"] = node.childKey;
    j["sameLevelKey"] = node.sameLevelKey;
    if (node.kind == NodeKind::Integer) {
        j["range"] = {{"low", node.rangeLow}, {"high", node.rangeHigh}};
        j["display"] = node.decimalDisplay ? "decimal" : "default";
    } else {
        j["range"] = nullptr;
        j["display"] = nullptr;
    }
    if (node.kind == NodeKind::Location || node.kind == NodeKind::Location64) {
        j["page"] = node.page;
        j["cookie"] = node.cookie;
    } else {
        j["page"] = nullptr;
        j["cookie"] = nullptr;
    }
    ordered_json allowed = ordered_json::array();
    for (const AllowedValueView& item : node.allowed) {
        ordered_json a;
        a["value"] = item.value;
        a["selected"] = item.selected;
        a["disabled"] = item.disabled;
        if (item.hasAttribute) {
            a["key"] = item.key;
            a["enumValue"] = item.enumValue;
            a["category"] = item.category;
            a["haltCpu"] = item.haltCpu;
            a["sameLevelKey"] = item.sameLevelKey;
        } else {
            a["key"] = nullptr;
            a["enumValue"] = nullptr;
            a["category"] = nullptr;
            a["haltCpu"] = nullptr;
            a["sameLevelKey"] = nullptr;
        }
        allowed.push_back(a);
    }
    j["allowedValues"] = allowed;
    ordered_json children = ordered_json::array();
    for (const NodeView& child : node.children) children.push_back(NodeJson(child));
    j["children"] = children;
    return j;
}

}  // namespace

std::string FormatJson(const NodeView& root, const TreeSource& source) {
    ordered_json doc;
    doc["format"] = "rlxprop-tree";
    doc["version"] = 1;
    doc["source"] = {{"directory", source.directory}, {"databaseFile", source.databaseFile}};
    doc["root"] = NodeJson(root);
    return doc.dump(2) + "\n";
}

}  // namespace rlxprop
