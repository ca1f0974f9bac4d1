// Reads this process's trace log back: the library names it after the debug-client process
// and publishes its directory in KW_TRACE_LOGGING_DIR when it is loaded.
#pragma once

#include <dirent.h>

#include <cstdlib>
#include <fstream>
#include <ostream>
#include <regex>
#include <string>
#include <vector>

namespace api_test {

struct LogLine {
    std::string flags;    // the six-character flag column, e.g. "M     " or "    E "
    std::string message;  // what follows the time stamp
};

inline std::string LogFilePath() {
    const char* directory = std::getenv("KW_TRACE_LOGGING_DIR");
    const char* client = std::getenv("KW_TRACE_DEBUGCLIENT_PID");
    if (directory == nullptr || client == nullptr) return "";
    const std::string suffix = std::string("_") + client + ".txt";
    DIR* listing = opendir(directory);
    if (listing == nullptr) return "";
    std::string found;
    while (dirent* entry = readdir(listing)) {
        const std::string name = entry->d_name;
        if (name.rfind("kw_trace_log_", 0) == 0 && name.size() > suffix.size() &&
            name.compare(name.size() - suffix.size(), suffix.size(), suffix) == 0) {
            found = std::string(directory) + "/" + name;
        }
    }
    closedir(listing);
    return found;
}

// The library's own lines ("RLXPropertyHelper: ..."), in file order, time stamps checked
// for mode 2 ("HH:MM:SS:mmm | ") and removed.
inline std::vector<LogLine> LibraryLogLines() {
    std::vector<LogLine> lines;
    const std::string path = LogFilePath();
    if (path.empty()) return lines;
    std::ifstream file(path);
    const std::regex layout(R"(^(.{6})\d\d:\d\d:\d\d:\d\d\d \| (RLXPropertyHelper: .*)$)");
    std::string text;
    while (std::getline(file, text)) {
        std::smatch match;
        if (std::regex_match(text, match, layout)) lines.push_back({match[1].str(), match[2].str()});
    }
    return lines;
}

inline bool operator==(const LogLine& a, const LogLine& b) { return a.flags == b.flags && a.message == b.message; }

inline std::ostream& operator<<(std::ostream& out, const LogLine& line) {
    return out << '[' << line.flags << "] " << line.message;
}

const char* const kMessage = "M     ";
const char* const kError = "    E ";

}  // namespace api_test
