// The key names a property answers to, for matching them against many keys at once (internal).
#pragma once

#include <string_view>

#include "../property/Property.h"
#include "PropertyDB.h"

namespace TargetOperations {

// Calls visit with each name for which property.IsKeyName holds: its own key names (a name
// listed twice comes twice), or "TESTKEY" for a keyless property that answers to it.
template <class Visit>
void ForEachKeyName(const Property& property, Visit visit) {
    static constexpr std::string_view kTestKey = "TESTKEY";
    const PropertyKeyList& own = PropertyDB::KeysOf(property);
    if (own.empty()) {
        if (property.IsKeyName(kTestKey.data())) visit(kTestKey);
        return;
    }
    for (const PropertyKeyList::Key key : own) visit(key.name);
}

}  // namespace TargetOperations
