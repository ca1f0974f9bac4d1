// What the reader builds from a property database file, element by element.
#include <cstdint>
#include <memory>
#include <vector>

#include <gtest/gtest.h>

#include "XmlDbTestSupport.h"
#include "xmldb/ParseFailureSeverities.h"
#include "xmldb/PropertyDBHandler.h"
#include "xmldb/ReadXmlFile.h"

using namespace xmldb_test;

namespace {

class ConversionsFile : public ::testing::Test {
protected:
    void SetUp() override { db = std::make_unique<PropertyDB>(Fixture("conversions.xml")); }

    Property* Named(const char* name) {
        Property* property = AsProperty(db->FindByName(name));
        EXPECT_NE(property, nullptr) << name;
        return property;
    }
    IntegerProperty* Integer(const char* name) { return dynamic_cast<IntegerProperty*>(Named(name)); }

    std::unique_ptr<PropertyDB> db;
};

// Allowed integers through the array interface: HasAllowedValues never announces them.
std::vector<std::uint64_t> AllowedIntegers(IntegerProperty* property, std::size_t expected) {
    const std::uint64_t sentinel = 0xDEADBEEFull;
    std::vector<std::uint64_t> buffer(expected + 4, sentinel);
    property->GetAllowedValues(buffer.data());
    for (std::size_t i = expected; i < buffer.size(); ++i) EXPECT_EQ(buffer[i], sentinel) << "written past " << expected;
    buffer.resize(expected);
    return buffer;
}

bool AcceptsValueAbove32Bits(IntegerProperty* property) {
    const std::uint64_t before = property->GetValue();
    property->SetValue(0x100000000ull);
    const bool accepted = property->GetValue() == 0x100000000ull;
    property->SetValue(before);
    return accepted;
}

}  // namespace

TEST_F(ConversionsFile, EveryPropertyElementIsListedInEndTagOrder) {
    EXPECT_EQ(ListedNames(*db),
              (std::vector<std::string>{"IntOctal", "IntHexPrefixOnly", "IntHex", "IntDecimalTrailing", "IntNoDigits",
                                        "EmptyValueIsZero", "EmptyValueTakesLastText", "Loc32", "Loc64", "BoolOn",
                                        "BoolOff", "StrValue", "FlagsLowerCase", "FlagsExact", "FlagsTrailingBlank",
                                        "FlagsStayAfterOtherText", "Keyed", "NegativeNumbers", "EmptyDescription",
                                        "MultiLineValue"}));
    EXPECT_EQ(db->GetPropertyCount(), 20u);
}

TEST_F(ConversionsFile, IntegerValueUsesPrefixedNumberConversion) {
    EXPECT_EQ(Integer("IntOctal")->GetValue(), 8u);
    EXPECT_EQ(Integer("IntHexPrefixOnly")->GetValue(), 0u);
    EXPECT_EQ(Integer("IntHex")->GetValue(), 0xFFFFFFFFFull);
    EXPECT_EQ(Integer("IntDecimalTrailing")->GetValue(), 12u);
    EXPECT_EQ(Integer("IntNoDigits")->GetValue(), 0u);
}

TEST_F(ConversionsFile, EnumValueReadsHexAfterZeroXAndDecimalOtherwise) {
    EXPECT_EQ(Named("IntOctal")->GetEnumValue(), 31);
    EXPECT_EQ(Named("IntHex")->GetEnumValue(), 42);
    EXPECT_EQ(Named("IntDecimalTrailing")->GetEnumValue(), 16);
    EXPECT_EQ(Named("IntNoDigits")->GetEnumValue(), 0);
    EXPECT_EQ(Named("NegativeNumbers")->GetEnumValue(), -5);
}

TEST_F(ConversionsFile, CategoryIsDecimalOnly) {
    EXPECT_EQ(Named("IntOctal")->GetCategory(), 0u);  // "0x1F"
    EXPECT_EQ(Named("IntHex")->GetCategory(), 12u);
    EXPECT_EQ(Named("IntNoDigits")->GetCategory(), 0u);
    EXPECT_EQ(Named("NegativeNumbers")->GetCategory(), 3u);
}

TEST_F(ConversionsFile, DisplayTypeIsDecimalOnlyForExactDEC) {
    EXPECT_EQ(Integer("IntHex")->GetDisplaySuggestion(), IIntegerProperty::DisplayDecimal);
    EXPECT_EQ(Integer("IntDecimalTrailing")->GetDisplaySuggestion(), IIntegerProperty::DisplayDefault);
    EXPECT_EQ(Integer("IntOctal")->GetDisplaySuggestion(), IIntegerProperty::DisplayDefault);
}

TEST_F(ConversionsFile, EmptyValueElementWithNoEarlierTextGivesZero) {
    EXPECT_EQ(Integer("EmptyValueIsZero")->GetValue(), 0u);
}

TEST_F(ConversionsFile, EmptyValueElementTakesTheLastCharacterData) {
    EXPECT_EQ(Integer("EmptyValueTakesLastText")->GetValue(), 9u);
    EXPECT_STREQ(Named("EmptyDescription")->GetDescription(), "\n  ");
}

TEST_F(ConversionsFile, LocationsKeepPageAndTakeCookieAllOnes) {
    auto* location = dynamic_cast<LocationProperty*>(Named("Loc32"));
    ASSERT_NE(location, nullptr);
    std::uint32_t page = 99;
    EXPECT_EQ(location->GetValue(page), 0x23456789u);
    EXPECT_EQ(page, 3u);
    EXPECT_EQ(location->GetCookie(), 0xFFFFFFFFu);

    auto* location64 = dynamic_cast<LocationProperty2*>(Named("Loc64"));
    ASSERT_NE(location64, nullptr);
    page = 99;
    EXPECT_EQ(location64->GetValue64(page).GetAddress(), 0x123456789ull);
    EXPECT_EQ(page, 0u);  // "0x2" is read by atoi
    EXPECT_EQ(location64->GetCookie(), 0xFFFFFFFFu);
}

TEST_F(ConversionsFile, BooleanIsTrueForAnyNonZeroValue) {
    auto* on = dynamic_cast<BooleanProperty*>(Named("BoolOn"));
    auto* off = dynamic_cast<BooleanProperty*>(Named("BoolOff"));
    ASSERT_NE(on, nullptr);
    ASSERT_NE(off, nullptr);
    EXPECT_TRUE(on->GetValue());
    EXPECT_FALSE(off->GetValue());
}

TEST_F(ConversionsFile, StringKeepsItsTextAndTakesItsOwnAttributesWithoutItems) {
    auto* text = dynamic_cast<StringProperty*>(Named("StrValue"));
    ASSERT_NE(text, nullptr);
    EXPECT_STREQ(text->GetValue(), "0x10");
    EXPECT_STREQ(text->GetChildKey(), "CK");
    EXPECT_EQ(text->GetCategory(), 4u);
    EXPECT_EQ(text->GetEnumValue(), 5);
    EXPECT_EQ(static_cast<std::uint32_t>(text->IsReplacable()), 2u);
    EXPECT_EQ(static_cast<std::uint32_t>(text->IsReplacableAllowed()), 1u);
    EXPECT_EQ(static_cast<std::uint32_t>(Named("NegativeNumbers")->IsReplacable()), 0u);  // "0x1" by atoi
    EXPECT_EQ(static_cast<std::uint32_t>(Named("IntOctal")->IsReplacable()), 0u);
}

TEST_F(ConversionsFile, ValueTextIsNotTrimmed) {
    auto* text = dynamic_cast<StringProperty*>(Named("MultiLineValue"));
    ASSERT_NE(text, nullptr);
    EXPECT_STREQ(text->GetValue(), "first\nsecond");
}

TEST_F(ConversionsFile, FlagsChangeOnlyForExactUpperCaseText) {
    EXPECT_TRUE(Named("FlagsLowerCase")->IsEditable());
    EXPECT_FALSE(Named("FlagsLowerCase")->IsDisabled());
    EXPECT_FALSE(Named("FlagsExact")->IsEditable());
    EXPECT_TRUE(Named("FlagsExact")->IsDisabled());
    EXPECT_TRUE(Named("FlagsTrailingBlank")->IsEditable());
    EXPECT_FALSE(Named("FlagsTrailingBlank")->IsDisabled());
    // Other text never sets a flag back.
    EXPECT_FALSE(Named("FlagsStayAfterOtherText")->IsEditable());
    EXPECT_TRUE(Named("FlagsStayAfterOtherText")->IsDisabled());
    // Defaults.
    EXPECT_TRUE(Named("IntOctal")->IsEditable());
    EXPECT_FALSE(Named("IntOctal")->IsDisabled());
}

TEST_F(ConversionsFile, KeyItemsAddKeysInOrderWithDecimalNumbers) {
    Property* keyed = Named("Keyed");
    EXPECT_TRUE(keyed->IsKeyName("K1"));
    EXPECT_TRUE(keyed->IsKeyName("K2"));
    EXPECT_FALSE(keyed->IsKeyName("k1"));
    EXPECT_EQ(keyed->GetKeyNumber("K1"), 0u);  // "0x10" by atoi
    EXPECT_EQ(keyed->GetKeyNumber("K2"), 7u);
    EXPECT_FALSE(Named("IntOctal")->IsKeyName("K1"));
}

TEST(PropertyDBReader, FileOfUntypedPropertiesGivesAnEmptyDatabase) {
    PropertyDB db(Fixture("untyped_only.xml"));
    EXPECT_EQ(db.GetPropertyCount(), 0u);
}

TEST(PropertyDBReader, AllowedIntegersAccumulateAcrossTheFile) {
    PropertyDB db(Fixture("allowed_integers.xml"));
    auto* first = dynamic_cast<IntegerProperty*>(db.FindByName("First"));
    auto* second = dynamic_cast<IntegerProperty*>(db.FindByName("Second"));
    auto* third = dynamic_cast<IntegerProperty*>(db.FindByName("Third"));
    ASSERT_NE(first, nullptr);
    ASSERT_NE(second, nullptr);
    ASSERT_NE(third, nullptr);
    EXPECT_EQ(AllowedIntegers(first, 2), (std::vector<std::uint64_t>{1, 2}));
    // The string's and the Boolean's items (99, 77) never reach the integer list.
    EXPECT_EQ(AllowedIntegers(second, 3), (std::vector<std::uint64_t>{1, 2, 3}));
    EXPECT_EQ(AllowedIntegers(third, 3), (std::vector<std::uint64_t>{1, 2, 3}));
}

TEST(PropertyDBReader, StringItemsBecomeAllowedValuesWithTheirAttributes) {
    PropertyDB db(Fixture("string_items.xml"));
    auto* withItems = dynamic_cast<StringProperty*>(db.FindByName("WithItems"));
    ASSERT_NE(withItems, nullptr);
    std::vector<ValueAttribute> attributes;
    withItems->GetAllowedAttributes(attributes);
    ASSERT_EQ(attributes.size(), 3u);
    EXPECT_EQ(attributes[0], ValueAttribute("KFIRST", 16, 0, false, ""));
    EXPECT_EQ(attributes[1], ValueAttribute("KSECOND", 7, 0, true, "SAME"));
    EXPECT_EQ(attributes[2], ValueAttribute("", 3, 0, false, ""));  // "true" is not "TRUE"

    // Not editable: the allowed values are held but not announced; an editable copy shows them.
    std::uint32_t count = 99;
    EXPECT_FALSE(withItems->HasAllowedValues(count));
    EXPECT_EQ(count, 0u);
    withItems->SetEditable(true);
    ASSERT_TRUE(withItems->HasAllowedValues(count));
    ASSERT_EQ(count, 3u);
    const char* values[3] = {};
    withItems->GetAllowedValues(values);
    EXPECT_STREQ(values[0], "First");
    EXPECT_STREQ(values[1], "Second");
    EXPECT_STREQ(values[2], "Third");
}

TEST(PropertyDBReader, StringWithItemsIgnoresItsOwnCategoryChildKeyAndEnumValue) {
    PropertyDB db(Fixture("string_items.xml"));
    auto* withItems = dynamic_cast<StringProperty*>(db.FindByName("WithItems"));
    ASSERT_NE(withItems, nullptr);
    EXPECT_STREQ(withItems->GetValue(), "Second");
    EXPECT_STREQ(withItems->GetChildKey(), "KSECOND");
    EXPECT_EQ(withItems->GetEnumValue(), 7);
    EXPECT_EQ(withItems->GetCategory(), 0u);
    EXPECT_TRUE(withItems->IsHaltCPU());
    EXPECT_STREQ(withItems->GetSameLevelKey(), "SAME");
    EXPECT_FALSE(withItems->IsEditable());  // EDITABLE is still applied
}

TEST(PropertyDBReader, StringWithoutItemsTakesCategoryChildKeyAndEnumValue) {
    PropertyDB db(Fixture("string_items.xml"));
    auto* without = dynamic_cast<StringProperty*>(db.FindByName("WithoutItems"));
    ASSERT_NE(without, nullptr);
    EXPECT_STREQ(without->GetValue(), "free text");
    EXPECT_STREQ(without->GetChildKey(), "OWNKEY");
    EXPECT_EQ(without->GetEnumValue(), 99);
    EXPECT_EQ(without->GetCategory(), 9u);
}

TEST(PropertyDBReader, StringItemListsStartEmptyForEachProperty) {
    PropertyDB db(Fixture("string_items.xml"));
    auto* next = dynamic_cast<StringProperty*>(db.FindByName("NextStartsEmpty"));
    ASSERT_NE(next, nullptr);
    std::vector<ValueAttribute> attributes;
    next->GetAllowedAttributes(attributes);
    EXPECT_TRUE(attributes.empty());
    std::uint32_t count = 99;
    EXPECT_FALSE(next->HasAllowedValues(count));
    EXPECT_EQ(count, 0u);
}

TEST(PropertyDBReader, RangeIsSetOnlyWhenHighIsAboveLow) {
    PropertyDB db(Fixture("ranges.xml"));
    auto range = [&db](const char* name, std::uint64_t& low, std::uint64_t& high) {
        auto* integer = dynamic_cast<IntegerProperty*>(db.FindByName(name));
        EXPECT_NE(integer, nullptr) << name;
        integer->HasAllowedRange(low, high);
        return AcceptsValueAbove32Bits(integer);
    };
    std::uint64_t low = 0, high = 0;
    EXPECT_FALSE(range("Greater", low, high));
    EXPECT_EQ(low, 1u);
    EXPECT_EQ(high, 16u);
    // No range in force: the property takes any value.
    EXPECT_TRUE(range("Equal", low, high));
    EXPECT_TRUE(range("NoHigh", low, high));
    EXPECT_TRUE(range("Inverted", low, high));
}

TEST(PropertyDBReader, RangeAliasesActLikeTheUnderscoredNames) {
    PropertyDB db(Fixture("ranges.xml"));
    auto* aliases = dynamic_cast<IntegerProperty*>(db.FindByName("Aliases"));
    ASSERT_NE(aliases, nullptr);
    std::uint64_t low = 0, high = 0;
    aliases->HasAllowedRange(low, high);
    EXPECT_EQ(low, 2u);
    EXPECT_EQ(high, 8u);
    aliases->SetValue(9);
    EXPECT_EQ(aliases->GetValue(), 5u);
    aliases->SetValue(8);
    EXPECT_EQ(aliases->GetValue(), 8u);
}

TEST(PropertyDBReader, PropertiesInsideASublistComeBeforeTheirEnclosingProperty) {
    PropertyDB db(Fixture("sublist_order.xml"));
    // One entry per property element, in end-tag order. A nested start tag resets the pending
    // fields, type included, so an enclosing element whose values precede its SUBLIST is built
    // from the last property started inside it.
    EXPECT_EQ(ListedNames(db), (std::vector<std::string>{"Inner", "Inner", "Sibling", "Sibling", "Nested",
                                                         "ValuesAfterSublist", "Last"}));
    const std::vector<IProperty*>& listed = db.Properties();
    ASSERT_EQ(listed.size(), 7u);
    EXPECT_NE(dynamic_cast<IntegerProperty*>(listed[1]), nullptr);  // the "Middle" element
    EXPECT_NE(dynamic_cast<IntegerProperty*>(listed[3]), nullptr);  // the "Outer" element
    EXPECT_EQ(dynamic_cast<IntegerProperty*>(listed[3])->GetValue(), 2u);
    auto* afterSublist = dynamic_cast<BooleanProperty*>(listed[5]);
    ASSERT_NE(afterSublist, nullptr);
    EXPECT_TRUE(afterSublist->GetValue());
    for (IProperty* property : listed) {
        EXPECT_EQ(property->GetNumSubProperties(), 0u) << property->GetName();
        IProperty* parent = property->GetParentProperty();
        EXPECT_EQ(parent, nullptr) << property->GetName();
        if (parent != nullptr) parent->Release();
    }
}

TEST(PropertyDBReader, UnknownElementsAndAttributesAreIgnored) {
    PropertyDB db(Fixture("unknown_elements.xml"));
    EXPECT_EQ(ListedNames(db), (std::vector<std::string>{"Counted", "TypeIgnored"}));
    auto* counted = dynamic_cast<IntegerProperty*>(db.FindByName("Counted"));
    ASSERT_NE(counted, nullptr);
    EXPECT_EQ(counted->GetValue(), 12u);
    EXPECT_STREQ(counted->GetDescription(), "d");
    auto* typed = dynamic_cast<StringProperty*>(db.FindByName("TypeIgnored"));
    ASSERT_NE(typed, nullptr);
    EXPECT_STREQ(typed->GetValue(), "v");
}

TEST(PropertyDBReader, NamesAboveFFAreMatchedOnTheirLowBytes) {
    PropertyDB db(Fixture("low_byte_names.xml"));
    ASSERT_EQ(db.GetPropertyCount(), 1u);
    EXPECT_STREQ(db.Properties()[0]->GetName(), "WideAName");
    auto* integer = dynamic_cast<IntegerProperty*>(db.Properties()[0]);
    ASSERT_NE(integer, nullptr);
    EXPECT_EQ(integer->GetValue(), 5u);
}

TEST(PropertyDBReader, CharacterDataReplacesInsteadOfAppending) {
    PropertyDB db(Fixture("split_text.xml"));
    EXPECT_STREQ(db.FindByName("Entity")->GetDescription(), "&B");
    EXPECT_STREQ(db.FindByName("Comment")->GetDescription(), "after");
    EXPECT_STREQ(db.FindByName("Cdata")->GetDescription(), "<raw>");
    EXPECT_STREQ(db.FindByName("Whole")->GetDescription(), "one piece");
}

TEST(PropertyDBReader, JobVersionContentNeverBecomesText) {
    PropertyDB db(Fixture("job_version_text.xml"));
    auto value = [&db](const char* name) { return dynamic_cast<IntegerProperty*>(db.FindByName(name))->GetValue(); };
    EXPECT_EQ(value("AfterJobVersion"), 5u);
    // The character rule does not look at the element: unknown content and NONE content count.
    EXPECT_EQ(value("AfterUnknown"), 66u);
    EXPECT_EQ(value("AfterNone"), 44u);
    // A SUBLIST start leaves the current element alone, so its content is still dropped.
    EXPECT_EQ(value("SublistKeepsCurrentElement"), 5u);
}

TEST(PropertyDBReader, FieldsOutsidePropertiesFollowTheResetRules) {
    PropertyDB db(Fixture("leftover_fields.xml"));
    auto* first = dynamic_cast<IntegerProperty*>(db.FindByName("FirstInteger"));
    ASSERT_NE(first, nullptr);
    // An item before any property start has no property type and is dropped.
    std::uint64_t sentinel[2] = {0xABCDu, 0xABCDu};
    first->GetAllowedValues(sentinel);
    EXPECT_EQ(sentinel[0], 0xABCDu);
    // The start tag resets the child key that a stray CHILDKEY had set.
    Property* boolean = AsProperty(db.FindByName("ChildKeyResetAtStart"));
    ASSERT_NE(boolean, nullptr);
    EXPECT_STREQ(boolean->GetChildKey(), "");
}

TEST(PropertyDBHandlerCallbacks, CharactersIgnoreTheLengthArgument) {
    PropertyDB db(Fixture("untyped_only.xml"));
    PropertyDBHandler handler(&db);
    NoAttributes none;
    handler.startElement(u"PROPERTY_STRING", none);
    handler.startElement(u"NAME", none);
    handler.characters(u"WholeName", 5);
    handler.endElement(u"NAME");
    handler.startElement(u"VALUE", none);
    handler.characters(u"first piece", 11);
    handler.characters(u"last piece", 10);
    handler.endElement(u"VALUE");
    handler.endElement(u"PROPERTY_STRING");
    ASSERT_EQ(db.GetPropertyCount(), 1u);
    EXPECT_STREQ(db.Properties()[0]->GetName(), "WholeName");
    EXPECT_STREQ(dynamic_cast<StringProperty*>(db.Properties()[0])->GetValue(), "last piece");
}

TEST(PropertyDBHandlerCallbacks, EndTagBeforeAnyPropertyStartBuildsNothing) {
    PropertyDB db(Fixture("untyped_only.xml"));
    PropertyDBHandler handler(&db);
    NoAttributes none;
    // No property start tag: the type is still 0, which builds nothing.
    handler.startElement(u"NAME", none);
    handler.characters(u"Orphan", 6);
    handler.endElement(u"NAME");
    handler.endElement(u"PROPERTY_BOOL");
    EXPECT_EQ(db.GetPropertyCount(), 0u);
}

TEST(PropertyDBReader, EventsStayInTheHandler) {
    PropertyDB db(Fixture("untyped_only.xml"));
    PropertyDBHandler handler(&db);
    ASSERT_EQ(ReadXmlFile(Fixture("events.xml"), handler, PropertyDBFailureSeverities()), 0u);
    const std::vector<EventItem>& events = handler.Events();
    ASSERT_EQ(events.size(), 3u);
    EXPECT_EQ(events[0].name, "Overflow");
    EXPECT_EQ(events[0].category, 2u);
    EXPECT_EQ(events[0].id, 0u);  // "0x11" by atoi
    EXPECT_EQ(events[1].name, "Match");
    EXPECT_EQ(events[1].category, 5u);
    EXPECT_EQ(events[1].id, 17u);
    EXPECT_EQ(events[2].name, "");
    EXPECT_EQ(events[2].category, 0u);
    EXPECT_EQ(events[2].id, 4u);
    // The property around the second event is built as usual and has no trace of it.
    ASSERT_EQ(db.GetPropertyCount(), 1u);
    EXPECT_STREQ(db.Properties()[0]->GetName(), "Carrier");
    EXPECT_EQ(db.Properties()[0]->GetNumSubProperties(), 0u);
}

TEST(PropertyDBReader, BuildPropertyOfUntypedElementGivesNull) {
    PropertyDB db(Fixture("untyped_only.xml"));
    PropertyDBHandler handler(&db);
    EXPECT_EQ(handler.BuildProperty(Tag_PROPERTY), nullptr);
    EXPECT_EQ(handler.BuildProperty(Tag_NAME), nullptr);
}

TEST(PropertyDBReader, BuildPropertyFromFreshHandlerUsesTheDefaults) {
    PropertyDB db(Fixture("untyped_only.xml"));
    PropertyDBHandler handler(&db);
    Held built(handler.BuildProperty(Tag_PROPERTY_INTEGER));
    auto* integer = dynamic_cast<IntegerProperty*>(built.get());
    ASSERT_NE(integer, nullptr);
    // rangeHi starts at 0xFFFFFFFF and rangeLo at 0: a fresh handler sets that range.
    EXPECT_FALSE(AcceptsValueAbove32Bits(integer));
    EXPECT_STREQ(integer->GetName(), "");
    EXPECT_TRUE(integer->IsEditable());
    EXPECT_FALSE(integer->IsDisabled());
    EXPECT_EQ(db.GetPropertyCount(), 0u);  // building alone does not list it
}
