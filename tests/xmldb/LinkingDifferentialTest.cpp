// The library's linking against the literal reading of the rules (LiteralLinking.cpp) on
// thousands of random databases: random keys and key numbers, same-level keys, duplicate
// names, disabled and read-only items, Booleans, the "TESTKEY" rule, edits of the tree and
// changes of the database between relinks. Both must build identical trees every time.
// Wide levels, where one key selects thousands of siblings in every order of key numbers,
// check the block structure behind the library's insertion by key number.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "LiteralLinking.h"
#include "XmlDbTestSupport.h"
#include "xmldb/SubPropertyLinking.h"

using namespace xmldb_test;

namespace {

constexpr int kLevels = 3;       // levels below "Type"
constexpr int kKeysPerLevel = 4;  // key names of one level
const char* const kNames[] = {"N0", "N1", "N2", "N3", "N4", "N5", "N6", "N7"};
const char* const kValues[] = {"A", "B", "C", "Z"};
constexpr int kWideSameLevelKeys = 12;  // more than the library keeps numbers for at once

std::string WideSameLevelKey(int which) { return "S" + std::to_string(which); }

std::string LevelKey(int level, int which) { return "L" + std::to_string(level) + static_cast<char>('a' + which); }

class Random {
public:
    explicit Random(std::uint32_t seed) : m_engine(seed) {}
    int Below(int bound) { return static_cast<int>(m_engine() % static_cast<std::uint32_t>(bound)); }
    bool Chance(int percent) { return Below(100) < percent; }
    std::uint32_t Any() { return m_engine(); }

private:
    std::mt19937 m_engine;
};

// Every key that any property of a random database can carry or ask for.
std::vector<std::string> KeyUniverse() {
    std::vector<std::string> keys{"TESTKEY"};
    for (int level = 0; level <= kLevels + 1; ++level) {
        for (int which = 0; which < kKeysPerLevel; ++which) keys.push_back(LevelKey(level, which));
    }
    keys.emplace_back("W");
    for (int which = 0; which < kWideSameLevelKeys; ++which) keys.push_back(WideSameLevelKey(which));
    return keys;
}

// Everything linking can change or read: class, value, flags, keys and key numbers, child
// and same-level keys, then the children in order.
void Describe(IProperty* property, std::ostringstream& out) {
    static const std::vector<std::string> universe = KeyUniverse();
    out << property->GetName() << ':';
    if (auto* boolean = dynamic_cast<BooleanProperty*>(property)) {
        out << "bool=" << boolean->GetValue();
    } else if (auto* integer = dynamic_cast<IntegerProperty*>(property)) {
        out << "int=" << integer->GetValue();
    } else if (auto* location64 = dynamic_cast<LocationProperty2*>(property)) {
        std::uint32_t page = 0;
        out << "loc64=" << location64->GetValue64(page).GetAddress() << '/' << page;
    } else if (auto* location = dynamic_cast<LocationProperty*>(property)) {
        std::uint32_t page = 0;
        out << "loc=" << location->GetValue(page) << '/' << page;
    } else if (auto* text = dynamic_cast<StringProperty*>(property)) {
        out << "string=" << text->GetValue();
    } else {
        out << "plain";
    }
    out << (property->IsDisabled() ? " disabled" : "") << (property->IsEditable() ? "" : " readonly");
    if (auto* node = AsProperty(property)) {
        out << " child=" << node->GetChildKey() << " same=" << node->GetSameLevelKey() << " keys=";
        for (const std::string& key : universe) {
            if (node->IsKeyName(key.c_str())) out << key << '#' << node->GetKeyNumber(key.c_str()) << ',';
        }
    }
    const std::vector<IProperty*> children = Children(property);
    if (!children.empty()) {
        out << " [";
        for (IProperty* child : children) {
            Describe(child, out);
            out << "; ";
        }
        out << ']';
    }
}

std::string Describe(IProperty* property) {
    std::ostringstream out;
    Describe(property, out);
    return out.str();
}

std::string Describe(const std::vector<IProperty*>& list) {
    std::ostringstream out;
    for (IProperty* entry : list) {
        Describe(entry, out);
        out << " | ";
    }
    return out.str();
}

// A key that a property of the given level may carry as child key: a key of the level
// below, none, or "TESTKEY" when that cannot select the property itself.
std::string RandomChildKey(Random& random, int level, bool mayUseTestKey) {
    const int pick = random.Below(10);
    if (pick < 2) return "";
    if (pick < 3 && mayUseTestKey) return "TESTKEY";
    return LevelKey(level + 1, random.Below(kKeysPerLevel));
}

// One random property of the given level. Keys come from its own level and child keys from
// the level below, so linking always ends. Keyless properties answer "TESTKEY" only as
// Booleans that are false, whose child key is then "", and carry no same-level key.
IProperty* RandomProperty(Random& random, int level, std::vector<PropertyKey>& keys) {
    const NameAndDescription names(kNames[random.Below(8)], "random");
    keys.clear();
    const int keyCount = random.Chance(15) ? 0 : 1 + random.Below(3);
    for (int i = 0; i < keyCount; ++i) {
        keys.emplace_back(LevelKey(level, random.Below(kKeysPerLevel)), static_cast<std::uint32_t>(random.Below(4)));
    }
    const bool keyed = !keys.empty();

    IProperty* created = nullptr;
    std::string childKey;
    switch (random.Below(6)) {
    case 0:
        created = Property::Construct(names);
        childKey = RandomChildKey(random, level, keyed);
        break;
    case 1: {
        const bool value = keyed ? random.Chance(60) : false;
        created = BooleanProperty::Construct(names, value);
        childKey = keyed ? RandomChildKey(random, level, true) : (random.Chance(50) ? "TESTKEY" : "");
        break;
    }
    case 2:
        created = IntegerProperty::Construct(names, static_cast<std::uint64_t>(random.Below(4)), false);
        childKey = RandomChildKey(random, level, keyed);
        break;
    case 3:
        created = LocationProperty::Construct(names, static_cast<std::uint32_t>(random.Below(4)),
                                              static_cast<std::uint32_t>(random.Below(2)), 0xFFFFFFFFu);
        childKey = RandomChildKey(random, level, keyed);
        break;
    case 4:
        created = LocationProperty2::Construct(names, static_cast<std::uint64_t>(random.Below(4)) << 32,
                                               static_cast<std::uint32_t>(random.Below(2)), 0xFFFFFFFFu);
        childKey = RandomChildKey(random, level, keyed);
        break;
    default: {
        std::vector<std::string> allowed;
        std::vector<ValueAttribute> attributes;
        const int count = random.Below(4);
        for (int i = 0; i < count; ++i) {
            allowed.emplace_back(kValues[random.Below(3)]);
            const std::string key = random.Chance(20) ? "" : RandomChildKey(random, level, keyed);
            const std::string sameLevel = random.Chance(35) ? LevelKey(level, random.Below(kKeysPerLevel)) : "";
            attributes.emplace_back(key, static_cast<std::uint32_t>(i), 0u, false, sameLevel);
        }
        created = StringProperty::Construct(names, kValues[random.Below(4)], allowed, attributes);
        if (count == 0) childKey = RandomChildKey(random, level, keyed);
        break;
    }
    }
    Property* property = AsProperty(created);
    if (!childKey.empty() || random.Chance(50)) property->SetChildKey(childKey.c_str());
    // A same-level key on a keyless property would make "TESTKEY" pull in a whole level.
    if (keyed && random.Chance(20)) property->SetSameLevelKey(LevelKey(level, random.Below(kKeysPerLevel)).c_str());
    if (random.Chance(15)) property->SetDisabled(true);
    if (random.Chance(10)) property->SetEditable(false);
    for (const PropertyKey& key : keys) property->AddKeyName(key);
    return created;
}

IProperty* RandomType(Random& random) {
    std::vector<std::string> allowed;
    std::vector<ValueAttribute> attributes;
    const int count = 1 + random.Below(4);
    for (int i = 0; i < count; ++i) {
        allowed.push_back("V" + std::to_string(i));
        const std::string key = random.Chance(10) ? "" : LevelKey(1, random.Below(kKeysPerLevel));
        attributes.emplace_back(key, static_cast<std::uint32_t>(i), 0u, false, "");
    }
    return StringProperty::Construct(NameAndDescription("Type", "root"), allowed[random.Below(count)], allowed,
                                     attributes);
}

// Most properties enter the database as the reader adds them, with their keys, so that
// linking finds them through its index; the others as the module updates add them.
void List(Random& random, PropertyDB& db, IProperty* property, const std::vector<PropertyKey>& keys) {
    if (random.Chance(85)) {
        db.AddReadProperty(dynamic_cast<Property*>(property), keys, false);
    } else {
        db.AddProperty(property);
    }
}

// Levels of the listed properties, kept beside the database for changes between relinks.
struct RandomDatabase {
    PropertyDB* db = nullptr;
    std::vector<int> levels;  // by list position
};

void FillDatabase(Random& random, RandomDatabase& target) {
    const int count = 1 + random.Below(24);
    const int typePosition = random.Below(count + 1);
    for (int i = 0; i <= count; ++i) {
        std::vector<PropertyKey> keys;
        if (i == typePosition) {
            List(random, *target.db, RandomType(random), keys);
            target.levels.push_back(0);
        } else {
            const int level = 1 + random.Below(kLevels);
            IProperty* property = RandomProperty(random, level, keys);
            List(random, *target.db, property, keys);
            target.levels.push_back(level);
        }
    }
}

void EmptyDatabase(RandomDatabase& target) {
    while (target.db->GetPropertyCount() != 0) {
        IProperty* first = target.db->Properties().front();
        const std::string name = first->GetName();
        IProperty* removed = target.db->FindByName(name.c_str());
        target.db->RemoveByName(name.c_str());
        removed->Release();
    }
    target.levels.clear();
}

// A change of the database between relinks, through its list operations or on a listed
// property, the way the module updates and the exported edits change it.
void ChangeDatabase(Random& random, RandomDatabase& target) {
    const int level = 1 + random.Below(kLevels);
    std::vector<PropertyKey> keys;
    switch (random.Below(6)) {
    case 0:
        List(random, *target.db, RandomProperty(random, level, keys), keys);
        target.levels.push_back(level);
        break;
    case 1:
        target.db->InsertPropertyFirst(RandomProperty(random, level, keys));
        target.levels.insert(target.levels.begin(), level);
        break;
    case 2: {
        const char* name = kNames[random.Below(8)];
        const auto& list = target.db->Properties();
        for (std::size_t i = 0; i < list.size(); ++i) {
            if (std::string(list[i]->GetName()) == name) {
                IProperty* removed = list[i];
                target.db->RemoveByName(name);
                target.levels.erase(target.levels.begin() + static_cast<std::ptrdiff_t>(i));
                removed->Release();
                break;
            }
        }
        break;
    }
    default: {
        const auto& list = target.db->Properties();
        const std::size_t position = static_cast<std::size_t>(random.Below(static_cast<int>(list.size())));
        Property* property = AsProperty(list[position]);
        const int ownLevel = target.levels[position];
        if (ownLevel == 0) break;
        const int change = random.Below(3);
        if (change == 0) {
            property->AddKeyName(PropertyKey(LevelKey(ownLevel, random.Below(kKeysPerLevel)),
                                             static_cast<std::uint32_t>(random.Below(4))));
        } else if (change == 1) {
            property->SetDisabled(!property->IsDisabled());
        } else if (!property->IsKeyName("TESTKEY")) {
            property->SetSameLevelKey(random.Chance(30) ? "" : LevelKey(ownLevel, random.Below(kKeysPerLevel)).c_str());
        }
        break;
    }
    }
}

void PreOrder(IProperty* property, std::vector<IProperty*>& out) {
    out.push_back(property);
    for (IProperty* child : Children(property)) PreOrder(child, out);
}

// The same edit on the node at the same place of both trees.
void Edit(Random& random, IProperty* library, IProperty* literal) {
    if (auto* text = dynamic_cast<StringProperty*>(library)) {
        const bool isType = std::string(text->GetName()) == "Type";
        const std::string value = isType ? "V" + std::to_string(random.Below(4)) : kValues[random.Below(4)];
        text->SetValue(value.c_str());
        dynamic_cast<StringProperty*>(literal)->SetValue(value.c_str());
    } else if (auto* boolean = dynamic_cast<BooleanProperty*>(library)) {
        const bool value = !boolean->GetValue();
        boolean->SetValue(value);
        dynamic_cast<BooleanProperty*>(literal)->SetValue(value);
    } else if (auto* integer = dynamic_cast<IntegerProperty*>(library)) {
        const auto value = static_cast<std::uint64_t>(random.Below(4));
        integer->SetValue(value);
        dynamic_cast<IntegerProperty*>(literal)->SetValue(value);
    }
}

void ReleaseAll(std::vector<IProperty*>& list) {
    for (IProperty* entry : list) entry->Release();
    list.clear();
}

// The two gathering steps alone, on a random work list and key.
void CompareGathering(Random& random, RandomDatabase& target, std::uint32_t seed) {
    static const std::vector<std::string> universe = KeyUniverse();
    const std::string key = random.Chance(5) ? "" : universe[static_cast<std::size_t>(random.Below(static_cast<int>(universe.size())))];
    std::vector<IProperty*> library;
    std::vector<IProperty*> literal;
    const auto& list = target.db->Properties();
    const int count = random.Below(5);
    for (int i = 0; i < count; ++i) {
        Property* source = AsProperty(list[static_cast<std::size_t>(random.Below(static_cast<int>(list.size())))]);
        library.push_back(source->Clone());
        literal.push_back(source->Clone());
    }
    FilterCurrentChildren(*target.db, key.c_str(), library);
    literal_linking::FilterCurrentChildren(key.c_str(), literal);
    ASSERT_EQ(Describe(library), Describe(literal)) << "seed " << seed << ", key \"" << key << "\" (filter)";
    const std::uint32_t librarySize = GatherFromDatabase(*target.db, key.c_str(), library);
    const std::uint32_t literalSize = literal_linking::GatherFromDatabase(list, key.c_str(), literal);
    EXPECT_EQ(librarySize, literalSize) << "seed " << seed << ", key \"" << key << '"';
    EXPECT_EQ(Describe(library), Describe(literal)) << "seed " << seed << ", key \"" << key << "\" (gather)";
    ReleaseAll(library);
    ReleaseAll(literal);
}

// One random database: the linked root, then rounds of edits, relinks and database changes.
void RunCase(std::uint32_t seed, RandomDatabase& target) {
    Random random(seed);
    FillDatabase(random, target);
    CompareGathering(random, target, seed);

    Held library(target.db->FindPropertyByName("Type"));
    Held literal(target.db->FindPropertyByName("Type"));
    ASSERT_NE(library.get(), nullptr) << "seed " << seed;
    target.db->LinkSubProperties(library.get());
    literal_linking::LinkSubProperties(target.db->Properties(), literal.get());
    ASSERT_EQ(Describe(library.get()), Describe(literal.get())) << "seed " << seed << ", first link";

    const int rounds = 1 + random.Below(4);
    for (int round = 0; round < rounds; ++round) {
        if (random.Chance(30)) ChangeDatabase(random, target);
        std::vector<IProperty*> libraryNodes;
        std::vector<IProperty*> literalNodes;
        PreOrder(library.get(), libraryNodes);
        PreOrder(literal.get(), literalNodes);
        ASSERT_EQ(libraryNodes.size(), literalNodes.size());
        const std::size_t edited = static_cast<std::size_t>(random.Below(static_cast<int>(libraryNodes.size())));
        Edit(random, libraryNodes[edited], literalNodes[edited]);
        const bool wholeTree = random.Chance(60);
        target.db->LinkSubProperties(wholeTree ? library.get() : libraryNodes[edited]);
        literal_linking::LinkSubProperties(target.db->Properties(), wholeTree ? literal.get() : literalNodes[edited]);
        ASSERT_EQ(Describe(library.get()), Describe(literal.get()))
            << "seed " << seed << ", round " << round << (wholeTree ? " (whole tree)" : " (one node)");
    }
    CompareGathering(random, target, seed);
}

// CI runs 10,000 databases over the four tests; RLX_LINKING_CASES raises or lowers that.
std::uint32_t CasesPerTest() {
    const char* given = std::getenv("RLX_LINKING_CASES");
    const long total = given != nullptr ? std::atol(given) : 10000;
    return static_cast<std::uint32_t>(total > 4 ? total / 4 : 1);
}

void RunCases(std::uint32_t firstSeed) {
    RandomDatabase target;
    PropertyDB db(Fixture("untyped_only.xml"));
    ASSERT_EQ(db.GetPropertyCount(), 0u);
    target.db = &db;
    const std::uint32_t cases = CasesPerTest();
    for (std::uint32_t i = 0; i < cases; ++i) {
        const CaughtError caught = CatchKorvaError([&] { RunCase(firstSeed + i, target); });
        EXPECT_FALSE(caught.thrown) << "seed " << firstSeed + i << ": " << caught.text;
        EmptyDatabase(target);
        if (::testing::Test::HasFailure()) break;
    }
}

TEST(LinkingAgainstLiteralRules, RandomDatabasesFirstQuarter) { RunCases(1000000u); }
TEST(LinkingAgainstLiteralRules, RandomDatabasesSecondQuarter) { RunCases(2000000u); }
TEST(LinkingAgainstLiteralRules, RandomDatabasesThirdQuarter) { RunCases(3000000u); }
TEST(LinkingAgainstLiteralRules, RandomDatabasesFourthQuarter) { RunCases(4000000u); }

// The yardstick itself follows the rules on a case worked out by hand: a same-level key found
// during the pass takes effect only from its position on, and equal key numbers keep file order.
TEST(LinkingAgainstLiteralRules, YardstickFollowsTheSinglePass) {
    PropertyDB db(Fixture("untyped_only.xml"));
    auto keyed = [](const char* name, const char* key, std::uint32_t number, const char* sameLevel) {
        IProperty* property = Property::Construct(NameAndDescription(name, ""));
        AsProperty(property)->AddKeyName(PropertyKey(key, number));
        AsProperty(property)->SetSameLevelKey(sameLevel);
        return property;
    };
    db.AddProperty(keyed("Early", "S", 0, ""));      // before the key S is known: not picked up
    db.AddProperty(keyed("First", "K", 2, "S"));     // brings S in
    db.AddProperty(keyed("Second", "K", 1, ""));     // lower number: goes ahead of First
    db.AddProperty(keyed("Late", "S", 0, ""));       // after S is known: picked up, number 0 under S
    db.AddProperty(keyed("Equal", "K", 1, ""));      // equal number: stays behind Second
    std::vector<IProperty*> list;
    EXPECT_EQ(literal_linking::GatherFromDatabase(db.Properties(), "K", list), 4u);
    std::vector<std::string> names;
    for (IProperty* entry : list) names.emplace_back(entry->GetName());
    EXPECT_EQ(names, (std::vector<std::string>{"Late", "Second", "Equal", "First"}));
    ReleaseAll(list);
}

// A listed property whose keys change after the read (as AttachPropertyDB changes "Actions",
// or a caller through a borrowed property) is found under its new key without being announced.
TEST(LinkingAgainstLiteralRules, KeysChangedAfterTheReadAreFollowed) {
    PropertyDB db(Fixture("linking.xml"));
    ASSERT_GT(db.GetPropertyCount(), 1u);
    Property* changed = AsProperty(db.Properties()[1]);
    ASSERT_NE(changed, nullptr);
    Held warmUp(db.FindPropertyByName("Type"));
    db.LinkSubProperties(warmUp.get());  // the index exists before the change

    changed->RemoveAllKeys();
    changed->AddKeyName(PropertyKey("FRESH KEY", 1));

    Held library(Property::Construct(NameAndDescription("Parent", "")));
    Held literal(Property::Construct(NameAndDescription("Parent", "")));
    AsProperty(library.get())->SetChildKey("FRESH KEY");
    AsProperty(literal.get())->SetChildKey("FRESH KEY");
    db.LinkSubProperties(library.get());
    literal_linking::LinkSubProperties(db.Properties(), literal.get());
    EXPECT_EQ(ChildNames(library.get()), std::vector<std::string>{changed->GetName()});
    EXPECT_EQ(Describe(library.get()), Describe(literal.get()));
}

}  // namespace

namespace {

// How the key numbers under the wide key run in file order.
enum class NumberOrder { Ascending, Descending, Equal, Random };

const char* NameOf(NumberOrder order) {
    switch (order) {
    case NumberOrder::Ascending: return "ascending";
    case NumberOrder::Descending: return "descending";
    case NumberOrder::Equal: return "equal";
    case NumberOrder::Random: return "random";
    }
    return "";
}

std::uint32_t WideNumber(Random& random, NumberOrder order, int position, int count) {
    switch (order) {
    case NumberOrder::Ascending: return static_cast<std::uint32_t>(position);
    case NumberOrder::Descending: return static_cast<std::uint32_t>(count - position);
    case NumberOrder::Equal: return 7u;
    case NumberOrder::Random: break;
    }
    // Few distinct numbers give long runs of equal ones; the whole unsigned range tests the
    // comparison without sign.
    if (random.Chance(10)) return random.Chance(50) ? 0xFFFFFFFFu : random.Any();
    return static_cast<std::uint32_t>(random.Below(16));
}

// One sibling of a wide level. Most carry the wide key "W"; some are selected only through a
// same-level key S<j> and have their number under it; some carry W and an S<j> with another
// number, which decides where copies matched under S<j> go. Names repeat now and then, so
// that later database properties meet a present entry and, when disabled with another value,
// replace it.
IProperty* WideSibling(Random& random, NumberOrder order, int position, int count) {
    const std::string name = random.Chance(5) ? "P" + std::to_string(random.Below(position + 1)) : "P" + std::to_string(position);
    IProperty* created = nullptr;
    if (random.Chance(50)) {
        created = BooleanProperty::Construct(NameAndDescription(name, "wide"), random.Chance(50));
    } else if (random.Chance(50)) {
        created = StringProperty::Construct(NameAndDescription(name, "wide"), kValues[random.Below(4)]);
    } else {
        created = Property::Construct(NameAndDescription(name, "wide"));
    }
    Property* property = AsProperty(created);
    const std::uint32_t number = WideNumber(random, order, position, count);
    const std::string other = WideSameLevelKey(random.Below(kWideSameLevelKeys));
    if (random.Chance(80)) {
        property->AddKeyName(PropertyKey("W", number));
        if (random.Chance(30)) property->AddKeyName(PropertyKey(other, WideNumber(random, order, position, count)));
        if (random.Chance(3)) property->AddKeyName(PropertyKey("W", random.Any()));  // the first one counts
        if (random.Chance(15)) property->SetSameLevelKey(WideSameLevelKey(random.Below(kWideSameLevelKeys)).c_str());
    } else {
        property->AddKeyName(PropertyKey(other, number));
    }
    if (random.Chance(10)) property->SetDisabled(true);
    return created;
}

void ListWide(Random& random, PropertyDB& db, IProperty* property) {
    if (random.Chance(85)) {
        std::vector<PropertyKey> keys;
        // The reader's copy of the keys, for the index: read them back from the property.
        Property* node = AsProperty(property);
        static const std::vector<std::string> universe = KeyUniverse();
        for (const std::string& key : universe) {
            if (node->IsKeyName(key.c_str())) keys.emplace_back(key, node->GetKeyNumber(key.c_str()));
        }
        db.AddReadProperty(node, keys, false);
    } else {
        db.AddProperty(property);
    }
}

// Flips the value of some listed Booleans and disables them, so that the next relink
// replaces their present copies; and lists a few new siblings.
void ChangeWideDatabase(Random& random, PropertyDB& db, NumberOrder order, int count) {
    for (IProperty* listed : db.Properties()) {
        auto* boolean = dynamic_cast<BooleanProperty*>(listed);
        if (boolean != nullptr && random.Chance(5)) {
            boolean->SetValue(!boolean->GetValue());
            boolean->SetDisabled(true);
        }
    }
    const int added = 1 + count / 20;
    for (int i = 0; i < added; ++i) ListWide(random, db, WideSibling(random, order, count + i, count));
}

IProperty* WideParent() {
    IProperty* parent = Property::Construct(NameAndDescription("Parent", "wide"));
    AsProperty(parent)->SetChildKey("W");
    return parent;
}

// The gathering steps on a work list of clones in shuffled order: copies then go between
// entries whose numbers do not ascend.
void CompareWideGathering(Random& random, PropertyDB& db, const std::string& context) {
    std::vector<IProperty*> library;
    std::vector<IProperty*> literal;
    const auto& listed = db.Properties();
    const int count = random.Below(static_cast<int>(listed.size()) / 2 + 1);
    for (int i = 0; i < count; ++i) {
        Property* source = AsProperty(listed[static_cast<std::size_t>(random.Below(static_cast<int>(listed.size())))]);
        library.push_back(source->Clone());
        literal.push_back(source->Clone());
    }
    FilterCurrentChildren(db, "W", library);
    literal_linking::FilterCurrentChildren("W", literal);
    ASSERT_EQ(Describe(library), Describe(literal)) << context << " (filter)";
    const std::uint32_t librarySize = GatherFromDatabase(db, "W", library);
    const std::uint32_t literalSize = literal_linking::GatherFromDatabase(listed, "W", literal);
    EXPECT_EQ(librarySize, literalSize) << context;
    EXPECT_EQ(Describe(library), Describe(literal)) << context << " (gather)";
    ReleaseAll(library);
    ReleaseAll(literal);
}

void RunWideCase(NumberOrder order, int count, std::uint32_t seed) {
    const std::string context = std::string(NameOf(order)) + ", " + std::to_string(count) + " siblings, seed " + std::to_string(seed);
    Random random(seed);
    PropertyDB db(Fixture("untyped_only.xml"));
    for (int i = 0; i < count; ++i) ListWide(random, db, WideSibling(random, order, i, count));

    Held library(WideParent());
    Held literal(WideParent());
    db.LinkSubProperties(library.get());
    literal_linking::LinkSubProperties(db.Properties(), literal.get());
    ASSERT_GT(Children(library.get()).size(), static_cast<std::size_t>(count) / 2) << context;
    ASSERT_EQ(Describe(library.get()), Describe(literal.get())) << context << ", first link";

    for (int round = 0; round < 2; ++round) {
        ChangeWideDatabase(random, db, order, count);
        // The same edit in both trees: a child Boolean flips.
        const std::vector<IProperty*> libraryChildren = Children(library.get());
        const std::vector<IProperty*> literalChildren = Children(literal.get());
        const auto edited = static_cast<std::size_t>(random.Below(static_cast<int>(libraryChildren.size())));
        if (auto* boolean = dynamic_cast<BooleanProperty*>(libraryChildren[edited])) {
            boolean->SetValue(!boolean->GetValue());
            auto* twin = dynamic_cast<BooleanProperty*>(literalChildren[edited]);
            twin->SetValue(!twin->GetValue());
        }
        db.LinkSubProperties(library.get());
        literal_linking::LinkSubProperties(db.Properties(), literal.get());
        ASSERT_EQ(Describe(library.get()), Describe(literal.get())) << context << ", relink " << round;
    }
    CompareWideGathering(random, db, context);
}

class WideLevels : public ::testing::TestWithParam<NumberOrder> {};

TEST_P(WideLevels, MatchTheLiteralRules) {
    const NumberOrder order = GetParam();
    // A list of one block, a few blocks, and thousands of siblings over many blocks.
    for (const int count : {60, 700, 3000}) {
        RunWideCase(order, count, 7000u + static_cast<std::uint32_t>(count));
        if (::testing::Test::HasFailure()) return;
    }
}

INSTANTIATE_TEST_SUITE_P(EveryNumberOrder, WideLevels,
                         ::testing::Values(NumberOrder::Ascending, NumberOrder::Descending, NumberOrder::Equal,
                                           NumberOrder::Random),
                         [](const ::testing::TestParamInfo<NumberOrder>& info) { return std::string(NameOf(info.param)); });

}  // namespace
