// The reader's quick ways against the slow ones they stand in for: plain numbers read
// without a string stream give what the shared conversion gives, and element names matched
// straight from the parser's UTF-16 text select what the narrowed name selects.
#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstdint>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "XmlDbTestSupport.h"
#include "support/uString.h"
#include "xmldb/PropertyDBHandler.h"
#include "xmldb/ValueTextConversion.h"

using namespace xmldb_test;

namespace {

std::uint64_t SharedConversion(const std::string& text) {
    if (text.empty()) return 0;
    return KW_MBR::uString::ToNumeric<std::uint64_t>(text.c_str());
}

TEST(ReaderNumbers, AgreeWithTheSharedConversionOnChosenTexts) {
    // The table is laid out by hand.
    // clang-format off
    const std::vector<std::string> texts = {
        "0", "7", "10", "010", "08", "09", "0x", "0X", "0x1F", "0X1f", "0xFFFFFFFFFFFFFFFF", "0x10000000000000000",
        "18446744073709551615", "18446744073709551616", "9999999999999999999", "99999999999999999999",
        "0777777777777777777777", "01777777777777777777777", "02000000000000000000000", "12abc", "abc", " 5", "5 ",
        "+5", "-5", "0x-1", "0x 1", "0xg", "00", "0x0x5", "1e3", "٣", std::string("1\0" "2", 3), "\n  42\n",
        "0000000000000000000000000000001", "0x00000000000000000000001"};
    // clang-format on
    for (const std::string& text : texts) {
        EXPECT_EQ(ReadPrefixedNumber(text), SharedConversion(text)) << '"' << text << '"';
    }
}

// Digits of every base, the prefix letters and what may stand around or inside a number.
const std::string kNumberAlphabet = "0123456789abcdefxXABCDEF +-g";

TEST(ReaderNumbers, AgreeWithTheSharedConversionOnRandomTexts) {
    std::mt19937 engine(20261122u);
    for (int i = 0; i < 20000; ++i) {
        std::string text;
        const std::size_t length = engine() % 24;
        if (engine() % 3 == 0) text = engine() % 2 == 0 ? "0x" : "0";
        for (std::size_t k = 0; k < length; ++k) text.push_back(kNumberAlphabet[engine() % kNumberAlphabet.size()]);
        ASSERT_EQ(ReadPrefixedNumber(text), SharedConversion(text)) << '"' << text << '"';
    }
}

// What the reader gave for small numbers before it read plain digits itself.
std::int32_t DecimalAsAtoi(const std::string& text) { return static_cast<std::int32_t>(std::atoi(text.c_str())); }

std::int32_t EnumAsScanned(const std::string& text) {
    if (text.size() >= 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X')) {
        unsigned int value = 0;
        if (std::sscanf(text.c_str(), "%x", &value) != 1) value = 0;
        return static_cast<std::int32_t>(value);
    }
    return DecimalAsAtoi(text);
}

TEST(ReaderNumbers, SmallNumbersAgreeWithAtoiAndScanfOnChosenTexts) {
    // The table is laid out by hand.
    // clang-format off
    const std::vector<std::string> texts = {
        "", "0", "7", "007", "123456789", "999999999", "1000000000", "2147483647", "-5", "+5", " 5", "5 ", "12a",
        "a12", "\n  3\n", "0x", "0X", "0x0", "0x7FFFFFFF", "0x80000000", "0xFFFFFFFF", "0xffffffff", "0x0000000F",
        "0x00000000F", "0x1g", "0xg", "0X1f", "0x 1", "0x-1", std::string("1\0" "2", 3), std::string("0x1\0" "2", 5)};
    // clang-format on
    for (const std::string& text : texts) {
        EXPECT_EQ(ReadDecimal(text), DecimalAsAtoi(text)) << '"' << text << '"';
        EXPECT_EQ(ReadEnumNumber(text), EnumAsScanned(text)) << '"' << text << '"';
    }
}

TEST(ReaderNumbers, SmallNumbersAgreeWithAtoiAndScanfOnRandomTexts) {
    std::mt19937 engine(20261123u);
    for (int i = 0; i < 20000; ++i) {
        std::string text;
        // Up to ten digits: both sides of the nine digits and eight hex digits read directly.
        const std::size_t length = engine() % 11;
        if (engine() % 3 == 0) text = "0x";
        for (std::size_t k = 0; k < length; ++k) {
            text.push_back(engine() % 4 == 0 ? kNumberAlphabet[engine() % kNumberAlphabet.size()]
                                             : "0123456789ABCDEF"[engine() % 16]);
        }
        ASSERT_EQ(ReadDecimal(text), DecimalAsAtoi(text)) << '"' << text << '"';
        ASSERT_EQ(ReadEnumNumber(text), EnumAsScanned(text)) << '"' << text << '"';
    }
}

// The reader hands the conversions a view of its narrowing buffer. A view that stops short
// of its text's end reads as the text it shows, also where the slow conversions take over.
TEST(ReaderNumbers, AViewReadsAsTheTextItShows) {
    // The table is laid out by hand.
    // clang-format off
    const std::vector<std::pair<std::string, std::size_t>> cuts = {
        {"12345", 2}, {"0x1fff", 4}, {"0x1", 2}, {"0777", 2}, {" 42abc", 3}, {"-17 trailing", 3}, {"0x 1", 3},
        {"1234567890123", 10}, {"0x123456789", 10}, {"077777777777777777777777", 23}, {"5", 0}, {"0x10", 1}};
    // clang-format on
    for (const auto& [text, length] : cuts) {
        const std::string shown = text.substr(0, length);
        const std::string_view view(text.data(), length);
        EXPECT_EQ(ReadPrefixedNumber(view), SharedConversion(shown)) << '"' << shown << '"';
        EXPECT_EQ(ReadDecimal(view), DecimalAsAtoi(shown)) << '"' << shown << '"';
        EXPECT_EQ(ReadEnumNumber(view), EnumAsScanned(shown)) << '"' << shown << '"';
    }
}

std::u16string Widen(const std::string& text, char16_t highByte) {
    std::u16string wide;
    for (char c : text) wide.push_back(static_cast<char16_t>(highByte | static_cast<unsigned char>(c)));
    return wide;
}

// A property element of the given name builds a property exactly when the narrowed name is
// one of the typed property tags; inside a property, an element of the given name names it
// exactly when the narrowed name is "NAME".
TEST(ReaderElementNames, MatchAsTheNarrowedNameDoes) {
    // The table is laid out by hand.
    // clang-format off
    const std::vector<std::string> names = {"PROPERTY_BOOL", "PROPERTY_INTEGER", "PROPERTY_STRING", "PROPERTY_LOCATION",
                                            "PROPERTY_LOCATION_64", "PROPERTY", "pROPERTY_BOOL", "PROPERTY_BOOl",
                                            "PROPERTY_BOOL ", "PROPERTY_BOO", "pROPERTY_LOCATION_64", "", "NAME",
                                            "nAME", "NAMe", "NAMEX", "ALLOWED_SAMELEVEL_KEY", "ALLOWED_SAMELEVEL_KEYS"};
    // clang-format on
    NoAttributes none;
    for (const std::string& name : names) {
        for (char16_t highByte : {u'\0', u'\x0100', u'\xFF00'}) {
            const PropertyDBTag expected = PropertyDBHandler::LookupTag(name);
            const bool typed = expected >= Tag_PROPERTY_STRING && expected <= Tag_PROPERTY_BOOL;
            PropertyDB db(Fixture("untyped_only.xml"));
            {
                PropertyDBHandler handler(&db);
                const std::u16string wide = Widen(name, highByte);
                handler.startElement(wide.c_str(), none);
                handler.startElement(u"NAME", none);
                handler.characters(u"named", 5);
                handler.endElement(u"NAME");
                handler.endElement(wide.c_str());
                EXPECT_EQ(db.GetPropertyCount(), typed ? 1u : 0u) << name << " high byte " << int(highByte);
                if (expected >= Tag_PROPERTY && expected <= Tag_PROPERTY_BOOL) continue;  // would start a property

                handler.startElement(u"PROPERTY_BOOL", none);
                handler.startElement(wide.c_str(), none);
                handler.characters(u"other", 5);
                handler.endElement(wide.c_str());
                handler.endElement(u"PROPERTY_BOOL");
            }
            ASSERT_EQ(db.GetPropertyCount(), 1u) << name << " high byte " << int(highByte);
            EXPECT_EQ(std::string(db.Properties().back()->GetName()), expected == Tag_NAME ? "other" : "")
                << name << " high byte " << int(highByte);
        }
    }
}

// The parser hands element names over from buffers that last the whole parse, and the
// reader remembers names by their address. A buffer that held one name and then another
// must still be read by its current text, also when one name is the start of the other.
TEST(ReaderElementNames, ABufferHoldingAnotherNameIsReadByItsCurrentText) {
    NoAttributes none;
    PropertyDB db(Fixture("untyped_only.xml"));
    {
        PropertyDBHandler handler(&db);
        char16_t buffer[32] = {};
        const auto write = [&buffer](const std::u16string& name) {
            // Only the name and its terminator are written: what stood after them stays.
            std::copy(name.begin(), name.end(), buffer);
            buffer[name.size()] = 0;
        };
        const auto named = [&handler, &none](const char16_t* text, std::size_t length) {
            handler.startElement(u"NAME", none);
            handler.characters(text, length);
            handler.endElement(u"NAME");
        };

        // One property element read through the shared buffer, holding only a name.
        const auto property = [&](const std::u16string& element, const char16_t* name, std::size_t length) {
            write(element);
            handler.startElement(buffer, none);
            named(name, length);
            handler.endElement(buffer);
        };
        property(u"PROPERTY", u"first", 5);
        property(u"PROPERTY_BOOL", u"second", 6);
        property(u"PROPERTY", u"third", 5);  // "PROPERTY", its terminator, then "BOOL" left from before

        write(u"PROPERTY_STRING");
        handler.startElement(buffer, none);
        named(u"fourth", 6);
        write(u"VALUE");
        handler.startElement(buffer, none);
        handler.characters(u"v", 1);
        handler.endElement(buffer);
        write(u"PROPERTY_STRING");
        handler.endElement(buffer);
    }
    EXPECT_EQ(ListedNames(db), (std::vector<std::string>{"second", "fourth"}));
}

// The reader remembers element names by the address of the parser's buffer. Many buffers,
// rewritten at random between uses, many of them sharing a place in that memory: each start
// tag must still be read by what its buffer holds at that moment.
TEST(ReaderElementNames, ManyBuffersRewrittenAtRandomAreReadByTheirCurrentText) {
    NoAttributes none;
    // The typed tags build a property, the others do not; only "NAME" names it.
    const std::vector<std::u16string> propertyNames = {u"PROPERTY_BOOL", u"PROPERTY_STRING", u"PROPERTY",
                                                       u"PROPERTY_BOO",  u"PROPERTY_BOOL_",  u"NAMEX"};
    const std::vector<bool> builds = {true, true, false, false, false, false};
    const std::vector<std::u16string> nameNames = {u"NAME", u"NAMe", u"NAMEX", u"NAM"};
    std::vector<std::array<char16_t, 32>> buffers(300);
    for (auto& buffer : buffers) buffer.fill(0);
    const auto write = [](std::array<char16_t, 32>& buffer, const std::u16string& name) {
        std::copy(name.begin(), name.end(), buffer.begin());
        buffer[name.size()] = 0;
    };

    std::mt19937 engine(20261124u);
    std::vector<std::string> expected;
    PropertyDB db(Fixture("untyped_only.xml"));
    {
        PropertyDBHandler handler(&db);
        for (int round = 0; round < 5000; ++round) {
            auto& element = buffers[engine() % buffers.size()];
            auto* nameElement = &buffers[engine() % buffers.size()];
            while (nameElement == &element) nameElement = &buffers[engine() % buffers.size()];
            const std::size_t kind = engine() % propertyNames.size();
            const std::size_t nameKind = engine() % nameNames.size();
            write(element, propertyNames[kind]);
            write(*nameElement, nameNames[nameKind]);

            const std::string number = std::to_string(round);
            const std::u16string text = u"p" + std::u16string(number.begin(), number.end());
            handler.startElement(element.data(), none);
            handler.startElement(nameElement->data(), none);
            handler.characters(text.c_str(), text.size());
            handler.endElement(nameElement->data());
            handler.endElement(element.data());
            if (builds[kind]) expected.push_back(nameKind == 0 ? "p" + number : "");
        }
    }
    EXPECT_EQ(ListedNames(db), expected);
}

// End tags are read against the elements still open: one that comes with the buffer its
// start tag came with closes that element without a lookup; one that comes with any other
// buffer is read by its text, whatever buffers the start tags used.
TEST(ReaderElementNames, EndTagsFromOtherBuffersAreReadByTheirText) {
    NoAttributes none;
    PropertyDB db(Fixture("untyped_only.xml"));
    {
        PropertyDBHandler handler(&db);
        const std::u16string startBool = u"PROPERTY_BOOL", endBool = u"PROPERTY_BOOL";
        const std::u16string startName = u"NAME", endName = u"NAME";
        ASSERT_NE(startBool.c_str(), endBool.c_str());
        handler.startElement(startBool.c_str(), none);
        handler.startElement(startName.c_str(), none);
        handler.characters(u"copied buffers", 14);
        handler.endElement(endName.c_str());
        handler.endElement(endBool.c_str());

        // An end tag for an element that is not open: read by its text all the same.
        handler.startElement(u"PROPERTY_BOOL", none);
        handler.startElement(u"NAME", none);
        handler.characters(u"closed twice", 12);
        handler.endElement(u"NAME");
        handler.endElement(endName.c_str());
        handler.endElement(u"PROPERTY_BOOL");
        handler.endElement(endBool.c_str());
    }
    // The stray second "PROPERTY_BOOL" end tag ends the property a second time, as a lookup
    // of its text always did.
    EXPECT_EQ(ListedNames(db), (std::vector<std::string>{"copied buffers", "closed twice", "closed twice"}));
}

// A parser never changes an open element's name. Should a buffer be rewritten between an
// element's start and end tags anyway, the end tag closes the element its start tag opened.
TEST(ReaderElementNames, AnEndTagWithItsStartTagsBufferClosesThatElement) {
    NoAttributes none;
    PropertyDB db(Fixture("untyped_only.xml"));
    {
        PropertyDBHandler handler(&db);
        char16_t buffer[32] = {};
        const std::u16string element = u"PROPERTY_BOOL";
        std::copy(element.begin(), element.end(), buffer);
        handler.startElement(buffer, none);
        handler.startElement(u"NAME", none);
        handler.characters(u"kept", 4);
        handler.endElement(u"NAME");
        const std::u16string other = u"NAME";
        std::copy(other.begin(), other.end(), buffer);
        buffer[other.size()] = 0;
        handler.endElement(buffer);
    }
    EXPECT_EQ(ListedNames(db), (std::vector<std::string>{"kept"}));
}

bool CarriesReplaceableMark(IProperty* listed) {
    Property* property = AsProperty(listed);
    if (property != nullptr && property->IsReplacable() != NotReplacable) return true;
    auto* stringProperty = dynamic_cast<StringProperty*>(listed);
    return stringProperty != nullptr && stringProperty->IsReplacableAllowed() != NotReplacable;
}

bool AnyCarriesReplaceableMark(const PropertyDB& db) {
    for (IProperty* property : db.Properties()) {
        if (CarriesReplaceableMark(property)) return true;
    }
    return false;
}

// Loading skips the replacement passes when the reader saw no mark; it must never skip a
// database that has one.
TEST(ReaderReplaceableMarks, TheReadersAnswerMatchesAFullLookAtEveryProperty) {
    const std::vector<std::string> files = {Fixture("conversions.xml"),  Fixture("lookups.xml"),
                                            Fixture("linking.xml"),      Fixture("string_items.xml"),
                                            Fixture("single_bool.xml"),  Sample("evt_demo_core.xml"),
                                            Sample("rlx_trace_job.xml"), Sample("rlx_counter_job.xml")};
    int marked = 0;
    int unmarked = 0;
    for (const std::string& file : files) {
        PropertyDB db(file);
        EXPECT_EQ(db.MayHaveReplaceables(), AnyCarriesReplaceableMark(db)) << file;
        (db.MayHaveReplaceables() ? marked : unmarked) += 1;
    }
    // Both answers occur among the files, so the comparison above means something.
    EXPECT_GT(marked, 0);
    EXPECT_GT(unmarked, 0);
}

TEST(ReaderReplaceableMarks, APropertyListedOtherwiseIsAlwaysLookedAt) {
    PropertyDB db(Fixture("single_bool.xml"));
    ASSERT_FALSE(db.MayHaveReplaceables());
    db.AddProperty(BooleanProperty::Construct(NameAndDescription("Added", "d"), false));
    EXPECT_TRUE(db.MayHaveReplaceables());

    PropertyDB first(Fixture("single_bool.xml"));
    first.InsertPropertyFirst(BooleanProperty::Construct(NameAndDescription("First", "d"), true));
    EXPECT_TRUE(first.MayHaveReplaceables());
}

}  // namespace
