#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <stdexcept>
#include <string>

#include "support/uString.h"

using KW_MBR::source_utilities_error;
using KW_MBR::uString;

namespace {

template <typename T>
std::string ToNumericFailure(const char* text) {
    try {
        uString::ToNumeric<T>(text);
    } catch (const uString::error& e) {
        return e.what();
    }
    return "no exception";
}

}  // namespace

TEST(ToNumericTest, NullTextRaises) {
    EXPECT_EQ("unable to convert null string to numeric", ToNumericFailure<std::uint64_t>(nullptr));
}

TEST(ToNumericTest, EmptyTextRaises) {
    EXPECT_EQ("unable to convert empty string to numeric", ToNumericFailure<std::uint64_t>(""));
}

TEST(ToNumericTest, HexadecimalPrefixInBothCases) {
    EXPECT_EQ(31u, uString::ToNumeric<std::uint64_t>("0x1F"));
    EXPECT_EQ(31u, uString::ToNumeric<std::uint64_t>("0X1f"));
    EXPECT_EQ(0xFFFFFFFFFFFFFFFFull, uString::ToNumeric<std::uint64_t>("0xFFFFFFFFFFFFFFFF"));
}

TEST(ToNumericTest, LeadingZeroMeansOctal) {
    EXPECT_EQ(15u, uString::ToNumeric<std::uint64_t>("017"));
    EXPECT_EQ(8u, uString::ToNumeric<std::uint64_t>("010"));
}

TEST(ToNumericTest, OctalStopsAtEightAndNine) {
    EXPECT_EQ(0u, uString::ToNumeric<std::uint64_t>("08"));
    EXPECT_EQ(0u, uString::ToNumeric<std::uint64_t>("09"));
    EXPECT_EQ(7u, uString::ToNumeric<std::uint64_t>("078"));
}

TEST(ToNumericTest, ZeroAlone) { EXPECT_EQ(0u, uString::ToNumeric<std::uint64_t>("0")); }

TEST(ToNumericTest, HexPrefixWithoutDigits) {
    EXPECT_EQ(0u, uString::ToNumeric<std::uint64_t>("0x"));
    EXPECT_EQ(0u, uString::ToNumeric<std::uint64_t>("0X"));
}

TEST(ToNumericTest, HexStopsAtFirstNonHexCharacter) {
    EXPECT_EQ(0xABu, uString::ToNumeric<std::uint64_t>("0xABzz"));
    EXPECT_EQ(0u, uString::ToNumeric<std::uint64_t>("0xg1"));
}

TEST(ToNumericTest, DecimalWithTrailingText) { EXPECT_EQ(12u, uString::ToNumeric<std::uint64_t>("12abc")); }

TEST(ToNumericTest, TextWithoutLeadingDigitGivesZero) {
    EXPECT_EQ(0u, uString::ToNumeric<std::uint64_t>("abc"));
    EXPECT_EQ(0u, uString::ToNumeric<std::uint64_t>("x12"));
}

TEST(ToNumericTest, LeadingBlanksAreSkipped) {
    EXPECT_EQ(42u, uString::ToNumeric<std::uint64_t>("  42"));
    EXPECT_EQ(42u, uString::ToNumeric<std::uint64_t>("\t42 "));
}

TEST(ToNumericTest, BlanksBeforeHexPrefixAreNotAPrefix) {
    EXPECT_EQ(0u, uString::ToNumeric<std::uint64_t>(" 0x1F"));
}

TEST(ToNumericTest, MinusBeforeHexPrefixIsNotAPrefix) {
    EXPECT_EQ(0, uString::ToNumeric<std::int64_t>("-0x1F"));
    EXPECT_EQ(-12, uString::ToNumeric<std::int64_t>("-12"));
}

TEST(ToNumericTest, PlainDecimal) {
    EXPECT_EQ(1234567890123ull, uString::ToNumeric<std::uint64_t>("1234567890123"));
    EXPECT_EQ(18446744073709551615ull, uString::ToNumeric<std::uint64_t>("18446744073709551615"));
}

TEST(ToNumericTest, OverflowGivesTheTypesLimit) {
    EXPECT_EQ(std::numeric_limits<std::uint64_t>::max(), uString::ToNumeric<std::uint64_t>("99999999999999999999999"));
    EXPECT_EQ(std::numeric_limits<std::int32_t>::max(), uString::ToNumeric<std::int32_t>("99999999999"));
}

TEST(ToNumericTest, EightBitTargetsReadNumbersNotCharacters) {
    EXPECT_EQ(65, uString::ToNumeric<std::uint8_t>("65"));
    EXPECT_EQ(65, uString::ToNumeric<std::int8_t>("65"));
    EXPECT_EQ(-5, uString::ToNumeric<std::int8_t>("-5"));
    EXPECT_EQ(255, uString::ToNumeric<std::uint8_t>("0xFF"));
    EXPECT_EQ(8, uString::ToNumeric<std::uint8_t>("010"));
}

TEST(ToNumericTest, EightBitTargetsNarrowTheThirtyTwoBitValue) {
    EXPECT_EQ(44, uString::ToNumeric<std::uint8_t>("300"));  // 300 mod 256
}

TEST(ToNumericTest, EightBitTargetsStillRaiseForNullAndEmpty) {
    EXPECT_EQ("unable to convert null string to numeric", ToNumericFailure<std::uint8_t>(nullptr));
    EXPECT_EQ("unable to convert empty string to numeric", ToNumericFailure<std::int8_t>(""));
}

TEST(ToNumericTest, ThirtyTwoBitTarget) {
    EXPECT_EQ(4294967295u, uString::ToNumeric<std::uint32_t>("0xFFFFFFFF"));
    EXPECT_EQ(4242u, uString::ToNumeric<std::uint32_t>("4242"));
}

TEST(ToNumericTest, ErrorIsCaughtByEveryBase) {
    EXPECT_THROW(uString::ToNumeric<std::uint64_t>(""), source_utilities_error);
    EXPECT_THROW(uString::ToNumeric<std::uint64_t>(""), std::runtime_error);
    EXPECT_THROW(uString::ToNumeric<std::uint64_t>(""), std::exception);
}

TEST(ToStringTest, AppendsPlainDecimalWithZeroArguments) {
    std::string out = "n=";
    uString::ToString(out, static_cast<std::uint32_t>(4242), {}, 0, 0, 0);
    EXPECT_EQ("n=4242", out);
    uString::ToString(out, static_cast<std::uint64_t>(18446744073709551615ull));
    EXPECT_EQ("n=424218446744073709551615", out);
}

TEST(ToStringTest, WidthFillAndAdjustmentApplyWhenNonZero) {
    std::string out;
    uString::ToString(out, static_cast<std::uint32_t>(7), std::ios_base::left, 0, 4, '*');
    EXPECT_EQ("7***", out);
    out.clear();
    uString::ToString(out, static_cast<std::uint64_t>(7), {}, 0, 3, 0);
    EXPECT_EQ("  7", out);  // the default fill is a blank
    out.clear();
    uString::ToString(out, static_cast<std::uint32_t>(42), {}, 0, 4, '0');
    EXPECT_EQ("0042", out);
}

TEST(ToStringTest, FlagsAreAddedToTheDefaultsSoDecimalStays) {
    // A base flag is added next to the default decimal one: with two base bits set the
    // stream keeps writing decimal.
    std::string out;
    uString::ToString(out, static_cast<std::uint32_t>(255), std::ios_base::hex, 0, 0, 0);
    EXPECT_EQ("255", out);
    out.clear();
    uString::ToString(out, static_cast<std::uint32_t>(255), std::ios_base::showpos);
    EXPECT_EQ("255", out);  // no sign on unsigned values
}

TEST(ToStringTest, ZeroValue) {
    std::string out;
    uString::ToString(out, static_cast<std::uint32_t>(0));
    EXPECT_EQ("0", out);
}

TEST(ReplaceTest, EveryOccurrenceReplaced) {
    std::string text = "banana";
    EXPECT_EQ("bbnbnb", uString::Replace(text, "a", "b"));
    EXPECT_EQ("bbnbnb", text);
}

TEST(ReplaceTest, ResumesAfterTheOriginalsLength) {
    std::string text = "banana";
    EXPECT_EQ("bana", uString::Replace(text, "an", ""));
    EXPECT_EQ("bana", text);
}

TEST(ReplaceTest, ReplacementShorterThanOriginal) {
    std::string text = "aabb";
    EXPECT_EQ("axb", uString::Replace(text, "ab", "x"));
}

TEST(ReplaceTest, LongerReplacementIsSearchedAgain) {
    // The search resumes inside the inserted "xyz" at position 1 and finds nothing there.
    std::string text = "a.b.c";
    EXPECT_EQ("axyzbxyzc", uString::Replace(text, ".", "xyz"));
}

TEST(ReplaceTest, CaseSensitiveAndNoMatch) {
    std::string text = "Hello";
    EXPECT_EQ("Hello", uString::Replace(text, "h", "J"));
    EXPECT_EQ("Jello", uString::Replace(text, "H", "J"));
}

TEST(ReplaceTest, EmptyTextStaysEmpty) {
    std::string text;
    EXPECT_EQ("", uString::Replace(text, "a", "b"));
}

TEST(ReplaceTest, NullOriginalRaises) {
    std::string text = "abc";
    try {
        uString::Replace(text, nullptr, "x");
        FAIL() << "no exception";
    } catch (const uString::error& e) {
        EXPECT_STREQ("unable to perform string replacement from null original text", e.what());
    }
    EXPECT_EQ("abc", text);
}

TEST(ReplaceTest, NullReplacementRaises) {
    std::string text = "abc";
    try {
        uString::Replace(text, "a", nullptr);
        FAIL() << "no exception";
    } catch (const uString::error& e) {
        EXPECT_STREQ("unable to perform string replacement with null replacement text", e.what());
    }
    EXPECT_EQ("abc", text);
}

TEST(ReplaceTest, EmptyOriginalRaisesInsteadOfLoopingForever) {
    std::string text = "abc";
    try {
        uString::Replace(text, "", "x");
        FAIL() << "no exception";
    } catch (const uString::error& e) {
        EXPECT_STREQ("unable to perform string replacement from empty original text", e.what());
    }
    EXPECT_EQ("abc", text);
}

TEST(SplitTest, SplitsAtTheDelimiter) {
    std::string before = "old", after = "old";
    EXPECT_EQ(2u, uString::Split("key=value", before, after, "="));
    EXPECT_EQ("key", before);
    EXPECT_EQ("value", after);
}

TEST(SplitTest, OnlyTheFirstOccurrenceSplits) {
    std::string before, after;
    EXPECT_EQ(2u, uString::Split("a=b=c", before, after, "="));
    EXPECT_EQ("a", before);
    EXPECT_EQ("b=c", after);
}

TEST(SplitTest, MultiCharacterDelimiter) {
    std::string before, after;
    EXPECT_EQ(2u, uString::Split("left::right", before, after, "::"));
    EXPECT_EQ("left", before);
    EXPECT_EQ("right", after);
}

TEST(SplitTest, DelimiterNotFound) {
    std::string before = "old", after = "old";
    EXPECT_EQ(1u, uString::Split("keyvalue", before, after, "="));
    EXPECT_EQ("keyvalue", before);
    EXPECT_EQ("", after);
}

TEST(SplitTest, EmptyText) {
    std::string before = "old", after = "old";
    EXPECT_EQ(0u, uString::Split("", before, after, "="));
    EXPECT_EQ("", before);
    EXPECT_EQ("", after);
}

TEST(SplitTest, EmptyDelimiterIsFoundAtTheStart) {
    std::string before = "old", after = "old";
    EXPECT_EQ(2u, uString::Split("abc", before, after, ""));
    EXPECT_EQ("", before);
    EXPECT_EQ("abc", after);
}

TEST(SplitTest, DelimiterAtTheEdges) {
    std::string before, after;
    EXPECT_EQ(2u, uString::Split("=x", before, after, "="));
    EXPECT_EQ("", before);
    EXPECT_EQ("x", after);
    EXPECT_EQ(2u, uString::Split("x=", before, after, "="));
    EXPECT_EQ("x", before);
    EXPECT_EQ("", after);
}

TEST(SplitTest, NullTextRaisesAndLeavesOutputs) {
    std::string before = "b", after = "a";
    try {
        uString::Split(nullptr, before, after, "=");
        FAIL() << "no exception";
    } catch (const uString::error& e) {
        EXPECT_STREQ("unable to split null string", e.what());
    }
    EXPECT_EQ("b", before);
    EXPECT_EQ("a", after);
}

TEST(SplitTest, NullDelimiterRaisesWithItsOwnSpelling) {
    std::string before = "b", after = "a";
    try {
        uString::Split("x=y", before, after, nullptr);
        FAIL() << "no exception";
    } catch (const uString::error& e) {
        EXPECT_STREQ("unable to split with null delimeter", e.what());
    }
    EXPECT_EQ("b", before);
    EXPECT_EQ("a", after);
}

TEST(SourceUtilitiesErrorTest, MessageIsWhatText) {
    const source_utilities_error error("some message");
    EXPECT_STREQ("some message", error.what());
    const uString::error derived("derived message");
    const source_utilities_error& asBase = derived;
    EXPECT_STREQ("derived message", asBase.what());
}
