#include <gtest/gtest.h>

#include <cstdint>

#include "DestructionRecorder.h"
#include "NonAttachableProperty.h"
#include "ReferenceCountProbe.h"
#include "property/HostInterfaces.h"

using namespace ReferenceCounting;
using namespace TargetOperations;
using PropertyTests::CurrentCount;
using PropertyTests::DestructionRecorder;
using PropertyTests::NonAttachableProperty;

namespace {

// Offers the host's operation interfaces, which no property class implements, so that the
// general answer has something to find for ids 2, 3, 11 to 14 and 19.
class OperationObject : public ReferenceCount, public virtual IOperation6, public virtual IOperationServer {};

// Offers the host's synchronisation interfaces (ids 16, 17 and 18).
class SyncObject : public ReferenceCount, public virtual SyncSetup::ISyncMode2, public virtual SyncSetup::IStepPastBp {};

}  // namespace

TEST(ReferenceCountTest, NewObjectStartsWithCountOne) {
    bool destroyed = false;
    auto* object = new DestructionRecorder(&destroyed);
    EXPECT_EQ(1u, CurrentCount(object));
    EXPECT_FALSE(destroyed);
    object->Release();
}

TEST(ReferenceCountTest, FirstReleaseOfFreshObjectReturnsOneAndDestroysIt) {
    bool destroyed = false;
    auto* object = new DestructionRecorder(&destroyed);
    EXPECT_EQ(1u, object->Release());
    EXPECT_TRUE(destroyed);
}

TEST(ReferenceCountTest, AddRefReturnsNewCountAndReleaseReturnsCountBeforeDecrement) {
    bool destroyed = false;
    auto* object = new DestructionRecorder(&destroyed);
    EXPECT_EQ(2u, object->AddRef());
    EXPECT_EQ(2u, object->Release());
    EXPECT_FALSE(destroyed);
    EXPECT_EQ(1u, CurrentCount(object));
    EXPECT_EQ(1u, object->Release());
    EXPECT_TRUE(destroyed);
}

TEST(ReferenceCountTest, ReleasingOneOfThreeReferencesReturnsThree) {
    bool destroyed = false;
    auto* object = new DestructionRecorder(&destroyed);
    EXPECT_EQ(2u, object->AddRef());
    EXPECT_EQ(3u, object->AddRef());
    EXPECT_EQ(3u, object->Release());
    EXPECT_EQ(2u, object->Release());
    EXPECT_FALSE(destroyed);
    EXPECT_EQ(1u, object->Release());
    EXPECT_TRUE(destroyed);
}

TEST(ReferenceCountTest, GeneralAnswerForIdSevenIsTheObjectsOwnReferenceCount) {
    bool destroyed = false;
    auto* object = new DestructionRecorder(&destroyed);
    void* answer = object->QueryInterface(ClassID_IReferenceCount);
    EXPECT_EQ(static_cast<IReferenceCount*>(object), answer);
    EXPECT_EQ(2u, CurrentCount(object));
    static_cast<IReferenceCount*>(answer)->Release();
    EXPECT_EQ(1u, object->Release());
    EXPECT_TRUE(destroyed);
}

TEST(ReferenceCountTest, GeneralAnswerIsNullWithoutReferenceForEveryInterfaceTheObjectLacks) {
    bool destroyed = false;
    auto* object = new DestructionRecorder(&destroyed);
    for (std::uint32_t id = 0; id <= 25; ++id) {
        if (id == ClassID_IReferenceCount) continue;
        EXPECT_EQ(nullptr, object->QueryInterface(static_cast<_ClassID>(id))) << "id " << id;
        EXPECT_EQ(1u, CurrentCount(object)) << "id " << id;
    }
    EXPECT_EQ(nullptr, object->QueryInterface(static_cast<_ClassID>(0xFFFFFFFFu)));
    EXPECT_EQ(1u, object->Release());
}

TEST(ReferenceCountTest, GeneralAnswerFollowsTheRunTimeTypeForPropertyInterfaces) {
    auto* node = new NonAttachableProperty("node");
    // Implemented through the object's class: IProperty (6) and the host's IPropertyDescribed (10).
    void* asProperty = node->QueryInterface(ClassID_IProperty);
    EXPECT_EQ(static_cast<IProperty*>(node), asProperty);
    void* asDescribed = node->QueryInterface(ClassID_IPropertyDescribed);
    EXPECT_EQ(static_cast<IPropertyDescribed*>(node), asDescribed);
    EXPECT_EQ(3u, CurrentCount(node));
    // Not implemented: attachable, the typed interfaces.
    for (_ClassID id : {ClassID_IAttachableProperty, ClassID_IBooleanProperty, ClassID_IIntegerProperty,
                        ClassID_ILocationProperty, ClassID_IStringProperty, ClassID_ILocationProperty2}) {
        EXPECT_EQ(nullptr, node->QueryInterface(id)) << "id " << id;
    }
    EXPECT_EQ(3u, CurrentCount(node));
    static_cast<IProperty*>(asProperty)->Release();
    static_cast<IPropertyDescribed*>(asDescribed)->Release();
    EXPECT_EQ(1u, node->Release());
}

TEST(ReferenceCountTest, GeneralAnswerFindsHostOperationInterfaces) {
    auto* object = new OperationObject;
    const std::pair<_ClassID, void*> expected[] = {
        {ClassID_IOperation, static_cast<IOperation*>(object)},
        {ClassID_IOperationServer, static_cast<IOperationServer*>(object)},
        {ClassID_IOperation2, static_cast<IOperation2*>(object)},
        {ClassID_IOperation3, static_cast<IOperation3*>(object)},
        {ClassID_IOperation4, static_cast<IOperation4*>(object)},
        {ClassID_IOperation5, static_cast<IOperation5*>(object)},
        {ClassID_IOperation6, static_cast<IOperation6*>(object)},
    };
    std::uint32_t count = 1;
    for (const auto& entry : expected) {
        EXPECT_EQ(entry.second, object->QueryInterface(entry.first)) << "id " << entry.first;
        EXPECT_EQ(++count, CurrentCount(object)) << "id " << entry.first;
    }
    EXPECT_EQ(nullptr, object->QueryInterface(ClassID_IProperty));
    EXPECT_EQ(nullptr, object->QueryInterface(ClassID_ISyncMode));
    EXPECT_EQ(nullptr, object->QueryInterface(static_cast<_ClassID>(9)));
    EXPECT_EQ(count, CurrentCount(object));
    while (count-- > 1) object->Release();
    EXPECT_EQ(1u, object->Release());
}

TEST(ReferenceCountTest, GeneralAnswerFindsHostSynchronisationInterfaces) {
    auto* object = new SyncObject;
    EXPECT_EQ(static_cast<SyncSetup::ISyncMode*>(object), object->QueryInterface(ClassID_ISyncMode));
    EXPECT_EQ(static_cast<SyncSetup::IStepPastBp*>(object), object->QueryInterface(ClassID_IStepPastBp));
    EXPECT_EQ(static_cast<SyncSetup::ISyncMode2*>(object), object->QueryInterface(ClassID_ISyncMode2));
    EXPECT_EQ(nullptr, object->QueryInterface(ClassID_IOperation));
    EXPECT_EQ(nullptr, object->QueryInterface(static_cast<_ClassID>(20)));
    EXPECT_EQ(4u, CurrentCount(object));
    object->Release();
    object->Release();
    object->Release();
    EXPECT_EQ(1u, object->Release());
}
