// The reference for decompression: what zlib alone makes of data.
#pragma once

#include <cstddef>
#include <cstdlib>
#include <string>

#include <zlib.h>

namespace zeq::test {

/// What was decoded until the data end; of damaged data, "error: " and zlib's text.
inline std::string zlibInflate(const void* data, std::size_t size) {
    z_stream stream{};
    if (inflateInit2(&stream, 47) != Z_OK) std::abort();
    std::string out;
    char chunk[1 << 16];
    stream.next_in = static_cast<Bytef*>(const_cast<void*>(data));
    stream.avail_in = static_cast<uInt>(size);
    int result;
    do {
        stream.next_out = reinterpret_cast<Bytef*>(chunk);
        stream.avail_out = sizeof chunk;
        result = inflate(&stream, Z_NO_FLUSH);
        out.append(chunk, sizeof chunk - stream.avail_out);
    } while (result == Z_OK);
    if (result != Z_STREAM_END && result != Z_BUF_ERROR)
        out = std::string("error: ") + (stream.msg ? stream.msg : "inflate failed");
    inflateEnd(&stream);
    return out;
}

} // namespace zeq::test
