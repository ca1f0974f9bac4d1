#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "xmldb/DriverDBHandler.h"
#include "xmldb/PropertyDBHandler.h"

using namespace TargetOperations;

TEST(PropertyDBTagLookup, EveryNameMapsToItsCode) {
    const std::vector<std::pair<std::string, std::uint32_t>> table = {
        {"RLX", 1},           {"JOB_MAJOR_V", 2},        {"JOB_MINOR_V", 3},
        {"SUBLIST", 4},       {"ALLOWEDLIST", 5},        {"ALLOWEDITEM", 6},
        {"ROOT", 7},          {"CATEGORY", 8},           {"PROPERTY", 9},
        {"PROPERTY_STRING", 10}, {"PROPERTY_INTEGER", 11}, {"PROPERTY_LOCATION", 12},
        {"PROPERTY_LOCATION_64", 13}, {"PROPERTY_BOOL", 14}, {"NAME", 15},
        {"KEYNAME", 16},      {"KEYNUMBER", 17},         {"KEYITEM", 18},
        {"CHILDKEY", 19},     {"TYPE", 20},              {"PAGE", 21},
        {"VALUE", 22},        {"ENUMVALUE", 23},         {"DESCRIPTION", 24},
        {"RANGE_LO", 25},     {"RANGELO", 25},           {"RANGE_HI", 26},
        {"RANGEHI", 26},      {"DISPLAYTYPE", 27},       {"EDITABLE", 28},
        {"DISABLE", 29},      {"ALLOWED_STRING", 30},    {"ALLOWED_ENUM", 32},
        {"ALLOWED_HALT", 33}, {"ALLOWED_INTEGER", 34},   {"ALLOWED_KEY", 35},
        {"ALLOWED_SAMELEVEL_KEY", 36}, {"EVENT_ITEM", 37}, {"EVENT_NAME", 38},
        {"EVENT_CATEGORY", 39}, {"EVENT_ID", 40},        {"REPLACABLE", 41},
        {"REPLACABLE_ALLOWED", 42},
    };
    for (const auto& entry : table) {
        EXPECT_EQ(static_cast<std::uint32_t>(PropertyDBHandler::LookupTag(entry.first)), entry.second) << entry.first;
        EXPECT_TRUE(PropertyDBHandler::IsValidTag(entry.second)) << entry.first;
    }
}

TEST(PropertyDBTagLookup, NoneAndUnknownNamesAreZeroAndInvalid) {
    EXPECT_EQ(PropertyDBHandler::LookupTag("NONE"), Tag_NONE);
    EXPECT_EQ(PropertyDBHandler::LookupTag("UNKNOWN"), Tag_NONE);
    EXPECT_EQ(PropertyDBHandler::LookupTag(""), Tag_NONE);
    EXPECT_FALSE(PropertyDBHandler::IsValidTag(Tag_NONE));
}

TEST(PropertyDBTagLookup, MatchIsExactAndCaseSensitive) {
    EXPECT_EQ(PropertyDBHandler::LookupTag("name"), Tag_NONE);
    EXPECT_EQ(PropertyDBHandler::LookupTag("NAME "), Tag_NONE);
    EXPECT_EQ(PropertyDBHandler::LookupTag("NAM"), Tag_NONE);
    EXPECT_EQ(PropertyDBHandler::LookupTag("REPLACEABLE"), Tag_NONE);
    EXPECT_EQ(PropertyDBHandler::LookupTag("RANGE-LO"), Tag_NONE);
}

TEST(PropertyDBTagLookup, NoNameGivesCode31) {
    EXPECT_TRUE(PropertyDBHandler::IsValidTag(Tag_ALLOWED_CATEGORY));
    for (const char* candidate : {"ALLOWED_CATEGORY", "ALLOWEDCATEGORY", "ALLOWED_CAT"}) {
        EXPECT_EQ(PropertyDBHandler::LookupTag(candidate), Tag_NONE) << candidate;
    }
}

TEST(PropertyDBTagLookup, ValidCodesAreOneToFortyTwo) {
    EXPECT_FALSE(PropertyDBHandler::IsValidTag(0));
    EXPECT_TRUE(PropertyDBHandler::IsValidTag(1));
    EXPECT_TRUE(PropertyDBHandler::IsValidTag(42));
    EXPECT_FALSE(PropertyDBHandler::IsValidTag(43));
}

TEST(DriverDBTagLookup, EveryNameMapsToItsCode) {
    EXPECT_EQ(DriverDBHandler::LookupTag("DB_MAJOR_V"), DriverTag_DB_MAJOR_V);
    EXPECT_EQ(DriverDBHandler::LookupTag("DB_MINOR_V"), DriverTag_DB_MINOR_V);
    EXPECT_EQ(DriverDBHandler::LookupTag("DRIVER"), DriverTag_DRIVER);
    EXPECT_EQ(DriverDBHandler::LookupTag("CPUTYPE"), DriverTag_CPUTYPE);
    EXPECT_EQ(DriverDBHandler::LookupTag("DRIVERNAME"), DriverTag_DRIVERNAME);
    EXPECT_EQ(DriverDBHandler::LookupTag("PROPERTYFILE"), DriverTag_PROPERTYFILE);
    EXPECT_EQ(DriverDBHandler::LookupTag("ENTITYCODE"), DriverTag_ENTITYCODE);
    EXPECT_EQ(DriverDBHandler::LookupTag("SUPPORTTRACE"), DriverTag_SUPPORTTRACE);
    EXPECT_EQ(static_cast<std::uint32_t>(DriverTag_DB_MAJOR_V), 2u);
    EXPECT_EQ(static_cast<std::uint32_t>(DriverTag_SUPPORTTRACE), 9u);
}

TEST(DriverDBTagLookup, UnknownNamesAreZeroAndValidCodesAreOneToTen) {
    EXPECT_EQ(DriverDBHandler::LookupTag("cputype"), DriverTag_Unknown);
    EXPECT_EQ(DriverDBHandler::LookupTag("DRIVERTABLE"), DriverTag_Unknown);
    EXPECT_FALSE(DriverDBHandler::IsValidTag(0));
    EXPECT_TRUE(DriverDBHandler::IsValidTag(1));
    EXPECT_TRUE(DriverDBHandler::IsValidTag(10));
    EXPECT_FALSE(DriverDBHandler::IsValidTag(11));
}
