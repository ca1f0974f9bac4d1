#include <cinttypes>
#include <cstdio>

#include "Formatters.h"

namespace rlxprop {

namespace {

std::string Hex(std::uint64_t value, int digits) {
    char buffer[32];
    std::snprintf(buffer, sizeof buffer, "0x%0*" PRIx64, digits, value);
    return buffer;
}

std::string Decimal(std::uint64_t value) {
    char buffer[32];
    std::snprintf(buffer, sizeof buffer, "%" PRIu64, value);
    return buffer;
}

std::string Quoted(const std::string& text) { return "\"" + text + "\""; }

std::string AllowedList(const NodeView& node, const Style& style) {
    std::string text;
    for (const AllowedValueView& item : node.allowed) {
        if (!text.empty()) text += ", ";
        std::string entry = item.selected ? "*" + item.value : item.value;
        if (item.disabled) entry = style.Bad(entry + " (disabled)");
        text += entry;
    }
    return "[" + text + "]";
}

std::string Flags(const NodeView& node, const Style& style) {
    std::string flags;
    auto add = [&flags](const std::string& flag) { flags += (flags.empty() ? "" : ", ") + flag; };
    if (!node.editable) add("read-only");
    if (node.disabled) add(style.Bad("disabled"));
    if (node.haltCpu) add(style.Warn("halts CPU"));
    return flags.empty() ? "" : "  [" + flags + "]";
}

std::string SummaryLine(const NodeView& node, const Style& style) {
    std::string line = style.Name(node.name) + "  " + style.Kind(KindName(node.kind));
    if (node.kind != NodeKind::Group) line += " = " + style.Value(ValueText(node));
    switch (node.kind) {
        case NodeKind::Integer:
            line += style.Dim("  range " + NumberText(node, node.rangeLow) + ".." + NumberText(node, node.rangeHigh));
            break;
        case NodeKind::Location:
        case NodeKind::Location64:
            if (node.page != 0) line += style.Dim("  page " + Decimal(node.page));
            break;
        case NodeKind::String:
            if (!node.allowed.empty()) line += "  " + AllowedList(node, style);
            break;
        default: break;
    }
    line += Flags(node, style);
    if (!node.childKey.empty()) line += style.Dim("  child key " + Quoted(node.childKey));
    if (!node.sameLevelKey.empty()) line += style.Dim("  same-level key " + Quoted(node.sameLevelKey));
    return line;
}

void DetailLines(const NodeView& node, const std::string& indent, std::string& out) {
    auto line = [&](const std::string& label, const std::string& value) {
        out += indent + label + ": " + value + "\n";
    };
    line("description", Quoted(node.description));
    line("kind", KindName(node.kind));
    if (node.kind != NodeKind::Group) line("value", ValueText(node));
    line("editable", node.editable ? "yes" : "no");
    line("disabled", node.disabled ? "yes" : "no");
    line("halts CPU", node.haltCpu ? "yes" : "no");
    line("category", Decimal(node.category));
    line("enum value", std::to_string(node.enumValue));
    line("child key", Quoted(node.childKey));
    line("same-level key", Quoted(node.sameLevelKey));
    if (node.kind == NodeKind::Integer) {
        line("range", NumberText(node, node.rangeLow) + ".." + NumberText(node, node.rangeHigh));
        line("display", node.decimalDisplay ? "decimal" : "default");
    }
    if (node.kind == NodeKind::Location || node.kind == NodeKind::Location64) {
        line("page", Decimal(node.page));
        line("cookie", Hex(node.cookie, 8));
    }
    if (node.kind == NodeKind::String) {
        line("allowed values", std::to_string(node.allowed.size()));
        for (const AllowedValueView& item : node.allowed) {
            std::string text = (item.selected ? "* " : "  ") + Quoted(item.value);
            if (item.hasAttribute) {
                text += "  key " + Quoted(item.key) + ", enum " + Decimal(item.enumValue) + ", category " +
                        Decimal(item.category);
                if (item.haltCpu) text += ", halts CPU";
                if (!item.sameLevelKey.empty()) text += ", same-level key " + Quoted(item.sameLevelKey);
            }
            if (item.disabled) text += "  (disabled)";
            out += indent + "  " + text + "\n";
        }
    }
}

void Walk(const NodeView& node, const std::string& prefix, const std::string& childPrefix, const Style& style,
          bool detailed, std::string& out) {
    out += prefix + SummaryLine(node, style) + "\n";
    if (detailed) DetailLines(node, childPrefix + (node.children.empty() ? "    " : "│   "), out);
    for (std::size_t i = 0; i < node.children.size(); ++i) {
        const bool last = i + 1 == node.children.size();
        Walk(node.children[i], childPrefix + (last ? "└── " : "├── "), childPrefix + (last ? "    " : "│   "),
             style, detailed, out);
    }
}

}  // namespace

std::string NumberText(const NodeView& node, std::uint64_t number) {
    return node.decimalDisplay ? Decimal(number) : Hex(number, 1);
}

std::string ValueText(const NodeView& node) {
    switch (node.kind) {
        case NodeKind::Boolean: return node.boolValue ? "true" : "false";
        case NodeKind::Integer: return NumberText(node, node.numberValue);
        case NodeKind::Location: return Hex(node.numberValue, 8);
        case NodeKind::Location64: return Hex(node.numberValue, 16);
        case NodeKind::String: return Quoted(node.stringValue);
        case NodeKind::Group: break;
    }
    return "";
}

std::string FormatText(const NodeView& root, const Style& style, bool detailed) {
    std::string out;
    Walk(root, "", "", style, detailed, out);
    return out;
}

}  // namespace rlxprop
