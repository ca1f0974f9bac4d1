// Property database files shaped to load linking along one dimension each: one key selecting
// very many siblings, a long chain of levels, siblings that list many keys.
#pragma once

#include <cstddef>
#include <string>

namespace rlx_bench {

// How the key numbers of the siblings run in file order.
enum class KeyNumberOrder { Ascending, Descending, Equal, Random };

const char* NameOf(KeyNumberOrder order);

// "Type" ("Job 0") selects through one key the given number of Boolean siblings, numbered in
// the given order; its other allowed value, "Job 1", selects nothing.
void WriteWideDatabase(const std::string& path, std::size_t siblings, KeyNumberOrder order);

// "Type" selects a chain of Boolean switches, each selecting the next one and three leaves.
void WriteDeepDatabase(const std::string& path, std::size_t levels);

// "Type" selects siblings that each list keysPerProperty keys, the selecting one among them
// at a varying place; every fourth sibling is a string whose value carries a same-level key
// of its own, which pulls in one further sibling listed under that key alone.
void WriteManyKeysDatabase(const std::string& path, std::size_t siblings, std::size_t keysPerProperty);

}  // namespace rlx_bench
