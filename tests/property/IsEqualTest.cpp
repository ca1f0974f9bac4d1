#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

#include "ReferenceCountProbe.h"
#include "property/BooleanProperty.h"
#include "property/IntegerProperty.h"
#include "property/LocationProperty.h"
#include "property/LocationProperty2.h"
#include "property/Property.h"
#include "property/StringProperty.h"

using namespace TargetOperations;
using PropertyTests::CurrentCount;

namespace {

template <typename Interface>
Property* P(Interface* made) {
    return dynamic_cast<Property*>(made);
}

Property* Node(const char* name, const char* description = "") {
    return P(Property::Construct(NameAndDescription(name, description)));
}

}  // namespace

TEST(IsEqualTest, SameNameWithDifferentDescriptionsCategoriesAndFlagsIsEqual) {
    Property* a = Node("same", "first description");
    Property* b = Node("same", "second description");
    a->SetCategory(1);
    b->SetCategory(2);
    a->SetEnumValue(3);
    b->AddKeyName(PropertyKey("K", 1));
    b->SetChildKey("CK");
    b->SetSameLevelKey("SL");
    b->SetEditable(false);
    b->SetDisabled(true);
    b->SetHaltCPU(true);
    b->SetReplacable(static_cast<eREPLACABLE>(1));
    EXPECT_TRUE(a->IsEqual(*b));
    EXPECT_TRUE(b->IsEqual(*a));
    a->Release();
    b->Release();
}

TEST(IsEqualTest, DifferentNamesAreNotEqual) {
    Property* a = Node("one");
    Property* b = Node("One");
    EXPECT_FALSE(a->IsEqual(*b));
    b->SetName("one ");
    EXPECT_FALSE(a->IsEqual(*b));
    a->Release();
    b->Release();
}

TEST(IsEqualTest, DifferentNumbersOfChildrenAreNotEqualAndTakeNoReference) {
    Property* a = Node("root");
    Property* b = Node("root");
    Property* onlyChild = Node("child");
    a->AddChild(Node("child"));
    b->AddChild(onlyChild);
    b->AddChild(Node("extra"));
    Property* empty = Node("root");
    EXPECT_FALSE(empty->IsEqual(*b));
    EXPECT_FALSE(a->IsEqual(*b));
    EXPECT_EQ(1u, CurrentCount(onlyChild));
    a->Release();
    b->Release();
    empty->Release();
}

TEST(IsEqualTest, TypedValuesTakePartInTheComparison) {
    Property* t1 = P(BooleanProperty::Construct(NameAndDescription("b", ""), true));
    Property* t2 = P(BooleanProperty::Construct(NameAndDescription("b", ""), true));
    Property* f = P(BooleanProperty::Construct(NameAndDescription("b", ""), false));
    EXPECT_TRUE(t1->IsEqual(*t2));
    EXPECT_FALSE(t1->IsEqual(*f));

    Property* i1 = P(IntegerProperty::Construct(NameAndDescription("i", ""), 5, false));
    Property* i2 = P(IntegerProperty::Construct(NameAndDescription("i", ""), 5, true));
    Property* i3 = P(IntegerProperty::Construct(NameAndDescription("i", ""), 6, false));
    EXPECT_TRUE(i1->IsEqual(*i2));
    EXPECT_FALSE(i1->IsEqual(*i3));

    Property* l1 = P(LocationProperty::Construct(NameAndDescription("l", ""), 0x10, 0, 1));
    Property* l2 = P(LocationProperty::Construct(NameAndDescription("l", ""), 0x10, 0, 2));
    Property* l3 = P(LocationProperty::Construct(NameAndDescription("l", ""), 0x10, 1, 1));
    EXPECT_TRUE(l1->IsEqual(*l2));  // the cookie is not compared
    EXPECT_FALSE(l1->IsEqual(*l3));

    Property* w1 = P(LocationProperty2::Construct(NameAndDescription("w", ""), 0x10));
    Property* w2 = P(LocationProperty2::Construct(NameAndDescription("w", ""), 0x10));
    Property* w3 = P(LocationProperty2::Construct(NameAndDescription("w", ""), 0x11));
    EXPECT_TRUE(w1->IsEqual(*w2));
    EXPECT_FALSE(w1->IsEqual(*w3));

    Property* s1 = P(StringProperty::Construct(NameAndDescription("s", ""), "abc"));
    Property* s2 = P(StringProperty::Construct(NameAndDescription("s", ""), "abc"));
    Property* s3 = P(StringProperty::Construct(NameAndDescription("s", ""), "ABC"));
    EXPECT_TRUE(s1->IsEqual(*s2));
    EXPECT_FALSE(s1->IsEqual(*s3));

    for (Property* p : {t1, t2, f, i1, i2, i3, l1, l2, l3, w1, w2, w3, s1, s2, s3}) EXPECT_EQ(1u, p->Release());
}

TEST(IsEqualTest, TypedPropertyIsNotEqualToAPropertyOfAnotherClass) {
    Property* boolean = P(BooleanProperty::Construct(NameAndDescription("x", ""), false));
    Property* integer = P(IntegerProperty::Construct(NameAndDescription("x", ""), 0, false));
    Property* location = P(LocationProperty::Construct(NameAndDescription("x", ""), 0));
    Property* location2 = P(LocationProperty2::Construct(NameAndDescription("x", ""), 0));
    Property* text = P(StringProperty::Construct(NameAndDescription("x", ""), ""));
    Property* plain = Node("x");
    const std::vector<Property*> typed = {boolean, integer, location, location2, text};
    for (Property* mine : typed) {
        for (Property* theirs : typed) {
            if (mine != theirs) {
                EXPECT_FALSE(mine->IsEqual(*theirs)) << mine->GetName() << " " << theirs->GetName();
            }
        }
        EXPECT_FALSE(mine->IsEqual(*plain));
    }
    for (Property* p : typed) p->Release();
    plain->Release();
}

// Only the class of the property asked is tested: a plain property does not look at the
// other's class, so it equals a typed property of the same name.
TEST(IsEqualTest, PlainPropertyEqualsATypedPropertyOfTheSameName) {
    Property* plain = Node("x");
    Property* boolean = P(BooleanProperty::Construct(NameAndDescription("x", ""), true));
    EXPECT_TRUE(plain->IsEqual(*boolean));
    EXPECT_FALSE(boolean->IsEqual(*plain));
    plain->Release();
    boolean->Release();
}

TEST(IsEqualTest, PropertyEqualsItself) {
    Property* leaf = P(StringProperty::Construct(NameAndDescription("s", ""), "v"));
    EXPECT_TRUE(leaf->IsEqual(*leaf));
    EXPECT_EQ(1u, leaf->Release());
}

// Comparing children leaves one reference on every child of the argument tree that was
// fetched; those children outlive their tree and leak. Kept on purpose.
TEST(IsEqualTest, DeliberateLeakChildrenOfTheArgumentKeepOneMoreReferenceAfterComparison) {
    Property* mine = Node("root");
    Property* theirs = Node("root");
    Property* myFirst = Node("a");
    Property* mySecond = Node("b");
    Property* theirFirst = Node("a");
    Property* theirSecond = Node("b");
    mine->AddChild(myFirst);
    mine->AddChild(mySecond);
    theirs->AddChild(theirFirst);
    theirs->AddChild(theirSecond);

    EXPECT_TRUE(mine->IsEqual(*theirs));
    EXPECT_EQ(2u, CurrentCount(theirFirst));
    EXPECT_EQ(2u, CurrentCount(theirSecond));
    EXPECT_EQ(1u, CurrentCount(myFirst));
    EXPECT_EQ(1u, CurrentCount(mySecond));
    EXPECT_EQ(1u, CurrentCount(theirs));

    EXPECT_EQ(1u, mine->Release());
    EXPECT_EQ(1u, theirs->Release());
    // Their children survive the root: the leaked reference is the only one left.
    EXPECT_EQ(1u, CurrentCount(theirFirst));
    EXPECT_EQ(nullptr, theirFirst->GetParentProperty());
}

// The extra references are taken at every level that is compared. Deliberate leak as above.
TEST(IsEqualTest, DeliberateLeakEveryComparedLevelOfTheArgumentGainsAReference) {
    Property* mine = Node("root");
    Property* myMiddle = Node("middle");
    myMiddle->AddChild(Node("leaf"));
    mine->AddChild(myMiddle);
    Property* theirs = Node("root");
    Property* theirMiddle = Node("middle");
    Property* theirLeaf = Node("leaf");
    theirMiddle->AddChild(theirLeaf);
    theirs->AddChild(theirMiddle);

    EXPECT_TRUE(mine->IsEqual(*theirs));
    EXPECT_EQ(2u, CurrentCount(theirMiddle));
    EXPECT_EQ(2u, CurrentCount(theirLeaf));
    EXPECT_EQ(1u, CurrentCount(myMiddle));

    mine->Release();
    theirs->Release();
}

// Children in another order are unequal; the comparison still took its references on the
// argument's children before finding the difference. Deliberate leak as above.
TEST(IsEqualTest, DeliberateLeakChildrenInAnotherOrderAreNotEqual) {
    Property* mine = Node("root");
    mine->AddChild(Node("a"));
    mine->AddChild(Node("b"));
    Property* theirs = Node("root");
    Property* theirFirst = Node("b");
    Property* theirSecond = Node("a");
    theirs->AddChild(theirFirst);
    theirs->AddChild(theirSecond);

    EXPECT_FALSE(mine->IsEqual(*theirs));
    EXPECT_EQ(2u, CurrentCount(theirFirst));
    EXPECT_EQ(2u, CurrentCount(theirSecond));

    mine->Release();
    theirs->Release();
}

// Deliberate leak as above: the clone's children are the argument's children here.
TEST(IsEqualTest, DeliberateLeakChildWithDifferentTypedValueMakesTreesUnequal) {
    Property* mine = Node("root");
    mine->AddChild(IntegerProperty::Construct(NameAndDescription("n", ""), 1, false));
    auto* theirs = dynamic_cast<Property*>(mine->Clone());
    EXPECT_TRUE(mine->IsEqual(*theirs));

    std::vector<IProperty*> fetched;
    theirs->GetSubProperties(fetched);
    dynamic_cast<IntegerProperty*>(fetched.at(0))->SetValue(2);
    fetched.at(0)->Release();
    EXPECT_FALSE(mine->IsEqual(*theirs));

    mine->Release();
    theirs->Release();
}
