// How the property database reader turns element content into numbers (internal).
#pragma once

#include <cstdint>
#include <string_view>

namespace TargetOperations {

// "0x"/"0X" hexadecimal, another leading "0" octal, else decimal; empty text gives 0.
std::uint64_t ReadPrefixedNumber(std::string_view text);

// "0x"/"0X" at the start: scanned as "%x"; otherwise decimal as by atoi.
std::int32_t ReadEnumNumber(std::string_view text);

// Decimal as by atoi only, so "0x10" reads as 0.
std::int32_t ReadDecimal(std::string_view text);

}  // namespace TargetOperations
