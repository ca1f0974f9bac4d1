// The trace lines written by the database API, read back from this process's log file.
// This executable runs with KW_TRACE_LOGGING=1.

#include <algorithm>
#include <vector>

#include "ApiTestSupport.h"
#include "LogFileReader.h"

using namespace api_test;

using Lines = std::vector<LogLine>;

// The log file is appended to and named after the process number, which the system may
// reuse: only the lines written after the test case started count.
class LogLines : public ::testing::Test {
protected:
    void SetUp() override { m_before = LibraryLogLines().size(); }
    Lines NewLines() const {
        const Lines all = LibraryLogLines();
        return Lines(all.begin() + static_cast<std::ptrdiff_t>(std::min(m_before, all.size())), all.end());
    }

private:
    std::size_t m_before = 0;
};

TEST_F(LogLines, LogFileIsNamedAfterTheDateAndTheDebugClient) {
    const std::string path = LogFilePath();
    ASSERT_FALSE(path.empty());
    const std::string separator = rlx_test::kPathSeparator == '/' ? "/" : R"(\\)";
    const std::regex name(".*" + separator + R"(\.KW-trace)" + separator + R"(kw_trace_log_\d{1,2}\d{1,2}\d{4}_\d+\.txt$)");
    EXPECT_TRUE(std::regex_match(path, name)) << path;
}

TEST_F(LogLines, CreatePropertyDBWritesItsFourMessages) {
    UseXmlDirectory("db");
    char entity[16] = {};
    bool trace = false;
    ASSERT_EQ(0u, CreatePropertyDB(1000, entity, sizeof entity, &trace, 0));
    EXPECT_EQ((Lines{{kMessage, "RLXPropertyHelper: WPH property file name cpu.xml for CPU 1000"},
                     {kMessage, "RLXPropertyHelper: Created DB for db/cpu.xml not found"},
                     {kMessage, "RLXPropertyHelper: Create new DB for db/cpu.xml"},
                     {kMessage, "RLXPropertyHelper: Property database 0 is created."}}),
              NewLines());
}

TEST_F(LogLines, NotFoundLineComesBeforeTheExistenceTestWhateverItsOutcome) {
    UseXmlDirectory("db");
    EXPECT_EQ(RLX_INVALID_DB, CreatePropertyDBByName("nothere.xml", 0x1f));
    ASSERT_EQ(0u, CreatePropertyDBByName("cpu.xml", 0x2a));
    EXPECT_EQ((Lines{{kMessage, "RLXPropertyHelper: Created DB for db/nothere_1f.xml not found"},
                     {kMessage, "RLXPropertyHelper: Created DB for db/cpu_2a.xml not found"},
                     {kMessage, "RLXPropertyHelper: Create new DB for db/cpu.xml"},
                     {kMessage, "RLXPropertyHelper: Property database 0 is created."}}),
              NewLines());
}

TEST_F(LogLines, UnreadableDatabaseIsReportedAsAnError) {
    UseXmlDirectory("db");
    EXPECT_EQ(RLX_INVALID_DB, CreatePropertyDBByName("broken.xml", 0));
    EXPECT_EQ((Lines{{kMessage, "RLXPropertyHelper: Created DB for db/broken.xml not found"},
                     {kMessage, "RLXPropertyHelper: Create new DB for db/broken.xml"},
                     {kError, "RLXPropertyHelper: Undefined exception in parsing file db/broken.xml"},
                     {kError, "RLXPropertyHelper: Exception error in creating property database for db/broken.xml"}}),
              NewLines());
}

TEST_F(LogLines, UnreadableDriverTableIsReportedForTheEntityCode) {
    UseXmlDirectory("baddrv");
    char entity[16] = {};
    bool trace = false;
    EXPECT_EQ(RLX_INVALID_DB, CreatePropertyDB(1000, entity, sizeof entity, &trace, 0));
    EXPECT_EQ((Lines{{kError, "RLXPropertyHelper: Undefined exception in parsing file baddrv/rlxdvrs.xml"},
                     {kError, "RLXPropertyHelper: Exception error in getting entity code name"}}),
              NewLines());
}

TEST_F(LogLines, MissingDriverTableAndUnknownCpuTypeWriteNothing) {
    UseXmlDirectory("empty");
    char entity[16] = {};
    bool trace = false;
    EXPECT_EQ(RLX_INVALID_DB, CreatePropertyDB(1000, entity, sizeof entity, &trace, 0));
    UseXmlDirectory("db");
    EXPECT_EQ(RLX_INVALID_DB, CreatePropertyDB(123456, entity, sizeof entity, &trace, 0));
    EXPECT_EQ(Lines{}, NewLines());
}

TEST_F(LogLines, RootOfAnUnknownDatabaseIsReported) {
    EXPECT_EQ(nullptr, GetRootProperty(3));
    UseXmlDirectory("db");
    ASSERT_EQ(0u, CreatePropertyDBByName("notype.xml", 0));
    EXPECT_EQ(nullptr, GetRootProperty(0));
    const Lines lines = NewLines();
    ASSERT_EQ(5u, lines.size());
    EXPECT_EQ((LogLine{kError, "RLXPropertyHelper: Failed to get root property for database 3"}), lines[0]);
    EXPECT_EQ((LogLine{kError, "RLXPropertyHelper: Failed to get root property for database 0"}), lines[4]);
}

TEST_F(LogLines, RootByFileNamesTheTestCase) {
    UseXmlDirectory("db");
    Owned<> root(GetRootPropertyByFile("db/cpu.xml"));
    ASSERT_NE(nullptr, root);
    EXPECT_EQ(nullptr, GetRootPropertyByFile("db/nothere.xml"));
    EXPECT_EQ(nullptr, GetRootPropertyByFile("db/broken.xml"));
    EXPECT_EQ((Lines{{kMessage, "RLXPropertyHelper: Create properties for test case db/cpu.xml."},
                     {kMessage, "RLXPropertyHelper: Create properties for test case db/nothere.xml."},
                     {kMessage, "RLXPropertyHelper: Create properties for test case db/broken.xml."},
                     {kError, "RLXPropertyHelper: Undefined exception in parsing file db/broken.xml"},
                     {kError, "RLXPropertyHelper: Exception error in creating properties"}}),
              NewLines());
}

TEST_F(LogLines, ServerNameLinesOnlyWhenTheTableIsLoaded) {
    UseXmlDirectory("baddrv");
    char name[16] = {};
    EXPECT_FALSE(GetRLXServerName(1000, name, sizeof name));
    UseXmlDirectory("db");
    EXPECT_TRUE(GetRLXServerName(1000, name, sizeof name));
    EXPECT_TRUE(GetRLXServerName(6474, name, sizeof name));
    EXPECT_EQ((Lines{{kMessage, "RLXPropertyHelper: Get server name from file baddrv/rlxdvrs.xml"},
                     {kError, "RLXPropertyHelper: Undefined exception in parsing file baddrv/rlxdvrs.xml"},
                     {kError, "RLXPropertyHelper: Exception error in getting server name"},
                     {kMessage, "RLXPropertyHelper: Get server name from file db/rlxdvrs.xml"}}),
              NewLines());
}

TEST_F(LogLines, LookupsEditsAndModuleUpdatesWriteNothing) {
    UseXmlDirectory("db");
    ASSERT_EQ(0u, CreatePropertyDBByName("cpu.xml", 0));
    const std::size_t creationLines = NewLines().size();
    Owned<> root(GetRootProperty(0));
    Owned<> copy(GetPropertyFromDB(0, "Count"));
    GetPropertyFromDB_noClone(0, "Nothing");
    GetPropertyFromDBByEnum(0, 1);
    GetPropertyFromDBByNameEnum_noClone(9, "Type", 1);
    AttachPropertyDB("trace.xml", 0);
    UpdateAllDBsForOCP("ocp.xml");
    UpdateAllDBsForSCTM("sctm.xml", 0);
    UpdateDBForCTI("cti.xml", 0);
    UpdateDBForCTI("nothere.xml", 0);
    UpdateDBForCTI_XTRIG("cti.xml", "External", "XTRIG Function", 0);
    UpdateDBForCTIEx("Other", 3, 0);
    UpdateSTMType(root.get(), 0);
    RemoveAllowedFromDB(0, "Type", "Watchpoint");
    DisableChildForDisabledAllowed(root.get(), true);
    UpdateSubProperties(0, root.get());
    ConvertBack(0, root.get(), root.get(), nullptr, nullptr);
    ReleasePropertyDB(0);
    ReleasePropertyDB(0);
    EXPECT_EQ(creationLines, NewLines().size());
}
