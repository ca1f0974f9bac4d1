// A debugger session played on the sample database of the made-up demonstration CPU, with
// the module files that ship beside it.

#include <cstring>
#include <string>
#include <vector>

#include "ApiTestSupport.h"

using namespace api_test;

namespace {

const std::vector<std::string> kCounterJob{"Counter Event", "Counter Reload", "Halt On Overflow",
                                           "Counter Snapshot Address", "Counter Width"};

std::uint32_t OpenDemoCore() {
    char entity[32] = {};
    bool trace = false;
    const std::uint32_t number = CreatePropertyDB(4120, entity, sizeof entity, &trace, 0);
    EXPECT_STREQ("DEMO_CORE_A", entity);
    EXPECT_TRUE(trace);
    return number;
}

}  // namespace

TEST(SampleSession, DebuggerSessionOnTheDemoCore) {
    UseSamples();

    // Create by CPU type and find the server.
    const std::uint32_t number = OpenDemoCore();
    ASSERT_EQ(0u, number);
    char server[32] = {};
    ASSERT_TRUE(GetRLXServerName(4120, server, sizeof server));
    EXPECT_STREQ("DemoEventServerA", server);

    // The root: an address-match job.
    Owned<> root(GetRootProperty(number));
    ASSERT_NE(nullptr, root);
    EXPECT_EQ("Address Match", StringValue(root.get()));
    ASSERT_NE(nullptr, Child(root.get(), "Address"));
    ASSERT_NE(nullptr, Child(root.get(), "Access Type"));
    EXPECT_EQ((std::vector<std::string>{"Bus Master Filter"}), ChildNames(Child(root.get(), "Access Type")));
    EXPECT_EQ(nullptr, Child(root.get(), "Counter Reload"));

    // Change "Type" and relink.
    AsString(root.get())->SetValue("Event Counter");
    UpdateSubProperties(number, root.get());
    ASSERT_EQ(kCounterJob, ChildNames(root.get()));
    EXPECT_TRUE(ChildNames(Child(root.get(), "Halt On Overflow")).empty());

    // Edit an integer, a location and a Boolean; the Boolean selects its option.
    AsInteger(Child(root.get(), "Counter Reload"))->SetValue(500);
    AsLocation64(Child(root.get(), "Counter Snapshot Address"))->SetValue64(Debugger::Address(0x190002000ull), 0);
    AsLocation64(Child(root.get(), "Counter Snapshot Address"))->SetCookie(3);
    AsBoolean(Child(root.get(), "Halt On Overflow"))->SetValue(true);
    UpdateSubProperties(number, root.get());
    EXPECT_EQ((std::vector<std::string>{"Signal Trigger Out"}), ChildNames(Child(root.get(), "Halt On Overflow")));

    // Take the edits over into the database's own tree.
    IProperty* databaseType = GetPropertyFromDB_noClone(number, "Type");
    ASSERT_NE(nullptr, databaseType);
    EXPECT_TRUE(ConvertBack(number, root.get(), databaseType, nullptr, nullptr));
    EXPECT_EQ("Event Counter", StringValue(databaseType));
    EXPECT_EQ(kCounterJob, ChildNames(databaseType));
    EXPECT_EQ(500u, AsInteger(Child(databaseType, "Counter Reload"))->GetValue());
    std::uint32_t page = 7;
    EXPECT_EQ(0x190002000ull,
              AsLocation64(Child(databaseType, "Counter Snapshot Address"))->GetValue64(page).GetAddress());
    EXPECT_EQ(0u, page);
    EXPECT_EQ(3u, AsLocation64(Child(databaseType, "Counter Snapshot Address"))->GetCookie());
    EXPECT_TRUE(AsBoolean(Child(databaseType, "Halt On Overflow"))->GetValue());
    EXPECT_EQ((std::vector<std::string>{"Signal Trigger Out"}), ChildNames(Child(databaseType, "Halt On Overflow")));
    // Later roots are copies of that tree and show the edits.
    {
        Owned<> later(GetRootProperty(number));
        EXPECT_EQ("Event Counter", StringValue(later.get()));
        EXPECT_EQ(500u, AsInteger(Child(later.get(), "Counter Reload"))->GetValue());
    }

    // Attach the trace types: "Trace" becomes a job type selecting "STM Trace Type".
    const std::uint32_t afterTrace = AttachPropertyDB("rlx_trace_types.xml", number);
    ASSERT_NE(RLX_INVALID_DB, afterTrace);
    EXPECT_EQ((std::vector<std::string>{"Address Match", "Data Match", "Event Counter", "Trace"}),
              AllowedValues(databaseType));
    EXPECT_EQ(nullptr, GetPropertyFromDB_noClone(number, "Trace Type"));
    EXPECT_EQ(0u, UpdateSTMType(root.get(), number));
    EXPECT_EQ(4u, AllowedValues(root.get()).size());
    AsString(root.get())->SetValue("Trace");
    UpdateSubProperties(number, root.get());
    EXPECT_EQ((std::vector<std::string>{"STM Trace Type"}), ChildNames(root.get()));
    EXPECT_EQ("Software Messages", StringValue(Child(root.get(), "STM Trace Type")));

    // Add cross-triggering.
    EXPECT_EQ(afterTrace + 1, UpdateDBForCTI("rlx_cti.xml", number));
    Owned<> withCti(GetRootProperty(number));
    AsString(withCti.get())->SetValue("Cross Trigger");
    UpdateSubProperties(number, withCti.get());
    EXPECT_EQ((std::vector<std::string>{"CTI Function"}), ChildNames(withCti.get()));
    EXPECT_EQ("Halt On Trigger", StringValue(Child(withCti.get(), "CTI Function")));

    // Withdraw a job type.
    RemoveAllowedFromDB(number, "Type", "Data Match");
    EXPECT_EQ((std::vector<std::string>{"Address Match", "Event Counter", "Trace", "Cross Trigger"}),
              AllowedValues(databaseType));
    EXPECT_EQ(5u, AllowedValues(withCti.get()).size());

    // Release: the number is gone, the caller's trees live on.
    ReleasePropertyDB(number);
    EXPECT_EQ(nullptr, GetPropertyFromDB_noClone(number, "Type"));
    EXPECT_EQ(nullptr, GetRootProperty(number));
    EXPECT_EQ("Trace", StringValue(root.get()));
    EXPECT_EQ("Cross Trigger", StringValue(withCti.get()));
    EXPECT_EQ((std::vector<std::string>{"CTI Function"}), ChildNames(withCti.get()));
}

TEST(SampleSession, DataJobEditsConvertBackIntoASecondTree) {
    UseSamples();
    const std::uint32_t number = OpenDemoCore();
    Owned<> edited(GetRootProperty(number));
    Owned<> shown(GetRootProperty(number));
    ASSERT_NE(nullptr, edited);
    ASSERT_NE(nullptr, shown);

    AsString(edited.get())->SetValue("Data Match");
    UpdateSubProperties(number, edited.get());
    ASSERT_NE(nullptr, Child(edited.get(), "Data Address"));
    AsLocation(Child(edited.get(), "Data Address"))->SetValue(0x20002000, 0);
    AsLocation(Child(edited.get(), "Data Address"))->SetCookie(9);
    AsInteger(Child(edited.get(), "Data Value"))->SetValue(0x77);
    AsString(Child(edited.get(), "Data Size"))->SetValue("Byte");
    AsString(Child(edited.get(), "Access Type"))->SetValue("Write");
    UpdateSubProperties(number, edited.get());
    // "Write" selects its filter below and pulls "Write Size" in beside it.
    ASSERT_EQ((std::vector<std::string>{"Write Data Filter"}), ChildNames(Child(edited.get(), "Access Type")));
    ASSERT_NE(nullptr, Child(edited.get(), "Write Size"));
    AsBoolean(Child(Child(edited.get(), "Access Type"), "Write Data Filter"))->SetValue(true);

    EXPECT_TRUE(ConvertBack(number, edited.get(), shown.get(), nullptr, nullptr));

    EXPECT_EQ("Data Match", StringValue(shown.get()));
    EXPECT_EQ(ChildNames(edited.get()), ChildNames(shown.get()));
    std::uint32_t page = 7;
    EXPECT_EQ(0x20002000u, AsLocation(Child(shown.get(), "Data Address"))->GetValue(page));
    EXPECT_EQ(0u, page);
    EXPECT_EQ(9u, AsLocation(Child(shown.get(), "Data Address"))->GetCookie());
    EXPECT_EQ(0x77u, AsInteger(Child(shown.get(), "Data Value"))->GetValue());
    EXPECT_EQ("Byte", StringValue(Child(shown.get(), "Data Size")));
    IProperty* access = Child(shown.get(), "Access Type");
    EXPECT_EQ("Write", StringValue(access));
    ASSERT_EQ((std::vector<std::string>{"Write Data Filter"}), ChildNames(access));
    EXPECT_TRUE(AsBoolean(Child(access, "Write Data Filter"))->GetValue());
}

TEST(SampleSession, EditsOfEveryKindConvertBackIntoASecondTree) {
    UseSamples();
    const std::uint32_t number = OpenDemoCore();
    Owned<> edited(GetRootProperty(number));
    Owned<> shown(GetRootProperty(number));
    ASSERT_NE(nullptr, edited);
    ASSERT_NE(nullptr, shown);

    AsString(edited.get())->SetValue("Event Counter");
    UpdateSubProperties(number, edited.get());
    ASSERT_EQ(kCounterJob, ChildNames(edited.get()));
    AsString(Child(edited.get(), "Counter Event"))->SetValue("Instructions");
    AsInteger(Child(edited.get(), "Counter Reload"))->SetValue(500);
    AsBoolean(Child(edited.get(), "Halt On Overflow"))->SetValue(true);
    AsLocation64(Child(edited.get(), "Counter Snapshot Address"))->SetValue64(Debugger::Address(0x190002000ull), 0);
    AsProperty(Child(edited.get(), "Counter Width"))->SetEditable(true);
    AsInteger(Child(edited.get(), "Counter Width"))->SetValue(16);
    UpdateSubProperties(number, edited.get());
    ASSERT_EQ((std::vector<std::string>{"Signal Trigger Out"}), ChildNames(Child(edited.get(), "Halt On Overflow")));

    EXPECT_TRUE(ConvertBack(number, edited.get(), shown.get(), nullptr, nullptr));

    EXPECT_EQ("Event Counter", StringValue(shown.get()));
    EXPECT_EQ(kCounterJob, ChildNames(shown.get()));
    EXPECT_EQ("Instructions", StringValue(Child(shown.get(), "Counter Event")));
    EXPECT_EQ(500u, AsInteger(Child(shown.get(), "Counter Reload"))->GetValue());
    IProperty* halt = Child(shown.get(), "Halt On Overflow");
    EXPECT_TRUE(AsBoolean(halt)->GetValue());
    ASSERT_EQ((std::vector<std::string>{"Signal Trigger Out"}), ChildNames(halt));
    EXPECT_TRUE(AsBoolean(Child(halt, "Signal Trigger Out"))->GetValue());
    std::uint32_t page = 7;
    EXPECT_EQ(0x190002000ull,
              AsLocation64(Child(shown.get(), "Counter Snapshot Address"))->GetValue64(page).GetAddress());
    EXPECT_EQ(0u, page);
    // Disabled and read-only in the destination: kept.
    EXPECT_EQ(32u, AsInteger(Child(shown.get(), "Counter Width"))->GetValue());
}

TEST(SampleSession, WildcardAndRevisionRowsOfTheSampleTable) {
    UseSamples();
    char entity[32] = {};
    bool trace = true;
    EXPECT_EQ(0u, CreatePropertyDB(6474, entity, sizeof entity, &trace, 0));
    EXPECT_STREQ("DEMO_FAMILY_B", entity);
    EXPECT_FALSE(trace);
    EXPECT_EQ(1u, CreatePropertyDB(56012, entity, sizeof entity, &trace, 0));
    EXPECT_STREQ("DEMO_REV_C2", entity);
    EXPECT_TRUE(trace);
    char server[32] = {};
    EXPECT_TRUE(GetRLXServerName(56012, server, sizeof server));
    EXPECT_STREQ("", server);  // the server lookup keeps the revision digit: no row
    EXPECT_TRUE(GetRLXServerName(645, server, sizeof server));
    EXPECT_STREQ("DemoEventServerB", server);
}

TEST(SampleSession, SctmModulesWithAndWithoutTheirOwnType) {
    UseSamples();
    const std::uint32_t plain = OpenDemoCore();
    const std::uint32_t typed = OpenDemoCore();

    UpdateAllDBsForSCTM("rlx_sctm.xml", plain);
    EXPECT_EQ("SCTM Function", AllowedValues(GetPropertyFromDB_noClone(plain, "Type")).back());
    Owned<> plainRoot(GetRootProperty(plain));
    AsString(plainRoot.get())->SetValue("SCTM Function");
    UpdateSubProperties(plain, plainRoot.get());
    EXPECT_EQ((std::vector<std::string>{"SCTM Counter", "SCTM Interrupt"}), ChildNames(plainRoot.get()));

    UpdateAllDBsForSCTM("rlx_sctm_type.xml", typed);
    Owned<> typedRoot(GetRootProperty(typed));
    ASSERT_NE(nullptr, typedRoot);
    EXPECT_STREQ("Job type with the SCTM counters", typedRoot->GetDescription());
    EXPECT_EQ((std::vector<std::string>{"SCTM Counter", "SCTM Reload"}), ChildNames(typedRoot.get()));

    UpdateAllDBsForSCTM("rlx_sctm_type.xml", typed);
    Owned<> again(GetRootProperty(typed));
    EXPECT_EQ((std::vector<std::string>{"SCTM Counter", "SCTM Reload"}), ChildNames(again.get()));
}

TEST(SampleSession, OcpTraceTypesReachEveryOpenDatabase) {
    UseSamples();
    const std::uint32_t first = OpenDemoCore();
    const std::uint32_t second = OpenDemoCore();
    UpdateAllDBsForOCP("rlx_ocp.xml");
    for (std::uint32_t number : {first, second}) {
        IProperty* stm = GetPropertyFromDB_noClone(number, "STM Trace Type");
        ASSERT_NE(nullptr, stm);
        EXPECT_STREQ("OCP system trace", stm->GetDescription());
        EXPECT_EQ("Trace", AllowedValues(GetPropertyFromDB_noClone(number, "Type")).back());
    }
    UpdateAllDBsForOCP("rlx_ocp.xml");
    EXPECT_EQ(4u, AllowedValues(GetPropertyFromDB_noClone(first, "Type")).size());
}

TEST(SampleSession, StmTraceModuleBringsOnlyItsTraceType) {
    UseSamples();
    const std::uint32_t number = OpenDemoCore();
    ASSERT_NE(RLX_INVALID_DB, AttachPropertyDB("rlx_stm_trace.xml", number));
    EXPECT_NE(nullptr, GetPropertyFromDB_noClone(number, "STM Trace Type"));
    EXPECT_EQ(nullptr, GetPropertyFromDB_noClone(number, "STM Channel"));
}

TEST(SampleSession, RootByFileOfTheSampleDatabase) {
    UseSamples();
    Owned<> root(GetRootPropertyByFile(RLX_SAMPLES_DIR "/evt_demo_core.xml"));
    ASSERT_NE(nullptr, root);
    EXPECT_EQ("Address Match", StringValue(root.get()));
    ASSERT_NE(nullptr, Child(root.get(), "Address"));
    EXPECT_EQ((std::vector<std::string>{"Bus Master Filter"}), ChildNames(Child(root.get(), "Access Type")));
}
