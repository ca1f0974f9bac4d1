// Two texts held in one buffer (part of the layout of Property's text members).
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <stdexcept>

namespace TargetOperations {

// The buffer holds "first", a zero, "second", a zero. A pair that fits in InlineBytes lives
// inside the object itself, a longer one takes one block of its own: a property's texts are
// short and come in pairs, and a database holds many thousand properties. A pointer from First
// or Second stays valid until the next change of either text (or until the object goes).
template <std::size_t InlineBytes>
class TextPair {
    static_assert(InlineBytes >= 2, "an empty pair takes two zeros");

public:
    static constexpr std::size_t kInlineBytes = InlineBytes;

    TextPair() { m_inline[0] = m_inline[1] = '\0'; }
    TextPair(const char* first, std::size_t firstLength, const char* second, std::size_t secondLength) {
        Assign(first, firstLength, second, secondLength);
    }
    TextPair(const TextPair& other) { *this = other; }
    TextPair& operator=(const TextPair& other) {
        if (this != &other) Assign(other.First(), other.FirstLength(), other.Second(), other.SecondLength());
        return *this;
    }
    ~TextPair() {
        if (!IsInline()) delete[] m_text;
    }

    const char* First() const { return m_text; }
    const char* Second() const { return m_text + m_secondAt; }
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
        // Put together aside first (on the stack when it fits inside).
        char staged[InlineBytes];
        char* target = length + 1 <= InlineBytes ? staged : new char[length + 1];
        std::memcpy(target, first, firstLength);
        target[firstLength] = '\0';
        std::memcpy(target + firstLength + 1, second, secondLength);
        target[length] = '\0';

        if (!IsInline()) delete[] m_text;
        if (target == staged) {
            std::memcpy(m_inline, staged, length + 1);
            m_text = m_inline;
        } else {
            m_text = target;
        }
        m_secondAt = static_cast<std::uint32_t>(firstLength + 1);
        m_length = static_cast<std::uint32_t>(length);
    }

    bool IsInline() const { return m_text == m_inline; }

private:
    static constexpr std::size_t kLongest = std::numeric_limits<std::uint32_t>::max() - 2;

    char* m_text = m_inline;       // m_inline, or a block of its own
    std::uint32_t m_secondAt = 1;  // one past the zero that ends the first text
    std::uint32_t m_length = 1;    // of everything before the final zero
    char m_inline[InlineBytes];
};

}  // namespace TargetOperations
