// Driver tables: read the input as a driver table, then look up a few CPU types.
#include <cstddef>
#include <cstdint>
#include <string>

#include "FuzzInputFile.h"
#include "support/korvaError.h"
#include "xmldb/DriverDB.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string& path = rlx_fuzz::WriteInputFile(data, size);
    try {
        TargetOperations::DriverDB table(path);
        static const char* const kCpuTypes[] = {"4120", "64x", "5601_2", "0x", "", "1010", "x"};
        std::string propertyFile;
        std::string entityCode;
        std::string serverName;
        bool supportsTrace = false;
        for (const char* cpuType : kCpuTypes) {
            table.GetDriverDetails(cpuType, propertyFile, entityCode, supportsTrace);
            table.GetServerName(cpuType, serverName);
        }
        (void)table.GetRecordCount();
    } catch (const Kw::Mbr::Korva::korvaError&) {
        // A file the reader refuses: the documented outcome.
    }
    return 0;
}
