// Writes property database files of a chosen size whose linked tree grows with that size, for
// the benchmarks.
#pragma once

#include <cstddef>
#include <string>

namespace rlx_bench {

struct SyntheticDatabaseShape {
    std::size_t propertyCount = 1000;  // top-level properties of the file, "Type" included
    std::size_t jobCount = 4;          // allowed values of "Type", each selecting its own subtree
    std::size_t fanOut = 8;            // children selected by one key
};

// What a written file holds, for the figures per node.
struct SyntheticDatabaseInfo {
    std::size_t propertyCount = 0;
    std::string firstJob;   // the value "Type" holds in the file
    std::string secondJob;  // another allowed value of "Type", for edits
};

// Writes the database to path; throws std::runtime_error when the file cannot be written.
SyntheticDatabaseInfo WriteSyntheticDatabase(const std::string& path, const SyntheticDatabaseShape& shape);

}  // namespace rlx_bench
