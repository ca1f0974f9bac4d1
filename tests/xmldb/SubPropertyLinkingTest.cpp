// Rebuilding sub-properties from the keys of the current values.
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "XmlDbTestSupport.h"
#include "xmldb/SubPropertyLinking.h"

using namespace xmldb_test;

namespace {

class LinkingDatabase : public ::testing::Test {
protected:
    void SetUp() override { db = std::make_unique<PropertyDB>(Fixture("linking.xml")); }

    // A linked copy of "Type" with the given value; the test owns it.
    IProperty* LinkedRoot(const char* value) {
        IProperty* root = db->FindPropertyByName("Type");
        EXPECT_NE(root, nullptr);
        dynamic_cast<StringProperty*>(root)->SetValue(value);
        db->LinkSubProperties(root);
        return root;
    }

    std::unique_ptr<PropertyDB> db;
};

IProperty* MakeKeyed(const char* name, const char* key, std::uint32_t number, const char* sameLevelKey = "") {
    IProperty* property = Property::Construct(NameAndDescription(name, "made by the test"));
    AsProperty(property)->AddKeyName(PropertyKey(key, number));
    AsProperty(property)->SetSameLevelKey(sameLevelKey);
    return property;
}

std::vector<std::string> Names(const std::vector<IProperty*>& list) {
    std::vector<std::string> names;
    for (IProperty* entry : list) names.emplace_back(entry->GetName());
    return names;
}

void ReleaseAll(std::vector<IProperty*>& list) {
    for (IProperty* entry : list) entry->Release();
    list.clear();
}

std::uint32_t ReferenceCountOf(IProperty* property) {
    property->AddRef();
    return property->Release() - 1;
}

}  // namespace

TEST_F(LinkingDatabase, ChildKeySelectsAndKeyNumbersOrderStably) {
    Held root(LinkedRoot("Alpha"));
    EXPECT_EQ(ChildNames(root.get()), (std::vector<std::string>{"A0", "A1", "A1b", "A2"}));
    EXPECT_EQ(DescribeTree(root.get()),
              "Type:string=Alpha[A0:loc=0x100, A1:int=1, A1b:bool=true, A2:int=2]");
}

TEST_F(LinkingDatabase, TreeHoldsClonesOfTheDatabaseProperties) {
    Held root(LinkedRoot("Alpha"));
    for (IProperty* child : Children(root.get())) {
        IProperty* listed = db->FindByName(child->GetName());
        EXPECT_NE(child, listed);
        EXPECT_EQ(ReferenceCountOf(listed), 1u);
        EXPECT_EQ(ReferenceCountOf(child), 1u);
        IProperty* parent = child->GetParentProperty();
        EXPECT_EQ(parent, root.get());
        if (parent != nullptr) parent->Release();
    }
}

TEST_F(LinkingDatabase, SameLevelKeyPullsInLaterPropertiesOfTheSinglePass) {
    Held root(LinkedRoot("Beta"));
    // "Early" carries the same-level key too but stands before "Mode" in the file.
    EXPECT_EQ(ChildNames(root.get()),
              (std::vector<std::string>{"Mode", "Extra", "Locked", "LockedBool", "LockedInt", "Free"}));
    EXPECT_EQ(ChildNames(ChildNamed(root.get(), "Mode")), (std::vector<std::string>{"FastDepth"}));
}

TEST_F(LinkingDatabase, RelinkingBetaPicksUpTheEarlierSameLevelProperty) {
    Held root(LinkedRoot("Beta"));
    db->LinkSubProperties(root.get());
    // On the second pass the same-level key is known from the current children at the start.
    EXPECT_EQ(ChildNames(root.get()),
              (std::vector<std::string>{"Early", "Mode", "Extra", "Locked", "LockedBool", "LockedInt", "Free"}));
}

TEST_F(LinkingDatabase, ValueOfAChildSelectsItsOwnSubtreeOnRelink) {
    Held root(LinkedRoot("Beta"));
    auto* mode = dynamic_cast<StringProperty*>(ChildNamed(root.get(), "Mode"));
    ASSERT_NE(mode, nullptr);
    mode->SetValue("Slow");
    db->LinkSubProperties(root.get());
    IProperty* relinkedMode = ChildNamed(root.get(), "Mode");
    EXPECT_EQ(relinkedMode, mode);  // kept: not disabled in the database
    EXPECT_EQ(ChildNames(relinkedMode), (std::vector<std::string>{"SlowDepth"}));
    // "Slow" has no same-level key: "Extra" is dropped and "Early" is not gathered.
    EXPECT_EQ(ChildNamed(root.get(), "Extra"), nullptr);
    EXPECT_EQ(ChildNamed(root.get(), "Early"), nullptr);
}

TEST_F(LinkingDatabase, DisabledDatabasePropertyReplacesAChildWhoseValueDiffers) {
    Held root(LinkedRoot("Beta"));
    auto* locked = dynamic_cast<StringProperty*>(ChildNamed(root.get(), "Locked"));
    auto* lockedBool = dynamic_cast<BooleanProperty*>(ChildNamed(root.get(), "LockedBool"));
    auto* lockedInt = dynamic_cast<IntegerProperty*>(ChildNamed(root.get(), "LockedInt"));
    auto* freeText = dynamic_cast<StringProperty*>(ChildNamed(root.get(), "Free"));
    ASSERT_TRUE(locked && lockedBool && lockedInt && freeText);
    locked->SetValue("Off");
    lockedBool->SetValue(false);
    lockedInt->SetValue(9);
    freeText->SetValue("Changed");

    db->LinkSubProperties(root.get());

    auto* newLocked = dynamic_cast<StringProperty*>(ChildNamed(root.get(), "Locked"));
    auto* newLockedBool = dynamic_cast<BooleanProperty*>(ChildNamed(root.get(), "LockedBool"));
    auto* newLockedInt = dynamic_cast<IntegerProperty*>(ChildNamed(root.get(), "LockedInt"));
    auto* newFree = dynamic_cast<StringProperty*>(ChildNamed(root.get(), "Free"));
    ASSERT_TRUE(newLocked && newLockedBool && newLockedInt && newFree);
    EXPECT_STREQ(newLocked->GetValue(), "On");  // string values differ: replaced
    EXPECT_TRUE(newLockedBool->GetValue());      // Boolean values differ: replaced
    EXPECT_EQ(newLockedInt->GetValue(), 9u);     // integers always count as the same value
    EXPECT_EQ(newLockedInt, lockedInt);
    EXPECT_STREQ(newFree->GetValue(), "Changed");  // not disabled: kept
    EXPECT_EQ(newFree, freeText);
    // Replacement keeps the position.
    EXPECT_EQ(ChildNames(root.get()),
              (std::vector<std::string>{"Early", "Mode", "Extra", "Locked", "LockedBool", "LockedInt", "Free"}));
}

TEST_F(LinkingDatabase, DisabledDatabasePropertyWithTheSameValueKeepsTheChild) {
    Held root(LinkedRoot("Beta"));
    IProperty* locked = ChildNamed(root.get(), "Locked");
    db->LinkSubProperties(root.get());
    EXPECT_EQ(ChildNamed(root.get(), "Locked"), locked);
}

TEST_F(LinkingDatabase, BooleanParentHandsItsValueToAllFalseBooleanChildren) {
    Held root(LinkedRoot("Gamma"));
    EXPECT_EQ(DescribeTree(root.get()),
              "Type:string=Gamma[Group:bool=true[Member1:bool=true, Member2:bool=true], GroupOff:bool=false, "
              "Probe:string=p[KeylessSwitch:bool=false]]");
}

TEST_F(LinkingDatabase, FalseBooleanDropsItsKeySelectedChildren) {
    Held root(LinkedRoot("Gamma"));
    auto* group = dynamic_cast<BooleanProperty*>(ChildNamed(root.get(), "Group"));
    ASSERT_NE(group, nullptr);
    group->SetValue(false);
    EXPECT_STREQ(group->GetChildKey(), "");
    db->LinkSubProperties(group);
    EXPECT_EQ(group->GetNumSubProperties(), 0u);
}

TEST_F(LinkingDatabase, LinkingTwiceGivesTheSameTree) {
    for (const char* value : {"Alpha", "Gamma"}) {
        Held root(LinkedRoot(value));
        const std::string first = DescribeTree(root.get());
        db->LinkSubProperties(root.get());
        EXPECT_EQ(DescribeTree(root.get()), first) << value;
    }
}

TEST_F(LinkingDatabase, ChangingTheRootValueRebuildsTheWholeTree) {
    Held root(LinkedRoot("Alpha"));
    dynamic_cast<StringProperty*>(root.get())->SetValue("Gamma");
    db->LinkSubProperties(root.get());
    EXPECT_EQ(ChildNames(root.get()), (std::vector<std::string>{"Group", "GroupOff", "Probe"}));
}

TEST_F(LinkingDatabase, EmptyChildKeyKeepsOnlyChildrenKeyedByTheEmptyNameAndGathersNothing) {
    // The database holds "EmptyKeyed", keyed by the empty name, which must not be gathered.
    ASSERT_TRUE(AsProperty(db->FindByName("EmptyKeyed"))->IsKeyName(""));
    Held parent(Property::Construct(NameAndDescription("Parent", "d")));
    Property::AddChild(parent.get(), MakeKeyed("KeptByEmptyKey", "", 1));
    Property::AddChild(parent.get(), MakeKeyed("Dropped", "X", 1));
    db->LinkSubProperties(parent.get());
    EXPECT_EQ(ChildNames(parent.get()), (std::vector<std::string>{"KeptByEmptyKey"}));
}

TEST_F(LinkingDatabase, NonPropertyArgumentIsIgnored) {
    db->LinkSubProperties(nullptr);
    SUCCEED();
}

TEST_F(LinkingDatabase, FilterKeepsChildrenOfTheKeyAndOfSameLevelKeysOfKeptChildren) {
    std::vector<IProperty*> list{MakeKeyed("Other", "Z", 1), MakeKeyed("ViaLater", "S2", 1),
                                 MakeKeyed("Main", "K", 1, "S1"), MakeKeyed("ViaMain", "S1", 1, "S2"),
                                 MakeKeyed("ViaSecond", "S2", 2)};
    FilterCurrentChildren(*db, "K", list);
    // S1 is known up front (Main is keyed K); S2 only after ViaMain is kept, so "ViaLater",
    // which comes before it, is dropped.
    EXPECT_EQ(Names(list), (std::vector<std::string>{"Main", "ViaMain", "ViaSecond"}));
    ReleaseAll(list);
}

TEST_F(LinkingDatabase, FilterReleasesDroppedEntries) {
    IProperty* dropped = MakeKeyed("Dropped", "Z", 1);
    dropped->AddRef();
    std::vector<IProperty*> list{dropped};
    FilterCurrentChildren(*db, "K", list);
    EXPECT_TRUE(list.empty());
    EXPECT_EQ(ReferenceCountOf(dropped), 1u);
    dropped->Release();
}

TEST_F(LinkingDatabase, FilterAcceptsTheTestKeyOfAKeylessChild) {
    IProperty* keyless = Property::Construct(NameAndDescription("Keyless", "d"));
    AsProperty(keyless)->SetChildKey("TESTKEY");
    IProperty* otherKeyless = Property::Construct(NameAndDescription("OtherKeyless", "d"));
    AsProperty(otherKeyless)->SetChildKey("OTHER");
    std::vector<IProperty*> list{keyless, otherKeyless};
    FilterCurrentChildren(*db, "TESTKEY", list);
    EXPECT_EQ(Names(list), (std::vector<std::string>{"Keyless"}));
    ReleaseAll(list);
}

TEST_F(LinkingDatabase, GatherWithEmptyKeyReturnsZeroAndLeavesTheList) {
    std::vector<IProperty*> list{MakeKeyed("Present", "", 1)};
    EXPECT_EQ(GatherFromDatabase(*db, "", list), 0u);
    EXPECT_EQ(Names(list), (std::vector<std::string>{"Present"}));
    ReleaseAll(list);
}

TEST_F(LinkingDatabase, GatherReturnsTheNewSizeAndInsertsAroundCurrentEntries) {
    std::vector<IProperty*> list{MakeKeyed("Between", "KA", 1)};
    EXPECT_EQ(GatherFromDatabase(*db, "KA", list), 5u);
    EXPECT_EQ(Names(list), (std::vector<std::string>{"A0", "Between", "A1", "A1b", "A2"}));
    ReleaseAll(list);
}

TEST_F(LinkingDatabase, GatherComparesByTheMatchedKeyOrElseByTheParentKey) {
    // "Extra" (SL 5) is placed among entries that lack SL by their KB numbers: after "Mode"
    // (1), before "Last" (6). "Locked" (KB 2) then passes "Extra", whose KB number is 0.
    std::vector<IProperty*> list{MakeKeyed("Last", "KB", 6)};
    EXPECT_EQ(GatherFromDatabase(*db, "KB", list), 7u);
    EXPECT_EQ(Names(list), (std::vector<std::string>{"Mode", "Extra", "Locked", "LockedBool", "LockedInt", "Free",
                                                     "Last"}));
    ReleaseAll(list);
}

TEST_F(LinkingDatabase, GatherSelectsAKeylessTestKeyProperty) {
    std::vector<IProperty*> list;
    EXPECT_EQ(GatherFromDatabase(*db, "TESTKEY", list), 1u);
    EXPECT_EQ(Names(list), (std::vector<std::string>{"KeylessSwitch"}));
    ReleaseAll(list);
}

// Across many blocks of the work list, equal key numbers keep file order and stay behind an
// entry that was there before: the copies with number 1 go after "Current", in file order.
TEST(WideGathering, EqualKeyNumbersStayBehindInFileOrder) {
    PropertyDB db(Fixture("untyped_only.xml"));
    std::vector<std::string> expected[3];
    for (int i = 0; i < 1000; ++i) {
        const std::string name = "Q" + std::to_string(i);
        db.AddProperty(MakeKeyed(name.c_str(), "W", static_cast<std::uint32_t>(i % 3)));
        expected[i % 3].push_back(name);
    }
    std::vector<IProperty*> list{MakeKeyed("Current", "W", 1)};
    EXPECT_EQ(GatherFromDatabase(db, "W", list), 1001u);
    std::vector<std::string> order = expected[0];
    order.emplace_back("Current");
    order.insert(order.end(), expected[1].begin(), expected[1].end());
    order.insert(order.end(), expected[2].begin(), expected[2].end());
    EXPECT_EQ(Names(list), order);
    ReleaseAll(list);
}

// Descending key numbers put every copy at the front, so the file order comes out reversed.
TEST(WideGathering, DescendingKeyNumbersComeOutReversed) {
    PropertyDB db(Fixture("untyped_only.xml"));
    std::vector<std::string> expected;
    for (int i = 0; i < 1000; ++i) {
        const std::string name = "Q" + std::to_string(i);
        db.AddProperty(MakeKeyed(name.c_str(), "W", static_cast<std::uint32_t>(1000 - i)));
        expected.insert(expected.begin(), name);
    }
    std::vector<IProperty*> list;
    EXPECT_EQ(GatherFromDatabase(db, "W", list), 1000u);
    EXPECT_EQ(Names(list), expected);
    ReleaseAll(list);
}

TEST(SameValueRule, ComparesBooleansAndStringsOnly) {
    Held trueA(BooleanProperty::Construct(NameAndDescription("b", ""), true));
    Held trueB(BooleanProperty::Construct(NameAndDescription("b", ""), true));
    Held falseB(BooleanProperty::Construct(NameAndDescription("b", ""), false));
    EXPECT_TRUE(HoldSameValue(trueA.get(), trueB.get()));
    EXPECT_FALSE(HoldSameValue(trueA.get(), falseB.get()));

    Held textA(StringProperty::Construct(NameAndDescription("s", ""), "abc"));
    Held textB(StringProperty::Construct(NameAndDescription("s", ""), "abc"));
    Held textC(StringProperty::Construct(NameAndDescription("s", ""), "abcd"));
    Held textUpper(StringProperty::Construct(NameAndDescription("s", ""), "ABC"));
    EXPECT_TRUE(HoldSameValue(textA.get(), textB.get()));
    EXPECT_FALSE(HoldSameValue(textA.get(), textC.get()));
    EXPECT_FALSE(HoldSameValue(textA.get(), textUpper.get()));

    Held one(IntegerProperty::Construct(NameAndDescription("i", ""), 1, false));
    Held two(IntegerProperty::Construct(NameAndDescription("i", ""), 2, false));
    EXPECT_TRUE(HoldSameValue(one.get(), two.get()));
    EXPECT_TRUE(HoldSameValue(trueA.get(), textA.get()));  // mixed kinds count as the same
    EXPECT_FALSE(HoldSameValue(nullptr, trueA.get()));
    EXPECT_FALSE(HoldSameValue(trueA.get(), nullptr));
}
