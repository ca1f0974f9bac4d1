#include <gtest/gtest.h>

#include <cstdint>
#include <typeinfo>
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

NameAndDescription Nd(const char* name) { return NameAndDescription(name, "description"); }

template <typename Class, typename Interface>
Class* AsClass(Interface* made) {
    return dynamic_cast<Class*>(made);
}

Property* Child(IProperty* parent, std::uint32_t index) {
    std::vector<IProperty*> children;
    dynamic_cast<Property*>(parent)->GetSubProperties(children);
    Property* wanted = dynamic_cast<Property*>(children.at(index));
    for (IProperty* c : children) c->Release();
    return wanted;
}

}  // namespace

TEST(CloneTest, CloneOfEachClassIsANewObjectOfTheSameClassWithOneReference) {
    std::vector<Property*> sources = {
        AsClass<Property>(Property::Construct(Nd("plain"))),
        AsClass<Property>(BooleanProperty::Construct(Nd("boolean"), true)),
        AsClass<Property>(IntegerProperty::Construct(Nd("integer"), 7, false)),
        AsClass<Property>(LocationProperty::Construct(Nd("location"), 0x10)),
        AsClass<Property>(LocationProperty2::Construct(Nd("location2"), 0x20)),
        AsClass<Property>(StringProperty::Construct(Nd("string"), "s")),
    };
    for (Property* source : sources) {
        SCOPED_TRACE(source->GetName());
        IProperty* copy = source->Clone();
        ASSERT_NE(nullptr, copy);
        EXPECT_NE(static_cast<IProperty*>(source), copy);
        EXPECT_EQ(typeid(*source), typeid(*copy));
        EXPECT_EQ(1u, CurrentCount(copy));
        EXPECT_EQ(1u, CurrentCount(source));
        EXPECT_STREQ(source->GetName(), copy->GetName());
        EXPECT_EQ(1u, copy->Release());
        EXPECT_EQ(1u, source->Release());
    }
}

TEST(CloneTest, LocationProperty2IsClonedAsLocationProperty2) {
    Property* source = AsClass<Property>(LocationProperty2::Construct(Nd("wide"), 0x123456789ull, 0, 5));
    IProperty* copy = source->Clone();
    auto* wide = dynamic_cast<LocationProperty2*>(copy);
    ASSERT_NE(nullptr, wide);
    EXPECT_EQ(nullptr, dynamic_cast<LocationProperty*>(copy));
    std::uint32_t page = 99;
    EXPECT_EQ(0x123456789ull, wide->GetValue64(page).GetAddress());
    EXPECT_EQ(0u, page);
    EXPECT_EQ(5u, wide->GetCookie());
    copy->Release();
    source->Release();
}

TEST(CloneTest, CloneCopiesEveryPropertyField) {
    Property* source = AsClass<Property>(Property::Construct(NameAndDescription("name", "text")));
    source->AddKeyName(PropertyKey("K1", 1));
    source->AddKeyName(PropertyKey("K2", 2));
    source->SetCategory(12);
    source->SetEnumValue(-3);
    source->SetChildKey("CHILD");
    source->SetSameLevelKey("SAME");
    source->SetEditable(false);
    source->SetDisabled(true);
    source->SetHaltCPU(true);
    source->SetReplacable(static_cast<eREPLACABLE>(2));

    auto* copy = dynamic_cast<Property*>(source->Clone());
    ASSERT_NE(nullptr, copy);
    EXPECT_STREQ("name", copy->GetName());
    EXPECT_STREQ("text", copy->GetDescription());
    EXPECT_EQ(1u, copy->GetKeyNumber("K1"));
    EXPECT_EQ(2u, copy->GetKeyNumber("K2"));
    EXPECT_EQ(12u, copy->GetCategory());
    EXPECT_EQ(-3, copy->GetEnumValue());
    EXPECT_STREQ("CHILD", copy->GetChildKey());
    EXPECT_STREQ("SAME", copy->GetSameLevelKey());
    EXPECT_FALSE(copy->IsEditable());
    EXPECT_TRUE(copy->IsDisabled());
    EXPECT_TRUE(copy->IsHaltCPU());
    EXPECT_EQ(2u, static_cast<std::uint32_t>(copy->IsReplacable()));

    // The copy owns its fields: changing the source afterwards leaves it alone.
    source->SetChildKey("CHANGED");
    source->RemoveAllKeys();
    source->SetName("renamed");
    EXPECT_STREQ("CHILD", copy->GetChildKey());
    EXPECT_EQ(1u, copy->GetKeyNumber("K1"));
    EXPECT_STREQ("name", copy->GetName());
    copy->Release();
    source->Release();
}

TEST(CloneTest, CloneOfBooleanWithTwoChildrenCopiesTheChildrenAsNewObjects) {
    IBooleanProperty* root = BooleanProperty::Construct(Nd("root"), true);
    Property* grandparent = AsClass<Property>(Property::Construct(Nd("above")));
    grandparent->AddChild(root);
    IBooleanProperty* first = BooleanProperty::Construct(Nd("first"), true);
    IIntegerProperty* second = IntegerProperty::Construct(Nd("second"), 42, false);
    AsClass<Property>(root)->AddChild(first);
    AsClass<Property>(root)->AddChild(second);

    IProperty* copy = AsClass<Property>(root)->Clone();
    auto* copyBoolean = dynamic_cast<BooleanProperty*>(copy);
    ASSERT_NE(nullptr, copyBoolean);
    EXPECT_TRUE(copyBoolean->GetValue());
    EXPECT_EQ(nullptr, copy->GetParentProperty());
    ASSERT_EQ(2u, copy->GetNumSubProperties());

    Property* copyFirst = Child(copy, 0);
    Property* copySecond = Child(copy, 1);
    EXPECT_NE(static_cast<IProperty*>(copyFirst), static_cast<IProperty*>(first));
    EXPECT_NE(static_cast<IProperty*>(copySecond), static_cast<IProperty*>(second));
    EXPECT_NE(nullptr, dynamic_cast<BooleanProperty*>(copyFirst));
    EXPECT_NE(nullptr, dynamic_cast<IntegerProperty*>(copySecond));
    // Leaves have no children, so comparing them takes no lasting reference.
    EXPECT_TRUE(copyFirst->IsEqual(*AsClass<Property>(first)));
    EXPECT_TRUE(copySecond->IsEqual(*AsClass<Property>(second)));
    for (Property* copiedChild : {copyFirst, copySecond}) {
        IProperty* parent = copiedChild->GetParentProperty();
        EXPECT_EQ(copy, parent);
        if (parent != nullptr) parent->Release();
        EXPECT_EQ(1u, CurrentCount(copiedChild));
    }

    // The source tree is unchanged and holds no extra reference.
    EXPECT_EQ(1u, CurrentCount(root));
    EXPECT_EQ(1u, CurrentCount(first));
    EXPECT_EQ(1u, CurrentCount(second));
    EXPECT_EQ(2u, AsClass<Property>(root)->GetNumSubProperties());

    EXPECT_EQ(1u, copy->Release());
    EXPECT_EQ(1u, grandparent->Release());
}

TEST(CloneTest, CloneIsADeepCopyOfTheWholeSubtree) {
    Property* root = AsClass<Property>(Property::Construct(Nd("root")));
    Property* middle = AsClass<Property>(Property::Construct(Nd("middle")));
    IStringProperty* leaf = StringProperty::Construct(Nd("leaf"), "deep");
    middle->AddChild(leaf);
    root->AddChild(middle);

    IProperty* copy = root->Clone();
    Property* copyMiddle = Child(copy, 0);
    ASSERT_NE(nullptr, copyMiddle);
    EXPECT_NE(middle, copyMiddle);
    ASSERT_EQ(1u, copyMiddle->GetNumSubProperties());
    auto* copyLeaf = dynamic_cast<StringProperty*>(Child(copyMiddle, 0));
    ASSERT_NE(nullptr, copyLeaf);
    EXPECT_NE(dynamic_cast<StringProperty*>(leaf), copyLeaf);
    EXPECT_STREQ("deep", copyLeaf->GetValue());
    IProperty* leafParent = copyLeaf->GetParentProperty();
    EXPECT_EQ(static_cast<IProperty*>(copyMiddle), leafParent);
    leafParent->Release();

    // Changing the source's leaf does not reach the copy.
    leaf->SetValue("changed");
    EXPECT_STREQ("deep", copyLeaf->GetValue());

    // Releasing the source leaves the copy whole.
    EXPECT_EQ(1u, root->Release());
    EXPECT_STREQ("deep", copyLeaf->GetValue());
    EXPECT_EQ(1u, copy->Release());
}

// Clone borrows the source's children only while copying them.
TEST(CloneTest, ImplementationChoiceCloneTakesNoLastingReferences) {
    Property* root = AsClass<Property>(Property::Construct(Nd("root")));
    Property* child = AsClass<Property>(BooleanProperty::Construct(Nd("child"), false));
    Property* grandchild = AsClass<Property>(LocationProperty::Construct(Nd("grandchild"), 1));
    child->AddChild(grandchild);
    root->AddChild(child);
    for (int i = 0; i < 3; ++i) root->Clone()->Release();
    EXPECT_EQ(1u, CurrentCount(root));
    EXPECT_EQ(1u, CurrentCount(child));
    EXPECT_EQ(1u, CurrentCount(grandchild));
    EXPECT_EQ(1u, root->Release());
}
