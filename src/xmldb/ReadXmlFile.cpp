#include "ReadXmlFile.h"

#include <memory>

#include <xercesc/parsers/SAXParser.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/SecurityManager.hpp>
#include <xercesc/util/XMLException.hpp>

#include "../support/LibraryTrace.h"
#include "LocalFileEntityResolver.h"
#include "SaxParseSteps.h"

namespace TargetOperations {

using Kw::Mbr::Korva::korvaError;

namespace {

// The UTF-16 message is read as if it were 8-bit text, so an ASCII message yields only its
// first character. Callers of the readers have always seen this text; it is not transcoded.
std::string MessageReadAsBytes(const xercesc::XMLException& exception) {
    const XMLCh* message = exception.getMessage();
    if (message == nullptr) return std::string();
    return std::string(reinterpret_cast<const char*>(message));
}

enum class ParseOutcome { Parsed, XmlException, OtherException };

}  // namespace

std::uint32_t ReadXmlFile(const std::string& fileName, xercesc::HandlerBase& handler,
                          const SaxFailureSeverities& severities) {
    SaxParseSteps& steps = CurrentSaxParseSteps();

    // Every Xerces exception is copied out and left behind inside its catch block: it owns
    // Xerces memory and must be gone before Terminate runs.
    std::string initializationMessage;
    bool initialized = false;
    try {
        steps.Initialize();
        initialized = true;
    } catch (const xercesc::XMLException& exception) {
        initializationMessage = MessageReadAsBytes(exception);
    }
    if (!initialized) {
        throw korvaError("Error during XML initialization! Message:\n" + initializationMessage,
                         severities.initialization);
    }

    ParseOutcome outcome = ParseOutcome::Parsed;
    std::string xercesMessage;
    XMLSize_t errorCount = 0;
    {
        auto parser = std::make_unique<xercesc::SAXParser>(nullptr, xercesc::XMLPlatformUtils::fgMemoryManager,
                                                           nullptr);
        parser->setDocumentHandler(&handler);
        parser->setErrorHandler(&handler);
        // Hostile files: entity expansion is bounded ("billion laughs") and external entities
        // are read from local files only. Files without a DTD are read exactly as before.
        xercesc::SecurityManager securityManager;
        securityManager.setEntityExpansionLimit(kEntityExpansionLimit);
        parser->setSecurityManager(&securityManager);
        LocalFileEntityResolver localFilesOnly;
        parser->setEntityResolver(&localFilesOnly);
        try {
            steps.Parse(*parser, fileName.c_str());
        } catch (const xercesc::XMLException& exception) {
            xercesMessage = MessageReadAsBytes(exception);
            outcome = ParseOutcome::XmlException;
        } catch (...) {
            outcome = ParseOutcome::OtherException;
        }
        if (outcome == ParseOutcome::Parsed) errorCount = parser->getErrorCount();
        // The parser's memory belongs to Xerces: it goes before Terminate on every path.
    }

    switch (outcome) {
    case ParseOutcome::XmlException:
        if (KW_MBR::LibraryTraceEnabled()) {
            KW_MBR::LibraryTrace(KW_MBR::TraceError, "RLXPropertyHelper: Exception error %s in parsing file %s",
                                 xercesMessage.c_str(), fileName.c_str());
        }
        steps.Terminate();
        throw korvaError("\nError during parsing: \n" + xercesMessage + "\n", severities.xmlException);
    case ParseOutcome::OtherException:
        if (KW_MBR::LibraryTraceEnabled()) {
            KW_MBR::LibraryTrace(KW_MBR::TraceError, "RLXPropertyHelper: Undefined exception in parsing file %s",
                                 fileName.c_str());
        }
        steps.Terminate();
        throw korvaError("Undefined exception occurred while parsing RLX target configuration file",
                         severities.undefinedException);
    case ParseOutcome::Parsed:
        break;
    }

    if (errorCount != 0) {
        if (KW_MBR::LibraryTraceEnabled()) {
            KW_MBR::LibraryTrace(KW_MBR::TraceError, "RLXPropertyHelper: Error in parsing file %s", fileName.c_str());
        }
        steps.Terminate();
        throw korvaError("Recoverable errors were detected while parsing " + fileName, severities.recoverableErrors);
    }

    steps.Terminate();
    return 0;
}

}  // namespace TargetOperations
