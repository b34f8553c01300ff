// Decompresses any bytes and compares the outcome, errors included, with zlib's own; and compresses the
// bytes.
#include "zeq_api/codec/compressor.h"

#include <cstdint>
#include <cstdlib>
#include <stdexcept>
#include <string>

#include "codec/by_zlib.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using zeq::Compressor;
    const char* const bytes = reinterpret_cast<const char*>(data);
    std::string unpacked;
    try {
        Compressor::decompress(unpacked, bytes, size);
    } catch (const std::runtime_error& error) {
        unpacked = std::string("error: ") + error.what();
    }
    if (unpacked != zeq::test::zlibInflate(data, size)) std::abort();

    std::string packed;
    Compressor::compress(packed, bytes, size, -1);
    Compressor::decompress(unpacked, packed.data(), packed.size());
    if (unpacked != std::string(bytes, size)) std::abort();
    return 0;
}
