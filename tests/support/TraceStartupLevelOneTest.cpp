// Runs with KW_TRACE_LOGGING=1 and USERPROFILE pointing at a home of its own: the start-up
// has already written its two lines when these tests start.
#include <gtest/gtest.h>

#include <cstdlib>
#include <regex>
#include <string>
#include <vector>

#include "TestScratch.h"
#include "support/LibraryTrace.h"
#include "support/TraceStartup.h"
#include "support/uLoggerRegistry.h"

using KW_MBR::TraceStartup;
using KW_MBR::uLoggerRegistry;
using rlx_test::ReadWholeFile;
using rlx_test::SplitLines;

namespace {

const char* const kTimeStamp = "[0-2][0-9]:[0-5][0-9]:[0-6][0-9]:[0-9]{3} \\| ";

std::string ExpectedBase() { return rlx_test::NativePath(std::string(RLX_STARTUP_HOME) + "/.KW-trace"); }
std::string InBase(const char* name) { return ExpectedBase() + rlx_test::kPathSeparator + name; }
std::string LogFile() { return ExpectedBase() + rlx_test::kPathSeparator + TraceStartup::LogFileName(); }

}  // namespace

TEST(TraceStartupLevelOneTest, StartUpWroteTheTwoLoggerLines) {
    const std::vector<std::string> lines = SplitLines(ReadWholeFile(LogFile()));
    ASSERT_EQ(2u, lines.size());
    EXPECT_TRUE(std::regex_match(lines[0], std::regex(std::string("M     ") + kTimeStamp +
                                                      "Logger : trace user settings directory is " +
                                                      rlx_test::RegexLiteral(InBase("settings")))))
        << lines[0];
    EXPECT_TRUE(std::regex_match(lines[1], std::regex(std::string("M     ") + kTimeStamp +
                                                      "Logger : trace temporary data directory is " +
                                                      rlx_test::RegexLiteral(InBase("data")))))
        << lines[1];
}

TEST(TraceStartupLevelOneTest, LibraryTraceWritesWithTimeStampModeTwo) {
    EXPECT_TRUE(KW_MBR::LibraryTraceEnabled());
    EXPECT_EQ(1, uLoggerRegistry::Instance().Level());
    KW_MBR::LibraryTrace(KW_MBR::TraceMessage, "RLXPropertyHelper: Property database %d is created.", 3);
    KW_MBR::LibraryTrace(KW_MBR::TraceWarning, "warning %s", "text");
    KW_MBR::LibraryTrace(KW_MBR::TraceError, "RLXPropertyHelper: Error in parsing file %s", "x.xml");
    const std::vector<std::string> lines = SplitLines(ReadWholeFile(LogFile()));
    ASSERT_EQ(5u, lines.size());
    EXPECT_TRUE(std::regex_match(lines[2], std::regex(std::string("M     ") + kTimeStamp +
                                                      "RLXPropertyHelper: Property database 3 is created\\.")))
        << lines[2];
    EXPECT_TRUE(std::regex_match(lines[3], std::regex(std::string(" W    ") + kTimeStamp + "warning text"))) << lines[3];
    EXPECT_TRUE(std::regex_match(lines[4], std::regex(std::string("    E ") + kTimeStamp +
                                                      "RLXPropertyHelper: Error in parsing file x\\.xml")))
        << lines[4];
}

TEST(TraceStartupLevelOneTest, FlagsSeventeenAndLineEnds) {
    KW_MBR::LibraryTrace(17, "both kinds\r\n");
    KW_MBR::LibraryTrace(1, "no line end");
    const std::string content = ReadWholeFile(LogFile());
    const std::vector<std::string> lines = SplitLines(content);
    ASSERT_EQ(4u, lines.size());
    EXPECT_TRUE(std::regex_match(lines[2], std::regex(std::string("M   E ") + kTimeStamp + "both kinds"))) << lines[2];
    EXPECT_TRUE(std::regex_match(lines[3], std::regex(std::string("M     ") + kTimeStamp + "no line end"))) << lines[3];
    EXPECT_EQ(std::string::npos, content.find('\r'));
    EXPECT_EQ('\n', content.back());
}

TEST(TraceStartupLevelOneTest, SecondSetUpForTheSameFileReusesTheLogger) {
    uLoggerRegistry& registry = uLoggerRegistry::Instance();
    KW_MBR::uLogger* logger = registry.Current();
    rlx_test::SetVariable("KW_TRACE_LOGGING", "6");
    EXPECT_TRUE(registry.SetUp(TraceStartup::LogFileName().c_str(), "KW_TRACE_LOGGING", "KW_TRACE_LOGGING_DIR", true));
    EXPECT_EQ(logger, registry.Current());
    EXPECT_EQ(1, registry.Level());
    EXPECT_FALSE(logger->ToConsole());
    EXPECT_FALSE(logger->ToDebugger());
    EXPECT_EQ(1u, registry.InitCount());
    EXPECT_EQ(2u, SplitLines(ReadWholeFile(LogFile())).size());
}
