#include "ValueAssignment.h"

#include <algorithm>
#include <cctype>
#include <cinttypes>
#include <cstdio>
#include <cstring>
#include <memory>

#include "Formatters.h"
#include "NodeView.h"
#include "Ref.h"
#include "ToolError.h"

using namespace TargetOperations;

namespace rlxprop {

namespace {

std::string Lower(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(), [](unsigned char c) { return std::tolower(c); });
    return text;
}

bool ParseBoolean(const std::string& text, const std::string& name) {
    const std::string word = Lower(text);
    if (word == "true" || word == "1" || word == "yes" || word == "on") return true;
    if (word == "false" || word == "0" || word == "no" || word == "off") return false;
    throw ToolError(ExitUsage, "\"" + text + "\" is not a boolean for " + name + " (use true or false)");
}

[[noreturn]] void Refuse(const std::string& name, const std::string& value, const std::string& rule) {
    throw ToolError(ExitRefused, name + " refused the value \"" + value + "\": " + rule);
}

void AssignString(IStringProperty& string, const std::string& name, const std::string& value) {
    string.SetValue(value.c_str());
    if (value == string.GetValue()) return;
    std::uint32_t count = 0;
    string.HasAllowedValues(count);
    std::vector<const char*> allowed(count, nullptr);
    if (count != 0) string.GetAllowedValues(allowed.data());
    std::string list;
    for (const char* item : allowed) list += (list.empty() ? "\"" : ", \"") + std::string(item) + "\"";
    Refuse(name, value, "allowed values are " + list);
}

void AssignLocation(IProperty* node, const std::string& name, const std::string& text) {
    // VALUE or VALUE@PAGE; only page 0 is offered.
    const std::string::size_type at = text.find('@');
    const std::uint64_t address = ParseNumber(text.substr(0, at), name);
    const std::uint64_t page = at == std::string::npos ? 0 : ParseNumber(text.substr(at + 1), name + " page");
    if (page > 0xFFFFFFFFull) throw ToolError(ExitUsage, "page " + text.substr(at + 1) + " of " + name + " is too large");

    if (Ref<ILocationProperty2> wide{CastILocation2(node)}) {
        wide->SetValue64(Debugger::Address(address), static_cast<std::uint32_t>(page));
        std::uint32_t currentPage = 0;
        if (wide->GetValue64(currentPage).GetAddress() != address || page != 0) {
            Refuse(name, text, "only page 0 is offered");
        }
        return;
    }
    Ref<ILocationProperty> narrow{CastILocation(node)};
    if (address > 0xFFFFFFFFull) Refuse(name, text, "a 32-bit location takes 0x0..0xffffffff");
    narrow->SetValue(static_cast<std::uint32_t>(address), static_cast<std::uint32_t>(page));
    std::uint32_t currentPage = 0;
    if (narrow->GetValue(currentPage) != address || page != 0) Refuse(name, text, "only page 0 is offered");
}

}  // namespace

Assignment ParseAssignment(const std::string& text) {
    const std::string::size_type equals = text.find('=');
    if (equals == std::string::npos || equals == 0) {
        throw ToolError(ExitUsage, "--set expects NAME=VALUE, got \"" + text + "\"");
    }
    return {text.substr(0, equals), text.substr(equals + 1)};
}

std::uint64_t ParseNumber(const std::string& text, const std::string& what) {
    const bool hex = text.size() > 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X');
    const std::string digits = hex ? text.substr(2) : text;
    const unsigned base = hex ? 16 : 10;
    if (digits.empty()) throw ToolError(ExitUsage, "malformed number \"" + text + "\" for " + what);
    std::uint64_t value = 0;
    for (char c : digits) {
        unsigned digit;
        if (c >= '0' && c <= '9') digit = static_cast<unsigned>(c - '0');
        else if (hex && c >= 'a' && c <= 'f') digit = static_cast<unsigned>(c - 'a' + 10);
        else if (hex && c >= 'A' && c <= 'F') digit = static_cast<unsigned>(c - 'A' + 10);
        else throw ToolError(ExitUsage, "malformed number \"" + text + "\" for " + what);
        if (value > (UINT64_MAX - digit) / base) throw ToolError(ExitUsage, "number \"" + text + "\" for " + what + " is too large");
        value = value * base + digit;
    }
    return value;
}

void Assign(IProperty* root, const Assignment& assignment) {
    Ref<IProperty> node{FindNode(root, assignment.name)};
    if (!node) throw ToolError(ExitUnknownProperty, "no property named \"" + assignment.name + "\" in the tree");
    const std::string& name = assignment.name;
    const std::string& value = assignment.value;

    if (Ref<IBooleanProperty> boolean{CastIBoolean(node.get())}) {
        boolean->SetValue(ParseBoolean(value, name));
    } else if (Ref<IIntegerProperty> integer{CastIInteger(node.get())}) {
        const std::uint64_t number = ParseNumber(value, name);
        integer->SetValue(number);
        if (integer->GetValue() != number) {
            const NodeView view = ReadNode(node.get(), 0);
            Refuse(name, value, "the range is " + NumberText(view, view.rangeLow) + ".." + NumberText(view, view.rangeHigh));
        }
    } else if (Ref<ILocationProperty> location{CastILocation(node.get())}) {
        AssignLocation(node.get(), name, value);
    } else if (Ref<IStringProperty> string{CastIString(node.get())}) {
        AssignString(*string, name, value);
    } else {
        throw ToolError(ExitUsage, name + " is a group and holds no value");
    }
}

}  // namespace rlxprop
