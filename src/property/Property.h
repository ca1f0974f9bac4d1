// The node of every property tree.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "IAttachableProperty.h"
#include "NameAndDescription.h"
#include "PropertyKey.h"
#include "PropertyKeyList.h"
#include "PropertyTexts.h"
#include "TextPair.h"
#include "ReferenceCount.h"
#include "Replacable.h"

namespace TargetOperations {

class RLX_API Property : public ReferenceCount, public virtual IAttachableProperty {
public:
    static IProperty* Construct(const NameAndDescription& nd);

    // IReferenceCount: fixed answer table.
    void* QueryInterface(ReferenceCounting::_ClassID id) override;

    // IProperty
    const char* GetName() const override;
    const char* GetDescription() const override;
    bool IsEditable() const override;
    bool IsDisabled() const override;
    std::uint32_t GetNumSubProperties() const override;
    void GetSubProperties(IProperty** out) const override;
    IProperty* GetParentProperty() const override;

    // IAttachableProperty
    void AddChild(IProperty* child) override;

    // Property's own table, in slot order.
    virtual bool IsHaltCPU() const;
    virtual void GetSubProperties(std::vector<IProperty*>& out) const;
    virtual void AddKeyName(const PropertyKey& key);
    virtual void SetEditable(bool editable);
    virtual void SetCategory(std::uint32_t category);
    virtual void SetEnumValue(std::int32_t enumValue);
    virtual void SetChildKey(const char* childKey);
    virtual void SetSameLevelKey(const char* sameLevelKey);
    virtual void SetDisabled(bool disabled);
    virtual void SetHaltCPU(bool haltCpu);
    virtual bool IsKeyName(const char* name) const;
    virtual std::uint32_t GetKeyNumber(const char* name) const;
    virtual std::uint32_t GetCategory() const;
    virtual std::int32_t GetEnumValue() const;
    virtual const char* GetChildKey() const;
    virtual const char* GetSameLevelKey() const;
    virtual void SetParent(Property* parent);
    virtual IProperty* Clone();
    virtual void RemoveAllSubProperties();
    virtual void RemoveAllKeys();
    virtual void SetName(const char* name);
    virtual void SetDescription(const char* description);
    virtual void SetReplacable(eREPLACABLE replacable);
    virtual eREPLACABLE IsReplacable();
    virtual bool IsEqual(Property& other);
    virtual void UpdateSelf();
    virtual void DisableAllLevel(bool disabled);

    // Non-virtual helpers.
    static void GetSubProperties(IProperty* p, std::vector<IProperty*>& out);
    static void AddChild(IProperty* parent, IProperty* child);

protected:
    explicit Property(const NameAndDescription& nd);
    Property(const Property& source);  // deep copy of the whole subtree
    Property& operator=(const Property&) = delete;
    ~Property() override;

    void TestInvariant() const;

private:
    // The database's linking index records each listed property's keys; the stamp tells it
    // when they changed afterwards, however they were changed.
    friend class PropertyDB;
    // The reader gives a property its keys before any database lists it, when no index can
    // hold a stale copy of them: those keys need no new generation.
    friend class PropertyDBHandler;
    static std::uint64_t KeysGeneration();
    void KeysChanged();

    PropertyTexts m_texts;
    PropertyKeyList m_keys;
    std::uint32_t m_category;
    std::int32_t m_enumValue;
    TextPair<24> m_linkKeys;  // the child key, then the same-level key: both short, often empty
    bool m_editable;
    bool m_disabled;
    bool m_haltCpu;
    eREPLACABLE m_replacable;
    std::vector<IProperty*> m_children;  // one counted reference each
    IProperty* m_parent;                 // back link, not counted
    std::uint64_t m_keysStamp;           // the process-wide key generation of the last key change
};

}  // namespace TargetOperations
