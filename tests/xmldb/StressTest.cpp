// Large and deep inputs: a 100 MB database, a 1 MB property name, 100,000 nested SUBLIST
// elements.
#include <chrono>
#include <cstdio>
#include <fstream>
#include <string>

#include <gtest/gtest.h>

#include "AllocatedBytes.h"
#include "XmlDbTestSupport.h"

using namespace xmldb_test;

namespace {

// Deletes its file at the end of the scope: these inputs are large.
class TemporaryFile {
public:
    explicit TemporaryFile(const std::string& name) : m_path(::testing::TempDir() + "/" + name) {}
    ~TemporaryFile() { std::remove(m_path.c_str()); }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    const std::string& Path() const { return m_path; }

private:
    std::string m_path;
};

std::string IntegerElement(std::size_t index) {
    const std::string number = std::to_string(index);
    return "  <PROPERTY_INTEGER><NAME>Counter " + number + "</NAME><DESCRIPTION>Event counter number " + number +
           " of the synthetic job</DESCRIPTION><VALUE>" + number + "</VALUE><RANGE_LO>0</RANGE_LO><RANGE_HI>" +
           "4294967295</RANGE_HI><KEYITEM><KEYNAME>COUNTERS</KEYNAME><KEYNUMBER>" + number +
           "</KEYNUMBER></KEYITEM></PROPERTY_INTEGER>\n";
}

// Bytes each byte of the large file may cost once loaded. The properties keep their texts
// and a few fixed-size fields; this leaves room for the heap's own bookkeeping.
constexpr double kBytesPerFileByte = 3.0;

}  // namespace

TEST(Stress, HundredMegabyteDatabaseLoadsInMemoryProportionalToItsSize) {
    constexpr std::size_t kTargetSize = 100u * 1024u * 1024u;
    TemporaryFile file("large_database.xml");
    std::size_t written = 0;
    std::size_t properties = 0;
    {
        std::ofstream out(file.Path(), std::ios::binary);
        const std::string head = "<?xml version=\"1.0\"?>\n<RLX>\n";
        out << head;
        written += head.size();
        while (written < kTargetSize) {
            const std::string property = IntegerElement(properties++);
            out << property;
            written += property.size();
        }
        out << "</RLX>\n";
        written += 7;
    }

    const std::size_t before = stress_test::AllocatedBytes();
    PropertyDB db(file.Path());
    const std::size_t loaded = stress_test::AllocatedBytes();
    ASSERT_EQ(db.GetPropertyCount(), properties);
    EXPECT_STREQ(db.Properties().front()->GetName(), "Counter 0");
    EXPECT_EQ(std::string(db.Properties().back()->GetName()), "Counter " + std::to_string(properties - 1));

    if (stress_test::kCountsAllocations) {
        const double perFileByte = static_cast<double>(loaded - before) / static_cast<double>(written);
        RecordProperty("bytes_per_file_byte", std::to_string(perFileByte));
        EXPECT_LT(perFileByte, kBytesPerFileByte) << (loaded - before) << " bytes for " << written;
    }
}

TEST(Stress, SmallerDatabaseCostsProportionallyLess) {
    if (!stress_test::kCountsAllocations) GTEST_SKIP() << "no allocation counter on this runtime";
    // Two sizes, ten times apart: the cost per property stays the same within a quarter.
    auto costPerProperty = [](std::size_t count) {
        TemporaryFile file("sized_database_" + std::to_string(count) + ".xml");
        {
            std::ofstream out(file.Path(), std::ios::binary);
            out << "<?xml version=\"1.0\"?>\n<RLX>\n";
            for (std::size_t i = 0; i < count; ++i) out << IntegerElement(i);
            out << "</RLX>\n";
        }
        const std::size_t before = stress_test::AllocatedBytes();
        PropertyDB db(file.Path());
        EXPECT_EQ(db.GetPropertyCount(), count);
        return static_cast<double>(stress_test::AllocatedBytes() - before) / static_cast<double>(count);
    };
    const double small = costPerProperty(20000);
    const double large = costPerProperty(200000);
    EXPECT_LT(large, small * 1.25);
    EXPECT_GT(large, small * 0.75);
}

TEST(Stress, OneMegabytePropertyNameIsKept) {
    const std::string name(1024u * 1024u, 'N');
    TemporaryFile file("long_name.xml");
    std::ofstream(file.Path(), std::ios::binary)
        << "<?xml version=\"1.0\"?>\n<RLX><PROPERTY_BOOL><NAME>" << name
        << "</NAME><DESCRIPTION>d</DESCRIPTION><VALUE>1</VALUE></PROPERTY_BOOL></RLX>\n";
    PropertyDB db(file.Path());
    ASSERT_EQ(db.GetPropertyCount(), 1u);
    const std::string read = db.Properties()[0]->GetName();
    EXPECT_EQ(read.size(), name.size());
    EXPECT_EQ(read, name);
    IProperty* found = db.FindByName(name.c_str());
    EXPECT_EQ(found, db.Properties()[0]);
}

TEST(Stress, HundredThousandNestedSublistsAroundOneProperty) {
    constexpr std::size_t kDepth = 100000;
    TemporaryFile file("nested_sublists.xml");
    {
        std::ofstream out(file.Path(), std::ios::binary);
        out << "<?xml version=\"1.0\"?>\n<RLX>";
        for (std::size_t i = 0; i < kDepth; ++i) out << "<SUBLIST>";
        out << "<PROPERTY_BOOL><NAME>Deepest</NAME><DESCRIPTION>d</DESCRIPTION><VALUE>1</VALUE></PROPERTY_BOOL>";
        for (std::size_t i = 0; i < kDepth; ++i) out << "</SUBLIST>";
        out << "</RLX>\n";
    }
    PropertyDB db(file.Path());
    ASSERT_EQ(db.GetPropertyCount(), 1u);
    EXPECT_STREQ(db.Properties()[0]->GetName(), "Deepest");
}

TEST(Stress, HundredThousandPropertiesNestedThroughTheirSublists) {
    constexpr std::size_t kDepth = 100000;
    TemporaryFile file("nested_properties.xml");
    {
        std::ofstream out(file.Path(), std::ios::binary);
        out << "<?xml version=\"1.0\"?>\n<RLX>";
        for (std::size_t i = 0; i < kDepth; ++i) {
            out << "<PROPERTY_BOOL><NAME>Level " << i << "</NAME><DESCRIPTION>d</DESCRIPTION><VALUE>1</VALUE><SUBLIST>";
        }
        for (std::size_t i = 0; i < kDepth; ++i) out << "</SUBLIST></PROPERTY_BOOL>";
        out << "</RLX>\n";
    }
    PropertyDB db(file.Path());
    // Every property stands in the flat list. The reader keeps one set of element fields, so
    // each outer property is built from the fields read last: those of the innermost one.
    ASSERT_EQ(db.GetPropertyCount(), kDepth);
    const std::string innermost = "Level " + std::to_string(kDepth - 1);
    EXPECT_EQ(std::string(db.Properties().front()->GetName()), innermost);
    EXPECT_EQ(std::string(db.Properties().back()->GetName()), innermost);
}
