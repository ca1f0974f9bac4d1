#include "NodeView.h"
#include "Ref.h"

#include <cstring>

using namespace TargetOperations;

namespace rlxprop {

namespace {

void ReadStringValues(StringProperty& string, NodeView& view) {
    view.stringValue = string.GetValue();
    std::uint32_t count = 0;
    if (!string.HasAllowedValues(count) || count == 0) return;
    std::vector<const char*> values(count, nullptr);
    string.GetAllowedValues(values.data());
    std::vector<ValueAttribute> attributes;
    string.GetAllowedAttributes(attributes);
    for (std::uint32_t i = 0; i < count; ++i) {
        AllowedValueView item;
        item.value = values[i];
        item.selected = item.value == view.stringValue;
        item.disabled = string.IsDisabledAllowed(values[i]);
        if (i < attributes.size()) {
            const ValueAttribute& a = attributes[i];
            item.hasAttribute = true;
            item.key = a.KeyName();
            item.enumValue = a.EnumValue();
            item.category = a.Category();
            item.haltCpu = a.HaltCpu();
            item.sameLevelKey = a.SameLevelKey();
        }
        view.allowed.push_back(item);
    }
}

void ReadTypedValue(IProperty* property, NodeView& view) {
    if (Ref<IBooleanProperty> b{CastIBoolean(property)}) {
        view.kind = NodeKind::Boolean;
        view.boolValue = b->GetValue();
    } else if (Ref<IIntegerProperty> i{CastIInteger(property)}) {
        view.kind = NodeKind::Integer;
        view.numberValue = i->GetValue();
        i->HasAllowedRange(view.rangeLow, view.rangeHigh);
        view.decimalDisplay = i->GetDisplaySuggestion() == IIntegerProperty::DisplayDecimal;
    } else if (Ref<ILocationProperty2> l2{CastILocation2(property)}) {
        view.kind = NodeKind::Location64;
        view.numberValue = l2->GetValue64(view.page).GetAddress();
        view.cookie = l2->GetCookie();
    } else if (Ref<ILocationProperty> l{CastILocation(property)}) {
        view.kind = NodeKind::Location;
        view.numberValue = l->GetValue(view.page);
        view.cookie = l->GetCookie();
    } else if (Ref<StringProperty> s{CastString(property)}) {
        view.kind = NodeKind::String;
        ReadStringValues(*s, view);
    }
}

}  // namespace

const char* KindName(NodeKind kind) {
    switch (kind) {
        case NodeKind::Group: return "group";
        case NodeKind::Boolean: return "bool";
        case NodeKind::Integer: return "integer";
        case NodeKind::Location: return "location";
        case NodeKind::Location64: return "location64";
        case NodeKind::String: return "string";
    }
    return "group";
}

NodeView ReadNode(IProperty* property, int depth) {
    NodeView view;
    view.name = property->GetName();
    view.description = property->GetDescription();
    view.editable = property->IsEditable();
    view.disabled = property->IsDisabled();
    if (Property* node = dynamic_cast<Property*>(property)) {
        view.haltCpu = node->IsHaltCPU();
        view.category = node->GetCategory();
        view.enumValue = node->GetEnumValue();
        view.childKey = node->GetChildKey();
        view.sameLevelKey = node->GetSameLevelKey();
    }
    ReadTypedValue(property, view);

    if (depth == 0) return view;
    std::vector<IProperty*> children;
    Property::GetSubProperties(property, children);
    for (IProperty* child : children) {
        view.children.push_back(ReadNode(child, depth < 0 ? depth : depth - 1));
        child->Release();
    }
    return view;
}

namespace {

IProperty* FindByName(IProperty* node, const std::string& name) {
    if (name == node->GetName()) {
        node->AddRef();
        return node;
    }
    std::vector<IProperty*> children;
    Property::GetSubProperties(node, children);
    IProperty* found = nullptr;
    for (IProperty* child : children) {
        if (found == nullptr) found = FindByName(child, name);
        child->Release();
    }
    return found;
}

IProperty* FindByPath(IProperty* root, const std::string& path) {
    std::vector<std::string> parts;
    std::string::size_type start = 0;
    for (;;) {
        const std::string::size_type slash = path.find('/', start);
        parts.push_back(path.substr(start, slash - start));
        if (slash == std::string::npos) break;
        start = slash + 1;
    }
    // The root's own name may lead the path or be left out.
    std::size_t first = (!parts.empty() && parts.front() == root->GetName()) ? 1 : 0;
    root->AddRef();
    IProperty* current = root;
    for (std::size_t i = first; i < parts.size() && current != nullptr; ++i) {
        std::vector<IProperty*> children;
        Property::GetSubProperties(current, children);
        IProperty* next = nullptr;
        for (IProperty* child : children) {
            if (next == nullptr && parts[i] == child->GetName()) {
                next = child;
                next->AddRef();
            }
            child->Release();
        }
        current->Release();
        current = next;
    }
    return current;
}

}  // namespace

IProperty* FindNode(IProperty* root, const std::string& name) {
    if (IProperty* found = FindByName(root, name)) return found;
    if (name.find('/') != std::string::npos) return FindByPath(root, name);
    return nullptr;
}

}  // namespace rlxprop
