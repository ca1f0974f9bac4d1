#include "ReferenceCount.h"

#include "../support/LibraryTrace.h"
#include "HostInterfaces.h"
#include "IAttachableProperty.h"
#include "IBooleanProperty.h"
#include "IIntegerProperty.h"
#include "ILocationProperty2.h"
#include "IStringProperty.h"

namespace TargetOperations {

using namespace ReferenceCounting;

ReferenceCount::ReferenceCount() : m_nRefCount(1) {}

ReferenceCount::ReferenceCount(const ReferenceCount&) : IReferenceCount(), m_nRefCount(1) {}

ReferenceCount::~ReferenceCount() {
    // Destroyed while somebody still counts on it (a stack object, an explicit delete):
    // worth a trace line, but destruction goes on.
    if (m_nRefCount != 0 && KW_MBR::LibraryTraceEnabled()) {
        KW_MBR::LibraryTrace(m_nRefCount < 2 ? KW_MBR::TraceWarning : KW_MBR::TraceError,
                             "calling ~ReferenceCount() when m_nRefCount is still %d",
                             static_cast<int>(m_nRefCount));
    }
}

std::uint32_t ReferenceCount::AddRef() const {
    return ++m_nRefCount;
}

std::uint32_t ReferenceCount::Release() const {
    const std::uint32_t before = m_nRefCount;
    m_nRefCount = before - 1;
    if (m_nRefCount == 0) {
        delete this;
    }
    return before;
}

namespace {

template <typename Interface>
void* AskRuntimeType(ReferenceCount* self) {
    Interface* found = dynamic_cast<Interface*>(self);
    return found ? static_cast<void*>(found) : nullptr;
}

}  // namespace

void* ReferenceCount::QueryInterface(_ClassID id) {
    void* answer = nullptr;
    switch (id) {
        case ClassID_IReferenceCount: answer = static_cast<IReferenceCount*>(this); break;
        case ClassID_IAttachableProperty: answer = AskRuntimeType<IAttachableProperty>(this); break;
        case ClassID_IBooleanProperty: answer = AskRuntimeType<IBooleanProperty>(this); break;
        case ClassID_IOperation: answer = AskRuntimeType<IOperation>(this); break;
        case ClassID_IOperationServer: answer = AskRuntimeType<IOperationServer>(this); break;
        case ClassID_IIntegerProperty: answer = AskRuntimeType<IIntegerProperty>(this); break;
        case ClassID_ILocationProperty: answer = AskRuntimeType<ILocationProperty>(this); break;
        case ClassID_IProperty: answer = AskRuntimeType<IProperty>(this); break;
        case ClassID_IStringProperty: answer = AskRuntimeType<IStringProperty>(this); break;
        case ClassID_IPropertyDescribed: answer = AskRuntimeType<IPropertyDescribed>(this); break;
        case ClassID_IOperation2: answer = AskRuntimeType<IOperation2>(this); break;
        case ClassID_IOperation3: answer = AskRuntimeType<IOperation3>(this); break;
        case ClassID_IOperation4: answer = AskRuntimeType<IOperation4>(this); break;
        case ClassID_IOperation5: answer = AskRuntimeType<IOperation5>(this); break;
        case ClassID_ILocationProperty2: answer = AskRuntimeType<ILocationProperty2>(this); break;
        case ClassID_ISyncMode: answer = AskRuntimeType<SyncSetup::ISyncMode>(this); break;
        case ClassID_IStepPastBp: answer = AskRuntimeType<SyncSetup::IStepPastBp>(this); break;
        case ClassID_ISyncMode2: answer = AskRuntimeType<SyncSetup::ISyncMode2>(this); break;
        case ClassID_IOperation6: answer = AskRuntimeType<IOperation6>(this); break;
        default: break;  // 9 is reserved; anything above 19 is unknown
    }
    if (answer != nullptr) AddRef();
    return answer;
}

}  // namespace TargetOperations
