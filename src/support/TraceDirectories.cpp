#include "TraceDirectories.h"

#include "Platform.h"
#include "uEnvironment.h"
#include "uString.h"

namespace KW_MBR {

namespace {

const char* const kBaseName = ".KW-trace";
const char* const kDataName = "data";
const char* const kSettingsName = "settings";

std::string CreatedBelowBase(const char* name) {
    std::string path = TraceDirectories::Logging();
    if (name != nullptr) {
        path = TraceDirectories::Join(path, name);
        TraceDirectories::CreateWithParents(path);
    }
    return path;
}

}  // namespace

std::string TraceDirectories::UserProfile() {
    for (const char* const* name = Platform::UserProfileVariables(); *name != nullptr; ++name) {
        const std::string value = uEnvironment::Get(*name);
        if (!value.empty()) return value;
    }
    throw source_utilities_error("failed to read environment variable \"USERPROFILE\"");
}

std::string TraceDirectories::Logging() {
    const std::string base = Join(UserProfile(), kBaseName);
    CreateWithParents(base);
    return base;
}

std::string TraceDirectories::Data() { return CreatedBelowBase(kDataName); }

std::string TraceDirectories::Settings() { return CreatedBelowBase(kSettingsName); }

std::string TraceDirectories::Join(const std::string& left, const char* name) {
    const char separator = Platform::PathSeparator();
    std::string joined = left;
    if (joined.empty() || joined.back() != separator) joined += separator;
    if (name != nullptr) joined += name;
    for (char& c : joined) {
        if (c == '/') c = separator;
    }
    const std::string doubled(2, separator);
    std::string previous;
    do {
        previous = joined;
        uString::Replace(joined, doubled.c_str(), std::string(1, separator).c_str());
    } while (joined != previous);
    return joined;
}

void TraceDirectories::CreateWithParents(const std::string& path) {
    const char separator = Platform::PathSeparator();
    std::size_t start = 0;
    for (;;) {
        const std::size_t end = path.find(separator, start);
        const std::string prefix = path.substr(0, end);
        if (!prefix.empty() && prefix.back() != ':') Platform::MakeDirectory(prefix.c_str());
        if (end == std::string::npos) break;
        start = end + 1;
    }
}

}  // namespace KW_MBR
