#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "DestructionRecorder.h"
#include "property/BooleanProperty.h"
#include "support/TraceStartup.h"
#include "support/uEnvironment.h"
#include "support/uLoggerRegistry.h"

using namespace TargetOperations;
using PropertyTests::DestructionRecorder;

namespace {

const char kWarningText[] = "calling ~ReferenceCount() when m_nRefCount is still ";

// Switches the library's trace on for this test alone: a logger of its own at level 1,
// in the trace directory that the start-up published.
class ReferenceCountTraceTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(KW_MBR::uEnvironment::Set(KW_MBR::TraceStartup::kLevelVariable, "1"));
        const std::string fileName = std::string("refcount_") +
                                     ::testing::UnitTest::GetInstance()->current_test_info()->name() + "_" +
                                     KW_MBR::TraceStartup::LogFileName();
        KW_MBR::uLoggerRegistry& registry = KW_MBR::uLoggerRegistry::Instance();
        ASSERT_TRUE(registry.SetUp(fileName.c_str(), KW_MBR::TraceStartup::kLevelVariable,
                                   KW_MBR::TraceStartup::kLoggingDirVariable, true));
        ASSERT_NE(nullptr, registry.Current());
        ASSERT_GE(registry.Level(), 1);
        m_path = registry.Current()->Path();
    }

    // Each run writes a file of its own; nothing later reads it.
    void TearDown() override {
        if (!m_path.empty()) std::remove(m_path.c_str());
    }

    std::vector<std::string> LinesContaining(const std::string& text) const {
        std::ifstream file(m_path);
        std::vector<std::string> found;
        std::string line;
        while (std::getline(file, line)) {
            if (line.find(text) != std::string::npos) found.push_back(line);
        }
        return found;
    }

    std::vector<std::string> LinesWithWarningText() const { return LinesContaining(kWarningText); }

    std::string m_path;
};

}  // namespace

TEST_F(ReferenceCountTraceTest, ReleasingTheLastReferenceLogsNothing) {
    bool destroyed = false;
    auto* object = new DestructionRecorder(&destroyed);
    EXPECT_EQ(1u, object->Release());
    EXPECT_TRUE(destroyed);
    IBooleanProperty* boolean = BooleanProperty::Construct(NameAndDescription("b", ""), true);
    boolean->AddRef();
    boolean->Release();
    EXPECT_EQ(1u, boolean->Release());
    EXPECT_TRUE(LinesWithWarningText().empty());
    // The log is live: the set-up's own lines are there.
    EXPECT_EQ(1u, LinesContaining("Logger : trace user settings directory is ").size());
}

TEST_F(ReferenceCountTraceTest, DestroyedWithOneReferenceLeftWritesAWarningLine) {
    bool destroyed = false;
    { DestructionRecorder onStack(&destroyed); }
    EXPECT_TRUE(destroyed);
    const std::vector<std::string> lines = LinesWithWarningText();
    ASSERT_EQ(1u, lines.size());
    // Flag letters M W F A E and a blank, then the time stamp "HH:MM:SS:mmm | ".
    EXPECT_EQ(" W    ", lines[0].substr(0, 6));
    EXPECT_EQ(" | ", lines[0].substr(18, 3));
    EXPECT_EQ(std::string(kWarningText) + "1", lines[0].substr(21));
}

TEST_F(ReferenceCountTraceTest, DestroyedWithTwoReferencesLeftWritesAnErrorLine) {
    bool destroyed = false;
    {
        DestructionRecorder onStack(&destroyed);
        EXPECT_EQ(2u, onStack.AddRef());
    }
    EXPECT_TRUE(destroyed);
    const std::vector<std::string> lines = LinesWithWarningText();
    ASSERT_EQ(1u, lines.size());
    EXPECT_EQ("    E ", lines[0].substr(0, 6));
    EXPECT_EQ(std::string(kWarningText) + "2", lines[0].substr(21));
}
