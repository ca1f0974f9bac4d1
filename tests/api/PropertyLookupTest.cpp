// The four lookups of one top-level property: copies and borrowed objects.

#include <string>

#include "ApiTestSupport.h"

using namespace api_test;

class PropertyLookup : public ::testing::Test {
protected:
    void SetUp() override {
        UseXmlDirectory("db");
        number = CreatePropertyDBByName("cpu.xml", 0);
        ASSERT_EQ(0u, number);
    }
    std::uint32_t number = RLX_INVALID_DB;
};

TEST_F(PropertyLookup, ByNameWithCloneHandsOutAnOwnedCopy) {
    Owned<> copy(GetPropertyFromDB(number, "Count"));
    ASSERT_NE(nullptr, copy);
    IProperty* borrowed = GetPropertyFromDB_noClone(number, "Count");
    ASSERT_NE(nullptr, borrowed);
    EXPECT_NE(borrowed, copy.get());
    EXPECT_EQ(1u, RefCount(copy.get()));
    AsInteger(copy.get())->SetValue(50);
    EXPECT_EQ(5u, AsInteger(borrowed)->GetValue());
    Owned<> again(GetPropertyFromDB(number, "Count"));
    EXPECT_NE(copy.get(), again.get());
}

TEST_F(PropertyLookup, BorrowedLookupsHandOutTheDatabasesObject) {
    IProperty* first = GetPropertyFromDB_noClone(number, "Mode");
    ASSERT_NE(nullptr, first);
    const std::uint32_t count = RefCount(first);
    EXPECT_EQ(first, GetPropertyFromDB_noClone(number, "Mode"));
    EXPECT_EQ(first, GetPropertyFromDBByEnum(number, 0x21));
    EXPECT_EQ(first, GetPropertyFromDBByNameEnum_noClone(number, "Mode", 0x21));
    EXPECT_EQ(count, RefCount(first));
    AsString(first)->SetValue("Slow");
    EXPECT_EQ("Slow", StringValue(GetPropertyFromDB_noClone(number, "Mode")));
}

TEST_F(PropertyLookup, NamesDifferingInCaseAreNotFound) {
    EXPECT_EQ(nullptr, GetPropertyFromDB(number, "type"));
    EXPECT_EQ(nullptr, GetPropertyFromDB_noClone(number, "TYPE"));
    EXPECT_EQ(nullptr, GetPropertyFromDBByNameEnum_noClone(number, "type", 1));
    EXPECT_EQ(nullptr, GetPropertyFromDB_noClone(number, "Type "));
}

TEST_F(PropertyLookup, DuplicateNamesAnswerWithTheFirstUnlessTheValueSaysOtherwise) {
    Owned<> copy(GetPropertyFromDB(number, "Dup"));
    ASSERT_NE(nullptr, copy);
    EXPECT_STREQ("first", copy->GetDescription());
    EXPECT_STREQ("first", GetPropertyFromDB_noClone(number, "Dup")->GetDescription());
    IProperty* second = GetPropertyFromDBByNameEnum_noClone(number, "Dup", 12);
    ASSERT_NE(nullptr, second);
    EXPECT_STREQ("second", second->GetDescription());
    EXPECT_EQ(second, GetPropertyFromDBByEnum(number, 12));
    EXPECT_STREQ("first", GetPropertyFromDBByNameEnum_noClone(number, "Dup", 11)->GetDescription());
    EXPECT_EQ(nullptr, GetPropertyFromDBByNameEnum_noClone(number, "Dup", 13));
    EXPECT_EQ(nullptr, GetPropertyFromDBByNameEnum_noClone(number, "Count", 12));
}

TEST_F(PropertyLookup, ByEnumFindsTheFirstElementWithThatValue) {
    // "Type" stands first and takes enumeration value 1 from its selected "Breakpoint".
    EXPECT_EQ(GetPropertyFromDB_noClone(number, "Type"), GetPropertyFromDBByEnum(number, 1));
    EXPECT_EQ(nullptr, GetPropertyFromDBByEnum(number, 999));
}

TEST_F(PropertyLookup, UnknownNumbersGiveNull) {
    EXPECT_EQ(nullptr, GetPropertyFromDB(5, "Type"));
    EXPECT_EQ(nullptr, GetPropertyFromDB_noClone(5, "Type"));
    EXPECT_EQ(nullptr, GetPropertyFromDBByEnum(5, 1));
    EXPECT_EQ(nullptr, GetPropertyFromDBByNameEnum_noClone(5, "Type", 1));
    EXPECT_EQ(nullptr, GetPropertyFromDB_noClone(RLX_INVALID_DB, "Type"));
}

TEST_F(PropertyLookup, EverythingIsGoneAfterRelease) {
    Owned<> copy(GetPropertyFromDB(number, "Type"));
    ReleasePropertyDB(number);
    EXPECT_EQ(nullptr, GetPropertyFromDB(number, "Type"));
    EXPECT_EQ(nullptr, GetPropertyFromDB_noClone(number, "Type"));
    EXPECT_EQ(nullptr, GetPropertyFromDBByEnum(number, 1));
    EXPECT_EQ(nullptr, GetPropertyFromDBByNameEnum_noClone(number, "Type", 1));
    ASSERT_NE(nullptr, copy);
    EXPECT_EQ("Breakpoint", StringValue(copy.get()));
}

TEST_F(PropertyLookup, CopyIsUnaffectedByALaterRemovalButTheBorrowedObjectShowsIt) {
    Owned<> copy(GetPropertyFromDB(number, "Type"));
    RemoveAllowedFromDB(number, "Type", "Watchpoint");
    EXPECT_EQ((std::vector<std::string>{"Breakpoint", "Watchpoint"}), AllowedValues(copy.get()));
    EXPECT_EQ((std::vector<std::string>{"Breakpoint"}),
              AllowedValues(GetPropertyFromDB_noClone(number, "Type")));
}

TEST_F(PropertyLookup, NullNamesGiveNull) {
    EXPECT_EQ(nullptr, GetPropertyFromDB(number, nullptr));
    EXPECT_EQ(nullptr, GetPropertyFromDB_noClone(number, nullptr));
    EXPECT_EQ(nullptr, GetPropertyFromDBByNameEnum_noClone(number, nullptr, 1));
}
