// Loads the built shared library in child processes: its start-up runs from the load-time
// constructor, and a process without any profile directory still loads it.
#include <gtest/gtest.h>

#include <map>
#include <regex>
#include <string>
#include <vector>

#include "TestPlatform.h"
#include "TestScratch.h"

using rlx_test::ListDirectory;
using rlx_test::ReadWholeFile;
using rlx_test::ScratchDirectory;
using rlx_test::SplitLines;

namespace {

struct LoadRun {
    int exitCode = -1;
    std::map<std::string, std::string> report;
};

LoadRun LoadInChildProcess(const std::vector<std::string>& environment) {
    const std::string reportPath = ScratchDirectory() + "/report.txt";
    std::vector<std::string> arguments = {RLX_LIBRARY_LOADER_PATH, RLX_LIBRARY_PATH, reportPath};
    // In a sanitizer build the runtime's own bookkeeping for a library loaded with dlopen shows
    // up as leaks of the loader; this child only reports what the start-up did.
    std::vector<std::string> childEnvironment = environment;
    childEnvironment.push_back("ASAN_OPTIONS=detect_leaks=0");

    LoadRun run;
    run.exitCode = rlx_test::RunProgram(arguments, childEnvironment);
    if (run.exitCode < 0) return run;
    for (const std::string& line : SplitLines(ReadWholeFile(reportPath))) {
        const std::size_t equals = line.find('=');
        if (equals != std::string::npos) run.report[line.substr(0, equals)] = line.substr(equals + 1);
    }
    return run;
}

}  // namespace

TEST(LibraryLoadTest, LoadingRunsTheStartUp) {
    const std::string home = ScratchDirectory() + "/home";
    const LoadRun run = LoadInChildProcess({"USERPROFILE=" + home, "KW_TRACE_LOGGING=1"});
    ASSERT_EQ(0, run.exitCode);
    const std::string base = home + "/.KW-trace";
    EXPECT_EQ(rlx_test::NativePath(base), run.report.at("logging_dir"));
    EXPECT_EQ(rlx_test::NativePath(base + "/data"), run.report.at("data_dir"));
    EXPECT_EQ(rlx_test::NativePath(base + "/settings"), run.report.at("settings_dir"));
    EXPECT_NE("<unset>", run.report.at("debugclient"));

    std::vector<std::string> logs;
    for (const std::string& name : ListDirectory(base)) {
        if (name.rfind("kw_trace_log_", 0) == 0) logs.push_back(name);
    }
    ASSERT_EQ(1u, logs.size());
    EXPECT_TRUE(std::regex_match(logs[0], std::regex("kw_trace_log_[0-9]+_" + run.report.at("debugclient") + "\\.txt")));
    const std::vector<std::string> lines = SplitLines(ReadWholeFile(base + "/" + logs[0]));
    ASSERT_EQ(2u, lines.size());
    EXPECT_NE(std::string::npos,
              lines[0].find("| Logger : trace user settings directory is " + rlx_test::NativePath(base + "/settings")));
    EXPECT_NE(std::string::npos,
              lines[1].find("| Logger : trace temporary data directory is " + rlx_test::NativePath(base + "/data")));
}

TEST(LibraryLoadTest, LoadsWithoutAnyProfileDirectory) {
    const LoadRun run = LoadInChildProcess({"KW_TRACE_LOGGING=6"});
    ASSERT_EQ(0, run.exitCode);
    EXPECT_EQ("<unset>", run.report.at("logging_dir"));
    EXPECT_EQ("<unset>", run.report.at("data_dir"));
    EXPECT_EQ("<unset>", run.report.at("settings_dir"));
}
