// A string property keeps its allowed values and their attributes in one block: each value and
// each attribute field must read back exactly as given, through copies and every change.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "property/AllowedItems.h"
#include "property/StringProperty.h"

using namespace TargetOperations;

namespace {

ValueAttribute Disabled(ValueAttribute attribute) {
    attribute.SetDisabled(true);
    return attribute;
}

std::vector<std::string> ValuesOf(const AllowedItems& items) {
    std::vector<std::string> values;
    for (std::size_t i = 0; i < items.ValueCount(); ++i) values.emplace_back(items.Value(i));
    return values;
}

std::vector<ValueAttribute> AttributesOf(const AllowedItems& items) {
    std::vector<ValueAttribute> attributes;
    items.AppendAttributesTo(attributes);
    return attributes;
}

const std::vector<std::string> kValues = {"On", "Off", "", "a rather longer allowed value than the others"};
const std::vector<ValueAttribute> kAttributes = {ValueAttribute("G_ON", 1, 10, false, ""),
                                                 ValueAttribute("", 0xFFFFFFFFu, 0, true, "SAME"),
                                                 Disabled(ValueAttribute("K", 7, 3, true, "S"))};

}  // namespace

TEST(AllowedItems, EmptyListsHoldNothing) {
    const AllowedItems items;
    EXPECT_EQ(items.ValueCount(), 0u);
    EXPECT_EQ(items.AttributeCount(), 0u);
    EXPECT_FALSE(items.HasValues());
    EXPECT_EQ(items.FindValue("On"), 0u);
    EXPECT_FALSE(items.HoldsAttribute(kAttributes[0]));
    EXPECT_TRUE(AttributesOf(items).empty());

    const AllowedItems fromEmptyLists({}, {});
    EXPECT_EQ(fromEmptyLists.ValueCount(), 0u);
    const AllowedItems copy = fromEmptyLists;
    EXPECT_EQ(copy.AttributeCount(), 0u);
}

// The lists keep their own lengths: here four values and three attributes.
TEST(AllowedItems, ValuesAndEveryAttributeFieldReadBackAsGiven) {
    const AllowedItems items(kValues, kAttributes);
    EXPECT_EQ(ValuesOf(items), kValues);
    EXPECT_EQ(AttributesOf(items), kAttributes);
    for (std::size_t i = 0; i < kValues.size(); ++i) EXPECT_STREQ(items.Value(i).data(), kValues[i].c_str());

    const AllowedItems::Attribute second = items.AttributeAt(1);
    EXPECT_EQ(second.keyName, "");
    EXPECT_STREQ(second.keyName.data(), "");
    EXPECT_EQ(second.sameLevelKey, "SAME");
    EXPECT_STREQ(second.sameLevelKey.data(), "SAME");
    EXPECT_EQ(second.enumValue, 0xFFFFFFFFu);
    EXPECT_EQ(second.category, 0u);
    EXPECT_TRUE(second.haltCpu);
    EXPECT_FALSE(second.disabled);
    EXPECT_TRUE(items.AttributeAt(2).disabled);
    EXPECT_EQ(items.MakeValueAttribute(2), kAttributes[2]);
}

// A zero byte inside a value belongs to it: only the whole text finds it, and the
// zero-terminated form stops there.
TEST(AllowedItems, AValueHoldingAZeroByteIsComparedWhole) {
    const std::string withZero("ab\0cd", 5);
    const AllowedItems items({"ab", withZero}, {ValueAttribute(std::string("k\0x", 3), 1, 2, false, "")});
    EXPECT_EQ(items.Value(1), withZero);
    EXPECT_STREQ(items.Value(1).data(), "ab");
    EXPECT_EQ(items.FindValue("ab"), 0u);
    EXPECT_EQ(items.FindValue(withZero), 1u);
    EXPECT_EQ(items.FindValue(std::string("ab\0c", 4)), 2u);
    EXPECT_TRUE(items.AnyValueHoldsZero());
    EXPECT_EQ(items.AttributeAt(0).keyName, std::string("k\0x", 3));
    EXPECT_TRUE(items.HoldsAttribute(ValueAttribute(std::string("k\0x", 3), 1, 2, false, "")));
    EXPECT_FALSE(items.HoldsAttribute(ValueAttribute("k", 1, 2, false, "")));
    EXPECT_FALSE(AllowedItems(kValues, kAttributes).AnyValueHoldsZero());
}

TEST(AllowedItems, FindValueGivesTheFirstOfRepeatedValues) {
    const AllowedItems items({"x", "y", "x"}, {});
    EXPECT_EQ(items.FindValue("x"), 0u);
    EXPECT_EQ(items.FindValue("y"), 1u);
    EXPECT_EQ(items.FindValue("z"), 3u);
    EXPECT_EQ(items.FindValue(""), 3u);
}

// Every change rebuilds or edits the block; the other list and the other fields stay.
TEST(AllowedItems, AddingSettingAndDroppingKeepEverythingElse) {
    AllowedItems items(kValues, kAttributes);
    items.AddValue("Later");
    std::vector<std::string> values = kValues;
    values.push_back("Later");
    EXPECT_EQ(ValuesOf(items), values);
    EXPECT_EQ(AttributesOf(items), kAttributes);

    const ValueAttribute added("NEW", 4, 5, true, "NS");
    items.AddAttribute(added);
    std::vector<ValueAttribute> attributes = kAttributes;
    attributes.push_back(added);
    EXPECT_EQ(AttributesOf(items), attributes);
    EXPECT_EQ(ValuesOf(items), values);
    EXPECT_TRUE(items.HoldsAttribute(added));
    EXPECT_FALSE(items.HoldsAttribute(Disabled(added)));

    items.SetDisabled(0, true);
    attributes[0].SetDisabled(true);
    EXPECT_EQ(AttributesOf(items), attributes);

    items.DropValues();
    EXPECT_EQ(items.ValueCount(), 0u);
    EXPECT_EQ(AttributesOf(items), attributes);

    items.Clear();
    EXPECT_EQ(items.AttributeCount(), 0u);
    items.AddAttribute(added);
    items.AddValue("only");
    EXPECT_EQ(ValuesOf(items), std::vector<std::string>{"only"});
    EXPECT_EQ(AttributesOf(items), std::vector<ValueAttribute>{added});
}

TEST(AllowedItems, CopiesAreIndependentAndSelfAssignmentKeepsTheLists) {
    AllowedItems items(kValues, kAttributes);
    AllowedItems copy(items);
    AllowedItems assigned;
    assigned = items;
    items.SetDisabled(0, true);
    items.AddValue("changed");
    EXPECT_EQ(ValuesOf(copy), kValues);
    EXPECT_EQ(AttributesOf(copy), kAttributes);
    EXPECT_EQ(ValuesOf(assigned), kValues);
    EXPECT_EQ(AttributesOf(assigned), kAttributes);

    AllowedItems& same = assigned;
    assigned = same;
    EXPECT_EQ(ValuesOf(assigned), kValues);
    EXPECT_EQ(AttributesOf(assigned), kAttributes);
    assigned = AllowedItems();
    EXPECT_EQ(assigned.ValueCount(), 0u);
}

// Through the property: a copy reads its source through the interface, so a value holding a
// zero byte arrives in the copy as the text before it, as it always did.
TEST(AllowedItems, ACopiedStringPropertyGetsItsValuesAsZeroTerminatedTexts) {
    const std::string withZero("on\0off", 6);
    auto* source = dynamic_cast<StringProperty*>(
        StringProperty::Construct(NameAndDescription("mode", ""), "on", {withZero, "other"},
                                  {ValueAttribute("K1", 1, 0, false, ""), ValueAttribute("K2", 2, 0, false, "")}));
    ASSERT_NE(source, nullptr);
    auto* copy = dynamic_cast<StringProperty*>(source->Clone());
    ASSERT_NE(copy, nullptr);

    std::uint32_t count = 0;
    ASSERT_TRUE(copy->HasAllowedValues(count));
    ASSERT_EQ(count, 2u);
    const char* values[2] = {nullptr, nullptr};
    copy->GetAllowedValues(values);
    EXPECT_STREQ(values[0], "on");
    EXPECT_STREQ(values[1], "other");
    // In the copy "on" is an allowed value of its own; in the source only "on\0off" is.
    IStringProperty* copyInterface = copy;
    copyInterface->SetValue("other");
    copyInterface->SetValue("on");
    EXPECT_STREQ(copy->GetValue(), "on");
    EXPECT_STREQ(copy->GetChildKey(), "K1");
    IStringProperty* sourceInterface = source;
    sourceInterface->SetValue("other");
    sourceInterface->SetValue("on");
    EXPECT_STREQ(source->GetValue(), "other");
    copy->Release();
    source->Release();
}

namespace {

// Presents only its first allowed value through the interface, as a subclass may.
class FirstValueOnly : public StringProperty {
public:
    FirstValueOnly()
        : StringProperty(NameAndDescription("first only", ""), "A", {"A", "B"},
                         {ValueAttribute("KA", 1, 0, false, ""), ValueAttribute("KB", 2, 0, false, "")}) {}

    bool HasAllowedValues(std::uint32_t& count) const override {
        StringProperty::HasAllowedValues(count);
        if (count > 1) count = 1;
        return count != 0;
    }
    void GetAllowedValues(const char** out) const override {
        const char* all[2] = {nullptr, nullptr};
        StringProperty::GetAllowedValues(all);
        out[0] = all[0];
    }
};

}  // namespace

// Only a plain string property is copied block for block: a subclass is read through its
// interface, as every copy always was.
TEST(AllowedItems, ACopiedSubclassGetsTheValuesItsInterfacePresents) {
    auto* source = new FirstValueOnly();
    auto* copy = dynamic_cast<StringProperty*>(source->Clone());
    ASSERT_NE(copy, nullptr);
    std::uint32_t count = 0;
    ASSERT_TRUE(copy->HasAllowedValues(count));
    EXPECT_EQ(count, 1u);
    std::vector<ValueAttribute> attributes;
    copy->GetAllowedAttributes(attributes);
    EXPECT_EQ(attributes.size(), 2u);
    copy->Release();
    source->Release();
}
