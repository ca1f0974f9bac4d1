#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

#include "NonAttachableProperty.h"
#include "ReferenceCountProbe.h"
#include "property/BooleanProperty.h"
#include "property/Property.h"
#include "property/StringProperty.h"

using namespace ReferenceCounting;
using namespace TargetOperations;
using PropertyTests::CurrentCount;
using PropertyTests::NonAttachableProperty;

namespace {

Property* MakeNode(const char* name) {
    return dynamic_cast<Property*>(Property::Construct(NameAndDescription(name, std::string("about ") + name)));
}

}  // namespace

TEST(PropertyTreeTest, ConstructSetsTheDefaults) {
    Property* node = MakeNode("node");
    ASSERT_NE(nullptr, node);
    EXPECT_STREQ("node", node->GetName());
    EXPECT_STREQ("about node", node->GetDescription());
    EXPECT_EQ(0u, node->GetCategory());
    EXPECT_EQ(0, node->GetEnumValue());
    EXPECT_STREQ("", node->GetChildKey());
    EXPECT_STREQ("", node->GetSameLevelKey());
    EXPECT_TRUE(node->IsEditable());
    EXPECT_FALSE(node->IsDisabled());
    EXPECT_EQ(0u, static_cast<std::uint32_t>(node->IsReplacable()));
    EXPECT_EQ(0u, node->GetNumSubProperties());
    EXPECT_EQ(nullptr, node->GetParentProperty());
    EXPECT_FALSE(node->IsKeyName(""));
    EXPECT_EQ(1u, CurrentCount(node));
    EXPECT_EQ(1u, node->Release());
}

// The construction leaves the halt-CPU flag open; this build starts it false.
TEST(PropertyTreeTest, ImplementationChoiceHaltCpuIsFalseAfterConstruction) {
    Property* node = MakeNode("node");
    EXPECT_FALSE(node->IsHaltCPU());
    node->Release();
}

TEST(PropertyTreeTest, AttributeSettersAreReadBack) {
    Property* node = MakeNode("node");
    node->SetName("renamed");
    node->SetDescription("described");
    node->SetCategory(0xFFFFFFF0u);
    node->SetEnumValue(-42);
    node->SetChildKey("CHILD");
    node->SetSameLevelKey("SAME");
    node->SetEditable(false);
    node->SetDisabled(true);
    node->SetHaltCPU(true);
    node->SetReplacable(static_cast<eREPLACABLE>(7));
    EXPECT_STREQ("renamed", node->GetName());
    EXPECT_STREQ("described", node->GetDescription());
    EXPECT_EQ(0xFFFFFFF0u, node->GetCategory());
    EXPECT_EQ(-42, node->GetEnumValue());
    EXPECT_STREQ("CHILD", node->GetChildKey());
    EXPECT_STREQ("SAME", node->GetSameLevelKey());
    EXPECT_FALSE(node->IsEditable());
    EXPECT_TRUE(node->IsDisabled());
    EXPECT_TRUE(node->IsHaltCPU());
    EXPECT_EQ(7u, static_cast<std::uint32_t>(node->IsReplacable()));
    node->Release();
}

// Null texts are not for the setters; this build ignores them and keeps the stored text.
TEST(PropertyTreeTest, ImplementationChoiceNullTextsGivenToSettersAreIgnored) {
    Property* node = MakeNode("node");
    node->SetChildKey("CHILD");
    node->SetSameLevelKey("SAME");
    node->SetChildKey(nullptr);
    node->SetSameLevelKey(nullptr);
    node->SetName(nullptr);
    node->SetDescription(nullptr);
    EXPECT_STREQ("CHILD", node->GetChildKey());
    EXPECT_STREQ("SAME", node->GetSameLevelKey());
    EXPECT_STREQ("node", node->GetName());
    EXPECT_STREQ("about node", node->GetDescription());
    node->Release();
}

TEST(PropertyTreeTest, SettersCopyTextUpToItsTerminatingZero) {
    Property* node = MakeNode("node");
    char buffer[] = {'A', 'B', '\0', 'C', '\0'};
    node->SetChildKey(buffer);
    buffer[0] = 'X';  // the property holds its own copy
    EXPECT_STREQ("AB", node->GetChildKey());
    node->Release();
}

TEST(PropertyTreeTest, AddChildTakesOverTheCallersReferenceAndSetsTheParent) {
    Property* parent = MakeNode("parent");
    Property* child = MakeNode("child");
    parent->AddChild(child);
    EXPECT_EQ(1u, CurrentCount(child));
    EXPECT_EQ(1u, CurrentCount(parent));  // the back link is not counted
    EXPECT_EQ(1u, parent->GetNumSubProperties());

    IProperty* seenParent = child->GetParentProperty();
    EXPECT_EQ(static_cast<IProperty*>(parent), seenParent);
    EXPECT_EQ(2u, CurrentCount(parent));  // GetParentProperty hands out a reference
    EXPECT_EQ(2u, seenParent->Release());

    child->AddRef();
    EXPECT_EQ(1u, parent->Release());
    // The parent released its reference when it died; ours is the last one.
    EXPECT_EQ(1u, child->Release());
}

TEST(PropertyTreeTest, AddChildThroughAttachableInterfaceKeepsTheOrder) {
    Property* parent = MakeNode("parent");
    IAttachableProperty* attachable = parent;
    attachable->AddChild(MakeNode("first"));
    attachable->AddChild(MakeNode("second"));
    attachable->AddChild(MakeNode("third"));
    ASSERT_EQ(3u, parent->GetNumSubProperties());
    IProperty* children[3] = {nullptr, nullptr, nullptr};
    parent->GetSubProperties(children);
    EXPECT_STREQ("first", children[0]->GetName());
    EXPECT_STREQ("second", children[1]->GetName());
    EXPECT_STREQ("third", children[2]->GetName());
    for (IProperty* child : children) {
        EXPECT_EQ(2u, CurrentCount(child));  // one for the parent, one for this array
        child->Release();
    }
    EXPECT_EQ(1u, parent->Release());
}

TEST(PropertyTreeTest, GetSubPropertiesIntoVectorAppendsBehindExistingEntries) {
    Property* parent = MakeNode("parent");
    Property* other = MakeNode("other");
    parent->AddChild(MakeNode("a"));
    parent->AddChild(MakeNode("b"));
    std::vector<IProperty*> out{other};
    parent->GetSubProperties(out);
    ASSERT_EQ(3u, out.size());
    EXPECT_EQ(static_cast<IProperty*>(other), out[0]);
    EXPECT_STREQ("a", out[1]->GetName());
    EXPECT_STREQ("b", out[2]->GetName());
    EXPECT_EQ(2u, CurrentCount(out[1]));
    EXPECT_EQ(2u, CurrentCount(out[2]));
    EXPECT_EQ(1u, CurrentCount(other));
    out[1]->Release();
    out[2]->Release();
    other->Release();
    EXPECT_EQ(1u, parent->Release());
}

TEST(PropertyTreeTest, StaticGetSubPropertiesPassesTheFetchedReferencesToTheVector) {
    Property* parent = MakeNode("parent");
    parent->AddChild(MakeNode("a"));
    parent->AddChild(MakeNode("b"));
    IProperty* marker = MakeNode("marker");
    std::vector<IProperty*> out{marker};
    Property::GetSubProperties(parent, out);
    ASSERT_EQ(3u, out.size());
    EXPECT_EQ(marker, out[0]);
    EXPECT_STREQ("a", out[1]->GetName());
    EXPECT_STREQ("b", out[2]->GetName());
    EXPECT_EQ(2u, CurrentCount(out[1]));
    EXPECT_EQ(2u, CurrentCount(out[2]));
    for (IProperty* p : out) p->Release();
    EXPECT_EQ(1u, parent->Release());
}

TEST(PropertyTreeTest, StaticGetSubPropertiesOfALeafAddsNothing) {
    Property* leaf = MakeNode("leaf");
    std::vector<IProperty*> out;
    Property::GetSubProperties(leaf, out);
    EXPECT_TRUE(out.empty());
    leaf->Release();
}

TEST(PropertyTreeTest, StaticAddChildWithAttachableParentAttaches) {
    IProperty* parent = Property::Construct(NameAndDescription("parent", ""));
    Property* child = MakeNode("child");
    Property::AddChild(parent, child);
    EXPECT_EQ(1u, parent->GetNumSubProperties());
    IProperty* seenParent = child->GetParentProperty();
    EXPECT_EQ(parent, seenParent);
    seenParent->Release();
    EXPECT_EQ(1u, CurrentCount(child));
    EXPECT_EQ(1u, parent->Release());
}

TEST(PropertyTreeTest, StaticAddChildWithNonAttachableParentLeavesBothUnchanged) {
    auto* parent = new NonAttachableProperty("parent");
    Property* child = MakeNode("child");
    Property::AddChild(parent, child);
    EXPECT_EQ(0u, parent->GetNumSubProperties());
    EXPECT_EQ(nullptr, child->GetParentProperty());
    // The caller's reference was neither kept nor released.
    EXPECT_EQ(1u, CurrentCount(child));
    EXPECT_EQ(1u, CurrentCount(parent));
    EXPECT_EQ(1u, child->Release());
    EXPECT_EQ(1u, parent->Release());
}

TEST(PropertyTreeTest, SetParentStoresAnUncountedLinkAndNullClearsIt) {
    Property* parent = MakeNode("parent");
    Property* child = MakeNode("child");
    child->SetParent(parent);
    EXPECT_EQ(1u, CurrentCount(parent));
    IProperty* seen = child->GetParentProperty();
    EXPECT_EQ(static_cast<IProperty*>(parent), seen);
    seen->Release();
    child->SetParent(nullptr);
    EXPECT_EQ(nullptr, child->GetParentProperty());
    EXPECT_EQ(1u, CurrentCount(parent));
    child->Release();
    parent->Release();
}

TEST(PropertyTreeTest, RemoveAllSubPropertiesReleasesEachChildOnceAndKeepsTheirParentLinks) {
    Property* parent = MakeNode("parent");
    Property* kept = MakeNode("kept");
    parent->AddChild(kept);
    parent->AddChild(MakeNode("dropped"));
    kept->AddRef();
    EXPECT_EQ(2u, CurrentCount(kept));
    parent->RemoveAllSubProperties();
    EXPECT_EQ(0u, parent->GetNumSubProperties());
    EXPECT_EQ(1u, CurrentCount(kept));
    IProperty* seen = kept->GetParentProperty();
    EXPECT_EQ(static_cast<IProperty*>(parent), seen);
    seen->Release();
    EXPECT_EQ(1u, kept->Release());
    EXPECT_EQ(1u, parent->Release());
}

TEST(PropertyTreeTest, ChildKeptAliveByExtraReferenceHasNullParentAfterItsParentDies) {
    Property* parent = MakeNode("parent");
    Property* child = MakeNode("child");
    Property* grandchild = MakeNode("grandchild");
    child->AddChild(grandchild);
    parent->AddChild(child);
    child->AddRef();
    EXPECT_EQ(1u, parent->Release());
    EXPECT_EQ(nullptr, child->GetParentProperty());
    EXPECT_EQ(1u, CurrentCount(child));
    // The child's own subtree is untouched by its parent's death.
    ASSERT_EQ(1u, child->GetNumSubProperties());
    IProperty* seen = grandchild->GetParentProperty();
    EXPECT_EQ(static_cast<IProperty*>(child), seen);
    seen->Release();
    EXPECT_EQ(1u, child->Release());
}

TEST(PropertyTreeTest, ReleasingTheRootFreesTheWholeTree) {
    Property* root = MakeNode("root");
    Property* middle = MakeNode("middle");
    Property* leaf = MakeNode("leaf");
    middle->AddChild(leaf);
    root->AddChild(middle);
    leaf->AddRef();
    EXPECT_EQ(1u, root->Release());
    // Only our extra reference keeps the leaf; its parent is gone too.
    EXPECT_EQ(nullptr, leaf->GetParentProperty());
    EXPECT_EQ(1u, leaf->Release());
}

TEST(PropertyTreeTest, DisableAllLevelSetsEveryNodeOfTheSubtree) {
    Property* root = MakeNode("root");
    Property* middle = MakeNode("middle");
    Property* leaf = MakeNode("leaf");
    Property* sibling = dynamic_cast<Property*>(BooleanProperty::Construct(NameAndDescription("flag", ""), true));
    middle->AddChild(leaf);
    root->AddChild(middle);
    root->AddChild(sibling);
    root->DisableAllLevel(true);
    EXPECT_TRUE(root->IsDisabled());
    EXPECT_TRUE(middle->IsDisabled());
    EXPECT_TRUE(leaf->IsDisabled());
    EXPECT_TRUE(sibling->IsDisabled());
    middle->DisableAllLevel(false);
    EXPECT_TRUE(root->IsDisabled());
    EXPECT_FALSE(middle->IsDisabled());
    EXPECT_FALSE(leaf->IsDisabled());
    EXPECT_TRUE(sibling->IsDisabled());
    EXPECT_EQ(1u, CurrentCount(leaf));
    EXPECT_EQ(1u, CurrentCount(middle));
    root->Release();
}

TEST(PropertyTreeTest, SetDisabledOnTheRootLeavesTheChildrenAsTheyWere) {
    Property* root = MakeNode("root");
    Property* child = MakeNode("child");
    Property* disabledChild = MakeNode("disabledChild");
    disabledChild->SetDisabled(true);
    root->AddChild(child);
    root->AddChild(disabledChild);
    root->SetDisabled(true);
    EXPECT_TRUE(root->IsDisabled());
    EXPECT_FALSE(child->IsDisabled());
    EXPECT_TRUE(disabledChild->IsDisabled());
    root->SetDisabled(false);
    EXPECT_FALSE(root->IsDisabled());
    EXPECT_TRUE(disabledChild->IsDisabled());
    root->Release();
}

TEST(PropertyTreeTest, UpdateSelfOfAPlainPropertyChangesNothing) {
    Property* root = MakeNode("root");
    Property* child = MakeNode("child");
    root->AddChild(child);
    root->SetDisabled(true);
    root->SetChildKey("K");
    root->UpdateSelf();
    EXPECT_TRUE(root->IsDisabled());
    EXPECT_STREQ("K", root->GetChildKey());
    EXPECT_EQ(1u, root->GetNumSubProperties());
    EXPECT_EQ(1u, CurrentCount(child));
    EXPECT_EQ(1u, CurrentCount(root));
    root->Release();
}

TEST(PropertyTreeTest, AddChildOfATypedPropertySetsItsParent) {
    Property* parent = MakeNode("parent");
    IStringProperty* text = StringProperty::Construct(NameAndDescription("text", ""), "value");
    parent->AddChild(text);
    IProperty* seen = text->GetParentProperty();
    EXPECT_EQ(static_cast<IProperty*>(parent), seen);
    seen->Release();
    EXPECT_EQ(1u, parent->Release());
}
