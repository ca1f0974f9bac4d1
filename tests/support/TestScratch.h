// Helpers of the support tests: a fresh directory under the build tree per test case, and
// reading files back.
#pragma once

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include <dirent.h>
#include <sys/stat.h>
#include <unistd.h>

namespace rlx_test {

inline std::string ReadWholeFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
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

inline bool IsDirectory(const std::string& path) {
    struct stat info {};
    return ::stat(path.c_str(), &info) == 0 && S_ISDIR(info.st_mode);
}

inline bool IsRegularFile(const std::string& path) {
    struct stat info {};
    return ::stat(path.c_str(), &info) == 0 && S_ISREG(info.st_mode);
}

inline std::vector<std::string> ListDirectory(const std::string& path) {
    std::vector<std::string> names;
    if (DIR* dir = ::opendir(path.c_str())) {
        while (dirent* entry = ::readdir(dir)) {
            const std::string name = entry->d_name;
            if (name != "." && name != "..") names.push_back(name);
        }
        ::closedir(dir);
    }
    return names;
}

// <build>/tests/support/scratch/<suite>.<test>.<pid>, created empty.
inline std::string ScratchDirectory() {
    const ::testing::TestInfo* info = ::testing::UnitTest::GetInstance()->current_test_info();
    std::string path = RLX_SUPPORT_SCRATCH_DIR;
    ::mkdir(path.c_str(), 0777);
    path += "/";
    std::string name = info != nullptr ? std::string(info->test_suite_name()) + "." + info->name() : "outside";
    for (char& c : name) {
        if (c == '/') c = '_';  // parameterised names carry slashes
    }
    path += name + "." + std::to_string(::getpid());
    ::mkdir(path.c_str(), 0777);
    return path;
}

}  // namespace rlx_test
