// Two texts held in one buffer (part of the layout of Property's text members).
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <stdexcept>

namespace TargetOperations {

// The buffer holds "first", a zero, "second", a zero. A pair that fits in InlineBytes lives
// inside the object itself, a longer one takes one block of its own whose address takes the
// place of the texts: a property's texts are short and come in pairs, and a database holds
// many thousand properties. A pointer from First or Second stays valid until the next change
// of either text (or until the object goes).
template <std::size_t InlineBytes>
class TextPair {
    static_assert(InlineBytes >= sizeof(char*), "a longer pair's address is kept in the inline bytes");

public:
    static constexpr std::size_t kInlineBytes = InlineBytes;

    TextPair() { m_storage[0] = m_storage[1] = '\0'; }
    TextPair(const char* first, std::size_t firstLength, const char* second, std::size_t secondLength) {
        m_storage[0] = m_storage[1] = '\0';
        Assign(first, firstLength, second, secondLength);
    }
    TextPair(const TextPair& other) : TextPair() { *this = other; }
    TextPair& operator=(const TextPair& other) {
        if (this != &other) Assign(other.First(), other.FirstLength(), other.Second(), other.SecondLength());
        return *this;
    }
    ~TextPair() {
        if (!IsInline()) delete[] Block();
    }

    const char* First() const { return Text(); }
    const char* Second() const { return Text() + m_secondAt; }
    std::size_t FirstLength() const { return m_secondAt - 1; }
    std::size_t SecondLength() const { return m_length - m_secondAt; }

    // A null text leaves that text as it was.
    void SetFirst(const char* first) {
        if (first != nullptr) Assign(first, std::strlen(first), Second(), SecondLength());
    }
    void SetSecond(const char* second) {
        if (second != nullptr) Assign(First(), FirstLength(), second, std::strlen(second));
    }

    // Either text may come from this object itself: the new pair is put together before the
    // old storage goes.
    void Assign(const char* first, std::size_t firstLength, const char* second, std::size_t secondLength) {
        if (firstLength > kLongest || secondLength > kLongest - firstLength) {
            throw std::length_error("a pair of property texts exceeds 4 GiB");
        }
        const std::size_t length = firstLength + 1 + secondLength;
        const bool inside = length + 1 <= InlineBytes;
        // Put together aside first (on the stack when it fits inside).
        char staged[InlineBytes];
        char* target = inside ? staged : new char[length + 1];
        std::memcpy(target, first, firstLength);
        target[firstLength] = '\0';
        std::memcpy(target + firstLength + 1, second, secondLength);
        target[length] = '\0';

        if (!IsInline()) delete[] Block();
        if (inside) {
            std::memcpy(m_storage, staged, length + 1);
        } else {
            std::memcpy(m_storage, &target, sizeof target);
        }
        m_secondAt = static_cast<std::uint32_t>(firstLength + 1);
        m_length = static_cast<std::uint32_t>(length);
    }

    bool IsInline() const { return m_length + 1 <= InlineBytes; }

private:
    static constexpr std::size_t kLongest = std::numeric_limits<std::uint32_t>::max() - 2;

    char* Block() const {
        char* block = nullptr;
        std::memcpy(&block, m_storage, sizeof block);
        return block;
    }
    const char* Text() const { return IsInline() ? m_storage : Block(); }

    std::uint32_t m_secondAt = 1;  // one past the zero that ends the first text
    std::uint32_t m_length = 1;    // of everything before the final zero
    alignas(char*) char m_storage[InlineBytes];  // the pair, or the address of its block
};

}  // namespace TargetOperations
