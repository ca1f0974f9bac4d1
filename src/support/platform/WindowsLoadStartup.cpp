// Runs the logger's start-up when these objects are loaded on Windows. Inside the DLL the
// loader's notifications drive it; an executable that links the objects directly gets no
// notification of its own, so there the start-up runs while the executable's statics are
// initialised, which is when the shared object's constructor runs elsewhere.
#include "support/platform/WindowsApi.h"

#include "support/TraceStartup.h"

// The linker's symbol for the start of the module that holds this code.
extern "C" IMAGE_DOS_HEADER __ImageBase;

namespace {

// Nothing may escape into the loader: a failed start-up only leaves the process without logging.
void RunStartupQuietly() {
    try {
        KW_MBR::TraceStartup::Run();
    } catch (...) {
    }
}

bool LinkedIntoExecutable() { return GetModuleHandleA(nullptr) == reinterpret_cast<HMODULE>(&__ImageBase); }

struct StartupInExecutable {
    StartupInExecutable() {
        if (LinkedIntoExecutable()) RunStartupQuietly();
    }
};

const StartupInExecutable startupInExecutable;

}  // namespace

// Every loader notification runs the start-up, whatever its reason; only the first does the
// one-time work.
extern "C" BOOL WINAPI DllMain(HINSTANCE, DWORD, LPVOID) {
    RunStartupQuietly();
    return TRUE;
}
