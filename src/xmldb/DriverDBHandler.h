// SAX handler that fills a DriverDB from the driver table file (internal).
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include <xercesc/sax/HandlerBase.hpp>

#include "DriverDB.h"
#include "DriverDBTag.h"

namespace TargetOperations {

class DriverDBHandler : public xercesc::HandlerBase {
public:
    explicit DriverDBHandler(DriverDB* database);
    ~DriverDBHandler() override;
    DriverDBHandler(const DriverDBHandler&) = delete;
    DriverDBHandler& operator=(const DriverDBHandler&) = delete;

    void characters(const XMLCh* const chars, const XMLSize_t length) override;
    void startElement(const XMLCh* const name, xercesc::AttributeList& attributes) override;
    void endElement(const XMLCh* const name) override;

    static DriverDBTag LookupTag(const std::string& name);
    static bool IsValidTag(std::uint32_t code);

private:
    DriverDB* m_database;
    std::uint32_t m_currentTag;
    std::uint32_t m_lastUnknownTag;  // written, never read
    std::uint32_t m_currentNumber;
    std::unique_ptr<DriverRecord> m_record;  // the "DRIVER" being read, if any
    std::string m_text;
};

}  // namespace TargetOperations
