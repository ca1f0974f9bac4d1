// With KW_TRACE_LOGGING=0 (this executable's setting) the database API writes no line.

#include "ApiTestSupport.h"
#include "LogFileReader.h"

using namespace api_test;

TEST(LoggingOff, NoLibraryLineIsWritten) {
    // Counted from here: the file is named after the process number, which may be reused.
    const std::size_t before = LibraryLogLines().size();
    UseXmlDirectory("db");
    char entity[16] = {};
    bool trace = false;
    ASSERT_EQ(0u, CreatePropertyDB(1000, entity, sizeof entity, &trace, 0));
    EXPECT_EQ(nullptr, GetRootProperty(7));
    EXPECT_EQ(RLX_INVALID_DB, CreatePropertyDBByName("broken.xml", 0));
    EXPECT_EQ(before, LibraryLogLines().size());
}
