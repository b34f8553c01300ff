// Sixteen characters in one register of SSE4.1.
#include "zeq_api/codec/base64_blocks.h"

#include <cstring>

#include "zeq_api/codec/vector_code.h"

namespace zeq::detail {

#if ZEQ_VECTOR_CODE

namespace {

ZEQ_TARGET_SSE41 inline __m128i load(const void* from) {
    return _mm_loadu_si128(static_cast<const __m128i*>(from));
}
ZEQ_TARGET_SSE41 inline void store(void* to, __m128i value) {
    _mm_storeu_si128(static_cast<__m128i*>(to), value);
}

/// The 6-bit digits of 12 bytes, one in each byte. Each pair of 16-bit lanes starts from the bytes 1 0 2 1 of a
/// group; the products shift its four digits into place.
ZEQ_TARGET_SSE41 inline __m128i digitsOf(__m128i bytes) {
    const __m128i groups =
        _mm_shuffle_epi8(bytes, _mm_setr_epi8(1, 0, 2, 1, 4, 3, 5, 4, 7, 6, 8, 7, 10, 9, 11, 10));
    const __m128i even =
        _mm_mulhi_epu16(_mm_and_si128(groups, _mm_set1_epi32(0x0FC0FC00)), _mm_set1_epi32(0x04000040));
    const __m128i odd =
        _mm_mullo_epi16(_mm_and_si128(groups, _mm_set1_epi32(0x003F03F0)), _mm_set1_epi32(0x01000010));
    return _mm_or_si128(even, odd);
}

/// What is added to digits from `first` on.
ZEQ_TARGET_SSE41 inline __m128i step(__m128i digits, int first, int by) {
    return _mm_and_si128(_mm_cmpgt_epi8(digits, _mm_set1_epi8(static_cast<char>(first - 1))),
                         _mm_set1_epi8(static_cast<char>(by)));
}

ZEQ_TARGET_SSE41 std::size_t encodeVectors(char* units, const std::uint8_t* src, std::size_t n) {
    const __m128i zero = _mm_setzero_si128();
    std::size_t done = 0;
    for (; n - done >= 16; done += 12, units += 16 * sizeof(wchar_t)) {
        const __m128i digits = digitsOf(load(src + done));
        __m128i text = _mm_add_epi8(digits, _mm_set1_epi8('A'));
        text = _mm_add_epi8(text, step(digits, 26, 'a' - 26 - 'A'));
        text = _mm_add_epi8(text, step(digits, 52, ('0' - 52) - ('a' - 26)));
        text = _mm_add_epi8(text, step(digits, 62, ('+' - 62) - ('0' - 52)));
        text = _mm_add_epi8(text, step(digits, 63, ('/' - 63) - ('+' - 62)));
        const __m128i low = _mm_unpacklo_epi8(text, zero), high = _mm_unpackhi_epi8(text, zero);
        store(units, _mm_unpacklo_epi16(low, zero));
        store(units + 16, _mm_unpackhi_epi16(low, zero));
        store(units + 32, _mm_unpacklo_epi16(high, zero));
        store(units + 48, _mm_unpackhi_epi16(high, zero));
    }
    return done;
}

/// Characters and what turns them into digits, so far.
struct Classified {
    __m128i known;
    __m128i shift;
};

ZEQ_TARGET_SSE41 inline void classify(Classified& so, __m128i text, char first, char last, int shift) {
    const __m128i is = _mm_and_si128(_mm_cmpgt_epi8(text, _mm_set1_epi8(static_cast<char>(first - 1))),
                                     _mm_cmplt_epi8(text, _mm_set1_epi8(static_cast<char>(last + 1))));
    so.known = _mm_or_si128(so.known, is);
    so.shift = _mm_or_si128(so.shift, _mm_and_si128(is, _mm_set1_epi8(static_cast<char>(shift))));
}

ZEQ_TARGET_SSE41 std::size_t decodeVectors(std::uint8_t* dst, const char* units, std::size_t n) {
    const __m128i gather = _mm_setr_epi8(2, 1, 0, 6, 5, 4, 10, 9, 8, 14, 13, 12, -1, -1, -1, -1);
    std::size_t done = 0;
    for (; n - done >= 16; done += 16, units += 16 * sizeof(wchar_t), dst += 12) {
        // Units beyond a byte become 0 or 255, which are foreign as well.
        const __m128i text = _mm_packus_epi16(_mm_packus_epi32(load(units), load(units + 16)),
                                              _mm_packus_epi32(load(units + 32), load(units + 48)));
        Classified so{_mm_setzero_si128(), _mm_setzero_si128()};
        classify(so, text, 'A', 'Z', -'A');
        classify(so, text, 'a', 'z', 26 - 'a');
        classify(so, text, '0', '9', 52 - '0');
        classify(so, text, '+', '+', 62 - '+');
        classify(so, text, '/', '/', 63 - '/');
        if (_mm_movemask_epi8(so.known) != 0xFFFF) break;
        const __m128i digits = _mm_add_epi8(text, so.shift);
        const __m128i pairs = _mm_maddubs_epi16(digits, _mm_set1_epi32(0x01400140));
        const __m128i bytes = _mm_shuffle_epi8(_mm_madd_epi16(pairs, _mm_set1_epi32(0x00011000)), gather);
        _mm_storel_epi64(reinterpret_cast<__m128i*>(dst), bytes);
        const int last = _mm_extract_epi32(bytes, 2);
        std::memcpy(dst + 8, &last, sizeof last);
    }
    return done;
}

} // namespace

std::size_t encodeBlocks(char* units, const std::uint8_t* src, std::size_t n) {
    static_assert(sizeof(wchar_t) == 4);
    return hasSse41() ? encodeVectors(units, src, n) : 0;
}

std::size_t decodeBlocks(std::uint8_t* dst, const char* units, std::size_t n) {
    return hasSse41() ? decodeVectors(dst, units, n) : 0;
}

#else

std::size_t encodeBlocks(char*, const std::uint8_t*, std::size_t) { return 0; }
std::size_t decodeBlocks(std::uint8_t*, const char*, std::size_t) { return 0; }

#endif

} // namespace zeq::detail
