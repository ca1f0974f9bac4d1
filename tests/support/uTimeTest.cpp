#include <gtest/gtest.h>

#include <chrono>
#include <cstring>
#include <regex>
#include <string>
#include <thread>

#include "support/uTime.h"

using KW_MBR::uTime;

TEST(uTimeTest, ConstructionMakesTheStateValid) {
    uTime::SetState(uTime::TimeNotTaken);
    uTime now;
    EXPECT_EQ(uTime::TimeValid, uTime::State());
}

TEST(uTimeTest, FieldsAreInRange) {
    uTime now;
    EXPECT_GE(now.Year(), 2000);
    EXPECT_GE(now.Month(), 1);
    EXPECT_LE(now.Month(), 12);
    EXPECT_GE(now.Day(), 1);
    EXPECT_LE(now.Day(), 31);
    EXPECT_GE(now.Hour(), 0);
    EXPECT_LE(now.Hour(), 23);
    EXPECT_GE(now.Minute(), 0);
    EXPECT_LE(now.Minute(), 59);
    EXPECT_GE(now.Second(), 0);
    EXPECT_LE(now.Second(), 60);
    EXPECT_GE(now.Milliseconds(), 0);
    EXPECT_LE(now.Milliseconds(), 999);
    EXPECT_GE(now.DayOfWeek(), 0);
    EXPECT_LE(now.DayOfWeek(), 6);
    EXPECT_EQ(uTime::ComputeDayOfYear(now.Year(), now.Month(), now.Day()), now.DayOfYear());
}

TEST(uTimeTest, MillisecondsArePaddedToThreeDigits) {
    uTime now;
    char buffer[64];
    ASSERT_GT(now.Format(buffer, sizeof buffer, "%s"), 0);
    EXPECT_TRUE(std::regex_match(buffer, std::regex("[0-9]{3}"))) << buffer;
    char expected[8];
    std::snprintf(expected, sizeof expected, "%03d", now.Milliseconds());
    EXPECT_STREQ(expected, buffer);
}

TEST(uTimeTest, HashMillisecondsAreUnpadded) {
    uTime now;
    char buffer[64];
    ASSERT_GT(now.Format(buffer, sizeof buffer, "[%#s]"), 0);
    EXPECT_EQ("[" + std::to_string(now.Milliseconds()) + "]", std::string(buffer));
}

TEST(uTimeTest, LogTimePatternHasTheLineLayout) {
    uTime now;
    char buffer[64];
    const int length = now.Format(buffer, sizeof buffer, "%H:%M:%S:%s | ");
    EXPECT_EQ(15, length);
    EXPECT_TRUE(std::regex_match(buffer, std::regex("[0-2][0-9]:[0-5][0-9]:[0-6][0-9]:[0-9]{3} \\| "))) << buffer;
    char hour[8];
    std::snprintf(hour, sizeof hour, "%02d:", now.Hour());
    EXPECT_EQ(0, std::strncmp(buffer, hour, 3));
}

TEST(uTimeTest, DatePatternUsesStrftime) {
    uTime now;
    char buffer[64];
    now.Format(buffer, sizeof buffer, "%m/%d/%y | ");
    char expected[64];
    std::snprintf(expected, sizeof expected, "%02d/%02d/%02d | ", now.Month(), now.Day(), now.Year() % 100);
    EXPECT_STREQ(expected, buffer);
}

TEST(uTimeTest, PercentPercentStaysALiteralPercent) {
    uTime now;
    char buffer[64];
    now.Format(buffer, sizeof buffer, "100%%s");
    EXPECT_STREQ("100%s", buffer);
}

TEST(uTimeTest, NullBufferOrNonPositiveSizeYieldsNothing) {
    uTime now;
    EXPECT_EQ(0, now.Format(nullptr, 10, "%H"));
    char buffer[8] = "keep";
    EXPECT_EQ(0, now.Format(buffer, 0, "%H"));
    EXPECT_STREQ("keep", buffer);
    EXPECT_EQ(0, now.Format(buffer, -5, "%H"));
    EXPECT_STREQ("keep", buffer);
}

TEST(uTimeTest, TooSmallBufferGivesEmptyText) {
    uTime now;
    char buffer[4] = "xyz";
    EXPECT_EQ(0, now.Format(buffer, sizeof buffer, "%H:%M:%S"));
    EXPECT_STREQ("", buffer);
}

TEST(uTimeTest, NotTakenStateGivesInvalidTimeCutToTheBuffer) {
    uTime now;
    uTime::SetState(uTime::TimeNotTaken);
    char buffer[64];
    EXPECT_EQ(12, now.Format(buffer, sizeof buffer, "%H"));
    EXPECT_STREQ("Invalid time", buffer);
    char small[5];
    now.Format(small, sizeof small, "%H");
    EXPECT_STREQ("Inva", small);
    uTime again;
    EXPECT_EQ(uTime::TimeValid, uTime::State());
}

TEST(uTimeTest, FormattingDisabledStateYieldsNothing) {
    uTime now;
    uTime::SetState(uTime::FormattingDisabled);
    char buffer[16] = "keep";
    EXPECT_EQ(0, now.Format(buffer, sizeof buffer, "%H"));
    EXPECT_STREQ("keep", buffer);
}

TEST(uTimeTest, DayOfYearTablesAreSwappedOnPurpose) {
    // Years not divisible by 4 take the leap-year table.
    EXPECT_EQ(1, uTime::ComputeDayOfYear(2025, 1, 1));
    EXPECT_EQ(61, uTime::ComputeDayOfYear(2025, 3, 1));
    EXPECT_EQ(336, uTime::ComputeDayOfYear(2025, 12, 1));
    // Years divisible by 4 take the common-year table.
    EXPECT_EQ(60, uTime::ComputeDayOfYear(2024, 3, 1));
    EXPECT_EQ(335, uTime::ComputeDayOfYear(2024, 12, 1));
    EXPECT_EQ(32, uTime::ComputeDayOfYear(2024, 2, 1));
    EXPECT_EQ(32, uTime::ComputeDayOfYear(2025, 2, 1));
}

TEST(uTimeTest, AccessorsReadTheNewestCaptureOfTheProcess) {
    uTime first;
    const int firstMilliseconds = first.Milliseconds();
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    uTime second;
    // 20 ms later the capture differs, and the older object reports the newer one.
    EXPECT_NE(firstMilliseconds, second.Milliseconds());
    EXPECT_EQ(second.Milliseconds(), first.Milliseconds());
    EXPECT_EQ(second.Second(), first.Second());
}
