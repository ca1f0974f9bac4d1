// Text helpers shared by the readers, the exported functions and the logger (internal).
#pragma once

#include <cstdint>
#include <ios>
#include <sstream>
#include <stdexcept>
#include <string>
#include <type_traits>

namespace KW_MBR {

class source_utilities_error : public std::runtime_error {
public:
    explicit source_utilities_error(const std::string& message) : std::runtime_error(message) {}
};

class uString {
public:
    class error : public source_utilities_error {
    public:
        explicit error(const std::string& message) : source_utilities_error(message) {}
    };

    // C-style base prefixes: "0x"/"0X" hexadecimal, another leading "0" octal, else decimal.
    // Reading stops at the first character that does not fit the base.
    template <typename T>
    static T ToNumeric(const char* text);

    // Appends the formatted value; flags, precision, width and fill apply only when non-zero.
    template <typename T>
    static void ToString(std::string& out, T value, std::ios_base::fmtflags flags = {},
                         std::streamsize precision = 0, std::streamsize width = 0, char fill = 0);

    // Resumes after the original's length, not the replacement's.
    static std::string Replace(std::string& text, const char* original, const char* replacement);

    // Splits at the first occurrence only; returns the number of parts (0, 1 or 2).
    static std::uint32_t Split(const char* text, std::string& before, std::string& after,
                               const char* delimiter);
};

template <typename T>
T uString::ToNumeric(const char* text) {
    if (text == nullptr) throw error("unable to convert null string to numeric");
    if (*text == '\0') throw error("unable to convert empty string to numeric");

    std::stringstream stream;
    if (text[0] == '0' && text[1] == '\0') {
        return T(0);
    } else if (text[0] == '0' && (text[1] == 'x' || text[1] == 'X')) {
        if (text[2] == '\0') return T(0);
        stream << std::hex << (text + 2);
    } else if (text[0] == '0') {
        stream << std::oct << (text + 1);
    } else {
        stream << text;
    }

    // 8-bit targets are read as 32-bit integers of the same signedness, so "65" is 65
    // and not the character code of '6'.
    using Wide = std::conditional_t<sizeof(T) == 1,
                                    std::conditional_t<std::is_signed<T>::value, std::int32_t, std::uint32_t>,
                                    T>;
    // Whatever the extraction stored is the result: 0 when no digit fits, the partial value
    // when trailing text stops it, the type's limit when the digits overflow it.
    Wide value = 0;
    stream >> value;
    return static_cast<T>(value);
}

template <typename T>
void uString::ToString(std::string& out, T value, std::ios_base::fmtflags flags, std::streamsize precision,
                       std::streamsize width, char fill) {
    std::ostringstream stream;
    if (flags != std::ios_base::fmtflags{}) stream.setf(flags);
    if (precision != 0) stream.precision(precision);
    if (width != 0) stream.width(width);
    if (fill != 0) stream.fill(fill);
    stream << value;
    out += stream.str();
}

}  // namespace KW_MBR
