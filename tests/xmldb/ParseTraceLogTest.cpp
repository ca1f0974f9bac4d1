// The trace lines of failed reads, read back from this process's log file. Runs with
// KW_TRACE_LOGGING=1 and a profile directory of its own.
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <xercesc/util/RuntimeException.hpp>

#include "TestPlatform.h"
#include "XmlDbTestSupport.h"
#include "support/LibraryTrace.h"
#include "xmldb/DriverDB.h"
#include "xmldb/SaxParseSteps.h"

using namespace xmldb_test;

namespace {

std::string EnvironmentValue(const char* name) { return rlx_test::VariableOr(name, ""); }

// <KW_TRACE_LOGGING_DIR>/kw_trace_log_<month><day><year>_<debug-client pid>.txt
std::string LogFilePath() {
    const std::time_t now = std::time(nullptr);
    const std::tm local = *std::localtime(&now);
    return EnvironmentValue("KW_TRACE_LOGGING_DIR") + "/kw_trace_log_" + std::to_string(local.tm_mon + 1) +
           std::to_string(local.tm_mday) + std::to_string(local.tm_year + 1900) + "_" +
           EnvironmentValue("KW_TRACE_DEBUGCLIENT_PID") + ".txt";
}

std::vector<std::string> LogLines() {
    std::vector<std::string> lines;
    std::ifstream log(LogFilePath());
    for (std::string line; std::getline(log, line);) lines.push_back(line);
    return lines;
}

// Error lines carry only the E flag; the message follows the time stamp's " | ".
std::vector<std::string> ErrorMessages() {
    std::vector<std::string> messages;
    for (const std::string& line : LogLines()) {
        if (line.compare(0, 6, "    E ") != 0) continue;
        const std::size_t separator = line.find(" | ");
        if (separator != std::string::npos) messages.push_back(line.substr(separator + 3));
    }
    return messages;
}

std::vector<std::string> LibraryMessages() {
    std::vector<std::string> messages;
    for (const std::string& line : LogLines()) {
        if (line.find("RLXPropertyHelper: ") != std::string::npos) messages.push_back(line);
    }
    return messages;
}

class ParseThrowsXmlException : public SaxParseSteps {
public:
    void Parse(xercesc::SAXParser&, const char*) override {
        throw xercesc::RuntimeException(__FILE__, __LINE__, xercesc::XMLExcepts::Gen_ParseInProgress);
    }
};

class ParseWithValidation : public SaxParseSteps {
public:
    void Parse(xercesc::SAXParser& parser, const char* fileName) override {
        parser.setValidationScheme(xercesc::SAXParser::Val_Always);
        parser.parse(fileName);
    }
};

class InitializeThrows : public SaxParseSteps {
public:
    void Initialize() override {
        throw xercesc::RuntimeException(__FILE__, __LINE__, xercesc::XMLExcepts::Gen_ParseInProgress);
    }
};

class InstalledSteps {
public:
    explicit InstalledSteps(SaxParseSteps& steps) { InstallSaxParseSteps(&steps); }
    ~InstalledSteps() { InstallSaxParseSteps(nullptr); }
};

std::string FirstCharacterOfParseInProgressMessage() {
    xercesc::XMLPlatformUtils::Initialize();
    std::string first;
    {
        const xercesc::RuntimeException probe(__FILE__, __LINE__, xercesc::XMLExcepts::Gen_ParseInProgress);
        first.assign(1, static_cast<char>(probe.getMessage()[0]));
    }
    xercesc::XMLPlatformUtils::Terminate();
    return first;
}

class ParseTraceLog : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(EnvironmentValue("KW_TRACE_LOGGING"), "1");
        ASSERT_TRUE(KW_MBR::LibraryTraceEnabled()) << "the logger must be on for these tests";
    }
};

}  // namespace

TEST_F(ParseTraceLog, UndefinedExceptionWritesOneErrorLineWithTheFileName) {
    const std::string path = Fixture("missing.xml");
    EXPECT_TRUE(CatchKorvaError([&path] { PropertyDB db(path); }).thrown);
    EXPECT_EQ(ErrorMessages(),
              (std::vector<std::string>{"RLXPropertyHelper: Undefined exception in parsing file " + path}));
}

TEST_F(ParseTraceLog, XmlExceptionLineCarriesTheFirstCharacterOfTheMessage) {
    const std::string first = FirstCharacterOfParseInProgressMessage();
    ParseThrowsXmlException steps;
    InstalledSteps installed(steps);
    const std::string path = Fixture("single_bool.xml");
    EXPECT_TRUE(CatchKorvaError([&path] { PropertyDB db(path); }).thrown);
    EXPECT_EQ(ErrorMessages(), (std::vector<std::string>{"RLXPropertyHelper: Exception error " + first +
                                                         " in parsing file " + path}));
}

TEST_F(ParseTraceLog, RecoverableErrorsWriteTheirLine) {
    ParseWithValidation steps;
    InstalledSteps installed(steps);
    const std::string path = Fixture("doctype_invalid_content.xml");
    EXPECT_TRUE(CatchKorvaError([&path] { PropertyDB db(path); }).thrown);
    EXPECT_EQ(ErrorMessages(), (std::vector<std::string>{"RLXPropertyHelper: Error in parsing file " + path}));
}

TEST_F(ParseTraceLog, DriverTableWritesTheSameLines) {
    const std::string missing = Fixture("no-such-table.xml");
    EXPECT_TRUE(CatchKorvaError([&missing] { DriverDB table(missing); }).thrown);
    {
        ParseWithValidation steps;
        InstalledSteps installed(steps);
        EXPECT_TRUE(CatchKorvaError([] { DriverDB table(Fixture("doctype_invalid_content.xml")); }).thrown);
    }
    EXPECT_EQ(ErrorMessages(),
              (std::vector<std::string>{"RLXPropertyHelper: Undefined exception in parsing file " + missing,
                                        "RLXPropertyHelper: Error in parsing file " +
                                            Fixture("doctype_invalid_content.xml")}));
}

TEST_F(ParseTraceLog, SuccessAndInitializationFailureWriteNoLine) {
    {
        PropertyDB db(Fixture("single_bool.xml"));
        DriverDB table(Fixture("drivers.xml"));
    }
    xercesc::XMLPlatformUtils::Initialize();
    {
        InitializeThrows steps;
        InstalledSteps installed(steps);
        EXPECT_TRUE(CatchKorvaError([] { PropertyDB db(Fixture("single_bool.xml")); }).thrown);
    }
    xercesc::XMLPlatformUtils::Terminate();
    EXPECT_TRUE(LibraryMessages().empty());
    // The logger's own start-up lines are there, so the file is the right one.
    EXPECT_FALSE(LogLines().empty());
}
