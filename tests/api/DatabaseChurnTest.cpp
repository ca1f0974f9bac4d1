// 10,000 databases created and released in a loop: the numbers keep increasing and the
// memory returns to its starting level. A small database keeps the loop about the
// reader's set-up and the registry.
#include <string>

#include "ApiTestSupport.h"
#include "xmldb/AllocatedBytes.h"

using namespace api_test;

namespace {

constexpr int kDatabases = 10000;

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

TEST(DatabaseChurn, TenThousandDatabasesComeAndGoWithoutGrowth) {
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
