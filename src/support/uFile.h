// A stdio file that other openers may read and write while it is open.
#pragma once

#include <cstddef>
#include <cstdio>

namespace KW_MBR {

class uFile {
public:
    uFile() = default;
    ~uFile();
    uFile(const uFile&) = delete;
    uFile& operator=(const uFile&) = delete;

    bool Open(const char* path, const char* mode);
    bool IsOpen() const { return m_stream != nullptr; }
    // Writing to a file that is not open does nothing.
    std::size_t Write(const char* data, std::size_t size);
    void Flush();
    void Close();

private:
    std::FILE* m_stream = nullptr;
};

}  // namespace KW_MBR
