#include "LinkingShapes.h"

#include <algorithm>
#include <cstdint>
#include <fstream>
#include <stdexcept>

namespace rlx_bench {

namespace {

class DatabaseFile {
public:
    explicit DatabaseFile(const std::string& path) : m_path(path), m_out(path, std::ios::binary | std::ios::trunc) {
        if (!m_out) throw std::runtime_error("cannot write " + path);
        m_out << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<RLX>\n  <JOB_MAJOR_V>1</JOB_MAJOR_V>\n"
              << "  <JOB_MINOR_V>0</JOB_MINOR_V>\n  <ROOT>\n"
              << "    <PROPERTY_STRING>\n      <NAME>Type</NAME>\n      <DESCRIPTION>Kind of job</DESCRIPTION>\n"
              << "      <VALUE>Job 0</VALUE>\n      <ALLOWEDLIST>\n"
              << "        <ALLOWEDITEM><ALLOWED_STRING>Job 0</ALLOWED_STRING><ALLOWED_KEY>JOB_0</ALLOWED_KEY>"
              << "<ALLOWED_ENUM>0</ALLOWED_ENUM></ALLOWEDITEM>\n"
              << "        <ALLOWEDITEM><ALLOWED_STRING>Job 1</ALLOWED_STRING><ALLOWED_KEY>JOB_1</ALLOWED_KEY>"
              << "<ALLOWED_ENUM>1</ALLOWED_ENUM></ALLOWEDITEM>\n"
              << "      </ALLOWEDLIST>\n    </PROPERTY_STRING>\n";
    }
    ~DatabaseFile() noexcept(false) {
        m_out << "  </ROOT>\n</RLX>\n";
        m_out.close();
        if (!m_out) throw std::runtime_error("cannot write " + m_path);
    }
    DatabaseFile(const DatabaseFile&) = delete;
    DatabaseFile& operator=(const DatabaseFile&) = delete;

    std::ostream& Out() { return m_out; }

    void Key(const std::string& name, std::uint32_t number) {
        m_out << "      <KEYITEM><KEYNAME>" << name << "</KEYNAME><KEYNUMBER>" << number << "</KEYNUMBER></KEYITEM>\n";
    }
    void Switch(const std::string& name, const std::string& key, std::uint32_t number, const std::string& childKey) {
        m_out << "    <PROPERTY_BOOL>\n      <NAME>" << name << "</NAME>\n      <DESCRIPTION>Generated switch</DESCRIPTION>\n"
              << "      <VALUE>1</VALUE>\n";
        if (!childKey.empty()) m_out << "      <CHILDKEY>" << childKey << "</CHILDKEY>\n";
        Key(key, number);
        m_out << "    </PROPERTY_BOOL>\n";
    }

private:
    std::string m_path;
    std::ofstream m_out;
};

// A fixed sequence, so that every run and both builds link the same numbers.
std::uint32_t Scrambled(std::size_t index) {
    std::uint64_t x = index * 0x9E3779B97F4A7C15ull + 0x632BE59BD9B4E019ull;
    x ^= x >> 31;
    x *= 0xBF58476D1CE4E5B9ull;
    x ^= x >> 29;
    return static_cast<std::uint32_t>(x);
}

std::uint32_t NumberAt(KeyNumberOrder order, std::size_t index, std::size_t count) {
    switch (order) {
    case KeyNumberOrder::Ascending: return static_cast<std::uint32_t>(index);
    case KeyNumberOrder::Descending: return static_cast<std::uint32_t>(count - index);
    case KeyNumberOrder::Equal: return 0;
    case KeyNumberOrder::Random: return Scrambled(index);
    }
    return 0;
}

}  // namespace

const char* NameOf(KeyNumberOrder order) {
    switch (order) {
    case KeyNumberOrder::Ascending: return "ascending";
    case KeyNumberOrder::Descending: return "descending";
    case KeyNumberOrder::Equal: return "equal";
    case KeyNumberOrder::Random: return "random";
    }
    return "";
}

void WriteWideDatabase(const std::string& path, std::size_t siblings, KeyNumberOrder order) {
    DatabaseFile file(path);
    for (std::size_t i = 0; i < siblings; ++i) {
        file.Switch("Sibling " + std::to_string(i), "JOB_0", NumberAt(order, i, siblings), "");
    }
}

void WriteDeepDatabase(const std::string& path, std::size_t levels) {
    DatabaseFile file(path);
    for (std::size_t level = 0; level < levels; ++level) {
        const std::string key = level == 0 ? "JOB_0" : "D_" + std::to_string(level - 1);
        const std::string childKey = level + 1 < levels ? "D_" + std::to_string(level) : "";
        for (std::uint32_t leaf = 0; leaf < 3; ++leaf) {
            file.Switch("Leaf " + std::to_string(level) + "." + std::to_string(leaf), key, leaf, "");
        }
        file.Switch("Level " + std::to_string(level), key, 3, childKey);
    }
}

void WriteManyKeysDatabase(const std::string& path, std::size_t siblings, std::size_t keysPerProperty) {
    DatabaseFile file(path);
    std::ostream& out = file.Out();
    const std::size_t keys = std::max<std::size_t>(keysPerProperty, 1);
    for (std::size_t i = 0; i < siblings; ++i) {
        const std::string name = "Sibling " + std::to_string(i);
        const bool pulls = i % 4 == 0;
        if (pulls) {
            out << "    <PROPERTY_STRING>\n      <NAME>" << name << "</NAME>\n      <DESCRIPTION>Generated</DESCRIPTION>\n"
                << "      <VALUE>On</VALUE>\n";
        } else {
            out << "    <PROPERTY_BOOL>\n      <NAME>" << name << "</NAME>\n      <DESCRIPTION>Generated</DESCRIPTION>\n"
                << "      <VALUE>1</VALUE>\n";
        }
        for (std::size_t k = 0; k < keys; ++k) {
            if (k == i % keys) {
                file.Key("JOB_0", NumberAt(KeyNumberOrder::Random, i, siblings) % 1000);
            } else {
                file.Key("SHARED_" + std::to_string(k), static_cast<std::uint32_t>(k));
            }
        }
        if (pulls) {
            out << "      <ALLOWEDLIST>\n        <ALLOWEDITEM><ALLOWED_STRING>On</ALLOWED_STRING><ALLOWED_ENUM>1"
                << "</ALLOWED_ENUM><ALLOWED_SAMELEVEL_KEY>PULL_" << i << "</ALLOWED_SAMELEVEL_KEY></ALLOWEDITEM>\n"
                << "      </ALLOWEDLIST>\n    </PROPERTY_STRING>\n";
            file.Switch("Pulled " + std::to_string(i), "PULL_" + std::to_string(i), static_cast<std::uint32_t>(i % 1000), "");
        } else {
            out << "    </PROPERTY_BOOL>\n";
        }
    }
}

}  // namespace rlx_bench
