// Extending open databases with trace, SCTM, CTI and OCP module properties.

#include <algorithm>
#include <string>
#include <vector>

#include "ApiTestSupport.h"

using namespace api_test;
using TargetOperations::NameAndDescription;
using TargetOperations::Property;
using TargetOperations::ValueAttribute;

namespace {

const std::uint32_t kCpuPropertyCount = 15;  // top-level properties of cpu.xml

std::uint32_t Open(const char* file) {
    const std::uint32_t number = CreatePropertyDBByName(file, 0);
    EXPECT_NE(RLX_INVALID_DB, number) << file;
    return number;
}

IProperty* TypeOf(std::uint32_t number) { return GetPropertyFromDB_noClone(number, "Type"); }

// Selects value on the database's own "Type" and returns a fresh linked root.
Owned<> RootWithTypeValue(std::uint32_t number, const char* value) {
    AsString(TypeOf(number))->SetValue(value);
    return Owned<>(GetRootProperty(number));
}

}  // namespace

// ---- AttachPropertyDB ------------------------------------------------------------------

TEST(AttachPropertyDB, TypeWithAllowedValuesGainsTraceAndOnlyTheStmTraceType) {
    UseXmlDirectory("db");
    const std::uint32_t number = Open("cpu.xml");
    EXPECT_EQ(kCpuPropertyCount + 1, AttachPropertyDB("trace.xml", number));
    EXPECT_EQ((std::vector<std::string>{"Breakpoint", "Watchpoint", "Trace"}), AllowedValues(TypeOf(number)));
    EXPECT_EQ(ValueAttribute("STM TRACE", 0, 0, false, ""), AllowedAttributes(TypeOf(number)).back());
    EXPECT_EQ(nullptr, GetPropertyFromDB_noClone(number, "Trace Type"));
    ASSERT_NE(nullptr, GetPropertyFromDB_noClone(number, "STM Trace Type"));

    Owned<> root(RootWithTypeValue(number, "Trace"));
    EXPECT_EQ((std::vector<std::string>{"STM Trace Type"}), ChildNames(root.get()));
}

TEST(AttachPropertyDB, TwiceAddsTraceOnceAndASecondStmTraceType) {
    UseXmlDirectory("db");
    const std::uint32_t number = Open("cpu.xml");
    EXPECT_EQ(kCpuPropertyCount + 1, AttachPropertyDB("trace.xml", number));
    EXPECT_EQ(kCpuPropertyCount + 2, AttachPropertyDB("trace.xml", number));
    EXPECT_EQ((std::vector<std::string>{"Breakpoint", "Watchpoint", "Trace"}), AllowedValues(TypeOf(number)));
}

TEST(AttachPropertyDB, FixedTraceTypeGetsTheStmChildKey) {
    UseXmlDirectory("db");
    const std::uint32_t number = Open("trace_fixed.xml");
    EXPECT_EQ(3u, AttachPropertyDB("trace.xml", number));
    EXPECT_STREQ("STM TRACE", AsProperty(TypeOf(number))->GetChildKey());
    EXPECT_TRUE(AllowedValues(TypeOf(number)).empty());
    Owned<> root(GetRootProperty(number));
    EXPECT_EQ((std::vector<std::string>{"STM Trace Type"}), ChildNames(root.get()));
}

TEST(AttachPropertyDB, FixedTypeOfAnotherValueIsLeftAlone) {
    UseXmlDirectory("db");
    const std::uint32_t number = Open("fixed.xml");
    EXPECT_EQ(3u, AttachPropertyDB("trace.xml", number));
    EXPECT_STREQ("BP", AsProperty(TypeOf(number))->GetChildKey());
    EXPECT_EQ("Breakpoint", StringValue(TypeOf(number)));
}

TEST(AttachPropertyDB, ExistingTraceTypeIsReplacedByTraceTypeZero) {
    UseXmlDirectory("db");
    const std::uint32_t number = Open("actions.xml");
    IProperty* former = GetPropertyFromDB_noClone(number, "Trace Type");
    ASSERT_NE(nullptr, former);
    EXPECT_EQ(4u, AttachPropertyDB("trace.xml", number));
    // Taken out of the list, yet a pointer borrowed before stays valid.
    EXPECT_STREQ("old trace type", former->GetDescription());
    IProperty* traceType = GetPropertyFromDB_noClone(number, "Trace Type");
    ASSERT_NE(nullptr, traceType);
    EXPECT_STREQ("trace type for action lists", traceType->GetDescription());
    EXPECT_EQ(nullptr, GetPropertyFromDB_noClone(number, "Trace Type 0"));
    Owned<> root(GetRootProperty(number));
    EXPECT_EQ((std::vector<std::string>{"Actions", "Trace Type"}), ChildNames(root.get()));
    EXPECT_EQ("ETM", StringValue(Child(root.get(), "Trace Type")));
}

TEST(AttachPropertyDB, ActionsWithoutTraceTypeAreRekeyedAndGetTraceTypeOne) {
    UseXmlDirectory("db");
    const std::uint32_t number = Open("actions_only.xml");
    EXPECT_EQ(4u, AttachPropertyDB("trace.xml", number));
    auto* actions = AsProperty(GetPropertyFromDB_noClone(number, "Actions"));
    ASSERT_NE(nullptr, actions);
    EXPECT_FALSE(actions->IsKeyName("EV"));
    EXPECT_TRUE(actions->IsKeyName("SAME AS DATA"));
    EXPECT_EQ(2u, actions->GetKeyNumber("SAME AS DATA"));
    IProperty* traceType = GetPropertyFromDB_noClone(number, "Trace Type");
    ASSERT_NE(nullptr, traceType);
    EXPECT_STREQ("trace type beside the data", traceType->GetDescription());
    Owned<> root(GetRootProperty(number));
    EXPECT_EQ((std::vector<std::string>{"Trace Type"}), ChildNames(root.get()));
}

// "Actions" gains its new key after the database was read: linking by that key finds it, as
// it finds a property read with the key.
TEST(AttachPropertyDB, RekeyedActionsAreLinkedUnderTheirNewKey) {
    UseXmlDirectory("db");
    const std::uint32_t number = Open("actions_only.xml");
    Owned<> before(GetRootProperty(number));  // linking has looked at the database once already
    ASSERT_EQ(4u, AttachPropertyDB("trace.xml", number));

    Owned<> data(Property::Construct(NameAndDescription("Data", "")));
    AsProperty(data.get())->SetChildKey("SAME AS DATA");
    UpdateSubProperties(number, data.get());
    const std::vector<std::string> children = ChildNames(data.get());
    EXPECT_NE(children.end(), std::find(children.begin(), children.end(), "Actions"));

    Owned<> old(Property::Construct(NameAndDescription("Old", "")));
    AsProperty(old.get())->SetChildKey("EV");
    UpdateSubProperties(number, old.get());
    const std::vector<std::string> formerlySelected = ChildNames(old.get());
    // The former key no longer selects "Actions".
    EXPECT_EQ(formerlySelected.end(), std::find(formerlySelected.begin(), formerlySelected.end(), "Actions"));
}

TEST(AttachPropertyDB, WithoutActionsAStringTypeIsRequired) {
    UseXmlDirectory("db");
    EXPECT_EQ(RLX_INVALID_DB, AttachPropertyDB("trace.xml", Open("notype.xml")));
    const std::uint32_t integerType = Open("inttype.xml");
    EXPECT_EQ(RLX_INVALID_DB, AttachPropertyDB("trace.xml", integerType));
    EXPECT_EQ(nullptr, GetPropertyFromDB_noClone(integerType, "STM Trace Type"));
}

TEST(AttachPropertyDB, UnknownDatabaseMissingFileOrNullNameFail) {
    UseXmlDirectory("db");
    const std::uint32_t number = Open("cpu.xml");
    EXPECT_EQ(RLX_INVALID_DB, AttachPropertyDB("trace.xml", number + 1));
    EXPECT_EQ(RLX_INVALID_DB, AttachPropertyDB("nothere.xml", number));
    EXPECT_EQ(RLX_INVALID_DB, AttachPropertyDB(nullptr, number));
    // None of these touched the database.
    EXPECT_EQ((std::vector<std::string>{"Breakpoint", "Watchpoint"}), AllowedValues(TypeOf(number)));
}

TEST(AttachPropertyDB, UnreadableModuleFailsButKeepsEditsAlreadyMade) {
    UseXmlDirectory("db");
    const std::uint32_t number = Open("cpu.xml");
    EXPECT_EQ(RLX_INVALID_DB, AttachPropertyDB("broken.xml", number));
    EXPECT_EQ((std::vector<std::string>{"Breakpoint", "Watchpoint", "Trace"}), AllowedValues(TypeOf(number)));
    EXPECT_EQ(nullptr, GetPropertyFromDB_noClone(number, "STM Trace Type"));
}

// ---- UpdateAllDBsForOCP ----------------------------------------------------------------

TEST(UpdateAllDBsForOCP, WithNoOpenDatabaseDoesNothing) {
    UseXmlDirectory("db");
    UpdateAllDBsForOCP("ocp.xml");
    UpdateAllDBsForOCP(nullptr);
    EXPECT_EQ(0u, Open("cpu.xml"));
    EXPECT_EQ(nullptr, GetPropertyFromDB_noClone(0, "STM Trace Type"));
}

TEST(UpdateAllDBsForOCP, MergesTheTraceTypesIntoEveryOpenDatabaseTwice) {
    UseXmlDirectory("db");
    const std::uint32_t cpu = Open("cpu.xml");
    const std::uint32_t released = Open("fixed.xml");
    const std::uint32_t actions = Open("actions.xml");
    ReleasePropertyDB(released);

    UpdateAllDBsForOCP("ocp.xml");
    EXPECT_STREQ("OCP system trace", GetPropertyFromDB_noClone(cpu, "STM Trace Type")->GetDescription());
    EXPECT_STREQ("OCP trace", GetPropertyFromDB_noClone(actions, "Trace Type")->GetDescription());
    EXPECT_EQ((std::vector<std::string>{"Breakpoint", "Watchpoint", "Trace"}), AllowedValues(TypeOf(cpu)));

    UpdateAllDBsForOCP("ocp.xml");
    EXPECT_EQ(kCpuPropertyCount + 3, AttachPropertyDB("ocp.xml", cpu));  // one more per merge
    EXPECT_EQ(nullptr, GetPropertyFromDB_noClone(released, "Type"));
}

// ---- UpdateAllDBsForSCTM ---------------------------------------------------------------

TEST(UpdateAllDBsForSCTM, ModuleTypeStandsAheadOfTheDatabasesOwn) {
    UseXmlDirectory("db");
    const std::uint32_t number = Open("cpu.xml");
    UpdateAllDBsForSCTM("sctm_type.xml", number);
    EXPECT_STREQ("sctm type", TypeOf(number)->GetDescription());
    Owned<> root(GetRootProperty(number));
    ASSERT_NE(nullptr, root);
    EXPECT_STREQ("sctm type", root->GetDescription());
    EXPECT_EQ((std::vector<std::string>{"SCTM Counter"}), ChildNames(root.get()));
    // The former root is still there, reachable by its enumeration value.
    EXPECT_STREQ("cpu", GetPropertyFromDBByNameEnum_noClone(number, "Type", 1)->GetDescription());
    // The appended property is shared with the module database, which is never released.
    EXPECT_EQ(2u, RefCount(GetPropertyFromDB_noClone(number, "SCTM Counter")));

    UpdateAllDBsForSCTM("sctm_type.xml", number);
    EXPECT_EQ(kCpuPropertyCount + 5, AttachPropertyDB("trace.xml", number));
}

TEST(UpdateAllDBsForSCTM, WithoutModuleTypeTheRootGainsSctmFunction) {
    UseXmlDirectory("db");
    const std::uint32_t number = Open("cpu.xml");
    UpdateAllDBsForSCTM("sctm.xml", number);
    EXPECT_EQ((std::vector<std::string>{"Breakpoint", "Watchpoint", "SCTM Function"}), AllowedValues(TypeOf(number)));
    EXPECT_EQ(ValueAttribute("SCTM", 0, 0, false, ""), AllowedAttributes(TypeOf(number)).back());
    Owned<> root(RootWithTypeValue(number, "SCTM Function"));
    EXPECT_EQ((std::vector<std::string>{"SCTM Counter", "SCTM Enable"}), ChildNames(root.get()));

    UpdateAllDBsForSCTM("sctm.xml", number);
    EXPECT_EQ((std::vector<std::string>{"Breakpoint", "Watchpoint", "SCTM Function"}), AllowedValues(TypeOf(number)));
    EXPECT_EQ(kCpuPropertyCount + 4 + 1, AttachPropertyDB("trace.xml", number));
}

TEST(UpdateAllDBsForSCTM, TypeOfAnotherKindStopsBeforeAnythingIsAppended) {
    UseXmlDirectory("db");
    const std::uint32_t number = Open("inttype.xml");
    UpdateAllDBsForSCTM("sctm.xml", number);
    EXPECT_EQ(nullptr, GetPropertyFromDB_noClone(number, "SCTM Counter"));
}

TEST(UpdateAllDBsForSCTM, DatabaseWithoutTypeStillGetsTheModuleProperties) {
    UseXmlDirectory("db");
    const std::uint32_t number = Open("notype.xml");
    UpdateAllDBsForSCTM("sctm.xml", number);
    EXPECT_NE(nullptr, GetPropertyFromDB_noClone(number, "SCTM Counter"));
    EXPECT_NE(nullptr, GetPropertyFromDB_noClone(number, "SCTM Enable"));
}

TEST(UpdateAllDBsForSCTM, ModuleWithOnlyATypeAddsJustThatType) {
    UseXmlDirectory("db");
    const std::uint32_t number = Open("fixed.xml");
    UpdateAllDBsForSCTM("sctm_type_only.xml", number);
    EXPECT_STREQ("sctm type alone", TypeOf(number)->GetDescription());
    EXPECT_EQ(4u, AttachPropertyDB("trace.xml", number));  // Type, Type, Count + STM Trace Type
}

TEST(UpdateAllDBsForSCTM, UnknownDatabaseMissingFileOrNullNameDoNothing) {
    UseXmlDirectory("db");
    const std::uint32_t number = Open("cpu.xml");
    UpdateAllDBsForSCTM("sctm.xml", number + 1);
    UpdateAllDBsForSCTM("nothere.xml", number);
    UpdateAllDBsForSCTM(nullptr, number);
    UpdateAllDBsForSCTM("broken.xml", number);
    EXPECT_EQ((std::vector<std::string>{"Breakpoint", "Watchpoint"}), AllowedValues(TypeOf(number)));
    EXPECT_EQ(nullptr, GetPropertyFromDB_noClone(number, "SCTM Counter"));
}

// ---- UpdateDBForCTI and its variants ---------------------------------------------------

TEST(UpdateDBForCTI, AddsCrossTriggerAndAppendsCtiFunctionTwice) {
    UseXmlDirectory("db");
    const std::uint32_t number = Open("cpu.xml");
    EXPECT_EQ(kCpuPropertyCount + 1, UpdateDBForCTI("cti.xml", number));
    EXPECT_EQ((std::vector<std::string>{"Breakpoint", "Watchpoint", "Cross Trigger"}), AllowedValues(TypeOf(number)));
    EXPECT_EQ(ValueAttribute("CTI TOP", 0, 0, false, ""), AllowedAttributes(TypeOf(number)).back());

    // A second call appends a second copy; the string model keeps one "Cross Trigger".
    EXPECT_EQ(kCpuPropertyCount + 2, UpdateDBForCTI("cti.xml", number));
    EXPECT_EQ((std::vector<std::string>{"Breakpoint", "Watchpoint", "Cross Trigger"}), AllowedValues(TypeOf(number)));

    Owned<> root(RootWithTypeValue(number, "Cross Trigger"));
    EXPECT_EQ((std::vector<std::string>{"CTI Function"}), ChildNames(root.get()));
}

TEST(UpdateDBForCTI, TypeWithoutAllowedValuesOnlyGetsTheFunctionAppended) {
    UseXmlDirectory("db");
    const std::uint32_t number = Open("fixed.xml");
    EXPECT_EQ(3u, UpdateDBForCTI("cti.xml", number));
    EXPECT_TRUE(AllowedValues(TypeOf(number)).empty());
    EXPECT_NE(nullptr, GetPropertyFromDB_noClone(number, "CTI Function"));
}

TEST(UpdateDBForCTI, TypeOfAnotherKindStillGetsTheFunction) {
    UseXmlDirectory("db");
    const std::uint32_t number = Open("inttype.xml");
    EXPECT_EQ(2u, UpdateDBForCTI("cti.xml", number));
}

TEST(UpdateDBForCTI, WithoutTypeTheModuleIsNotRead) {
    UseXmlDirectory("db");
    const std::uint32_t number = Open("notype.xml");
    // An unreadable module would fail the call if it were read.
    EXPECT_EQ(1u, UpdateDBForCTI("broken.xml", number));
    EXPECT_EQ(1u, UpdateDBForCTI("cti.xml", number));
    EXPECT_EQ(RLX_INVALID_DB, UpdateDBForCTI("broken.xml", Open("cpu.xml")));
}

TEST(UpdateDBForCTI, UnknownDatabaseMissingFileOrNullNameFail) {
    UseXmlDirectory("db");
    const std::uint32_t number = Open("cpu.xml");
    EXPECT_EQ(RLX_INVALID_DB, UpdateDBForCTI("cti.xml", number + 1));
    EXPECT_EQ(RLX_INVALID_DB, UpdateDBForCTI("nothere.xml", number));
    EXPECT_EQ(RLX_INVALID_DB, UpdateDBForCTI(nullptr, number));
    EXPECT_EQ((std::vector<std::string>{"Breakpoint", "Watchpoint"}), AllowedValues(TypeOf(number)));
}

TEST(UpdateDBForCTI_XTRIG, UsesTheGivenValueAndPropertyName) {
    UseXmlDirectory("db");
    const std::uint32_t number = Open("cpu.xml");
    EXPECT_EQ(kCpuPropertyCount + 1, UpdateDBForCTI_XTRIG("cti.xml", "External", "XTRIG Function", number));
    EXPECT_EQ((std::vector<std::string>{"Breakpoint", "Watchpoint", "External"}), AllowedValues(TypeOf(number)));
    EXPECT_EQ(ValueAttribute("CTI TOP", 0, 0, false, ""), AllowedAttributes(TypeOf(number)).back());
    EXPECT_EQ(nullptr, GetPropertyFromDB_noClone(number, "CTI Function"));
    EXPECT_EQ(kCpuPropertyCount + 2, UpdateDBForCTI_XTRIG("cti.xml", "External", "XTRIG Function", number));

    Owned<> root(RootWithTypeValue(number, "External"));
    EXPECT_EQ((std::vector<std::string>{"XTRIG Function"}), ChildNames(root.get()));
}

TEST(UpdateDBForCTI_XTRIG, PropertyMissingFromTheModuleOnlyAddsTheValue) {
    UseXmlDirectory("db");
    const std::uint32_t number = Open("cpu.xml");
    EXPECT_EQ(kCpuPropertyCount, UpdateDBForCTI_XTRIG("cti.xml", "External", "No Such Function", number));
    EXPECT_EQ((std::vector<std::string>{"Breakpoint", "Watchpoint", "External"}), AllowedValues(TypeOf(number)));
}

TEST(UpdateDBForCTI_XTRIG, NullArgumentsFail) {
    UseXmlDirectory("db");
    const std::uint32_t number = Open("cpu.xml");
    EXPECT_EQ(RLX_INVALID_DB, UpdateDBForCTI_XTRIG(nullptr, "External", "XTRIG Function", number));
    EXPECT_EQ(RLX_INVALID_DB, UpdateDBForCTI_XTRIG("cti.xml", nullptr, "XTRIG Function", number));
    EXPECT_EQ(RLX_INVALID_DB, UpdateDBForCTI_XTRIG("cti.xml", "External", nullptr, number));
    EXPECT_EQ(RLX_INVALID_DB, UpdateDBForCTI_XTRIG("cti.xml", "External", "XTRIG Function", number + 1));
    EXPECT_EQ((std::vector<std::string>{"Breakpoint", "Watchpoint"}), AllowedValues(TypeOf(number)));
}

TEST(UpdateDBForCTIEx, FixedTypeStaysSelectableBesideTheNewValue) {
    UseXmlDirectory("db");
    const std::uint32_t number = Open("fixed.xml");
    EXPECT_EQ(2u, UpdateDBForCTIEx("Cross Trigger", 0x40, number));
    IProperty* type = TypeOf(number);
    EXPECT_EQ((std::vector<std::string>{"Cross Trigger", "Breakpoint"}), AllowedValues(type));
    EXPECT_EQ((std::vector<ValueAttribute>{ValueAttribute("CTI TOP", 0x40, 0, false, ""),
                                           ValueAttribute("BP", 7, 0, false, "")}),
              AllowedAttributes(type));
    // The first allowed value becomes the selection.
    EXPECT_EQ("Cross Trigger", StringValue(type));
    EXPECT_STREQ("CTI TOP", AsProperty(type)->GetChildKey());
    AsString(type)->SetValue("Breakpoint");
    EXPECT_STREQ("BP", AsProperty(type)->GetChildKey());
    EXPECT_EQ(7, AsProperty(type)->GetEnumValue());

    // Twice: nothing new, the value is already allowed.
    EXPECT_EQ(2u, UpdateDBForCTIEx("Cross Trigger", 0x40, number));
    EXPECT_EQ((std::vector<std::string>{"Cross Trigger", "Breakpoint"}), AllowedValues(type));
}

TEST(UpdateDBForCTIEx, TypeWithAllowedValuesOnlyGainsTheNewValue) {
    UseXmlDirectory("db");
    const std::uint32_t number = Open("cpu.xml");
    EXPECT_EQ(kCpuPropertyCount, UpdateDBForCTIEx("Cross Trigger", 0x40, number));
    EXPECT_EQ((std::vector<std::string>{"Breakpoint", "Watchpoint", "Cross Trigger"}), AllowedValues(TypeOf(number)));
    EXPECT_EQ(ValueAttribute("CTI TOP", 0x40, 0, false, ""), AllowedAttributes(TypeOf(number)).back());
    EXPECT_EQ("Breakpoint", StringValue(TypeOf(number)));
    EXPECT_EQ(kCpuPropertyCount, UpdateDBForCTIEx("Other Trigger", 0x41, number));
    EXPECT_EQ(4u, AllowedValues(TypeOf(number)).size());
}

TEST(UpdateDBForCTIEx, WithoutStringTypeOnlyCountsAndUnknownOrNullFail) {
    UseXmlDirectory("db");
    EXPECT_EQ(1u, UpdateDBForCTIEx("Cross Trigger", 1, Open("notype.xml")));
    EXPECT_EQ(1u, UpdateDBForCTIEx("Cross Trigger", 1, Open("inttype.xml")));
    EXPECT_EQ(RLX_INVALID_DB, UpdateDBForCTIEx("Cross Trigger", 1, 9));
    EXPECT_EQ(RLX_INVALID_DB, UpdateDBForCTIEx(nullptr, 1, 0));
}

// ---- UpdateSTMType ---------------------------------------------------------------------

TEST(UpdateSTMType, CopyTakenBeforeTheTraceMergeIsBroughtUpToDateOnce) {
    UseXmlDirectory("db");
    const std::uint32_t number = Open("cpu.xml");
    Owned<> before(GetRootProperty(number));
    ASSERT_EQ(kCpuPropertyCount + 1, AttachPropertyDB("trace.xml", number));

    EXPECT_EQ(0u, UpdateSTMType(before.get(), number));
    EXPECT_EQ((std::vector<std::string>{"Breakpoint", "Watchpoint", "Trace"}), AllowedValues(before.get()));
    EXPECT_EQ(ValueAttribute("STM TRACE", 0, 0, false, ""), AllowedAttributes(before.get()).back());
    // The database's own Type is not touched.
    EXPECT_EQ(3u, AllowedValues(TypeOf(number)).size());

    EXPECT_EQ(RLX_INVALID_DB, UpdateSTMType(before.get(), number));
    EXPECT_EQ(3u, AllowedValues(before.get()).size());
}

TEST(UpdateSTMType, CopyTakenAfterTheMergeIsLeftUnchanged) {
    UseXmlDirectory("db");
    const std::uint32_t number = Open("cpu.xml");
    ASSERT_EQ(kCpuPropertyCount + 1, AttachPropertyDB("trace.xml", number));
    Owned<> after(GetRootProperty(number));
    EXPECT_EQ(RLX_INVALID_DB, UpdateSTMType(after.get(), number));
    EXPECT_EQ((std::vector<std::string>{"Breakpoint", "Watchpoint", "Trace"}), AllowedValues(after.get()));
}

TEST(UpdateSTMType, WrongKindsUnknownDatabaseAndNullFail) {
    UseXmlDirectory("db");
    const std::uint32_t number = Open("cpu.xml");
    ASSERT_EQ(kCpuPropertyCount + 1, AttachPropertyDB("trace.xml", number));
    Owned<> count(GetPropertyFromDB(number, "Count"));
    EXPECT_EQ(RLX_INVALID_DB, UpdateSTMType(count.get(), number));
    EXPECT_EQ(RLX_INVALID_DB, UpdateSTMType(nullptr, number));

    Owned<> copy(GetPropertyFromDB(number, "Mode"));
    EXPECT_EQ(RLX_INVALID_DB, UpdateSTMType(copy.get(), number + 1));
    EXPECT_EQ(RLX_INVALID_DB, UpdateSTMType(copy.get(), Open("notype.xml")));
    EXPECT_EQ(RLX_INVALID_DB, UpdateSTMType(copy.get(), Open("inttype.xml")));
    EXPECT_EQ((std::vector<std::string>{"Fast", "Slow"}), AllowedValues(copy.get()));
}
