#include <gtest/gtest.h>

#include <cstdlib>
#include <regex>
#include <string>
#include <vector>

#include "TestScratch.h"
#include "support/uLoggerRegistry.h"

using KW_MBR::uLogger;
using KW_MBR::uLoggerRegistry;
using rlx_test::ReadWholeFile;
using rlx_test::ScratchDirectory;
using rlx_test::SplitLines;

namespace {

const char* const kLevelVariable = "RLX_TEST_LOGGING_LEVEL";
const char* const kDirectoryVariable = "RLX_TEST_LOGGING_DIRECTORY";
const char* const kFileName = "registry_test_log.txt";
const char* const kTimeStamp = "[0-2][0-9]:[0-5][0-9]:[0-6][0-9]:[0-9]{3} \\| ";

// A profile and a logging directory of the test's own, and the level to apply.
class RegistrySetUp : public ::testing::Test {
protected:
    void SetUp() override {
        m_scratch = ScratchDirectory();
        rlx_test::SetVariable("USERPROFILE", m_scratch.c_str());
        rlx_test::SetVariable(kDirectoryVariable, m_scratch.c_str());
        rlx_test::UnsetVariable(kLevelVariable);
    }

    void SetLevel(const char* value) { rlx_test::SetVariable(kLevelVariable, value); }
    std::string LogFile() const { return m_scratch + rlx_test::kPathSeparator + kFileName; }

    std::string m_scratch;
};

struct LevelRow {
    const char* raw;  // null: the variable is unset
    bool enabled;
    bool toConsole;
    bool toDebugger;
    std::int32_t level;
};

class LevelTable : public RegistrySetUp, public ::testing::WithParamInterface<LevelRow> {};

}  // namespace

TEST_F(RegistrySetUp, MissingFileOrLevelNameFails) {
    uLoggerRegistry registry;
    EXPECT_FALSE(registry.SetUp(nullptr, kLevelVariable, kDirectoryVariable, true));
    EXPECT_FALSE(registry.SetUp(kFileName, nullptr, kDirectoryVariable, true));
    EXPECT_EQ(nullptr, registry.Current());
    EXPECT_EQ(0u, registry.InitCount());
    EXPECT_EQ(0, registry.Level());
}

TEST_P(LevelTable, RawLevelSetsSwitchesAndLevel) {
    const LevelRow& row = GetParam();
    if (row.raw != nullptr) SetLevel(row.raw);
    uLoggerRegistry registry;
    ::testing::internal::CaptureStdout();
    ::testing::internal::CaptureStderr();
    const bool result = registry.SetUp(kFileName, kLevelVariable, kDirectoryVariable, true);
    const std::string out = ::testing::internal::GetCapturedStdout();
    const std::string err = ::testing::internal::GetCapturedStderr();
    ASSERT_TRUE(result);
    ASSERT_NE(nullptr, registry.Current());
    EXPECT_EQ(row.enabled, registry.Current()->IsEnabled());
    EXPECT_EQ(row.toConsole, registry.Current()->ToConsole());
    EXPECT_EQ(row.toDebugger, registry.Current()->ToDebugger());
    EXPECT_EQ(row.level, registry.Level());
    EXPECT_EQ(1u, registry.InitCount());
    EXPECT_TRUE(registry.ByName());

    const std::string fileContent = ReadWholeFile(LogFile());
    if (row.enabled) {
        EXPECT_EQ(2u, SplitLines(fileContent).size()) << fileContent;
    } else {
        EXPECT_FALSE(rlx_test::IsRegularFile(LogFile()));
    }
    EXPECT_EQ(row.enabled && row.toConsole ? fileContent : std::string(), out);
    EXPECT_EQ(row.enabled && row.toDebugger && rlx_test::kDebuggerOutputIsStandardError ? fileContent : std::string(),
              err);
}

INSTANTIATE_TEST_SUITE_P(EveryRawLevel, LevelTable,
                         ::testing::Values(LevelRow{"1", true, false, false, 1}, LevelRow{"2", true, true, false, 1},
                                           LevelRow{"3", true, false, false, 2}, LevelRow{"4", true, true, false, 2},
                                           LevelRow{"5", true, true, true, 2}, LevelRow{"6", true, true, true, 3},
                                           LevelRow{"0", false, false, false, 0},
                                           LevelRow{nullptr, false, false, false, 0},
                                           LevelRow{"7", false, false, false, 7},
                                           LevelRow{"100", false, false, false, 100},
                                           LevelRow{"-1", false, false, false, -1},
                                           LevelRow{"abc", false, false, false, 0}),
                         [](const ::testing::TestParamInfo<LevelRow>& info) {
                             if (info.param.raw == nullptr) return std::string("unset");
                             std::string name = std::string("raw_") + info.param.raw;
                             for (char& c : name) {
                                 if (c == '-') c = 'm';
                             }
                             return name;
                         });

TEST_F(RegistrySetUp, SetUpWritesTheTwoDirectoryLines) {
    SetLevel("1");
    uLoggerRegistry registry;
    ASSERT_TRUE(registry.SetUp(kFileName, kLevelVariable, kDirectoryVariable, true));
    EXPECT_EQ(LogFile(), registry.Current()->Path());
    const std::vector<std::string> lines = SplitLines(ReadWholeFile(LogFile()));
    ASSERT_EQ(2u, lines.size());
    EXPECT_TRUE(std::regex_match(lines[0], std::regex(std::string("M     ") + kTimeStamp +
                                                      "Logger : trace user settings directory is .*")))
        << lines[0];
    EXPECT_EQ(rlx_test::NativePath(m_scratch + "/.KW-trace/settings"), lines[0].substr(lines[0].find(" is ") + 4));
    EXPECT_EQ(rlx_test::NativePath(m_scratch + "/.KW-trace/data"), lines[1].substr(lines[1].find(" is ") + 4));
    EXPECT_NE(std::string::npos, lines[1].find("| Logger : trace temporary data directory is "));
    EXPECT_TRUE(rlx_test::IsDirectory(m_scratch + "/.KW-trace/settings"));
    EXPECT_TRUE(rlx_test::IsDirectory(m_scratch + "/.KW-trace/data"));
}

TEST_F(RegistrySetUp, LevelIsReadAsDecimal) {
    SetLevel("010");  // atoi: ten, not octal eight
    uLoggerRegistry registry;
    ASSERT_TRUE(registry.SetUp(kFileName, kLevelVariable, kDirectoryVariable, true));
    EXPECT_EQ(10, registry.Level());
}

TEST_F(RegistrySetUp, SecondSetUpForTheSameNameReusesTheLoggerWithoutReapplyingTheLevel) {
    SetLevel("1");
    uLoggerRegistry registry;
    ASSERT_TRUE(registry.SetUp(kFileName, kLevelVariable, kDirectoryVariable, true));
    uLogger* first = registry.Current();
    SetLevel("6");
    ASSERT_TRUE(registry.SetUp(kFileName, kLevelVariable, kDirectoryVariable, true));
    EXPECT_EQ(first, registry.Current());
    EXPECT_EQ(1, registry.Level());
    EXPECT_FALSE(first->ToConsole());
    EXPECT_EQ(1u, registry.InitCount());
    EXPECT_EQ(2u, SplitLines(ReadWholeFile(LogFile())).size());  // no further set-up lines
}

TEST_F(RegistrySetUp, SetUpForAnotherNameMakesASecondLogger) {
    SetLevel("1");
    uLoggerRegistry registry;
    ASSERT_TRUE(registry.SetUp(kFileName, kLevelVariable, kDirectoryVariable, true));
    uLogger* first = registry.Current();
    SetLevel("3");
    ASSERT_TRUE(registry.SetUp("other_log.txt", kLevelVariable, kDirectoryVariable, true));
    EXPECT_NE(first, registry.Current());
    EXPECT_EQ(m_scratch + rlx_test::kPathSeparator + "other_log.txt", registry.Current()->Path());
    EXPECT_EQ(2, registry.Level());
    EXPECT_EQ(2u, registry.InitCount());
    // Back to the first name: found again, level untouched.
    ASSERT_TRUE(registry.SetUp(kFileName, kLevelVariable, kDirectoryVariable, true));
    EXPECT_EQ(first, registry.Current());
    EXPECT_EQ(2, registry.Level());
    EXPECT_EQ(2u, registry.InitCount());
}

TEST_F(RegistrySetUp, WithoutSharingByNameAnExistingLoggerStays) {
    SetLevel("1");
    uLoggerRegistry registry;
    ASSERT_TRUE(registry.SetUp(kFileName, kLevelVariable, kDirectoryVariable, false));
    uLogger* first = registry.Current();
    EXPECT_FALSE(registry.ByName());
    ASSERT_TRUE(registry.SetUp("other_log.txt", kLevelVariable, kDirectoryVariable, false));
    EXPECT_EQ(first, registry.Current());
    EXPECT_EQ(1u, registry.InitCount());
}

TEST_F(RegistrySetUp, UnreadableLoggingVolumeLeavesNoLogger) {
    SetLevel("1");
    const std::string missing = m_scratch + "/does/not/exist";
    rlx_test::SetVariable(kDirectoryVariable, missing.c_str());
    uLoggerRegistry registry;
    EXPECT_FALSE(registry.SetUp(kFileName, kLevelVariable, kDirectoryVariable, true));
    EXPECT_EQ(nullptr, registry.Current());
    EXPECT_EQ(0, registry.Level());
    EXPECT_EQ(0u, registry.InitCount());
    EXPECT_FALSE(rlx_test::IsDirectory(missing));
}

TEST_F(RegistrySetUp, EmptyDirectoryVariableFailsTheDiskCheck) {
    SetLevel("1");
    rlx_test::SetVariable(kDirectoryVariable, "");
    uLoggerRegistry registry;
    EXPECT_FALSE(registry.SetUp(kFileName, kLevelVariable, kDirectoryVariable, true));
    EXPECT_EQ(nullptr, registry.Current());
}

TEST_F(RegistrySetUp, WithoutDirectoryVariableThePathIsTheFileName) {
    SetLevel("0");
    uLoggerRegistry registry;
    ASSERT_TRUE(registry.SetUp(kFileName, kLevelVariable, nullptr, true));
    EXPECT_EQ(std::string(kFileName), registry.Current()->Path());
}

TEST(uLoggerRegistryTest, MinimumFreeSpaceIsFiveMillionBytes) { EXPECT_EQ(5120000u, uLoggerRegistry::kMinimumFreeBytes); }

TEST(uLoggerRegistryTest, ProcessRegistryIsOneObject) {
    EXPECT_EQ(&uLoggerRegistry::Instance(), &uLoggerRegistry::Instance());
}
