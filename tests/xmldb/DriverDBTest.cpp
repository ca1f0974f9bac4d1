// The driver table: records, version numbers and the two lookups.
#include <string>

#include <gtest/gtest.h>

#include "XmlDbTestSupport.h"
#include "xmldb/DriverDB.h"

using namespace xmldb_test;

TEST(DriverDB, RecordsFollowTheDriverEndTags) {
    DriverDB table(Fixture("drivers.xml"));
    ASSERT_EQ(table.GetRecordCount(), 5u);
    const auto& records = table.Records();
    EXPECT_EQ(records[0]->cpuType, "1010");
    EXPECT_EQ(records[0]->driverName, "FirstServer");
    EXPECT_EQ(records[0]->propertyFile, "first.xml");
    EXPECT_EQ(records[0]->entityCode, "E1010");
    EXPECT_TRUE(records[0]->supportsTrace);
    EXPECT_EQ(records[1]->driverName, "ShadowedServer");
    EXPECT_EQ(records[2]->cpuType, "2020");
    EXPECT_EQ(records[3]->cpuType, "3030");
    EXPECT_EQ(records[4]->cpuType, "5050");
}

TEST(DriverDB, VersionsReadOnlyTheFirstCharacter) {
    DriverDB table(Fixture("drivers.xml"));
    EXPECT_EQ(table.GetMajorVersion(), 1u);  // "10"
    EXPECT_EQ(table.GetMinorVersion(), 0u);  // "0x2"
    DriverDB other(Fixture("drivers_no_cputype.xml"));
    EXPECT_EQ(other.GetMajorVersion(), 3u);
    EXPECT_EQ(other.GetMinorVersion(), 0u);  // absent
}

TEST(DriverDB, DuplicateCpuTypesAnswerFromTheFirstRecord) {
    DriverDB table(Fixture("drivers.xml"));
    std::string server;
    table.GetServerName("1010", server);
    EXPECT_EQ(server, "FirstServer");
    std::string file, entity;
    bool trace = false;
    table.GetDriverDetails("1010", file, entity, trace);
    EXPECT_EQ(file, "first.xml");
    EXPECT_EQ(entity, "E1010");
    EXPECT_TRUE(trace);
}

TEST(DriverDB, TraceSupportNeedsExactUpperCaseYes) {
    DriverDB table(Fixture("drivers.xml"));
    std::string file, entity;
    bool trace = true;
    table.GetDriverDetails("2020", file, entity, trace);
    EXPECT_EQ(file, "second.xml");
    EXPECT_FALSE(trace);  // "yes"
}

TEST(DriverDB, MissingElementsLeaveEmptyFieldsAndSplitTextKeepsTheLastPiece) {
    DriverDB table(Fixture("drivers.xml"));
    std::string file, entity = "before";
    bool trace = true;
    table.GetDriverDetails("3030", file, entity, trace);
    EXPECT_EQ(file, "third.xml");
    EXPECT_EQ(entity, "");
    EXPECT_FALSE(trace);
    std::string server;
    table.GetServerName("3030", server);
    EXPECT_EQ(server, "&Name");  // "Split&amp;Name" arrives in two pieces
}

TEST(DriverDB, ADriverOpenedAgainBeforeItsEndIsDropped) {
    DriverDB table(Fixture("drivers.xml"));
    std::string server = "unchanged";
    table.GetServerName("4040", server);
    EXPECT_EQ(server, "");
    table.GetServerName("5050", server);
    EXPECT_EQ(server, "Nested");
}

TEST(DriverDB, ValuesOutsideADriverAreIgnored) {
    DriverDB table(Fixture("drivers.xml"));
    std::string server = "unchanged";
    table.GetServerName("9999", server);
    EXPECT_EQ(server, "");
}

TEST(DriverDB, LookupsCompareTheWholeTextExactly) {
    DriverDB table(Fixture("drivers.xml"));
    std::string server = "unchanged";
    table.GetServerName("101", server);
    EXPECT_EQ(server, "");
    table.GetServerName("1010 ", server);
    EXPECT_EQ(server, "");
}

TEST(DriverDB, UnknownCpuTypeClearsOnlyThePropertyFile) {
    DriverDB table(Fixture("drivers.xml"));
    std::string file = "previous.xml", entity = "previous entity";
    bool trace = true;
    table.GetDriverDetails("7777", file, entity, trace);
    EXPECT_EQ(file, "");
    EXPECT_EQ(entity, "previous entity");
    EXPECT_TRUE(trace);
}

TEST(DriverDB, RecordWithoutCpuTypeAnswersTheEmptyKey) {
    DriverDB table(Fixture("drivers_no_cputype.xml"));
    ASSERT_EQ(table.GetRecordCount(), 1u);
    std::string server;
    table.GetServerName("", server);
    EXPECT_EQ(server, "Anonymous");
    std::string file, entity;
    bool trace = false;
    table.GetDriverDetails("", file, entity, trace);
    EXPECT_EQ(file, "anon.xml");
    EXPECT_EQ(entity, "E0");
    EXPECT_TRUE(trace);
}

TEST(DriverDB, PropertyDatabaseHasNoDriverRecords) {
    // Any well-formed file is a table; one without DRIVER elements has no records.
    DriverDB table(Fixture("lookups.xml"));
    EXPECT_EQ(table.GetRecordCount(), 0u);
    EXPECT_EQ(table.GetMajorVersion(), 0u);
}
