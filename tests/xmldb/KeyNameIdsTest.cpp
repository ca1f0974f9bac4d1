// Key names numbered in the order they are first seen, found again by their text.
#include <map>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "xmldb/KeyNameIds.h"

using TargetOperations::KeyNameIds;

TEST(KeyNameIds, NumbersNamesInTheOrderTheyAreFirstSeen) {
    KeyNameIds ids;
    EXPECT_EQ(ids.Count(), 0u);
    EXPECT_EQ(ids.Find("COUNT"), KeyNameIds::kNone);
    EXPECT_EQ(ids.Intern("COUNT"), 0u);
    EXPECT_EQ(ids.Intern("TRACE"), 1u);
    EXPECT_EQ(ids.Intern("COUNT"), 0u);
    EXPECT_EQ(ids.Count(), 2u);
    EXPECT_EQ(ids.Find("TRACE"), 1u);
    EXPECT_EQ(ids.Find("trace"), KeyNameIds::kNone);
    EXPECT_EQ(ids.Find("TRACE "), KeyNameIds::kNone);
}

TEST(KeyNameIds, TheEmptyNameAndLongNamesAreNamesLikeAnyOther) {
    KeyNameIds ids;
    const std::string longName(300, 'K');
    EXPECT_EQ(ids.Intern(""), 0u);
    EXPECT_EQ(ids.Intern(longName), 1u);
    EXPECT_EQ(ids.Find(""), 0u);
    EXPECT_EQ(ids.Find(longName), 1u);
    EXPECT_EQ(ids.Find(longName.substr(1)), KeyNameIds::kNone);
}

TEST(KeyNameIds, KeepsEveryNumberThroughManyGrowths) {
    KeyNameIds ids;
    std::map<std::string, std::uint32_t> expected;
    for (int i = 0; i < 20000; ++i) {
        // Names that share long prefixes and collide in their low hash bits now and then.
        const std::string name = "G_" + std::to_string(i % 15000);
        const auto known = expected.find(name);
        const std::uint32_t id = ids.Intern(name);
        if (known == expected.end()) {
            EXPECT_EQ(id, expected.size());
            expected.emplace(name, id);
        } else {
            ASSERT_EQ(id, known->second) << name;
        }
    }
    EXPECT_EQ(ids.Count(), 15000u);
    for (const auto& entry : expected) ASSERT_EQ(ids.Find(entry.first), entry.second) << entry.first;
    EXPECT_EQ(ids.Find("G_15000"), KeyNameIds::kNone);
}

// The last name interned is answered without the table: a run of the same name, a return to
// an earlier one and a name that only starts like the last must all keep their numbers.
TEST(KeyNameIds, RunsOfTheSameNameKeepTheirNumber) {
    KeyNameIds ids;
    EXPECT_EQ(ids.Intern("G_4"), 0u);
    EXPECT_EQ(ids.Intern("G_4"), 0u);
    EXPECT_EQ(ids.Intern("G_40"), 1u);
    EXPECT_EQ(ids.Intern("G_4"), 0u);
    EXPECT_EQ(ids.Intern("G_"), 2u);
    EXPECT_EQ(ids.Intern("G_"), 2u);
    EXPECT_EQ(ids.Intern("G_40"), 1u);
    EXPECT_EQ(ids.Count(), 3u);

    // A table moved elsewhere keeps its last name; the one emptied by a fresh table forgets it.
    KeyNameIds moved = std::move(ids);
    ids = KeyNameIds();
    EXPECT_EQ(ids.Count(), 0u);
    EXPECT_EQ(ids.Intern("G_40"), 0u);
    EXPECT_EQ(ids.Find("G_4"), KeyNameIds::kNone);
    EXPECT_EQ(moved.Intern("G_40"), 1u);
    EXPECT_EQ(moved.Intern("NEW"), 3u);
}
