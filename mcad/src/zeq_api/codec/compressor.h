// Compression of whole buffers in the gzip format. Any thread may call these functions.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace zeq {

class Compressor {
public:
    /// Makes `out` the gzip form of the data. `level` is zlib's: 0 (store) to 9 (smallest), -1 for the
    /// default.
    /// @throws std::runtime_error "deflate init failed", for another level
    static void compress(std::vector<char>& out, const char* data, std::size_t size, int level);
    static void compress(std::string& out, const char* data, std::size_t size, int level);

    /// Makes `out` what gzip or zlib data hold; of data that end too early, what could be decoded.
    /// @throws std::runtime_error with zlib's message, for damaged data
    static void decompress(std::vector<char>& out, const char* data, std::size_t size);
    static void decompress(std::string& out, const char* data, std::size_t size);

    /// Whether the data begin as gzip or zlib data do.
    static bool isCompressed(const char* data, std::size_t size);

    /// Replaces bytes that isCompressed() by what they hold; all others stay where they are.
    /// @throws std::runtime_error as decompress() does
    static void makePlain(std::vector<char>& bytes);
};

} // namespace zeq
