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

// Whole pieces are narrowed several units at a time without stopping at a zero unit: every
// length around those steps, with a zero unit at every place or none, must give each unit's
// low byte and tell whether a zero was among them.
TEST(NarrowUnitsWithoutZero, AgreesUnitByUnitAtEveryLengthAndZeroPlace) {
    for (std::size_t length = 0; length <= 40; ++length) {
        for (std::size_t zeroAt = 0; zeroAt <= length; ++zeroAt) {  // length: no zero inside
            std::u16string text;
            for (std::size_t i = 0; i < length; ++i) {
                // ASCII, units above 0xFF (one with a zero low byte) and Latin-1 bytes.
                static const char16_t kUnits[] = {u'a', u'Z', 0x4142, 0xFF00, 0x00E9, 0x0152, u' ', 0x7F80};
                text.push_back(i == zeroAt ? u'\0' : kUnits[(i * 5 + length) % 8]);
            }
            std::string expected(length, '?');
            for (std::size_t i = 0; i < length; ++i) expected[i] = static_cast<char>(text[i] & 0xFF);

            std::string written(length + 1, '#');
            const bool noZero = TargetOperations::NarrowUnitsWithoutZero(text.data(), length, &written[0]);
            ASSERT_EQ(noZero, zeroAt == length) << "length " << length << ", zero at " << zeroAt;
            ASSERT_EQ(written.substr(0, length), expected) << "length " << length << ", zero at " << zeroAt;
            ASSERT_EQ(written[length], '#') << "wrote past the count, length " << length;
        }
    }
}
