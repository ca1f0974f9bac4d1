#include "PropertyDBHandler.h"

#include <cstdint>
#include <cstring>

#include "../property/BooleanProperty.h"
#include "../property/IntegerProperty.h"
#include "../property/LocationProperty.h"
#include "../property/LocationProperty2.h"
#include "../property/NameAndDescription.h"
#include "../property/Property.h"
#include "../property/StringProperty.h"
#include "PropertyDB.h"
#include "ValueTextConversion.h"

namespace TargetOperations {

namespace {

struct TagName {
    const char* name;
    PropertyDBTag code;
};

// Scanned in this order. Both spellings of the range bounds are accepted; code 31 has no name.
const TagName kTagNames[] = {
    {"NONE", Tag_NONE},
    {"RLX", Tag_RLX},
    {"JOB_MAJOR_V", Tag_JOB_MAJOR_V},
    {"JOB_MINOR_V", Tag_JOB_MINOR_V},
    {"SUBLIST", Tag_SUBLIST},
    {"ALLOWEDLIST", Tag_ALLOWEDLIST},
    {"ALLOWEDITEM", Tag_ALLOWEDITEM},
    {"ROOT", Tag_ROOT},
    {"CATEGORY", Tag_CATEGORY},
    {"PROPERTY", Tag_PROPERTY},
    {"PROPERTY_STRING", Tag_PROPERTY_STRING},
    {"PROPERTY_INTEGER", Tag_PROPERTY_INTEGER},
    {"PROPERTY_LOCATION", Tag_PROPERTY_LOCATION},
    {"PROPERTY_LOCATION_64", Tag_PROPERTY_LOCATION_64},
    {"PROPERTY_BOOL", Tag_PROPERTY_BOOL},
    {"NAME", Tag_NAME},
    {"KEYNAME", Tag_KEYNAME},
    {"KEYNUMBER", Tag_KEYNUMBER},
    {"KEYITEM", Tag_KEYITEM},
    {"CHILDKEY", Tag_CHILDKEY},
    {"TYPE", Tag_TYPE},
    {"PAGE", Tag_PAGE},
    {"VALUE", Tag_VALUE},
    {"ENUMVALUE", Tag_ENUMVALUE},
    {"DESCRIPTION", Tag_DESCRIPTION},
    {"RANGE_LO", Tag_RANGE_LO},
    {"RANGELO", Tag_RANGE_LO},
    {"RANGE_HI", Tag_RANGE_HI},
    {"RANGEHI", Tag_RANGE_HI},
    {"DISPLAYTYPE", Tag_DISPLAYTYPE},
    {"EDITABLE", Tag_EDITABLE},
    {"DISABLE", Tag_DISABLE},
    {"ALLOWED_STRING", Tag_ALLOWED_STRING},
    {"ALLOWED_ENUM", Tag_ALLOWED_ENUM},
    {"ALLOWED_HALT", Tag_ALLOWED_HALT},
    {"ALLOWED_INTEGER", Tag_ALLOWED_INTEGER},
    {"ALLOWED_KEY", Tag_ALLOWED_KEY},
    {"ALLOWED_SAMELEVEL_KEY", Tag_ALLOWED_SAMELEVEL_KEY},
    {"EVENT_ITEM", Tag_EVENT_ITEM},
    {"EVENT_NAME", Tag_EVENT_NAME},
    {"EVENT_CATEGORY", Tag_EVENT_CATEGORY},
    {"EVENT_ID", Tag_EVENT_ID},
    {"REPLACABLE", Tag_REPLACABLE},
    {"REPLACABLE_ALLOWED", Tag_REPLACABLE_ALLOWED},
};

bool IsPropertyElement(std::uint32_t code) { return code >= Tag_PROPERTY && code <= Tag_PROPERTY_BOOL; }

constexpr std::size_t kLongestTagName = 21;  // "ALLOWED_SAMELEVEL_KEY"

// The table's names grouped by length and first character, so that a lookup compares only
// the one or two names that can match.
class TagNameIndex {
public:
    TagNameIndex() {
        for (const TagName& entry : kTagNames) {
            const std::size_t length = std::strlen(entry.name);
            Bucket(length, entry.name[0]).push_back(Entry{entry.name, entry.code});
        }
    }

    PropertyDBTag Find(const char* name, std::size_t length) const {
        if (length == 0 || length > kLongestTagName) return Tag_NONE;
        for (const Entry& entry : Bucket(length, name[0])) {
            if (std::memcmp(entry.name, name, length) == 0) return entry.code;
        }
        return Tag_NONE;
    }

    struct Entry {
        const char* name;
        PropertyDBTag code;
    };

    // The same for a name as the parser hands it over: each code unit stands for its low
    // byte, as NarrowText reads it, without building the narrow string. Null when no tag
    // has that name; length receives the name's length on a match.
    const Entry* Find(const XMLCh* name, std::size_t& length) const {
        if (name == nullptr || name[0] == 0) return nullptr;
        length = 0;
        while (name[length] != 0) {
            if (++length > kLongestTagName) return nullptr;
        }
        for (const Entry& entry : Bucket(length, static_cast<char>(name[0] & 0xFF))) {
            if (SameNarrowedText(name, entry.name, length)) return &entry;
        }
        return nullptr;
    }

    // Whether the first length units of name narrow to text. A zero unit never matches a
    // table character, so a shorter name stops the comparison at its terminator.
    static bool SameNarrowedText(const XMLCh* name, const char* text, std::size_t length) {
        std::size_t i = 0;
        while (i < length && static_cast<char>(name[i] & 0xFF) == text[i]) ++i;
        return i == length;
    }

private:
    static constexpr std::size_t kFirstCharacterBuckets = 32;

    // Names that share a bucket share the length and the low five bits of the first
    // character; the comparison settles the rest, the first character included.
    std::vector<Entry>& Bucket(std::size_t length, char first) {
        return m_buckets[length][static_cast<unsigned char>(first) % kFirstCharacterBuckets];
    }
    const std::vector<Entry>& Bucket(std::size_t length, char first) const {
        return m_buckets[length][static_cast<unsigned char>(first) % kFirstCharacterBuckets];
    }

    std::vector<Entry> m_buckets[kLongestTagName + 1][kFirstCharacterBuckets];
};

const TagNameIndex& TagNames() {
    static const TagNameIndex names;
    return names;
}

}  // namespace

PropertyDBTag PropertyDBHandler::RecentTagNames::Find(const XMLCh* name) {
    // The parser's name buffers are 16-byte aligned and a few hundred bytes apart: the home
    // slot comes from a multiplicative hash of the address above those low bits. A name may
    // also sit in the slot next to it, so that two names sharing a home slot do not keep
    // evicting each other.
    const std::uint64_t address = static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(name)) >> 4;
    const std::size_t home = static_cast<std::size_t>((address * 0x9E3779B97F4A7C15ull) >> (64 - kEntryBits));
    Entry& first = m_entries[home];
    Entry& second = m_entries[home ^ 1];
    if (name != nullptr) {
        // The text is compared first, so that the read at length stays inside the name.
        if (first.name == name && TagNameIndex::SameNarrowedText(name, first.text, first.length) &&
            name[first.length] == 0) {
            return first.code;
        }
        if (second.name == name && TagNameIndex::SameNarrowedText(name, second.text, second.length) &&
            name[second.length] == 0) {
            return second.code;
        }
    }
    std::size_t length = 0;
    const TagNameIndex::Entry* found = TagNames().Find(name, length);
    if (found == nullptr) return Tag_NONE;
    Entry& kept = first.name == nullptr || second.name != nullptr ? first : second;
    kept = Entry{name, found->name, length, found->code};
    return found->code;
}

PropertyDBHandler::PropertyDBHandler(PropertyDB* database)
    : m_database(database),
      m_currentType(Tag_NONE),
      m_currentElement(Tag_NONE),
      m_numericValue(0),
      m_page(0),
      m_enumValue(0),
      m_category(0),
      m_keyNumber(0),
      m_allowedEnum(0),
      m_allowedHalt(false),
      m_allowedInteger(0),
      m_allowedCategory(0),
      m_rangeLo(0),
      m_rangeHi(0xFFFFFFFFu),
      m_displayType(IIntegerProperty::DisplayDefault),
      m_sublistClosed(false),
      m_built(false),
      m_editable(true),
      m_disabled(false),
      m_openParent(nullptr),
      m_eventCategory(0),
      m_eventId(0),
      m_replacable(NotReplacable),
      m_replacableAllowed(NotReplacable),
      m_nameAndDescription(std::string(), std::string()) {}

// The built properties belong to the database; only the handler's own data goes.
PropertyDBHandler::~PropertyDBHandler() = default;

PropertyDBTag PropertyDBHandler::LookupTag(const std::string& name) {
    return TagNames().Find(name.data(), name.size());
}

bool PropertyDBHandler::IsValidTag(std::uint32_t code) { return code >= Tag_RLX && code <= Tag_REPLACABLE_ALLOWED; }

void PropertyDBHandler::characters(const XMLCh* const chars, const XMLSize_t length) {
    // Replaces, never appends: when the parser splits one element's content (around
    // comments, CDATA sections or entity references) only the last piece counts.
    if (m_currentElement == Tag_JOB_MAJOR_V || m_currentElement == Tag_JOB_MINOR_V) return;
    m_text.Replace(chars, length);
}

void PropertyDBHandler::startElement(const XMLCh* const name, xercesc::AttributeList& /*attributes*/) {
    const PropertyDBTag code = m_recentTagNames.Find(name);
    // Filled in place: a pushed aggregate would be assembled on the stack and read back as
    // one wide load, which stalls on the two narrower stores before it.
    OpenElement& opened = m_openElements.emplace_back();
    opened.name = name;
    opened.code = code;
    if (!IsValidTag(code)) return;

    if (code == Tag_SUBLIST) {
        m_sublistClosed = false;
        return;
    }

    m_currentElement = code;
    if (code == Tag_ALLOWEDITEM) {
        m_allowedEnum = 0;
        m_allowedCategory = 0;
        m_allowedInteger = 0;
        m_allowedHalt = false;
        m_allowedString.clear();
        m_allowedKey.clear();
        m_allowedSameLevelKey.clear();
    } else if (IsPropertyElement(code)) {
        StartProperty(code);
    } else if (code == Tag_EVENT_ITEM) {
        m_eventName.clear();
        m_eventCategory = 0;
        m_eventId = 0;
    }
}

void PropertyDBHandler::StartProperty(std::uint32_t type) {
    m_currentType = type;
    m_text.Clear();
    m_keyName.clear();
    m_nameAndDescription.SetName("");
    m_stringValue.clear();
    m_nameAndDescription.SetDescription("");
    m_childKey.clear();
    m_currentElement = Tag_NONE;
    m_numericValue = 0;
    m_page = 0;
    m_enumValue = 0;
    m_category = 0;
    m_keyNumber = 0;
    m_rangeLo = 0;
    m_rangeHi = 0;
    m_displayType = IIntegerProperty::DisplayDefault;
    m_replacable = NotReplacable;
    m_replacableAllowed = NotReplacable;
    m_allowedStrings.clear();
    m_allowedAttributes.clear();
    m_keys.clear();
    m_built = false;
    m_editable = true;
    m_disabled = false;
    // m_allowedIntegers stays: each integer property receives every allowed integer read so far.
}

void PropertyDBHandler::endElement(const XMLCh* const name) {
    PropertyDBTag code = Tag_NONE;
    if (!m_openElements.empty() && m_openElements.back().name == name) {
        code = m_openElements.back().code;
    } else {
        code = m_recentTagNames.Find(name);
    }
    if (!m_openElements.empty()) m_openElements.pop_back();
    if (!IsValidTag(code)) return;

    switch (code) {
    case Tag_SUBLIST:
        m_sublistClosed = true;
        break;
    case Tag_NAME:
        m_nameAndDescription.SetName(m_text.Narrowed().data());
        break;
    case Tag_DESCRIPTION:
        m_nameAndDescription.SetDescription(m_text.Narrowed().data());
        break;
    case Tag_VALUE:
        if (m_currentType == Tag_PROPERTY_STRING) {
            m_stringValue = m_text.Narrowed();
        } else {
            m_numericValue = ReadPrefixedNumber(m_text.Narrowed());
        }
        break;
    case Tag_CATEGORY:
        m_category = static_cast<std::uint32_t>(ReadDecimal(m_text.Narrowed()));
        ApplyAttribute(Tag_CATEGORY);
        break;
    case Tag_PAGE:
        m_page = static_cast<std::uint32_t>(ReadDecimal(m_text.Narrowed()));
        ApplyAttribute(Tag_PAGE);
        break;
    case Tag_ENUMVALUE:
        m_enumValue = ReadEnumNumber(m_text.Narrowed());
        ApplyAttribute(Tag_ENUMVALUE);
        break;
    case Tag_CHILDKEY:
        m_childKey = m_text.Narrowed();
        ApplyAttribute(Tag_CHILDKEY);
        break;
    case Tag_RANGE_LO:
        m_rangeLo = ReadPrefixedNumber(m_text.Narrowed());
        ApplyAttribute(Tag_RANGE_LO);
        break;
    case Tag_RANGE_HI:
        m_rangeHi = ReadPrefixedNumber(m_text.Narrowed());
        ApplyAttribute(Tag_RANGE_HI);
        break;
    case Tag_DISPLAYTYPE:
        m_displayType =
            m_text.Narrowed() == "DEC" ? IIntegerProperty::DisplayDecimal : IIntegerProperty::DisplayDefault;
        ApplyAttribute(Tag_DISPLAYTYPE);
        break;
    case Tag_EDITABLE:
        if (m_text.Narrowed() == "FALSE") m_editable = false;
        ApplyAttribute(Tag_EDITABLE);
        break;
    case Tag_DISABLE:
        if (m_text.Narrowed() == "TRUE") m_disabled = true;
        ApplyAttribute(Tag_DISABLE);
        break;
    case Tag_KEYNAME:
        m_keyName = m_text.Narrowed();
        break;
    case Tag_KEYNUMBER:
        m_keyNumber = static_cast<std::uint32_t>(ReadDecimal(m_text.Narrowed()));
        break;
    case Tag_KEYITEM: {
        Property* builtProperty = m_built ? dynamic_cast<Property*>(m_openParent) : nullptr;
        if (builtProperty != nullptr) {
            builtProperty->AddKeyName(PropertyKey(m_keyName, m_keyNumber));
        } else {
            m_keys.emplace_back(m_keyName, m_keyNumber);
        }
        break;
    }
    case Tag_ALLOWED_STRING:
        m_allowedString = m_text.Narrowed();
        break;
    case Tag_ALLOWED_ENUM:
        m_allowedEnum = ReadEnumNumber(m_text.Narrowed());
        break;
    case Tag_ALLOWED_HALT:
        m_allowedHalt = m_text.Narrowed() == "TRUE";
        break;
    case Tag_ALLOWED_INTEGER:
        m_allowedInteger = ReadPrefixedNumber(m_text.Narrowed());
        break;
    case Tag_ALLOWED_KEY:
        m_allowedKey = m_text.Narrowed();
        break;
    case Tag_ALLOWED_SAMELEVEL_KEY:
        m_allowedSameLevelKey = m_text.Narrowed();
        break;
    case Tag_ALLOWEDITEM:
        EndAllowedItem();
        break;
    case Tag_EVENT_NAME:
        m_eventName = m_text.Narrowed();
        break;
    case Tag_EVENT_CATEGORY:
        m_eventCategory = static_cast<std::uint32_t>(ReadDecimal(m_text.Narrowed()));
        break;
    case Tag_EVENT_ID:
        m_eventId = static_cast<std::uint32_t>(ReadDecimal(m_text.Narrowed()));
        break;
    case Tag_EVENT_ITEM:
        m_events.push_back(EventItem{m_eventName, m_eventCategory, m_eventId});
        break;
    case Tag_REPLACABLE:
        m_replacable = static_cast<eREPLACABLE>(ReadDecimal(m_text.Narrowed()));
        break;
    case Tag_REPLACABLE_ALLOWED:
        m_replacableAllowed = static_cast<eREPLACABLE>(ReadDecimal(m_text.Narrowed()));
        break;
    case Tag_PROPERTY:
    case Tag_PROPERTY_STRING:
    case Tag_PROPERTY_INTEGER:
    case Tag_PROPERTY_LOCATION:
    case Tag_PROPERTY_LOCATION_64:
    case Tag_PROPERTY_BOOL:
        EndProperty();
        break;
    default:
        // "RLX", the version elements, "ALLOWEDLIST", "ROOT" and "TYPE" carry no action.
        break;
    }
}

void PropertyDBHandler::EndAllowedItem() {
    // The early-built property of the inert branch is the open parent: it was built at its
    // SUBLIST, before its own end tag.
    if (m_currentType == Tag_PROPERTY_STRING) {
        const auto enumValue = static_cast<std::uint32_t>(m_allowedEnum);
        StringProperty* builtString = m_built ? dynamic_cast<StringProperty*>(m_openParent) : nullptr;
        if (!m_built) {
            m_allowedStrings.push_back(m_allowedString);
            m_allowedAttributes.emplace_back(m_allowedKey, enumValue, m_allowedCategory, m_allowedHalt,
                                             m_allowedSameLevelKey);
        } else if (builtString != nullptr) {
            builtString->AddAllowedValues(m_allowedString.c_str());
            builtString->AddAllowedAttributes(
                ValueAttribute(m_allowedKey, enumValue, m_allowedCategory, m_allowedHalt, m_allowedSameLevelKey));
        }
    } else if (m_currentType == Tag_PROPERTY_INTEGER) {
        IntegerProperty* builtInteger = m_built ? dynamic_cast<IntegerProperty*>(m_openParent) : nullptr;
        if (!m_built) {
            m_allowedIntegers.push_back(m_allowedInteger);
        } else if (builtInteger != nullptr) {
            builtInteger->AddAllowedValue(m_allowedInteger);
        }
    }
    // Items of any other property kind are dropped.
}

void PropertyDBHandler::EndProperty() {
    if (m_openParent == nullptr) {
        // The only path ever taken: every typed property, at any SUBLIST depth, becomes one
        // entry of the flat list in end-tag order. Links come later, from the keys.
        Property* property = BuildProperty(m_currentType);
        if (property != nullptr) m_database->AddReadProperty(property, m_keys, ReadWithReplaceableMark());
        return;
    }
    if (!m_sublistClosed) {
        IProperty* property = BuildProperty(m_currentType);
        if (property != nullptr) Property::AddChild(m_openParent, property);
        return;
    }
    IProperty* grandParent = m_openParent->GetParentProperty();
    if (grandParent != nullptr) {
        Property::AddChild(grandParent, m_openParent);
        // GetParentProperty handed out a reference; the back link it stands for is not counted.
        grandParent->Release();
    }
    m_openParent = grandParent;
}

bool PropertyDBHandler::ReadWithReplaceableMark() const {
    return m_replacable != NotReplacable ||
           (m_currentType == Tag_PROPERTY_STRING && m_replacableAllowed != NotReplacable);
}

Property* PropertyDBHandler::BuildProperty(std::uint32_t type) {
    // m_nameAndDescription was read straight from the NAME and DESCRIPTION elements into one
    // reused object: assigning keeps its storage, so only the property's own copy allocates.
    // Each Construct makes an object of its own class, so the casts below need no run-time test.
    Property* property = nullptr;

    switch (type) {
    case Tag_PROPERTY_STRING: {
        auto* created = static_cast<StringProperty*>(
            StringProperty::Construct(m_nameAndDescription, m_stringValue, m_allowedStrings, m_allowedAttributes));
        if (created != nullptr) created->SetReplacableAllowed(m_replacableAllowed);
        property = created;
        break;
    }
    case Tag_PROPERTY_INTEGER: {
        auto* created = static_cast<IntegerProperty*>(
            IntegerProperty::Construct(m_nameAndDescription, m_numericValue, m_allowedIntegers, false));
        if (created != nullptr) {
            if (m_rangeHi > m_rangeLo) created->SetAllowedRange(m_rangeLo, m_rangeHi);
            created->SetDisplaySuggestion(m_displayType);
        }
        property = created;
        break;
    }
    case Tag_PROPERTY_LOCATION:
        property = static_cast<LocationProperty*>(LocationProperty::Construct(
            m_nameAndDescription, static_cast<std::uint32_t>(m_numericValue), m_page, 0xFFFFFFFFu));
        break;
    case Tag_PROPERTY_LOCATION_64:
        property = static_cast<LocationProperty2*>(
            LocationProperty2::Construct(m_nameAndDescription, m_numericValue, m_page, 0xFFFFFFFFu));
        break;
    case Tag_PROPERTY_BOOL:
        property = static_cast<BooleanProperty*>(BooleanProperty::Construct(m_nameAndDescription, m_numericValue != 0));
        break;
    default:
        // "PROPERTY" and anything else build nothing.
        return nullptr;
    }
    if (property == nullptr) return nullptr;

    // A string with allowed items already took child key, category and enumeration value
    // from its selected item; the property's own elements must not override them.
    const bool stringWithItems = type == Tag_PROPERTY_STRING && !m_allowedAttributes.empty();
    if (!stringWithItems) {
        property->SetCategory(m_category);
        property->SetChildKey(m_childKey.c_str());
        property->SetEnumValue(m_enumValue);
    }
    property->SetEditable(m_editable);
    property->SetDisabled(m_disabled);
    property->SetReplacable(m_replacable);
    // Not AddKeyName: nothing lists the new property yet, so its keys need no new generation
    // (an atomic step per key) for the linking indexes to notice.
    for (const PropertyKey& key : m_keys) property->m_keys.push_back(key);
    return property;
}

void PropertyDBHandler::ApplyAttribute(std::uint32_t tag) {
    if (!m_built) return;
    auto* property = dynamic_cast<Property*>(m_openParent);
    if (property == nullptr) return;

    if (auto* integerProperty = dynamic_cast<IntegerProperty*>(property)) {
        if (tag == Tag_RANGE_LO || tag == Tag_RANGE_HI) integerProperty->SetAllowedRange(m_rangeLo, m_rangeHi);
        if (tag == Tag_DISPLAYTYPE) integerProperty->SetDisplaySuggestion(m_displayType);
    }
    if (tag == Tag_PAGE) {
        if (auto* location = dynamic_cast<LocationProperty*>(property)) location->SetPage(m_page);
        if (auto* location64 = dynamic_cast<LocationProperty2*>(property)) location64->SetPage(m_page);
    }
    switch (tag) {
    case Tag_CATEGORY:
        property->SetCategory(m_category);
        break;
    case Tag_CHILDKEY:
        property->SetChildKey(m_childKey.c_str());
        break;
    case Tag_ENUMVALUE:
        property->SetEnumValue(m_enumValue);
        break;
    case Tag_EDITABLE:
        property->SetEditable(m_editable);
        break;
    case Tag_DISABLE:
        property->SetDisabled(m_disabled);
        break;
    default:
        break;
    }
}

}  // namespace TargetOperations
