// 24 bytes and 32 characters in a register.
#include "zeq_api/codec/base64_blocks.h"

#include "zeq_api/codec/vector_code.h"

namespace zeq::detail {

#if ZEQ_VECTOR_CODE

namespace {

ZEQ_VECTOR_INLINE __m128i loadHalf(const void* from) {
    return _mm_loadu_si128(static_cast<const __m128i*>(from));
}

/// The 6-bit digits of two times 12 bytes, one in each byte. Each pair of 16-bit lanes starts from the bytes 1 0 2 1 of
/// a group; the products shift its four digits into place.
ZEQ_VECTOR_INLINE __m256i digitsOf(__m256i bytes) {
    const __m256i groups =
        _mm256_shuffle_epi8(bytes, table(_mm_setr_epi8(1, 0, 2, 1, 4, 3, 5, 4, 7, 6, 8, 7, 10, 9, 11, 10)));
    const __m256i even = _mm256_mulhi_epu16(_mm256_and_si256(groups, _mm256_set1_epi32(0x0FC0FC00)),
                                            _mm256_set1_epi32(0x04000040));
    const __m256i odd = _mm256_mullo_epi16(_mm256_and_si256(groups, _mm256_set1_epi32(0x003F03F0)),
                                           _mm256_set1_epi32(0x01000010));
    return _mm256_or_si256(even, odd);
}

/// What is added to digits from `first` on.
ZEQ_VECTOR_INLINE __m256i step(__m256i digits, int first, int by) {
    return _mm256_and_si256(_mm256_cmpgt_epi8(digits, _mm256_set1_epi8(static_cast<char>(first - 1))),
                            _mm256_set1_epi8(static_cast<char>(by)));
}

ZEQ_TARGET_VECTORS std::size_t encodeVectors(char* units, const std::uint8_t* src, std::size_t n) {
    std::size_t done = 0;
    for (; n - done >= 28; done += 24, units += 32 * sizeof(wchar_t)) {
        const __m256i digits = digitsOf(_mm256_set_m128i(loadHalf(src + done + 12), loadHalf(src + done)));
        __m256i text = _mm256_add_epi8(digits, _mm256_set1_epi8('A'));
        text = _mm256_add_epi8(text, step(digits, 26, 'a' - 26 - 'A'));
        text = _mm256_add_epi8(text, step(digits, 52, ('0' - 52) - ('a' - 26)));
        text = _mm256_add_epi8(text, step(digits, 62, ('+' - 62) - ('0' - 52)));
        text = _mm256_add_epi8(text, step(digits, 63, ('/' - 63) - ('+' - 62)));
        const __m128i halves[2] = {_mm256_castsi256_si128(text), _mm256_extracti128_si256(text, 1)};
        auto* const to = reinterpret_cast<__m256i*>(units);
        for (int half = 0; half < 2; ++half) {
            _mm256_storeu_si256(to + 2 * half, _mm256_cvtepu8_epi32(halves[half]));
            _mm256_storeu_si256(to + 2 * half + 1, _mm256_cvtepu8_epi32(_mm_srli_si128(halves[half], 8)));
        }
    }
    return done;
}

ZEQ_TARGET_VECTORS std::size_t decodeVectors(std::uint8_t* dst, const char* units, std::size_t n) {
    const __m256i gather = table(_mm_setr_epi8(2, 1, 0, 6, 5, 4, 10, 9, 8, 14, 13, 12, -1, -1, -1, -1));
    std::size_t done = 0;
    // 28 bytes are written each time, of which the last four are none.
    for (; n - done >= 40; done += 32, units += 32 * sizeof(wchar_t), dst += 24) {
        const __m256i text = narrowed(units);
        if (!areLetters(text)) break;
        const __m256i digits = addByRow(text, 63 - '/', 52 - '0', -'A', 26 - 'a');
        const __m256i pairs = _mm256_maddubs_epi16(digits, _mm256_set1_epi32(0x01400140));
        const __m256i bytes =
            _mm256_shuffle_epi8(_mm256_madd_epi16(pairs, _mm256_set1_epi32(0x00011000)), gather);
        _mm_storeu_si128(reinterpret_cast<__m128i*>(dst), _mm256_castsi256_si128(bytes));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(dst + 12), _mm256_extracti128_si256(bytes, 1));
    }
    return done;
}

} // namespace

std::size_t encodeBlocks(char* units, const std::uint8_t* src, std::size_t n) {
    static_assert(sizeof(wchar_t) == 4);
    return hasVectors() ? encodeVectors(units, src, n) : 0;
}

std::size_t decodeBlocks(std::uint8_t* dst, const char* units, std::size_t n) {
    return hasVectors() ? decodeVectors(dst, units, n) : 0;
}

#else

std::size_t encodeBlocks(char*, const std::uint8_t*, std::size_t) { return 0; }
std::size_t decodeBlocks(std::uint8_t*, const char*, std::size_t) { return 0; }

#endif

} // namespace zeq::detail
