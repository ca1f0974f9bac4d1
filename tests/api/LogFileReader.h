// Reads this process's trace log back: the library names it after the debug-client process
// and publishes its directory in KW_TRACE_LOGGING_DIR when it is loaded.
#pragma once

#include <filesystem>
#include <fstream>
#include <ostream>
#include <regex>
#include <string>
#include <system_error>
#include <vector>

#include "TestPlatform.h"

namespace api_test {

struct LogLine {
    std::string flags;    // the six-character flag column, e.g. "M     " or "    E "
    std::string message;  // what follows the time stamp
};

inline std::string LogFilePath() {
    std::string directory;
    std::string client;
    if (!rlx_test::ReadVariable("KW_TRACE_LOGGING_DIR", directory) ||
        !rlx_test::ReadVariable("KW_TRACE_DEBUGCLIENT_PID", client)) {
        return "";
    }
    const std::string suffix = std::string("_") + client + ".txt";
    std::string found;
    std::error_code error;
    for (std::filesystem::directory_iterator it(directory, error), end; !error && it != end; it.increment(error)) {
        const std::string name = it->path().filename().string();
        if (name.rfind("kw_trace_log_", 0) == 0 && name.size() > suffix.size() &&
            name.compare(name.size() - suffix.size(), suffix.size(), suffix) == 0) {
            found = directory + rlx_test::kPathSeparator + name;
        }
    }
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
