#include <gtest/gtest.h>

#include <string>

#include "property/NameAndDescription.h"
#include "property/PropertyKey.h"
#include "property/ValueAttribute.h"

using namespace TargetOperations;

TEST(ValueClassesTest, NameAndDescriptionStoresCopiesOfBothTexts) {
    std::string name = "name";
    std::string description = "description";
    NameAndDescription nd(name, description);
    name = "changed";
    description = "changed";
    EXPECT_EQ("name", nd.Name());
    EXPECT_EQ("description", nd.Description());
}

TEST(ValueClassesTest, NameAndDescriptionSettersReplaceTheTexts) {
    NameAndDescription nd("a", "b");
    nd.SetName("new name");
    nd.SetDescription("");
    EXPECT_EQ("new name", nd.Name());
    EXPECT_EQ("", nd.Description());
}

TEST(ValueClassesTest, NameAndDescriptionCopiesAreIndependent) {
    NameAndDescription original("a", "b");
    NameAndDescription copy(original);
    NameAndDescription assigned("x", "y");
    assigned = original;
    original.SetName("changed");
    EXPECT_EQ("a", copy.Name());
    EXPECT_EQ("b", copy.Description());
    EXPECT_EQ("a", assigned.Name());
    EXPECT_EQ("b", assigned.Description());
}

TEST(ValueClassesTest, NameAndDescriptionSelfAssignmentKeepsTheTexts) {
    NameAndDescription nd("a", "b");
    NameAndDescription& same = nd;
    nd = same;
    EXPECT_EQ("a", nd.Name());
    EXPECT_EQ("b", nd.Description());
}

TEST(ValueClassesTest, PropertyKeyStoresNameAndEnumValue) {
    PropertyKey key("KEY", 0xFFFFFFFEu);
    EXPECT_EQ("KEY", key.KeyName());
    EXPECT_EQ(0xFFFFFFFEu, key.EnumValue());
    PropertyKey copy(key);
    EXPECT_EQ("KEY", copy.KeyName());
    EXPECT_EQ(0xFFFFFFFEu, copy.EnumValue());
}

TEST(ValueClassesTest, ValueAttributeConstructorArgumentsKeepTheirOrder) {
    ValueAttribute attribute("KEY", 7, 3, true, "SAME");
    EXPECT_EQ("KEY", attribute.KeyName());
    EXPECT_EQ(7u, attribute.EnumValue());
    EXPECT_EQ(3u, attribute.Category());
    EXPECT_TRUE(attribute.HaltCpu());
    EXPECT_EQ("SAME", attribute.SameLevelKey());
    EXPECT_FALSE(attribute.IsDisabled());
}

TEST(ValueClassesTest, ValueAttributesDifferingOnlyInTheDisabledFlagAreNotEqual) {
    ValueAttribute a("K", 1, 2, false, "S");
    ValueAttribute b("K", 1, 2, false, "S");
    EXPECT_TRUE(a == b);
    a.SetDisabled(true);
    EXPECT_TRUE(a.IsDisabled());
    EXPECT_FALSE(a == b);
    EXPECT_FALSE(b == a);
    b.SetDisabled(true);
    EXPECT_TRUE(a == b);
    a.SetDisabled(false);
    EXPECT_FALSE(a.IsDisabled());
    EXPECT_FALSE(a == b);
}

TEST(ValueClassesTest, ValueAttributeEqualityComparesEveryField) {
    const ValueAttribute base("K", 1, 2, false, "S");
    EXPECT_FALSE(base == ValueAttribute("k", 1, 2, false, "S"));
    EXPECT_FALSE(base == ValueAttribute("K ", 1, 2, false, "S"));
    EXPECT_FALSE(base == ValueAttribute("K", 9, 2, false, "S"));
    EXPECT_FALSE(base == ValueAttribute("K", 1, 9, false, "S"));
    EXPECT_FALSE(base == ValueAttribute("K", 1, 2, true, "S"));
    EXPECT_FALSE(base == ValueAttribute("K", 1, 2, false, "s"));
    EXPECT_FALSE(base == ValueAttribute("K", 1, 2, false, ""));
    EXPECT_TRUE(base == ValueAttribute("K", 1, 2, false, "S"));
}

TEST(ValueClassesTest, KeyNamesKeyAndUppercaseKeyAreDifferent) {
    EXPECT_FALSE(ValueAttribute("Key", 0, 0, false, "") == ValueAttribute("KEY", 0, 0, false, ""));
}

TEST(ValueClassesTest, ValueAttributeCopyAndAssignmentCarryTheDisabledFlag) {
    ValueAttribute original("K", 1, 2, true, "S");
    original.SetDisabled(true);
    ValueAttribute copy(original);
    EXPECT_TRUE(copy.IsDisabled());
    EXPECT_TRUE(copy == original);
    ValueAttribute assigned("other", 0, 0, false, "");
    assigned = original;
    EXPECT_TRUE(assigned.IsDisabled());
    EXPECT_TRUE(assigned == original);
    EXPECT_EQ("K", assigned.KeyName());
    EXPECT_EQ("S", assigned.SameLevelKey());
    EXPECT_EQ(1u, assigned.EnumValue());
    EXPECT_EQ(2u, assigned.Category());
    EXPECT_TRUE(assigned.HaltCpu());
}

TEST(ValueClassesTest, ValueAttributeSelfAssignmentKeepsEveryField) {
    ValueAttribute attribute("K", 1, 2, true, "S");
    attribute.SetDisabled(true);
    ValueAttribute& same = attribute;
    attribute = same;
    EXPECT_TRUE(attribute == ValueAttribute(attribute));
    EXPECT_EQ("K", attribute.KeyName());
    EXPECT_TRUE(attribute.IsDisabled());
}
