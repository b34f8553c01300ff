// Base64 text as it stands in compressed data, sixteen letters at a time. Internal.
#pragma once

#include <cstddef>
#include <cstdint>

#include "zeq_api/codec/inflate_tables.h"
#include "zeq_api/codec/vector_code.h"

namespace zeq::detail {

#if ZEQ_VECTOR_CODE
/// Decodes units of such codes, each of ten bits to a letter and three zero bytes, up to something else, or until `in`
/// reaches `inEnd` or `out` reaches `outEnd`. 32 bytes can be read from `inEnd`, and 64 be written to `outEnd`.
/// @param shift the bits of the first byte that do not count, 0 to 7
/// @return how many units there were
std::size_t decodeBase64Units(const Base64Codes& codes, const std::uint8_t* in, unsigned shift,
                              const std::uint8_t* inEnd, std::uint8_t* out, const std::uint8_t* outEnd);
#endif

} // namespace zeq::detail
