// How both readers fail on bad input, with which texts and severities, and that every
// Xerces initialisation is matched by exactly one termination.
#include <string>

#include <gtest/gtest.h>
#include <xercesc/util/RuntimeException.hpp>

#include "XmlDbTestSupport.h"
#include "xmldb/DriverDB.h"
#include "xmldb/SaxParseSteps.h"

using namespace xmldb_test;

namespace {

const char kUndefined[] = "Undefined exception occurred while parsing RLX target configuration file";

// Delegates to the library's steps and counts them.
class CountingSteps : public SaxParseSteps {
public:
    void Initialize() override {
        ++initializeCalls;
        SaxParseSteps::Initialize();
    }
    void Terminate() override {
        ++terminateCalls;
        SaxParseSteps::Terminate();
    }
    int initializeCalls = 0;
    int terminateCalls = 0;
};

// Xerces turns whatever escapes a handler into a fatal error, so an XMLException only
// reaches the reader from the parse call itself.
class ParseThrowsXmlException : public CountingSteps {
public:
    void Parse(xercesc::SAXParser&, const char*) override {
        throw xercesc::RuntimeException(__FILE__, __LINE__, xercesc::XMLExcepts::Gen_ParseInProgress);
    }
};

// The default settings never count recoverable errors; validation does.
class ParseWithValidation : public CountingSteps {
public:
    void Parse(xercesc::SAXParser& parser, const char* fileName) override {
        parser.setValidationScheme(xercesc::SAXParser::Val_Always);
        parser.parse(fileName);
    }
};

// Needs Xerces initialised by the test to build the exception's message.
class InitializeThrows : public CountingSteps {
public:
    void Initialize() override {
        ++initializeCalls;
        throw xercesc::RuntimeException(__FILE__, __LINE__, xercesc::XMLExcepts::Gen_ParseInProgress);
    }
};

// The message of the exception that the steps above throw, as the reader appends it.
std::string FirstCharacterOfParseInProgressMessage() {
    const xercesc::RuntimeException probe(__FILE__, __LINE__, xercesc::XMLExcepts::Gen_ParseInProgress);
    const XMLCh* message = probe.getMessage();
    EXPECT_GT(xercesc::XMLString::stringLen(message), 1u) << "the message must be longer than one character";
    return std::string(1, static_cast<char>(message[0]));
}

class InstalledSteps {
public:
    explicit InstalledSteps(SaxParseSteps& steps) { InstallSaxParseSteps(&steps); }
    ~InstalledSteps() { InstallSaxParseSteps(nullptr); }
};

// Reads a file that must work after any failure.
void ExpectNextFileReads() {
    PropertyDB next(Fixture("single_bool.xml"));
    ASSERT_EQ(next.GetPropertyCount(), 1u);
    EXPECT_STREQ(next.Properties()[0]->GetName(), "Only");
}

CaughtError OpenPropertyDB(const std::string& path) {
    return CatchKorvaError([&path] { PropertyDB db(path); });
}

CaughtError OpenDriverDB(const std::string& path) {
    return CatchKorvaError([&path] { DriverDB db(path); });
}

}  // namespace

class PropertyDBBadInput : public ::testing::TestWithParam<const char*> {};

TEST_P(PropertyDBBadInput, FailsWithUndefinedExceptionAsErrorAndLeavesXercesClean) {
    const CaughtError caught = OpenPropertyDB(Fixture(GetParam()));
    ASSERT_TRUE(caught.thrown);
    EXPECT_EQ(caught.text, kUndefined);
    EXPECT_EQ(caught.severity, korvaErrorIF::Error);
    EXPECT_FALSE(XercesInitialized());
    ExpectNextFileReads();
}

INSTANTIATE_TEST_SUITE_P(Files, PropertyDBBadInput,
                         ::testing::Values("missing.xml", "empty.xml", "not_xml.xml", "truncated.xml",
                                           "doctype_external_missing.xml"));

TEST(PropertyDBBadInput, DirectoryGivenAsFileFailsWithUndefinedException) {
    XercesReaderLeakAllowed xercesLeak;
    const CaughtError caught = OpenPropertyDB(std::string(RLX_FIXTURES_DIR) + "/xmldb");
    ASSERT_TRUE(caught.thrown);
    EXPECT_EQ(caught.text, kUndefined);
    EXPECT_EQ(caught.severity, korvaErrorIF::Error);
    ExpectNextFileReads();
}

TEST(PropertyDBBadInput, EmptyFileNameFailsWithUndefinedException) {
    const CaughtError caught = OpenPropertyDB("");
    ASSERT_TRUE(caught.thrown);
    EXPECT_EQ(caught.text, kUndefined);
    ExpectNextFileReads();
}

TEST(PropertyDBBadInput, DoctypeWithInternalSubsetIsReadWithoutValidation) {
    PropertyDB db(Fixture("doctype_internal.xml"));
    ASSERT_EQ(db.GetPropertyCount(), 1u);
    auto* declared = dynamic_cast<BooleanProperty*>(db.Properties()[0]);
    ASSERT_NE(declared, nullptr);
    EXPECT_STREQ(declared->GetName(), "Declared");
    EXPECT_STREQ(declared->GetDescription(), "cycles");
    EXPECT_TRUE(declared->GetValue());
}

TEST(PropertyDBBadInput, WarningsDoNotFailTheParse) {
    PropertyDB db(Fixture("doctype_warning.xml"));
    ASSERT_EQ(db.GetPropertyCount(), 1u);
    EXPECT_STREQ(db.Properties()[0]->GetName(), "AfterWarning");
}

TEST(PropertyDBBadInput, ContentXmlCannotSeeIsAccepted) {
    PropertyDB unknown(Fixture("unknown_elements.xml"));
    EXPECT_EQ(unknown.GetPropertyCount(), 2u);
    PropertyDB numbers(Fixture("conversions.xml"));
    EXPECT_EQ(numbers.GetPropertyCount(), 20u);
}

TEST(PropertyDBFailurePaths, XmlExceptionFromParseGivesFirstCharacterOfMessageAsError) {
    xercesc::XMLPlatformUtils::Initialize();
    const std::string firstCharacter = FirstCharacterOfParseInProgressMessage();
    xercesc::XMLPlatformUtils::Terminate();

    ParseThrowsXmlException steps;
    InstalledSteps installed(steps);
    const CaughtError caught = OpenPropertyDB(Fixture("single_bool.xml"));
    ASSERT_TRUE(caught.thrown);
    EXPECT_EQ(caught.text, "\nError during parsing: \n" + firstCharacter + "\n");
    EXPECT_EQ(caught.severity, korvaErrorIF::Error);
    EXPECT_EQ(steps.initializeCalls, 1);
    EXPECT_EQ(steps.terminateCalls, 1);
    EXPECT_FALSE(XercesInitialized());
}

TEST(PropertyDBFailurePaths, RecoverableErrorsGiveWarningWithTheFileName) {
    ParseWithValidation steps;
    InstalledSteps installed(steps);
    const std::string path = Fixture("doctype_invalid_content.xml");
    const CaughtError caught = OpenPropertyDB(path);
    ASSERT_TRUE(caught.thrown);
    EXPECT_EQ(caught.text, "Recoverable errors were detected while parsing " + path);
    EXPECT_EQ(caught.severity, korvaErrorIF::Warning);
    EXPECT_EQ(steps.initializeCalls, 1);
    EXPECT_EQ(steps.terminateCalls, 1);
    EXPECT_FALSE(XercesInitialized());
}

TEST(PropertyDBFailurePaths, ValidationOfAValidFileCountsNoErrors) {
    // The recoverable-error test above depends on the file's content, not on validation as such.
    ParseWithValidation steps;
    InstalledSteps installed(steps);
    PropertyDB db(Fixture("doctype_internal_valid.xml"));
    EXPECT_EQ(db.GetPropertyCount(), 1u);
}

TEST(PropertyDBFailurePaths, InitializationFailureGivesFirstCharacterOfMessageAsErrorAndNoTerminate) {
    xercesc::XMLPlatformUtils::Initialize();  // keeps the exception's message loader alive
    const std::string firstCharacter = FirstCharacterOfParseInProgressMessage();
    {
        InitializeThrows steps;
        InstalledSteps installed(steps);
        const CaughtError caught = OpenPropertyDB(Fixture("single_bool.xml"));
        ASSERT_TRUE(caught.thrown);
        EXPECT_EQ(caught.text, "Error during XML initialization! Message:\n" + firstCharacter);
        EXPECT_EQ(caught.severity, korvaErrorIF::Error);
        EXPECT_EQ(steps.initializeCalls, 1);
        EXPECT_EQ(steps.terminateCalls, 0);
    }
    EXPECT_TRUE(XercesInitialized());
    xercesc::XMLPlatformUtils::Terminate();
    EXPECT_FALSE(XercesInitialized());
}

TEST(DriverDBFailurePaths, MissingTableFailsWithUndefinedExceptionAsError) {
    const CaughtError caught = OpenDriverDB(Fixture("no-such-table.xml"));
    ASSERT_TRUE(caught.thrown);
    EXPECT_EQ(caught.text, kUndefined);
    EXPECT_EQ(caught.severity, korvaErrorIF::Error);
    EXPECT_FALSE(XercesInitialized());
}

TEST(DriverDBFailurePaths, MalformedTablesFailWithUndefinedExceptionAsError) {
    for (const char* name : {"empty.xml", "not_xml.xml", "truncated.xml"}) {
        const CaughtError caught = OpenDriverDB(Fixture(name));
        ASSERT_TRUE(caught.thrown) << name;
        EXPECT_EQ(caught.text, kUndefined) << name;
        EXPECT_EQ(caught.severity, korvaErrorIF::Error) << name;
    }
    DriverDB next(Fixture("drivers.xml"));
    EXPECT_EQ(next.GetRecordCount(), 5u);
}

TEST(DriverDBFailurePaths, XmlExceptionFromParseIsInternal) {
    xercesc::XMLPlatformUtils::Initialize();
    const std::string firstCharacter = FirstCharacterOfParseInProgressMessage();
    xercesc::XMLPlatformUtils::Terminate();

    ParseThrowsXmlException steps;
    InstalledSteps installed(steps);
    const CaughtError caught = OpenDriverDB(Fixture("drivers.xml"));
    ASSERT_TRUE(caught.thrown);
    EXPECT_EQ(caught.text, "\nError during parsing: \n" + firstCharacter + "\n");
    EXPECT_EQ(caught.severity, korvaErrorIF::Internal);
    EXPECT_EQ(steps.terminateCalls, 1);
}

TEST(DriverDBFailurePaths, RecoverableErrorsAreInternal) {
    ParseWithValidation steps;
    InstalledSteps installed(steps);
    const std::string path = Fixture("doctype_invalid_content.xml");
    const CaughtError caught = OpenDriverDB(path);
    ASSERT_TRUE(caught.thrown);
    EXPECT_EQ(caught.text, "Recoverable errors were detected while parsing " + path);
    EXPECT_EQ(caught.severity, korvaErrorIF::Internal);
    EXPECT_EQ(steps.terminateCalls, 1);
}

TEST(DriverDBFailurePaths, InitializationFailureIsInternal) {
    xercesc::XMLPlatformUtils::Initialize();
    const std::string firstCharacter = FirstCharacterOfParseInProgressMessage();
    {
        InitializeThrows steps;
        InstalledSteps installed(steps);
        const CaughtError caught = OpenDriverDB(Fixture("drivers.xml"));
        ASSERT_TRUE(caught.thrown);
        EXPECT_EQ(caught.text, "Error during XML initialization! Message:\n" + firstCharacter);
        EXPECT_EQ(caught.severity, korvaErrorIF::Internal);
        EXPECT_EQ(steps.terminateCalls, 0);
    }
    xercesc::XMLPlatformUtils::Terminate();
}

// Every path, run inside an initialisation held by the test: if a read terminated once too
// often Xerces would be down before the test's own Terminate, and if it terminated once too
// rarely Xerces would still be up after it.
class InitializationPairing : public ::testing::Test {
protected:
    void ExpectPaired(const std::function<void()>& read) {
        xercesc::XMLPlatformUtils::Initialize();
        read();
        EXPECT_TRUE(XercesInitialized()) << "the read terminated more often than it initialised";
        xercesc::XMLPlatformUtils::Terminate();
        EXPECT_FALSE(XercesInitialized()) << "the read initialised more often than it terminated";
    }
};

TEST_F(InitializationPairing, Success) {
    ExpectPaired([] { PropertyDB db(Fixture("single_bool.xml")); });
    ExpectPaired([] { DriverDB db(Fixture("drivers.xml")); });
}

TEST_F(InitializationPairing, UndefinedException) {
    ExpectPaired([] { EXPECT_TRUE(OpenPropertyDB(Fixture("missing.xml")).thrown); });
    ExpectPaired([] { EXPECT_TRUE(OpenPropertyDB(Fixture("truncated.xml")).thrown); });
    ExpectPaired([] {
        XercesReaderLeakAllowed xercesLeak;
        EXPECT_TRUE(OpenPropertyDB(std::string(RLX_FIXTURES_DIR) + "/xmldb").thrown);
    });
    ExpectPaired([] { EXPECT_TRUE(OpenDriverDB(Fixture("missing.xml")).thrown); });
}

TEST_F(InitializationPairing, XmlException) {
    ParseThrowsXmlException steps;
    InstalledSteps installed(steps);
    ExpectPaired([] { EXPECT_TRUE(OpenPropertyDB(Fixture("single_bool.xml")).thrown); });
    ExpectPaired([] { EXPECT_TRUE(OpenDriverDB(Fixture("drivers.xml")).thrown); });
}

TEST_F(InitializationPairing, RecoverableErrors) {
    ParseWithValidation steps;
    InstalledSteps installed(steps);
    ExpectPaired([] { EXPECT_TRUE(OpenPropertyDB(Fixture("doctype_invalid_content.xml")).thrown); });
    ExpectPaired([] { EXPECT_TRUE(OpenDriverDB(Fixture("doctype_invalid_content.xml")).thrown); });
}

TEST_F(InitializationPairing, InitializationFailure) {
    InitializeThrows steps;
    InstalledSteps installed(steps);
    ExpectPaired([] { EXPECT_TRUE(OpenPropertyDB(Fixture("single_bool.xml")).thrown); });
}
