#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "ReferenceCountProbe.h"
#include "property/PropertyCasts.h"

using namespace TargetOperations;
using PropertyTests::CurrentCount;

namespace {

// One object of every concrete class, released together.
struct OneOfEach {
    IProperty* plain = Property::Construct(NameAndDescription("plain", ""));
    IBooleanProperty* boolean = BooleanProperty::Construct(NameAndDescription("boolean", ""), true);
    IIntegerProperty* integer = IntegerProperty::Construct(NameAndDescription("integer", ""), 1, false);
    ILocationProperty* location = LocationProperty::Construct(NameAndDescription("location", ""), 2);
    ILocationProperty2* location2 = LocationProperty2::Construct(NameAndDescription("location2", ""), 3);
    IStringProperty* text = StringProperty::Construct(NameAndDescription("text", ""), "4");

    std::vector<IProperty*> All() const { return {plain, boolean, integer, location, location2, text}; }

    void ExpectAllAtCountOne() const {
        for (IProperty* p : All()) EXPECT_EQ(1u, CurrentCount(p)) << p->GetName();
    }

    void ReleaseAll() {
        for (IProperty* p : All()) EXPECT_EQ(1u, p->Release()) << p->GetName();
    }
};

// Checks one successful cast: the expected pointer and exactly one reference more, which
// this helper then gives back.
template <typename Result>
void ExpectCastTakesOneReference(IProperty* argument, Result* result, Result* expected) {
    SCOPED_TRACE(argument->GetName());
    EXPECT_EQ(expected, result);
    EXPECT_EQ(2u, CurrentCount(argument));
    if (result != nullptr) {
        EXPECT_EQ(2u, result->Release());
    }
}

}  // namespace

TEST(PropertyCastsTest, EveryCastReturnsNullForNull) {
    EXPECT_EQ(nullptr, CastIBoolean(nullptr));
    EXPECT_EQ(nullptr, CastIInteger(nullptr));
    EXPECT_EQ(nullptr, CastILocation(nullptr));
    EXPECT_EQ(nullptr, CastILocation2(nullptr));
    EXPECT_EQ(nullptr, CastIString(nullptr));
    EXPECT_EQ(nullptr, CastBoolean(nullptr));
    EXPECT_EQ(nullptr, CastInteger(nullptr));
    EXPECT_EQ(nullptr, CastLocation(nullptr));
    EXPECT_EQ(nullptr, CastLocation2(nullptr));
    EXPECT_EQ(nullptr, CastString(nullptr));
}

TEST(PropertyCastsTest, CastIStringOnABooleanReturnsNullAndLeavesTheCountAlone) {
    IBooleanProperty* boolean = BooleanProperty::Construct(NameAndDescription("b", ""), false);
    EXPECT_EQ(nullptr, CastIString(boolean));
    EXPECT_EQ(1u, CurrentCount(boolean));
    EXPECT_EQ(1u, boolean->Release());
}

TEST(PropertyCastsTest, CastStringOnAStringReturnsTheObjectAndRaisesTheCountByOne) {
    IStringProperty* text = StringProperty::Construct(NameAndDescription("s", ""), "v");
    StringProperty* cast = CastString(text);
    EXPECT_EQ(dynamic_cast<StringProperty*>(text), cast);
    EXPECT_EQ(2u, CurrentCount(text));
    EXPECT_EQ(2u, cast->Release());
    EXPECT_EQ(1u, text->Release());
}

TEST(PropertyCastsTest, InterfaceCastsOfTheMatchingClassReturnThatInterfaceWithOneReference) {
    OneOfEach objects;
    ExpectCastTakesOneReference(objects.boolean, CastIBoolean(objects.boolean), objects.boolean);
    ExpectCastTakesOneReference(objects.integer, CastIInteger(objects.integer), objects.integer);
    ExpectCastTakesOneReference(objects.location, CastILocation(objects.location), objects.location);
    ExpectCastTakesOneReference(objects.location2, CastILocation2(objects.location2), objects.location2);
    ExpectCastTakesOneReference(objects.text, CastIString(objects.text), objects.text);
    objects.ExpectAllAtCountOne();
    objects.ReleaseAll();
}

TEST(PropertyCastsTest, ClassCastsOfTheMatchingClassReturnTheObjectWithOneReference) {
    OneOfEach objects;
    ExpectCastTakesOneReference<BooleanProperty>(objects.boolean, CastBoolean(objects.boolean),
                                                 dynamic_cast<BooleanProperty*>(objects.boolean));
    ExpectCastTakesOneReference<IntegerProperty>(objects.integer, CastInteger(objects.integer),
                                                 dynamic_cast<IntegerProperty*>(objects.integer));
    ExpectCastTakesOneReference<LocationProperty>(objects.location, CastLocation(objects.location),
                                                  dynamic_cast<LocationProperty*>(objects.location));
    ExpectCastTakesOneReference<LocationProperty2>(objects.location2, CastLocation2(objects.location2),
                                                   dynamic_cast<LocationProperty2*>(objects.location2));
    ExpectCastTakesOneReference<StringProperty>(objects.text, CastString(objects.text),
                                                dynamic_cast<StringProperty*>(objects.text));
    objects.ExpectAllAtCountOne();
    objects.ReleaseAll();
}

TEST(PropertyCastsTest, CastsToAnInterfaceTheObjectDoesNotAnswerReturnNullWithoutReference) {
    OneOfEach objects;
    for (IProperty* p : objects.All()) {
        SCOPED_TRACE(p->GetName());
        const std::string name = p->GetName();
        if (name != "boolean") {
            EXPECT_EQ(nullptr, CastIBoolean(p));
            EXPECT_EQ(nullptr, CastBoolean(p));
        }
        if (name != "integer") {
            EXPECT_EQ(nullptr, CastIInteger(p));
            EXPECT_EQ(nullptr, CastInteger(p));
        }
        if (name != "location" && name != "location2") {
            EXPECT_EQ(nullptr, CastILocation(p));
            EXPECT_EQ(nullptr, CastLocation(p));
        }
        if (name != "location2") {
            EXPECT_EQ(nullptr, CastILocation2(p));
            EXPECT_EQ(nullptr, CastLocation2(p));
        }
        if (name != "text") {
            EXPECT_EQ(nullptr, CastIString(p));
            EXPECT_EQ(nullptr, CastString(p));
        }
    }
    objects.ExpectAllAtCountOne();
    objects.ReleaseAll();
}

TEST(PropertyCastsTest, CastILocationOnALocationProperty2Succeeds) {
    ILocationProperty2* wide = LocationProperty2::Construct(NameAndDescription("w", ""), 0x100000007ull);
    ILocationProperty* narrow = CastILocation(wide);
    ASSERT_NE(nullptr, narrow);
    EXPECT_EQ(static_cast<ILocationProperty*>(wide), narrow);
    std::uint32_t page = 9;
    EXPECT_EQ(7u, narrow->GetValue(page));
    EXPECT_EQ(2u, CurrentCount(wide));
    EXPECT_EQ(2u, narrow->Release());
    EXPECT_EQ(1u, wide->Release());
}

// LocationProperty2 answers the 32-bit location interface but is no LocationProperty: the
// class test fails after QueryInterface took its reference, and that reference is never
// given back. The object therefore leaks on purpose.
TEST(PropertyCastsTest, DeliberateLeakFailedClassTestOfCastLocationKeepsTheReference) {
    ILocationProperty2* wide = LocationProperty2::Construct(NameAndDescription("w", ""), 1);
    EXPECT_EQ(nullptr, CastLocation(wide));
    EXPECT_EQ(2u, CurrentCount(wide));
    // Our own reference goes; the one the cast kept holds the object alive.
    EXPECT_EQ(2u, wide->Release());
}

TEST(PropertyCastsTest, InterfaceCastsOfAPlainPropertyAllFail) {
    IProperty* plain = Property::Construct(NameAndDescription("plain", ""));
    EXPECT_EQ(nullptr, CastIBoolean(plain));
    EXPECT_EQ(nullptr, CastIInteger(plain));
    EXPECT_EQ(nullptr, CastILocation(plain));
    EXPECT_EQ(nullptr, CastILocation2(plain));
    EXPECT_EQ(nullptr, CastIString(plain));
    EXPECT_EQ(1u, CurrentCount(plain));
    EXPECT_EQ(1u, plain->Release());
}
