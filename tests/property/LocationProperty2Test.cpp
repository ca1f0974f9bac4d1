#include <gtest/gtest.h>

#include <cstdint>

#include "ReferenceCountProbe.h"
#include "property/LocationProperty2.h"

using namespace TargetOperations;
using PropertyTests::CurrentCount;

namespace {

LocationProperty2* MakeWide(std::uint64_t value, std::uint32_t page = 0, std::uint32_t cookie = 0) {
    return dynamic_cast<LocationProperty2*>(
        LocationProperty2::Construct(NameAndDescription("wide", ""), value, page, cookie));
}

std::uint64_t Value64(const LocationProperty2* location) {
    std::uint32_t page = 0;
    return location->GetValue64(page).GetAddress();
}

std::uint32_t PageOf(const LocationProperty2* location) {
    std::uint32_t page = 0xDEAD;
    location->GetValue64(page);
    return page;
}

}  // namespace

TEST(LocationProperty2Test, ShortConstructGivesPageZeroAndCookieAllOnes) {
    ILocationProperty2* location = LocationProperty2::Construct(NameAndDescription("wide", ""), 0x1234567890ull);
    ASSERT_NE(nullptr, location);
    std::uint32_t page = 0xDEAD;
    EXPECT_EQ(0x1234567890ull, location->GetValue64(page).GetAddress());
    EXPECT_EQ(0u, page);
    EXPECT_EQ(0xFFFFFFFFu, location->GetCookie());
    EXPECT_EQ(1u, CurrentCount(location));
    EXPECT_EQ(1u, location->Release());
}

TEST(LocationProperty2Test, FullConstructStoresValuePageAndCookieUnchanged) {
    LocationProperty2* location = MakeWide(0xFFFFFFFFFFFFFFFFull, 9, 11);
    std::uint32_t page = 0;
    EXPECT_EQ(0xFFFFFFFFFFFFFFFFull, location->GetValue64(page).GetAddress());
    EXPECT_EQ(9u, page);
    EXPECT_EQ(11u, location->GetCookie());
    location->Release();
}

TEST(LocationProperty2Test, ThirtyTwoBitViewReturnsTheLowHalf) {
    LocationProperty2* location = MakeWide(0x1234567890ull);
    ILocationProperty* narrow = location;
    std::uint32_t page = 0xDEAD;
    EXPECT_EQ(0x34567890u, narrow->GetValue(page));
    EXPECT_EQ(0u, page);
    location->Release();
}

TEST(LocationProperty2Test, ThirtyTwoBitSetValueReplacesTheWholeValue) {
    LocationProperty2* location = MakeWide(0x1234567890ull);
    ILocationProperty* narrow = location;
    narrow->SetValue(5, 0);
    EXPECT_EQ(5u, Value64(location));
    narrow->SetValue(6, 1);
    EXPECT_EQ(5u, Value64(location));
    location->Release();
}

TEST(LocationProperty2Test, SetValue64OnPageZeroIsTakenAndOnAnyOtherPageIgnored) {
    LocationProperty2* location = MakeWide(1);
    location->SetPage(4);
    ILocationProperty2* wide = location;
    wide->SetValue64(Debugger::Address(0xF00000000ull), 0);
    EXPECT_EQ(0xF00000000ull, Value64(location));
    EXPECT_EQ(4u, PageOf(location));
    wide->SetValue64(Debugger::Address(0x1ull), 4);
    EXPECT_EQ(0xF00000000ull, Value64(location));
    EXPECT_EQ(4u, PageOf(location));
    location->Release();
}

TEST(LocationProperty2Test, SetPageIsReportedWhileTheAllowedPagesStayPageZero) {
    LocationProperty2* location = MakeWide(0x10);
    location->SetPage(3);
    std::uint32_t page = 0;
    static_cast<ILocationProperty*>(location)->GetValue(page);
    EXPECT_EQ(3u, page);
    EXPECT_EQ(1u, location->NumAllowedPages());
    std::uint32_t pages[2] = {0xAA, 0xAA};
    location->GetAllowedPages(pages);
    EXPECT_EQ(0u, pages[0]);
    EXPECT_EQ(0xAAu, pages[1]);
    location->SetCookie(0xBEEF);
    EXPECT_EQ(0xBEEFu, location->GetCookie());
    location->Release();
}

TEST(LocationProperty2Test, IsEqualOnTwoCopiesOfAValueAboveThirtyTwoBitsIsFalseAndTakesTheOthersPage) {
    LocationProperty2* source = MakeWide(0x100000000ull, 0);
    auto* first = dynamic_cast<LocationProperty2*>(source->Clone());
    auto* second = dynamic_cast<LocationProperty2*>(source->Clone());
    second->SetPage(6);
    EXPECT_FALSE(first->IsEqual(*second));
    EXPECT_EQ(6u, PageOf(first));
    EXPECT_EQ(0x100000000ull, Value64(first));
    first->Release();
    second->Release();
    source->Release();
}

TEST(LocationProperty2Test, IsEqualComparesTheFullValueWithTheOthersLowHalfWithoutPages) {
    LocationProperty2* lowOnly = MakeWide(5, 1);
    LocationProperty2* highAndLow = MakeWide(0x100000005ull, 2);
    EXPECT_TRUE(lowOnly->IsEqual(*highAndLow));
    EXPECT_EQ(2u, PageOf(lowOnly));
    EXPECT_FALSE(highAndLow->IsEqual(*lowOnly));
    EXPECT_EQ(2u, PageOf(highAndLow));
    LocationProperty2* same = MakeWide(5, 8);
    EXPECT_TRUE(same->IsEqual(*lowOnly));  // pages differ, yet equal
    lowOnly->Release();
    highAndLow->Release();
    same->Release();
}

TEST(LocationProperty2Test, TreeComparisonOfCopiesAboveThirtyTwoBitsIsFalse) {
    LocationProperty2* source = MakeWide(0x200000000ull);
    auto* copy = dynamic_cast<Property*>(source->Clone());
    Property* asProperty = source;
    EXPECT_FALSE(asProperty->IsEqual(*copy));
    copy->Release();
    source->Release();
}

TEST(LocationProperty2Test, CloneTakesValuePageAndCookie) {
    LocationProperty2* source = MakeWide(0xABCDEF012345ull, 7, 3);
    auto* copy = dynamic_cast<LocationProperty2*>(source->Clone());
    ASSERT_NE(nullptr, copy);
    EXPECT_EQ(0xABCDEF012345ull, Value64(copy));
    EXPECT_EQ(7u, PageOf(copy));
    EXPECT_EQ(3u, copy->GetCookie());
    copy->Release();
    source->Release();
}
