#include "LibraryTrace.h"

#include <cstdarg>

#include "uLoggerRegistry.h"

namespace KW_MBR {

bool LibraryTraceEnabled() {
    uLoggerRegistry& registry = uLoggerRegistry::Instance();
    return registry.Level() >= 1 && registry.Current() != nullptr;
}

void LibraryTrace(std::uint32_t flags, const char* format, ...) {
    uLoggerRegistry& registry = uLoggerRegistry::Instance();
    if (registry.Level() < 1) return;
    uLogger* logger = registry.Current();
    if (logger == nullptr) return;
    va_list arguments;
    va_start(arguments, format);
    logger->WriteV(flags, uLogger::TimeStamp, format, arguments);
    va_end(arguments);
}

}  // namespace KW_MBR
