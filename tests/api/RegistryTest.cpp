// Opening and closing numbered databases: numbering, the driver table, wildcard and
// revision keys, the entity-code buffer and the variant file names.

#include <cstring>
#include <string>

#include "ApiTestSupport.h"

using namespace api_test;

namespace {

std::string TypeDescription(std::uint32_t number) {
    IProperty* type = GetPropertyFromDB_noClone(number, "Type");
    return type != nullptr ? type->GetDescription() : "<no database>";
}

}  // namespace

TEST(DatabaseNumbers, StartAtZeroAndAreNeverReused) {
    UseXmlDirectory("db");
    EXPECT_EQ(0u, CreatePropertyDBByName("cpu.xml", 0));
    ReleasePropertyDB(0);
    EXPECT_EQ(1u, CreatePropertyDBByName("cpu.xml", 0));
    EXPECT_EQ(2u, CreatePropertyDBByName("fixed.xml", 0));
    EXPECT_EQ(nullptr, GetPropertyFromDB_noClone(0, "Type"));
    EXPECT_EQ("cpu", TypeDescription(1));
    EXPECT_EQ("fixed", TypeDescription(2));
}

TEST(DatabaseNumbers, ReleasingTwiceOrAnUnknownNumberDoesNothing) {
    UseXmlDirectory("db");
    ASSERT_EQ(0u, CreatePropertyDBByName("cpu.xml", 0));
    ASSERT_EQ(1u, CreatePropertyDBByName("fixed.xml", 0));
    ReleasePropertyDB(0);
    ReleasePropertyDB(0);
    ReleasePropertyDB(77);
    ReleasePropertyDB(RLX_INVALID_DB);
    EXPECT_EQ("fixed", TypeDescription(1));
    EXPECT_EQ(2u, CreatePropertyDBByName("cpu.xml", 0));
}

TEST(DatabaseNumbers, FailedCreationsDoNotUseUpANumber) {
    UseXmlDirectory("db");
    EXPECT_EQ(RLX_INVALID_DB, CreatePropertyDBByName("broken.xml", 0));
    EXPECT_EQ(RLX_INVALID_DB, CreatePropertyDBByName("nothere.xml", 0));
    EXPECT_EQ(0u, CreatePropertyDBByName("cpu.xml", 0));
}

TEST(DatabaseNumbers, AWellFormedFileWithoutTypedPropertiesStillOpens) {
    UseXmlDirectory("db");
    const std::uint32_t number = CreatePropertyDBByName("plain_empty.xml", 0);
    ASSERT_EQ(0u, number);
    EXPECT_EQ(nullptr, GetRootProperty(number));
    EXPECT_EQ(nullptr, GetPropertyFromDB_noClone(number, "Ignored"));
}

TEST(CreatePropertyDB, ExactRowGivesEntityCodeTraceFlagAndDatabase) {
    UseXmlDirectory("db");
    char entity[16];
    std::memset(entity, 'Q', sizeof entity);
    bool trace = false;
    EXPECT_EQ(0u, CreatePropertyDB(1000, entity, sizeof entity, &trace, 0));
    EXPECT_STREQ("ENT1000", entity);
    for (std::size_t i = 7; i < sizeof entity; ++i) EXPECT_EQ('\0', entity[i]) << "position " << i;
    EXPECT_TRUE(trace);
    EXPECT_EQ("cpu", TypeDescription(0));
}

TEST(CreatePropertyDB, SixtyFourWildcardIsFoundAtTheSecondRetry) {
    UseXmlDirectory("db");
    char entity[16] = {};
    bool trace = false;
    EXPECT_EQ(0u, CreatePropertyDB(6474, entity, sizeof entity, &trace, 0));
    EXPECT_STREQ("ENT64X", entity);
    EXPECT_TRUE(trace);
}

TEST(CreatePropertyDB, ZeroWildcardIsTheLastKeyTried) {
    UseXmlDirectory("db");
    char entity[16] = {};
    bool trace = true;  // the row says NO: the lookup must write it
    EXPECT_EQ(0u, CreatePropertyDB(2345, entity, sizeof entity, &trace, 0));
    EXPECT_STREQ("ENT0X", entity);
    EXPECT_FALSE(trace);
    EXPECT_EQ("fixed", TypeDescription(0));
}

TEST(CreatePropertyDB, OnlyFourRetriesAreMade) {
    // 123456 tries 12345x, 1234x, 123x and 12x; the table's "1x" row is never reached.
    UseXmlDirectory("db");
    char entity[16];
    std::memset(entity, 'Q', sizeof entity);
    bool trace = false;
    EXPECT_EQ(RLX_INVALID_DB, CreatePropertyDB(123456, entity, sizeof entity, &trace, 0));
    EXPECT_EQ('\0', entity[0]);  // cleared while the table was first loaded
    EXPECT_EQ('Q', entity[1]);
    EXPECT_EQ(0u, CreatePropertyDBByName("cpu.xml", 0));
}

TEST(CreatePropertyDB, NoMatchAfterTheZeroWildcardFails) {
    UseXmlDirectory("dir7");
    char entity[16] = {};
    bool trace = false;
    EXPECT_EQ(RLX_INVALID_DB, CreatePropertyDB(1234, entity, sizeof entity, &trace, 0));
    EXPECT_EQ(0u, CreatePropertyDB(7000, entity, sizeof entity, &trace, 0));
    EXPECT_STREQ("ENT7000", entity);
}

TEST(CreatePropertyDB, RevisionDigitOfTheFiftySixRangeIsASuffix) {
    // 56012 is looked up as 5601_2, 560x_2, 56x_2, 5x_2 and 0x_2: the "5601" row is not it.
    UseXmlDirectory("db");
    char entity[16] = {};
    bool trace = true;
    EXPECT_EQ(0u, CreatePropertyDB(56012, entity, sizeof entity, &trace, 0));
    EXPECT_STREQ("ENT0X2", entity);
    EXPECT_FALSE(trace);
    EXPECT_EQ("cpu", TypeDescription(0));

    EXPECT_EQ(1u, CreatePropertyDB(56013, entity, sizeof entity, &trace, 0));
    EXPECT_STREQ("ENT56X3", entity);
    EXPECT_TRUE(trace);
    EXPECT_EQ("fixed", TypeDescription(1));
}

TEST(CreatePropertyDB, RevisionSuffixFollowsEveryWildcardKey) {
    UseXmlDirectory("db");
    char entity[16] = {};
    bool trace = false;
    EXPECT_EQ(0u, CreatePropertyDB(56014, entity, sizeof entity, &trace, 0));  // 560x_4
    EXPECT_STREQ("ENT560X4", entity);
    EXPECT_EQ(1u, CreatePropertyDB(56015, entity, sizeof entity, &trace, 0));  // 5x_5
    EXPECT_STREQ("ENT5X5", entity);
    EXPECT_EQ(RLX_INVALID_DB, CreatePropertyDB(56016, entity, sizeof entity, &trace, 0));
}

TEST(CreatePropertyDB, CpuType6455KeepsItsLastDigit) {
    // The 6455 comparison only applies from 10000 on, so it never splits anything: 6455 is
    // looked up as 6455, 645x, 64x.
    UseXmlDirectory("db");
    char entity[16] = {};
    bool trace = false;
    EXPECT_EQ(0u, CreatePropertyDB(6455, entity, sizeof entity, &trace, 0));
    EXPECT_STREQ("ENT64X", entity);
}

TEST(CreatePropertyDB, OutsideTheFiftySixRangeNoRevisionIsSplitOff) {
    // 55012 has no "_2": its keys 55012, 5501x, 550x, 55x, 5x match nothing.
    UseXmlDirectory("db");
    char entity[16] = {};
    bool trace = false;
    EXPECT_EQ(RLX_INVALID_DB, CreatePropertyDB(55012, entity, sizeof entity, &trace, 0));
}

TEST(CreatePropertyDB, EntityCodeThatFillsTheBufferGetsNoTerminator) {
    UseXmlDirectory("db");
    char entity[12];
    std::memset(entity, 'Q', sizeof entity);
    bool trace = false;
    ASSERT_EQ(0u, CreatePropertyDB(4000, entity, 8, &trace, 0));
    EXPECT_EQ(0, std::memcmp(entity, "ABCDEFGH", 8));
    EXPECT_EQ('Q', entity[8]);

    std::memset(entity, 'Q', sizeof entity);
    ASSERT_EQ(1u, CreatePropertyDB(4000, entity, 4, &trace, 0));
    EXPECT_EQ(0, std::memcmp(entity, "ABCD", 4));
    EXPECT_EQ('Q', entity[4]);

    std::memset(entity, 'Q', sizeof entity);
    ASSERT_EQ(2u, CreatePropertyDB(4000, entity, 11, &trace, 0));
    EXPECT_EQ(0, std::memcmp(entity, "ABCDEFGH\0\0\0", 11));
    EXPECT_EQ('Q', entity[11]);
}

TEST(CreatePropertyDB, BufferOfSizeZeroIsNeverWritten) {
    // Not even entity[0]: neither while the table is first loaded nor on success.
    UseXmlDirectory("db");
    char entity[4];
    std::memset(entity, 'Q', sizeof entity);
    bool trace = false;
    EXPECT_EQ(RLX_INVALID_DB, CreatePropertyDB(123456, entity, 0, &trace, 0));
    EXPECT_EQ(0u, CreatePropertyDB(1000, entity, 0, &trace, 0));
    for (char c : entity) EXPECT_EQ('Q', c);
    EXPECT_TRUE(trace);
}

TEST(CreatePropertyDB, EntityCodeIsCopiedEvenWhenThePropertyFileIsMissing) {
    UseXmlDirectory("db");
    char entity[16] = {};
    bool trace = true;
    EXPECT_EQ(RLX_INVALID_DB, CreatePropertyDB(2000, entity, sizeof entity, &trace, 0));
    EXPECT_STREQ("ENT2000", entity);
    EXPECT_FALSE(trace);
}

TEST(CreatePropertyDB, BrokenPropertyFileFails) {
    UseXmlDirectory("db");
    char entity[16] = {};
    bool trace = false;
    EXPECT_EQ(RLX_INVALID_DB, CreatePropertyDB(5000, entity, sizeof entity, &trace, 0));
    EXPECT_EQ(0u, CreatePropertyDB(1000, entity, sizeof entity, &trace, 0));
}

TEST(CreatePropertyDB, MissingDriverTableFailsAndIsTriedAgainLater) {
    UseXmlDirectory("empty");
    char entity[16];
    std::memset(entity, 'Q', sizeof entity);
    bool trace = false;
    EXPECT_EQ(RLX_INVALID_DB, CreatePropertyDB(1000, entity, sizeof entity, &trace, 0));
    EXPECT_EQ('\0', entity[0]);
    EXPECT_EQ('Q', entity[1]);

    UseXmlDirectory("db");
    EXPECT_EQ(0u, CreatePropertyDB(1000, entity, sizeof entity, &trace, 0));
    EXPECT_STREQ("ENT1000", entity);
}

TEST(CreatePropertyDB, BrokenDriverTableIsNotCached) {
    UseXmlDirectory("baddrv");
    char entity[16] = {};
    bool trace = false;
    EXPECT_EQ(RLX_INVALID_DB, CreatePropertyDB(1000, entity, sizeof entity, &trace, 0));
    UseXmlDirectory("db");
    EXPECT_EQ(0u, CreatePropertyDB(1000, entity, sizeof entity, &trace, 0));
}

TEST(CreatePropertyDB, DriverTableIsKeptForTheLifeOfTheProcess) {
    UseXmlDirectory("db");
    char entity[16] = {};
    bool trace = false;
    ASSERT_EQ(0u, CreatePropertyDB(1000, entity, sizeof entity, &trace, 0));

    // dir7's own table has no row for 1000; the cached one sends us to dir7/cpu.xml.
    UseXmlDirectory("dir7");
    EXPECT_EQ(1u, CreatePropertyDB(1000, entity, sizeof entity, &trace, 0));
    EXPECT_EQ("dir7 cpu", TypeDescription(1));
    EXPECT_EQ(RLX_INVALID_DB, CreatePropertyDB(7000, entity, sizeof entity, &trace, 0));
}

TEST(CreatePropertyDB, VariantIsPassedOnToTheFileName) {
    UseXmlDirectory("db");
    char entity[16] = {};
    bool trace = false;
    ASSERT_EQ(0u, CreatePropertyDB(3000, entity, sizeof entity, &trace, 0x1f));
    EXPECT_EQ("arm_1f", TypeDescription(0));
    EXPECT_EQ(RLX_INVALID_DB, CreatePropertyDB(3000, entity, sizeof entity, &trace, 0));
}

TEST(CreatePropertyDB, NullOutputPointersFailWithoutTouchingAnything) {
    UseXmlDirectory("db");
    char entity[16];
    std::memset(entity, 'Q', sizeof entity);
    bool trace = false;
    EXPECT_EQ(RLX_INVALID_DB, CreatePropertyDB(1000, nullptr, 16, &trace, 0));
    EXPECT_EQ(RLX_INVALID_DB, CreatePropertyDB(1000, entity, sizeof entity, nullptr, 0));
    EXPECT_EQ('Q', entity[0]);
    EXPECT_EQ(0u, CreatePropertyDB(1000, entity, sizeof entity, &trace, 0));
}

TEST(CreatePropertyDBByName, VariantZeroOrNegativeLoadsTheNameUnchanged) {
    UseXmlDirectory("db");
    ASSERT_EQ(0u, CreatePropertyDBByName("cpu.xml", 0));
    EXPECT_EQ("cpu", TypeDescription(0));
    ASSERT_EQ(1u, CreatePropertyDBByName("cpu.xml", -0x1f));
    EXPECT_EQ("cpu", TypeDescription(1));
    EXPECT_EQ(RLX_INVALID_DB, CreatePropertyDBByName("arm9.xml", 0));
}

TEST(CreatePropertyDBByName, PlainNameLosesFourCharactersForTheSuffix) {
    UseXmlDirectory("db");
    ASSERT_EQ(0u, CreatePropertyDBByName("cpu.xml", 0x1f));
    EXPECT_EQ("cpu_1f", TypeDescription(0));
}

TEST(CreatePropertyDBByName, NameWithNineLosesFiveCharacters) {
    UseXmlDirectory("db");
    ASSERT_EQ(0u, CreatePropertyDBByName("arm9.xml", 0x1f));
    EXPECT_EQ("arm_1f", TypeDescription(0));
}

TEST(CreatePropertyDBByName, NameWithElevenLosesSixCharacters) {
    UseXmlDirectory("db");
    ASSERT_EQ(0u, CreatePropertyDBByName("arm11.xml", 0x1f));
    EXPECT_EQ("arm_1f", TypeDescription(0));
}

TEST(CreatePropertyDBByName, DirectoryWithSevenMakesEverySuffixedNameLoseFive) {
    UseXmlDirectory("dir7");
    ASSERT_EQ(0u, CreatePropertyDBByName("cpu.xml", 0x1f));
    EXPECT_EQ("dir7 cp_1f", TypeDescription(0));
    ASSERT_EQ(1u, CreatePropertyDBByName("cpu.xml", 0));
    EXPECT_EQ("dir7 cpu", TypeDescription(1));
}

TEST(CreatePropertyDBByName, MissingSuffixedFileFallsBackToThePlainOne) {
    UseXmlDirectory("db");
    ASSERT_EQ(0u, CreatePropertyDBByName("cpu.xml", 0x2a));
    EXPECT_EQ("cpu", TypeDescription(0));
}

TEST(CreatePropertyDBByName, BothFilesMissingFails) {
    UseXmlDirectory("db");
    EXPECT_EQ(RLX_INVALID_DB, CreatePropertyDBByName("nothere.xml", 0x1f));
    EXPECT_EQ(RLX_INVALID_DB, CreatePropertyDBByName("nothere.xml", 0));
}

TEST(CreatePropertyDBByName, DirectoryVariableIsReadAtEveryCall) {
    UseXmlDirectory("db");
    ASSERT_EQ(0u, CreatePropertyDBByName("cpu.xml", 0));
    UseXmlDirectory("dir7");
    ASSERT_EQ(1u, CreatePropertyDBByName("cpu.xml", 0));
    EXPECT_EQ("cpu", TypeDescription(0));
    EXPECT_EQ("dir7 cpu", TypeDescription(1));
}

TEST(CreatePropertyDBByName, UnsetDirectoryUsesTheNameAsGiven) {
    ASSERT_EQ(0, chdir(RLX_FIXTURES_DIR "/api/db"));
    ASSERT_TRUE(rlx_test::UnsetVariable("KORVA_XMLDB"));
    ASSERT_EQ(0u, CreatePropertyDBByName("cpu.xml", 0));
    EXPECT_EQ("cpu", TypeDescription(0));
}

TEST(CreatePropertyDBByName, NullNameFails) {
    UseXmlDirectory("db");
    EXPECT_EQ(RLX_INVALID_DB, CreatePropertyDBByName(nullptr, 0));
    EXPECT_EQ(RLX_INVALID_DB, CreatePropertyDBByName(nullptr, 0x1f));
    EXPECT_EQ(0u, CreatePropertyDBByName("cpu.xml", 0));
}
