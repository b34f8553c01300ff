// Base64 of wide characters by whole blocks, for Base64 alone. Where the processor has no such instructions, nothing
// is done, and the plain loops do it all.
#pragma once

#include <cstddef>
#include <cstdint>

namespace zeq::detail {

/// Encodes blocks of 24 bytes, as long as 28 can be read, to wide characters at any address.
/// @return the number of bytes encoded
std::size_t encodeBlocks(char* units, const std::uint8_t* src, std::size_t n);

/// Decodes blocks of 32 wide characters at any address, up to one with a character outside the alphabet or to the last.
/// @return the number of characters decoded
std::size_t decodeBlocks(std::uint8_t* dst, const char* units, std::size_t n);

} // namespace zeq::detail
