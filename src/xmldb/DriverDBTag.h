// Tag codes of the driver table's element vocabulary (internal).
#pragma once

#include <cstdint>

namespace TargetOperations {

// Codes 1 to 10 are the valid ones; 0 stands for every unknown name. No element name
// produces 1 or 10.
enum DriverDBTag : std::uint32_t {
    DriverTag_Unknown = 0,
    DriverTag_Unnamed = 1,
    DriverTag_DB_MAJOR_V = 2,
    DriverTag_DB_MINOR_V = 3,
    DriverTag_DRIVER = 4,
    DriverTag_CPUTYPE = 5,
    DriverTag_DRIVERNAME = 6,
    DriverTag_PROPERTYFILE = 7,
    DriverTag_ENTITYCODE = 8,
    DriverTag_SUPPORTTRACE = 9,
    DriverTag_HighestValid = 10
};

}  // namespace TargetOperations
