#include <gtest/gtest.h>

#include <vector>

#include "ReferenceCountProbe.h"
#include "property/BooleanProperty.h"
#include "property/IntegerProperty.h"
#include "property/Property.h"
#include "property/StringProperty.h"

using namespace TargetOperations;
using PropertyTests::CurrentCount;

namespace {

BooleanProperty* MakeBool(const char* name, bool value) {
    return dynamic_cast<BooleanProperty*>(BooleanProperty::Construct(NameAndDescription(name, ""), value));
}

Property* MakeText(const char* name) {
    return dynamic_cast<Property*>(StringProperty::Construct(NameAndDescription(name, ""), "text"));
}

// Sets through the interface, as callers of the library do.
void Set(BooleanProperty* property, bool value) { static_cast<IBooleanProperty*>(property)->SetValue(value); }

}  // namespace

TEST(BooleanPropertyTest, ConstructStoresTheValueWithOneReference) {
    IBooleanProperty* on = BooleanProperty::Construct(NameAndDescription("on", "switch"), true);
    IBooleanProperty* off = BooleanProperty::Construct(NameAndDescription("off", ""), false);
    ASSERT_NE(nullptr, on);
    ASSERT_NE(nullptr, off);
    EXPECT_TRUE(on->GetValue());
    EXPECT_FALSE(off->GetValue());
    EXPECT_STREQ("on", on->GetName());
    EXPECT_STREQ("switch", on->GetDescription());
    EXPECT_EQ(1u, CurrentCount(on));
    EXPECT_EQ(1u, on->Release());
    EXPECT_EQ(1u, off->Release());
}

TEST(BooleanPropertyTest, SettingThePresentValueDoesNothingEvenIfChildrenDiffer) {
    BooleanProperty* parent = MakeBool("parent", true);
    BooleanProperty* child = MakeBool("child", false);
    parent->AddChild(child);
    Set(parent, true);
    EXPECT_TRUE(parent->GetValue());
    EXPECT_FALSE(child->GetValue());
    parent->Release();
}

TEST(BooleanPropertyTest, SettingTrueSetsTheWholeBooleanSubtreeTrue) {
    BooleanProperty* root = MakeBool("root", false);
    BooleanProperty* a = MakeBool("a", false);
    BooleanProperty* b = MakeBool("b", false);
    BooleanProperty* a1 = MakeBool("a1", false);
    BooleanProperty* a2 = MakeBool("a2", false);
    a->AddChild(a1);
    a->AddChild(a2);
    root->AddChild(a);
    root->AddChild(b);
    Set(root, true);
    for (BooleanProperty* p : {root, a, b, a1, a2}) EXPECT_TRUE(p->GetValue()) << p->GetName();
    root->Release();
}

TEST(BooleanPropertyTest, SettingFalseSetsTheSubtreeFalseAndSwitchesOffTheParentWhenAllItsChildrenAreOff) {
    BooleanProperty* parent = MakeBool("parent", true);
    BooleanProperty* node = MakeBool("node", true);
    BooleanProperty* sibling = MakeBool("sibling", false);
    BooleanProperty* c1 = MakeBool("c1", true);
    BooleanProperty* c2 = MakeBool("c2", true);
    node->AddChild(c1);
    node->AddChild(c2);
    parent->AddChild(node);
    parent->AddChild(sibling);
    Set(node, false);
    EXPECT_FALSE(node->GetValue());
    EXPECT_FALSE(c1->GetValue());
    EXPECT_FALSE(c2->GetValue());
    EXPECT_FALSE(parent->GetValue());
    parent->Release();
}

TEST(BooleanPropertyTest, SettingFalseKeepsTheParentOnWhileAnotherChildIsOn) {
    BooleanProperty* parent = MakeBool("parent", true);
    BooleanProperty* node = MakeBool("node", true);
    BooleanProperty* sibling = MakeBool("sibling", true);
    parent->AddChild(node);
    parent->AddChild(sibling);
    Set(node, false);
    EXPECT_FALSE(node->GetValue());
    EXPECT_TRUE(sibling->GetValue());
    EXPECT_TRUE(parent->GetValue());
    parent->Release();
}

TEST(BooleanPropertyTest, OneNonBooleanChildStopsThePropagationDown) {
    BooleanProperty* node = MakeBool("node", false);
    BooleanProperty* boolChild = MakeBool("boolChild", false);
    Property* textChild = MakeText("textChild");
    node->AddChild(boolChild);
    node->AddChild(textChild);
    Set(node, true);
    EXPECT_TRUE(node->GetValue());
    EXPECT_FALSE(boolChild->GetValue());
    boolChild->SetValueNoUpdate(true);
    Set(node, false);
    EXPECT_FALSE(node->GetValue());
    EXPECT_TRUE(boolChild->GetValue());
    node->Release();
}

TEST(BooleanPropertyTest, NodeWithANonBooleanChildStillSwitchesOffItsParent) {
    BooleanProperty* parent = MakeBool("parent", true);
    BooleanProperty* node = MakeBool("node", true);
    node->AddChild(MakeText("text"));
    parent->AddChild(node);
    Set(node, false);
    EXPECT_FALSE(node->GetValue());
    EXPECT_FALSE(parent->GetValue());
    parent->Release();
}

TEST(BooleanPropertyTest, TurningOffTheLastTrueChildSwitchesOffTheChainUpToAParentWithATrueChild) {
    // top (true) has children: keeper (true) and upper (true); upper -> middle -> leaf, all true.
    BooleanProperty* top = MakeBool("top", true);
    BooleanProperty* keeper = MakeBool("keeper", true);
    BooleanProperty* upper = MakeBool("upper", true);
    BooleanProperty* middle = MakeBool("middle", true);
    BooleanProperty* leaf = MakeBool("leaf", true);
    middle->AddChild(leaf);
    upper->AddChild(middle);
    top->AddChild(upper);
    top->AddChild(keeper);
    Set(leaf, false);
    EXPECT_FALSE(leaf->GetValue());
    EXPECT_FALSE(middle->GetValue());
    EXPECT_FALSE(upper->GetValue());
    EXPECT_TRUE(top->GetValue());
    EXPECT_TRUE(keeper->GetValue());
    top->Release();
}

TEST(BooleanPropertyTest, SwitchOffClimbStopsBelowAParentThatIsNotBoolean) {
    Property* group = dynamic_cast<Property*>(Property::Construct(NameAndDescription("group", "")));
    BooleanProperty* upper = MakeBool("upper", true);
    BooleanProperty* leaf = MakeBool("leaf", true);
    BooleanProperty* outer = MakeBool("outer", true);
    upper->AddChild(leaf);
    group->AddChild(upper);
    outer->AddChild(group);
    Set(leaf, false);
    EXPECT_FALSE(upper->GetValue());
    EXPECT_TRUE(outer->GetValue());
    outer->Release();
}

TEST(BooleanPropertyTest, SettingTrueNeverInformsTheParent) {
    BooleanProperty* parent = MakeBool("parent", false);
    BooleanProperty* child = MakeBool("child", false);
    parent->AddChild(child);
    Set(child, true);
    EXPECT_TRUE(child->GetValue());
    EXPECT_FALSE(parent->GetValue());
    parent->Release();
}

TEST(BooleanPropertyTest, ChildKeyOfAFalseBooleanIsEmptyEvenWhenAChildKeyWasSet) {
    BooleanProperty* flag = MakeBool("flag", false);
    flag->SetChildKey("SELECT");
    ASSERT_NE(nullptr, flag->GetChildKey());
    EXPECT_STREQ("", flag->GetChildKey());
    Set(flag, true);
    EXPECT_STREQ("SELECT", flag->GetChildKey());
    flag->SetValueNoUpdate(false);
    EXPECT_STREQ("", flag->GetChildKey());
    // Reached through Property's table too.
    Property* asProperty = flag;
    EXPECT_STREQ("", asProperty->GetChildKey());
    flag->Release();
}

TEST(BooleanPropertyTest, SetValueNoUpdateTouchesNoOtherProperty) {
    BooleanProperty* parent = MakeBool("parent", true);
    BooleanProperty* node = MakeBool("node", true);
    BooleanProperty* child = MakeBool("child", true);
    node->AddChild(child);
    parent->AddChild(node);
    node->SetValueNoUpdate(false);
    EXPECT_FALSE(node->GetValue());
    EXPECT_TRUE(child->GetValue());
    EXPECT_TRUE(parent->GetValue());
    parent->Release();
}

TEST(BooleanPropertyTest, UpdateSelfSwitchesOffWhenAllChildrenAreFalseBooleansAndClimbs) {
    BooleanProperty* parent = MakeBool("parent", true);
    BooleanProperty* node = MakeBool("node", true);
    node->AddChild(MakeBool("a", false));
    node->AddChild(MakeBool("b", false));
    parent->AddChild(node);
    node->UpdateSelf();
    EXPECT_FALSE(node->GetValue());
    EXPECT_FALSE(parent->GetValue());
    parent->Release();
}

TEST(BooleanPropertyTest, UpdateSelfChangesNothingWhileAChildIsTrue) {
    BooleanProperty* node = MakeBool("node", true);
    BooleanProperty* on = MakeBool("on", true);
    node->AddChild(MakeBool("off", false));
    node->AddChild(on);
    node->UpdateSelf();
    EXPECT_TRUE(node->GetValue());
    node->Release();
}

TEST(BooleanPropertyTest, UpdateSelfChangesNothingWithANonBooleanChild) {
    BooleanProperty* parent = MakeBool("parent", true);
    BooleanProperty* node = MakeBool("node", true);
    node->AddChild(MakeBool("off", false));
    node->AddChild(MakeText("text"));
    parent->AddChild(node);
    node->UpdateSelf();
    EXPECT_TRUE(node->GetValue());
    EXPECT_TRUE(parent->GetValue());
    parent->Release();
}

// With no children, "every child is a false Boolean" holds trivially.
TEST(BooleanPropertyTest, UpdateSelfWithoutChildrenSwitchesOff) {
    BooleanProperty* leaf = MakeBool("leaf", true);
    leaf->UpdateSelf();
    EXPECT_FALSE(leaf->GetValue());
    leaf->Release();
}

TEST(BooleanPropertyTest, UpdateSubPropertiesPushesTheValueDownWhenAllChildrenAreFalse) {
    BooleanProperty* root = MakeBool("root", true);
    BooleanProperty* a = MakeBool("a", false);
    BooleanProperty* b = MakeBool("b", false);
    BooleanProperty* a1 = MakeBool("a1", false);
    a->AddChild(a1);
    root->AddChild(a);
    root->AddChild(b);
    root->UpdateSubProperties();
    EXPECT_TRUE(a->GetValue());
    EXPECT_TRUE(b->GetValue());
    EXPECT_TRUE(a1->GetValue());
    EXPECT_TRUE(root->GetValue());
    root->Release();
}

TEST(BooleanPropertyTest, UpdateSubPropertiesChangesNothingWhenAnyChildIsTrue) {
    BooleanProperty* root = MakeBool("root", false);
    BooleanProperty* off = MakeBool("off", false);
    BooleanProperty* on = MakeBool("on", true);
    BooleanProperty* onChild = MakeBool("onChild", false);
    on->AddChild(onChild);
    root->AddChild(off);
    root->AddChild(on);
    root->UpdateSubProperties();
    EXPECT_FALSE(off->GetValue());
    EXPECT_TRUE(on->GetValue());
    EXPECT_FALSE(onChild->GetValue());
    root->Release();
}

TEST(BooleanPropertyTest, UpdateSubPropertiesChangesNothingWithANonBooleanChild) {
    BooleanProperty* root = MakeBool("root", true);
    BooleanProperty* off = MakeBool("off", false);
    root->AddChild(off);
    root->AddChild(MakeText("text"));
    root->UpdateSubProperties();
    EXPECT_FALSE(off->GetValue());
    root->Release();
}

TEST(BooleanPropertyTest, UpdateSubPropertiesStopsAtALevelWithATrueChild) {
    BooleanProperty* root = MakeBool("root", true);
    BooleanProperty* a = MakeBool("a", false);
    BooleanProperty* a1 = MakeBool("a1", true);
    BooleanProperty* a2 = MakeBool("a2", false);
    a->AddChild(a1);
    a->AddChild(a2);
    root->AddChild(a);
    root->UpdateSubProperties();
    EXPECT_TRUE(a->GetValue());
    EXPECT_TRUE(a1->GetValue());
    EXPECT_FALSE(a2->GetValue());
    root->Release();
}

// Setting values and re-evaluating borrow the neighbours only for the duration of the call.
TEST(BooleanPropertyTest, ImplementationChoiceSetValueAndUpdateSelfTakeNoLastingReferences) {
    BooleanProperty* top = MakeBool("top", true);
    BooleanProperty* node = MakeBool("node", true);
    BooleanProperty* a = MakeBool("a", true);
    BooleanProperty* b = MakeBool("b", true);
    node->AddChild(a);
    node->AddChild(b);
    top->AddChild(node);
    Set(node, false);  // down to a and b, up to top
    Set(node, true);
    Set(a, false);
    Set(b, false);     // node and top switch off through UpdateSelf
    node->UpdateSelf();
    top->UpdateSelf();
    top->SetValueNoUpdate(true);
    top->UpdateSubProperties();  // all children off: pushes true down two levels
    EXPECT_TRUE(node->GetValue());
    EXPECT_TRUE(a->GetValue());
    for (BooleanProperty* p : {top, node, a, b}) EXPECT_EQ(1u, CurrentCount(p)) << p->GetName();
    EXPECT_EQ(1u, top->Release());
}

TEST(BooleanPropertyTest, BooleanIsEqualComparesOnlyTheValue) {
    BooleanProperty* a = MakeBool("a", true);
    BooleanProperty* b = MakeBool("b", true);
    b->AddChild(MakeBool("child", false));
    b->AddKeyName(PropertyKey("K", 1));
    EXPECT_TRUE(a->IsEqual(*b));
    b->SetValueNoUpdate(false);
    EXPECT_FALSE(a->IsEqual(*b));
    a->Release();
    b->Release();
}

TEST(BooleanPropertyTest, CloneTakesTheValue) {
    BooleanProperty* source = MakeBool("source", true);
    source->SetChildKey("K");
    IProperty* copy = source->Clone();
    auto* copyBoolean = dynamic_cast<BooleanProperty*>(copy);
    ASSERT_NE(nullptr, copyBoolean);
    EXPECT_TRUE(copyBoolean->GetValue());
    EXPECT_STREQ("K", copyBoolean->GetChildKey());
    source->SetValueNoUpdate(false);
    EXPECT_TRUE(copyBoolean->GetValue());
    copy->Release();
    source->Release();
}
