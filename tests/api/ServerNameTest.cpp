// The server name of a CPU type from the driver table.

#include <cstring>

#include "ApiTestSupport.h"

using namespace api_test;

TEST(GetRLXServerName, ExactRowFillsTheRestOfTheBufferWithZeros) {
    UseXmlDirectory("db");
    char name[16];
    std::memset(name, 'Q', sizeof name);
    EXPECT_TRUE(GetRLXServerName(1000, name, sizeof name));
    EXPECT_STREQ("SRV1000", name);
    for (std::size_t i = 7; i < sizeof name; ++i) EXPECT_EQ('\0', name[i]) << "position " << i;
}

TEST(GetRLXServerName, WildcardKeysAreTriedInTurn) {
    UseXmlDirectory("db");
    char name[16] = {};
    EXPECT_TRUE(GetRLXServerName(6474, name, sizeof name));
    EXPECT_STREQ("SRV64X", name);
    EXPECT_TRUE(GetRLXServerName(2345, name, sizeof name));
    EXPECT_STREQ("SRV0X", name);
}

TEST(GetRLXServerName, FiftySixRangeKeepsItsRevisionDigit) {
    // 56012, 5601x, 560x: no "_2" suffix as for the property file.
    UseXmlDirectory("db");
    char name[16] = {};
    EXPECT_TRUE(GetRLXServerName(56012, name, sizeof name));
    EXPECT_STREQ("SRV560", name);
}

TEST(GetRLXServerName, UnknownCpuTypeSucceedsWithAnEmptyName) {
    UseXmlDirectory("db");
    char name[16];
    std::memset(name, 'Q', sizeof name);
    EXPECT_TRUE(GetRLXServerName(123456, name, sizeof name));
    EXPECT_EQ('\0', name[0]);
    EXPECT_EQ('Q', name[1]);
}

TEST(GetRLXServerName, NameThatFillsTheBufferGetsNoTerminator) {
    UseXmlDirectory("db");
    char name[10];
    std::memset(name, 'Q', sizeof name);
    EXPECT_TRUE(GetRLXServerName(1000, name, 7));
    EXPECT_EQ(0, std::memcmp(name, "SRV1000", 7));
    EXPECT_EQ('Q', name[7]);
    std::memset(name, 'Q', sizeof name);
    EXPECT_TRUE(GetRLXServerName(1000, name, 3));
    EXPECT_EQ(0, std::memcmp(name, "SRV", 3));
    EXPECT_EQ('Q', name[3]);
}

TEST(GetRLXServerName, BufferOfSizeZeroIsNeverWritten) {
    UseXmlDirectory("db");
    char name[4];
    std::memset(name, 'Q', sizeof name);
    EXPECT_TRUE(GetRLXServerName(123456, name, 0));  // first load, nothing found
    EXPECT_TRUE(GetRLXServerName(1000, name, 0));
    for (char c : name) EXPECT_EQ('Q', c);
}

TEST(GetRLXServerName, MissingOrBrokenTableFailsAndIsNotCached) {
    UseXmlDirectory("empty");
    char name[16];
    std::memset(name, 'Q', sizeof name);
    EXPECT_FALSE(GetRLXServerName(1000, name, sizeof name));
    EXPECT_EQ('\0', name[0]);
    EXPECT_EQ('Q', name[1]);
    UseXmlDirectory("baddrv");
    EXPECT_FALSE(GetRLXServerName(1000, name, sizeof name));
    UseXmlDirectory("db");
    EXPECT_TRUE(GetRLXServerName(1000, name, sizeof name));
    EXPECT_STREQ("SRV1000", name);
}

TEST(GetRLXServerName, SharesTheDriverTableWithCreatePropertyDB) {
    UseXmlDirectory("db");
    char entity[16] = {};
    bool trace = false;
    ASSERT_EQ(0u, CreatePropertyDB(1000, entity, sizeof entity, &trace, 0));
    UseXmlDirectory("dir7");
    char name[16] = {};
    EXPECT_TRUE(GetRLXServerName(1000, name, sizeof name));
    EXPECT_STREQ("SRV1000", name);
    EXPECT_TRUE(GetRLXServerName(7000, name, sizeof name));  // dir7's own row is never read
    EXPECT_STREQ("SRV0X", name);
}

TEST(GetRLXServerName, TableLoadedHereServesCreatePropertyDB) {
    UseXmlDirectory("db");
    char name[16] = {};
    ASSERT_TRUE(GetRLXServerName(1000, name, sizeof name));
    UseXmlDirectory("dir7");
    char entity[16] = {};
    bool trace = false;
    EXPECT_EQ(0u, CreatePropertyDB(1000, entity, sizeof entity, &trace, 0));
    EXPECT_STREQ("ENT1000", entity);
}

TEST(GetRLXServerName, NullBufferFails) {
    UseXmlDirectory("db");
    EXPECT_FALSE(GetRLXServerName(1000, nullptr, 16));
    EXPECT_FALSE(GetRLXServerName(1000, nullptr, 0));
}
