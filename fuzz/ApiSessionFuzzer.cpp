// A session of exported calls on the sample databases, decoded from the input: create, get
// roots, set values of every kind, update sub-properties, attach, cross-trigger updates,
// remove and disable allowed values, convert back, release.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include <fuzzer/FuzzedDataProvider.h>

#include "api/RLXExports.h"
#include "property/BooleanProperty.h"
#include "property/IntegerProperty.h"
#include "property/LocationProperty.h"
#include "property/LocationProperty2.h"
#include "property/StringProperty.h"
#include "support/korvaError.h"

using namespace TargetOperations;

namespace {

constexpr std::size_t kMaxOpenDatabases = 4;
constexpr std::size_t kMaxHeldTrees = 8;
constexpr std::size_t kMaxWalkedNodes = 4000;
// Module databases are never released (kept on purpose): a cap keeps a long run's memory flat.
constexpr int kModuleReadsPerProcess = 5000;

const char* const kJobFiles[] = {"evt_demo_core.xml", "rlx_counter_job.xml", "rlx_trace_job.xml", "rlxdvrs.xml",
                                 "no_such_file.xml"};
const char* const kModuleFiles[] = {"rlx_trace_types.xml", "rlx_stm_trace.xml", "rlx_cti.xml", "rlx_sctm.xml",
                                    "rlx_sctm_type.xml",   "rlx_ocp.xml",       "evt_demo_core.xml", "missing.xml"};
const std::uint32_t kCpuTypes[] = {4120, 645, 6432, 56012, 3300, 4130, 4140, 6474, 0, 0xFFFFFFFFu};
const char* const kNames[] = {"Type", "Actions", "Trace Type", "STM Trace Type", "CTI Function", "Trace", "", "Count"};

int g_moduleReads = 0;

bool ModuleReadAllowed() { return g_moduleReads++ < kModuleReadsPerProcess; }

template <typename T, std::size_t N>
const T& Pick(FuzzedDataProvider& input, const T (&items)[N]) {
    return items[input.ConsumeIntegralInRange<std::size_t>(0, N - 1)];
}

// Borrowed pointers to tree and its descendants, depth first, bounded.
void Walk(IProperty* property, std::vector<IProperty*>& nodes) {
    if (nodes.size() >= kMaxWalkedNodes) return;
    nodes.push_back(property);
    std::vector<IProperty*> children(property->GetNumSubProperties());
    if (!children.empty()) property->GetSubProperties(children.data());
    for (IProperty* child : children) child->Release();  // the parent keeps them alive
    for (IProperty* child : children) Walk(child, nodes);
}

class Session {
public:
    explicit Session(FuzzedDataProvider& input) : m_input(input) {}
    ~Session() {
        for (IProperty* tree : m_trees) tree->Release();
        for (std::uint32_t number : m_databases) ReleasePropertyDB(number);
    }
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    void Step() {
        switch (m_input.ConsumeIntegralInRange<int>(0, 17)) {
        case 0: Create(); break;
        case 1: CreateByName(); break;
        case 2: Hold(GetRootProperty(Database())); break;
        case 3: Hold(GetPropertyFromDB(Database(), Name().c_str())); break;
        case 4: SetValue(Node()); break;
        case 5: SetValue(GetPropertyFromDB_noClone(Database(), Name().c_str())); break;
        case 6: UpdateSubPropertiesOf(Node()); break;
        case 7:
            if (ModuleReadAllowed()) AttachPropertyDB(Pick(m_input, kModuleFiles), Database());
            break;
        case 8: CrossTrigger(); break;
        case 9: RemoveAllowedFromDB(Database(), Name().c_str(), Text().c_str()); break;
        case 10:
            if (IProperty* node = Node()) DisableChildForDisabledAllowed(node, m_input.ConsumeBool());
            break;
        case 11: Convert(); break;
        case 12: ReleaseTree(); break;
        case 13: ReleaseDatabase(); break;
        case 14: Lookups(); break;
        case 15: ServerName(); break;
        case 16:
            if (IProperty* node = Node()) UpdateSTMType(node, Database());
            break;
        case 17: SctmAndOcp(); break;
        }
    }

private:
    void Create() {
        if (m_databases.size() >= kMaxOpenDatabases) return;
        char entity[32] = {};
        bool trace = false;
        const std::uint32_t cpuType =
            m_input.ConsumeBool() ? Pick(m_input, kCpuTypes) : m_input.ConsumeIntegral<std::uint32_t>();
        const auto size = m_input.ConsumeIntegralInRange<std::uint32_t>(0, sizeof entity);
        Keep(CreatePropertyDB(cpuType, entity, size, &trace, m_input.ConsumeIntegralInRange<std::int32_t>(-1, 0x20)));
    }

    void CreateByName() {
        if (m_databases.size() >= kMaxOpenDatabases) return;
        Keep(CreatePropertyDBByName(Pick(m_input, kJobFiles), m_input.ConsumeIntegralInRange<std::int32_t>(-1, 0x20)));
    }

    void Keep(std::uint32_t number) {
        if (number != RLX_INVALID_DB) m_databases.push_back(number);
    }

    // An open database, or now and then a number that is not (or no longer) open.
    std::uint32_t Database() {
        if (m_databases.empty() || m_input.ConsumeIntegralInRange<int>(0, 15) == 0) {
            return m_input.ConsumeIntegralInRange<std::uint32_t>(0, 64);
        }
        return m_databases[m_input.ConsumeIntegralInRange<std::size_t>(0, m_databases.size() - 1)];
    }

    void Hold(IProperty* tree) {
        if (tree == nullptr) return;
        if (m_trees.size() >= kMaxHeldTrees) {
            tree->Release();
            return;
        }
        m_trees.push_back(tree);
    }

    IProperty* Tree() {
        if (m_trees.empty()) return nullptr;
        return m_trees[m_input.ConsumeIntegralInRange<std::size_t>(0, m_trees.size() - 1)];
    }

    // A node of a held tree, found afresh: any call may rebuild a tree's children.
    IProperty* Node() {
        IProperty* tree = Tree();
        if (tree == nullptr) return nullptr;
        std::vector<IProperty*> nodes;
        Walk(tree, nodes);
        return nodes[m_input.ConsumeIntegralInRange<std::size_t>(0, nodes.size() - 1)];
    }

    std::string Text() { return m_input.ConsumeRandomLengthString(64); }

    std::string Name() {
        if (m_input.ConsumeBool()) return Pick(m_input, kNames);
        if (IProperty* node = Node()) return node->GetName();
        return Text();
    }

    void SetValue(IProperty* node) {
        if (node == nullptr) return;
        if (auto* boolean = dynamic_cast<BooleanProperty*>(node)) {
            boolean->SetValue(m_input.ConsumeBool());
        } else if (auto* integer = dynamic_cast<IntegerProperty*>(node)) {
            integer->SetValue(m_input.ConsumeIntegral<std::uint64_t>());
        } else if (auto* location64 = dynamic_cast<LocationProperty2*>(node)) {
            location64->SetValue64(m_input.ConsumeIntegral<std::uint64_t>(), m_input.ConsumeIntegralInRange<std::uint32_t>(0, 2));
        } else if (auto* location = dynamic_cast<LocationProperty*>(node)) {
            location->SetValue(m_input.ConsumeIntegral<std::uint32_t>(), m_input.ConsumeIntegralInRange<std::uint32_t>(0, 2));
        } else if (auto* text = dynamic_cast<StringProperty*>(node)) {
            std::uint32_t count = 0;
            text->HasAllowedValues(count);
            if (count != 0 && m_input.ConsumeBool()) {
                std::vector<const char*> allowed(count);
                text->GetAllowedValues(allowed.data());
                const std::string chosen = allowed[m_input.ConsumeIntegralInRange<std::uint32_t>(0, count - 1)];
                text->SetValue(chosen.c_str());
            } else {
                text->SetValue(Text().c_str());
            }
        }
    }

    void UpdateSubPropertiesOf(IProperty* node) {
        if (node == nullptr) return;
        try {
            UpdateSubProperties(Database(), node);
        } catch (const Kw::Mbr::Korva::korvaError&) {
            // The linking bounds: the one exception this function lets through.
        }
    }

    void CrossTrigger() {
        switch (m_input.ConsumeIntegralInRange<int>(0, 2)) {
        case 0:
            if (ModuleReadAllowed()) UpdateDBForCTI(Pick(m_input, kModuleFiles), Database());
            break;
        case 1:
            if (ModuleReadAllowed()) {
                const std::string allowed = Text();
                UpdateDBForCTI_XTRIG(Pick(m_input, kModuleFiles), allowed.c_str(), Name().c_str(), Database());
            }
            break;
        default: UpdateDBForCTIEx(Text().c_str(), m_input.ConsumeIntegral<std::uint32_t>(), Database()); break;
        }
    }

    void SctmAndOcp() {
        if (!ModuleReadAllowed()) return;
        if (m_input.ConsumeBool()) {
            UpdateAllDBsForSCTM(Pick(m_input, kModuleFiles), Database());
        } else {
            UpdateAllDBsForOCP(Pick(m_input, kModuleFiles));
        }
    }

    void Convert() {
        IProperty* source = Node();
        IProperty* destination = Node();
        if (source == nullptr || destination == nullptr) return;
        const bool withParents = m_input.ConsumeBool();
        IProperty* sourceParent = withParents ? source->GetParentProperty() : nullptr;
        IProperty* destinationParent = withParents ? destination->GetParentProperty() : nullptr;
        ConvertBack(Database(), source, destination, sourceParent, destinationParent);
        if (sourceParent != nullptr) sourceParent->Release();
        if (destinationParent != nullptr) destinationParent->Release();
    }

    void ReleaseTree() {
        if (m_trees.empty()) return;
        const std::size_t index = m_input.ConsumeIntegralInRange<std::size_t>(0, m_trees.size() - 1);
        m_trees[index]->Release();
        m_trees.erase(m_trees.begin() + static_cast<std::ptrdiff_t>(index));
    }

    void ReleaseDatabase() {
        if (m_databases.empty()) {
            ReleasePropertyDB(m_input.ConsumeIntegral<std::uint32_t>());
            return;
        }
        const std::size_t index = m_input.ConsumeIntegralInRange<std::size_t>(0, m_databases.size() - 1);
        ReleasePropertyDB(m_databases[index]);
        m_databases.erase(m_databases.begin() + static_cast<std::ptrdiff_t>(index));
    }

    void Lookups() {
        const std::uint32_t number = Database();
        const std::string name = Name();
        const auto enumValue = m_input.ConsumeIntegral<std::uint32_t>();
        // Both lookups lend the database's own property.
        if (IProperty* borrowed = GetPropertyFromDBByEnum(number, enumValue)) (void)borrowed->GetName();
        if (IProperty* borrowed = GetPropertyFromDBByNameEnum_noClone(number, name.c_str(), enumValue)) {
            (void)borrowed->GetNumSubProperties();
        }
    }

    void ServerName() {
        char server[48] = {};
        GetRLXServerName(Pick(m_input, kCpuTypes), server, m_input.ConsumeIntegralInRange<std::uint32_t>(0, sizeof server));
    }

    FuzzedDataProvider& m_input;
    std::vector<std::uint32_t> m_databases;
    std::vector<IProperty*> m_trees;  // one reference each
};

}  // namespace

extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
    setenv("KORVA_XMLDB", RLX_SAMPLES_DIR, 1);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider input(data, size);
    Session session(input);
    for (int step = 0; step < 64 && input.remaining_bytes() > 0; ++step) session.Step();
    return 0;
}
