// The decoder against zlib: the same bytes, and the same opinion of whether they are whole.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <functional>
#include <string>
#include <string_view>

#include <zlib.h>

#include "codec/by_zlib.h"
#include "zeq_api/codec/inflater.h"

namespace zeq::test {

struct Inflated {
    std::string bytes;
    bool isWhole;
    bool operator==(const Inflated&) const = default;
};

/// What zlib makes of gzip or zlib data, or with `windowBits` -15 of the blocks alone.
inline Inflated inflatedByZlib(std::string_view data, int windowBits = 47) {
    ByZlib out = inflateByZlib(data, windowBits);
    return {std::move(out.bytes), out.result == Z_STREAM_END};
}

/// How a decoder is asked.
struct Reading {
    std::size_t blockSize = 1 << 17;
    bool withVectors = detail::hasVectors();
    /// How much is asked for next.
    std::function<std::size_t()> size = [] { return std::size_t{1} << 18; };
};

inline Inflated inflated(std::string_view data, const Reading& reading = {}) {
    const std::string border(64, '\x5A'); // behind the room, where nothing may be written
    detail::Inflater inflater(
        [rest = data](char* out, std::size_t size) mutable {
            const std::size_t count = rest.copy(out, size);
            rest.remove_prefix(count);
            return count;
        },
        reading.blockSize, reading.withVectors);
    std::string bytes;
    for (;;) {
        const std::size_t size = reading.size(), begin = bytes.size();
        bytes.resize(begin + size);
        bytes += border;
        const std::size_t count = inflater.read(bytes.data() + begin, size);
        if (!bytes.ends_with(border)) std::abort();
        bytes.resize(begin + count);
        if (count < size) return {std::move(bytes), inflater.isWhole()};
    }
}

/// A gzip member of such blocks, whose trailer is right if zlib takes the blocks.
inline std::string gzipOf(std::string_view blocks) {
    const std::string bytes = inflatedByZlib(blocks, -15).bytes;
    std::string data("\x1F\x8B\x08\0\0\0\0\0\0\xFF", 10);
    data += blocks;
    const auto checksum = crc32_z(0, reinterpret_cast<const Bytef*>(bytes.data()), bytes.size());
    for (const std::uint64_t number : {std::uint64_t{checksum}, std::uint64_t{bytes.size()}})
        for (int i = 0; i < 4; ++i) data += static_cast<char>(number >> (8 * i));
    return data;
}

/// Whether the decoder agrees with zlib. Bytes of what is not whole are of no interest.
inline bool agreesWithZlib(std::string_view data, const Reading& reading = {}) {
    const Inflated expected = inflatedByZlib(data), seen = inflated(data, reading);
    return seen.isWhole == expected.isWhole && (!seen.isWhole || seen.bytes == expected.bytes);
}

} // namespace zeq::test
