#include <gtest/gtest.h>

#include <cstdint>

#include "ReferenceCountProbe.h"
#include "property/LocationProperty.h"

using namespace TargetOperations;
using PropertyTests::CurrentCount;

namespace {

LocationProperty* MakeLocation(std::uint32_t value, std::uint32_t page, std::uint32_t cookie) {
    return dynamic_cast<LocationProperty*>(
        LocationProperty::Construct(NameAndDescription("loc", ""), value, page, cookie));
}

std::uint32_t PageOf(const ILocationProperty* location) {
    std::uint32_t page = 0xDEAD;
    location->GetValue(page);
    return page;
}

}  // namespace

TEST(LocationPropertyTest, ShortConstructGivesPageZeroAndCookieAllOnes) {
    ILocationProperty* location = LocationProperty::Construct(NameAndDescription("loc", ""), 0x1234);
    ASSERT_NE(nullptr, location);
    std::uint32_t page = 0xDEAD;
    EXPECT_EQ(0x1234u, location->GetValue(page));
    EXPECT_EQ(0u, page);
    EXPECT_EQ(0xFFFFFFFFu, location->GetCookie());
    EXPECT_EQ(1u, CurrentCount(location));
    EXPECT_EQ(1u, location->Release());
}

TEST(LocationPropertyTest, FullConstructStoresValuePageAndCookieUnchanged) {
    LocationProperty* location = MakeLocation(0xFFFFFFFFu, 7, 42);
    std::uint32_t page = 0;
    EXPECT_EQ(0xFFFFFFFFu, location->GetValue(page));
    EXPECT_EQ(7u, page);
    EXPECT_EQ(42u, location->GetCookie());
    location->Release();
}

TEST(LocationPropertyTest, SetValueOnPageZeroIsTakenAndOnAnyOtherPageIgnored) {
    LocationProperty* location = MakeLocation(0, 0, 0);
    ILocationProperty* asInterface = location;
    asInterface->SetValue(0x1000, 0);
    std::uint32_t page = 0xDEAD;
    EXPECT_EQ(0x1000u, asInterface->GetValue(page));
    EXPECT_EQ(0u, page);
    asInterface->SetValue(0x2000, 1);
    EXPECT_EQ(0x1000u, asInterface->GetValue(page));
    EXPECT_EQ(0u, page);
    asInterface->SetValue(0x3000, 0xFFFFFFFFu);
    EXPECT_EQ(0x1000u, asInterface->GetValue(page));
    location->Release();
}

TEST(LocationPropertyTest, SetValueNeverChangesThePage) {
    LocationProperty* location = MakeLocation(0, 0, 0);
    location->SetPage(3);
    location->SetValue(0x1000, 0);
    std::uint32_t page = 0;
    EXPECT_EQ(0x1000u, location->GetValue(page));
    EXPECT_EQ(3u, page);
    location->SetValue(0x2000, 3);  // the stored page does not make page 3 allowed
    EXPECT_EQ(0x1000u, location->GetValue(page));
    EXPECT_EQ(3u, page);
    location->Release();
}

TEST(LocationPropertyTest, SetPageIsReportedWhileTheAllowedPagesStayPageZero) {
    LocationProperty* location = MakeLocation(0x10, 0, 0);
    location->SetPage(3);
    EXPECT_EQ(3u, PageOf(location));
    EXPECT_EQ(1u, location->NumAllowedPages());
    std::uint32_t pages[2] = {0xAA, 0xAA};
    location->GetAllowedPages(pages);
    EXPECT_EQ(0u, pages[0]);
    EXPECT_EQ(0xAAu, pages[1]);
    location->Release();
}

TEST(LocationPropertyTest, CookieIsStoredAsGiven) {
    LocationProperty* location = MakeLocation(0, 0, 1);
    location->SetCookie(0xCAFEu);
    EXPECT_EQ(0xCAFEu, location->GetCookie());
    location->Release();
}

TEST(LocationPropertyTest, LocationIsEqualComparesValueAndPageButNotTheCookie) {
    LocationProperty* a = MakeLocation(0x10, 2, 1);
    LocationProperty* b = MakeLocation(0x10, 2, 99);
    b->SetName("other");
    EXPECT_TRUE(a->IsEqual(*b));
    b->SetPage(0);
    EXPECT_FALSE(a->IsEqual(*b));
    EXPECT_EQ(2u, PageOf(a));  // the comparison does not touch the caller's page
    b->SetPage(2);
    b->SetValue(0x11, 0);
    EXPECT_FALSE(a->IsEqual(*b));
    a->Release();
    b->Release();
}

TEST(LocationPropertyTest, CloneTakesValuePageAndCookie) {
    LocationProperty* source = MakeLocation(0xABCD, 5, 77);
    auto* copy = dynamic_cast<LocationProperty*>(source->Clone());
    ASSERT_NE(nullptr, copy);
    std::uint32_t page = 0;
    EXPECT_EQ(0xABCDu, copy->GetValue(page));
    EXPECT_EQ(5u, page);
    EXPECT_EQ(77u, copy->GetCookie());
    copy->Release();
    source->Release();
}
