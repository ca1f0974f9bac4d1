#include "XmlDbDirectory.h"

#include <fstream>

#include "../support/Platform.h"

namespace TargetOperations {

std::string XmlDbPath(const std::string& fileName) {
    // Read from the process environment itself, so that a host setting the variable with the
    // system's own call (not the C runtime's copy) is seen at once.
    std::string path;
    if (!KW_MBR::Platform::GetEnvironment("KORVA_XMLDB", path)) path.clear();
    if (!path.empty()) path += "/";
    path += fileName;
    return path;
}

bool XmlFileExists(const std::string& path) {
    // std::ifstream opens for shared reading on every platform this library builds on.
    std::ifstream stream(path.c_str(), std::ios::in);
    const bool exists = stream.is_open();
    stream.close();
    return exists;
}

std::string LoadFailureText(const std::string& path) { return "Failed to load XML fail: " + path; }

}  // namespace TargetOperations
