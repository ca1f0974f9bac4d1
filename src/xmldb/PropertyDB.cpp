#include "PropertyDB.h"

#include <algorithm>
#include <cstring>

#include "../property/Property.h"
#include "ParseFailureSeverities.h"
#include "PropertyDBHandler.h"
#include "ReadXmlFile.h"
#include "SubPropertyLinking.h"

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
        ReleaseAll();
        throw;
    }
    m_fileName = fileName;
}

PropertyDB::~PropertyDB() { ReleaseAll(); }

void PropertyDB::ReleaseAll() {
    // The database's own tables go first, before the properties: freed after them, the first
    // large table would make the allocator sort hundreds of thousands of small freed blocks
    // back in at once. The properties are then released in list order.
    m_candidates.reset();
    m_keyIds = KeyNameIds();
    std::vector<std::uint32_t>().swap(m_keyIdPool);
    std::vector<ListedKeys>().swap(m_listedKeys);
    for (IProperty* property : m_properties) property->Release();
    m_properties.clear();
}

std::uint32_t PropertyDB::Parse(const std::string& fileName) {
    PropertyDBHandler handler(this);
    return ReadXmlFile(fileName, handler, PropertyDBFailureSeverities());
}

void PropertyDB::AddProperty(IProperty* property) {
    m_mayHaveReplaceables = true;
    m_properties.push_back(property);
    m_listedKeys.emplace_back();
    ListChanged();
}

void PropertyDB::AddReadProperty(Property* property, const std::vector<PropertyKey>& keys, bool markedReplaceable) {
    if (markedReplaceable) m_mayHaveReplaceables = true;
    ListedKeys listed;
    listed.first = static_cast<std::uint32_t>(m_keyIdPool.size());
    listed.count = static_cast<std::uint32_t>(keys.size());
    listed.known = true;
    for (const PropertyKey& key : keys) m_keyIdPool.push_back(m_keyIds.Intern(key.KeyName()));
    listed.stamp = property->m_keysStamp;
    m_properties.push_back(property);
    m_listedKeys.push_back(listed);
    ListChanged();
}

void PropertyDB::InsertPropertyFirst(IProperty* property) {
    m_mayHaveReplaceables = true;
    m_properties.insert(m_properties.begin(), property);
    m_listedKeys.insert(m_listedKeys.begin(), ListedKeys());
    ListChanged();
}

void PropertyDB::RemoveByName(const char* name) {
    auto match = std::find_if(m_properties.begin(), m_properties.end(),
                              [name](IProperty* property) { return SameText(property->GetName(), name); });
    if (match == m_properties.end()) return;
    m_listedKeys.erase(m_listedKeys.begin() + (match - m_properties.begin()));
    m_properties.erase(match);
    ListChanged();
}

void PropertyDB::FollowChangedKeys() {
    // Cheap while no key anywhere changed; otherwise one pass over the stamps.
    const std::uint64_t generation = Property::KeysGeneration();
    if (generation == m_keysGenerationSeen) return;
    bool changed = false;
    for (std::size_t i = 0; i < m_properties.size(); ++i) {
        ListedKeys& listed = m_listedKeys[i];
        if (!listed.known) continue;
        const auto* property = dynamic_cast<const Property*>(m_properties[i]);
        if (property == nullptr || property->m_keysStamp != listed.stamp) {
            listed.known = false;
            changed = true;
        }
    }
    m_keysGenerationSeen = generation;
    if (changed) ListChanged();
}

void PropertyDB::ListChanged() { m_candidates.reset(); }

std::uint32_t PropertyDB::FindKeyId(const char* keyName) const {
    const std::uint32_t id = m_keyIds.Find(keyName);
    return id == KeyNameIds::kNone ? kNoKeyId : id;
}

const PropertyKeyList& PropertyDB::KeysOf(const Property& property) { return property.m_keys; }

const LinkCandidates& PropertyDB::Candidates() {
    FollowChangedKeys();
    if (m_candidates != nullptr) return *m_candidates;
    auto candidates = std::make_unique<LinkCandidates>();
    candidates->byKey.resize(m_keyIds.Count());
    for (std::size_t i = 0; i < m_properties.size(); ++i) {
        const auto position = static_cast<std::uint32_t>(i);
        const ListedKeys& listed = m_listedKeys[i];
        if (!listed.known) {
            candidates->unlisted.push_back(position);
            continue;
        }
        if (listed.count == 0) candidates->keyless.push_back(position);
        for (std::uint32_t k = 0; k < listed.count; ++k) {
            std::vector<std::uint32_t>& positions = candidates->byKey[m_keyIdPool[listed.first + k]];
            // A key listed twice by one property counts once.
            if (positions.empty() || positions.back() != position) positions.push_back(position);
        }
    }
    m_candidates = std::move(candidates);
    return *m_candidates;
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
