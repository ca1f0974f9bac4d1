#include "ValueTextConversion.h"

#include <cstdio>
#include <cstdlib>

#include "../support/uString.h"

namespace TargetOperations {

std::uint64_t ReadPrefixedNumber(const std::string& text) {
    // The shared conversion rejects empty text; an empty value element reads as 0.
    if (text.empty()) return 0;
    return KW_MBR::uString::ToNumeric<std::uint64_t>(text.c_str());
}

std::int32_t ReadEnumNumber(const std::string& text) {
    if (text.size() >= 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X')) {
        unsigned int value = 0;
        if (std::sscanf(text.c_str(), "%x", &value) != 1) value = 0;
        return static_cast<std::int32_t>(value);
    }
    return static_cast<std::int32_t>(std::atoi(text.c_str()));
}

std::int32_t ReadDecimal(const std::string& text) { return static_cast<std::int32_t>(std::atoi(text.c_str())); }

}  // namespace TargetOperations
