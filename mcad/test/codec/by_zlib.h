// The reference for compression: what zlib alone makes of data.
#pragma once

#include <cstddef>
#include <cstdlib>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <zlib.h>

namespace zeq::test {

struct ByZlib {
    std::string bytes; ///< what was decoded until the data end or are damaged
    int result;        ///< zlib's
    std::string message;
};

/// Inflates gzip or zlib data, or with `windowBits` -15 the blocks alone.
inline ByZlib inflateByZlib(std::string_view data, int windowBits = 47) {
    z_stream stream{};
    if (inflateInit2(&stream, windowBits) != Z_OK) std::abort();
    ByZlib out{};
    std::vector<char> chunk(1 << 16);
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(data.data()));
    stream.avail_in = static_cast<uInt>(data.size());
    do {
        stream.next_out = reinterpret_cast<Bytef*>(chunk.data());
        stream.avail_out = static_cast<uInt>(chunk.size());
        out.result = inflate(&stream, Z_NO_FLUSH);
        out.bytes.append(chunk.data(), chunk.size() - stream.avail_out);
    } while (out.result == Z_OK);
    out.message = stream.msg ? stream.msg : "inflate failed";
    inflateEnd(&stream);
    return out;
}

/// What was decoded until the data end; of damaged data, "error: " and zlib's text.
inline std::string zlibInflate(const void* data, std::size_t size) {
    ByZlib out = inflateByZlib({static_cast<const char*>(data), size});
    return out.result == Z_STREAM_END || out.result == Z_BUF_ERROR ? std::move(out.bytes)
                                                                   : "error: " + out.message;
}

inline std::string zlibDeflate(std::string_view data, int level, int windowBits,
                               int strategy = Z_DEFAULT_STRATEGY, gz_header* header = nullptr) {
    z_stream stream{};
    if (deflateInit2(&stream, level, Z_DEFLATED, windowBits, 8, strategy) != Z_OK) std::abort();
    if (header) deflateSetHeader(&stream, header);
    std::string out(deflateBound(&stream, data.size()), '\0');
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(data.data()));
    stream.avail_in = static_cast<uInt>(data.size());
    stream.next_out = reinterpret_cast<Bytef*>(out.data());
    stream.avail_out = static_cast<uInt>(out.size());
    if (deflate(&stream, Z_FINISH) != Z_STREAM_END) std::abort();
    out.resize(stream.total_out);
    deflateEnd(&stream);
    return out;
}

} // namespace zeq::test
