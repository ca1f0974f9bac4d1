// Reference counting and the numeric interface identities shared with the host debugger.
#pragma once

#include <cstdint>

#include "../support/Export.h"

namespace ReferenceCounting {

// Values are fixed: callers outside the library pass them as plain numbers.
enum _ClassID : std::uint32_t {
    ClassID_IAttachableProperty = 0,
    ClassID_IBooleanProperty = 1,
    ClassID_IOperation = 2,
    ClassID_IOperationServer = 3,
    ClassID_IIntegerProperty = 4,
    ClassID_ILocationProperty = 5,
    ClassID_IProperty = 6,
    ClassID_IReferenceCount = 7,
    ClassID_IStringProperty = 8,
    // 9 is reserved and always answered with null.
    ClassID_IPropertyDescribed = 10,
    ClassID_IOperation2 = 11,
    ClassID_IOperation3 = 12,
    ClassID_IOperation4 = 13,
    ClassID_IOperation5 = 14,
    ClassID_ILocationProperty2 = 15,
    ClassID_ISyncMode = 16,
    ClassID_IStepPastBp = 17,
    ClassID_ISyncMode2 = 18,
    ClassID_IOperation6 = 19
};

class RLX_API IReferenceCount {
public:
    virtual std::uint32_t AddRef() const = 0;
    // Returns the count as it was before the decrement: 1 means "this call destroyed it".
    virtual std::uint32_t Release() const = 0;
    // A non-null answer carries one reference that the caller releases.
    virtual void* QueryInterface(_ClassID id) = 0;
    virtual ~IReferenceCount();
};

}  // namespace ReferenceCounting
