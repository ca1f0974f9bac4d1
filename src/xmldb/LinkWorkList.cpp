#include "LinkWorkList.h"

#include <algorithm>
#include <cstring>

#include "../property/Property.h"
#include "PropertyKeyNames.h"

namespace TargetOperations {

LinkWorkList::LinkWorkList(std::vector<IProperty*>& list, const char* key) : m_key(key) {
    m_slots[0].key = m_key;
    m_slots[0].bound = true;
    m_entries.reserve(list.size());
    m_blocks.reserve(list.size() / kBlockLimit + 1);
    for (std::size_t start = 0; start < list.size() || start == 0; start += kBlockLimit) {
        const auto blockIndex = static_cast<std::uint32_t>(m_blocks.size());
        m_blocks.emplace_back();
        Block& block = m_blocks.back();
        block.position = blockIndex;
        m_order.push_back(blockIndex);
        const std::size_t end = std::min(list.size(), start + kBlockLimit);
        for (std::size_t i = start; i < end; ++i) {
            const auto id = static_cast<EntryId>(m_entries.size());
            m_entries.push_back(Entry{list[i], blockIndex, {}});
            block.entries.push_back(id);
            FillNumbers(id);
        }
        RecomputeLargest(block);
    }
    RebuildTree();
    list.clear();  // only now: until here the caller's list still held every reference
}

LinkWorkList::~LinkWorkList() {
    for (Entry& entry : m_entries) {
        if (entry.property != nullptr) entry.property->Release();
    }
}

LinkWorkList::EntryId LinkWorkList::Find(const char* name) {
    if (!m_mapped && m_entries.size() > kScanLimit) MapNames();
    if (m_mapped) {
        const std::uint32_t number = m_names.Find(name);
        return number == KeyNameIds::kNone ? kNoEntry : m_firstWithName[number];
    }
    for (const std::uint32_t blockIndex : m_order) {
        for (const EntryId id : m_blocks[blockIndex].entries) {
            if (std::strcmp(m_entries[id].property->GetName(), name) == 0) return id;
        }
    }
    return kNoEntry;
}

void LinkWorkList::MapNames() {
    for (const std::uint32_t blockIndex : m_order) {
        for (const EntryId id : m_blocks[blockIndex].entries) NameAdded(id);
    }
    m_mapped = true;
}

void LinkWorkList::NameAdded(EntryId id) {
    // A name seen before keeps its first entry.
    if (m_names.Intern(m_entries[id].property->GetName()) == m_firstWithName.size()) m_firstWithName.push_back(id);
}

void LinkWorkList::Replace(EntryId id, IProperty* replacement) {
    Entry& entry = m_entries[id];
    IProperty* old = entry.property;
    CountKeyNames(old, -1);
    CountKeyNames(replacement, +1);
    entry.property = replacement;
    old->Release();
    FillNumbers(id);
    // The numbers may have dropped, so the block's largest are counted again.
    Block& block = m_blocks[entry.block];
    RecomputeLargest(block);
    UpdateTree(block);
}

void LinkWorkList::Insert(IProperty* copy, const std::string& matched, std::uint32_t number) {
    const auto id = static_cast<EntryId>(m_entries.size());
    try {
        m_entries.push_back(Entry{copy, kNoBlock, {}});
    } catch (...) {
        copy->Release();
        throw;
    }
    FillNumbers(id);
    if (m_mapped) NameAdded(id);

    const std::size_t slot = SlotFor(matched);  // before the copy's own keys count
    CountKeyNames(copy, +1);
    const std::size_t position = FirstBlockAbove(slot, number);
    std::uint32_t blockIndex = 0;
    std::vector<EntryId>::iterator insertAt;
    if (position == m_order.size()) {
        blockIndex = m_order.back();
        insertAt = m_blocks[blockIndex].entries.end();
    } else {
        blockIndex = m_order[position];
        std::vector<EntryId>& entries = m_blocks[blockIndex].entries;
        // Entries with an equal number stay ahead of the copy.
        insertAt = std::find_if(entries.begin(), entries.end(),
                                [&](EntryId other) { return m_entries[other].numbers[slot] > number; });
    }
    Block& block = m_blocks[blockIndex];
    block.entries.insert(insertAt, id);
    m_entries[id].block = blockIndex;
    for (std::size_t s = 0; s < kSlots; ++s) block.largest[s] = std::max(block.largest[s], m_entries[id].numbers[s]);
    UpdateTree(block);
    SplitIfFull(blockIndex);
}

void LinkWorkList::MoveTo(std::vector<IProperty*>& list) {
    list.clear();
    list.reserve(m_entries.size());
    for (const std::uint32_t blockIndex : m_order) {
        for (const EntryId id : m_blocks[blockIndex].entries) list.push_back(m_entries[id].property);
    }
    for (Entry& entry : m_entries) entry.property = nullptr;  // list holds the references now
}

std::uint32_t LinkWorkList::NumberOf(IProperty* entry, std::size_t slot) const {
    if (!m_slots[slot].bound) return 0;
    auto* property = dynamic_cast<Property*>(entry);
    // An entry that is no Property never counts as greater: 0 exceeds no number.
    if (property == nullptr) return 0;
    const char* key = m_slots[slot].key.c_str();
    return property->IsKeyName(key) ? property->GetKeyNumber(key) : property->GetKeyNumber(m_key.c_str());
}

void LinkWorkList::FillNumbers(EntryId id) {
    Entry& entry = m_entries[id];
    for (std::size_t s = 0; s < kSlots; ++s) entry.numbers[s] = NumberOf(entry.property, s);
}

std::size_t LinkWorkList::SlotFor(const std::string& matched) {
    // Under the child key, and under a key that no entry carries, f is the entry's key
    // number under the child key.
    std::size_t chosen = 0;
    if (matched != m_key && IsCarried(matched)) {
        chosen = kSlots;
        for (std::size_t s = 1; s < kSlots && chosen == kSlots; ++s) {
            if (m_slots[s].bound && m_slots[s].key == matched) chosen = s;
        }
        if (chosen == kSlots) {
            chosen = 1;
            for (std::size_t s = 2; s < kSlots; ++s) {
                if (m_slots[s].lastUse < m_slots[chosen].lastUse) chosen = s;
            }
            m_slots[chosen].key = matched;
            m_slots[chosen].bound = true;
            FillSlot(chosen);
        }
    }
    m_slots[chosen].lastUse = ++m_uses;
    return chosen;
}

bool LinkWorkList::IsCarried(const std::string& key) {
    if (!m_counting) {
        m_counting = true;
        for (const Entry& entry : m_entries) {
            if (entry.block != kNoBlock) CountKeyNames(entry.property, +1);
        }
    }
    return m_keyNameUses.count(key) != 0;
}

void LinkWorkList::CountKeyNames(IProperty* entry, int change) {
    auto* property = dynamic_cast<Property*>(entry);
    if (!m_counting || property == nullptr) return;
    ForEachKeyName(*property, [&](std::string_view name) {
        if (change > 0) {
            ++m_keyNameUses[std::string(name)];
            return;
        }
        const auto found = m_keyNameUses.find(std::string(name));
        if (--found->second == 0) m_keyNameUses.erase(found);
    });
}

void LinkWorkList::FillSlot(std::size_t slot) {
    for (Entry& entry : m_entries) entry.numbers[slot] = NumberOf(entry.property, slot);
    for (Block& block : m_blocks) {
        block.largest[slot] = 0;
        for (const EntryId id : block.entries) block.largest[slot] = std::max(block.largest[slot], m_entries[id].numbers[slot]);
    }
    for (const Block& block : m_blocks) UpdateTree(block);
}

void LinkWorkList::RecomputeLargest(Block& block) {
    std::fill(std::begin(block.largest), std::end(block.largest), 0u);
    for (const EntryId id : block.entries) {
        for (std::size_t s = 0; s < kSlots; ++s) block.largest[s] = std::max(block.largest[s], m_entries[id].numbers[s]);
    }
}

std::size_t LinkWorkList::FirstBlockAbove(std::size_t slot, std::uint32_t number) const {
    if (TreeNode(slot, 1) <= number) return m_order.size();
    std::size_t node = 1;
    while (node < m_leaves) node = TreeNode(slot, 2 * node) > number ? 2 * node : 2 * node + 1;
    return node - m_leaves;
}

void LinkWorkList::SplitIfFull(std::uint32_t blockIndex) {
    if (m_blocks[blockIndex].entries.size() <= kBlockLimit) return;
    const auto newIndex = static_cast<std::uint32_t>(m_blocks.size());
    m_blocks.emplace_back();  // may move the blocks: refer to them by index from here on
    Block& full = m_blocks[blockIndex];
    Block& second = m_blocks[newIndex];
    const auto half = full.entries.begin() + static_cast<std::ptrdiff_t>(full.entries.size() / 2);
    second.entries.assign(half, full.entries.end());
    full.entries.erase(half, full.entries.end());
    for (const EntryId id : second.entries) m_entries[id].block = newIndex;
    RecomputeLargest(full);
    RecomputeLargest(second);
    m_order.insert(m_order.begin() + static_cast<std::ptrdiff_t>(full.position) + 1, newIndex);
    for (std::size_t position = full.position + 1; position < m_order.size(); ++position) {
        m_blocks[m_order[position]].position = static_cast<std::uint32_t>(position);
    }
    RebuildTree();
}

void LinkWorkList::RebuildTree() {
    m_leaves = 1;
    while (m_leaves < m_order.size()) m_leaves *= 2;
    m_tree.assign(kSlots * 2 * m_leaves, 0u);
    for (std::size_t slot = 0; slot < kSlots; ++slot) {
        for (std::size_t position = 0; position < m_order.size(); ++position) {
            TreeNode(slot, m_leaves + position) = m_blocks[m_order[position]].largest[slot];
        }
        for (std::size_t node = m_leaves - 1; node >= 1; --node) {
            TreeNode(slot, node) = std::max(TreeNode(slot, 2 * node), TreeNode(slot, 2 * node + 1));
        }
    }
}

void LinkWorkList::UpdateTree(const Block& block) {
    for (std::size_t slot = 0; slot < kSlots; ++slot) {
        std::size_t node = m_leaves + block.position;
        TreeNode(slot, node) = block.largest[slot];
        for (node /= 2; node >= 1; node /= 2) {
            TreeNode(slot, node) = std::max(TreeNode(slot, 2 * node), TreeNode(slot, 2 * node + 1));
        }
    }
}

}  // namespace TargetOperations
