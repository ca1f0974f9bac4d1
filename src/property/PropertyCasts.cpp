#include "PropertyCasts.h"

using namespace TargetOperations;
using ReferenceCounting::_ClassID;

namespace {

template <typename Interface>
Interface* AskInterface(IProperty* property, _ClassID id) {
    if (property == nullptr) return nullptr;
    return static_cast<Interface*>(property->QueryInterface(id));
}

// The reference taken by QueryInterface stays with the object even when the class test
// fails; the caller owns it only when the result is not null.
template <typename Class, typename Interface>
Class* AskClass(IProperty* property, _ClassID id) {
    Interface* found = AskInterface<Interface>(property, id);
    return found != nullptr ? dynamic_cast<Class*>(found) : nullptr;
}

}  // namespace

extern "C" {

IBooleanProperty* CastIBoolean(IProperty* property) {
    return AskInterface<IBooleanProperty>(property, ReferenceCounting::ClassID_IBooleanProperty);
}

IIntegerProperty* CastIInteger(IProperty* property) {
    return AskInterface<IIntegerProperty>(property, ReferenceCounting::ClassID_IIntegerProperty);
}

ILocationProperty* CastILocation(IProperty* property) {
    return AskInterface<ILocationProperty>(property, ReferenceCounting::ClassID_ILocationProperty);
}

ILocationProperty2* CastILocation2(IProperty* property) {
    return AskInterface<ILocationProperty2>(property, ReferenceCounting::ClassID_ILocationProperty2);
}

IStringProperty* CastIString(IProperty* property) {
    return AskInterface<IStringProperty>(property, ReferenceCounting::ClassID_IStringProperty);
}

BooleanProperty* CastBoolean(IProperty* property) {
    return AskClass<BooleanProperty, IBooleanProperty>(property, ReferenceCounting::ClassID_IBooleanProperty);
}

IntegerProperty* CastInteger(IProperty* property) {
    return AskClass<IntegerProperty, IIntegerProperty>(property, ReferenceCounting::ClassID_IIntegerProperty);
}

LocationProperty* CastLocation(IProperty* property) {
    return AskClass<LocationProperty, ILocationProperty>(property, ReferenceCounting::ClassID_ILocationProperty);
}

LocationProperty2* CastLocation2(IProperty* property) {
    return AskClass<LocationProperty2, ILocationProperty2>(property, ReferenceCounting::ClassID_ILocationProperty2);
}

StringProperty* CastString(IProperty* property) {
    return AskClass<StringProperty, IStringProperty>(property, ReferenceCounting::ClassID_IStringProperty);
}

}  // extern "C"
