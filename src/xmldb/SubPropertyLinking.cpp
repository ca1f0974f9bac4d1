#include "SubPropertyLinking.h"

#include <algorithm>
#include <cstring>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "../property/BooleanProperty.h"
#include "../property/Property.h"
#include "../property/StringProperty.h"
#include "PropertyDB.h"

namespace TargetOperations {

namespace {

const char kTestKey[] = "TESTKEY";

using KeyList = std::vector<std::string>;

bool Contains(const KeyList& keys, const char* key) { return std::find(keys.begin(), keys.end(), key) != keys.end(); }

// Position in keys of the first key under which property can be selected, or keys.size().
std::size_t FirstMatchingKey(const Property& property, const KeyList& keys) {
    for (std::size_t i = 0; i < keys.size(); ++i) {
        if (property.IsKeyName(keys[i].c_str())) return i;
    }
    return keys.size();
}

// The key, then the same-level key of every listed entry selected by that key, in list order.
KeyList StartingKeys(const char* key, const std::vector<IProperty*>& list) {
    KeyList keys{key};
    for (IProperty* entry : list) {
        auto* property = dynamic_cast<Property*>(entry);
        if (property != nullptr && property->IsKeyName(key) && *property->GetSameLevelKey() != '\0') {
            keys.emplace_back(property->GetSameLevelKey());
        }
    }
    return keys;
}

// Adds the same-level key of property unless it is empty or already listed; true when added.
bool AddSameLevelKeyOnce(const Property& property, KeyList& keys) {
    const char* sameLevelKey = property.GetSameLevelKey();
    if (*sameLevelKey == '\0' || Contains(keys, sameLevelKey)) return false;
    keys.emplace_back(sameLevelKey);
    return true;
}

// The database positions a single pass in file order has to visit for the keys in play:
// the merged, ascending candidate lists of those keys. A key that joins during the pass
// contributes only its candidates after the current position, as the file-order pass would.
class CandidatePass {
public:
    CandidatePass(PropertyDB& db, const LinkCandidates& candidates) : m_db(db), m_candidates(candidates) {
        AddSource(&m_candidates.unlisted);
    }

    void AddKey(const std::string& key) {
        if (key == kTestKey && !m_keylessAdded) {
            m_keylessAdded = true;
            AddSource(&m_candidates.keyless);
        }
        const std::uint32_t id = m_db.FindKeyId(key.c_str());
        if (id == PropertyDB::kNoKeyId || std::find(m_addedIds.begin(), m_addedIds.end(), id) != m_addedIds.end()) {
            return;
        }
        m_addedIds.push_back(id);
        AddSource(&m_candidates.byKey[id]);
    }

    // The next position to visit, in ascending order and each once; false at the end.
    bool Next(std::uint32_t& position) {
        while (!m_heads.empty()) {
            std::pop_heap(m_heads.begin(), m_heads.end(), std::greater<>());
            const Head head = m_heads.back();
            m_heads.pop_back();
            const std::vector<std::uint32_t>& source = *m_sources[head.source];
            if (head.index + 1 < source.size()) Push(head.source, head.index + 1);
            if (m_started && head.position <= m_current) continue;  // met through another key
            m_started = true;
            m_current = head.position;
            position = head.position;
            return true;
        }
        return false;
    }

private:
    struct Head {
        std::uint32_t position;
        std::uint32_t source;
        std::size_t index;
        bool operator>(const Head& other) const { return position > other.position; }
    };

    void AddSource(const std::vector<std::uint32_t>* positions) {
        const auto start = m_started ? std::upper_bound(positions->begin(), positions->end(), m_current)
                                     : positions->begin();
        if (start == positions->end()) return;
        m_sources.push_back(positions);
        Push(static_cast<std::uint32_t>(m_sources.size() - 1), static_cast<std::size_t>(start - positions->begin()));
    }

    void Push(std::uint32_t source, std::size_t index) {
        m_heads.push_back(Head{(*m_sources[source])[index], source, index});
        std::push_heap(m_heads.begin(), m_heads.end(), std::greater<>());
    }

    PropertyDB& m_db;
    const LinkCandidates& m_candidates;
    std::vector<const std::vector<std::uint32_t>*> m_sources;
    std::vector<Head> m_heads;
    std::vector<std::uint32_t> m_addedIds;
    bool m_keylessAdded = false;
    bool m_started = false;
    std::uint32_t m_current = 0;
};

// The first entry of the work list with a given name. Short lists are scanned; longer ones
// get a map, kept up to date as entries are inserted or replaced.
class WorkListNames {
public:
    explicit WorkListNames(const std::vector<IProperty*>& list) : m_list(list) {}

    IProperty* Find(const char* name) {
        if (!m_mapped && m_list.size() > kScanLimit) Map();
        if (m_mapped) {
            const auto found = m_byName.find(std::string_view(name));
            return found == m_byName.end() ? nullptr : found->second;
        }
        for (IProperty* entry : m_list) {
            if (std::strcmp(entry->GetName(), name) == 0) return entry;
        }
        return nullptr;
    }

    // An entry that took the place of the first one with its name, or a new one.
    void Added(IProperty* entry) {
        if (m_mapped) m_byName[std::string_view(entry->GetName())] = entry;
    }
    void Replaced(IProperty* old, IProperty* replacement) {
        if (!m_mapped) return;
        m_byName.erase(std::string_view(old->GetName()));
        m_byName.emplace(std::string_view(replacement->GetName()), replacement);
    }

private:
    static constexpr std::size_t kScanLimit = 8;

    void Map() {
        m_byName.reserve(m_list.size() * 2);
        for (IProperty* entry : m_list) m_byName.emplace(std::string_view(entry->GetName()), entry);  // first wins
        m_mapped = true;
    }

    const std::vector<IProperty*>& m_list;
    std::unordered_map<std::string_view, IProperty*> m_byName;
    bool m_mapped = false;
};

}  // namespace

void FilterCurrentChildren(PropertyDB& /*db*/, const char* key, std::vector<IProperty*>& list) {
    KeyList keys = StartingKeys(key, list);

    std::vector<IProperty*> kept;
    for (IProperty* entry : list) {
        auto* property = dynamic_cast<Property*>(entry);
        if (property != nullptr && FirstMatchingKey(*property, keys) != keys.size()) {
            kept.push_back(entry);
            AddSameLevelKeyOnce(*property, keys);
        } else {
            entry->Release();
        }
    }
    list.swap(kept);
}

std::uint32_t GatherFromDatabase(PropertyDB& db, const char* key, std::vector<IProperty*>& list) {
    if (*key == '\0') return 0;

    KeyList keys = StartingKeys(key, list);

    // One pass in file order over the candidates of the keys in play: a property selected
    // only through a same-level key that turns up later in the pass is not picked up.
    const std::vector<IProperty*>& database = db.Properties();
    CandidatePass pass(db, db.Candidates());
    for (const std::string& k : keys) pass.AddKey(k);
    WorkListNames names(list);
    std::uint32_t position = 0;
    while (pass.Next(position)) {
        IProperty* candidate = database[position];
        auto* source = dynamic_cast<Property*>(candidate);
        if (source == nullptr) continue;
        const std::size_t matchedAt = FirstMatchingKey(*source, keys);
        if (matchedAt == keys.size()) continue;
        const std::uint32_t number = source->GetKeyNumber(keys[matchedAt].c_str());

        if (IProperty* present = names.Find(source->GetName())) {
            auto* existing = dynamic_cast<Property*>(present);
            if (existing != nullptr && AddSameLevelKeyOnce(*existing, keys)) pass.AddKey(keys.back());
            if (source->IsDisabled() && !HoldSameValue(candidate, present)) {
                IProperty* replacement = source->Clone();
                if (replacement != nullptr) {
                    names.Replaced(present, replacement);
                    *std::find(list.begin(), list.end(), present) = replacement;
                    present->Release();
                }
            }
            continue;
        }

        if (AddSameLevelKeyOnce(*source, keys)) pass.AddKey(keys.back());
        IProperty* copy = source->Clone();
        if (copy == nullptr) continue;
        const char* matched = keys[matchedAt].c_str();  // read after keys may have grown
        auto insertAt = std::find_if(list.begin(), list.end(), [&](IProperty* entry) {
            auto* property = dynamic_cast<Property*>(entry);
            if (property == nullptr) return false;
            const std::uint32_t entryNumber =
                property->IsKeyName(matched) ? property->GetKeyNumber(matched) : property->GetKeyNumber(key);
            return entryNumber > number;
        });
        list.insert(insertAt, copy);
        names.Added(copy);
    }
    return static_cast<std::uint32_t>(list.size());
}

bool HoldSameValue(IProperty* left, IProperty* right) {
    auto* leftProperty = dynamic_cast<Property*>(left);
    auto* rightProperty = dynamic_cast<Property*>(right);
    if (leftProperty == nullptr || rightProperty == nullptr) return false;

    auto* leftBoolean = dynamic_cast<BooleanProperty*>(leftProperty);
    auto* rightBoolean = dynamic_cast<BooleanProperty*>(rightProperty);
    if (leftBoolean != nullptr && rightBoolean != nullptr) return leftBoolean->GetValue() == rightBoolean->GetValue();

    auto* leftString = dynamic_cast<StringProperty*>(leftProperty);
    auto* rightString = dynamic_cast<StringProperty*>(rightProperty);
    if (leftString != nullptr && rightString != nullptr) {
        return std::strcmp(leftString->GetValue(), rightString->GetValue()) == 0;
    }
    // Integers, locations and mixed pairs count as equal: only Booleans and strings are compared.
    return true;
}

namespace {

// The work list of one level: each entry holds one reference until a parent takes it over.
// An exception on the way gives back the references still held.
class HeldWorkList {
public:
    HeldWorkList() = default;
    ~HeldWorkList() {
        for (IProperty* entry : entries) {
            if (entry != nullptr) entry->Release();
        }
    }
    HeldWorkList(const HeldWorkList&) = delete;
    HeldWorkList& operator=(const HeldWorkList&) = delete;

    std::vector<IProperty*> entries;
};

}  // namespace

void LinkSubPropertiesWithin(PropertyDB& db, IProperty* property, LinkBudget& budget) {
    auto* node = dynamic_cast<Property*>(property);
    if (node == nullptr) return;
    const LinkLevel level(budget, *property);

    const std::string key = node->GetChildKey();
    HeldWorkList list;
    node->GetSubProperties(list.entries);
    FilterCurrentChildren(db, key.c_str(), list.entries);
    GatherFromDatabase(db, key.c_str(), list.entries);
    budget.CountLinked(*property, list.entries.size());

    // Depth first: every entry is complete before the parent takes it.
    for (IProperty* entry : list.entries) LinkSubPropertiesWithin(db, entry, budget);

    node->RemoveAllSubProperties();
    IAttachableProperty* attachable = node;
    for (IProperty*& entry : list.entries) {
        IProperty* taken = entry;
        entry = nullptr;
        attachable->AddChild(taken);  // the child list takes over the reference
    }

    if (auto* boolean = dynamic_cast<BooleanProperty*>(node)) boolean->UpdateSubProperties();
}

void PropertyDB::LinkSubProperties(IProperty* property) {
    LinkBudget budget;
    LinkSubPropertiesWithin(*this, property, budget);
}

}  // namespace TargetOperations
