// Uses the model only as an outside program does: through the shared library and its one
// umbrella header.
#include <RLXPropertyHelper.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "ReferenceCountProbe.h"

using namespace ReferenceCounting;
using namespace TargetOperations;
using PropertyTests::CurrentCount;

TEST(SharedLibraryConsumerTest, ConstructFunctionsGiveObjectsOfTheirClassWithOneReference) {
    IProperty* plain = Property::Construct(NameAndDescription("plain", "d"));
    IBooleanProperty* boolean = BooleanProperty::Construct(NameAndDescription("boolean", ""), true);
    std::vector<std::uint64_t> allowed = {1, 2};
    IIntegerProperty* integer = IntegerProperty::Construct(NameAndDescription("integer", ""), 5, allowed, false);
    IIntegerProperty* integerShort = IntegerProperty::Construct(NameAndDescription("integer2", ""), 6, true);
    ILocationProperty* location = LocationProperty::Construct(NameAndDescription("location", ""), 7, 0, 8);
    ILocationProperty* locationShort = LocationProperty::Construct(NameAndDescription("location_s", ""), 9);
    ILocationProperty2* location2 = LocationProperty2::Construct(NameAndDescription("location2", ""), 0x100000000ull, 0, 1);
    ILocationProperty2* location2Short = LocationProperty2::Construct(NameAndDescription("location2_s", ""), 2);
    IStringProperty* text = StringProperty::Construct(NameAndDescription("text", ""), "X", {"A", "B"},
                                                      {ValueAttribute("", 1, 2, false, ""), ValueAttribute("KB", 3, 4, true, "")});
    IStringProperty* textShort = StringProperty::Construct(NameAndDescription("text_s", ""), "free");

    EXPECT_NE(nullptr, dynamic_cast<Property*>(plain));
    EXPECT_NE(nullptr, dynamic_cast<BooleanProperty*>(boolean));
    EXPECT_NE(nullptr, dynamic_cast<IntegerProperty*>(integer));
    EXPECT_NE(nullptr, dynamic_cast<IntegerProperty*>(integerShort));
    EXPECT_NE(nullptr, dynamic_cast<LocationProperty*>(location));
    EXPECT_NE(nullptr, dynamic_cast<LocationProperty*>(locationShort));
    EXPECT_NE(nullptr, dynamic_cast<LocationProperty2*>(location2));
    EXPECT_EQ(nullptr, dynamic_cast<LocationProperty*>(location2));
    EXPECT_NE(nullptr, dynamic_cast<LocationProperty2*>(location2Short));
    EXPECT_NE(nullptr, dynamic_cast<StringProperty*>(text));
    EXPECT_NE(nullptr, dynamic_cast<StringProperty*>(textShort));
    EXPECT_EQ(nullptr, dynamic_cast<IntegerProperty*>(boolean));
    EXPECT_EQ(nullptr, dynamic_cast<BooleanProperty*>(plain));

    EXPECT_TRUE(boolean->GetValue());
    EXPECT_EQ(5u, integer->GetValue());
    std::uint32_t page = 99;
    EXPECT_EQ(7u, location->GetValue(page));
    EXPECT_EQ(8u, location->GetCookie());
    EXPECT_EQ(0xFFFFFFFFu, locationShort->GetCookie());
    EXPECT_EQ(0x100000000ull, location2->GetValue64(page).GetAddress());
    EXPECT_EQ(0u, location2->GetValue(page));
    EXPECT_STREQ("A", text->GetValue());
    EXPECT_STREQ("A", dynamic_cast<StringProperty*>(text)->GetChildKey());
    EXPECT_STREQ("free", textShort->GetValue());

    const std::vector<IProperty*> all = {plain, boolean, integer, integerShort, location, locationShort,
                                         location2, location2Short, text, textShort};
    for (IProperty* p : all) {
        EXPECT_EQ(1u, CurrentCount(p)) << p->GetName();
        EXPECT_EQ(1u, p->Release()) << p->GetName();
    }
}

TEST(SharedLibraryConsumerTest, QueryInterfaceAnswersAcrossTheLibraryBoundary) {
    IBooleanProperty* boolean = BooleanProperty::Construct(NameAndDescription("b", ""), false);
    auto* asProperty = static_cast<IProperty*>(boolean->QueryInterface(ClassID_IProperty));
    auto* asAttachable = static_cast<IAttachableProperty*>(boolean->QueryInterface(ClassID_IAttachableProperty));
    auto* asCounted = static_cast<IReferenceCount*>(boolean->QueryInterface(ClassID_IReferenceCount));
    auto* asBoolean = static_cast<IBooleanProperty*>(boolean->QueryInterface(ClassID_IBooleanProperty));
    EXPECT_EQ(static_cast<IProperty*>(boolean), asProperty);
    EXPECT_EQ(static_cast<IAttachableProperty*>(dynamic_cast<BooleanProperty*>(boolean)), asAttachable);
    EXPECT_EQ(static_cast<IReferenceCount*>(boolean), asCounted);
    EXPECT_EQ(boolean, asBoolean);
    EXPECT_EQ(5u, CurrentCount(boolean));
    for (std::uint32_t id : {4u, 5u, 8u, 9u, 10u, 15u, 20u}) {
        EXPECT_EQ(nullptr, boolean->QueryInterface(static_cast<_ClassID>(id))) << "id " << id;
    }
    EXPECT_EQ(5u, CurrentCount(boolean));
    asProperty->Release();
    asAttachable->Release();
    asCounted->Release();
    asBoolean->Release();
    EXPECT_EQ(1u, boolean->Release());
}

TEST(SharedLibraryConsumerTest, LocationProperty2AnswersBothLocationInterfaces) {
    ILocationProperty2* wide = LocationProperty2::Construct(NameAndDescription("w", ""), 0x1234567890ull);
    auto* five = static_cast<ILocationProperty*>(wide->QueryInterface(ClassID_ILocationProperty));
    auto* fifteen = static_cast<ILocationProperty2*>(wide->QueryInterface(ClassID_ILocationProperty2));
    ASSERT_NE(nullptr, five);
    ASSERT_NE(nullptr, fifteen);
    std::uint32_t page = 0;
    EXPECT_EQ(0x34567890u, five->GetValue(page));
    EXPECT_EQ(0x1234567890ull, fifteen->GetValue64(page).GetAddress());
    five->Release();
    fifteen->Release();
    EXPECT_EQ(1u, wide->Release());
}

TEST(SharedLibraryConsumerTest, TenCastFunctionsWorkForAnOutsideConsumer) {
    IBooleanProperty* boolean = BooleanProperty::Construct(NameAndDescription("b", ""), true);
    IIntegerProperty* integer = IntegerProperty::Construct(NameAndDescription("i", ""), 1, false);
    ILocationProperty* location = LocationProperty::Construct(NameAndDescription("l", ""), 2);
    ILocationProperty2* location2 = LocationProperty2::Construct(NameAndDescription("w", ""), 3);
    IStringProperty* text = StringProperty::Construct(NameAndDescription("s", ""), "4");

    IBooleanProperty* iBoolean = CastIBoolean(boolean);
    IIntegerProperty* iInteger = CastIInteger(integer);
    ILocationProperty* iLocation = CastILocation(location);
    ILocationProperty* iLocationOfWide = CastILocation(location2);
    ILocationProperty2* iLocation2 = CastILocation2(location2);
    IStringProperty* iString = CastIString(text);
    BooleanProperty* cBoolean = CastBoolean(boolean);
    IntegerProperty* cInteger = CastInteger(integer);
    LocationProperty* cLocation = CastLocation(location);
    LocationProperty2* cLocation2 = CastLocation2(location2);
    StringProperty* cString = CastString(text);

    EXPECT_EQ(boolean, iBoolean);
    EXPECT_EQ(integer, iInteger);
    EXPECT_EQ(location, iLocation);
    EXPECT_EQ(static_cast<ILocationProperty*>(location2), iLocationOfWide);
    EXPECT_EQ(location2, iLocation2);
    EXPECT_EQ(text, iString);
    EXPECT_EQ(dynamic_cast<BooleanProperty*>(boolean), cBoolean);
    EXPECT_EQ(dynamic_cast<IntegerProperty*>(integer), cInteger);
    EXPECT_EQ(dynamic_cast<LocationProperty*>(location), cLocation);
    EXPECT_EQ(dynamic_cast<LocationProperty2*>(location2), cLocation2);
    EXPECT_EQ(dynamic_cast<StringProperty*>(text), cString);

    EXPECT_EQ(3u, CurrentCount(boolean));
    EXPECT_EQ(3u, CurrentCount(integer));
    EXPECT_EQ(3u, CurrentCount(location));
    EXPECT_EQ(4u, CurrentCount(location2));
    EXPECT_EQ(3u, CurrentCount(text));

    // Mismatches answer null and take nothing.
    EXPECT_EQ(nullptr, CastIString(boolean));
    EXPECT_EQ(nullptr, CastString(boolean));
    EXPECT_EQ(nullptr, CastIBoolean(text));
    EXPECT_EQ(nullptr, CastInteger(location));
    EXPECT_EQ(nullptr, CastILocation2(location));
    EXPECT_EQ(nullptr, CastLocation2(integer));
    EXPECT_EQ(nullptr, CastIBoolean(nullptr));
    EXPECT_EQ(nullptr, CastString(nullptr));
    EXPECT_EQ(3u, CurrentCount(boolean));
    EXPECT_EQ(3u, CurrentCount(text));

    for (IReferenceCount* held : std::vector<IReferenceCount*>{iBoolean, iInteger, iLocation, iLocationOfWide, iLocation2,
                                                              iString, cBoolean, cInteger, cLocation, cLocation2, cString}) {
        held->Release();
    }
    for (IProperty* p : std::vector<IProperty*>{boolean, integer, location, location2, text}) {
        EXPECT_EQ(1u, p->Release()) << p->GetName();
    }
}

TEST(SharedLibraryConsumerTest, TreeBuiltOutsideIsClonedAndFreedByTheLibrary) {
    IBooleanProperty* root = BooleanProperty::Construct(NameAndDescription("root", ""), false);
    IBooleanProperty* child = BooleanProperty::Construct(NameAndDescription("child", ""), false);
    IStringProperty* leaf = StringProperty::Construct(NameAndDescription("leaf", ""), "v");
    auto* attachable = static_cast<IAttachableProperty*>(root->QueryInterface(ClassID_IAttachableProperty));
    attachable->AddChild(child);
    attachable->Release();
    Property::AddChild(child, leaf);

    // The child has a non-Boolean child, so the value stops there.
    root->SetValue(true);
    EXPECT_TRUE(child->GetValue());

    IProperty* copy = dynamic_cast<Property*>(root)->Clone();
    ASSERT_NE(nullptr, dynamic_cast<BooleanProperty*>(copy));
    ASSERT_EQ(1u, copy->GetNumSubProperties());
    IProperty* copiedChild = nullptr;
    copy->GetSubProperties(&copiedChild);
    EXPECT_STREQ("child", copiedChild->GetName());
    EXPECT_NE(static_cast<IProperty*>(child), copiedChild);
    IProperty* parentOfCopiedChild = copiedChild->GetParentProperty();
    EXPECT_EQ(copy, parentOfCopiedChild);
    parentOfCopiedChild->Release();
    copiedChild->Release();

    leaf->AddRef();
    EXPECT_EQ(1u, root->Release());
    EXPECT_EQ(nullptr, leaf->GetParentProperty());
    EXPECT_EQ(1u, leaf->Release());
    EXPECT_EQ(1u, copy->Release());
}
