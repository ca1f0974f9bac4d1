// UTF-16 text from the XML parser as the readers' 8-bit text (internal).
#pragma once

#include <cstddef>
#include <cstring>
#include <string>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include <xercesc/util/XercesDefs.hpp>

namespace TargetOperations {

// One code unit as the readers' 8-bit text holds it: its low byte.
inline char NarrowUnit(XMLCh unit) { return static_cast<char>(static_cast<unsigned char>(unit & 0xFF)); }

// Keeps the low byte of each code unit up to the first zero unit. No transcoding: a unit
// above 0xFF is truncated, so U+0152 reads as 'R'.
std::string NarrowText(const XMLCh* text);

// The same into target, replacing its content and reusing its storage.
void NarrowTextInto(const XMLCh* text, std::string& target);

// Writes the low bytes of the first length units to out, up to the first zero unit; returns
// how many it wrote.
std::size_t NarrowUnits(const XMLCh* text, std::size_t length, char* out);

// Writes the low bytes of all length units to out and tells whether none of them was a zero
// unit. There is no early exit: a piece with a zero unit inside is rare enough to be read
// again by NarrowUnits, and without one the work goes eight units at a time where the
// processor allows.
inline bool NarrowUnitsWithoutZero(const XMLCh* text, std::size_t length, char* out) {
#if defined(__SSE2__)
    // Pieces of four units or more go in steps of eight or four; the last step may overlap
    // the one before it, which writes the same bytes again.
    if (length >= 4) {
        const __m128i none = _mm_setzero_si128();
        const __m128i lowBytes = _mm_set1_epi16(0x00FF);
        __m128i zeros = none;
        // Masked to their low bytes first, the units pack without saturating.
        const auto narrowEight = [&](std::size_t at) {
            const __m128i units = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text + at));
            zeros = _mm_or_si128(zeros, _mm_cmpeq_epi16(units, none));
            _mm_storel_epi64(reinterpret_cast<__m128i*>(out + at), _mm_packus_epi16(_mm_and_si128(units, lowBytes), none));
        };
        const auto narrowFour = [&](std::size_t at) {
            const __m128i units = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(text + at));
            // The upper four lanes were loaded as zeros: only the lower four count.
            zeros = _mm_or_si128(zeros, _mm_and_si128(_mm_cmpeq_epi16(units, none), _mm_set_epi64x(0, -1)));
            const int packed = _mm_cvtsi128_si32(_mm_packus_epi16(_mm_and_si128(units, lowBytes), none));
            std::memcpy(out + at, &packed, 4);
        };
        if (length >= 8) {
            std::size_t at = 0;
            for (; at + 8 <= length; at += 8) narrowEight(at);
            if (at < length) narrowEight(length - 8);
        } else {
            narrowFour(0);
            narrowFour(length - 4);
        }
        return _mm_movemask_epi8(zeros) == 0;
    }
#endif
    bool zeroInside = false;
    for (std::size_t i = 0; i < length; ++i) {
        zeroInside |= text[i] == 0;
        out[i] = NarrowUnit(text[i]);
    }
    return !zeroInside;
}

}  // namespace TargetOperations
