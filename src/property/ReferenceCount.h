#pragma once

#include <cstdint>

#include "IReferenceCount.h"

namespace TargetOperations {

// Base of every model object. The count is a plain integer: objects are used from one
// thread at a time.
class RLX_API ReferenceCount : public virtual ReferenceCounting::IReferenceCount {
public:
    std::uint32_t AddRef() const override;
    std::uint32_t Release() const override;
    // The general answer for classes without a fixed answer table.
    void* QueryInterface(ReferenceCounting::_ClassID id) override;

protected:
    ReferenceCount();
    ReferenceCount(const ReferenceCount&);  // a copy is a new object: count 1
    ReferenceCount& operator=(const ReferenceCount&) = delete;
    ~ReferenceCount() override;

    mutable std::uint32_t m_nRefCount;
};

}  // namespace TargetOperations
