// The trace logger written by 16 threads at once: every line arrives whole and once.
// Runs under the thread-sanitizer preset too.
#include <cstdio>
#include <fstream>
#include <map>
#include <regex>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "support/uLogger.h"

namespace {

constexpr int kThreads = 16;
constexpr int kLinesPerThread = 500;

}  // namespace

TEST(LoggerThreads, SixteenThreadsWriteWholeLinesInTheirOwnOrder) {
    const std::string path = ::testing::TempDir() + "/logger_threads.txt";
    std::remove(path.c_str());
    {
        KW_MBR::uLogger logger(path, false);
        std::vector<std::thread> writers;
        for (int thread = 0; thread < kThreads; ++thread) {
            writers.emplace_back([&logger, thread] {
                for (int line = 0; line < kLinesPerThread; ++line) {
                    const std::uint32_t flags = (line % 2 == 0) ? KW_MBR::uLogger::Message : KW_MBR::uLogger::Error;
                    logger.Write(flags, KW_MBR::uLogger::TimeStamp, "writer %d line %d of %s", thread, line,
                                 "a message long enough to be torn if two writes interleaved");
                }
            });
        }
        for (std::thread& writer : writers) writer.join();
    }

    std::ifstream file(path);
    const std::regex layout(
        R"(^(M     |    E )\d\d:\d\d:\d\d:\d\d\d \| writer (\d+) line (\d+) of a message long enough to be torn if two writes interleaved$)");
    std::map<int, int> nextLine;
    std::string text;
    int lines = 0;
    while (std::getline(file, text)) {
        ++lines;
        std::smatch match;
        ASSERT_TRUE(std::regex_match(text, match, layout)) << text;
        const int thread = std::stoi(match[2].str());
        const int line = std::stoi(match[3].str());
        EXPECT_EQ(match[1].str(), line % 2 == 0 ? "M     " : "    E ");
        EXPECT_EQ(line, nextLine[thread]) << "writer " << thread;
        nextLine[thread] = line + 1;
    }
    EXPECT_EQ(lines, kThreads * kLinesPerThread);
    ASSERT_EQ(nextLine.size(), static_cast<std::size_t>(kThreads));
    for (const auto& [thread, next] : nextLine) EXPECT_EQ(next, kLinesPerThread) << "writer " << thread;
    std::remove(path.c_str());
}
