#include "XmlDbDirectory.h"

#include <cstdlib>
#include <fstream>

namespace TargetOperations {

std::string XmlDbPath(const std::string& fileName) {
    const char* directory = std::getenv("KORVA_XMLDB");
    std::string path = directory != nullptr ? directory : "";
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
