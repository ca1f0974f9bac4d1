// The work list of GatherFromDatabase while copies are inserted by key number (internal).
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

#include "../property/IProperty.h"
#include "KeyNameIds.h"

namespace TargetOperations {

// A copy matched under key m goes before the first entry e whose number f_m(e) exceeds the
// copy's, where f_m(e) is e's key number under m if e has the key m, else under the child key.
// A plain list makes that a scan from the start for every copy, quadratic when one key selects
// thousands of siblings. Here the entries sit in blocks of a few dozen, each block keeps the
// largest f_m of its entries, and a max tree over the blocks finds the first block that holds
// a larger number in logarithmic time. The f_m are kept for a few keys m at once (slots, the
// child key always among them); a key that is not in a slot takes the least recently used one
// and fills it for the whole list. A key that no entry carries needs no slot: f_m is then
// f of the child key, so a level with many same-level keys, each selecting its own few
// properties, stays with the child key's numbers.
class LinkWorkList {
public:
    using EntryId = std::uint32_t;
    static constexpr EntryId kNoEntry = 0xFFFFFFFFu;

    // Takes over the entries of list, with their references, in order; list is left empty.
    LinkWorkList(std::vector<IProperty*>& list, const char* key);
    // Gives back the references of entries not handed out by MoveTo.
    ~LinkWorkList();
    LinkWorkList(const LinkWorkList&) = delete;
    LinkWorkList& operator=(const LinkWorkList&) = delete;

    std::size_t size() const { return m_entries.size(); }

    // The first entry, in list order, whose name equals name, or kNoEntry.
    EntryId Find(const char* name);
    IProperty* PropertyOf(EntryId entry) const { return m_entries[entry].property; }
    // Puts replacement, a property of the same name, in the place of entry, releasing what
    // stood there.
    void Replace(EntryId entry, IProperty* replacement);
    // Inserts copy before the first entry whose number under matched exceeds number. Takes
    // over copy's reference, also when it throws.
    void Insert(IProperty* copy, const std::string& matched, std::uint32_t number);

    // Hands the entries, with their references, to list in order.
    void MoveTo(std::vector<IProperty*>& list);

private:
    static constexpr std::size_t kSlots = 4;
    static constexpr std::size_t kBlockLimit = 128;  // a fuller block splits in two
    static constexpr std::size_t kScanLimit = 8;     // longer lists find names through a map
    static constexpr std::uint32_t kNoBlock = 0xFFFFFFFFu;  // an entry not yet placed

    struct Entry {
        IProperty* property;
        std::uint32_t block;                 // into m_blocks
        std::uint32_t numbers[kSlots];       // f of each slot's key
    };
    struct Block {
        std::vector<EntryId> entries;        // in list order
        std::uint32_t largest[kSlots] = {};  // per slot, the largest number of the entries
        std::uint32_t position = 0;          // in m_order
    };
    struct Slot {
        std::string key;
        std::uint64_t lastUse = 0;
        bool bound = false;
    };

    std::uint32_t NumberOf(IProperty* entry, std::size_t slot) const;
    std::size_t SlotFor(const std::string& matched);
    // Whether some placed entry carries key; counts the key names on the first question.
    bool IsCarried(const std::string& key);
    void FillSlot(std::size_t slot);
    void FillNumbers(EntryId entry);
    void RecomputeLargest(Block& block);
    // The first block, in list order, holding a number above number in slot, or m_order.size().
    std::size_t FirstBlockAbove(std::size_t slot, std::uint32_t number) const;
    void SplitIfFull(std::uint32_t blockIndex);
    void RebuildTree();
    void UpdateTree(const Block& block);
    std::uint32_t& TreeNode(std::size_t slot, std::size_t node) { return m_tree[slot * 2 * m_leaves + node]; }
    std::uint32_t TreeNode(std::size_t slot, std::size_t node) const { return m_tree[slot * 2 * m_leaves + node]; }
    void MapNames();
    void NameAdded(EntryId id);
    // Adds (+1) or takes away (-1) the key names of an entry, once key names are counted.
    void CountKeyNames(IProperty* entry, int change);

    std::string m_key;
    std::vector<Entry> m_entries;     // by EntryId, in the order they came, not in list order
    std::vector<Block> m_blocks;      // by the order they were made
    std::vector<std::uint32_t> m_order;  // the blocks in list order
    Slot m_slots[kSlots];
    std::uint64_t m_uses = 0;
    std::size_t m_leaves = 0;            // leaves of each slot's tree, a power of two
    std::vector<std::uint32_t> m_tree;   // per slot, a max tree over the blocks in list order
    // The first entry with each name, by the name's number; a replacement keeps the name.
    KeyNameIds m_names;
    std::vector<EntryId> m_firstWithName;
    bool m_mapped = false;
    // How many entries carry each key name; counted from the first copy matched under another key.
    std::unordered_map<std::string, std::uint32_t> m_keyNameUses;
    bool m_counting = false;
};

}  // namespace TargetOperations
