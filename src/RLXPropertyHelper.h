// RLXPropertyHelper: typed, reference-counted property trees for event-triggering,
// cross-triggering and trace jobs, read from per-CPU XML property databases.
// This one header gives every exported class, function and type.
#pragma once

#include "property/Address.h"
#include "property/IReferenceCount.h"
#include "property/IProperty.h"
#include "property/IAttachableProperty.h"
#include "property/IBooleanProperty.h"
#include "property/IIntegerProperty.h"
#include "property/ILocationProperty.h"
#include "property/ILocationProperty2.h"
#include "property/IStringProperty.h"
#include "property/HostInterfaces.h"
#include "property/Replacable.h"
#include "property/NameAndDescription.h"
#include "property/PropertyKey.h"
#include "property/ValueAttribute.h"
#include "property/ReferenceCount.h"
#include "property/Property.h"
#include "property/BooleanProperty.h"
#include "property/IntegerProperty.h"
#include "property/LocationProperty.h"
#include "property/LocationProperty2.h"
#include "property/StringProperty.h"
#include "property/PropertyCasts.h"
#include "support/korvaError.h"
#include "api/RLXExports.h"
