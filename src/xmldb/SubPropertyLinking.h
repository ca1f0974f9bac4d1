// The two gathering steps of PropertyDB::LinkSubProperties (internal).
#pragma once

#include <cstdint>
#include <vector>

#include "../property/IProperty.h"

namespace TargetOperations {

class PropertyDB;

// Keeps in list, in order, only the entries selected by key or by a same-level key of an
// entry kept before them; the others are released.
void FilterCurrentChildren(PropertyDB& db, const char* key, std::vector<IProperty*>& list);

// Adds to list clones of the database properties selected by key, in one pass in file order,
// inserted stably by key number. Returns the new size of list, or 0 for an empty key.
std::uint32_t GatherFromDatabase(PropertyDB& db, const char* key, std::vector<IProperty*>& list);

// Whether a database property and a current child hold the same value, which decides if a
// disabled database property replaces the child.
bool HoldSameValue(IProperty* left, IProperty* right);

}  // namespace TargetOperations
