// --set NAME=VALUE: gives the named node of a tree a new value through its typed
// interface, as a debugger's user does, and tells when the property refuses it.
#pragma once

#include <cstdint>
#include <string>

#include <RLXPropertyHelper.h>

namespace rlxprop {

struct Assignment {
    std::string name;
    std::string value;
};

// Splits "NAME=VALUE" at the first "="; throws ToolError(ExitUsage) without one.
Assignment ParseAssignment(const std::string& text);

// Reads a whole text as an unsigned number: decimal, or hexadecimal after "0x"/"0X".
// Throws ToolError(ExitUsage) naming `what` for anything else or an overflow.
std::uint64_t ParseNumber(const std::string& text, const std::string& what);

// Sets the value of the node named assignment.name in root. Throws ToolError with
// ExitUnknownProperty when no node has that name, ExitUsage for a malformed value and
// ExitRefused, listing the allowed values or the range, when the property drops it.
void Assign(TargetOperations::IProperty* root, const Assignment& assignment);

}  // namespace rlxprop
