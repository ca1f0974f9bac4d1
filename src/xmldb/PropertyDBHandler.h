// SAX handler that turns a property database file into the flat property list of a
// PropertyDB (internal).
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <xercesc/sax/HandlerBase.hpp>

#include "../property/IIntegerProperty.h"
#include "../property/IProperty.h"
#include "../property/NameAndDescription.h"
#include "../property/PropertyKey.h"
#include "../property/Replacable.h"
#include "../property/ValueAttribute.h"
#include "EventItem.h"
#include "PendingText.h"
#include "PropertyDBTag.h"

namespace TargetOperations {

class Property;
class PropertyDB;

class PropertyDBHandler : public xercesc::HandlerBase {
public:
    explicit PropertyDBHandler(PropertyDB* database);
    ~PropertyDBHandler() override;
    PropertyDBHandler(const PropertyDBHandler&) = delete;
    PropertyDBHandler& operator=(const PropertyDBHandler&) = delete;

    void characters(const XMLCh* const chars, const XMLSize_t length) override;
    void startElement(const XMLCh* const name, xercesc::AttributeList& attributes) override;
    void endElement(const XMLCh* const name) override;

    static PropertyDBTag LookupTag(const std::string& name);
    static bool IsValidTag(std::uint32_t code);

    // The new property carrying its single reference, or null ("PROPERTY" builds nothing).
    Property* BuildProperty(std::uint32_t type);
    void ApplyAttribute(std::uint32_t tag);

    // Gathered from "EVENT_ITEM"; they stay here and reach no property.
    const std::vector<EventItem>& Events() const { return m_events; }

private:
    void StartProperty(std::uint32_t type);
    void EndAllowedItem();
    void EndProperty();
    // Whether the property being ended carries a replaceable mark that loading must expand.
    bool ReadWithReplaceableMark() const;

    PropertyDB* m_database;
    std::uint32_t m_currentType;
    std::uint32_t m_currentElement;
    PendingText m_text;
    std::uint64_t m_numericValue;
    std::uint32_t m_page;
    std::int32_t m_enumValue;
    std::uint32_t m_category;
    std::string m_stringValue;
    std::string m_keyName;
    std::uint32_t m_keyNumber;
    std::string m_childKey;
    std::int32_t m_allowedEnum;
    std::string m_allowedKey;
    std::string m_allowedString;
    bool m_allowedHalt;
    std::string m_allowedSameLevelKey;
    std::uint64_t m_allowedInteger;
    std::uint32_t m_allowedCategory;  // only ever reset: no element fills it
    std::uint64_t m_rangeLo;
    std::uint64_t m_rangeHi;
    IIntegerProperty::_DisplayType m_displayType;
    bool m_sublistClosed;
    // No path sets built or openParent. The branches that read them stay so that a property
    // built early (at its SUBLIST) would receive its later values and children.
    bool m_built;
    bool m_editable;
    bool m_disabled;
    IProperty* m_openParent;
    std::vector<PropertyKey> m_keys;
    std::vector<ValueAttribute> m_allowedAttributes;
    std::vector<std::string> m_allowedStrings;
    std::vector<std::uint64_t> m_allowedIntegers;  // never emptied per property: integers accumulate
    std::string m_eventName;
    std::uint32_t m_eventCategory;
    std::uint32_t m_eventId;
    std::vector<EventItem> m_events;
    eREPLACABLE m_replacable;
    eREPLACABLE m_replacableAllowed;
    NameAndDescription m_nameAndDescription;  // the open property's texts, reused by every BuildProperty

    // Xerces hands each element name over from storage that lasts the whole parse, so the
    // same address comes back for every element of that name. A hit is confirmed against the
    // table's text, so the cache can only save work, never change a result.
    class RecentTagNames {
    public:
        PropertyDBTag Find(const XMLCh* name);

    private:
        struct Entry {
            const XMLCh* name = nullptr;
            const char* text = nullptr;
            std::size_t length = 0;
            PropertyDBTag code = Tag_NONE;
        };
        static constexpr unsigned kEntryBits = 7;
        static constexpr std::size_t kEntries = std::size_t{1} << kEntryBits;
        Entry m_entries[kEntries];
    };
    RecentTagNames m_recentTagNames;

    // The elements open at this point, innermost last. SAX delivers end tags properly nested,
    // so an end tag that comes with the name its start tag came with closes the last entry
    // and needs no lookup of its own.
    struct OpenElement {
        const XMLCh* name = nullptr;
        PropertyDBTag code = Tag_NONE;
    };
    std::vector<OpenElement> m_openElements;
};

}  // namespace TargetOperations
