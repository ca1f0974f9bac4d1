// The lock of one logger: recursive, so a thread holding it may take it again.
#pragma once

#include "Platform.h"

namespace KW_MBR {

class uMutex {
public:
    uMutex() = default;
    uMutex(const uMutex&) = delete;
    uMutex& operator=(const uMutex&) = delete;

    void Lock() { m_native.Lock(); }
    void Unlock() { m_native.Unlock(); }

private:
    Platform::RecursiveMutex m_native;
};

}  // namespace KW_MBR
