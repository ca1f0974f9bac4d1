// Reading and setting environment variables for the logger's start-up and set-up.
#pragma once

namespace KW_MBR {

class uEnvironment {
public:
    // The value, or "" when the variable is unset (or the name is null). The text lives in a
    // cache entry of the calling thread and stays valid until that thread's next Get.
    static const char* Get(const char* name);

    // Raises source_utilities_error for a null name or value. Returns false when the system
    // refuses the value.
    static bool Set(const char* name, const char* value);
};

}  // namespace KW_MBR
