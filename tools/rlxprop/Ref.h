// A counted reference of the library, given back when it goes out of scope.
#pragma once

#include <memory>

#include <RLXPropertyHelper.h>

namespace rlxprop {

struct ReleaseRef {
    void operator()(ReferenceCounting::IReferenceCount* p) const {
        if (p != nullptr) p->Release();
    }
};

template <typename T>
using Ref = std::unique_ptr<T, ReleaseRef>;

}  // namespace rlxprop
