// The per-user trace directories: "<profile>/.KW-trace" with "data" and "settings" beneath.
// Every call computes the path again and creates it with all missing parents.
#pragma once

#include <string>

namespace KW_MBR {

class TraceDirectories {
public:
    static std::string Logging();
    static std::string Data();
    static std::string Settings();

    // The user's profile directory; raises source_utilities_error when it is not set.
    static std::string UserProfile();

    // Adds a separator only when the left part lacks one, turns "/" into the separator, then
    // collapses doubled separators until none is left (a leading double one included).
    static std::string Join(const std::string& left, const char* name);

    // Creates every prefix of the path that ends at a separator, and the path itself; prefixes
    // ending in ":" are drive names and skipped. Existing directories are harmless.
    static void CreateWithParents(const std::string& path);
};

}  // namespace KW_MBR
