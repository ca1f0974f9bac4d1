// Taking edited values over from a caller's tree into another tree of the same shape.

#include <string>
#include <vector>

#include "ApiTestSupport.h"

using namespace api_test;
using TargetOperations::NameAndDescription;

class ConvertBackTest : public ::testing::Test {
protected:
    void SetUp() override {
        UseXmlDirectory("db");
        number = CreatePropertyDBByName("cpu.xml", 0);
        ASSERT_EQ(0u, number);
        source.reset(GetRootProperty(number));
        destination.reset(GetRootProperty(number));
        ASSERT_NE(nullptr, source);
        ASSERT_NE(nullptr, destination);
    }
    std::uint32_t number = RLX_INVALID_DB;
    Owned<> source;
    Owned<> destination;
};

TEST_F(ConvertBackTest, DifferentNamesAreNotTakenOverAndNothingChanges) {
    AsInteger(Child(source.get(), "Count"))->SetValue(42);
    EXPECT_FALSE(ConvertBack(number, Child(source.get(), "Count"), Child(destination.get(), "Halt Delay"),
                             nullptr, nullptr));
    EXPECT_FALSE(ConvertBack(number, Child(source.get(), "Count"), destination.get(), nullptr, nullptr));
    EXPECT_EQ(5u, AsInteger(Child(destination.get(), "Count"))->GetValue());
}

TEST_F(ConvertBackTest, IntegerIsSetEvenWhenEqual) {
    IProperty* from = Child(source.get(), "Count");
    IProperty* to = Child(destination.get(), "Count");
    EXPECT_TRUE(ConvertBack(number, from, to, nullptr, nullptr));
    AsInteger(from)->SetValue(42);
    EXPECT_TRUE(ConvertBack(number, from, to, nullptr, nullptr));
    EXPECT_EQ(42u, AsInteger(to)->GetValue());
}

TEST_F(ConvertBackTest, IntegerOutsideTheDestinationsRangeIsTakenButDropped) {
    Owned<TargetOperations::IIntegerProperty> wide(
        TargetOperations::IntegerProperty::Construct(NameAndDescription("Count", ""), 200, false));
    IProperty* from = dynamic_cast<IProperty*>(wide.get());
    EXPECT_TRUE(ConvertBack(number, from, Child(destination.get(), "Count"), nullptr, nullptr));
    EXPECT_EQ(5u, AsInteger(Child(destination.get(), "Count"))->GetValue());
}

TEST_F(ConvertBackTest, LocationValuePageAndCookieAreCopied) {
    IProperty* from = Child(source.get(), "Address");
    AsLocation(from)->SetValue(0x2000, 0);
    AsLocation(from)->SetCookie(77);
    IProperty* to = Child(destination.get(), "Address");
    EXPECT_TRUE(ConvertBack(number, from, to, nullptr, nullptr));
    std::uint32_t page = 9;
    EXPECT_EQ(0x2000u, AsLocation(to)->GetValue(page));
    EXPECT_EQ(0u, page);
    EXPECT_EQ(77u, AsLocation(to)->GetCookie());
}

TEST_F(ConvertBackTest, SixtyFourBitLocationKeepsItsHighHalf) {
    AsString(source.get())->SetValue("Watchpoint");
    AsString(destination.get())->SetValue("Watchpoint");
    UpdateSubProperties(number, source.get());
    UpdateSubProperties(number, destination.get());
    IProperty* from = Child(source.get(), "Data Address");
    ASSERT_NE(nullptr, from);
    AsLocation64(from)->SetValue64(Debugger::Address(0x123456789ull), 0);
    AsLocation64(from)->SetCookie(5);
    IProperty* to = Child(destination.get(), "Data Address");
    EXPECT_TRUE(ConvertBack(number, from, to, nullptr, nullptr));
    std::uint32_t page = 9;
    EXPECT_EQ(0x123456789ull, AsLocation64(to)->GetValue64(page).GetAddress());
    EXPECT_EQ(0u, page);
    EXPECT_EQ(5u, AsLocation64(to)->GetCookie());
}

TEST_F(ConvertBackTest, BooleanChangeRelinksTheDestination) {
    IProperty* from = Child(source.get(), "Halt");
    AsBoolean(from)->SetValue(false);
    IProperty* to = Child(destination.get(), "Halt");
    ASSERT_EQ((std::vector<std::string>{"Halt Delay"}), ChildNames(to));
    EXPECT_TRUE(ConvertBack(number, from, to, nullptr, nullptr));
    EXPECT_FALSE(AsBoolean(to)->GetValue());
    EXPECT_TRUE(ChildNames(to).empty());
}

TEST_F(ConvertBackTest, StringChangeRelinksThroughTheParentInATree) {
    AsString(Child(source.get(), "Mode"))->SetValue("Slow");
    EXPECT_TRUE(ConvertBack(number, source.get(), destination.get(), nullptr, nullptr));
    IProperty* mode = Child(destination.get(), "Mode");
    EXPECT_EQ("Slow", StringValue(mode));
    EXPECT_EQ((std::vector<std::string>{"Slow Depth"}), ChildNames(mode));
}

TEST_F(ConvertBackTest, StringValueTheDestinationDoesNotAllowIsRefused) {
    Owned<TargetOperations::IStringProperty> medium(
        TargetOperations::StringProperty::Construct(NameAndDescription("Mode", ""), "Medium"));
    IProperty* from = dynamic_cast<IProperty*>(medium.get());
    IProperty* to = Child(destination.get(), "Mode");
    EXPECT_FALSE(ConvertBack(number, from, to, nullptr, nullptr));
    EXPECT_EQ("Fast", StringValue(to));
    EXPECT_EQ((std::vector<std::string>{"Fast Depth"}), ChildNames(to));
}

TEST_F(ConvertBackTest, DisabledOrReadOnlyDestinationsKeepTheirValues) {
    AsInteger(Child(source.get(), "Switched Off"))->SetValue(30);
    EXPECT_FALSE(ConvertBack(number, Child(source.get(), "Switched Off"), Child(destination.get(), "Switched Off"),
                             nullptr, nullptr));
    EXPECT_EQ(3u, AsInteger(Child(destination.get(), "Switched Off"))->GetValue());

    AsProperty(Child(source.get(), "Locked"))->SetEditable(true);
    AsInteger(Child(source.get(), "Locked"))->SetValue(70);
    EXPECT_FALSE(ConvertBack(number, Child(source.get(), "Locked"), Child(destination.get(), "Locked"), nullptr,
                             nullptr));
    EXPECT_EQ(7u, AsInteger(Child(destination.get(), "Locked"))->GetValue());
}

TEST_F(ConvertBackTest, EditsOfEveryKindReachTheDatabasesBorrowedTree) {
    AsInteger(Child(source.get(), "Count"))->SetValue(42);
    AsLocation(Child(source.get(), "Address"))->SetValue(0x3000, 0);
    AsBoolean(Child(source.get(), "Halt"))->SetValue(false);
    AsString(Child(source.get(), "Mode"))->SetValue("Slow");
    UpdateSubProperties(number, source.get());
    AsInteger(Child(Child(source.get(), "Mode"), "Slow Depth"))->SetValue(9);

    // The database's own "Type" has no children yet: ConvertBack links it first.
    IProperty* target = GetPropertyFromDB_noClone(number, "Type");
    ASSERT_EQ(0u, target->GetNumSubProperties());
    EXPECT_TRUE(ConvertBack(number, source.get(), target, nullptr, nullptr));

    EXPECT_EQ(6u, target->GetNumSubProperties());
    EXPECT_EQ(42u, AsInteger(Child(target, "Count"))->GetValue());
    std::uint32_t page = 0;
    EXPECT_EQ(0x3000u, AsLocation(Child(target, "Address"))->GetValue(page));
    EXPECT_FALSE(AsBoolean(Child(target, "Halt"))->GetValue());
    EXPECT_TRUE(ChildNames(Child(target, "Halt")).empty());
    EXPECT_EQ("Slow", StringValue(Child(target, "Mode")));
    EXPECT_EQ((std::vector<std::string>{"Slow Depth"}), ChildNames(Child(target, "Mode")));
    EXPECT_EQ(9u, AsInteger(Child(Child(target, "Mode"), "Slow Depth"))->GetValue());

    // Roots handed out later are copies of the database's tree, so they carry the edits.
    Owned<> fresh(GetRootProperty(number));
    EXPECT_EQ(42u, AsInteger(Child(fresh.get(), "Count"))->GetValue());
    EXPECT_EQ("Slow", StringValue(Child(fresh.get(), "Mode")));
}

TEST_F(ConvertBackTest, ChangedRootValueRebuildsTheChildrenBeforeMatching) {
    AsString(source.get())->SetValue("Watchpoint");
    UpdateSubProperties(number, source.get());
    AsString(Child(source.get(), "Access"))->SetValue("Write");
    AsLocation64(Child(source.get(), "Data Address"))->SetValue64(Debugger::Address(0x200000000ull), 0);

    EXPECT_TRUE(ConvertBack(number, source.get(), destination.get(), nullptr, nullptr));
    EXPECT_EQ("Watchpoint", StringValue(destination.get()));
    EXPECT_EQ((std::vector<std::string>{"Data Address", "Access"}), ChildNames(destination.get()));
    EXPECT_EQ("Write", StringValue(Child(destination.get(), "Access")));
    std::uint32_t page = 0;
    EXPECT_EQ(0x200000000ull, AsLocation64(Child(destination.get(), "Data Address"))->GetValue64(page).GetAddress());
}

TEST_F(ConvertBackTest, UnknownNumberStillCopiesValuesButCannotRelink) {
    AsInteger(Child(source.get(), "Count"))->SetValue(42);
    AsBoolean(Child(source.get(), "Halt"))->SetValue(false);
    EXPECT_TRUE(ConvertBack(number + 7, source.get(), destination.get(), nullptr, nullptr));
    EXPECT_EQ(42u, AsInteger(Child(destination.get(), "Count"))->GetValue());
    EXPECT_FALSE(AsBoolean(Child(destination.get(), "Halt"))->GetValue());
    EXPECT_EQ((std::vector<std::string>{"Halt Delay"}), ChildNames(Child(destination.get(), "Halt")));
}

TEST_F(ConvertBackTest, NullPropertiesGiveFalse) {
    EXPECT_FALSE(ConvertBack(number, nullptr, destination.get(), nullptr, nullptr));
    EXPECT_FALSE(ConvertBack(number, source.get(), nullptr, nullptr, nullptr));
    EXPECT_FALSE(ConvertBack(number, nullptr, nullptr, nullptr, nullptr));
}

TEST(UpdateSubPropertiesApi, UnknownNumberOrNullDoesNothing) {
    UseXmlDirectory("db");
    const std::uint32_t number = CreatePropertyDBByName("cpu.xml", 0);
    Owned<> root(GetRootProperty(number));
    ASSERT_NE(nullptr, root);
    AsString(root.get())->SetValue("Watchpoint");
    UpdateSubProperties(number + 1, root.get());
    UpdateSubProperties(number, nullptr);
    EXPECT_EQ(6u, root->GetNumSubProperties());
    UpdateSubProperties(number, root.get());
    EXPECT_EQ((std::vector<std::string>{"Data Address", "Access"}), ChildNames(root.get()));
    UpdateSubProperties(number, root.get());
    EXPECT_EQ((std::vector<std::string>{"Data Address", "Access"}), ChildNames(root.get()));
}
