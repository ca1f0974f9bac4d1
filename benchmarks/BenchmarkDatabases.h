// The databases the performance suite runs on: generated ones of several sizes and copies of
// the bundled samples, all in one scratch directory that KORVA_XMLDB names for the run.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace rlx_bench {

struct BenchmarkDatabase {
    std::string label;     // "N=1000" or the sample's file name
    std::string fileName;  // relative to the scratch directory
    std::string path;      // full path
};

class BenchmarkDatabases {
public:
    // Uses RLX_BENCH_WORKDIR when set, else a new directory under the system's temporary one.
    BenchmarkDatabases();
    // Removes the files it wrote and the directory when it made it.
    ~BenchmarkDatabases();
    BenchmarkDatabases(const BenchmarkDatabases&) = delete;
    BenchmarkDatabases& operator=(const BenchmarkDatabases&) = delete;

    const BenchmarkDatabase& AddSynthetic(std::size_t propertyCount);
    const BenchmarkDatabase& AddSample(const std::string& sampleDirectory, const std::string& fileName);
    // A database that write puts at the path it is given; label names it and its file.
    const BenchmarkDatabase& AddWritten(const std::string& label, const std::function<void(const std::string&)>& write);

    const std::vector<BenchmarkDatabase>& All() const { return m_databases; }

private:
    std::string m_directory;
    bool m_ownsDirectory = false;
    std::vector<BenchmarkDatabase> m_databases;
};

}  // namespace rlx_bench
