// The bundled sample property database and driver table.
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "XmlDbTestSupport.h"
#include "xmldb/DriverDB.h"

using namespace xmldb_test;

namespace {

class SampleDatabase : public ::testing::Test {
protected:
    void SetUp() override { db = std::make_unique<PropertyDB>(Sample("evt_demo_core.xml")); }

    IProperty* LinkedRoot(const char* type) {
        IProperty* root = db->FindPropertyByName("Type");
        EXPECT_NE(root, nullptr);
        auto* text = dynamic_cast<StringProperty*>(root);
        text->SetValue(type);
        EXPECT_STREQ(text->GetValue(), type);
        db->LinkSubProperties(root);
        return root;
    }

    std::unique_ptr<PropertyDB> db;
};

}  // namespace

TEST_F(SampleDatabase, LoadsEveryPropertyInEndTagOrder) {
    EXPECT_EQ(ListedNames(*db),
              (std::vector<std::string>{"Type", "Address", "Address Mask", "Data Address", "Data Value", "Data Mask",
                                        "Data Size", "Access Type", "Bus Master Filter", "Write Data Filter",
                                        "Write Size", "Halt On Match", "Halt All Cores", "Halt Peripherals",
                                        "Extended Address", "Comparator Unit", "Counter Event", "Counter Reload",
                                        "Halt On Overflow", "Signal Trigger Out", "Counter Snapshot Address",
                                        "Counter Width"}));
}

TEST_F(SampleDatabase, RootOffersTheThreeJobs) {
    auto* type = dynamic_cast<StringProperty*>(db->FindByName("Type"));
    ASSERT_NE(type, nullptr);
    std::uint32_t count = 0;
    ASSERT_TRUE(type->HasAllowedValues(count));
    ASSERT_EQ(count, 3u);
    const char* values[3] = {};
    type->GetAllowedValues(values);
    EXPECT_STREQ(values[0], "Address Match");
    EXPECT_STREQ(values[1], "Data Match");
    EXPECT_STREQ(values[2], "Event Counter");
    EXPECT_STREQ(type->GetChildKey(), "ADDR_JOB");
    EXPECT_EQ(type->GetEnumValue(), 1);
    EXPECT_TRUE(type->IsHaltCPU());
}

TEST_F(SampleDatabase, AddressMatchTree) {
    Held root(LinkedRoot("Address Match"));
    EXPECT_EQ(DescribeTree(root.get()),
              "Type:string=Address Match["
              "Address:loc=0x1000, "
              "Address Mask:int=4294967295, "
              "Access Type:string=Read/Write[Bus Master Filter:int=0], "
              "Halt On Match:bool=true[Halt All Cores:bool=true, Halt Peripherals:bool=true], "
              "Extended Address:loc64=0x1000000000!disabled, "
              "Comparator Unit:int=2!readonly]");
}

TEST_F(SampleDatabase, EventCounterTree) {
    Held root(LinkedRoot("Event Counter"));
    EXPECT_EQ(DescribeTree(root.get()),
              "Type:string=Event Counter["
              "Counter Event:string=Cycles, "
              "Counter Reload:int=1000, "
              "Halt On Overflow:bool=false, "
              "Counter Snapshot Address:loc64=0x80001000, "
              "Counter Width:int=32!disabled!readonly]");
    auto* type = dynamic_cast<StringProperty*>(root.get());
    EXPECT_EQ(type->GetEnumValue(), 3);
    EXPECT_FALSE(type->IsHaltCPU());
}

TEST_F(SampleDatabase, DataMatchSharesAccessTypeAndHaltSettings) {
    Held root(LinkedRoot("Data Match"));
    EXPECT_EQ(ChildNames(root.get()), (std::vector<std::string>{"Data Address", "Data Value", "Data Mask", "Data Size",
                                                                "Access Type", "Halt On Match"}));
}

TEST_F(SampleDatabase, WriteAccessPullsInItsSameLevelSetting) {
    Held root(LinkedRoot("Address Match"));
    auto* access = dynamic_cast<StringProperty*>(ChildNamed(root.get(), "Access Type"));
    ASSERT_NE(access, nullptr);
    access->SetValue("Write");
    db->LinkSubProperties(root.get());
    EXPECT_EQ(ChildNames(root.get()),
              (std::vector<std::string>{"Address", "Address Mask", "Access Type", "Write Size", "Halt On Match",
                                        "Extended Address", "Comparator Unit"}));
    EXPECT_EQ(ChildNames(ChildNamed(root.get(), "Access Type")), (std::vector<std::string>{"Write Data Filter"}));
}

TEST_F(SampleDatabase, RangesAndDisplayHints) {
    auto* reload = dynamic_cast<IntegerProperty*>(db->FindByName("Counter Reload"));
    ASSERT_NE(reload, nullptr);
    std::uint64_t low = 0, high = 0;
    reload->HasAllowedRange(low, high);
    EXPECT_EQ(low, 1u);
    EXPECT_EQ(high, 0xFFFFu);
    EXPECT_EQ(reload->GetDisplaySuggestion(), IIntegerProperty::DisplayDecimal);
}

TEST(SampleDriverTable, RowsPointAtTheSampleDatabases) {
    DriverDB table(Sample("rlxdvrs.xml"));
    EXPECT_EQ(table.GetMajorVersion(), 1u);
    EXPECT_EQ(table.GetMinorVersion(), 0u);
    ASSERT_EQ(table.GetRecordCount(), 6u);

    struct Row {
        const char* cpuType;
        const char* server;
        const char* file;
        const char* entity;
        bool trace;
    };
    const Row rows[] = {{"4120", "DemoEventServerA", "evt_demo_core.xml", "DEMO_CORE_A", true},
                        {"64x", "DemoEventServerB", "evt_demo_core.xml", "DEMO_FAMILY_B", false},
                        {"5601_2", "DemoEventServerC", "evt_demo_core.xml", "DEMO_REV_C2", true},
                        {"3300", "DemoEventServerD", "evt_demo_core.xml", "DEMO_LITE_D", false},
                        {"4130", "DemoTraceServer", "rlx_trace_job.xml", "DEMO_TRACE_T", true},
                        {"4140", "DemoCounterServer", "rlx_counter_job.xml", "DEMO_COUNT_K", false}};
    for (const Row& row : rows) {
        std::string server, file, entity;
        bool trace = !row.trace;
        table.GetServerName(row.cpuType, server);
        table.GetDriverDetails(row.cpuType, file, entity, trace);
        EXPECT_EQ(server, row.server) << row.cpuType;
        EXPECT_EQ(entity, row.entity) << row.cpuType;
        EXPECT_EQ(trace, row.trace) << row.cpuType;
        ASSERT_EQ(file, row.file) << row.cpuType;
        PropertyDB referenced(Sample(file));
        EXPECT_NE(referenced.FindByName("Type"), nullptr);
    }
}
