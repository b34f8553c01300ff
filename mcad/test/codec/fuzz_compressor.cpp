// Decompresses any bytes and compares the outcome, errors included, with zlib's own; and compresses the
// bytes.
#include "zeq_api/codec/compressor.h"

#include <cstdint>
#include <cstdlib>
#include <stdexcept>
#include <string>

#include <zlib.h>

namespace {

std::string zlibInflate(const std::uint8_t* data, std::size_t size) {
    z_stream stream{};
    if (inflateInit2(&stream, 47) != Z_OK) std::abort();
    std::string out;
    char chunk[4096];
    stream.next_in = const_cast<Bytef*>(data);
    stream.avail_in = static_cast<uInt>(size);
    int result;
    do {
        stream.next_out = reinterpret_cast<Bytef*>(chunk);
        stream.avail_out = sizeof chunk;
        result = inflate(&stream, Z_NO_FLUSH);
        out.append(chunk, sizeof chunk - stream.avail_out);
    } while (result == Z_OK);
    if (result != Z_STREAM_END && result != Z_BUF_ERROR) out = stream.msg ? stream.msg : "inflate failed";
    inflateEnd(&stream);
    return out;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using zeq::Compressor;
    const char* const bytes = reinterpret_cast<const char*>(data);
    std::string unpacked;
    try {
        Compressor::decompress(unpacked, bytes, size);
    } catch (const std::runtime_error& error) {
        unpacked = error.what();
    }
    if (unpacked != zlibInflate(data, size)) std::abort();

    std::string packed;
    Compressor::compress(packed, bytes, size, -1);
    Compressor::decompress(unpacked, packed.data(), packed.size());
    if (unpacked != std::string(bytes, size)) std::abort();
    return 0;
}
