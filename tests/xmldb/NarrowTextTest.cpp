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
