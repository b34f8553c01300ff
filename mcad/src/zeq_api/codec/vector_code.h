// Code for vector registers, which is chosen at run time: characters of Base64, 32 at a time. Internal.
#pragma once

#ifndef ZEQ_WITH_VECTORS
#define ZEQ_WITH_VECTORS 1
#endif

#if ZEQ_WITH_VECTORS && defined(__x86_64__)
#define ZEQ_VECTOR_CODE 1

#include <immintrin.h>

// Compilers do not pass the target on to lambdas.
#define ZEQ_TARGET_VECTORS __attribute__((target("avx2,bmi,bmi2")))
#define ZEQ_VECTOR_INLINE __attribute__((target("avx2,bmi,bmi2"), always_inline)) inline

namespace zeq::detail {

/// Whether the processor has what ZEQ_TARGET_VECTORS asks for.
inline bool hasVectors() {
    static const bool has =
        __builtin_cpu_supports("avx2") && __builtin_cpu_supports("bmi") && __builtin_cpu_supports("bmi2");
    return has;
}

ZEQ_VECTOR_INLINE __m256i loadVector(const void* from) {
    return _mm256_loadu_si256(static_cast<const __m256i*>(from));
}

/// The low bytes of 32 units. Units beyond a byte become 0 or 255, which are no letters of Base64.
ZEQ_VECTOR_INLINE __m256i narrowed(const char* units) {
    const __m256i first = _mm256_packus_epi32(loadVector(units), loadVector(units + 32));
    const __m256i second = _mm256_packus_epi32(loadVector(units + 64), loadVector(units + 96));
    return _mm256_permutevar8x32_epi32(_mm256_packus_epi16(first, second),
                                       _mm256_setr_epi32(0, 4, 1, 5, 2, 6, 3, 7));
}

/// A table for half bytes in both halves of a register.
ZEQ_VECTOR_INLINE __m256i table(__m128i sixteen) { return _mm256_broadcastsi128_si256(sixteen); }
ZEQ_VECTOR_INLINE __m256i lowHalves(__m256i bytes) { return _mm256_and_si256(bytes, _mm256_set1_epi8(15)); }
ZEQ_VECTOR_INLINE __m256i highHalves(__m256i bytes) { return lowHalves(_mm256_srli_epi16(bytes, 4)); }

/// Whether all are letters of Base64. Each bit of the tables stands for half bytes that do not go together.
ZEQ_VECTOR_INLINE bool areLetters(__m256i text) {
    const __m256i byLow = table(_mm_setr_epi8(0x15, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11,
                                              0x13, 0x1A, 0x1B, 0x1B, 0x1B, 0x1A));
    const __m256i byHigh = table(_mm_setr_epi8(0x10, 0x10, 0x01, 0x02, 0x04, 0x08, 0x04, 0x08, 0x10, 0x10,
                                               0x10, 0x10, 0x10, 0x10, 0x10, 0x10));
    return _mm256_testz_si256(_mm256_shuffle_epi8(byLow, lowHalves(text)),
                              _mm256_shuffle_epi8(byHigh, highHalves(text))) != 0;
}

/// The bits of each byte in the other order.
ZEQ_VECTOR_INLINE __m256i mirrored(__m256i bytes) {
    const __m256i halves = table(_mm_setr_epi8(0, 8, 4, 12, 2, 10, 6, 14, 1, 9, 5, 13, 3, 11, 7, 15));
    return _mm256_or_si256(_mm256_slli_epi16(_mm256_shuffle_epi8(halves, lowHalves(bytes)), 4),
                           _mm256_shuffle_epi8(halves, highHalves(bytes)));
}

/// Adds to letters what belongs to their row of ASCII, '/' with the row of digits below it, and three to '+' besides.
ZEQ_VECTOR_INLINE __m256i addByRow(__m256i text, int slash, int digits, int upper, int lower) {
    const auto byte = [](int n) { return static_cast<char>(n); };
    const __m256i rows = table(_mm_setr_epi8(0, 0, byte(slash), byte(digits), byte(upper), byte(upper),
                                             byte(lower), byte(lower), 0, 0, 0, 0, 0, 0, 0, 0));
    const __m256i plus =
        _mm256_and_si256(_mm256_cmpeq_epi8(text, _mm256_set1_epi8('+')), _mm256_set1_epi8(3));
    return _mm256_add_epi8(_mm256_add_epi8(text, plus), _mm256_shuffle_epi8(rows, highHalves(text)));
}

} // namespace zeq::detail
#else
#define ZEQ_VECTOR_CODE 0
#define ZEQ_TARGET_VECTORS

namespace zeq::detail {

inline bool hasVectors() { return false; }

} // namespace zeq::detail
#endif
