#include <cstdint>
#include <string>

#include <gtest/gtest.h>

#include "property/Property.h"
#include "property/PropertyKeyList.h"

using namespace TargetOperations;

namespace {

Property* MakeNode() {
    return dynamic_cast<Property*>(Property::Construct(NameAndDescription("node", "")));
}

}  // namespace

TEST(PropertyKeysTest, KeyNumberOfANameThatIsNotAKeyIsZero) {
    Property* node = MakeNode();
    node->AddKeyName(PropertyKey("A", 5));
    EXPECT_EQ(0u, node->GetKeyNumber("B"));
    EXPECT_FALSE(node->IsKeyName("B"));
    node->Release();
}

TEST(PropertyKeysTest, KeyNumberOfAKeyAddedWithZeroIsZero) {
    Property* node = MakeNode();
    node->AddKeyName(PropertyKey("ZERO", 0));
    EXPECT_TRUE(node->IsKeyName("ZERO"));
    EXPECT_EQ(0u, node->GetKeyNumber("ZERO"));
    node->Release();
}

TEST(PropertyKeysTest, KeyNumberIsTheEnumValueOfTheMatchingKey) {
    Property* node = MakeNode();
    node->AddKeyName(PropertyKey("A", 1));
    node->AddKeyName(PropertyKey("B", 0xFFFFFFFFu));
    node->AddKeyName(PropertyKey("C", 3));
    EXPECT_EQ(1u, node->GetKeyNumber("A"));
    EXPECT_EQ(0xFFFFFFFFu, node->GetKeyNumber("B"));
    EXPECT_EQ(3u, node->GetKeyNumber("C"));
    node->Release();
}

TEST(PropertyKeysTest, WithTwoKeysOfTheSameNameTheFirstAddedWins) {
    Property* node = MakeNode();
    node->AddKeyName(PropertyKey("DUP", 11));
    node->AddKeyName(PropertyKey("DUP", 22));
    EXPECT_TRUE(node->IsKeyName("DUP"));
    EXPECT_EQ(11u, node->GetKeyNumber("DUP"));
    node->Release();
}

TEST(PropertyKeysTest, KeylessPropertyWithChildKeyTestkeyAcceptsThatOneName) {
    Property* node = MakeNode();
    node->SetChildKey("TESTKEY");
    EXPECT_TRUE(node->IsKeyName("TESTKEY"));
    EXPECT_EQ(0u, node->GetKeyNumber("TESTKEY"));
    EXPECT_FALSE(node->IsKeyName("testkey"));
    EXPECT_FALSE(node->IsKeyName("TESTKEY "));
    EXPECT_FALSE(node->IsKeyName("OTHER"));
    node->Release();
}

TEST(PropertyKeysTest, TestkeyRuleNoLongerAppliesOnceThePropertyHasAKey) {
    Property* node = MakeNode();
    node->SetChildKey("TESTKEY");
    node->AddKeyName(PropertyKey("A", 1));
    EXPECT_FALSE(node->IsKeyName("TESTKEY"));
    EXPECT_TRUE(node->IsKeyName("A"));
    node->Release();
}

TEST(PropertyKeysTest, TestkeyNeedsTheChildKeyToBeExactlyTestkey) {
    Property* node = MakeNode();
    EXPECT_FALSE(node->IsKeyName("TESTKEY"));
    node->SetChildKey("TESTKEYS");
    EXPECT_FALSE(node->IsKeyName("TESTKEY"));
    node->SetChildKey("testkey");
    EXPECT_FALSE(node->IsKeyName("TESTKEY"));
    node->Release();
}

TEST(PropertyKeysTest, KeyNamesAreComparedWholeAndCaseSensitive) {
    Property* node = MakeNode();
    node->AddKeyName(PropertyKey("ABC", 9));
    EXPECT_FALSE(node->IsKeyName("abc"));
    EXPECT_FALSE(node->IsKeyName("AB"));
    EXPECT_FALSE(node->IsKeyName("ABCD"));
    EXPECT_FALSE(node->IsKeyName(" ABC"));
    EXPECT_FALSE(node->IsKeyName(""));
    EXPECT_EQ(0u, node->GetKeyNumber("abc"));
    EXPECT_EQ(0u, node->GetKeyNumber("AB"));
    EXPECT_TRUE(node->IsKeyName("ABC"));
    EXPECT_EQ(9u, node->GetKeyNumber("ABC"));
    node->Release();
}

TEST(PropertyKeysTest, KeyAndUppercaseKeyAreDifferentKeys) {
    Property* node = MakeNode();
    node->AddKeyName(PropertyKey("Key", 1));
    node->AddKeyName(PropertyKey("KEY", 2));
    EXPECT_EQ(1u, node->GetKeyNumber("Key"));
    EXPECT_EQ(2u, node->GetKeyNumber("KEY"));
    EXPECT_FALSE(node->IsKeyName("key"));
    node->Release();
}

TEST(PropertyKeysTest, RemoveAllKeysEmptiesTheKeys) {
    Property* node = MakeNode();
    node->AddKeyName(PropertyKey("A", 1));
    node->AddKeyName(PropertyKey("B", 2));
    node->RemoveAllKeys();
    EXPECT_FALSE(node->IsKeyName("A"));
    EXPECT_EQ(0u, node->GetKeyNumber("B"));
    // Keyless again, so the TESTKEY rule is back in force.
    node->SetChildKey("TESTKEY");
    EXPECT_TRUE(node->IsKeyName("TESTKEY"));
    node->Release();
}

TEST(PropertyKeysTest, AddKeyNameStoresACopy) {
    Property* node = MakeNode();
    {
        PropertyKey temporary("TEMP", 4);
        node->AddKeyName(temporary);
    }
    EXPECT_EQ(4u, node->GetKeyNumber("TEMP"));
    node->Release();
}

// Null names are not for the lookups; this build answers them as "no key".
TEST(PropertyKeysTest, ImplementationChoiceNullNamesAreNeverKeys) {
    Property* node = MakeNode();
    node->AddKeyName(PropertyKey("", 3));
    EXPECT_FALSE(node->IsKeyName(nullptr));
    EXPECT_EQ(0u, node->GetKeyNumber(nullptr));
    node->SetChildKey("TESTKEY");
    node->RemoveAllKeys();
    EXPECT_FALSE(node->IsKeyName(nullptr));
    node->Release();
}

// The first key lives in the property itself and later ones in a list: the order they were
// added in holds across both, through copies and after emptying.
TEST(PropertyKeysTest, KeysKeepTheirOrderAcrossTheFirstAndTheRest) {
    Property* node = MakeNode();
    node->AddKeyName(PropertyKey("DUP", 1));
    node->AddKeyName(PropertyKey("B", 2));
    node->AddKeyName(PropertyKey("DUP", 3));
    node->AddKeyName(PropertyKey("C", 4));
    EXPECT_EQ(1u, node->GetKeyNumber("DUP"));
    EXPECT_EQ(2u, node->GetKeyNumber("B"));
    EXPECT_EQ(4u, node->GetKeyNumber("C"));

    auto* clone = dynamic_cast<Property*>(node->Clone());
    ASSERT_NE(clone, nullptr);
    EXPECT_EQ(1u, clone->GetKeyNumber("DUP"));
    EXPECT_EQ(4u, clone->GetKeyNumber("C"));

    node->RemoveAllKeys();
    EXPECT_FALSE(node->IsKeyName("DUP"));
    node->AddKeyName(PropertyKey("C", 9));
    node->AddKeyName(PropertyKey("DUP", 8));
    EXPECT_EQ(9u, node->GetKeyNumber("C"));
    EXPECT_EQ(8u, node->GetKeyNumber("DUP"));
    EXPECT_FALSE(node->IsKeyName("B"));
    EXPECT_TRUE(clone->IsKeyName("B"));
    clone->Release();
    node->Release();
}

TEST(PropertyKeyListTest, ReadsLikeAListOfTheKeysAdded) {
    PropertyKeyList keys;
    EXPECT_TRUE(keys.empty());
    EXPECT_EQ(keys.size(), 0u);
    EXPECT_TRUE(keys.begin() == keys.end());
    for (std::uint32_t i = 0; i < 5; ++i) keys.push_back(PropertyKey("K" + std::to_string(i), i));
    ASSERT_EQ(keys.size(), 5u);
    std::uint32_t expected = 0;
    for (const PropertyKeyList::Key key : keys) {
        EXPECT_EQ(key.name, "K" + std::to_string(expected));
        EXPECT_EQ(key.enumValue, expected);
        ++expected;
    }
    EXPECT_EQ(expected, 5u);
    EXPECT_EQ(keys[3].name, "K3");
    EXPECT_EQ((*keys.begin()).name, "K0");

    const PropertyKeyList copy = keys;
    keys.clear();
    EXPECT_TRUE(keys.empty());
    ASSERT_EQ(copy.size(), 5u);
    EXPECT_EQ(copy[4].name, "K4");
}

TEST(PropertyKeyListTest, AssignmentReplacesTheKeysAndCopiesStayApart) {
    PropertyKeyList many;
    for (std::uint32_t i = 0; i < 3; ++i) many.push_back(PropertyKey("M" + std::to_string(i), i));
    PropertyKeyList one;
    one.push_back(PropertyKey("ONE", 1));

    PropertyKeyList target = one;
    target = many;
    ASSERT_EQ(target.size(), 3u);
    EXPECT_EQ(target[2].name, "M2");
    target = one;
    ASSERT_EQ(target.size(), 1u);
    EXPECT_EQ(target[0].name, "ONE");
    target = PropertyKeyList();
    EXPECT_TRUE(target.empty());

    const PropertyKeyList& same = many;
    many = same;
    ASSERT_EQ(many.size(), 3u);
    EXPECT_EQ(many[1].name, "M1");

    PropertyKeyList copy = many;
    many.push_back(PropertyKey("M3", 3));
    EXPECT_EQ(copy.size(), 3u);
    EXPECT_EQ(many.size(), 4u);
    many.clear();
    many.push_back(PropertyKey("AGAIN", 7));
    many.push_back(PropertyKey("MORE", 8));
    ASSERT_EQ(many.size(), 2u);
    EXPECT_EQ(many[1].enumValue, 8u);
    EXPECT_EQ(copy[2].name, "M2");
}

// A single key with a short name lives inside the list; a long name, a name with a zero byte
// or a second key moves the keys into a block. Every way there reads the same keys.
TEST(PropertyKeyListTest, NamesAroundTheInsideLimitAndWithZeroBytesReadBackWhole) {
    const std::size_t limit = PropertyKeyList::kLongestInlineName;
    for (std::size_t length = limit - 2; length <= limit + 2; ++length) {
        const std::string name(length, 'n');
        PropertyKeyList keys;
        keys.push_back(PropertyKey(name, 5));
        ASSERT_EQ(keys.size(), 1u);
        EXPECT_EQ(keys[0].name, name) << length;
        EXPECT_EQ(keys[0].enumValue, 5u);
        // The second key's name is taken from the list itself.
        keys.push_back(keys[0].name, 6);
        ASSERT_EQ(keys.size(), 2u);
        EXPECT_EQ(keys[0].name, name) << length;
        EXPECT_EQ(keys[1].name, name) << length;
        EXPECT_EQ(keys[1].enumValue, 6u);
        const PropertyKeyList copy = keys;
        keys.clear();
        EXPECT_EQ(copy[1].name, name) << length;
    }

    const std::string withZero("ke\0y", 4);
    PropertyKeyList keys;
    keys.push_back(PropertyKey(withZero, 1));
    keys.push_back(PropertyKey("", 2));
    ASSERT_EQ(keys.size(), 2u);
    EXPECT_EQ(keys[0].name, withZero);
    EXPECT_EQ(keys[1].name, "");
    EXPECT_EQ(keys[1].enumValue, 2u);

    // Through the property: a name with a zero byte answers only to its whole text.
    auto* node = dynamic_cast<Property*>(Property::Construct(NameAndDescription("n", "")));
    ASSERT_NE(node, nullptr);
    node->AddKeyName(PropertyKey(withZero, 3));
    EXPECT_FALSE(node->IsKeyName("ke"));
    EXPECT_EQ(node->GetKeyNumber("ke"), 0u);
    node->Release();
}
