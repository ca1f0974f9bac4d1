// What loading a database does to its replaceable properties.

#include <string>
#include <vector>

#include "ApiTestSupport.h"

using namespace api_test;
using TargetOperations::ValueAttribute;

TEST(ReplaceableExpansion, PropertyMarkedTwoLosesItsKeysAndOthersKeepThem) {
    UseXmlDirectory("db");
    const std::uint32_t number = CreatePropertyDBByName("replace.xml", 0);
    ASSERT_EQ(0u, number);
    auto* dropped = AsProperty(GetPropertyFromDB_noClone(number, "Dropped Keys"));
    auto* kept = AsProperty(GetPropertyFromDB_noClone(number, "Kept Keys"));
    ASSERT_NE(nullptr, dropped);
    ASSERT_NE(nullptr, kept);
    EXPECT_FALSE(dropped->IsKeyName("AK"));
    EXPECT_TRUE(kept->IsKeyName("AK"));
    EXPECT_EQ(2u, kept->GetKeyNumber("AK"));
    // The property records never arrive: names stay as the file gave them.
    EXPECT_STREQ("replaceable, keys dropped at load", dropped->GetDescription());

    Owned<> root(GetRootProperty(number));
    ASSERT_NE(nullptr, root);
    EXPECT_EQ((std::vector<std::string>{"Kept Keys", "Choice"}), ChildNames(root.get()));
}

TEST(ReplaceableExpansion, FirstReplaceableChoiceOfTheProcessGetsExactlyTheTwoRecords) {
    UseXmlDirectory("db");
    const std::uint32_t number = CreatePropertyDBByName("replace.xml", 0);
    ASSERT_EQ(0u, number);
    IProperty* choice = GetPropertyFromDB_noClone(number, "Choice");
    ASSERT_NE(nullptr, choice);
    EXPECT_EQ((std::vector<std::string>{"Replace 0", "Replace 1"}), AllowedValues(choice));
    EXPECT_EQ("Replace 0", StringValue(choice));

    const std::vector<ValueAttribute> attributes = AllowedAttributes(choice);
    ASSERT_EQ(2u, attributes.size());
    // "Replace 0" reuses the file's attribute with its enumeration value.
    EXPECT_EQ(ValueAttribute("ZK", 0x80030102u, 0, true, "ZSL"), attributes[0]);
    // "Replace 1" matches none and is modelled on the first set-aside attribute.
    EXPECT_EQ(ValueAttribute("ZK", 0x8003010au, 0, true, "ZSL"), attributes[1]);
    EXPECT_STREQ("ZK", AsProperty(choice)->GetChildKey());
    EXPECT_EQ(static_cast<std::int32_t>(0x80030102u), AsProperty(choice)->GetEnumValue());
}

TEST(ReplaceableExpansion, LaterReplaceableChoicesEndWithNoAllowedValues) {
    UseXmlDirectory("db");
    const std::uint32_t number = CreatePropertyDBByName("replace.xml", 0);
    ASSERT_EQ(0u, number);
    IProperty* second = GetPropertyFromDB_noClone(number, "Choice 2");
    ASSERT_NE(nullptr, second);
    EXPECT_TRUE(AllowedValues(second).empty());
    EXPECT_TRUE(AllowedAttributes(second).empty());
    EXPECT_EQ("X", StringValue(second));  // clearing keeps the current value

    // A second load of the same file: its first choice no longer receives anything.
    const std::uint32_t again = CreatePropertyDBByName("replace.xml", 0);
    ASSERT_EQ(1u, again);
    IProperty* choice = GetPropertyFromDB_noClone(again, "Choice");
    EXPECT_TRUE(AllowedValues(choice).empty());
    EXPECT_TRUE(AllowedAttributes(choice).empty());
    EXPECT_EQ("Zero", StringValue(choice));
}

TEST(ReplaceableExpansion, RecordsWithoutAnyAttributeToModelOnGetAPlainAttribute) {
    // With nothing set aside, a record gets an attribute with an empty key name, its own
    // enumeration value, category 0, no halt and no same-level key.
    UseXmlDirectory("db");
    const std::uint32_t number = CreatePropertyDBByName("replace_noattr.xml", 0);
    ASSERT_EQ(0u, number);
    IProperty* free = GetPropertyFromDB_noClone(number, "Free");
    ASSERT_NE(nullptr, free);
    EXPECT_EQ((std::vector<std::string>{"Replace 0", "Replace 1"}), AllowedValues(free));
    const std::vector<ValueAttribute> attributes = AllowedAttributes(free);
    ASSERT_EQ(2u, attributes.size());
    EXPECT_EQ(ValueAttribute("", 0x80030102u, 0, false, ""), attributes[0]);
    EXPECT_EQ(ValueAttribute("", 0x8003010au, 0, false, ""), attributes[1]);
    EXPECT_EQ("Replace 0", StringValue(free));
    // An empty key name selects by the value's own text.
    EXPECT_STREQ("Replace 0", AsProperty(free)->GetChildKey());
}

TEST(ReplaceableExpansion, CounterIsProcessWideAcrossFiles) {
    UseXmlDirectory("db");
    ASSERT_EQ(0u, CreatePropertyDBByName("replace.xml", 0));
    ASSERT_EQ(1u, CreatePropertyDBByName("replace_noattr.xml", 0));
    IProperty* free = GetPropertyFromDB_noClone(1, "Free");
    ASSERT_NE(nullptr, free);
    EXPECT_TRUE(AllowedValues(free).empty());
    EXPECT_TRUE(AllowedAttributes(free).empty());
    EXPECT_EQ("orig", StringValue(free));
}

TEST(ReplaceableExpansion, DatabaseWithoutReplaceablesConsumesNoRecord) {
    UseXmlDirectory("db");
    ASSERT_EQ(0u, CreatePropertyDBByName("cpu.xml", 0));
    ASSERT_EQ(1u, CreatePropertyDBByName("replace.xml", 0));
    EXPECT_EQ((std::vector<std::string>{"Replace 0", "Replace 1"}),
              AllowedValues(GetPropertyFromDB_noClone(1, "Choice")));
}
