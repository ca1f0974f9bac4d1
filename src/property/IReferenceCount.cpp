#include "IReferenceCount.h"

namespace ReferenceCounting {

IReferenceCount::~IReferenceCount() = default;

}  // namespace ReferenceCounting
