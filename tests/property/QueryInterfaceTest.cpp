#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "ReferenceCountProbe.h"
#include "property/BooleanProperty.h"
#include "property/IntegerProperty.h"
#include "property/LocationProperty.h"
#include "property/LocationProperty2.h"
#include "property/Property.h"
#include "property/StringProperty.h"

using namespace ReferenceCounting;
using namespace TargetOperations;
using PropertyTests::CurrentCount;

namespace {

// One concrete class of the model: how to make one, and the interface each answered id yields.
struct AnswerTable {
    std::string className;
    std::function<Property*()> make;
    std::function<std::map<std::uint32_t, void*>(Property*)> answers;
};

NameAndDescription Nd() { return NameAndDescription("Name", "Description"); }

template <typename Class>
Class* Concrete(IProperty* made) {
    return dynamic_cast<Class*>(made);
}

// The interfaces every class answers through Property: 0, 6 and 7.
template <typename Class>
std::map<std::uint32_t, void*> PropertyAnswers(Class* object) {
    return {{ClassID_IAttachableProperty, static_cast<IAttachableProperty*>(object)},
            {ClassID_IProperty, static_cast<IProperty*>(object)},
            {ClassID_IReferenceCount, static_cast<IReferenceCount*>(object)}};
}

std::vector<AnswerTable> AllClasses() {
    std::vector<AnswerTable> tables;
    tables.push_back({"Property", [] { return Concrete<Property>(Property::Construct(Nd())); },
                      [](Property* p) { return PropertyAnswers(p); }});
    tables.push_back({"BooleanProperty",
                      [] { return Concrete<Property>(BooleanProperty::Construct(Nd(), true)); },
                      [](Property* p) {
                          auto* b = dynamic_cast<BooleanProperty*>(p);
                          auto answers = PropertyAnswers(b);
                          answers[ClassID_IBooleanProperty] = static_cast<IBooleanProperty*>(b);
                          return answers;
                      }});
    tables.push_back({"IntegerProperty",
                      [] { return Concrete<Property>(IntegerProperty::Construct(Nd(), 5, false)); },
                      [](Property* p) {
                          auto* i = dynamic_cast<IntegerProperty*>(p);
                          auto answers = PropertyAnswers(i);
                          answers[ClassID_IIntegerProperty] = static_cast<IIntegerProperty*>(i);
                          return answers;
                      }});
    tables.push_back({"LocationProperty",
                      [] { return Concrete<Property>(LocationProperty::Construct(Nd(), 0x1000)); },
                      [](Property* p) {
                          auto* l = dynamic_cast<LocationProperty*>(p);
                          auto answers = PropertyAnswers(l);
                          answers[ClassID_ILocationProperty] = static_cast<ILocationProperty*>(l);
                          return answers;
                      }});
    tables.push_back({"LocationProperty2",
                      [] { return Concrete<Property>(LocationProperty2::Construct(Nd(), 0x1000)); },
                      [](Property* p) {
                          auto* l = dynamic_cast<LocationProperty2*>(p);
                          auto answers = PropertyAnswers(l);
                          answers[ClassID_ILocationProperty] = static_cast<ILocationProperty*>(l);
                          answers[ClassID_ILocationProperty2] = static_cast<ILocationProperty2*>(l);
                          return answers;
                      }});
    tables.push_back({"StringProperty",
                      [] { return Concrete<Property>(StringProperty::Construct(Nd(), "text")); },
                      [](Property* p) {
                          auto* s = dynamic_cast<StringProperty*>(p);
                          auto answers = PropertyAnswers(s);
                          answers[ClassID_IStringProperty] = static_cast<IStringProperty*>(s);
                          return answers;
                      }});
    return tables;
}

}  // namespace

TEST(QueryInterfaceTest, EveryClassAnswersExactlyItsTableWithOneReferencePerAnswer) {
    for (const AnswerTable& table : AllClasses()) {
        SCOPED_TRACE(table.className);
        Property* object = table.make();
        ASSERT_NE(nullptr, object);
        const std::map<std::uint32_t, void*> expected = table.answers(object);
        std::uint32_t count = 1;
        for (std::uint32_t id = 0; id <= 21; ++id) {
            void* answer = object->QueryInterface(static_cast<_ClassID>(id));
            auto found = expected.find(id);
            if (found == expected.end()) {
                EXPECT_EQ(nullptr, answer) << "id " << id;
            } else {
                EXPECT_EQ(found->second, answer) << "id " << id;
                ++count;
            }
            EXPECT_EQ(count, CurrentCount(object)) << "id " << id;
        }
        // Give back every reference the answers carried, then the creator's.
        while (count > 1) {
            EXPECT_EQ(count, object->Release());
            --count;
        }
        EXPECT_EQ(1u, object->Release());
    }
}

TEST(QueryInterfaceTest, IdsNineTenAndTwentyAreNullOnEveryClassWithoutReference) {
    for (const AnswerTable& table : AllClasses()) {
        SCOPED_TRACE(table.className);
        Property* object = table.make();
        ASSERT_NE(nullptr, object);
        for (std::uint32_t id : {9u, 10u, 20u, 0xFFFFFFFFu}) {
            EXPECT_EQ(nullptr, object->QueryInterface(static_cast<_ClassID>(id))) << "id " << id;
        }
        EXPECT_EQ(1u, CurrentCount(object));
        EXPECT_EQ(1u, object->Release());
    }
}

TEST(QueryInterfaceTest, BooleanGivesItsPropertyForSixAndNothingForFour) {
    IBooleanProperty* boolean = BooleanProperty::Construct(Nd(), false);
    void* asProperty = boolean->QueryInterface(ClassID_IProperty);
    EXPECT_EQ(static_cast<IProperty*>(boolean), asProperty);
    EXPECT_EQ(2u, CurrentCount(boolean));
    EXPECT_EQ(nullptr, boolean->QueryInterface(ClassID_IIntegerProperty));
    EXPECT_EQ(2u, CurrentCount(boolean));
    EXPECT_EQ(2u, static_cast<IProperty*>(asProperty)->Release());
    EXPECT_EQ(1u, boolean->Release());
}

TEST(QueryInterfaceTest, LocationProperty2AnswersFiveAndFifteenWithDifferentInterfacesOfOneObject) {
    ILocationProperty2* location = LocationProperty2::Construct(Nd(), 0x1234);
    void* five = location->QueryInterface(ClassID_ILocationProperty);
    void* fifteen = location->QueryInterface(ClassID_ILocationProperty2);
    ASSERT_NE(nullptr, five);
    ASSERT_NE(nullptr, fifteen);
    // Each answer is its own interface of the one object. Under the Itanium ABI the two may
    // share an address (ILocationProperty is the primary base of ILocationProperty2).
    auto* asLocation = static_cast<ILocationProperty*>(five);
    auto* asLocation2 = static_cast<ILocationProperty2*>(fifteen);
    EXPECT_EQ(static_cast<ILocationProperty*>(location), asLocation);
    EXPECT_EQ(location, asLocation2);
    EXPECT_EQ(dynamic_cast<void*>(asLocation), dynamic_cast<void*>(asLocation2));
    std::uint32_t page = 99;
    EXPECT_EQ(0x1234u, asLocation->GetValue(page));
    EXPECT_EQ(0x1234u, asLocation2->GetValue64(page).GetAddress());
    EXPECT_EQ(3u, CurrentCount(location));
    asLocation->Release();
    asLocation2->Release();
    EXPECT_EQ(1u, location->Release());
}

TEST(QueryInterfaceTest, AnswerForAttachableAddsChildrenToTheSameObject) {
    IProperty* parent = Property::Construct(Nd());
    auto* attachable = static_cast<IAttachableProperty*>(parent->QueryInterface(ClassID_IAttachableProperty));
    ASSERT_NE(nullptr, attachable);
    attachable->AddChild(Property::Construct(NameAndDescription("child", "")));
    EXPECT_EQ(1u, parent->GetNumSubProperties());
    attachable->Release();
    EXPECT_EQ(1u, parent->Release());
}
