// The two gathering steps of PropertyDB::LinkSubProperties (internal).
#pragma once

#include <cstdint>
#include <vector>

#include "../property/IProperty.h"
#include "LinkBudget.h"

namespace TargetOperations {

class PropertyDB;

// Where linking looks for the database properties that a key may select: positions in the
// database's list, ascending, so that the single pass in file order visits only these.
struct LinkCandidates {
    std::vector<std::vector<std::uint32_t>> byKey;  // by PropertyDB::FindKeyId
    std::vector<std::uint32_t> keyless;   // read without keys: the "TESTKEY" rule may select them
    std::vector<std::uint32_t> unlisted;  // keys unknown to the database: visited for every key
};

// Keeps in list, in order, only the entries selected by key or by a same-level key of an
// entry kept before them; the others are released.
void FilterCurrentChildren(PropertyDB& db, const char* key, std::vector<IProperty*>& list);

// Adds to list clones of the database properties selected by key, in one pass in file order
// over the candidates of the keys in play, inserted stably by key number. Returns the new size of list, or 0 for an empty key.
std::uint32_t GatherFromDatabase(PropertyDB& db, const char* key, std::vector<IProperty*>& list);

// Whether a database property and a current child hold the same value, which decides if a
// disabled database property replaces the child.
bool HoldSameValue(IProperty* left, IProperty* right);

// PropertyDB::LinkSubProperties within the given budget, which throws korvaError once the
// operation nests or links past its bounds. The references of the unfinished levels are then
// given back; descendants relinked before the stop keep their new sub-properties.
void LinkSubPropertiesWithin(PropertyDB& db, IProperty* property, LinkBudget& budget);

}  // namespace TargetOperations
