// Helpers of the support tests: a fresh directory under the build tree per test case, and
// reading files back.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <system_error>
#include <vector>

#include "TestPlatform.h"

namespace rlx_test {

// Read as text: on Windows the logger's text-mode stream ends its lines with "\r\n".
inline std::string ReadWholeFile(const std::string& path) {
    std::ifstream in(path);
    std::ostringstream content;
    content << in.rdbuf();
    return content.str();
}

inline std::vector<std::string> SplitLines(const std::string& text) {
    std::vector<std::string> lines;
    std::size_t start = 0;
    while (start < text.size()) {
        const std::size_t end = text.find('\n', start);
        if (end == std::string::npos) {
            lines.push_back(text.substr(start));
            break;
        }
        lines.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    return lines;
}

// The text matched literally inside a regular expression (paths carry dots, and backslashes
// on Windows).
inline std::string RegexLiteral(const std::string& text) {
    static const std::regex special(R"([.^$|()\[\]{}*+?\\])");
    return std::regex_replace(text, special, R"(\$&)");
}

inline bool IsDirectory(const std::string& path) {
    std::error_code error;
    return std::filesystem::is_directory(path, error);
}

inline bool IsRegularFile(const std::string& path) {
    std::error_code error;
    return std::filesystem::is_regular_file(path, error);
}

inline std::vector<std::string> ListDirectory(const std::string& path) {
    std::vector<std::string> names;
    std::error_code error;
    for (std::filesystem::directory_iterator it(path, error), end; !error && it != end; it.increment(error)) {
        names.push_back(it->path().filename().string());
    }
    return names;
}

// <build>/tests/support/scratch/<suite>.<test>.<pid>, created empty.
inline std::string ScratchDirectory() {
    const ::testing::TestInfo* info = ::testing::UnitTest::GetInstance()->current_test_info();
    std::string path = RLX_SUPPORT_SCRATCH_DIR;
    std::error_code error;
    std::filesystem::create_directory(path, error);
    path += "/";
    std::string name = info != nullptr ? std::string(info->test_suite_name()) + "." + info->name() : "outside";
    for (char& c : name) {
        if (c == '/') c = '_';  // parameterised names carry slashes
    }
    path += name + "." + std::to_string(CurrentProcessId());
    // Process numbers come round again (quickly under Wine): what an earlier process of the
    // same number left goes at this process's first use.
    static std::set<std::string> emptied;
    if (emptied.insert(path).second) std::filesystem::remove_all(path, error);
    std::filesystem::create_directory(path, error);
    return path;
}

}  // namespace rlx_test
