// A parse that keeps nothing of the file but makes heap blocks as a loaded database would:
// the cost of the blocks alone, on top of the bare parse, for the performance suite.
#pragma once

#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <vector>

#include <xercesc/sax/HandlerBase.hpp>

namespace rlx_bench {

// At every property end tag, makes blocksPerProperty blocks that together hold as many bytes
// as a loaded property keeps, writes them, and keeps them; the destructor frees them in the
// order they were made, as a database's release gives its properties back in list order.
// Block count and bytes can so be told apart.
class BlockMakingHandler : public xercesc::HandlerBase {
public:
    static constexpr std::size_t kBytesPerProperty = 350;

    explicit BlockMakingHandler(std::size_t blocksPerProperty) : m_sizes(SizesFor(blocksPerProperty)) {}
    ~BlockMakingHandler() override {
        for (void* block : m_blocks) std::free(block);
    }
    BlockMakingHandler(const BlockMakingHandler&) = delete;
    BlockMakingHandler& operator=(const BlockMakingHandler&) = delete;

    void endElement(const XMLCh* const name) override {
        // "PROPERTY" and its typed forms; the comparison stops at the name's terminator.
        static const char kProperty[] = "PROPERTY";
        for (std::size_t i = 0; kProperty[i] != '\0'; ++i) {
            if (name[i] != static_cast<XMLCh>(kProperty[i])) return;
        }
        for (std::size_t size : m_sizes) {
            void* block = std::malloc(size);
            if (block == nullptr) continue;
            std::memset(block, 0x5A, size);
            m_blocks.push_back(block);
        }
    }

    std::size_t Blocks() const { return m_blocks.size(); }

private:
    // The first block stands for the object, the others for its texts and lists.
    static std::vector<std::size_t> SizesFor(std::size_t blocks) {
        if (blocks <= 1) return {kBytesPerProperty};
        const std::size_t object = 240;
        std::vector<std::size_t> sizes{object};
        const std::size_t rest = (kBytesPerProperty - object) / (blocks - 1);
        for (std::size_t i = 1; i < blocks; ++i) sizes.push_back(rest);
        return sizes;
    }

    std::vector<std::size_t> m_sizes;
    std::vector<void*> m_blocks;
};

}  // namespace rlx_bench
