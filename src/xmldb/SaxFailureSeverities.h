// How severe each failure of a file read is; the two readers differ (internal).
#pragma once

#include "../support/korvaError.h"

namespace TargetOperations {

struct SaxFailureSeverities {
    Kw::Mbr::Korva::korvaErrorIF::Severity_Type initialization;
    Kw::Mbr::Korva::korvaErrorIF::Severity_Type xmlException;
    Kw::Mbr::Korva::korvaErrorIF::Severity_Type undefinedException;
    Kw::Mbr::Korva::korvaErrorIF::Severity_Type recoverableErrors;
};

}  // namespace TargetOperations
