#include "FuzzInputFile.h"

#include <unistd.h>

#include <cstdio>
#include <cstdlib>

namespace rlx_fuzz {

namespace {

std::string InputPath() {
    const char* directory = std::getenv("TMPDIR");
    std::string path = (directory != nullptr && *directory != '\0') ? directory : "/tmp";
    return path + "/rlx_fuzz_input_" + std::to_string(getpid()) + ".xml";
}

}  // namespace

const std::string& WriteInputFile(const std::uint8_t* data, std::size_t size) {
    static const std::string path = InputPath();
    std::FILE* file = std::fopen(path.c_str(), "wb");
    if (file == nullptr) std::abort();  // no input file means no fuzzing at all
    if (size != 0 && std::fwrite(data, 1, size, file) != size) std::abort();
    std::fclose(file);
    return path;
}

}  // namespace rlx_fuzz
