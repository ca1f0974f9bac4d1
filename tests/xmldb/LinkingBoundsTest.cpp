// Sub-property linking ends on every key graph: endless selections stop at the depth or
// node bound with a korvaError naming the property where linking stopped.
#include <chrono>
#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "XmlDbTestSupport.h"
#include "xmldb/LinkBudget.h"
#include "xmldb/SubPropertyLinking.h"

using namespace xmldb_test;

namespace {

std::string HardeningFixture(const std::string& name) { return std::string(RLX_FIXTURES_DIR) + "/hardening/" + name; }

// Generous for a sanitizer build; an endless selection would never get here.
constexpr std::chrono::seconds kQuickly{30};

struct LinkOutcome {
    CaughtError error;
    std::chrono::steady_clock::duration took{};
};

LinkOutcome LinkRootOf(PropertyDB& db, IProperty* root) {
    LinkOutcome outcome;
    const auto start = std::chrono::steady_clock::now();
    outcome.error = CatchKorvaError([&] { db.LinkSubProperties(root); });
    outcome.took = std::chrono::steady_clock::now() - start;
    return outcome;
}

std::size_t Depth(IProperty* property) {
    std::size_t deepest = 0;
    for (IProperty* child : Children(property)) deepest = std::max(deepest, Depth(child));
    return deepest + 1;
}

std::size_t CountNodes(IProperty* property) {
    std::size_t count = 1;
    for (IProperty* child : Children(property)) count += CountNodes(child);
    return count;
}

}  // namespace

TEST(LinkingBounds, SelfSelectingPropertyStopsAtTheDepthBound) {
    PropertyDB db(HardeningFixture("self_cycle.xml"));
    Held root(db.FindPropertyByName("Type"));
    const LinkOutcome outcome = LinkRootOf(db, root.get());
    ASSERT_TRUE(outcome.error.thrown);
    EXPECT_EQ(outcome.error.severity, korvaErrorIF::Error);
    EXPECT_EQ(outcome.error.text, "Sub-property linking stopped at \"Loop\": more than 256 nested levels");
    EXPECT_LT(outcome.took, kQuickly);
    // The root takes nothing from an operation that did not finish.
    EXPECT_EQ(root->GetNumSubProperties(), 0u);
}

TEST(LinkingBounds, PropertiesSelectingEachOtherStopAtTheDepthBound) {
    PropertyDB db(HardeningFixture("mutual_cycle.xml"));
    Held root(db.FindPropertyByName("Type"));
    const LinkOutcome outcome = LinkRootOf(db, root.get());
    ASSERT_TRUE(outcome.error.thrown);
    EXPECT_EQ(outcome.error.severity, korvaErrorIF::Error);
    // Level 257 is reached through Ping, Pong, Ping, ...: an odd level holds "Ping".
    EXPECT_EQ(outcome.error.text, "Sub-property linking stopped at \"Ping\": more than 256 nested levels");
    EXPECT_LT(outcome.took, kQuickly);
    EXPECT_EQ(root->GetNumSubProperties(), 0u);
}

TEST(LinkingBounds, EndlessDoublingStopsAtTheDepthBoundOfItsFirstBranch) {
    PropertyDB db(HardeningFixture("doubling_cycle.xml"));
    Held root(db.FindPropertyByName("Type"));
    const LinkOutcome outcome = LinkRootOf(db, root.get());
    ASSERT_TRUE(outcome.error.thrown);
    EXPECT_EQ(outcome.error.severity, korvaErrorIF::Error);
    EXPECT_EQ(outcome.error.text, "Sub-property linking stopped at \"Left\": more than 256 nested levels");
    EXPECT_LT(outcome.took, kQuickly);
    EXPECT_EQ(root->GetNumSubProperties(), 0u);
}

TEST(LinkingBounds, FiniteFanOutThatDoublesAtEveryLevelStopsAtTheNodeBound) {
    PropertyDB db(HardeningFixture("doubling_fanout.xml"));
    Held root(db.FindPropertyByName("Type"));
    const LinkOutcome outcome = LinkRootOf(db, root.get());
    ASSERT_TRUE(outcome.error.thrown);
    EXPECT_EQ(outcome.error.severity, korvaErrorIF::Error);
    EXPECT_NE(outcome.error.text.find("\": more than 100000 linked properties"), std::string::npos)
        << outcome.error.text;
    EXPECT_EQ(outcome.error.text.rfind("Sub-property linking stopped at \"", 0), 0u) << outcome.error.text;
    EXPECT_LT(outcome.took, kQuickly);
    EXPECT_EQ(root->GetNumSubProperties(), 0u);
}

TEST(LinkingBounds, FailedLinkingCanBeRepeatedAndAnotherValueStillLinks) {
    PropertyDB db(HardeningFixture("self_cycle.xml"));
    Held root(db.FindPropertyByName("Type"));
    EXPECT_TRUE(LinkRootOf(db, root.get()).error.thrown);
    EXPECT_TRUE(LinkRootOf(db, root.get()).error.thrown);
    dynamic_cast<StringProperty*>(root.get())->SetValue("Idle");
    EXPECT_FALSE(LinkRootOf(db, root.get()).error.thrown);
    EXPECT_EQ(root->GetNumSubProperties(), 0u);
}

TEST(LinkingBounds, ChainWithinTheBoundsLinksCompletely) {
    PropertyDB db(HardeningFixture("chain10.xml"));
    Held root(db.FindPropertyByName("Type"));
    ASSERT_FALSE(LinkRootOf(db, root.get()).error.thrown);
    EXPECT_EQ(Depth(root.get()), 11u);
    EXPECT_EQ(CountNodes(root.get()), 11u);
}

TEST(LinkingBounds, DepthBoundCountsTheLevelsBelowTheStartingProperty) {
    PropertyDB db(HardeningFixture("chain10.xml"));
    {
        Held root(db.FindPropertyByName("Type"));
        LinkBudget exact(10, 1000);
        EXPECT_FALSE(CatchKorvaError([&] { LinkSubPropertiesWithin(db, root.get(), exact); }).thrown);
        EXPECT_EQ(Depth(root.get()), 11u);
        EXPECT_EQ(exact.Depth(), 0u);
        EXPECT_EQ(exact.Linked(), 10u);
    }
    {
        Held root(db.FindPropertyByName("Type"));
        LinkBudget oneShort(9, 1000);
        const CaughtError caught = CatchKorvaError([&] { LinkSubPropertiesWithin(db, root.get(), oneShort); });
        ASSERT_TRUE(caught.thrown);
        EXPECT_EQ(caught.text, "Sub-property linking stopped at \"Level10\": more than 9 nested levels");
        EXPECT_EQ(caught.severity, korvaErrorIF::Error);
        // Every level entered was left again on the way out.
        EXPECT_EQ(oneShort.Depth(), 0u);
        EXPECT_EQ(root->GetNumSubProperties(), 0u);
    }
}

TEST(LinkingBounds, NodeBoundCountsEveryLinkedSubProperty) {
    PropertyDB db(HardeningFixture("chain10.xml"));
    {
        Held root(db.FindPropertyByName("Type"));
        LinkBudget exact(256, 10);
        EXPECT_FALSE(CatchKorvaError([&] { LinkSubPropertiesWithin(db, root.get(), exact); }).thrown);
        EXPECT_EQ(CountNodes(root.get()), 11u);
    }
    {
        Held root(db.FindPropertyByName("Type"));
        LinkBudget oneShort(256, 9);
        const CaughtError caught = CatchKorvaError([&] { LinkSubPropertiesWithin(db, root.get(), oneShort); });
        ASSERT_TRUE(caught.thrown);
        EXPECT_EQ(caught.text, "Sub-property linking stopped at \"Level9\": more than 9 linked properties");
        EXPECT_EQ(root->GetNumSubProperties(), 0u);
    }
}

TEST(LinkingBounds, RelinkingAFinishedTreeWithinTheBoundsKeepsIt) {
    PropertyDB db(HardeningFixture("chain10.xml"));
    Held root(db.FindPropertyByName("Type"));
    db.LinkSubProperties(root.get());
    const std::string first = DescribeTree(root.get());
    db.LinkSubProperties(root.get());
    EXPECT_EQ(DescribeTree(root.get()), first);
}
