// One "EVENT_ITEM" record of a property database file (internal).
#pragma once

#include <cstdint>
#include <string>

namespace TargetOperations {

struct EventItem {
    std::string name;
    std::uint32_t category = 0;
    std::uint32_t id = 0;
};

}  // namespace TargetOperations
