// The checksum of gzip data. Internal.
#pragma once

#include <cstddef>
#include <cstdint>

namespace zeq::detail {

/// The CRC-32 of what was checked before and of these bytes.
std::uint32_t addToCrc(std::uint32_t crc, const void* bytes, std::size_t size);

/// What a change of eight bytes, given as the bits that differ, changes in the CRC-32 when so many bytes follow.
std::uint32_t crcOfChange(std::uint64_t difference, std::uint64_t following);

} // namespace zeq::detail
