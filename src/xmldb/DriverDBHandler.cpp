#include "DriverDBHandler.h"

#include <cstdlib>

#include "NarrowText.h"

namespace TargetOperations {

namespace {

struct DriverTagName {
    const char* name;
    DriverDBTag code;
};

const DriverTagName kDriverTagNames[] = {
    {"DB_MAJOR_V", DriverTag_DB_MAJOR_V},   {"DB_MINOR_V", DriverTag_DB_MINOR_V},
    {"DRIVER", DriverTag_DRIVER},           {"CPUTYPE", DriverTag_CPUTYPE},
    {"PROPERTYFILE", DriverTag_PROPERTYFILE}, {"DRIVERNAME", DriverTag_DRIVERNAME},
    {"ENTITYCODE", DriverTag_ENTITYCODE},   {"SUPPORTTRACE", DriverTag_SUPPORTTRACE},
};

}  // namespace

DriverDBHandler::DriverDBHandler(DriverDB* database)
    : m_database(database), m_currentTag(DriverTag_Unknown), m_lastUnknownTag(DriverTag_Unknown), m_currentNumber(0) {}

DriverDBHandler::~DriverDBHandler() = default;

DriverDBTag DriverDBHandler::LookupTag(const std::string& name) {
    for (const DriverTagName& entry : kDriverTagNames) {
        if (name == entry.name) return entry.code;
    }
    return DriverTag_Unknown;
}

bool DriverDBHandler::IsValidTag(std::uint32_t code) {
    return code >= DriverTag_Unnamed && code <= DriverTag_HighestValid;
}

void DriverDBHandler::characters(const XMLCh* const chars, const XMLSize_t /*length*/) {
    if (m_currentTag == DriverTag_Unnamed || m_currentTag == DriverTag_DB_MAJOR_V ||
        m_currentTag == DriverTag_DB_MINOR_V) {
        // The UTF-16 buffer is read as 8-bit text: the zero high byte of the first character
        // ends it, so only one digit counts ("12" reads as 1). Table files rely on this.
        m_currentNumber = static_cast<std::uint32_t>(std::atoi(reinterpret_cast<const char*>(chars)));
        return;
    }
    m_text = NarrowText(chars);
}

void DriverDBHandler::startElement(const XMLCh* const name, xercesc::AttributeList& /*attributes*/) {
    const DriverDBTag code = LookupTag(NarrowText(name));
    if (!IsValidTag(code)) {
        m_lastUnknownTag = code;
        return;
    }
    m_currentTag = code;
    m_lastUnknownTag = DriverTag_Unknown;
    if (code == DriverTag_DRIVER) {
        m_record = std::make_unique<DriverRecord>();  // a record left open is dropped
        m_text.clear();
    }
}

void DriverDBHandler::endElement(const XMLCh* const name) {
    m_lastUnknownTag = DriverTag_Unknown;
    const DriverDBTag code = LookupTag(NarrowText(name));
    if (!IsValidTag(code)) return;

    switch (code) {
    case DriverTag_Unnamed:
        m_database->m_unnamedNumber = m_currentNumber;
        m_currentTag = DriverTag_Unknown;
        break;
    case DriverTag_DB_MAJOR_V:
        m_database->m_majorVersion = m_currentNumber;
        m_currentTag = DriverTag_Unknown;
        break;
    case DriverTag_DB_MINOR_V:
        m_database->m_minorVersion = m_currentNumber;
        m_currentTag = DriverTag_Unknown;
        break;
    case DriverTag_DRIVER:
        if (m_record) m_database->m_records.push_back(std::move(m_record));
        break;
    case DriverTag_CPUTYPE:
        if (m_record) m_record->cpuType = m_text;
        break;
    case DriverTag_DRIVERNAME:
        if (m_record) m_record->driverName = m_text;
        break;
    case DriverTag_PROPERTYFILE:
        if (m_record) m_record->propertyFile = m_text;
        break;
    case DriverTag_ENTITYCODE:
        if (m_record) m_record->entityCode = m_text;
        break;
    case DriverTag_SUPPORTTRACE:
        if (m_record) m_record->supportsTrace = m_text == "YES";
        break;
    default:
        break;
    }
}

}  // namespace TargetOperations
