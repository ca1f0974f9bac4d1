// Damaged or hostile database and driver-table files: entity expansion is bounded, external
// entities are read from local files only, and such files fail as malformed files do.
#include <chrono>
#include <fstream>
#include <string>

#include <gtest/gtest.h>

#include "XmlDbTestSupport.h"
#include "xmldb/DriverDB.h"
#include "xmldb/LocalFileEntityResolver.h"
#include "xmldb/ReadXmlFile.h"

using namespace xmldb_test;

namespace {

const char kUndefined[] = "Undefined exception occurred while parsing RLX target configuration file";

// Generous for a sanitizer build; an unbounded expansion or a network wait takes far longer.
constexpr std::chrono::seconds kQuickly{20};

std::string HardeningFixture(const std::string& name) { return std::string(RLX_FIXTURES_DIR) + "/hardening/" + name; }

std::string WriteTemporary(const std::string& name, const std::string& text) {
    const std::string path = ::testing::TempDir() + "/" + name;
    std::ofstream(path, std::ios::binary) << text;
    return path;
}

std::string Repeated(const std::string& piece, std::size_t times) {
    std::string text;
    text.reserve(piece.size() * times);
    for (std::size_t i = 0; i < times; ++i) text += piece;
    return text;
}

// A database whose one property has the given description text, after an optional DTD.
std::string DatabaseWithDescription(const std::string& doctype, const std::string& description) {
    return "<?xml version=\"1.0\"?>\n" + doctype + "<RLX><PROPERTY_BOOL><NAME>Only</NAME><DESCRIPTION>" +
           description + "</DESCRIPTION><VALUE>1</VALUE></PROPERTY_BOOL></RLX>\n";
}

struct ReadOutcome {
    CaughtError error;
    std::chrono::steady_clock::duration took{};
};

ReadOutcome ReadPropertyDB(const std::string& path) {
    ReadOutcome outcome;
    const auto start = std::chrono::steady_clock::now();
    outcome.error = CatchKorvaError([&path] { PropertyDB db(path); });
    outcome.took = std::chrono::steady_clock::now() - start;
    return outcome;
}

ReadOutcome ReadDriverDB(const std::string& path) {
    ReadOutcome outcome;
    const auto start = std::chrono::steady_clock::now();
    outcome.error = CatchKorvaError([&path] { DriverDB table(path); });
    outcome.took = std::chrono::steady_clock::now() - start;
    return outcome;
}

void ExpectFailsLikeAMalformedFile(const ReadOutcome& outcome) {
    ASSERT_TRUE(outcome.error.thrown);
    EXPECT_EQ(outcome.error.text, kUndefined);
    EXPECT_EQ(outcome.error.severity, korvaErrorIF::Error);
    EXPECT_LT(outcome.took, kQuickly);
    EXPECT_FALSE(XercesInitialized());
}

// ASCII only: no Xerces transcoder is needed.
std::basic_string<XMLCh> Wide(const char* text) {
    std::basic_string<XMLCh> wide;
    for (const char* c = text; *c != '\0'; ++c) wide.push_back(static_cast<XMLCh>(*c));
    return wide;
}

bool IsLocal(const char* systemId) { return IsLocalSystemId(Wide(systemId).c_str()); }

class HostileFile : public ::testing::TestWithParam<const char*> {};

}  // namespace

TEST_P(HostileFile, PropertyDatabaseFailsQuicklyWithTheReadersError) {
    ExpectFailsLikeAMalformedFile(ReadPropertyDB(HardeningFixture(GetParam())));
    PropertyDB next(Fixture("single_bool.xml"));
    EXPECT_EQ(next.GetPropertyCount(), 1u);
}

TEST_P(HostileFile, DriverTableFailsQuicklyWithTheReadersError) {
    ExpectFailsLikeAMalformedFile(ReadDriverDB(HardeningFixture(GetParam())));
}

INSTANTIATE_TEST_SUITE_P(Files, HostileFile,
                         ::testing::Values("billion_laughs.xml", "external_dtd_http.xml", "external_entity_http.xml",
                                           "external_parameter_entity_ftp.xml", "external_entity_file_host.xml"));

TEST(HostileXml, ExpansionOfOneLargeEntityIsBoundedToo) {
    // 20,000 references to a 1,000-character entity would make 20 MB of text from 60 kB.
    const std::string doctype = "<!DOCTYPE RLX [<!ENTITY big \"" + std::string(1000, 'x') + "\">]>\n";
    const std::string path =
        WriteTemporary("quadratic_blowup.xml", DatabaseWithDescription(doctype, Repeated("&big;", 20000)));
    ExpectFailsLikeAMalformedFile(ReadPropertyDB(path));
}

TEST(HostileXml, EntityReferencesWithinTheLimitAreExpanded) {
    const std::string doctype = "<!DOCTYPE RLX [<!ENTITY unit \"ab\">]>\n";
    const std::size_t references = kEntityExpansionLimit / 2;
    const std::string path =
        WriteTemporary("entities_within_limit.xml", DatabaseWithDescription(doctype, Repeated("&unit;", references)));
    PropertyDB db(path);
    ASSERT_EQ(db.GetPropertyCount(), 1u);
    // The description keeps the last piece of text the reader was handed: one expansion.
    EXPECT_STREQ(db.Properties()[0]->GetDescription(), "ab");
}

TEST(HostileXml, OneReferenceOverTheLimitFails) {
    const std::string doctype = "<!DOCTYPE RLX [<!ENTITY unit \"ab\">]>\n";
    const std::string path = WriteTemporary(
        "entities_over_limit.xml", DatabaseWithDescription(doctype, Repeated("&unit;", kEntityExpansionLimit + 1)));
    ExpectFailsLikeAMalformedFile(ReadPropertyDB(path));
}

TEST(HostileXml, ReferencesUpToTheLimitAreExpanded) {
    const std::string doctype = "<!DOCTYPE RLX [<!ENTITY unit \"ab\">]>\n";
    const std::string path = WriteTemporary(
        "entities_at_limit.xml", DatabaseWithDescription(doctype, Repeated("&unit;", kEntityExpansionLimit)));
    EXPECT_FALSE(ReadPropertyDB(path).error.thrown);
}

TEST(HostileXml, PredefinedEntitiesAndCharacterReferencesOfAFileWithoutDtdAreNotCounted) {
    const std::size_t references = kEntityExpansionLimit * 3;
    const std::string path = WriteTemporary("predefined_entities.xml",
                                            DatabaseWithDescription("", Repeated("&amp;&#65;&lt;", references)));
    PropertyDB db(path);
    ASSERT_EQ(db.GetPropertyCount(), 1u);
    EXPECT_STREQ(db.Properties()[0]->GetDescription(), "<");
}

TEST(HostileXml, LocalExternalEntityIsStillRead) {
    PropertyDB db(HardeningFixture("external_entity_local.xml"));
    ASSERT_EQ(db.GetPropertyCount(), 1u);
    EXPECT_STREQ(db.Properties()[0]->GetDescription(), "read from a local entity");
}

TEST(HostileXml, MissingLocalGrammarStillFailsAsBefore) {
    ExpectFailsLikeAMalformedFile(ReadPropertyDB(Fixture("doctype_external_missing.xml")));
}

TEST(LocalSystemIds, PlainPathsAndLocalFileUrlsAreLocal) {
    EXPECT_TRUE(IsLocalSystemId(nullptr));
    EXPECT_TRUE(IsLocal("grammar.dtd"));
    EXPECT_TRUE(IsLocal("../shared/grammar.dtd"));
    EXPECT_TRUE(IsLocal("/opt/rlx/grammar.dtd"));
    EXPECT_TRUE(IsLocal("C:\\rlx\\grammar.dtd"));
    EXPECT_TRUE(IsLocal("c:/rlx/grammar.dtd"));
    EXPECT_TRUE(IsLocal("file:grammar.dtd"));
    EXPECT_TRUE(IsLocal("file:/opt/rlx/grammar.dtd"));
    EXPECT_TRUE(IsLocal("file:///opt/rlx/grammar.dtd"));
    EXPECT_TRUE(IsLocal("FILE:///C:/rlx/grammar.dtd"));
    EXPECT_TRUE(IsLocal("file://localhost/opt/rlx/grammar.dtd"));
}

TEST(LocalSystemIds, NetworkLocationsAreNot) {
    EXPECT_FALSE(IsLocal("http://example.invalid/grammar.dtd"));
    EXPECT_FALSE(IsLocal("HTTPS://example.invalid/grammar.dtd"));
    EXPECT_FALSE(IsLocal("ftp://example.invalid/grammar.dtd"));
    EXPECT_FALSE(IsLocal("jar:file:/x.jar!/grammar.dtd"));
    EXPECT_FALSE(IsLocal("file://fileserver/share/grammar.dtd"));
    EXPECT_FALSE(IsLocal("file://localhost"));
    EXPECT_FALSE(IsLocal("//fileserver/share/grammar.dtd"));
    EXPECT_FALSE(IsLocal("\\\\fileserver\\share\\grammar.dtd"));
}

TEST(LocalSystemIds, ResolverRefusesNetworkLocationsAndLeavesLocalFilesToXerces) {
    LocalFileEntityResolver resolver;
    const std::basic_string<XMLCh> remote = Wide("http://example.invalid/grammar.dtd");
    const std::basic_string<XMLCh> local = Wide("grammar.dtd");
    EXPECT_THROW(resolver.resolveEntity(nullptr, remote.c_str()), NonLocalEntityRefused);
    EXPECT_EQ(resolver.resolveEntity(nullptr, local.c_str()), nullptr);
}

namespace {

// Found by the database fuzzer: a stray "%" inside an element content model of the DTD. Xerces
// leaks some of its own memory on this path (third-party; only that read runs with leak
// checking off); the reader must fail the file like any malformed one, and the next file reads.
TEST(HostileFileRegression, MalformedContentModelFailsCleanly) {
    ReadOutcome outcome;
    {
        XercesReaderLeakAllowed xercesLeak;
        outcome = ReadPropertyDB(HardeningFixture("malformed_content_model.xml"));
    }
    ASSERT_TRUE(outcome.error.thrown);
    EXPECT_EQ(outcome.error.text, "Undefined exception occurred while parsing RLX target configuration file");
    EXPECT_EQ(outcome.error.severity, korvaErrorIF::Error);
    PropertyDB next(Fixture("single_bool.xml"));
    EXPECT_EQ(next.GetPropertyCount(), 1u);
}

}  // namespace
