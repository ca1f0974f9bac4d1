// One loaded property database file: the flat list of every property it declares, in the
// order of their end tags (internal).
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "../property/IProperty.h"

namespace TargetOperations {

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

    const std::string& GetFileName() const { return m_fileName; }
    const std::vector<IProperty*>& Properties() const { return m_properties; }

private:
    void* m_reserved;
    std::vector<IProperty*> m_properties;  // one reference each
    std::string m_fileName;
};

}  // namespace TargetOperations
