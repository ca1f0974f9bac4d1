// The one call through which the library writes its own trace lines: every message goes to
// the process's current logger with time-stamp mode 2, and only while the logging level is
// at least 1.
#pragma once

#include <cstdint>

namespace KW_MBR {

enum LibraryTraceFlags : std::uint32_t {
    TraceMessage = 1,
    TraceWarning = 2,
    TraceError = 16
};

// True when the registry's level is at least 1 (a logger exists and logging is on).
bool LibraryTraceEnabled();

// Writes one line with the given category flags, formatted printf-style.
void LibraryTrace(std::uint32_t flags, const char* format, ...)
#if defined(__GNUC__)
    __attribute__((format(printf, 2, 3)))
#endif
    ;

}  // namespace KW_MBR
