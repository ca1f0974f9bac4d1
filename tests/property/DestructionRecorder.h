// A bare reference-counted object that tells a test when it has been destroyed.
#pragma once

#include "property/ReferenceCount.h"

namespace PropertyTests {

class DestructionRecorder : public TargetOperations::ReferenceCount {
public:
    explicit DestructionRecorder(bool* destroyed) : m_destroyed(destroyed) { *m_destroyed = false; }
    // Public so that a test may also destroy it directly (on the stack) with references left.
    ~DestructionRecorder() override { *m_destroyed = true; }

private:
    bool* m_destroyed;
};

}  // namespace PropertyTests
