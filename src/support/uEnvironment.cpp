#include "uEnvironment.h"

#include <cstdint>
#include <map>
#include <mutex>
#include <string>

#include "Platform.h"
#include "uString.h"

namespace KW_MBR {

namespace {

// One entry per thread: a thread only ever writes its own entry, and map nodes do not move
// when other threads add theirs, so only the lookup itself needs the lock.
struct PerThreadCache {
    std::mutex lock;
    std::map<std::uint64_t, std::string> values;
};

PerThreadCache& Cache() {
    static PerThreadCache* cache = new PerThreadCache;  // used at load time and at exit
    return *cache;
}

std::string& EntryOfThisThread() {
    PerThreadCache& cache = Cache();
    std::lock_guard<std::mutex> guard(cache.lock);
    return cache.values[Platform::CurrentThreadId()];
}

}  // namespace

const char* uEnvironment::Get(const char* name) {
    std::string& entry = EntryOfThisThread();
    if (name == nullptr || !Platform::GetEnvironment(name, entry)) entry.clear();
    return entry.c_str();
}

bool uEnvironment::Set(const char* name, const char* value) {
    if (name == nullptr) throw source_utilities_error("failed set an environment variable name to null");
    if (value == nullptr) throw source_utilities_error("failed set an environment variable value to null");
    return Platform::SetEnvironment(name, value);
}

}  // namespace KW_MBR
