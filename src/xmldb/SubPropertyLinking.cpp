#include "SubPropertyLinking.h"

#include <algorithm>
#include <cstring>
#include <functional>
#include <string>

#include "../property/BooleanProperty.h"
#include "../property/Property.h"
#include "../property/StringProperty.h"
#include "LinkKeyList.h"
#include "LinkWorkList.h"
#include "PropertyDB.h"

namespace TargetOperations {

namespace {

const char kTestKey[] = "TESTKEY";

// The database positions a single pass in file order has to visit for the keys in play:
// the merged, ascending candidate lists of those keys. A key that joins during the pass
// contributes only its candidates after the current position, as the file-order pass would.
class CandidatePass {
public:
    CandidatePass(PropertyDB& db, const LinkCandidates& candidates)
        : m_db(db), m_candidates(candidates), m_added(candidates.byKey.size(), false) {
        AddSource(&m_candidates.unlisted);
    }

    void AddKey(const std::string& key) {
        if (key == kTestKey && !m_keylessAdded) {
            m_keylessAdded = true;
            AddSource(&m_candidates.keyless);
        }
        const std::uint32_t id = m_db.FindKeyId(key.c_str());
        if (id == PropertyDB::kNoKeyId || m_added[id]) return;
        m_added[id] = true;
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
    std::vector<bool> m_added;  // by key id: many same-level keys may join one pass
    bool m_keylessAdded = false;
    bool m_started = false;
    std::uint32_t m_current = 0;
};

}  // namespace

void FilterCurrentChildren(PropertyDB& /*db*/, const char* key, std::vector<IProperty*>& list) {
    if (list.empty()) return;  // most levels have no children yet: no key list to make
    LinkKeyList keys(key, list);

    std::vector<IProperty*> kept;
    for (IProperty* entry : list) {
        auto* property = dynamic_cast<Property*>(entry);
        if (property != nullptr && keys.FirstMatchOf(*property) != keys.size()) {
            kept.push_back(entry);
            keys.AddSameLevelKeyOnce(*property);
        } else {
            entry->Release();
        }
    }
    list.swap(kept);
}

std::uint32_t GatherFromDatabase(PropertyDB& db, const char* key, std::vector<IProperty*>& list) {
    if (*key == '\0') return 0;

    LinkKeyList keys(key, list);

    // One pass in file order over the candidates of the keys in play: a property selected
    // only through a same-level key that turns up later in the pass is not picked up.
    const std::vector<IProperty*>& database = db.Properties();
    CandidatePass pass(db, db.Candidates());
    for (std::size_t i = 0; i < keys.size(); ++i) pass.AddKey(keys[i]);
    LinkWorkList work(list, key);  // on an exception it gives back the references it took
    std::uint32_t position = 0;
    while (pass.Next(position)) {
        IProperty* candidate = database[position];
        auto* source = dynamic_cast<Property*>(candidate);
        if (source == nullptr) continue;
        const std::size_t matchedAt = keys.FirstMatchOf(*source);
        if (matchedAt == keys.size()) continue;
        const std::string& matched = keys[matchedAt];
        const std::uint32_t number = source->GetKeyNumber(matched.c_str());

        const LinkWorkList::EntryId present = work.Find(source->GetName());
        if (present != LinkWorkList::kNoEntry) {
            auto* existing = dynamic_cast<Property*>(work.PropertyOf(present));
            if (existing != nullptr && keys.AddSameLevelKeyOnce(*existing)) pass.AddKey(keys.back());
            if (source->IsDisabled() && !HoldSameValue(candidate, work.PropertyOf(present))) {
                IProperty* replacement = source->Clone();
                if (replacement != nullptr) work.Replace(present, replacement);
            }
            continue;
        }

        if (keys.AddSameLevelKeyOnce(*source)) pass.AddKey(keys.back());
        IProperty* copy = source->Clone();
        if (copy == nullptr) continue;
        work.Insert(copy, matched, number);
    }
    work.MoveTo(list);
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
