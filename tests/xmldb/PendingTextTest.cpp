// The reader's character data is narrowed into one reused buffer as each piece comes: what it
// reads must be exactly what narrowing each piece on its own gives.
#include <cstdint>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "xmldb/NarrowText.h"
#include "xmldb/PendingText.h"

using TargetOperations::NarrowText;
using TargetOperations::PendingText;

TEST(PendingText, ReadsTheLastPieceNarrowed) {
    PendingText text;
    EXPECT_EQ(text.Narrowed(), "");
    text.Replace(u"\n      ", 7);
    text.Replace(u"Window low", 10);
    EXPECT_EQ(text.Narrowed(), "Window low");
    EXPECT_EQ(text.Narrowed(), "Window low");
    text.Replace(u"\u0152LX", 3);
    EXPECT_EQ(text.Narrowed(), "RLX");
}

TEST(PendingText, EndsAtAZeroUnitInsideTheCountAndRunsOnPastAShortCount) {
    PendingText text;
    const char16_t inside[] = {u'a', u'b', 0, u'c', 0};
    text.Replace(inside, 4);
    EXPECT_EQ(text.Narrowed(), "ab");
    text.Replace(u"abcdef", 3);
    EXPECT_EQ(text.Narrowed(), "abcdef");
}

TEST(PendingText, ClearAndNullLeaveNoText) {
    PendingText text;
    text.Replace(u"value", 5);
    text.Clear();
    EXPECT_EQ(text.Narrowed(), "");
    text.Replace(u"value", 5);
    EXPECT_EQ(text.Narrowed(), "value");
    text.Replace(nullptr, 5);
    EXPECT_EQ(text.Narrowed(), "");
    text.Replace(u"", 0);
    EXPECT_EQ(text.Narrowed(), "");
    std::string written = "left from before";
    written = text.Narrowed();
    EXPECT_EQ(written, "");
}

// The buffer only grows: a short piece after a long one reads as the short one alone.
TEST(PendingText, AShortPieceAfterALongOneReadsAlone) {
    PendingText text;
    const std::u16string longPiece(200, u'x');
    text.Replace(longPiece.c_str(), longPiece.size());
    EXPECT_EQ(text.Narrowed(), std::string(200, 'x'));
    text.Replace(u"ab", 2);
    EXPECT_EQ(text.Narrowed(), "ab");
    std::string written;
    written = text.Narrowed();
    EXPECT_EQ(written, "ab");
}

TEST(PendingText, AgreesWithNarrowingEachPieceAtOnce) {
    std::uint32_t state = 20261122u;
    const auto next = [&state]() {
        state = state * 1103515245u + 12345u;
        return state >> 8;
    };
    PendingText pending;
    std::string direct;
    for (int round = 0; round < 5000; ++round) {
        std::u16string piece;
        const std::size_t length = next() % 70;
        for (std::size_t i = 0; i < length; ++i) {
            const std::uint32_t pick = next() % 48;
            // Now and then a zero unit, or one whose low byte is zero or above 0x7F.
            piece.push_back(pick == 0   ? u'\0'
                            : pick == 1 ? static_cast<char16_t>(0x4100 + next() % 0x100)
                            : pick == 2 ? static_cast<char16_t>(0xFF00)
                                        : static_cast<char16_t>(u' ' + pick));
        }
        // Now and then the parser's count falls short of the units before the terminator.
        const std::size_t count = next() % 8 == 0 && length != 0 ? length - 1 : length;
        pending.Replace(piece.c_str(), count);
        // A short count runs on to the zero unit that ends the piece.
        direct = NarrowText(piece.c_str());
        // Some pieces are replaced unread, as the blanks between tags are.
        if (next() % 3 != 0) {
            ASSERT_EQ(pending.Narrowed(), direct) << "round " << round;
        }
        std::string written = "left from before";
        written = pending.Narrowed();
        ASSERT_EQ(written, direct) << "round " << round;
    }
}

// The numbers and flags of a database are read from the view Narrowed gives: it ends where
// the text ends and a zero byte follows it, whatever longer text the storage held before.
TEST(PendingText, TheNarrowedViewEndsInAZeroByte) {
    PendingText text;
    text.Replace(u"0x12345678 and more", 19);
    EXPECT_EQ(text.Narrowed(), "0x12345678 and more");
    text.Replace(u"42", 2);
    const std::string_view narrowed = text.Narrowed();
    EXPECT_EQ(narrowed, "42");
    EXPECT_EQ(narrowed.data()[narrowed.size()], '\0');
    text.Clear();
    const std::string_view empty = text.Narrowed();
    EXPECT_TRUE(empty.empty());
    EXPECT_EQ(empty.data()[0], '\0');
}
