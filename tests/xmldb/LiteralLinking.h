// A straightforward reading of sub-property linking, kept as the yardstick that the
// library's linking is compared against: every step scans the whole database and the whole
// work list, exactly in the order the rules give, with no index and no shortcut.
#pragma once

#include <cstdint>
#include <vector>

#include "property/IProperty.h"

namespace literal_linking {

using TargetOperations::IProperty;

// The database is the flat list in file order; it is only read.
void LinkSubProperties(const std::vector<IProperty*>& database, IProperty* property);
void FilterCurrentChildren(const char* key, std::vector<IProperty*>& list);
std::uint32_t GatherFromDatabase(const std::vector<IProperty*>& database, const char* key,
                                 std::vector<IProperty*>& list);
bool HoldSameValue(IProperty* left, IProperty* right);

}  // namespace literal_linking
