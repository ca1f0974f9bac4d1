#include "NarrowText.h"

namespace TargetOperations {

std::string NarrowText(const XMLCh* text) {
    std::string narrowed;
    NarrowTextInto(text, narrowed);
    return narrowed;
}

void NarrowTextInto(const XMLCh* text, std::string& target) {
    std::size_t length = 0;
    if (text != nullptr) {
        while (text[length] != 0) ++length;
    }
    // Within the target's capacity this allocates nothing: character data comes in many short
    // pieces (the blanks between tags) that all land in the same string.
    target.resize(length);
    NarrowUnits(text, length, target.data());
}

std::size_t NarrowUnits(const XMLCh* text, std::size_t length, char* out) {
    for (std::size_t i = 0; i < length; ++i) {
        if (text[i] == 0) return i;
        out[i] = NarrowUnit(text[i]);
    }
    return length;
}

}  // namespace TargetOperations
