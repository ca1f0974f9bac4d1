// Interfaces of the host debugger that share the identity numbering. No class of this
// library implements them; they exist so that the general QueryInterface can ask for them.
#pragma once

#include "IProperty.h"

namespace TargetOperations {
class RLX_API IPropertyDescribed : public virtual IProperty {};
class RLX_API IOperation : public virtual ReferenceCounting::IReferenceCount {};
class RLX_API IOperationServer : public virtual ReferenceCounting::IReferenceCount {};
class RLX_API IOperation2 : public virtual IOperation {};
class RLX_API IOperation3 : public virtual IOperation2 {};
class RLX_API IOperation4 : public virtual IOperation3 {};
class RLX_API IOperation5 : public virtual IOperation4 {};
class RLX_API IOperation6 : public virtual IOperation5 {};
}  // namespace TargetOperations

namespace SyncSetup {
class RLX_API ISyncMode : public virtual ReferenceCounting::IReferenceCount {};
class RLX_API ISyncMode2 : public virtual ISyncMode {};
class RLX_API IStepPastBp : public virtual ReferenceCounting::IReferenceCount {};
}  // namespace SyncSetup
