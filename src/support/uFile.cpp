#include "uFile.h"

#include "Platform.h"

namespace KW_MBR {

uFile::~uFile() { Close(); }

bool uFile::Open(const char* path, const char* mode) {
    Close();
    if (path == nullptr || mode == nullptr) return false;
    m_stream = Platform::OpenShared(path, mode);
    return m_stream != nullptr;
}

std::size_t uFile::Write(const char* data, std::size_t size) {
    if (m_stream == nullptr || data == nullptr) return 0;
    return std::fwrite(data, 1, size, m_stream);
}

void uFile::Flush() {
    if (m_stream != nullptr) std::fflush(m_stream);
}

void uFile::Close() {
    if (m_stream != nullptr) {
        std::fclose(m_stream);
        m_stream = nullptr;
    }
}

}  // namespace KW_MBR
