// Code for vector registers, which is chosen at run time. Internal.
#pragma once

#if defined(__x86_64__)
#include <immintrin.h>
#define ZEQ_VECTOR_CODE 1
#define ZEQ_TARGET_SSE41 __attribute__((target("sse4.1")))
#define ZEQ_INLINE __attribute__((always_inline)) inline

namespace zeq::detail {

inline bool hasSse41() {
    static const bool has = __builtin_cpu_supports("sse4.1");
    return has;
}

} // namespace zeq::detail
#else
#define ZEQ_VECTOR_CODE 0
#endif
