#pragma once

#include <cstdint>

namespace TargetOperations {

// Carried as a decimal number from a database file's "REPLACABLE"/"REPLACABLE_ALLOWED".
// Any non-zero value makes the registry expand the property when its database loads;
// ReplacableDropKeys additionally strips the property's keys there.
enum eREPLACABLE : std::uint32_t {
    NotReplacable = 0,
    Replacable = 1,
    ReplacableDropKeys = 2
};

}  // namespace TargetOperations
