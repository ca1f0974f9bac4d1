#include "BenchmarkDatabases.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <stdexcept>

#include <unistd.h>

#include "SyntheticDatabase.h"

namespace rlx_bench {

BenchmarkDatabases::BenchmarkDatabases() {
    if (const char* given = std::getenv("RLX_BENCH_WORKDIR"); given != nullptr && *given != '\0') {
        m_directory = given;
    } else {
        const char* temporary = std::getenv("TMPDIR");
        std::string pattern = std::string(temporary != nullptr && *temporary != '\0' ? temporary : "/tmp") +
                              "/rlx-performance-XXXXXX";
        if (::mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("cannot make " + pattern);
        m_directory = pattern;
        m_ownsDirectory = true;
    }
    ::setenv("KORVA_XMLDB", m_directory.c_str(), 1);
}

BenchmarkDatabases::~BenchmarkDatabases() {
    for (const BenchmarkDatabase& database : m_databases) std::remove(database.path.c_str());
    if (m_ownsDirectory) ::rmdir(m_directory.c_str());
}

const BenchmarkDatabase& BenchmarkDatabases::AddSynthetic(std::size_t propertyCount) {
    BenchmarkDatabase database;
    database.label = "N=" + std::to_string(propertyCount);
    database.fileName = "synthetic_" + std::to_string(propertyCount) + ".xml";
    database.path = m_directory + "/" + database.fileName;
    SyntheticDatabaseShape shape;
    shape.propertyCount = propertyCount;
    WriteSyntheticDatabase(database.path, shape);
    m_databases.push_back(database);
    return m_databases.back();
}

const BenchmarkDatabase& BenchmarkDatabases::AddWritten(const std::string& label,
                                                        const std::function<void(const std::string&)>& write) {
    BenchmarkDatabase database;
    database.label = label;
    database.fileName = "shape_" + label + ".xml";
    database.path = m_directory + "/" + database.fileName;
    write(database.path);
    m_databases.push_back(database);
    return m_databases.back();
}

const BenchmarkDatabase& BenchmarkDatabases::AddSample(const std::string& sampleDirectory,
                                                       const std::string& fileName) {
    BenchmarkDatabase database;
    database.label = fileName;
    database.fileName = "sample_" + fileName;
    database.path = m_directory + "/" + database.fileName;
    std::ifstream in(sampleDirectory + "/" + fileName, std::ios::binary);
    std::ofstream out(database.path, std::ios::binary | std::ios::trunc);
    if (!in || !out) throw std::runtime_error("cannot copy the sample " + fileName);
    out << in.rdbuf();
    m_databases.push_back(database);
    return m_databases.back();
}

}  // namespace rlx_bench
