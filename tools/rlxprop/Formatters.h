// The three ways the tool prints a property tree.
#pragma once

#include <string>

#include "NodeView.h"
#include "Style.h"

namespace rlxprop {

// What the tree was read from; shown in the headers of the JSON and DOT outputs.
struct TreeSource {
    std::string directory;
    std::string databaseFile;
    std::uint32_t databaseNumber = 0xFFFFFFFFu;
};

// An indented tree with box-drawing branches; `detailed` lists every field of every node.
std::string FormatText(const NodeView& root, const Style& style, bool detailed = false);
// The documented "rlxprop-tree" JSON document (docs/rlxprop-json.md).
std::string FormatJson(const NodeView& root, const TreeSource& source);
// A Graphviz digraph of the tree.
std::string FormatDot(const NodeView& root, const TreeSource& source);

// The value of a node as the text output shows it (hex for locations).
std::string ValueText(const NodeView& node);
// A number of an integer node in the node's display base: decimal when it asks for it,
// hexadecimal otherwise.
std::string NumberText(const NodeView& node, std::uint64_t number);

}  // namespace rlxprop
