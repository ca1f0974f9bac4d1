// Measures what loading the library costs because of the logger's start-up, with logging
// unset: loading and unloading the library against loading and unloading an empty one, and
// the start-up's one-time work on its own.
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <string>

#include <dlfcn.h>

#include "support/TraceStartup.h"
#include "support/uLoggerRegistry.h"

namespace {

// The library's own dependencies stay loaded for the whole run, so that every iteration maps
// and starts only the library itself.
bool KeepDependenciesLoaded() {
    static void* xerces = dlopen(RLX_XERCES_LIBRARY_PATH, RTLD_NOW | RTLD_GLOBAL);
    return xerces != nullptr;
}

void LoadAndUnload(benchmark::State& state, const char* path) {
    if (!KeepDependenciesLoaded()) {
        state.SkipWithError("the XML parser library cannot be loaded");
        return;
    }
    ::unsetenv("KW_TRACE_LOGGING");
    for (auto _ : state) {
        void* handle = dlopen(path, RTLD_NOW | RTLD_LOCAL);
        if (handle == nullptr) {
            state.SkipWithError(dlerror());
            break;
        }
        dlclose(handle);
    }
    // A library that cannot be unloaded would start only once and make the figure meaningless.
    if (void* still = dlopen(path, RTLD_NOW | RTLD_NOLOAD)) {
        dlclose(still);
        state.SkipWithError("the library stays loaded after dlclose");
    }
}

void BM_LoadBaselineLibrary(benchmark::State& state) { LoadAndUnload(state, RLX_BASELINE_LIBRARY_PATH); }

void BM_LoadRLXPropertyHelper(benchmark::State& state) { LoadAndUnload(state, RLX_LIBRARY_PATH); }

// The one-time work and the set-up of a fresh registry, as start-up runs them at load.
void BM_StartupWork(benchmark::State& state) {
    ::unsetenv("KW_TRACE_LOGGING");
    for (auto _ : state) {
        const std::string fileName = KW_MBR::TraceStartup::PrepareTraceEnvironment();
        KW_MBR::uLoggerRegistry registry;
        const bool created = registry.SetUp(fileName.c_str(), KW_MBR::TraceStartup::kLevelVariable,
                                            KW_MBR::TraceStartup::kLoggingDirVariable, true);
        benchmark::DoNotOptimize(created);
    }
}

}  // namespace

BENCHMARK(BM_LoadBaselineLibrary)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_LoadRLXPropertyHelper)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_StartupWork)->Unit(benchmark::kMicrosecond);

BENCHMARK_MAIN();
