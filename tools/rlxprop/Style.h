// Terminal colours: used only when standard output is a terminal, and never with
// --no-color or a non-empty NO_COLOR.
#pragma once

#include <string>

namespace rlxprop {

class Style {
public:
    explicit Style(bool enabled) : m_enabled(enabled) {}

    std::string Name(const std::string& text) const { return Wrap("1", text); }
    std::string Kind(const std::string& text) const { return Wrap("36", text); }
    std::string Value(const std::string& text) const { return Wrap("32", text); }
    std::string Dim(const std::string& text) const { return Wrap("2", text); }
    std::string Warn(const std::string& text) const { return Wrap("33", text); }
    std::string Bad(const std::string& text) const { return Wrap("31", text); }

private:
    std::string Wrap(const char* code, const std::string& text) const {
        if (!m_enabled || text.empty()) return text;
        return std::string("\x1b[") + code + "m" + text + "\x1b[0m";
    }
    bool m_enabled;
};

// Decides from the flag, the NO_COLOR variable and whether standard output is a terminal.
bool ColourWanted(bool noColourFlag);

}  // namespace rlxprop
