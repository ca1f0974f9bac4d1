// The flat property list of a database and its lookups and edits.
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "XmlDbTestSupport.h"

using namespace xmldb_test;

namespace {

// The count as Release reports it (the count before the decrement), with the reference
// given back by a matching AddRef first.
std::uint32_t ReferenceCountOf(IProperty* property) {
    property->AddRef();
    return property->Release() - 1;
}

IProperty* MakeBoolean(const char* name) {
    return BooleanProperty::Construct(NameAndDescription(name, "made by the test"), true);
}

// A property that writes its name into a log when it is destroyed.
class LoggedProperty : public Property {
public:
    LoggedProperty(const char* name, std::vector<std::string>& log)
        : Property(NameAndDescription(name, "logged by the test")), m_log(log) {}
    ~LoggedProperty() override { m_log.emplace_back(GetName()); }

private:
    std::vector<std::string>& m_log;
};

}  // namespace

TEST(PropertyDB, StoresTheFileNameAfterParsing) {
    PropertyDB db(Fixture("lookups.xml"));
    EXPECT_EQ(db.GetFileName(), Fixture("lookups.xml"));
    EXPECT_EQ(db.GetPropertyCount(), 4u);
}

TEST(PropertyDB, FindByNameReturnsTheFirstOfTwinsAndIsCaseSensitive) {
    PropertyDB db(Fixture("lookups.xml"));
    IProperty* twin = db.FindByName("Twin");
    ASSERT_NE(twin, nullptr);
    EXPECT_STREQ(twin->GetDescription(), "first");
    EXPECT_EQ(twin, db.Properties()[0]);
    EXPECT_STREQ(db.FindByName("twin")->GetDescription(), "lower case");
    EXPECT_EQ(db.FindByName("Twi"), nullptr);
    EXPECT_EQ(db.FindByName("Twin "), nullptr);
    EXPECT_EQ(db.FindByName(""), nullptr);
}

TEST(PropertyDB, LookupsLendPointersWithoutAddingReferences) {
    PropertyDB db(Fixture("lookups.xml"));
    IProperty* twin = db.Properties()[0];
    const std::uint32_t before = ReferenceCountOf(twin);
    EXPECT_EQ(before, 1u);
    db.FindByName("Twin");
    db.FindByEnum(10);
    db.FindByNameAndEnum("Twin", 10);
    EXPECT_EQ(ReferenceCountOf(twin), before);
}

TEST(PropertyDB, FindByEnumReturnsTheFirstMatchInListOrder) {
    PropertyDB db(Fixture("lookups.xml"));
    EXPECT_EQ(db.FindByEnum(10), db.Properties()[0]);
    EXPECT_STREQ(db.FindByEnum(20)->GetName(), "Other");
    EXPECT_STREQ(db.FindByEnum(30)->GetName(), "twin");
    EXPECT_EQ(db.FindByEnum(40), nullptr);
}

TEST(PropertyDB, FindByNameAndEnumNeedsBothToMatch) {
    PropertyDB db(Fixture("lookups.xml"));
    IProperty* secondTwin = db.FindByNameAndEnum("Twin", 20);
    ASSERT_NE(secondTwin, nullptr);
    EXPECT_STREQ(secondTwin->GetDescription(), "second");
    EXPECT_EQ(db.FindByNameAndEnum("Twin", 30), nullptr);
    EXPECT_EQ(db.FindByNameAndEnum("Other", 10), nullptr);
}

TEST(PropertyDB, FindPropertyByNameHandsOutAClone) {
    PropertyDB db(Fixture("lookups.xml"));
    IProperty* listed = db.FindByName("Twin");
    IProperty* copy = db.FindPropertyByName("Twin");
    ASSERT_NE(copy, nullptr);
    EXPECT_NE(copy, listed);
    EXPECT_STREQ(copy->GetDescription(), "first");
    auto* integer = dynamic_cast<IntegerProperty*>(copy);
    ASSERT_NE(integer, nullptr);
    EXPECT_EQ(integer->GetValue(), 1u);
    EXPECT_EQ(ReferenceCountOf(listed), 1u);
    EXPECT_EQ(copy->Release(), 1u);  // the caller held the only reference
    EXPECT_EQ(db.FindPropertyByName("Missing"), nullptr);
}

TEST(PropertyDB, AddPropertyAppendsAndTakesOverTheReference) {
    PropertyDB db(Fixture("lookups.xml"));
    IProperty* added = MakeBoolean("Added");
    db.AddProperty(added);
    EXPECT_EQ(db.GetPropertyCount(), 5u);
    EXPECT_EQ(db.Properties().back(), added);
    EXPECT_EQ(ReferenceCountOf(added), 1u);
    EXPECT_EQ(db.FindByName("Added"), added);
}

TEST(PropertyDB, InsertPropertyFirstPutsItAheadOfEveryEntry) {
    PropertyDB db(Fixture("lookups.xml"));
    const std::vector<std::string> before = ListedNames(db);
    IProperty* inserted = MakeBoolean("Twin");
    db.InsertPropertyFirst(inserted);
    std::vector<std::string> expected{"Twin"};
    expected.insert(expected.end(), before.begin(), before.end());
    EXPECT_EQ(ListedNames(db), expected);
    EXPECT_EQ(db.FindByName("Twin"), inserted);
    EXPECT_EQ(ReferenceCountOf(inserted), 1u);
}

TEST(PropertyDB, RemoveByNameErasesTheFirstMatchWithoutReleasingIt) {
    PropertyDB db(Fixture("lookups.xml"));
    IProperty* firstTwin = db.Properties()[0];
    firstTwin->AddRef();  // the test keeps it alive to look at it afterwards
    db.RemoveByName("Twin");
    EXPECT_EQ(ListedNames(db), (std::vector<std::string>{"Other", "Twin", "twin"}));
    EXPECT_STREQ(db.FindByName("Twin")->GetDescription(), "second");
    EXPECT_EQ(ReferenceCountOf(firstTwin), 2u);
    db.RemoveByName("Nothing");
    EXPECT_EQ(db.GetPropertyCount(), 3u);
    firstTwin->Release();
    firstTwin->Release();
}

TEST(PropertyDB, CopyPropertiesAddsOneReferenceEachThatOutlivesTheDatabase) {
    std::vector<IProperty*> copies;
    {
        PropertyDB db(Fixture("lookups.xml"));
        copies.resize(db.GetPropertyCount());
        db.CopyProperties(copies.data());
        ASSERT_EQ(copies.size(), 4u);
        for (std::size_t i = 0; i < copies.size(); ++i) {
            EXPECT_EQ(copies[i], db.Properties()[i]);
            EXPECT_EQ(ReferenceCountOf(copies[i]), 2u);
        }
    }
    EXPECT_STREQ(copies[0]->GetDescription(), "first");
    EXPECT_STREQ(copies[3]->GetName(), "twin");
    for (IProperty* copy : copies) {
        EXPECT_EQ(ReferenceCountOf(copy), 1u);
        EXPECT_EQ(copy->Release(), 1u);
    }
}

TEST(PropertyDB, DestructorReleasesEachListedPropertyOnce) {
    IProperty* watched = nullptr;
    {
        PropertyDB db(Fixture("lookups.xml"));
        watched = db.Properties()[1];
        watched->AddRef();
    }
    EXPECT_EQ(ReferenceCountOf(watched), 1u);
    EXPECT_STREQ(watched->GetName(), "Other");
    watched->Release();
}

// The listed properties are given back in list order, first to last, whatever put them there.
TEST(PropertyDB, DestructorReleasesTheListInListOrder) {
    std::vector<std::string> log;
    {
        PropertyDB db(Fixture("lookups.xml"));
        db.AddProperty(new LoggedProperty("Added second", log));
        db.InsertPropertyFirst(new LoggedProperty("Inserted first", log));
        db.AddProperty(new LoggedProperty("Added third", log));
        db.AddProperty(new LoggedProperty("Added last", log));
        // The list: the inserted one, the four properties of the file, the three added ones.
        ASSERT_EQ(db.GetPropertyCount(), 8u);
        EXPECT_TRUE(log.empty());
    }
    EXPECT_EQ(log, (std::vector<std::string>{"Inserted first", "Added second", "Added third", "Added last"}));
}

TEST(PropertyDB, ParseAgainAppendsTheSecondFile) {
    PropertyDB db(Fixture("lookups.xml"));
    EXPECT_EQ(db.Parse(Fixture("single_bool.xml")), 0u);
    EXPECT_EQ(ListedNames(db), (std::vector<std::string>{"Twin", "Other", "Twin", "twin", "Only"}));
    EXPECT_EQ(db.GetFileName(), Fixture("lookups.xml"));
}
