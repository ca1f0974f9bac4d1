#include <cstdint>
#include <string>

#include <gtest/gtest.h>

#include "xmldb/NarrowText.h"

using TargetOperations::NarrowText;

TEST(NarrowText, KeepsAsciiUnchanged) { EXPECT_EQ(NarrowText(u"PROPERTY_BOOL"), "PROPERTY_BOOL"); }

TEST(NarrowText, KeepsTheLowByteOfUnitsAboveFF) {
    // U+0152 -> 0x52 'R', U+014E -> 0x4E 'N', U+4141 -> 0x41 'A'.
    EXPECT_EQ(NarrowText(u"\u0152LX"), "RLX");
    EXPECT_EQ(NarrowText(u"\u014EAME"), "NAME");
    EXPECT_EQ(NarrowText(u"x\u4141y"), "xAy");
}

TEST(NarrowText, KeepsLatin1BytesAsTheyAre) {
    const std::string narrowed = NarrowText(u"caf\u00E9");
    ASSERT_EQ(narrowed.size(), 4u);
    EXPECT_EQ(static_cast<unsigned char>(narrowed[3]), 0xE9);
}

TEST(NarrowText, StopsAtTheFirstZeroUnit) {
    const char16_t text[] = {u'a', u'b', 0, u'c', 0};
    EXPECT_EQ(NarrowText(text), "ab");
}

TEST(NarrowText, UnitWhoseLowByteIsZeroIsKeptAsAZeroByte) {
    // U+0100 is not a zero unit; its low byte is 0 and is kept inside the string.
    const char16_t text[] = {u'a', 0x0100, u'b', 0};
    const std::string narrowed = NarrowText(text);
    ASSERT_EQ(narrowed.size(), 3u);
    EXPECT_EQ(narrowed[1], '\0');
    EXPECT_EQ(narrowed[2], 'b');
}

TEST(NarrowText, EmptyAndNullGiveEmptyText) {
    EXPECT_EQ(NarrowText(u""), "");
    EXPECT_EQ(NarrowText(nullptr), "");
}

// The counted form used for character data must read exactly as the plain one.
TEST(NarrowTextCounted, ReadsTheCountedUnits) {
    std::string target = "old content that is longer";
    TargetOperations::NarrowTextInto(u"On", 2, target);
    EXPECT_EQ(target, "On");
}

TEST(NarrowTextCounted, StillEndsAtAZeroUnitInsideTheCount) {
    const char16_t text[] = {u'a', u'b', 0, u'c', 0};
    std::string target;
    TargetOperations::NarrowTextInto(text, 4, target);
    EXPECT_EQ(target, "ab");
}

TEST(NarrowTextCounted, RunsOnToTheZeroUnitWhenTheCountFallsShort) {
    std::string target;
    TargetOperations::NarrowTextInto(u"abcdef", 3, target);
    EXPECT_EQ(target, "abcdef");
}

TEST(NarrowTextCounted, KeepsLowBytesAndEmptyAndNullGiveEmptyText) {
    std::string target = "x";
    TargetOperations::NarrowTextInto(u"\u0152LX", 3, target);
    EXPECT_EQ(target, "RLX");
    TargetOperations::NarrowTextInto(u"", 0, target);
    EXPECT_EQ(target, "");
    target = "x";
    TargetOperations::NarrowTextInto(nullptr, 5, target);
    EXPECT_EQ(target, "");
}

TEST(NarrowTextCounted, AgreesWithThePlainFormOnRandomText) {
    std::uint32_t state = 12345u;
    for (int round = 0; round < 2000; ++round) {
        std::u16string text;
        state = state * 1103515245u + 12345u;
        const std::size_t length = (state >> 16) % 12;
        for (std::size_t i = 0; i < length; ++i) {
            state = state * 1103515245u + 12345u;
            // Mostly ASCII, sometimes a unit above 0xFF, sometimes a zero unit.
            const std::uint32_t pick = (state >> 8) % 20;
            text.push_back(pick == 0 ? u'\0' : pick == 1 ? static_cast<char16_t>(0x4100 + pick) : u'a' + pick);
        }
        std::string counted;
        TargetOperations::NarrowTextInto(text.c_str(), text.size(), counted);
        ASSERT_EQ(counted, NarrowText(text.c_str())) << "round " << round;
    }
}
