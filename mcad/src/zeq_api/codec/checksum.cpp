// The checksum by ISA-L where that is built in, and by zlib.
#include "zeq_api/codec/checksum.h"

#include <algorithm>

#include <zlib.h>
#if ZEQ_WITH_ISAL
#include <isa-l/crc.h>
#endif

namespace zeq::detail {

std::uint32_t addToCrc(std::uint32_t crc, const void* bytes, std::size_t size) {
    const auto* const from = static_cast<const unsigned char*>(bytes);
#if ZEQ_WITH_ISAL
    return crc32_gzip_refl(crc, from, size);
#else
    return static_cast<std::uint32_t>(crc32_z(crc, from, size));
#endif
}

std::uint32_t crcOfChange(std::uint64_t difference, std::uint64_t following) {
    // A checksum is linear but for a constant, which the checksum of zeros takes away.
    constexpr std::uint64_t zeros = 0;
    const std::uint32_t change =
        addToCrc(0, &difference, sizeof difference) ^ addToCrc(0, &zeros, sizeof zeros);
    return static_cast<std::uint32_t>(crc32_combine(change, 0, static_cast<z_off_t>(following)));
}

} // namespace zeq::detail
