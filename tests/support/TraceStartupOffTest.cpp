// Runs with KW_TRACE_LOGGING=0 and USERPROFILE pointing at a home of its own: the start-up
// has already run at load when these tests start.
#include <gtest/gtest.h>

#include <cstdlib>
#include <regex>
#include <string>

#include "TestScratch.h"
#include "support/LibraryTrace.h"
#include "support/TraceStartup.h"
#include "support/uLoggerRegistry.h"
#include "support/uTime.h"

using KW_MBR::TraceStartup;
using KW_MBR::uLoggerRegistry;

namespace {

std::string Variable(const char* name) { return rlx_test::VariableOr(name, "<unset>"); }

std::string ExpectedBase() { return rlx_test::NativePath(std::string(RLX_STARTUP_HOME) + "/.KW-trace"); }
std::string InBase(const char* name) { return ExpectedBase() + rlx_test::kPathSeparator + name; }

}  // namespace

TEST(TraceStartupOffTest, OneTimeWorkIsDone) { EXPECT_TRUE(TraceStartup::OneTimeWorkDone()); }

TEST(TraceStartupOffTest, DirectoriesAreCreatedAndPublished) {
    EXPECT_EQ(ExpectedBase(), Variable("KW_TRACE_LOGGING_DIR"));
    EXPECT_EQ(InBase("data"), Variable("KW_TRACE_DATA_DIR"));
    EXPECT_EQ(InBase("settings"), Variable("KW_TRACE_SETTINGS_DIR"));
    EXPECT_TRUE(rlx_test::IsDirectory(ExpectedBase()));
    EXPECT_TRUE(rlx_test::IsDirectory(InBase("data")));
    EXPECT_TRUE(rlx_test::IsDirectory(InBase("settings")));
}

TEST(TraceStartupOffTest, DebugClientIsThisProcess) {
    EXPECT_EQ(std::to_string(rlx_test::CurrentProcessId()), Variable("KW_TRACE_DEBUGCLIENT_PID"));
}

TEST(TraceStartupOffTest, LogFileNameIsFixed) {
    KW_MBR::uTime now;
    const std::string expected = "kw_trace_log_" + std::to_string(now.Month()) + std::to_string(now.Day()) +
                                 std::to_string(now.Year()) + "_" + std::to_string(rlx_test::CurrentProcessId()) + ".txt";
    EXPECT_EQ(expected, TraceStartup::LogFileName());
}

TEST(TraceStartupOffTest, LogFileNameNumbersAreUnpadded) {
    EXPECT_EQ("kw_trace_log_" + [] {
        KW_MBR::uTime now;
        return std::to_string(now.Month()) + std::to_string(now.Day()) + std::to_string(now.Year());
    }() + "_4242.txt",
              TraceStartup::MakeLogFileName(4242));
    EXPECT_TRUE(std::regex_match(TraceStartup::MakeLogFileName(7), std::regex("kw_trace_log_[1-9][0-9]?[1-9][0-9]?[0-9]{4}_7\\.txt")));
}

TEST(TraceStartupOffTest, LoggerExistsButWritesNothing) {
    uLoggerRegistry& registry = uLoggerRegistry::Instance();
    ASSERT_NE(nullptr, registry.Current());
    EXPECT_FALSE(registry.Current()->IsEnabled());
    EXPECT_EQ(0, registry.Level());
    EXPECT_EQ(1u, registry.InitCount());
    EXPECT_EQ(ExpectedBase() + rlx_test::kPathSeparator + TraceStartup::LogFileName(), registry.Current()->Path());
    EXPECT_FALSE(KW_MBR::LibraryTraceEnabled());
    KW_MBR::LibraryTrace(KW_MBR::TraceError, "RLXPropertyHelper: not written %d", 1);
    EXPECT_FALSE(rlx_test::IsRegularFile(registry.Current()->Path()));
}

TEST(TraceStartupOffTest, RunningAgainOnlyRepeatsTheSetUp) {
    const std::string fileName = TraceStartup::LogFileName();
    uLoggerRegistry& registry = uLoggerRegistry::Instance();
    KW_MBR::uLogger* logger = registry.Current();
    rlx_test::SetVariable("KW_TRACE_LOGGING", "1");
    TraceStartup::Run();
    EXPECT_EQ(fileName, TraceStartup::LogFileName());
    EXPECT_EQ(logger, registry.Current());
    EXPECT_EQ(1u, registry.InitCount());
    EXPECT_EQ(0, registry.Level());
}
