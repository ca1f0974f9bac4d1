#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <thread>

#include "TestScratch.h"
#include "support/TraceDirectories.h"
#include "support/uEnvironment.h"
#include "support/uString.h"

using KW_MBR::source_utilities_error;
using KW_MBR::TraceDirectories;
using KW_MBR::uEnvironment;

namespace {

std::string SetFailure(const char* name, const char* value) {
    try {
        uEnvironment::Set(name, value);
    } catch (const source_utilities_error& e) {
        return e.what();
    }
    return "no exception";
}

}  // namespace

TEST(uEnvironmentTest, UnsetVariableReadsEmpty) {
    rlx_test::UnsetVariable("RLX_TEST_UNSET_VARIABLE");
    EXPECT_STREQ("", uEnvironment::Get("RLX_TEST_UNSET_VARIABLE"));
}

TEST(uEnvironmentTest, NullNameReadsEmpty) { EXPECT_STREQ("", uEnvironment::Get(nullptr)); }

TEST(uEnvironmentTest, SetThenGet) {
    EXPECT_TRUE(uEnvironment::Set("RLX_TEST_VARIABLE", "some value"));
    EXPECT_STREQ("some value", uEnvironment::Get("RLX_TEST_VARIABLE"));
    EXPECT_EQ("some value", rlx_test::VariableOr("RLX_TEST_VARIABLE", "<unset>"));
    EXPECT_TRUE(uEnvironment::Set("RLX_TEST_VARIABLE", ""));
    EXPECT_STREQ("", uEnvironment::Get("RLX_TEST_VARIABLE"));
}

TEST(uEnvironmentTest, NullNameRaises) {
    EXPECT_EQ("failed set an environment variable name to null", SetFailure(nullptr, "v"));
}

TEST(uEnvironmentTest, NullValueRaises) {
    rlx_test::SetVariable("RLX_TEST_KEPT", "kept");
    EXPECT_EQ("failed set an environment variable value to null", SetFailure("RLX_TEST_KEPT", nullptr));
    EXPECT_EQ("kept", rlx_test::VariableOr("RLX_TEST_KEPT", "<unset>"));
}

TEST(uEnvironmentTest, ReadsOfOneThreadShareOneCacheEntry) {
    rlx_test::SetVariable("RLX_TEST_A", "alpha");
    rlx_test::SetVariable("RLX_TEST_B", "beta");
    const char* first = uEnvironment::Get("RLX_TEST_A");
    EXPECT_STREQ("alpha", first);
    const char* second = uEnvironment::Get("RLX_TEST_B");
    EXPECT_EQ(first, second);  // the same thread's entry, refilled
    EXPECT_STREQ("beta", first);
}

TEST(uEnvironmentTest, OtherThreadsDoNotTouchThisThreadsEntry) {
    rlx_test::SetVariable("RLX_TEST_A", "alpha");
    rlx_test::SetVariable("RLX_TEST_B", "beta");
    const char* mine = uEnvironment::Get("RLX_TEST_A");
    const char* theirs = nullptr;
    std::string theirValue;
    std::thread other([&] {
        theirs = uEnvironment::Get("RLX_TEST_B");
        theirValue = theirs;
    });
    other.join();
    EXPECT_NE(mine, theirs);
    EXPECT_EQ("beta", theirValue);
    EXPECT_STREQ("alpha", mine);
}

TEST(TraceDirectoriesTest, JoinAddsOneSeparator) {
    using rlx_test::NativePath;
    EXPECT_EQ(NativePath("/a/b/c"), TraceDirectories::Join(NativePath("/a/b"), "c"));
    EXPECT_EQ(NativePath("/a/b/c"), TraceDirectories::Join(NativePath("/a/b/"), "c"));
    EXPECT_EQ(NativePath("/c"), TraceDirectories::Join("", "c"));
}

TEST(TraceDirectoriesTest, JoinCollapsesRunsOfSeparators) {
    using rlx_test::NativePath;
    EXPECT_EQ(NativePath("/a/b/c"), TraceDirectories::Join("//a//b", "c"));
    EXPECT_EQ(NativePath("/a/x/y"), TraceDirectories::Join("/a", "x///y"));
    EXPECT_EQ(NativePath("/a/"), TraceDirectories::Join("/a////", "/"));
}

TEST(TraceDirectoriesTest, CreateWithParentsMakesEveryLevel) {
    const std::string base = rlx_test::ScratchDirectory();
    const std::string deep = rlx_test::NativePath(base + "/one/two/three");
    TraceDirectories::CreateWithParents(deep);
    EXPECT_TRUE(rlx_test::IsDirectory(base + "/one"));
    EXPECT_TRUE(rlx_test::IsDirectory(base + "/one/two"));
    EXPECT_TRUE(rlx_test::IsDirectory(deep));
    TraceDirectories::CreateWithParents(deep);  // existing directories are harmless
    EXPECT_TRUE(rlx_test::IsDirectory(deep));
}

TEST(TraceDirectoriesTest, CreateWithParentsSkipsDriveLikePrefixes) {
    const std::string base = rlx_test::ScratchDirectory();
    const std::string path = rlx_test::NativePath(base + "/drive:/sub");
    TraceDirectories::CreateWithParents(path);
    EXPECT_FALSE(rlx_test::IsDirectory(base + "/drive:"));
    EXPECT_FALSE(rlx_test::IsDirectory(path));
}

TEST(TraceDirectoriesTest, UserProfileComesFirst) {
    rlx_test::SetVariable("USERPROFILE", "/profile/dir");
    rlx_test::SetVariable("HOME", "/home/dir");
    EXPECT_EQ("/profile/dir", TraceDirectories::UserProfile());
}

TEST(TraceDirectoriesTest, HomeWhenUserProfileIsUnsetOrEmpty) {
    rlx_test::SetVariable("HOME", "/home/dir");
    rlx_test::UnsetVariable("USERPROFILE");
    if (!rlx_test::kHomeStandsInForUserProfile) {
        EXPECT_THROW(TraceDirectories::UserProfile(), source_utilities_error);
        rlx_test::SetVariable("USERPROFILE", "");
        EXPECT_THROW(TraceDirectories::UserProfile(), source_utilities_error);
        return;
    }
    EXPECT_EQ("/home/dir", TraceDirectories::UserProfile());
    rlx_test::SetVariable("USERPROFILE", "");
    EXPECT_EQ("/home/dir", TraceDirectories::UserProfile());
}

TEST(TraceDirectoriesTest, NoProfileAtAllRaises) {
    rlx_test::UnsetVariable("USERPROFILE");
    rlx_test::UnsetVariable("HOME");
    try {
        TraceDirectories::UserProfile();
        FAIL() << "no exception";
    } catch (const source_utilities_error& e) {
        EXPECT_STREQ("failed to read environment variable \"USERPROFILE\"", e.what());
    }
    EXPECT_THROW(TraceDirectories::Data(), source_utilities_error);
}

TEST(TraceDirectoriesTest, TheThreeDirectoriesAreCreatedUnderTheProfile) {
    const std::string profile = rlx_test::ScratchDirectory() + "/nested//profile/";
    rlx_test::SetVariable("USERPROFILE", profile.c_str());
    const std::string expectedBase = rlx_test::ScratchDirectory() + "/nested/profile/.KW-trace";
    EXPECT_EQ(rlx_test::NativePath(expectedBase), TraceDirectories::Logging());
    EXPECT_EQ(rlx_test::NativePath(expectedBase + "/data"), TraceDirectories::Data());
    EXPECT_EQ(rlx_test::NativePath(expectedBase + "/settings"), TraceDirectories::Settings());
    EXPECT_TRUE(rlx_test::IsDirectory(expectedBase + "/data"));
    EXPECT_TRUE(rlx_test::IsDirectory(expectedBase + "/settings"));
}
