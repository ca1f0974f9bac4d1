// What the debugger waits for, on generated databases of growing size and on the bundled
// samples: loading a database against the bare XML parse of the same file, handing out the
// linked root tree, one edit of "Type" with its relink, taking an edited tree back into the
// database's own tree, and the memory a load needs. Databases shaped for linking alone (one key
// selecting up to 100,000 siblings, a chain of 250 levels, siblings with many keys) add the
// linked root and relinks after edits.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include <xercesc/parsers/SAXParser.hpp>
#include <xercesc/sax/HandlerBase.hpp>
#include <xercesc/util/PlatformUtils.hpp>

#include "AllocationCounter.h"
#include "BenchmarkDatabases.h"
#include "BlockMakingHandler.h"
#include "LinkingShapes.h"
#include "api/RLXExports.h"
#include "property/IBooleanProperty.h"
#include "property/IProperty.h"
#include "property/IStringProperty.h"

namespace {

using TargetOperations::IBooleanProperty;
using TargetOperations::IProperty;
using TargetOperations::IStringProperty;
using rlx_bench::BenchmarkDatabase;

constexpr std::uint32_t kInvalidDb = 0xFFFFFFFFu;

std::size_t CountNodes(IProperty* property) {
    std::size_t count = 1;
    std::vector<IProperty*> children(property->GetNumSubProperties());
    if (!children.empty()) property->GetSubProperties(children.data());
    for (IProperty* child : children) {
        count += CountNodes(child);
        child->Release();
    }
    return count;
}

IStringProperty* AsString(IProperty* property) { return dynamic_cast<IStringProperty*>(property); }

// An allowed value of "Type" other than its current one, or "" when there is none.
std::string OtherTypeValue(IProperty* root) {
    IStringProperty* type = AsString(root);
    if (type == nullptr) return {};
    std::uint32_t count = 0;
    if (!type->HasAllowedValues(count) || count == 0) return {};
    std::vector<const char*> values(count);
    type->GetAllowedValues(values.data());
    for (const char* value : values) {
        if (std::string(value) != type->GetValue()) return value;
    }
    return {};
}

// An open database for the length of one benchmark.
class OpenDatabase {
public:
    explicit OpenDatabase(const BenchmarkDatabase& database)
        : m_number(CreatePropertyDBByName(database.fileName.c_str(), 0)) {}
    ~OpenDatabase() {
        if (m_number != kInvalidDb) ReleasePropertyDB(m_number);
    }
    OpenDatabase(const OpenDatabase&) = delete;
    OpenDatabase& operator=(const OpenDatabase&) = delete;
    std::uint32_t Number() const { return m_number; }
    bool IsOpen() const { return m_number != kInvalidDb; }

private:
    std::uint32_t m_number;
};

struct ReleaseProperty {
    void operator()(IProperty* property) const {
        if (property != nullptr) property->Release();
    }
};
using PropertyRef = std::unique_ptr<IProperty, ReleaseProperty>;

std::string ReadBytes(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

void SetFileSize(benchmark::State& state, const BenchmarkDatabase& database) {
    state.counters["bytes"] = static_cast<double>(ReadBytes(database.path).size());
}

void BM_ReadFileBytes(benchmark::State& state, const BenchmarkDatabase& database) {
    for (auto _ : state) {
        std::string bytes = ReadBytes(database.path);
        benchmark::DoNotOptimize(bytes.data());
    }
    SetFileSize(state, database);
}

// The floor: what any reader of the file with this parser pays.
void BM_BareParse(benchmark::State& state, const BenchmarkDatabase& database) {
    for (auto _ : state) {
        xercesc::XMLPlatformUtils::Initialize();
        {
            xercesc::SAXParser parser;
            xercesc::HandlerBase handler;
            parser.setDocumentHandler(&handler);
            parser.setErrorHandler(&handler);
            parser.parse(database.path.c_str());
            benchmark::DoNotOptimize(parser.getErrorCount());
        }
        xercesc::XMLPlatformUtils::Terminate();
    }
    SetFileSize(state, database);
}

// The bare parse plus the heap blocks of a loaded database, without anything read into them.
void BM_HeapFloor(benchmark::State& state, const BenchmarkDatabase& database, std::size_t blocksPerProperty) {
    for (auto _ : state) {
        xercesc::XMLPlatformUtils::Initialize();
        {
            xercesc::SAXParser parser;
            rlx_bench::BlockMakingHandler handler(blocksPerProperty);
            parser.setDocumentHandler(&handler);
            parser.setErrorHandler(&handler);
            parser.parse(database.path.c_str());
            benchmark::DoNotOptimize(handler.Blocks());
        }
        xercesc::XMLPlatformUtils::Terminate();
    }
}

void BM_CreateAndRelease(benchmark::State& state, const BenchmarkDatabase& database) {
    for (auto _ : state) {
        const std::uint32_t number = CreatePropertyDBByName(database.fileName.c_str(), 0);
        if (number == kInvalidDb) {
            state.SkipWithError("the database cannot be loaded");
            break;
        }
        ReleasePropertyDB(number);
    }
}

void BM_RootProperty(benchmark::State& state, const BenchmarkDatabase& database) {
    OpenDatabase db(database);
    if (!db.IsOpen()) return state.SkipWithError("the database cannot be loaded");
    std::size_t nodes = 0;
    for (auto _ : state) {
        PropertyRef root(GetRootProperty(db.Number()));
        if (root == nullptr) {
            state.SkipWithError("no root property");
            break;
        }
        state.PauseTiming();
        if (nodes == 0) nodes = CountNodes(root.get());
        state.ResumeTiming();
    }
    state.counters["nodes"] = static_cast<double>(nodes);
    state.counters["per_node"] = benchmark::Counter(static_cast<double>(nodes),
                                                    benchmark::Counter::kIsIterationInvariantRate |
                                                        benchmark::Counter::kInvert);
}

// One user edit: "Type" takes another allowed value and the tree below it is relinked. The
// edits alternate between two values, so that every iteration changes the tree.
void BM_EditType(benchmark::State& state, const BenchmarkDatabase& database) {
    OpenDatabase db(database);
    if (!db.IsOpen()) return state.SkipWithError("the database cannot be loaded");
    PropertyRef root(GetRootProperty(db.Number()));
    IStringProperty* type = AsString(root.get());
    const std::string other = OtherTypeValue(root.get());
    if (type == nullptr || other.empty()) return state.SkipWithError("\"Type\" has no other allowed value");
    const std::string values[2] = {other, type->GetValue()};
    std::size_t nodes = 0;
    std::size_t edit = 0;
    for (auto _ : state) {
        type->SetValue(values[edit++ % 2].c_str());
        UpdateSubProperties(db.Number(), root.get());
        state.PauseTiming();
        nodes += CountNodes(root.get());
        state.ResumeTiming();
    }
    state.counters["nodes"] = static_cast<double>(nodes) / static_cast<double>(edit == 0 ? 1 : edit);
}

// One user edit among many siblings: a switch from the middle of the children of "Type" flips and the whole
// tree is relinked, keeping every sibling.
void BM_EditSibling(benchmark::State& state, const BenchmarkDatabase& database) {
    OpenDatabase db(database);
    if (!db.IsOpen()) return state.SkipWithError("the database cannot be loaded");
    PropertyRef root(GetRootProperty(db.Number()));
    const std::uint32_t count = root->GetNumSubProperties();
    std::vector<IProperty*> children(count);
    if (count != 0) root->GetSubProperties(children.data());
    for (IProperty* child : children) child->Release();  // the tree keeps them
    IBooleanProperty* edited = nullptr;
    for (std::uint32_t i = count / 2; i < count && edited == nullptr; ++i) edited = dynamic_cast<IBooleanProperty*>(children[i]);
    if (edited == nullptr) return state.SkipWithError("\"Type\" has no switch among its children");
    for (auto _ : state) {
        edited->SetValue(!edited->GetValue());
        UpdateSubProperties(db.Number(), root.get());
    }
    if (root->GetNumSubProperties() != count) state.SkipWithError("the relink changed the children");
    state.counters["nodes"] = static_cast<double>(CountNodes(root.get()));
}

// ConvertBack of a whole edited tree into the database's own tree; the edited trees
// alternate so that every call changes "Type" in the database's tree and relinks it.
void BM_ConvertBack(benchmark::State& state, const BenchmarkDatabase& database) {
    OpenDatabase db(database);
    if (!db.IsOpen()) return state.SkipWithError("the database cannot be loaded");
    PropertyRef unchanged(GetRootProperty(db.Number()));
    PropertyRef edited(GetRootProperty(db.Number()));
    const std::string other = OtherTypeValue(edited.get());
    if (other.empty()) return state.SkipWithError("\"Type\" has no other allowed value");
    AsString(edited.get())->SetValue(other.c_str());
    UpdateSubProperties(db.Number(), edited.get());
    IProperty* destination = GetPropertyFromDB_noClone(db.Number(), "Type");
    UpdateSubProperties(db.Number(), destination);
    IProperty* sources[2] = {edited.get(), unchanged.get()};
    std::size_t call = 0;
    bool taken = true;
    for (auto _ : state) {
        taken = ConvertBack(db.Number(), sources[call++ % 2], destination, nullptr, nullptr) && taken;
    }
    if (!taken) state.SkipWithError("ConvertBack refused the edited tree");
    state.counters["nodes"] = static_cast<double>(CountNodes(edited.get()));
}

// Typed property elements of a file: the entries of its database's list.
class PropertyElementCounter : public xercesc::HandlerBase {
public:
    void endElement(const XMLCh* const name) override {
        static const char* const kTyped[] = {"PROPERTY_STRING", "PROPERTY_INTEGER", "PROPERTY_LOCATION",
                                             "PROPERTY_LOCATION_64", "PROPERTY_BOOL"};
        std::string narrow;
        for (const XMLCh* unit = name; *unit != 0; ++unit) narrow.push_back(static_cast<char>(*unit & 0xFF));
        for (const char* typed : kTyped) {
            if (narrow == typed) ++count;
        }
    }
    std::size_t count = 0;
};

std::size_t CountTypedProperties(const std::string& path) {
    xercesc::XMLPlatformUtils::Initialize();
    std::size_t count = 0;
    {
        xercesc::SAXParser parser;
        PropertyElementCounter counter;
        parser.setDocumentHandler(&counter);
        parser.parse(path.c_str());
        count = counter.count;
    }
    xercesc::XMLPlatformUtils::Terminate();
    return count;
}

// Bytes held at the highest point of a load, and after it, per property of the file.
void BM_LoadMemory(benchmark::State& state, const BenchmarkDatabase& database) {
    std::int64_t peak = 0;
    std::int64_t kept = 0;
    std::size_t properties = 0;
    for (auto _ : state) {
        const rlx_bench::CountingAllocations counting;
        const std::int64_t before = rlx_bench::BytesInUse();
        rlx_bench::ResetPeakBytes();
        const std::uint32_t number = CreatePropertyDBByName(database.fileName.c_str(), 0);
        if (number == kInvalidDb) {
            state.SkipWithError("the database cannot be loaded");
            break;
        }
        peak = rlx_bench::PeakBytes() - before;
        kept = rlx_bench::BytesInUse() - before;
        ReleasePropertyDB(number);
    }
    properties = CountTypedProperties(database.path);
    state.counters["peak_bytes"] = static_cast<double>(peak);
    state.counters["kept_bytes"] = static_cast<double>(kept);
    state.counters["properties"] = static_cast<double>(properties);
}

}  // namespace

int main(int argc, char** argv) {
    ::unsetenv("KW_TRACE_LOGGING");
    rlx_bench::BenchmarkDatabases databases;
    std::vector<BenchmarkDatabase> all;
    for (std::size_t count : {100u, 1000u, 10000u, 100000u}) all.push_back(databases.AddSynthetic(count));
    for (const char* sample : {"evt_demo_core.xml", "rlx_trace_job.xml", "rlx_counter_job.xml"}) {
        all.push_back(databases.AddSample(RLX_SAMPLES_DIR, sample));
    }

    for (const BenchmarkDatabase& database : all) {
        const std::string suffix = "/" + database.label;
        benchmark::RegisterBenchmark(("ReadFileBytes" + suffix).c_str(), BM_ReadFileBytes, database)
            ->Unit(benchmark::kMicrosecond);
        benchmark::RegisterBenchmark(("BareParse" + suffix).c_str(), BM_BareParse, database)
            ->Unit(benchmark::kMicrosecond);
        benchmark::RegisterBenchmark(("CreateAndRelease" + suffix).c_str(), BM_CreateAndRelease, database)
            ->Unit(benchmark::kMicrosecond);
        if (database.label.rfind("N=", 0) == 0) {
            for (std::size_t blocks : {1u, 3u, 5u}) {
                benchmark::RegisterBenchmark(("HeapFloor" + std::to_string(blocks) + suffix).c_str(), BM_HeapFloor,
                                             database, blocks)
                    ->Unit(benchmark::kMicrosecond);
            }
        }
        benchmark::RegisterBenchmark(("RootProperty" + suffix).c_str(), BM_RootProperty, database)
            ->Unit(benchmark::kMicrosecond);
        benchmark::RegisterBenchmark(("EditType" + suffix).c_str(), BM_EditType, database)
            ->Unit(benchmark::kMicrosecond);
        benchmark::RegisterBenchmark(("ConvertBack" + suffix).c_str(), BM_ConvertBack, database)
            ->Unit(benchmark::kMicrosecond);
        benchmark::RegisterBenchmark(("LoadMemory" + suffix).c_str(), BM_LoadMemory, database)
            ->Unit(benchmark::kMicrosecond)
            ->Iterations(1);
    }

    // Linking shapes: the linked root, an edit of "Type" (which drops or gathers every
    // sibling) and an edit of one sibling with the relink that keeps them all.
    std::vector<BenchmarkDatabase> shapes;
    for (const rlx_bench::KeyNumberOrder order :
         {rlx_bench::KeyNumberOrder::Ascending, rlx_bench::KeyNumberOrder::Descending, rlx_bench::KeyNumberOrder::Equal,
          rlx_bench::KeyNumberOrder::Random}) {
        for (const std::size_t siblings : {1000u, 10000u, 100000u}) {
            const std::string label = std::string("wide-") + rlx_bench::NameOf(order) + "-" + std::to_string(siblings);
            shapes.push_back(databases.AddWritten(
                label, [&](const std::string& path) { rlx_bench::WriteWideDatabase(path, siblings, order); }));
        }
    }
    shapes.push_back(
        databases.AddWritten("deep-250", [](const std::string& path) { rlx_bench::WriteDeepDatabase(path, 250); }));
    for (const std::size_t siblings : {1000u, 10000u}) {
        const std::string label = "many-keys-16x" + std::to_string(siblings);
        shapes.push_back(databases.AddWritten(
            label, [&](const std::string& path) { rlx_bench::WriteManyKeysDatabase(path, siblings, 16); }));
    }
    for (const BenchmarkDatabase& database : shapes) {
        const std::string suffix = "/" + database.label;
        benchmark::RegisterBenchmark(("RootProperty" + suffix).c_str(), BM_RootProperty, database)
            ->Unit(benchmark::kMicrosecond);
        benchmark::RegisterBenchmark(("EditType" + suffix).c_str(), BM_EditType, database)
            ->Unit(benchmark::kMicrosecond);
        benchmark::RegisterBenchmark(("EditSibling" + suffix).c_str(), BM_EditSibling, database)
            ->Unit(benchmark::kMicrosecond);
    }

    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
