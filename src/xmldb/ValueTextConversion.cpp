#include "ValueTextConversion.h"

#include <cstdio>
#include <cstdlib>
#include <string>

#include "../support/uString.h"

namespace TargetOperations {

namespace {

int DigitValue(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return 99;
}

// Plain digits of one base that cannot overflow: the value the shared conversion's stream
// extraction gives for them. Anything else (blanks, signs, other characters, long digit
// strings) is left to that conversion, which decides those cases.
bool ReadPlainDigits(const char* digits, std::size_t count, unsigned base, std::size_t maxDigits,
                     std::uint64_t& value) {
    if (count == 0 || count > maxDigits) return false;
    std::uint64_t result = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const int digit = DigitValue(digits[i]);
        if (digit >= static_cast<int>(base)) return false;
        result = result * base + static_cast<unsigned>(digit);
    }
    value = result;
    return true;
}

}  // namespace

std::uint64_t ReadPrefixedNumber(std::string_view text) {
    // The shared conversion rejects empty text; an empty value element reads as 0.
    if (text.empty()) return 0;
    // Most values are plain numbers: read those here, without a string stream.
    std::uint64_t value = 0;
    const char* digits = text.data();
    const std::size_t length = text.size();
    if (digits[0] != '0') {
        if (ReadPlainDigits(digits, length, 10, 19, value)) return value;
    } else if (length >= 2 && (digits[1] == 'x' || digits[1] == 'X')) {
        if (ReadPlainDigits(digits + 2, length - 2, 16, 16, value)) return value;
    } else if (length == 1) {
        return 0;
    } else if (ReadPlainDigits(digits + 1, length - 1, 8, 21, value)) {
        return value;
    }
    // The rare rest goes to the shared conversion, which reads a zero-terminated copy.
    return KW_MBR::uString::ToNumeric<std::uint64_t>(std::string(text).c_str());
}

std::int32_t ReadEnumNumber(std::string_view text) {
    std::uint64_t value = 0;
    if (text.size() >= 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X')) {
        // Up to eight plain hex digits read as "%x" reads them; the rest is left to it.
        if (ReadPlainDigits(text.data() + 2, text.size() - 2, 16, 8, value)) {
            return static_cast<std::int32_t>(static_cast<std::uint32_t>(value));
        }
        unsigned int scanned = 0;
        if (std::sscanf(std::string(text).c_str(), "%x", &scanned) != 1) scanned = 0;
        return static_cast<std::int32_t>(scanned);
    }
    return ReadDecimal(text);
}

std::int32_t ReadDecimal(std::string_view text) {
    // Up to nine plain decimal digits cannot overflow: atoi gives the same for them.
    std::uint64_t value = 0;
    if (ReadPlainDigits(text.data(), text.size(), 10, 9, value)) return static_cast<std::int32_t>(value);
    return static_cast<std::int32_t>(std::atoi(std::string(text).c_str()));
}

}  // namespace TargetOperations
