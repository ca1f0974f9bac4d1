// Plain exported casts from IProperty to the typed interfaces and classes. A non-null
// result carries one reference; a class cast whose type test fails keeps the reference
// its QueryInterface took (callers cannot release it).
#pragma once

#include "BooleanProperty.h"
#include "IntegerProperty.h"
#include "LocationProperty.h"
#include "LocationProperty2.h"
#include "StringProperty.h"

extern "C" {
RLX_API TargetOperations::IBooleanProperty* CastIBoolean(TargetOperations::IProperty* property);
RLX_API TargetOperations::IIntegerProperty* CastIInteger(TargetOperations::IProperty* property);
RLX_API TargetOperations::ILocationProperty* CastILocation(TargetOperations::IProperty* property);
RLX_API TargetOperations::ILocationProperty2* CastILocation2(TargetOperations::IProperty* property);
RLX_API TargetOperations::IStringProperty* CastIString(TargetOperations::IProperty* property);
RLX_API TargetOperations::BooleanProperty* CastBoolean(TargetOperations::IProperty* property);
RLX_API TargetOperations::IntegerProperty* CastInteger(TargetOperations::IProperty* property);
RLX_API TargetOperations::LocationProperty* CastLocation(TargetOperations::IProperty* property);
RLX_API TargetOperations::LocationProperty2* CastLocation2(TargetOperations::IProperty* property);
RLX_API TargetOperations::StringProperty* CastString(TargetOperations::IProperty* property);
}
