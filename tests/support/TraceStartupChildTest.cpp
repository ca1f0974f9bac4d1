// Runs the start-up in child processes with exact environments and reads back what they left:
// the published variables, the log file, standard output and standard error.
#include <gtest/gtest.h>

#include <cstdlib>
#include <map>
#include <regex>
#include <string>
#include <vector>

#include "TestPlatform.h"
#include "TestScratch.h"

using rlx_test::ReadWholeFile;
using rlx_test::ScratchDirectory;
using rlx_test::SplitLines;

namespace {

const char* const kTimeStamp = "[0-2][0-9]:[0-5][0-9]:[0-6][0-9]:[0-9]{3} \\| ";

struct ChildRun {
    int exitCode = -1;
    std::map<std::string, std::string> report;
    std::string out;
    std::string err;
    std::string logFile;  // full path from the report, "" when no directory was published
    std::string log;      // its content
};

ChildRun RunChild(const std::vector<std::string>& environment, const std::vector<std::string>& messages = {}) {
    const std::string dir = ScratchDirectory();
    const std::string reportPath = dir + "/report.txt";
    const std::string outPath = dir + "/stdout.txt";
    const std::string errPath = dir + "/stderr.txt";
    std::vector<std::string> arguments = {RLX_TRACE_CHILD_PATH, reportPath};
    arguments.insert(arguments.end(), messages.begin(), messages.end());

    ChildRun run;
    run.exitCode = rlx_test::RunProgram(arguments, environment, outPath, errPath);
    if (run.exitCode < 0) return run;
    for (const std::string& line : SplitLines(ReadWholeFile(reportPath))) {
        const std::size_t equals = line.find('=');
        if (equals != std::string::npos) run.report[line.substr(0, equals)] = line.substr(equals + 1);
    }
    run.out = ReadWholeFile(outPath);
    run.err = ReadWholeFile(errPath);
    if (run.report["logging_dir"] != "<unset>" && !run.report["file_name"].empty()) {
        run.logFile = run.report["logging_dir"] + "/" + run.report["file_name"];
        run.log = ReadWholeFile(run.logFile);
    }
    return run;
}

std::string Home() { return ScratchDirectory() + "/home"; }

std::vector<std::string> EnvironmentWithLevel(const char* level) {
    std::vector<std::string> environment = {"USERPROFILE=" + Home()};
    if (level != nullptr) environment.push_back(std::string("KW_TRACE_LOGGING=") + level);
    return environment;
}

// A process number that belonged to a process that has ended.
long EndedProcessId() {
    ChildRun run = RunChild({"KW_TRACE_LOGGING=0"});
    return run.exitCode == 0 ? std::atol(run.report["pid"].c_str()) : -1;
}

// The expected form of a path the library built: its own separators.
std::string Native(const std::string& path) { return rlx_test::NativePath(path); }

bool HasTheTwoLoggerLines(const std::string& text, const std::string& base) {
    const std::vector<std::string> lines = SplitLines(text);
    return lines.size() == 2 &&
           std::regex_match(lines[0], std::regex(std::string("M     ") + kTimeStamp +
                                                 "Logger : trace user settings directory is " + rlx_test::RegexLiteral(Native(base + "/settings")))) &&
           std::regex_match(lines[1], std::regex(std::string("M     ") + kTimeStamp +
                                                 "Logger : trace temporary data directory is " + rlx_test::RegexLiteral(Native(base + "/data"))));
}

struct OutputRow {
    const char* level;
    bool toFile;
    bool toStdout;
    bool toStderr;
};

class LevelOutputs : public ::testing::TestWithParam<OutputRow> {};

}  // namespace

TEST(TraceStartupChildTest, FreshProcessPublishesEverything) {
    const ChildRun run = RunChild(EnvironmentWithLevel("1"));
    ASSERT_EQ(0, run.exitCode);
    const std::string base = Home() + "/.KW-trace";
    EXPECT_EQ(run.report.at("pid"), run.report.at("debugclient"));
    EXPECT_EQ(Native(base), run.report.at("logging_dir"));
    EXPECT_EQ(Native(base + "/data"), run.report.at("data_dir"));
    EXPECT_EQ(Native(base + "/settings"), run.report.at("settings_dir"));
    EXPECT_TRUE(std::regex_match(run.report.at("file_name"),
                                 std::regex("kw_trace_log_[0-9]+_" + run.report.at("pid") + "\\.txt")));
    EXPECT_EQ("1", run.report.at("done"));
    EXPECT_EQ("1", run.report.at("init_count"));
    EXPECT_TRUE(rlx_test::IsDirectory(base + "/data"));
    EXPECT_TRUE(rlx_test::IsDirectory(base + "/settings"));
    EXPECT_TRUE(HasTheTwoLoggerLines(run.log, base)) << run.log;
}

TEST_P(LevelOutputs, LinesGoWhereTheLevelSays) {
    const OutputRow& row = GetParam();
    const ChildRun run = RunChild(EnvironmentWithLevel(row.level), {"16", "RLXPropertyHelper: Error in parsing file a.xml"});
    ASSERT_EQ(0, run.exitCode);
    const std::string base = Home() + "/.KW-trace";
    // The directories and variables exist whatever the level.
    EXPECT_EQ(Native(base), run.report.at("logging_dir"));
    EXPECT_TRUE(rlx_test::IsDirectory(base + "/settings"));
    EXPECT_EQ(run.report.at("pid"), run.report.at("debugclient"));

    const std::regex errorLine(std::string("    E ") + kTimeStamp + "RLXPropertyHelper: Error in parsing file a\\.xml");
    if (row.toFile) {
        const std::vector<std::string> lines = SplitLines(run.log);
        ASSERT_EQ(3u, lines.size()) << run.log;
        EXPECT_TRUE(HasTheTwoLoggerLines(lines[0] + "\n" + lines[1] + "\n", base)) << run.log;
        EXPECT_TRUE(std::regex_match(lines[2], errorLine)) << lines[2];
    } else {
        EXPECT_FALSE(rlx_test::IsRegularFile(run.logFile)) << run.logFile;
    }
    EXPECT_EQ(row.toStdout ? run.log : std::string(), run.out);
    EXPECT_EQ(row.toStderr && rlx_test::kDebuggerOutputIsStandardError ? run.log : std::string(), run.err);
}

INSTANTIATE_TEST_SUITE_P(KwTraceLogging, LevelOutputs,
                         ::testing::Values(OutputRow{nullptr, false, false, false}, OutputRow{"0", false, false, false},
                                           OutputRow{"7", false, false, false}, OutputRow{"-2", false, false, false},
                                           OutputRow{"1", true, false, false}, OutputRow{"2", true, true, false},
                                           OutputRow{"3", true, false, false}, OutputRow{"4", true, true, false},
                                           OutputRow{"5", true, true, true}, OutputRow{"6", true, true, true}),
                         [](const ::testing::TestParamInfo<OutputRow>& info) {
                             if (info.param.level == nullptr) return std::string("unset");
                             std::string name = std::string("level_") + info.param.level;
                             for (char& c : name) {
                                 if (c == '-') c = 'm';
                             }
                             return name;
                         });

TEST(TraceStartupChildTest, LevelSevenKeepsTheRawLevelButWritesNothing) {
    const ChildRun run = RunChild(EnvironmentWithLevel("7"), {"1", "hidden"});
    ASSERT_EQ(0, run.exitCode);
    EXPECT_EQ("7", run.report.at("level"));
    EXPECT_EQ("1", run.report.at("has_logger"));
    // Callers see a level of at least 1 and do call the logger, which is switched off.
    EXPECT_EQ("1", run.report.at("trace_enabled"));
    EXPECT_FALSE(rlx_test::IsRegularFile(run.logFile));
}

TEST(TraceStartupChildTest, StaleDebugClientIsReplacedByTheCurrentProcess) {
    const long ended = EndedProcessId();
    ASSERT_GT(ended, 0);
    std::vector<std::string> environment = EnvironmentWithLevel("1");
    environment.push_back("KW_TRACE_DEBUGCLIENT_PID=" + std::to_string(ended));
    const ChildRun run = RunChild(environment);
    ASSERT_EQ(0, run.exitCode);
    EXPECT_NE(std::to_string(ended), run.report.at("debugclient"));
    EXPECT_EQ(run.report.at("pid"), run.report.at("debugclient"));
    EXPECT_TRUE(std::regex_match(run.report.at("file_name"), std::regex(".*_" + run.report.at("pid") + "\\.txt")));
}

TEST(TraceStartupChildTest, LevelZeroAndUnsetAreOff) {
    for (const char* level : {"0", static_cast<const char*>(nullptr)}) {
        const ChildRun run = RunChild(EnvironmentWithLevel(level), {"1", "hidden"});
        ASSERT_EQ(0, run.exitCode);
        EXPECT_EQ("0", run.report.at("level"));
        EXPECT_EQ("0", run.report.at("trace_enabled"));
        EXPECT_EQ("1", run.report.at("has_logger"));
    }
}

TEST(TraceStartupChildTest, ZeroDebugClientNeverMatches) {
    std::vector<std::string> environment = EnvironmentWithLevel("0");
    environment.push_back("KW_TRACE_DEBUGCLIENT_PID=0");
    const ChildRun run = RunChild(environment);
    ASSERT_EQ(0, run.exitCode);
    EXPECT_EQ(run.report.at("pid"), run.report.at("debugclient"));
}

TEST(TraceStartupChildTest, LivingDebugClientIsKept) {
    const std::string parent = std::to_string(rlx_test::CurrentProcessId());
    std::vector<std::string> environment = EnvironmentWithLevel("1");
    environment.push_back("KW_TRACE_DEBUGCLIENT_PID=" + parent);
    const ChildRun run = RunChild(environment);
    ASSERT_EQ(0, run.exitCode);
    EXPECT_EQ(parent, run.report.at("debugclient"));
    EXPECT_TRUE(std::regex_match(run.report.at("file_name"), std::regex("kw_trace_log_[0-9]+_" + parent + "\\.txt")));
    EXPECT_TRUE(HasTheTwoLoggerLines(run.log, Home() + "/.KW-trace")) << run.log;
}

TEST(TraceStartupChildTest, HomeIsUsedWhenUserProfileIsUnset) {
    const ChildRun run = RunChild({"HOME=" + Home(), "KW_TRACE_LOGGING=1"});
    ASSERT_EQ(0, run.exitCode);
    if (!rlx_test::kHomeStandsInForUserProfile) {
        // Only USERPROFILE names the profile there: no directory, no logger.
        EXPECT_EQ("<unset>", run.report.at("logging_dir"));
        EXPECT_EQ("0", run.report.at("has_logger"));
        return;
    }
    EXPECT_EQ(Home() + "/.KW-trace", run.report.at("logging_dir"));
    EXPECT_TRUE(HasTheTwoLoggerLines(run.log, Home() + "/.KW-trace")) << run.log;
}

TEST(TraceStartupChildTest, NoProfileAtAllLeavesLoggingOffAndTheProcessWorking) {
    const ChildRun run = RunChild({"KW_TRACE_LOGGING=6"}, {"16", "not written"});
    ASSERT_EQ(0, run.exitCode);
    EXPECT_EQ("<unset>", run.report.at("logging_dir"));
    EXPECT_EQ("<unset>", run.report.at("data_dir"));
    EXPECT_EQ("<unset>", run.report.at("settings_dir"));
    EXPECT_EQ("", run.report.at("file_name"));
    EXPECT_EQ("0", run.report.at("done"));
    EXPECT_EQ("0", run.report.at("has_logger"));
    EXPECT_EQ("0", run.report.at("level"));
    EXPECT_EQ("0", run.report.at("trace_enabled"));
    EXPECT_EQ(run.report.at("pid"), run.report.at("debugclient"));  // settled before the profile was needed
    EXPECT_EQ("1", run.report.at("time_state"));                    // no time stamp was ever taken
    EXPECT_EQ("", run.out);
    EXPECT_EQ("", run.err);
}

TEST(TraceStartupChildTest, FailedDiskCheckLeavesLoggingOffAndTheProcessWorking) {
    // A profile below a regular file: no directory can be made, so the volume query fails.
    const std::string blocker = ScratchDirectory() + "/plain_file";
    { std::FILE* f = std::fopen(blocker.c_str(), "w"); if (f != nullptr) std::fclose(f); }
    const ChildRun run = RunChild({"USERPROFILE=" + blocker + "/home", "KW_TRACE_LOGGING=6"}, {"16", "not written"});
    ASSERT_EQ(0, run.exitCode);
    EXPECT_EQ(Native(blocker + "/home/.KW-trace"), run.report.at("logging_dir"));
    EXPECT_EQ("1", run.report.at("done"));
    EXPECT_EQ("0", run.report.at("has_logger"));
    EXPECT_EQ("0", run.report.at("init_count"));
    EXPECT_EQ("0", run.report.at("trace_enabled"));
    EXPECT_EQ("", run.out);
    EXPECT_EQ("", run.err);
}
