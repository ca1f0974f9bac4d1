#include "ParseFailureSeverities.h"

namespace TargetOperations {

using Kw::Mbr::Korva::korvaErrorIF;

const SaxFailureSeverities& PropertyDBFailureSeverities() {
    static const SaxFailureSeverities severities{korvaErrorIF::Error, korvaErrorIF::Error, korvaErrorIF::Error,
                                                 korvaErrorIF::Warning};
    return severities;
}

const SaxFailureSeverities& DriverDBFailureSeverities() {
    static const SaxFailureSeverities severities{korvaErrorIF::Internal, korvaErrorIF::Internal, korvaErrorIF::Error,
                                                 korvaErrorIF::Internal};
    return severities;
}

}  // namespace TargetOperations
