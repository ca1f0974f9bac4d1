#include <gtest/gtest.h>

#include <string>

#include "TestScratch.h"
#include "support/uFile.h"

using KW_MBR::uFile;
using rlx_test::ReadWholeFile;
using rlx_test::ScratchDirectory;

TEST(uFileTest, WritingToAClosedFileDoesNothing) {
    uFile file;
    EXPECT_FALSE(file.IsOpen());
    EXPECT_EQ(0u, file.Write("abc", 3));
    file.Flush();
    file.Close();
    EXPECT_FALSE(file.IsOpen());
}

TEST(uFileTest, WriteFlushAndReadBackWhileOpen) {
    const std::string path = ScratchDirectory() + "/file.txt";
    uFile file;
    ASSERT_TRUE(file.Open(path.c_str(), "w+"));
    EXPECT_EQ(5u, file.Write("hello", 5));
    file.Flush();
    // Another opener reads what was flushed while the file stays open.
    EXPECT_EQ("hello", ReadWholeFile(path));
    file.Close();
    EXPECT_FALSE(file.IsOpen());
}

TEST(uFileTest, AppendModeKeepsContent) {
    const std::string path = ScratchDirectory() + "/file.txt";
    {
        uFile file;
        ASSERT_TRUE(file.Open(path.c_str(), "a+"));
        file.Write("one", 3);
    }
    {
        uFile file;
        ASSERT_TRUE(file.Open(path.c_str(), "a+"));
        file.Write("two", 3);
    }
    EXPECT_EQ("onetwo", ReadWholeFile(path));
}

TEST(uFileTest, OpenFailsForMissingDirectoryOrNullArguments) {
    uFile file;
    EXPECT_FALSE(file.Open((ScratchDirectory() + "/missing/file.txt").c_str(), "w+"));
    EXPECT_FALSE(file.Open(nullptr, "w+"));
    EXPECT_FALSE(file.Open("x", nullptr));
    EXPECT_FALSE(file.IsOpen());
}
