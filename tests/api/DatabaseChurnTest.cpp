// Thousands of databases created and released in a loop: the numbers keep increasing and
// the memory returns to its starting level. A small database keeps the loop about the
// reader's set-up and the registry.
#include <string>

#include "ApiTestSupport.h"
#include "xmldb/AllocatedBytes.h"

using namespace api_test;

namespace {

// Every create pays Xerces's full initialise and terminate: about 1 ms natively, about 100 ms
// under Wine, where the Windows transcoder's start-up reads the registry through the Wine
// server. The Windows build runs a shorter loop; it has no heap count to check there anyway.
#ifndef RLX_CHURN_DATABASES
#define RLX_CHURN_DATABASES 10000
#endif
constexpr int kDatabases = RLX_CHURN_DATABASES;

// Whatever one more create/release cycle may leave behind in all: far less than one database.
constexpr std::size_t kSlackBytes = 64 * 1024;

std::uint32_t CreateAndRelease() {
    char entity[16] = {};
    bool trace = false;
    const std::uint32_t number = CreatePropertyDB(4120, entity, sizeof entity, &trace, 0);
    EXPECT_NE(number, RLX_INVALID_DB);
    EXPECT_STREQ(entity, "CHURN");
    ReleasePropertyDB(number);
    return number;
}

}  // namespace

TEST(DatabaseChurn, ThousandsOfDatabasesComeAndGoWithoutGrowth) {
    UseXmlDirectory("../hardening/churn");
    // The first cycle caches the driver table and starts the process-wide pieces.
    std::uint32_t previous = CreateAndRelease();
    const std::size_t start = stress_test::AllocatedBytes();
    for (int i = 1; i < kDatabases; ++i) {
        const std::uint32_t number = CreateAndRelease();
        ASSERT_GT(number, previous);
        previous = number;
        if (HasFailure()) return;
    }
    const std::size_t end = stress_test::AllocatedBytes();
    if (stress_test::kCountsAllocations) {
        EXPECT_LE(end, start + kSlackBytes) << "started with " << start << " bytes, ended with " << end;
    }
}
