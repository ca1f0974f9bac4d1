#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

#include "ReferenceCountProbe.h"
#include "property/IntegerProperty.h"

using namespace TargetOperations;
using PropertyTests::CurrentCount;

namespace {

IntegerProperty* MakeInteger(std::uint64_t value, bool hasRange) {
    return dynamic_cast<IntegerProperty*>(IntegerProperty::Construct(NameAndDescription("n", ""), value, hasRange));
}

// Reads the copy through the interface, as Clone hands it out.
IntegerProperty* CloneOf(IntegerProperty* source) {
    return dynamic_cast<IntegerProperty*>(source->Clone());
}

constexpr std::uint64_t kAboveThirtyTwoBits = 0x100000000ull;

}  // namespace

TEST(IntegerPropertyTest, ConstructStoresValueAndAllowedListWithOneReference) {
    std::vector<std::uint64_t> allowed = {3, 1, 3};
    IIntegerProperty* number = IntegerProperty::Construct(NameAndDescription("n", "d"), 77, allowed, false);
    ASSERT_NE(nullptr, number);
    EXPECT_EQ(77u, number->GetValue());
    EXPECT_EQ(1u, CurrentCount(number));
    std::uint64_t out[4] = {0xAA, 0xAA, 0xAA, 0xAA};
    number->GetAllowedValues(out);
    EXPECT_EQ(3u, out[0]);
    EXPECT_EQ(1u, out[1]);
    EXPECT_EQ(3u, out[2]);
    EXPECT_EQ(0xAAu, out[3]);
    EXPECT_EQ(0u, static_cast<std::uint32_t>(number->GetDisplaySuggestion()));
    EXPECT_EQ(1u, number->Release());
}

TEST(IntegerPropertyTest, ConstructDoesNotCheckTheValue) {
    IntegerProperty* number = MakeInteger(kAboveThirtyTwoBits + 5, true);
    EXPECT_EQ(kAboveThirtyTwoBits + 5, number->GetValue());
    number->Release();
}

TEST(IntegerPropertyTest, RangeTenToTwentyRejectsNineAndTwentyOneAndTakesTheBounds) {
    IntegerProperty* number = MakeInteger(15, false);
    number->SetAllowedRange(10, 20);
    IIntegerProperty* asInterface = number;
    asInterface->SetValue(9);
    EXPECT_EQ(15u, number->GetValue());
    asInterface->SetValue(21);
    EXPECT_EQ(15u, number->GetValue());
    asInterface->SetValue(10);
    EXPECT_EQ(10u, number->GetValue());
    asInterface->SetValue(20);
    EXPECT_EQ(20u, number->GetValue());
    std::uint64_t low = 0, high = 0;
    EXPECT_TRUE(number->HasAllowedRange(low, high));
    EXPECT_EQ(10u, low);
    EXPECT_EQ(20u, high);
    number->Release();
}

TEST(IntegerPropertyTest, WithoutRangeEveryValueIsTakenAndTheReportedRangeIsThirtyTwoBits) {
    IntegerProperty* number = MakeInteger(0, false);
    std::uint64_t low = 55, high = 55;
    EXPECT_TRUE(number->HasAllowedRange(low, high));
    EXPECT_EQ(0u, low);
    EXPECT_EQ(0xFFFFFFFFull, high);
    number->SetValue(0xFFFFFFFFFFFFFFFFull);
    EXPECT_EQ(0xFFFFFFFFFFFFFFFFull, number->GetValue());
    number->SetValue(kAboveThirtyTwoBits);
    EXPECT_EQ(kAboveThirtyTwoBits, number->GetValue());
    number->Release();
}

// Bounds are left open when a range is asked for without SetAllowedRange; this build starts
// them at 0..0xFFFFFFFF.
TEST(IntegerPropertyTest, ImplementationChoiceRangeWithoutSetAllowedRangeIsZeroToThirtyTwoBits) {
    IntegerProperty* number = MakeInteger(1, true);
    std::uint64_t low = 55, high = 55;
    EXPECT_TRUE(number->HasAllowedRange(low, high));
    EXPECT_EQ(0u, low);
    EXPECT_EQ(0xFFFFFFFFull, high);
    number->SetValue(0xFFFFFFFFull);
    EXPECT_EQ(0xFFFFFFFFull, number->GetValue());
    number->SetValue(kAboveThirtyTwoBits);
    EXPECT_EQ(0xFFFFFFFFull, number->GetValue());
    number->SetValue(0);
    EXPECT_EQ(0u, number->GetValue());
    number->Release();
}

TEST(IntegerPropertyTest, InvertedRangeIsStoredAndRejectsEveryValue) {
    IntegerProperty* number = MakeInteger(15, false);
    number->SetAllowedRange(20, 10);
    std::uint64_t low = 0, high = 0;
    EXPECT_TRUE(number->HasAllowedRange(low, high));
    EXPECT_EQ(20u, low);
    EXPECT_EQ(10u, high);
    for (std::uint64_t v : {0ull, 10ull, 15ull, 20ull, 25ull}) number->SetValue(v);
    EXPECT_EQ(15u, number->GetValue());
    number->Release();
}

TEST(IntegerPropertyTest, AllowedValuesAreNeverAnnouncedEvenAfterAddAllowedValue) {
    std::vector<std::uint64_t> allowed = {1, 2};
    IntegerProperty* number = dynamic_cast<IntegerProperty*>(
        IntegerProperty::Construct(NameAndDescription("n", ""), 1, allowed, false));
    number->AddAllowedValue(5);
    number->AddAllowedValue(5);
    std::uint32_t count = 99;
    EXPECT_FALSE(number->HasAllowedValues(count));
    EXPECT_EQ(0u, count);
    // They are stored, in order and with duplicates, behind the ones given at construction.
    std::uint64_t out[5] = {0, 0, 0, 0, 0xAA};
    number->GetAllowedValues(out);
    EXPECT_EQ(1u, out[0]);
    EXPECT_EQ(2u, out[1]);
    EXPECT_EQ(5u, out[2]);
    EXPECT_EQ(5u, out[3]);
    EXPECT_EQ(0xAAu, out[4]);
    number->Release();
}

TEST(IntegerPropertyTest, AllowedValuesDoNotLimitSetValue) {
    std::vector<std::uint64_t> allowed = {1, 2};
    IIntegerProperty* number = IntegerProperty::Construct(NameAndDescription("n", ""), 1, allowed, false);
    number->SetValue(7);
    EXPECT_EQ(7u, number->GetValue());
    number->Release();
}

TEST(IntegerPropertyTest, DisplaySuggestionIsStoredAsGiven) {
    IntegerProperty* number = MakeInteger(0, false);
    EXPECT_EQ(IIntegerProperty::DisplayDefault, number->GetDisplaySuggestion());
    number->SetDisplaySuggestion(IIntegerProperty::DisplayDecimal);
    EXPECT_EQ(1u, static_cast<std::uint32_t>(number->GetDisplaySuggestion()));
    number->SetDisplaySuggestion(static_cast<IIntegerProperty::_DisplayType>(7));
    EXPECT_EQ(7u, static_cast<std::uint32_t>(number->GetDisplaySuggestion()));
    number->Release();
}

TEST(IntegerPropertyTest, CopyOfAnIntegerWithoutRangeIgnoresValuesAboveThirtyTwoBits) {
    IntegerProperty* source = MakeInteger(3, false);
    IntegerProperty* copy = CloneOf(source);
    ASSERT_NE(nullptr, copy);
    EXPECT_EQ(3u, copy->GetValue());
    copy->SetValue(kAboveThirtyTwoBits);
    EXPECT_EQ(3u, copy->GetValue());
    source->SetValue(kAboveThirtyTwoBits);
    EXPECT_EQ(kAboveThirtyTwoBits, source->GetValue());
    std::uint64_t low = 55, high = 55;
    EXPECT_TRUE(copy->HasAllowedRange(low, high));
    EXPECT_EQ(0u, low);
    EXPECT_EQ(0xFFFFFFFFull, high);
    copy->Release();
    source->Release();
}

TEST(IntegerPropertyTest, CopyTakesTheSourcesRangeValueAndDisplaySuggestion) {
    IntegerProperty* source = MakeInteger(12, false);
    source->SetAllowedRange(10, 20);
    source->SetDisplaySuggestion(IIntegerProperty::DisplayDecimal);
    IntegerProperty* copy = CloneOf(source);
    EXPECT_EQ(12u, copy->GetValue());
    EXPECT_EQ(IIntegerProperty::DisplayDecimal, copy->GetDisplaySuggestion());
    std::uint64_t low = 0, high = 0;
    EXPECT_TRUE(copy->HasAllowedRange(low, high));
    EXPECT_EQ(10u, low);
    EXPECT_EQ(20u, high);
    copy->SetValue(21);
    EXPECT_EQ(12u, copy->GetValue());
    copy->SetValue(20);
    EXPECT_EQ(20u, copy->GetValue());
    copy->Release();
    source->Release();
}

TEST(IntegerPropertyTest, CopyDoesNotCarryTheAllowedList) {
    std::vector<std::uint64_t> allowed = {4, 5, 6};
    IntegerProperty* source = dynamic_cast<IntegerProperty*>(
        IntegerProperty::Construct(NameAndDescription("n", ""), 4, allowed, false));
    IntegerProperty* copy = CloneOf(source);
    std::uint64_t out[3] = {0xAA, 0xAA, 0xAA};
    copy->GetAllowedValues(out);
    EXPECT_EQ(0xAAu, out[0]);
    EXPECT_EQ(0xAAu, out[1]);
    EXPECT_EQ(0xAAu, out[2]);
    copy->Release();
    source->Release();
}

TEST(IntegerPropertyTest, IntegerIsEqualComparesOnlyTheValue) {
    IntegerProperty* a = MakeInteger(9, false);
    IntegerProperty* b = MakeInteger(9, true);
    b->SetName("other");
    b->SetDisplaySuggestion(IIntegerProperty::DisplayDecimal);
    EXPECT_TRUE(a->IsEqual(*b));
    b->SetValue(10);
    EXPECT_FALSE(a->IsEqual(*b));
    a->Release();
    b->Release();
}
