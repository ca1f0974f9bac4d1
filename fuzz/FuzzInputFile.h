// The readers take file names only: each fuzz input is written to a file of this process.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace rlx_fuzz {

// Overwrites this process's input file with the bytes and returns its path.
const std::string& WriteInputFile(const std::uint8_t* data, std::size_t size);

}  // namespace rlx_fuzz
