// Property database files: read the input as a database (as CreatePropertyDBByName does),
// link every top-level property as a root, then take each linked tree back onto a copy of
// itself with ConvertBack.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <vector>

#include "FuzzInputFile.h"
#include "api/PropertyDbRegistry.h"
#include "api/RLXExports.h"
#include "property/IProperty.h"
#include "property/Property.h"
#include "support/korvaError.h"
#include "xmldb/PropertyDB.h"
#include "xmldb/SubPropertyLinking.h"

using TargetOperations::IProperty;

namespace {

// An input whose roots already hit the linking bounds this often proves nothing new with
// its remaining roots, only costs time.
constexpr int kBoundedRootsPerInput = 2;
// The roots are linked with the library's depth bound and a smaller node bound: the same
// code stops them, and a fan-out input stays far below the fuzzer's time limit.
constexpr std::uint32_t kFuzzMaxDepth = TargetOperations::LinkBudget::kDefaultMaxDepth;
constexpr std::uint64_t kFuzzMaxNodes = 10000;

}  // namespace

extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
    setenv("KORVA_XMLDB", "", 1);  // file names are used as given
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string& path = rlx_fuzz::WriteInputFile(data, size);
    const std::uint32_t number = CreatePropertyDBByName(path.c_str(), 0);
    if (number == RLX_INVALID_DB) return 0;

    TargetOperations::PropertyDB* database = TargetOperations::PropertyDbRegistry::Find(number);
    if (database == nullptr) std::abort();  // a number handed out must be registered
    std::vector<IProperty*> topLevel(database->GetPropertyCount());
    if (!topLevel.empty()) database->CopyProperties(topLevel.data());

    int boundedRoots = 0;
    for (IProperty* property : topLevel) {
        if (boundedRoots >= kBoundedRootsPerInput) break;
        auto* source = dynamic_cast<TargetOperations::Property*>(property);
        IProperty* tree = source != nullptr ? source->Clone() : nullptr;
        if (tree == nullptr) continue;
        bool linked = true;
        try {
            TargetOperations::LinkBudget budget(kFuzzMaxDepth, kFuzzMaxNodes);
            TargetOperations::LinkSubPropertiesWithin(*database, tree, budget);
        } catch (const Kw::Mbr::Korva::korvaError&) {
            linked = false;
            ++boundedRoots;
        }
        if (linked) {
            if (IProperty* copy = dynamic_cast<TargetOperations::Property*>(tree)->Clone()) {
                ConvertBack(number, tree, copy, nullptr, nullptr);
                copy->Release();
            }
        }
        tree->Release();
    }
    for (IProperty* property : topLevel) property->Release();
    ReleasePropertyDB(number);
    return 0;
}
