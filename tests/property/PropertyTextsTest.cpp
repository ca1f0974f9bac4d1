// A property's name and description share one block: each text must still read, change and
// copy as if it were held on its own.
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "property/Property.h"
#include "property/PropertyTexts.h"
#include "property/TextPair.h"

using namespace TargetOperations;

namespace {

using NameThenDescription = std::pair<std::string, std::string>;

// Both texts as the object hands them out.
NameThenDescription Read(const PropertyTexts& texts) { return {texts.Name(), texts.Description()}; }

Property* MakeNode(const std::string& name, const std::string& description) {
    return dynamic_cast<Property*>(Property::Construct(NameAndDescription(name, description)));
}

}  // namespace

TEST(PropertyTexts, NameAndDescriptionReadBackAsGiven) {
    PropertyTexts texts(NameAndDescription("Window low", "Lower bound of the data window"));
    EXPECT_EQ(Read(texts), NameThenDescription("Window low", "Lower bound of the data window"));
}

TEST(PropertyTexts, EmptyTextsReadAsEmpty) {
    PropertyTexts texts(NameAndDescription("", ""));
    EXPECT_EQ(Read(texts), NameThenDescription("", ""));
    texts.SetDescription("only a description");
    EXPECT_EQ(Read(texts), NameThenDescription("", "only a description"));
}

TEST(PropertyTexts, SettingOneTextKeepsTheOther) {
    PropertyTexts texts(NameAndDescription("short", "a description long enough to need a block of its own"));
    texts.SetName("a name that is now much longer than it was before");
    EXPECT_EQ(Read(texts), NameThenDescription("a name that is now much longer than it was before", "a description long enough to need a block of its own"));
    texts.SetDescription("d");
    EXPECT_EQ(Read(texts), NameThenDescription("a name that is now much longer than it was before", "d"));
    texts.SetName("");
    EXPECT_EQ(Read(texts), NameThenDescription("", "d"));
}

TEST(PropertyTexts, NullLeavesATextAsItWas) {
    PropertyTexts texts(NameAndDescription("name", "description"));
    texts.SetName(nullptr);
    texts.SetDescription(nullptr);
    EXPECT_EQ(Read(texts), NameThenDescription("name", "description"));
}

// The new text may be read from the object itself: it is copied before the old block goes.
TEST(PropertyTexts, ATextMayBeSetFromTheOtherOrFromItself) {
    PropertyTexts texts(NameAndDescription("the name of this property", "the description of this property"));
    texts.SetDescription(texts.Name());
    EXPECT_EQ(Read(texts), NameThenDescription("the name of this property", "the name of this property"));
    texts.SetDescription("another description, just as long");
    texts.SetName(texts.Description());
    EXPECT_EQ(Read(texts), NameThenDescription("another description, just as long", "another description, just as long"));
    texts.SetName(texts.Name() + 8);
    EXPECT_STREQ(texts.Name(), "description, just as long");
    texts.SetDescription(texts.Description() + 8);
    EXPECT_STREQ(texts.Description(), "description, just as long");
}

// A name given as a string with a zero byte reads up to that byte, as its c_str() did; the
// description after it is untouched, also when the description changes later.
TEST(PropertyTexts, ANameWithAZeroByteReadsUpToItAndKeepsTheDescription) {
    PropertyTexts texts(NameAndDescription(std::string("na\0me", 5), "description"));
    EXPECT_EQ(Read(texts), NameThenDescription("na", "description"));
    texts.SetDescription("changed");
    EXPECT_EQ(Read(texts), NameThenDescription("na", "changed"));
}

TEST(PropertyTexts, ACopyHasItsOwnTexts) {
    PropertyTexts original(NameAndDescription("original name", "original description"));
    PropertyTexts copy(original);
    copy.SetName("copied name");
    EXPECT_EQ(Read(original), NameThenDescription("original name", "original description"));
    EXPECT_EQ(Read(copy), NameThenDescription("copied name", "original description"));
}

TEST(PropertyTexts, APropertyAndItsCloneReadAndChangeTheirTextsApart) {
    Property* node = MakeNode("Trace data values", "Which values the trace records");
    auto* clone = dynamic_cast<Property*>(node->Clone());
    ASSERT_NE(clone, nullptr);
    clone->SetDescription("changed in the clone");
    node->SetName("changed in the original");
    EXPECT_STREQ(node->GetName(), "changed in the original");
    EXPECT_STREQ(node->GetDescription(), "Which values the trace records");
    EXPECT_STREQ(clone->GetName(), "Trace data values");
    EXPECT_STREQ(clone->GetDescription(), "changed in the clone");
    clone->Release();
    node->Release();
}

// Short pairs are kept inside the object, longer ones in a block of their own. Every size
// around that limit reads back, copies and changes alike, also when a change moves the pair
// from one kind of storage to the other with a text taken from the pair itself.
TEST(PropertyTexts, PairsAroundTheInsideLimitReadCopyAndChangeAlike) {
    const std::size_t limit = PropertyTexts::kInlineBytes;
    for (std::size_t total = limit - 4; total <= limit + 4; ++total) {
        // total bytes with both zeros: a name of 10 characters and the rest description.
        const std::string name(10, 'n');
        const std::string description(total - 12, 'd');
        PropertyTexts texts(NameAndDescription(name, description));
        ASSERT_EQ(Read(texts), NameThenDescription(name, description)) << total;

        PropertyTexts copy(texts);
        PropertyTexts assigned(NameAndDescription("x", "y"));
        assigned = texts;
        EXPECT_EQ(Read(copy), NameThenDescription(name, description)) << total;
        EXPECT_EQ(Read(assigned), NameThenDescription(name, description)) << total;
        EXPECT_NE(copy.Name(), texts.Name()) << total;

        // Grows past the limit from its own description, then shrinks back from its own name.
        texts.SetName(texts.Description());
        EXPECT_EQ(Read(texts), NameThenDescription(description, description)) << total;
        texts.SetDescription(texts.Name() + description.size() - 1);
        EXPECT_EQ(Read(texts), NameThenDescription(description, "d")) << total;
        texts.SetName("n");
        EXPECT_EQ(Read(texts), NameThenDescription("n", "d")) << total;

        // The copies kept theirs.
        EXPECT_EQ(Read(copy), NameThenDescription(name, description)) << total;
        const PropertyTexts& same = assigned;
        assigned = same;
        EXPECT_EQ(Read(assigned), NameThenDescription(name, description)) << total;
    }
}

// A property's child key and same-level key share one small buffer of the same kind: each
// reads, changes and copies on its own, also when it is long, empty or taken from the other.
TEST(PropertyLinkKeys, ChildAndSameLevelKeyChangeAndCopyApart) {
    Property* node = MakeNode("Comparator", "");
    EXPECT_STREQ(node->GetChildKey(), "");
    EXPECT_STREQ(node->GetSameLevelKey(), "");

    node->SetChildKey("G_1");
    node->SetSameLevelKey("SAME_LEVEL_OF_COMPARATOR_0");
    EXPECT_STREQ(node->GetChildKey(), "G_1");
    EXPECT_STREQ(node->GetSameLevelKey(), "SAME_LEVEL_OF_COMPARATOR_0");

    auto* clone = dynamic_cast<Property*>(node->Clone());
    ASSERT_NE(clone, nullptr);
    const std::string longKey(300, 'k');
    node->SetChildKey(longKey.c_str());
    EXPECT_STREQ(node->GetChildKey(), longKey.c_str());
    EXPECT_STREQ(node->GetSameLevelKey(), "SAME_LEVEL_OF_COMPARATOR_0");
    EXPECT_STREQ(clone->GetChildKey(), "G_1");
    EXPECT_STREQ(clone->GetSameLevelKey(), "SAME_LEVEL_OF_COMPARATOR_0");

    // Null leaves a key as it was; one key may be set from the other or from itself.
    node->SetChildKey(nullptr);
    node->SetSameLevelKey(nullptr);
    EXPECT_STREQ(node->GetChildKey(), longKey.c_str());
    node->SetSameLevelKey(node->GetChildKey());
    EXPECT_STREQ(node->GetSameLevelKey(), longKey.c_str());
    node->SetChildKey(node->GetChildKey() + 297);
    EXPECT_STREQ(node->GetChildKey(), "kkk");
    EXPECT_STREQ(node->GetSameLevelKey(), longKey.c_str());
    node->SetSameLevelKey("");
    EXPECT_STREQ(node->GetSameLevelKey(), "");
    EXPECT_STREQ(node->GetChildKey(), "kkk");

    // The keyless "TESTKEY" rule reads the child key from the same buffer.
    node->SetChildKey("TESTKEY");
    EXPECT_TRUE(node->IsKeyName("TESTKEY"));
    node->SetChildKey("TESTKEYS");
    EXPECT_FALSE(node->IsKeyName("TESTKEY"));
    clone->Release();
    node->Release();
}

TEST(TextPair, EveryLengthAroundTheInsideLimitKeepsBothTexts) {
    using Pair = TextPair<24>;
    for (std::size_t first = 0; first <= 26; ++first) {
        for (std::size_t second = 0; second + first <= 30; second += 3) {
            const std::string a(first, 'a');
            const std::string b(second, 'b');
            Pair pair(a.data(), a.size(), b.data(), b.size());
            ASSERT_EQ(std::string(pair.First()), a);
            ASSERT_EQ(std::string(pair.Second()), b);
            ASSERT_EQ(pair.FirstLength(), first);
            ASSERT_EQ(pair.SecondLength(), second);
            EXPECT_EQ(pair.IsInline(), first + second + 2 <= Pair::kInlineBytes);
            Pair copy(pair);
            pair.SetFirst("x");
            EXPECT_EQ(std::string(copy.First()), a);
            EXPECT_EQ(std::string(copy.Second()), b);
            EXPECT_EQ(std::string(pair.Second()), b);
        }
    }
    const TextPair<24> empty;
    EXPECT_STREQ(empty.First(), "");
    EXPECT_STREQ(empty.Second(), "");
    EXPECT_TRUE(empty.IsInline());
}
