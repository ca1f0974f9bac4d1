// One loaded property database file: the flat list of every property it declares, in the
// order of their end tags (internal).
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "../property/IProperty.h"
#include "../property/PropertyKey.h"
#include "KeyNameIds.h"

namespace TargetOperations {

struct LinkCandidates;
class Property;
class PropertyKeyList;

class PropertyDB {
public:
    // Parses fileName; a parse failure leaves the constructor as a korvaError.
    explicit PropertyDB(const std::string& fileName);
    // Releases every listed property once, in list order.
    virtual ~PropertyDB();
    PropertyDB(const PropertyDB&) = delete;
    PropertyDB& operator=(const PropertyDB&) = delete;

    // Returns 0 or throws Kw::Mbr::Korva::korvaError.
    virtual std::uint32_t Parse(const std::string& fileName);

    // List edits. None of them adds or gives back a reference.
    void AddProperty(IProperty* property);
    void InsertPropertyFirst(IProperty* property);
    void RemoveByName(const char* name);
    // AddProperty for a property the reader built with exactly these keys, so that linking
    // finds it through its keys instead of visiting it for every key. markedReplaceable tells
    // whether it was read with a replaceable mark, on itself or on its allowed values.
    void AddReadProperty(Property* property, const std::vector<PropertyKey>& keys, bool markedReplaceable);

    std::uint32_t GetPropertyCount() const;
    // Writes every listed pointer with one added reference each.
    void CopyProperties(IProperty** out) const;

    // Borrowed results, first match in list order.
    IProperty* FindByName(const char* name) const;
    IProperty* FindByEnum(std::int32_t enumValue) const;
    IProperty* FindByNameAndEnum(const char* name, std::int32_t enumValue) const;
    // A clone owned by the caller.
    IProperty* FindPropertyByName(const char* name) const;

    // Rebuilds the sub-properties of property and of all its descendants from the keys of
    // their current values.
    void LinkSubProperties(IProperty* property);

    // Where linking finds the properties a key may select; rebuilt after the list changed.
    // A listed property whose keys changed after the read is visited for every key from then on.
    const LinkCandidates& Candidates();
    // The number of a key name that some read property lists, or kNoKeyId.
    static constexpr std::uint32_t kNoKeyId = 0xFFFFFFFFu;
    std::uint32_t FindKeyId(const char* keyName) const;
    // A property's own keys: linking matches their few names against many keys at once.
    static const PropertyKeyList& KeysOf(const Property& property);

    // False only when every listed property came from the reader unmarked: the load then
    // skips the replacement passes without visiting each property again.
    bool MayHaveReplaceables() const { return m_mayHaveReplaceables; }

    const std::string& GetFileName() const { return m_fileName; }
    const std::vector<IProperty*>& Properties() const { return m_properties; }

private:
    // The keys of one listed property, as numbers of m_keyIds, when the database knows them.
    struct ListedKeys {
        std::uint32_t first = 0;  // into m_keyIdPool
        std::uint32_t count = 0;
        bool known = false;
        std::uint64_t stamp = 0;  // the property's key stamp when its keys were recorded
    };

    void ListChanged();
    // Releases every listed property and empties the tables.
    void ReleaseAll();
    void FollowChangedKeys();

    void* m_reserved;
    std::vector<IProperty*> m_properties;  // one reference each
    std::string m_fileName;

    std::vector<ListedKeys> m_listedKeys;  // beside m_properties, position for position
    std::vector<std::uint32_t> m_keyIdPool;
    KeyNameIds m_keyIds;
    std::unique_ptr<LinkCandidates> m_candidates;  // null until needed and after list changes
    std::uint64_t m_keysGenerationSeen = 0;        // key generation when the stamps last matched
    bool m_mayHaveReplaceables = false;
};

}  // namespace TargetOperations
