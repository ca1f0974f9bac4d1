#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "ReferenceCountProbe.h"
#include "property/StringProperty.h"

using namespace TargetOperations;
using PropertyTests::CurrentCount;

namespace {

// A without a key name (it selects by its own text), B with the key name KB.
const ValueAttribute kAttributeA("", 1, 10, false, "SLA");
const ValueAttribute kAttributeB("KB", 2, 20, true, "SLB");
const ValueAttribute kAttributeC("KC", 3, 30, false, "SLC");

StringProperty* MakeString(const std::string& value, const std::vector<std::string>& allowed,
                           const std::vector<ValueAttribute>& attributes) {
    return dynamic_cast<StringProperty*>(
        StringProperty::Construct(NameAndDescription("choice", ""), value, allowed, attributes));
}

StringProperty* MakeAB(const std::string& value) { return MakeString(value, {"A", "B"}, {kAttributeA, kAttributeB}); }

StringProperty* MakeFree(const std::string& value) {
    return dynamic_cast<StringProperty*>(StringProperty::Construct(NameAndDescription("free", ""), value));
}

std::vector<std::string> AllowedOf(const StringProperty* property) {
    std::uint32_t count = 0;
    property->HasAllowedValues(count);
    std::vector<const char*> raw(count, nullptr);
    if (count != 0) property->GetAllowedValues(raw.data());
    return std::vector<std::string>(raw.begin(), raw.end());
}

std::vector<ValueAttribute> AttributesOf(StringProperty* property) {
    std::vector<ValueAttribute> out;
    property->GetAllowedAttributes(out);
    return out;
}

// The five Property fields that a chosen value's attribute sets.
void ExpectFieldsOf(const StringProperty* property, const char* childKey, const ValueAttribute& attribute) {
    EXPECT_STREQ(childKey, property->GetChildKey());
    EXPECT_EQ(attribute.Category(), property->GetCategory());
    EXPECT_EQ(static_cast<std::int32_t>(attribute.EnumValue()), property->GetEnumValue());
    EXPECT_EQ(attribute.HaltCpu(), property->IsHaltCPU());
    EXPECT_EQ(attribute.SameLevelKey(), property->GetSameLevelKey());
}

void Set(StringProperty* property, const char* value) { static_cast<IStringProperty*>(property)->SetValue(value); }

}  // namespace

TEST(StringPropertyTest, ValueOutsideTheListBecomesTheFirstAllowedValueWithItsOwnTextAsChildKey) {
    StringProperty* property = MakeAB("X");
    EXPECT_STREQ("A", property->GetValue());
    ExpectFieldsOf(property, "A", kAttributeA);
    EXPECT_EQ(1u, CurrentCount(property));
    property->Release();
}

TEST(StringPropertyTest, AllowedValueGivenAtConstructionIsKeptWithItsAttribute) {
    StringProperty* property = MakeAB("B");
    EXPECT_STREQ("B", property->GetValue());
    ExpectFieldsOf(property, "KB", kAttributeB);
    property->Release();
}

TEST(StringPropertyTest, ShortConstructHasNoAllowedValuesAndKeepsTheValue) {
    IStringProperty* property = StringProperty::Construct(NameAndDescription("free", "d"), "anything");
    ASSERT_NE(nullptr, property);
    EXPECT_STREQ("anything", property->GetValue());
    std::uint32_t count = 99;
    EXPECT_FALSE(property->HasAllowedValues(count));
    EXPECT_EQ(0u, count);
    EXPECT_EQ(1u, CurrentCount(property));
    EXPECT_EQ(1u, property->Release());
}

// The constructor would apply the first attribute even if there is none; this build then
// leaves the Property fields alone.
TEST(StringPropertyTest, ImplementationChoiceAllowedValuesWithoutAttributesDoNotCrashTheConstructor) {
    StringProperty* outside = MakeString("X", {"A", "B"}, {});
    EXPECT_STREQ("A", outside->GetValue());
    EXPECT_STREQ("", outside->GetChildKey());
    EXPECT_EQ(0u, outside->GetCategory());
    StringProperty* inside = MakeString("B", {"A", "B"}, {});
    EXPECT_STREQ("B", inside->GetValue());
    EXPECT_STREQ("", inside->GetChildKey());
    outside->Release();
    inside->Release();
}

TEST(StringPropertyTest, SetValueOfAnotherAllowedValueChangesTheValueAndAllFiveFields) {
    StringProperty* property = MakeAB("A");
    Set(property, "B");
    EXPECT_STREQ("B", property->GetValue());
    ExpectFieldsOf(property, "KB", kAttributeB);
    Set(property, "A");
    EXPECT_STREQ("A", property->GetValue());
    ExpectFieldsOf(property, "A", kAttributeA);
    property->Release();
}

TEST(StringPropertyTest, SetValueOfTheSelectedValueChangesNothing) {
    StringProperty* property = MakeAB("A");
    property->SetChildKey("MANUAL");
    property->SetCategory(99);
    Set(property, "A");
    EXPECT_STREQ("A", property->GetValue());
    EXPECT_STREQ("MANUAL", property->GetChildKey());
    EXPECT_EQ(99u, property->GetCategory());
    property->Release();
}

TEST(StringPropertyTest, SetValueOfATextThatIsNotAllowedChangesNothing) {
    StringProperty* property = MakeAB("B");
    Set(property, "C");
    Set(property, "b");
    Set(property, "B ");
    Set(property, "");
    EXPECT_STREQ("B", property->GetValue());
    ExpectFieldsOf(property, "KB", kAttributeB);
    property->Release();
}

TEST(StringPropertyTest, WithoutAllowedValuesAnyTextIsAcceptedAndTheChildKeyIsUntouched) {
    StringProperty* property = MakeFree("start");
    property->SetChildKey("KEEP");
    Set(property, "anything at all");
    EXPECT_STREQ("anything at all", property->GetValue());
    Set(property, "");
    EXPECT_STREQ("", property->GetValue());
    EXPECT_STREQ("KEEP", property->GetChildKey());
    property->Release();
}

// Null texts are not for the setters; this build ignores them.
TEST(StringPropertyTest, ImplementationChoiceNullValuesAreIgnored) {
    StringProperty* freeText = MakeFree("start");
    Set(freeText, nullptr);
    EXPECT_STREQ("start", freeText->GetValue());
    StringProperty* choice = MakeAB("B");
    Set(choice, nullptr);
    choice->AddAllowedValues(nullptr);
    EXPECT_STREQ("B", choice->GetValue());
    EXPECT_EQ(2u, AllowedOf(choice).size());
    choice->DisableAllowed(nullptr, false);
    EXPECT_FALSE(choice->IsDisabledAllowed(nullptr));
    freeText->Release();
    choice->Release();
}

TEST(StringPropertyTest, DisabledAllowedValueCanStillBeSelected) {
    StringProperty* property = MakeAB("A");
    property->DisableAllowed("B", false);
    Set(property, "B");
    EXPECT_STREQ("B", property->GetValue());
    ExpectFieldsOf(property, "KB", kAttributeB);
    property->Release();
}

TEST(StringPropertyTest, FirstAddAllowedValuesReplacesTheValueAndRepeatingItAddsNothing) {
    StringProperty* property = MakeFree("old");
    property->AddAllowedValues("first");
    EXPECT_STREQ("first", property->GetValue());
    property->AddAllowedValues("first");
    EXPECT_EQ(std::vector<std::string>({"first"}), AllowedOf(property));
    property->AddAllowedValues("second");
    property->AddAllowedValues("first");
    property->AddAllowedValues("third");
    EXPECT_EQ(std::vector<std::string>({"first", "second", "third"}), AllowedOf(property));
    EXPECT_STREQ("first", property->GetValue());
    property->Release();
}

TEST(StringPropertyTest, FieldsFollowTheSelectionAsSoonAsItsAttributeArrives) {
    StringProperty* property = MakeFree("old");
    property->AddAllowedValues("A");
    EXPECT_STREQ("", property->GetChildKey());  // no attribute yet
    property->AddAllowedAttributes(kAttributeB);
    ExpectFieldsOf(property, "KB", kAttributeB);
    property->AddAllowedValues("B");
    property->AddAllowedAttributes(kAttributeC);
    ExpectFieldsOf(property, "KB", kAttributeB);  // A is still selected
    Set(property, "B");
    ExpectFieldsOf(property, "KC", kAttributeC);
    property->Release();
}

TEST(StringPropertyTest, AddAllowedValuesAppliesAnAttributeThatArrivedFirst) {
    StringProperty* property = MakeFree("old");
    property->AddAllowedAttributes(kAttributeB);  // no value yet: nothing to apply
    EXPECT_STREQ("", property->GetChildKey());
    property->AddAllowedValues("A");
    EXPECT_STREQ("A", property->GetValue());
    ExpectFieldsOf(property, "KB", kAttributeB);
    property->Release();
}

TEST(StringPropertyTest, DuplicateAttributeIsDroppedAndLaterValuesFallOutOfStep) {
    StringProperty* property = MakeFree("");
    property->AddAllowedValues("A");
    property->AddAllowedAttributes(kAttributeB);
    property->AddAllowedValues("B");
    property->AddAllowedAttributes(kAttributeB);  // equal to the first: dropped
    property->AddAllowedValues("C");
    property->AddAllowedAttributes(kAttributeC);
    const std::vector<ValueAttribute> attributes = AttributesOf(property);
    ASSERT_EQ(2u, attributes.size());
    EXPECT_TRUE(attributes[0] == kAttributeB);
    EXPECT_TRUE(attributes[1] == kAttributeC);
    // B now sits opposite C's attribute, and C has none.
    Set(property, "B");
    ExpectFieldsOf(property, "KC", kAttributeC);
    property->SetChildKey("BEFORE");
    Set(property, "C");
    EXPECT_STREQ("C", property->GetValue());
    EXPECT_STREQ("BEFORE", property->GetChildKey());
    property->Release();
}

TEST(StringPropertyTest, AttributeThatDiffersOnlyInTheDisabledFlagIsNotADuplicate) {
    StringProperty* property = MakeString("A", {"A", "B"}, {kAttributeA});
    property->DisableAllowed("A", false);
    property->AddAllowedAttributes(kAttributeA);
    EXPECT_EQ(2u, AttributesOf(property).size());
    property->Release();
}

TEST(StringPropertyTest, GetAllowedAttributesAppendsBehindExistingEntries) {
    StringProperty* property = MakeAB("A");
    std::vector<ValueAttribute> out{kAttributeC};
    property->GetAllowedAttributes(out);
    ASSERT_EQ(3u, out.size());
    EXPECT_TRUE(out[0] == kAttributeC);
    EXPECT_TRUE(out[1] == kAttributeA);
    EXPECT_TRUE(out[2] == kAttributeB);
    property->Release();
}

TEST(StringPropertyTest, DisableAllowedIsInvertedFalseDisablesAndTrueEnables) {
    StringProperty* property = MakeAB("A");
    EXPECT_FALSE(property->IsDisabledAllowed("A"));
    property->DisableAllowed("A", false);
    EXPECT_TRUE(property->IsDisabledAllowed("A"));
    EXPECT_FALSE(property->IsDisabledAllowed("B"));
    property->DisableAllowed("A", true);
    EXPECT_FALSE(property->IsDisabledAllowed("A"));
    property->Release();
}

TEST(StringPropertyTest, UnknownValueIsNeverDisabledAndDisablingItChangesNothing) {
    StringProperty* property = MakeAB("A");
    const std::vector<ValueAttribute> before = AttributesOf(property);
    property->DisableAllowed("Z", false);
    property->DisableAllowed("a", false);
    EXPECT_FALSE(property->IsDisabledAllowed("Z"));
    const std::vector<ValueAttribute> after = AttributesOf(property);
    ASSERT_EQ(before.size(), after.size());
    for (std::size_t i = 0; i < before.size(); ++i) EXPECT_TRUE(before[i] == after[i]) << i;
    property->Release();
}

TEST(StringPropertyTest, DisableAllowedMarksEveryPositionOfARepeatedValue) {
    // The constructor copies the list as given, repeats included.
    StringProperty* property = MakeString("A", {"A", "B", "A"}, {kAttributeA, kAttributeB, kAttributeC});
    property->DisableAllowed("A", false);
    const std::vector<ValueAttribute> attributes = AttributesOf(property);
    ASSERT_EQ(3u, attributes.size());
    EXPECT_TRUE(attributes[0].IsDisabled());
    EXPECT_FALSE(attributes[1].IsDisabled());
    EXPECT_TRUE(attributes[2].IsDisabled());
    property->Release();
}

TEST(StringPropertyTest, IsDisabledAllowedReadsTheFirstPositionOfARepeatedValue) {
    ValueAttribute disabledC = kAttributeC;
    disabledC.SetDisabled(true);
    StringProperty* firstEnabled = MakeString("A", {"A", "B", "A"}, {kAttributeA, kAttributeB, disabledC});
    EXPECT_FALSE(firstEnabled->IsDisabledAllowed("A"));
    ValueAttribute disabledA = kAttributeA;
    disabledA.SetDisabled(true);
    StringProperty* firstDisabled = MakeString("A", {"A", "B", "A"}, {disabledA, kAttributeB, kAttributeC});
    EXPECT_TRUE(firstDisabled->IsDisabledAllowed("A"));
    firstEnabled->Release();
    firstDisabled->Release();
}

// Values past the end of the attributes have nothing to mark; this build skips them.
TEST(StringPropertyTest, ImplementationChoiceDisablingAValueWithoutAttributeDoesNothing) {
    StringProperty* property = MakeString("A", {"A", "B"}, {kAttributeA});
    property->DisableAllowed("B", false);
    EXPECT_FALSE(property->IsDisabledAllowed("B"));
    const std::vector<ValueAttribute> attributes = AttributesOf(property);
    ASSERT_EQ(1u, attributes.size());
    EXPECT_FALSE(attributes[0].IsDisabled());
    property->Release();
}

TEST(StringPropertyTest, NonEditablePropertyPresentsNoAllowedValues) {
    StringProperty* property = MakeString("A", {"A", "B", "C"}, {kAttributeA, kAttributeB, kAttributeC});
    std::uint32_t count = 0;
    EXPECT_TRUE(property->HasAllowedValues(count));
    EXPECT_EQ(3u, count);
    property->SetEditable(false);
    count = 99;
    EXPECT_FALSE(property->HasAllowedValues(count));
    EXPECT_EQ(0u, count);
    // Still a choice underneath: the list limits SetValue.
    Set(property, "free text");
    EXPECT_STREQ("A", property->GetValue());
    Set(property, "C");
    EXPECT_STREQ("C", property->GetValue());
    property->Release();
}

TEST(StringPropertyTest, GetAllowedValuesWritesThePointersInOrder) {
    StringProperty* property = MakeString("A", {"A", "B", "C"}, {kAttributeA, kAttributeB, kAttributeC});
    const char* out[4] = {nullptr, nullptr, nullptr, "sentinel"};
    property->GetAllowedValues(out);
    EXPECT_STREQ("A", out[0]);
    EXPECT_STREQ("B", out[1]);
    EXPECT_STREQ("C", out[2]);
    EXPECT_STREQ("sentinel", out[3]);
    property->Release();
}

TEST(StringPropertyTest, ClearAllAllowedKeepsTheValueAndChildKey) {
    StringProperty* property = MakeAB("B");
    property->ClearAllAllowed();
    EXPECT_STREQ("B", property->GetValue());
    ExpectFieldsOf(property, "KB", kAttributeB);
    std::uint32_t count = 99;
    EXPECT_FALSE(property->HasAllowedValues(count));
    EXPECT_EQ(0u, count);
    EXPECT_TRUE(AttributesOf(property).empty());
    Set(property, "now free");
    EXPECT_STREQ("now free", property->GetValue());
    EXPECT_STREQ("KB", property->GetChildKey());
    property->Release();
}

TEST(StringPropertyTest, UpdateChildKeyDoesNothingForAValueWhosePositionHasNoAttribute) {
    StringProperty* property = MakeString("A", {"A", "B"}, {kAttributeC});
    ExpectFieldsOf(property, "KC", kAttributeC);
    Set(property, "B");
    EXPECT_STREQ("B", property->GetValue());
    ExpectFieldsOf(property, "KC", kAttributeC);
    property->UpdateChildKey();
    ExpectFieldsOf(property, "KC", kAttributeC);
    property->Release();
}

TEST(StringPropertyTest, UpdateChildKeyAppliesTheAttributeOfTheCurrentValue) {
    StringProperty* property = MakeAB("B");
    property->SetChildKey("OTHER");
    property->SetCategory(0);
    property->SetHaltCPU(false);
    property->UpdateChildKey();
    ExpectFieldsOf(property, "KB", kAttributeB);
    property->Release();
}

TEST(StringPropertyTest, ReplacableAllowedIsZeroAfterConstructionAndStoredAsGiven) {
    StringProperty* property = MakeAB("A");
    EXPECT_EQ(0u, static_cast<std::uint32_t>(property->IsReplacableAllowed()));
    property->SetReplacableAllowed(static_cast<eREPLACABLE>(2));
    EXPECT_EQ(2u, static_cast<std::uint32_t>(property->IsReplacableAllowed()));
    EXPECT_EQ(0u, static_cast<std::uint32_t>(property->IsReplacable()));
    property->Release();
}

TEST(StringPropertyTest, CopyOfAnEditablePropertyCarriesValuesAttributesAndValue) {
    StringProperty* source = MakeAB("B");
    source->SetReplacableAllowed(static_cast<eREPLACABLE>(1));
    source->DisableAllowed("A", false);
    auto* copy = dynamic_cast<StringProperty*>(source->Clone());
    ASSERT_NE(nullptr, copy);
    EXPECT_STREQ("B", copy->GetValue());
    EXPECT_EQ(std::vector<std::string>({"A", "B"}), AllowedOf(copy));
    const std::vector<ValueAttribute> attributes = AttributesOf(copy);
    ASSERT_EQ(2u, attributes.size());
    EXPECT_TRUE(attributes[0].IsDisabled());
    EXPECT_TRUE(attributes[1] == kAttributeB);
    EXPECT_TRUE(copy->IsDisabledAllowed("A"));
    EXPECT_EQ(1u, static_cast<std::uint32_t>(copy->IsReplacableAllowed()));
    ExpectFieldsOf(copy, "KB", kAttributeB);
    copy->Release();
    source->Release();
}

TEST(StringPropertyTest, CopyOfANonEditablePropertyHasTheAttributesButNoAllowedValues) {
    StringProperty* source = MakeAB("B");
    source->SetEditable(false);
    auto* copy = dynamic_cast<StringProperty*>(source->Clone());
    ASSERT_NE(nullptr, copy);
    EXPECT_EQ(2u, AttributesOf(copy).size());
    copy->SetEditable(true);
    std::uint32_t count = 99;
    EXPECT_FALSE(copy->HasAllowedValues(count));
    EXPECT_EQ(0u, count);
    // Without allowed values the copy takes any text.
    Set(copy, "free");
    EXPECT_STREQ("free", copy->GetValue());
    copy->Release();
    source->Release();
}

TEST(StringPropertyTest, CopyMakesNoChildKeyUpdate) {
    StringProperty* source = MakeAB("B");
    source->SetChildKey("MANUAL");
    auto* copy = dynamic_cast<StringProperty*>(source->Clone());
    EXPECT_STREQ("MANUAL", copy->GetChildKey());
    copy->Release();
    source->Release();
}

TEST(StringPropertyTest, StringIsEqualComparesTheValueExactly) {
    StringProperty* a = MakeFree("value");
    StringProperty* b = MakeFree("value");
    b->SetName("other");
    EXPECT_TRUE(a->IsEqual(*b));
    Set(b, "Value");
    EXPECT_FALSE(a->IsEqual(*b));
    Set(b, "value ");
    EXPECT_FALSE(a->IsEqual(*b));
    Set(b, "valu");
    EXPECT_FALSE(a->IsEqual(*b));
    a->Release();
    b->Release();
}
