// Taking the values a caller edited in its copy of a tree over into another tree of the same
// shape, matching nodes by name.

#include <cstdint>
#include <cstring>
#include <vector>

#include "../property/IBooleanProperty.h"
#include "../property/IIntegerProperty.h"
#include "../property/ILocationProperty.h"
#include "../property/ILocationProperty2.h"
#include "../property/IStringProperty.h"
#include "HeldProperties.h"
#include "RLXExports.h"

using namespace TargetOperations;
using ReferenceCounting::_ClassID;

namespace {

// One typed interface of a property, asked through QueryInterface and released when done.
template <typename Interface>
class TypedView {
public:
    TypedView(IProperty* property, _ClassID id) : m_interface(static_cast<Interface*>(property->QueryInterface(id))) {}
    ~TypedView() {
        if (m_interface != nullptr) m_interface->Release();
    }
    TypedView(const TypedView&) = delete;
    TypedView& operator=(const TypedView&) = delete;

    explicit operator bool() const { return m_interface != nullptr; }
    Interface* operator->() const { return m_interface; }

private:
    Interface* m_interface;
};

// After a value change that may select other sub-properties: relink through the parent when
// there is one and take the pair over again, else relink the destination itself.
void Rederive(std::uint32_t dbNumber, IProperty* source, IProperty* destination, IProperty* destinationParent) {
    if (destinationParent != nullptr) {
        UpdateSubProperties(dbNumber, destinationParent);
        ConvertBack(dbNumber, source, destination, nullptr, nullptr);
    } else {
        UpdateSubProperties(dbNumber, destination);
    }
}

bool TakeOverValues(std::uint32_t dbNumber, IProperty* source, IProperty* destination, IProperty* destinationParent) {
    bool taken = false;
    {
        TypedView<IBooleanProperty> from(source, ReferenceCounting::ClassID_IBooleanProperty);
        TypedView<IBooleanProperty> to(destination, ReferenceCounting::ClassID_IBooleanProperty);
        if (from && to) {
            if (from->GetValue() != to->GetValue()) {
                to->SetValue(from->GetValue());
                Rederive(dbNumber, source, destination, destinationParent);
            }
            taken = true;
        }
    }
    {
        TypedView<IIntegerProperty> from(source, ReferenceCounting::ClassID_IIntegerProperty);
        TypedView<IIntegerProperty> to(destination, ReferenceCounting::ClassID_IIntegerProperty);
        if (from && to) {
            to->SetValue(from->GetValue());
            taken = true;
        }
    }
    {
        TypedView<ILocationProperty> from(source, ReferenceCounting::ClassID_ILocationProperty);
        TypedView<ILocationProperty> to(destination, ReferenceCounting::ClassID_ILocationProperty);
        if (from && to) {
            std::uint32_t page = 0;
            const std::uint32_t value = from->GetValue(page);
            to->SetValue(value, page);
            to->SetCookie(from->GetCookie());
            taken = true;
        }
    }
    {
        // 64-bit pairs passed the 32-bit block too; the full value overwrites it here.
        TypedView<ILocationProperty2> from(source, ReferenceCounting::ClassID_ILocationProperty2);
        TypedView<ILocationProperty2> to(destination, ReferenceCounting::ClassID_ILocationProperty2);
        if (from && to) {
            std::uint32_t page = 0;
            const Debugger::Address value = from->GetValue64(page);
            to->SetValue64(value, page);
            to->SetCookie(from->GetCookie());
            taken = true;
        }
    }
    {
        TypedView<IStringProperty> from(source, ReferenceCounting::ClassID_IStringProperty);
        TypedView<IStringProperty> to(destination, ReferenceCounting::ClassID_IStringProperty);
        if (from && to) {
            if (std::strcmp(from->GetValue(), to->GetValue()) != 0) {
                to->SetValue(from->GetValue());
                // A value the destination does not allow is refused silently: nothing taken.
                if (std::strcmp(from->GetValue(), to->GetValue()) == 0) {
                    Rederive(dbNumber, source, destination, destinationParent);
                    taken = true;
                }
            } else {
                taken = true;
            }
        }
    }
    return taken;
}

bool ConvertPair(std::uint32_t dbNumber, IProperty* source, IProperty* destination, IProperty* destinationParent) {
    if (std::strcmp(source->GetName(), destination->GetName()) != 0) return false;
    bool taken = false;

    if (!destination->IsDisabled() && destination->IsEditable()) {
        taken = TakeOverValues(dbNumber, source, destination, destinationParent);
    }

    const std::uint32_t sourceCount = source->GetNumSubProperties();
    if (sourceCount != destination->GetNumSubProperties() && sourceCount != 0) {
        try {
            UpdateSubProperties(dbNumber, destination);
        } catch (...) {
            return false;
        }
    }

    const HeldProperties sourceChildren = HeldProperties::ChildrenOf(*source);
    HeldProperties destinationChildren = HeldProperties::ChildrenOf(*destination);
    for (IProperty* sourceChild : sourceChildren.Items()) {
        for (IProperty* destinationChild : destinationChildren.Items()) {
            if (ConvertBack(dbNumber, sourceChild, destinationChild, source, destination)) {
                taken = true;
                // The takeover may have rebuilt the destination's children.
                destinationChildren = HeldProperties::ChildrenOf(*destination);
                break;
            }
        }
    }
    return taken;
}

}  // namespace

extern "C" {

bool ConvertBack(std::uint32_t dbNumber, TargetOperations::IProperty* source, TargetOperations::IProperty* destination,
                 TargetOperations::IProperty* /*sourceParent*/, TargetOperations::IProperty* destinationParent) {
    if (source == nullptr || destination == nullptr) return false;
    try {
        return ConvertPair(dbNumber, source, destination, destinationParent);
    } catch (...) {
        return false;
    }
}

}  // extern "C"
