#include <gtest/gtest.h>

#include <map>
#include <regex>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "TestScratch.h"
#include "support/uLogger.h"

using KW_MBR::uLogger;
using rlx_test::ReadWholeFile;
using rlx_test::ScratchDirectory;
using rlx_test::SplitLines;

namespace {

const char* const kTimeStamp = "[0-2][0-9]:[0-5][0-9]:[0-6][0-9]:[0-9]{3} \\| ";

std::string LogPath(const std::string& name = "test.log") { return ScratchDirectory() + "/" + name; }

}  // namespace

TEST(uLoggerTest, NewLoggerIsEnabledWithoutConsoleOrDebugger) {
    uLogger logger(LogPath(), true);
    EXPECT_TRUE(logger.IsEnabled());
    EXPECT_FALSE(logger.ToConsole());
    EXPECT_FALSE(logger.ToDebugger());
    EXPECT_FALSE(logger.IsFileOpen());
}

TEST(uLoggerTest, FileIsOpenedOnlyAtTheFirstLine) {
    const std::string path = LogPath();
    uLogger logger(path, true);
    EXPECT_FALSE(rlx_test::IsRegularFile(path));
    logger.Write(uLogger::Message, uLogger::TimeStamp, "first");
    EXPECT_TRUE(logger.IsFileOpen());
    EXPECT_TRUE(rlx_test::IsRegularFile(path));
}

TEST(uLoggerTest, MessageLineLayout) {
    const std::string path = LogPath();
    {
        uLogger logger(path, true);
        logger.Write(uLogger::Message, uLogger::TimeStamp, "value %d and %s", 42, "text");
    }
    const std::string content = ReadWholeFile(path);
    EXPECT_TRUE(std::regex_match(content, std::regex(std::string("M     ") + kTimeStamp + "value 42 and text\n")))
        << content;
}

TEST(uLoggerTest, FlagLettersInFixedOrder) {
    EXPECT_EQ("M     ", uLogger::FlagPrefix(1));
    EXPECT_EQ(" W    ", uLogger::FlagPrefix(2));
    EXPECT_EQ("  F   ", uLogger::FlagPrefix(4));
    EXPECT_EQ("   A  ", uLogger::FlagPrefix(8));
    EXPECT_EQ("    E ", uLogger::FlagPrefix(16));
    EXPECT_EQ("M   E ", uLogger::FlagPrefix(17));
    EXPECT_EQ("MWFAE ", uLogger::FlagPrefix(31));
    EXPECT_EQ("      ", uLogger::FlagPrefix(32));  // bits above the five letters show nothing
}

TEST(uLoggerTest, ErrorAndCombinedFlagsInTheFile) {
    const std::string path = LogPath();
    {
        uLogger logger(path, true);
        logger.Write(uLogger::Error, uLogger::TimeStamp, "error line");
        logger.Write(17, uLogger::TimeStamp, "both");
        logger.Write(uLogger::Warning, uLogger::TimeStamp, "warning line");
    }
    const std::vector<std::string> lines = SplitLines(ReadWholeFile(path));
    ASSERT_EQ(3u, lines.size());
    EXPECT_TRUE(std::regex_match(lines[0], std::regex(std::string("    E ") + kTimeStamp + "error line"))) << lines[0];
    EXPECT_TRUE(std::regex_match(lines[1], std::regex(std::string("M   E ") + kTimeStamp + "both"))) << lines[1];
    EXPECT_TRUE(std::regex_match(lines[2], std::regex(std::string(" W    ") + kTimeStamp + "warning line")))
        << lines[2];
}

TEST(uLoggerTest, ZeroFlagsWriteNothing) {
    const std::string path = LogPath();
    uLogger logger(path, true);
    logger.Write(0, uLogger::TimeStamp, "nothing");
    EXPECT_FALSE(logger.IsFileOpen());
    EXPECT_FALSE(rlx_test::IsRegularFile(path));
}

TEST(uLoggerTest, TimeStampModes) {
    const std::string path = LogPath();
    {
        uLogger logger(path, true);
        logger.Write(uLogger::Message, 0, "none");
        logger.Write(uLogger::Message, 1, "date");
        logger.Write(uLogger::Message, 3, "both");
        logger.Write(uLogger::Message, 9, "other");
    }
    const std::vector<std::string> lines = SplitLines(ReadWholeFile(path));
    ASSERT_EQ(4u, lines.size());
    EXPECT_EQ("M      none", lines[0]);
    EXPECT_TRUE(std::regex_match(lines[1], std::regex("M     [01][0-9]/[0-3][0-9]/[0-9]{2} \\| date"))) << lines[1];
    EXPECT_TRUE(std::regex_match(lines[2], std::regex(std::string("M     [01][0-9]/[0-3][0-9]/[0-9]{2} ") + kTimeStamp +
                                                      "both")))
        << lines[2];
    EXPECT_EQ("M      other", lines[3]);
}

TEST(uLoggerTest, CarriageReturnLineFeedCollapsesToOneLineFeed) {
    const std::string path = LogPath();
    {
        uLogger logger(path, true);
        logger.Write(uLogger::Message, 0, "crlf\r\n");
        logger.Write(uLogger::Message, 0, "lf\n");
        logger.Write(uLogger::Message, 0, "cr\r");
        logger.Write(uLogger::Message, 0, "lfcr\n\r");
        logger.Write(uLogger::Message, 0, "plain");
        logger.Write(uLogger::Message, 0, "two\n\n");
    }
    EXPECT_EQ("M      crlf\nM      lf\nM      cr\nM      lfcr\nM      plain\nM      two\n\n", ReadWholeFile(path));
}

TEST(uLoggerTest, RemoveOneLineEndCases) {
    std::string text = "a\r\n";
    uLogger::RemoveOneLineEnd(text);
    EXPECT_EQ("a", text);
    text = "a\r\r";
    uLogger::RemoveOneLineEnd(text);
    EXPECT_EQ("a\r", text);
    text = "\n";
    uLogger::RemoveOneLineEnd(text);
    EXPECT_EQ("", text);
    text = "";
    uLogger::RemoveOneLineEnd(text);
    EXPECT_EQ("", text);
    text = "a\nb";
    uLogger::RemoveOneLineEnd(text);
    EXPECT_EQ("a\nb", text);
}

TEST(uLoggerTest, LongMessageIsNotCutAtTheBufferSize) {
    const std::string path = LogPath();
    const std::string longText(6000, 'x');
    {
        uLogger logger(path, true);
        logger.Write(uLogger::Message, 0, "%s", longText.c_str());
    }
    EXPECT_EQ("M      " + longText + "\n", ReadWholeFile(path));
}

TEST(uLoggerTest, AppendKeepsEarlierContent) {
    const std::string path = LogPath();
    {
        uLogger first(path, true);
        first.Write(uLogger::Message, 0, "one");
    }
    {
        uLogger second(path, true);
        second.Write(uLogger::Message, 0, "two");
    }
    EXPECT_EQ("M      one\nM      two\n", ReadWholeFile(path));
}

TEST(uLoggerTest, WithoutAppendTheFileIsTruncated) {
    const std::string path = LogPath();
    {
        uLogger first(path, true);
        first.Write(uLogger::Message, 0, "one");
    }
    {
        uLogger second(path, false);
        second.Write(uLogger::Message, 0, "two");
    }
    EXPECT_EQ("M      two\n", ReadWholeFile(path));
}

TEST(uLoggerTest, DisablingClosesTheFileAndStopsWriting) {
    const std::string path = LogPath();
    uLogger logger(path, true);
    logger.Write(uLogger::Message, 0, "before");
    EXPECT_TRUE(logger.IsFileOpen());
    EXPECT_TRUE(logger.SetEnabled(false));
    EXPECT_FALSE(logger.IsFileOpen());
    EXPECT_FALSE(logger.IsEnabled());
    logger.Write(uLogger::Message, 0, "while off");
    EXPECT_FALSE(logger.SetEnabled(true));
    logger.Write(uLogger::Message, 0, "after");
    EXPECT_EQ("M      before\nM      after\n", ReadWholeFile(path));
}

TEST(uLoggerTest, UnopenableFileLosesLinesSilently) {
    uLogger logger(ScratchDirectory() + "/missing/dir/test.log", true);
    logger.Write(uLogger::Message, 0, "lost");
    EXPECT_FALSE(logger.IsFileOpen());
    EXPECT_TRUE(logger.IsEnabled());
}

TEST(uLoggerTest, ConsoleOutputGetsTheSameLine) {
    const std::string path = LogPath();
    uLogger logger(path, true);
    logger.SetToConsole(true);
    ::testing::internal::CaptureStdout();
    ::testing::internal::CaptureStderr();
    logger.Write(uLogger::Warning, 0, "to console\r\n");
    const std::string out = ::testing::internal::GetCapturedStdout();
    const std::string err = ::testing::internal::GetCapturedStderr();
    EXPECT_EQ(" W     to console\n", out);
    EXPECT_EQ("", err);
    EXPECT_EQ(" W     to console\n", ReadWholeFile(path));
}

TEST(uLoggerTest, DebuggerOutputIsStandardError) {
    const std::string path = LogPath();
    uLogger logger(path, true);
    logger.SetToDebugger(true);
    ::testing::internal::CaptureStdout();
    ::testing::internal::CaptureStderr();
    logger.Write(uLogger::Error, 0, "to debugger");
    const std::string out = ::testing::internal::GetCapturedStdout();
    const std::string err = ::testing::internal::GetCapturedStderr();
    EXPECT_EQ("", out);
    // Where the system has a debugger channel (OutputDebugStringA) the line goes there instead.
    EXPECT_EQ(rlx_test::kDebuggerOutputIsStandardError ? "    E  to debugger\n" : "", err);
    EXPECT_EQ("    E  to debugger\n", ReadWholeFile(path));
}

TEST(uLoggerTest, EightThreadsWriteWholeLinesThatNeverInterleave) {
    const std::string path = LogPath();
    const int kThreads = 8;
    const int kLines = 10000;
    {
        uLogger logger(path, true);
        std::vector<std::thread> threads;
        for (int t = 0; t < kThreads; ++t) {
            threads.emplace_back([&logger, t] {
                for (int i = 0; i < kLines; ++i) {
                    logger.Write(uLogger::Message, uLogger::TimeStamp, "thread %d line %d payload-%d-%d", t, i, t, i);
                }
            });
        }
        for (std::thread& thread : threads) thread.join();
    }
    const std::string content = ReadWholeFile(path);
    ASSERT_FALSE(content.empty());
    EXPECT_EQ('\n', content.back());
    const std::vector<std::string> lines = SplitLines(content);
    ASSERT_EQ(static_cast<std::size_t>(kThreads * kLines), lines.size());

    const std::regex shape(std::string("M     ") + kTimeStamp + "thread ([0-7]) line ([0-9]+) payload-([0-7])-([0-9]+)");
    std::vector<std::set<int>> seen(kThreads);
    std::vector<int> lastIndex(kThreads, -1);
    std::size_t malformed = 0;
    for (const std::string& line : lines) {
        std::smatch match;
        if (!std::regex_match(line, match, shape) || match[1] != match[3] || match[2] != match[4]) {
            ++malformed;
            continue;
        }
        const int thread = std::stoi(match[1]);
        const int index = std::stoi(match[2]);
        seen[static_cast<std::size_t>(thread)].insert(index);
        // Each thread's own lines keep their order.
        EXPECT_GT(index, lastIndex[static_cast<std::size_t>(thread)]);
        lastIndex[static_cast<std::size_t>(thread)] = index;
    }
    EXPECT_EQ(0u, malformed);
    for (int t = 0; t < kThreads; ++t) EXPECT_EQ(static_cast<std::size_t>(kLines), seen[static_cast<std::size_t>(t)].size());
}
