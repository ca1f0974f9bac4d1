// Withdrawing allowed values from a database and disabling subtrees of disabled choices.

#include <string>
#include <vector>

#include "ApiTestSupport.h"

using namespace api_test;
using TargetOperations::ValueAttribute;

class RemoveAllowed : public ::testing::Test {
protected:
    void SetUp() override {
        UseXmlDirectory("db");
        number = CreatePropertyDBByName("cpu.xml", 0);
        ASSERT_EQ(0u, number);
    }
    IProperty* Named(const char* name) { return GetPropertyFromDB_noClone(number, name); }
    std::uint32_t number = RLX_INVALID_DB;
};

TEST_F(RemoveAllowed, EveryOccurrenceOfTheValueGoesWithItsAttribute) {
    RemoveAllowedFromDB(number, "Access", "Read");
    EXPECT_EQ((std::vector<std::string>{"Write"}), AllowedValues(Named("Access")));
    EXPECT_EQ((std::vector<ValueAttribute>{ValueAttribute("", 0x32, 0, false, "")}),
              AllowedAttributes(Named("Access")));
}

TEST_F(RemoveAllowed, UnknownValueRebuildsTheSameList) {
    const std::vector<ValueAttribute> before = AllowedAttributes(Named("Type"));
    RemoveAllowedFromDB(number, "Type", "Trace");
    RemoveAllowedFromDB(number, "Type", "breakpoint");
    EXPECT_EQ((std::vector<std::string>{"Breakpoint", "Watchpoint"}), AllowedValues(Named("Type")));
    EXPECT_EQ(before, AllowedAttributes(Named("Type")));
    EXPECT_EQ("Breakpoint", StringValue(Named("Type")));
}

TEST_F(RemoveAllowed, RebuildingCollapsesADuplicateValueButKeepsItsAttribute) {
    // The file lists "Read" twice; adding the values back one by one keeps the first only,
    // while all three attributes differ and stay.
    RemoveAllowedFromDB(number, "Access", "Execute");
    EXPECT_EQ((std::vector<std::string>{"Read", "Write"}), AllowedValues(Named("Access")));
    EXPECT_EQ((std::vector<ValueAttribute>{ValueAttribute("", 0x31, 0, false, ""), ValueAttribute("", 0x32, 0, false, ""),
                                           ValueAttribute("", 0x33, 0, false, "")}),
              AllowedAttributes(Named("Access")));
}

TEST_F(RemoveAllowed, ReadOnlyPropertyLosesAllItsAllowedValues) {
    ASSERT_EQ(2u, AllowedAttributes(Named("Fixed Text")).size());
    RemoveAllowedFromDB(number, "Fixed Text", "Two");
    EXPECT_TRUE(AllowedAttributes(Named("Fixed Text")).empty());
    AsProperty(Named("Fixed Text"))->SetEditable(true);
    EXPECT_TRUE(AllowedValues(Named("Fixed Text")).empty());
    EXPECT_EQ("One", StringValue(Named("Fixed Text")));
}

TEST_F(RemoveAllowed, RemovingTheSelectedValueSelectsTheFirstRemainingOne) {
    RemoveAllowedFromDB(number, "Type", "Breakpoint");
    EXPECT_EQ((std::vector<std::string>{"Watchpoint"}), AllowedValues(Named("Type")));
    EXPECT_EQ("Watchpoint", StringValue(Named("Type")));
    EXPECT_STREQ("WP", AsProperty(Named("Type"))->GetChildKey());
}

TEST_F(RemoveAllowed, OtherKindsUnknownNamesNumbersAndNullsDoNothing) {
    RemoveAllowedFromDB(number, "Count", "5");
    RemoveAllowedFromDB(number, "No Such", "Read");
    RemoveAllowedFromDB(number + 1, "Access", "Read");
    RemoveAllowedFromDB(number, nullptr, "Read");
    RemoveAllowedFromDB(number, "Access", nullptr);
    EXPECT_EQ((std::vector<std::string>{"Read", "Write", "Read"}), AllowedValues(Named("Access")));
    EXPECT_EQ(5u, AsInteger(Named("Count"))->GetValue());
}

class DisableChildren : public ::testing::Test {
protected:
    void SetUp() override {
        UseXmlDirectory("db");
        number = CreatePropertyDBByName("cpu.xml", 0);
        ASSERT_EQ(0u, number);
        root.reset(GetRootProperty(number));
        ASSERT_NE(nullptr, root);
    }
    std::vector<bool> DisabledFlags(IProperty* parent) {
        std::vector<bool> flags;
        for (IProperty* child : Children(parent)) flags.push_back(child->IsDisabled());
        return flags;
    }
    std::uint32_t number = RLX_INVALID_DB;
    Owned<> root;
};

TEST_F(DisableChildren, EnabledValueWithDisableTrueChangesNothingButStillRecurses) {
    const std::vector<bool> before = DisabledFlags(root.get());
    EXPECT_EQ((std::vector<bool>{false, false, false, false, false, true}), before);

    IProperty* mode = Child(root.get(), "Mode");
    AsString(mode)->DisableAllowed("Fast", false);  // inverted flag: marks "Fast" disabled
    DisableChildForDisabledAllowed(root.get(), true);

    EXPECT_FALSE(AsString(root.get())->IsDisabledAllowed("Breakpoint"));
    EXPECT_EQ(before, DisabledFlags(root.get()));
    EXPECT_TRUE(Child(mode, "Fast Depth")->IsDisabled());
}

TEST_F(DisableChildren, DisabledValueDisablesEveryLevelBelow) {
    AsString(root.get())->DisableAllowed("Breakpoint", false);
    DisableChildForDisabledAllowed(root.get(), true);
    EXPECT_TRUE(AsString(root.get())->IsDisabledAllowed("Breakpoint"));
    EXPECT_FALSE(root->IsDisabled());
    EXPECT_EQ(std::vector<bool>(6, true), DisabledFlags(root.get()));
    EXPECT_TRUE(Child(Child(root.get(), "Halt"), "Halt Delay")->IsDisabled());
    EXPECT_TRUE(Child(Child(root.get(), "Mode"), "Fast Depth")->IsDisabled());
}

TEST_F(DisableChildren, DisableFalseEnablesTheValueAndEveryLevelBelow) {
    AsString(root.get())->DisableAllowed("Breakpoint", false);
    DisableChildForDisabledAllowed(root.get(), true);
    DisableChildForDisabledAllowed(root.get(), false);
    EXPECT_FALSE(AsString(root.get())->IsDisabledAllowed("Breakpoint"));
    // "Switched Off" came disabled from the file and is enabled now too.
    EXPECT_EQ(std::vector<bool>(6, false), DisabledFlags(root.get()));
    EXPECT_FALSE(Child(Child(root.get(), "Halt"), "Halt Delay")->IsDisabled());
}

TEST_F(DisableChildren, NonStringRootOnlyRecurses) {
    IProperty* halt = Child(root.get(), "Halt");
    DisableChildForDisabledAllowed(halt, false);
    DisableChildForDisabledAllowed(halt, true);
    EXPECT_FALSE(halt->IsDisabled());
    EXPECT_FALSE(Child(halt, "Halt Delay")->IsDisabled());
    DisableChildForDisabledAllowed(nullptr, true);
}
