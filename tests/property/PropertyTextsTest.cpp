// A property's name and description share one block: each text must still read, change and
// copy as if it were held on its own.
#include <string>

#include <gtest/gtest.h>

#include "property/Property.h"
#include "property/PropertyTexts.h"

using namespace TargetOperations;

namespace {

Property* MakeNode(const std::string& name, const std::string& description) {
    return dynamic_cast<Property*>(Property::Construct(NameAndDescription(name, description)));
}

}  // namespace

TEST(PropertyTexts, NameAndDescriptionReadBackAsGiven) {
    PropertyTexts texts(NameAndDescription("Window low", "Lower bound of the data window"));
    EXPECT_STREQ(texts.Name(), "Window low");
    EXPECT_STREQ(texts.Description(), "Lower bound of the data window");
}

TEST(PropertyTexts, EmptyTextsReadAsEmpty) {
    PropertyTexts texts(NameAndDescription("", ""));
    EXPECT_STREQ(texts.Name(), "");
    EXPECT_STREQ(texts.Description(), "");
    texts.SetDescription("only a description");
    EXPECT_STREQ(texts.Name(), "");
    EXPECT_STREQ(texts.Description(), "only a description");
}

TEST(PropertyTexts, SettingOneTextKeepsTheOther) {
    PropertyTexts texts(NameAndDescription("short", "a description long enough to need a block of its own"));
    texts.SetName("a name that is now much longer than it was before");
    EXPECT_STREQ(texts.Name(), "a name that is now much longer than it was before");
    EXPECT_STREQ(texts.Description(), "a description long enough to need a block of its own");
    texts.SetDescription("d");
    EXPECT_STREQ(texts.Name(), "a name that is now much longer than it was before");
    EXPECT_STREQ(texts.Description(), "d");
    texts.SetName("");
    EXPECT_STREQ(texts.Name(), "");
    EXPECT_STREQ(texts.Description(), "d");
}

TEST(PropertyTexts, NullLeavesATextAsItWas) {
    PropertyTexts texts(NameAndDescription("name", "description"));
    texts.SetName(nullptr);
    texts.SetDescription(nullptr);
    EXPECT_STREQ(texts.Name(), "name");
    EXPECT_STREQ(texts.Description(), "description");
}

// The new text may be read from the object itself: it is copied before the old block goes.
TEST(PropertyTexts, ATextMayBeSetFromTheOtherOrFromItself) {
    PropertyTexts texts(NameAndDescription("the name of this property", "the description of this property"));
    texts.SetDescription(texts.Name());
    EXPECT_STREQ(texts.Name(), "the name of this property");
    EXPECT_STREQ(texts.Description(), "the name of this property");
    texts.SetDescription("another description, just as long");
    texts.SetName(texts.Description());
    EXPECT_STREQ(texts.Name(), "another description, just as long");
    EXPECT_STREQ(texts.Description(), "another description, just as long");
    texts.SetName(texts.Name() + 8);
    EXPECT_STREQ(texts.Name(), "description, just as long");
    texts.SetDescription(texts.Description() + 8);
    EXPECT_STREQ(texts.Description(), "description, just as long");
}

// A name given as a string with a zero byte reads up to that byte, as its c_str() did; the
// description after it is untouched, also when the description changes later.
TEST(PropertyTexts, ANameWithAZeroByteReadsUpToItAndKeepsTheDescription) {
    PropertyTexts texts(NameAndDescription(std::string("na\0me", 5), "description"));
    EXPECT_STREQ(texts.Name(), "na");
    EXPECT_STREQ(texts.Description(), "description");
    texts.SetDescription("changed");
    EXPECT_STREQ(texts.Name(), "na");
    EXPECT_STREQ(texts.Description(), "changed");
}

TEST(PropertyTexts, ACopyHasItsOwnTexts) {
    PropertyTexts original(NameAndDescription("original name", "original description"));
    PropertyTexts copy(original);
    copy.SetName("copied name");
    EXPECT_STREQ(original.Name(), "original name");
    EXPECT_STREQ(original.Description(), "original description");
    EXPECT_STREQ(copy.Name(), "copied name");
    EXPECT_STREQ(copy.Description(), "original description");
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
