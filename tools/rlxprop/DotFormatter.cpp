#include "Formatters.h"

namespace rlxprop {

namespace {

// Text inside a double-quoted DOT string.
std::string Escape(const std::string& text) {
    std::string out;
    for (char c : text) {
        if (c == '"' || c == '\\') out += '\\';
        if (c == '\n') {
            out += "\\n";
            continue;
        }
        out += c;
    }
    return out;
}

void Emit(const NodeView& node, int& next, std::string& out) {
    const int id = next++;
    std::string label = Escape(node.name) + "\\n" + KindName(node.kind);
    if (node.kind != NodeKind::Group) label += " = " + Escape(ValueText(node));
    if (!node.childKey.empty()) label += "\\nchild key: " + Escape(node.childKey);
    std::string attributes = "label=\"" + label + "\"";
    if (node.disabled) attributes += ", style=\"dashed\", color=\"gray50\", fontcolor=\"gray50\"";
    else if (!node.editable) attributes += ", style=\"filled\", fillcolor=\"gray92\"";
    if (node.haltCpu) attributes += ", penwidth=2";
    out += "  n" + std::to_string(id) + " [" + attributes + "];\n";
    for (const NodeView& child : node.children) {
        const int childId = next;
        Emit(child, next, out);
        out += "  n" + std::to_string(id) + " -> n" + std::to_string(childId) + ";\n";
    }
}

}  // namespace

std::string FormatDot(const NodeView& root, const TreeSource& source) {
    std::string out = "digraph rlxprop {\n";
    out += "  label=\"" + Escape(source.databaseFile) + "\";\n";
    out += "  rankdir=LR;\n  node [shape=box, fontname=\"Helvetica\"];\n";
    int next = 0;
    Emit(root, next, out);
    out += "}\n";
    return out;
}

}  // namespace rlxprop
