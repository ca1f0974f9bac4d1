// Re-deriving a property's sub-properties from the database it belongs to.

#include <cstdint>

#include "../xmldb/PropertyDB.h"
#include "PropertyDbRegistry.h"
#include "RLXExports.h"

using namespace TargetOperations;

extern "C" {

// The one exported function that lets exceptions through: GetRootProperty and ConvertBack
// catch what the linking throws and turn it into their own failure results.
void UpdateSubProperties(std::uint32_t dbNumber, TargetOperations::IProperty* property) {
    if (property == nullptr) return;
    PropertyDB* database = PropertyDbRegistry::Find(dbNumber);
    if (database != nullptr) database->LinkSubProperties(property);
}

}  // extern "C"
