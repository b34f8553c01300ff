// Vectors of 16-bit lanes: of two vectors of eight codes each, one lies in the lower and one in the upper halves of
// 32-bit lanes, so that taking them apart again widens the letters to units.
#include "zeq_api/codec/base64_units.h"

#if ZEQ_VECTOR_CODE

#include <array>
#include <bit>

namespace zeq::detail {

namespace {

ZEQ_VECTOR_INLINE __m256i all(int n) { return _mm256_set1_epi16(static_cast<short>(n)); }

/// In every 32-bit lane, the bits from one of eight codes on.
ZEQ_VECTOR_INLINE __m256i eightCodes(const std::uint8_t* in, __m256i places, __m256i shifts) {
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(in));
    return _mm256_srlv_epi32(_mm256_shuffle_epi8(_mm256_broadcastsi128_si256(bytes), places), shifts);
}

/// The letters of Base64 by their places in the order of ASCII: '+', '/', '0' to '9', 'A' to 'Z', 'a' to 'z'.
ZEQ_VECTOR_INLINE __m256i lettersAt(__m256i place) {
    const __m256i isPlus = _mm256_cmpgt_epi16(all(1), place), isLetter = _mm256_cmpgt_epi16(place, all(11)),
                  isSmall = _mm256_cmpgt_epi16(place, all(37));
    __m256i letter = _mm256_add_epi16(place, all('/' - 1));
    letter = _mm256_add_epi16(letter, _mm256_and_si256(isPlus, all('+' - '/' + 1)));
    letter = _mm256_add_epi16(letter, _mm256_and_si256(isLetter, all('A' - '9' - 1)));
    return _mm256_add_epi16(letter, _mm256_and_si256(isSmall, all('a' - 'Z' - 1)));
}

/// Where each of eight codes begins, in bytes and bits.
struct Places {
    std::array<std::uint8_t, 32> bytes;
    std::array<std::uint32_t, 8> shifts;
};
constexpr auto placesBehind = [] {
    std::array<Places, 8> made{};
    for (unsigned shift = 0; shift < 8; ++shift)
        for (unsigned i = 0; i < 8; ++i) {
            const unsigned at = shift + 10 * i;
            for (unsigned k = 0; k < 4; ++k)
                made[shift].bytes[4 * i + k] = static_cast<std::uint8_t>(at / 8 + k);
            made[shift].shifts[i] = at % 8;
        }
    return made;
}();

} // namespace

ZEQ_TARGET_VECTORS std::size_t decodeBase64Units(const Base64Codes& codes, const std::uint8_t* in,
                                                 unsigned shift, const std::uint8_t* inEnd, std::uint8_t* out,
                                                 const std::uint8_t* outEnd) {
    const __m256i places = loadVector(placesBehind[shift].bytes.data());
    const __m256i shifts = loadVector(placesBehind[shift].shifts.data());
    const __m256i copy = all(codes.copy << 8), first = all(codes.first);

    std::size_t count = 0;
    for (; in < inEnd && out < outEnd; count += 16, in += 20, out += 64) {
        const __m256i lower = eightCodes(in, places, shifts), upper = eightCodes(in + 10, places, shifts);
        const __m256i both = _mm256_blend_epi16(lower, _mm256_slli_epi32(upper, 16), 0xAA);
        const __m256i code = _mm256_xor_si256(_mm256_and_si256(both, all(0x3FF)), copy); // 0 for its copy
        const __m256i place = _mm256_sub_epi16(mirrored(code), first);
        const __m256i letters = lettersAt(place);
        auto* const to = reinterpret_cast<__m256i*>(out);
        _mm256_storeu_si256(to, _mm256_and_si256(letters, _mm256_set1_epi32(0xFFFF)));
        _mm256_storeu_si256(to + 1, _mm256_srli_epi32(letters, 16));
        const __m256i wrong =
            _mm256_and_si256(_mm256_or_si256(place, _mm256_and_si256(code, all(0x300))), all(~63));
        const auto right =
            static_cast<unsigned>(_mm256_movemask_epi8(_mm256_cmpeq_epi16(wrong, _mm256_setzero_si256())));
        if (right != ~0U) { // of the lower ones the even pairs of bits, of the upper ones the odd
            const unsigned inOrder = _pext_u32(right, 0x11111111) | _pext_u32(right, 0x44444444) << 8;
            return count + static_cast<std::size_t>(std::countr_one(inOrder));
        }
    }
    return count;
}

} // namespace zeq::detail

#endif
