// Holds a uMutex for the lifetime of a scope, so that every exit path releases it.
#pragma once

#include "uMutex.h"

namespace KW_MBR {

class uMutexLock {
public:
    explicit uMutexLock(uMutex& mutex) : m_mutex(mutex) { m_mutex.Lock(); }
    ~uMutexLock() { m_mutex.Unlock(); }
    uMutexLock(const uMutexLock&) = delete;
    uMutexLock& operator=(const uMutexLock&) = delete;

private:
    uMutex& m_mutex;
};

}  // namespace KW_MBR
