// Through the exported functions: endless sub-property selections and hostile files end
// in each function's documented failure result, quickly. This executable runs with logging on.

#include <chrono>
#include <string>

#include "ApiTestSupport.h"
#include "LogFileReader.h"

using namespace api_test;
using Kw::Mbr::Korva::korvaError;
using Kw::Mbr::Korva::korvaErrorIF;

namespace {

using Lines = std::vector<LogLine>;

// Generous for a sanitizer build; an endless selection would never return.
constexpr std::chrono::seconds kQuickly{30};

std::string HardeningFile(const std::string& name) { return std::string(RLX_FIXTURES_DIR) + "/hardening/" + name; }

class Hardening : public ::testing::Test {
protected:
    void SetUp() override {
        UseXmlDirectory("../hardening");
        m_before = LibraryLogLines().size();
        m_start = std::chrono::steady_clock::now();
    }
    void TearDown() override { EXPECT_LT(std::chrono::steady_clock::now() - m_start, kQuickly); }

    Lines NewErrorLines() const {
        const Lines all = LibraryLogLines();
        Lines errors;
        for (std::size_t i = std::min(m_before, all.size()); i < all.size(); ++i) {
            if (all[i].flags == kError) errors.push_back(all[i]);
        }
        return errors;
    }

    std::uint32_t Open(const char* file) {
        const std::uint32_t number = CreatePropertyDBByName(file, 0);
        EXPECT_NE(number, RLX_INVALID_DB) << file;
        return number;
    }

private:
    std::size_t m_before = 0;
    std::chrono::steady_clock::time_point m_start;
};

class EndlessSelection : public Hardening, public ::testing::WithParamInterface<const char*> {};

}  // namespace

TEST_P(EndlessSelection, GetRootPropertyGivesNullAndReportsTheDatabase) {
    const std::uint32_t number = Open(GetParam());
    EXPECT_EQ(GetRootProperty(number), nullptr);
    const std::string expected =
        "RLXPropertyHelper: Exception error in getting root property for database " + std::to_string(number);
    EXPECT_EQ(NewErrorLines(), (Lines{{kError, expected}}));
    ReleasePropertyDB(number);
}

TEST_P(EndlessSelection, GetRootPropertyByFileGivesNull) {
    EXPECT_EQ(GetRootPropertyByFile(HardeningFile(GetParam()).c_str()), nullptr);
}

TEST_P(EndlessSelection, ConvertBackGivesFalse) {
    const std::uint32_t number = Open(GetParam());
    // The destination holds the value that selects nothing, the source the one that selects
    // without end: taking the value over relinks the destination.
    Owned<> destination(GetPropertyFromDB(number, "Type"));
    Owned<> source(GetPropertyFromDB(number, "Type"));
    ASSERT_TRUE(destination && source);
    AsString(destination.get())->SetValue("Idle");
    UpdateSubProperties(number, destination.get());
    EXPECT_FALSE(ConvertBack(number, source.get(), destination.get(), nullptr, nullptr));
    ReleasePropertyDB(number);
}

TEST_P(EndlessSelection, UpdateSubPropertiesLetsTheErrorThrough) {
    const std::uint32_t number = Open(GetParam());
    Owned<> type(GetPropertyFromDB(number, "Type"));
    ASSERT_TRUE(type);
    bool thrown = false;
    try {
        UpdateSubProperties(number, type.get());
    } catch (const korvaError& error) {
        thrown = true;
        EXPECT_EQ(error.GetSeverity(), korvaErrorIF::Error);
        EXPECT_EQ(std::string(error.GetErrorText()).rfind("Sub-property linking stopped at \"", 0), 0u)
            << error.GetErrorText();
    }
    EXPECT_TRUE(thrown);
    EXPECT_EQ(type->GetNumSubProperties(), 0u);
    // The same database still serves a value that selects nothing.
    AsString(type.get())->SetValue("Idle");
    UpdateSubProperties(number, type.get());
    EXPECT_EQ(type->GetNumSubProperties(), 0u);
    ReleasePropertyDB(number);
}

INSTANTIATE_TEST_SUITE_P(KeyGraphs, EndlessSelection,
                         ::testing::Values("self_cycle.xml", "mutual_cycle.xml", "doubling_cycle.xml",
                                           "doubling_fanout.xml"));

TEST_F(Hardening, TreeWithinTheBoundsIsLinkedAsBefore) {
    const std::uint32_t number = Open("chain10.xml");
    Owned<> root(GetRootProperty(number));
    ASSERT_TRUE(root);
    IProperty* level = root.get();
    for (int depth = 1; depth <= 10; ++depth) {
        ASSERT_EQ(level->GetNumSubProperties(), 1u) << depth;
        level = Children(level)[0];
        EXPECT_EQ(std::string(level->GetName()), "Level" + std::to_string(depth));
    }
    EXPECT_EQ(level->GetNumSubProperties(), 0u);
    EXPECT_TRUE(NewErrorLines().empty());
    ReleasePropertyDB(number);
}

class HostileDatabase : public Hardening, public ::testing::WithParamInterface<const char*> {};

TEST_P(HostileDatabase, CreatePropertyDBByNameFailsWithTheReadersError) {
    EXPECT_EQ(CreatePropertyDBByName(GetParam(), 0), RLX_INVALID_DB);
    const std::string path = std::string("../hardening/") + GetParam();
    EXPECT_EQ(NewErrorLines(),
              (Lines{{kError, "RLXPropertyHelper: Undefined exception in parsing file " + path},
                     {kError, "RLXPropertyHelper: Exception error in creating property database for " + path}}));
}

TEST_P(HostileDatabase, GetRootPropertyByFileGivesNull) {
    EXPECT_EQ(GetRootPropertyByFile(HardeningFile(GetParam()).c_str()), nullptr);
}

INSTANTIATE_TEST_SUITE_P(Files, HostileDatabase,
                         ::testing::Values("billion_laughs.xml", "external_dtd_http.xml", "external_entity_http.xml",
                                           "external_parameter_entity_ftp.xml", "external_entity_file_host.xml"));
