#include "PropertyDB.h"

#include <algorithm>
#include <cstring>

#include "../property/Property.h"
#include "ParseFailureSeverities.h"
#include "PropertyDBHandler.h"
#include "ReadXmlFile.h"

namespace TargetOperations {

namespace {

bool SameText(const char* left, const char* right) { return std::strcmp(left, right) == 0; }

}  // namespace

PropertyDB::PropertyDB(const std::string& fileName) : m_reserved(nullptr) {
    try {
        Parse(fileName);
    } catch (...) {
        // The object never comes into being, so its destructor will not give back what a
        // partial parse had already listed.
        for (IProperty* property : m_properties) property->Release();
        m_properties.clear();
        throw;
    }
    m_fileName = fileName;
}

PropertyDB::~PropertyDB() {
    for (IProperty* property : m_properties) property->Release();
}

std::uint32_t PropertyDB::Parse(const std::string& fileName) {
    PropertyDBHandler handler(this);
    return ReadXmlFile(fileName, handler, PropertyDBFailureSeverities());
}

void PropertyDB::AddProperty(IProperty* property) { m_properties.push_back(property); }

void PropertyDB::InsertPropertyFirst(IProperty* property) { m_properties.insert(m_properties.begin(), property); }

void PropertyDB::RemoveByName(const char* name) {
    auto match = std::find_if(m_properties.begin(), m_properties.end(),
                              [name](IProperty* property) { return SameText(property->GetName(), name); });
    if (match != m_properties.end()) m_properties.erase(match);
}

std::uint32_t PropertyDB::GetPropertyCount() const { return static_cast<std::uint32_t>(m_properties.size()); }

void PropertyDB::CopyProperties(IProperty** out) const {
    for (IProperty* property : m_properties) {
        property->AddRef();
        *out++ = property;
    }
}

IProperty* PropertyDB::FindByName(const char* name) const {
    for (IProperty* property : m_properties) {
        if (SameText(property->GetName(), name)) return property;
    }
    return nullptr;
}

IProperty* PropertyDB::FindByEnum(std::int32_t enumValue) const {
    for (IProperty* property : m_properties) {
        auto* node = dynamic_cast<Property*>(property);
        if (node != nullptr && node->GetEnumValue() == enumValue) return property;
    }
    return nullptr;
}

IProperty* PropertyDB::FindByNameAndEnum(const char* name, std::int32_t enumValue) const {
    for (IProperty* property : m_properties) {
        auto* node = dynamic_cast<Property*>(property);
        if (node != nullptr && SameText(property->GetName(), name) && node->GetEnumValue() == enumValue) {
            return property;
        }
    }
    return nullptr;
}

IProperty* PropertyDB::FindPropertyByName(const char* name) const {
    for (IProperty* property : m_properties) {
        auto* node = dynamic_cast<Property*>(property);
        if (node != nullptr && SameText(property->GetName(), name)) return node->Clone();
    }
    return nullptr;
}

}  // namespace TargetOperations
