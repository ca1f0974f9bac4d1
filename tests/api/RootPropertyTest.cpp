// Handing out the root property of a database, by number and by file.

#include <string>
#include <vector>

#include "ApiTestSupport.h"

using namespace api_test;

namespace {
const std::vector<std::string> kBreakpointChildren{"Address", "Count",  "Halt",
                                                   "Mode",    "Locked", "Switched Off"};
}

TEST(GetRootProperty, ReturnsALinkedCopyOfType) {
    UseXmlDirectory("db");
    const std::uint32_t number = CreatePropertyDBByName("cpu.xml", 0);
    ASSERT_EQ(0u, number);
    Owned<> root(GetRootProperty(number));
    ASSERT_NE(nullptr, root);
    EXPECT_STREQ("Type", root->GetName());
    EXPECT_EQ(1u, RefCount(root.get()));
    EXPECT_NE(GetPropertyFromDB_noClone(number, "Type"), root.get());
    EXPECT_EQ(kBreakpointChildren, ChildNames(root.get()));
    EXPECT_EQ((std::vector<std::string>{"Halt Delay"}), ChildNames(Child(root.get(), "Halt")));
    EXPECT_EQ((std::vector<std::string>{"Fast Depth"}), ChildNames(Child(root.get(), "Mode")));
    // The database's own "Type" stays without children.
    EXPECT_EQ(0u, GetPropertyFromDB_noClone(number, "Type")->GetNumSubProperties());
}

TEST(GetRootProperty, EditsOfTheCopyDoNotReachTheDatabase) {
    UseXmlDirectory("db");
    const std::uint32_t number = CreatePropertyDBByName("cpu.xml", 0);
    Owned<> root(GetRootProperty(number));
    ASSERT_NE(nullptr, root);
    AsString(root.get())->SetValue("Watchpoint");
    EXPECT_EQ("Breakpoint", StringValue(GetPropertyFromDB_noClone(number, "Type")));
    Owned<> second(GetRootProperty(number));
    EXPECT_EQ("Breakpoint", StringValue(second.get()));
}

TEST(GetRootProperty, CopyOutlivesItsDatabase) {
    UseXmlDirectory("db");
    const std::uint32_t number = CreatePropertyDBByName("cpu.xml", 0);
    Owned<> root(GetRootProperty(number));
    ASSERT_NE(nullptr, root);
    ReleasePropertyDB(number);
    EXPECT_EQ(nullptr, GetRootProperty(number));
    EXPECT_EQ(kBreakpointChildren, ChildNames(root.get()));
    EXPECT_EQ(5u, AsInteger(Child(root.get(), "Count"))->GetValue());
}

TEST(GetRootProperty, UnknownNumberOrMissingTypeGivesNull) {
    UseXmlDirectory("db");
    EXPECT_EQ(nullptr, GetRootProperty(0));
    EXPECT_EQ(nullptr, GetRootProperty(RLX_INVALID_DB));
    const std::uint32_t number = CreatePropertyDBByName("notype.xml", 0);
    ASSERT_EQ(0u, number);
    EXPECT_EQ(nullptr, GetRootProperty(number));
}

TEST(GetRootProperty, TypeOfAnotherKindIsStillTheRoot) {
    UseXmlDirectory("db");
    const std::uint32_t number = CreatePropertyDBByName("inttype.xml", 0);
    Owned<> root(GetRootProperty(number));
    ASSERT_NE(nullptr, root);
    ASSERT_NE(nullptr, AsInteger(root.get()));
    EXPECT_EQ(5u, AsInteger(root.get())->GetValue());
}

TEST(GetRootPropertyByFile, UsesThePathAsGivenAndLinksTheRoot) {
    UseXmlDirectory("dir7");  // must not be put in front of the path
    Owned<> root(GetRootPropertyByFile("db/cpu.xml"));
    ASSERT_NE(nullptr, root);
    EXPECT_STREQ("cpu", root->GetDescription());
    EXPECT_EQ(kBreakpointChildren, ChildNames(root.get()));
    EXPECT_EQ(1u, RefCount(root.get()));

    const std::string absolute = RLX_FIXTURES_DIR "/api/db/fixed.xml";
    Owned<> fixed(GetRootPropertyByFile(absolute.c_str()));
    ASSERT_NE(nullptr, fixed);
    EXPECT_EQ((std::vector<std::string>{"Count"}), ChildNames(fixed.get()));
}

TEST(GetRootPropertyByFile, OpensNoNumberedDatabase) {
    UseXmlDirectory("db");
    Owned<> root(GetRootPropertyByFile("db/cpu.xml"));
    ASSERT_NE(nullptr, root);
    EXPECT_EQ(nullptr, GetRootProperty(0));
    EXPECT_EQ(0u, CreatePropertyDBByName("cpu.xml", 0));
}

TEST(GetRootPropertyByFile, FailuresGiveNull) {
    UseXmlDirectory("db");
    EXPECT_EQ(nullptr, GetRootPropertyByFile("db/nothere.xml"));
    EXPECT_EQ(nullptr, GetRootPropertyByFile("cpu.xml"));  // no directory prefix is added
    EXPECT_EQ(nullptr, GetRootPropertyByFile("db/broken.xml"));
    EXPECT_EQ(nullptr, GetRootPropertyByFile("db/notype.xml"));
    EXPECT_EQ(nullptr, GetRootPropertyByFile(nullptr));
}

TEST(GetRootPropertyByFile, EachCallGivesANewTree) {
    UseXmlDirectory("db");
    Owned<> first(GetRootPropertyByFile("db/cpu.xml"));
    Owned<> second(GetRootPropertyByFile("db/cpu.xml"));
    ASSERT_NE(nullptr, first);
    ASSERT_NE(nullptr, second);
    EXPECT_NE(first.get(), second.get());
    AsString(first.get())->SetValue("Watchpoint");
    EXPECT_EQ("Breakpoint", StringValue(second.get()));
}
