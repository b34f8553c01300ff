// Compression and decompression of whole buffers, and the words in which that is traced.
#include "zeq_api/codec/compressor.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <stdexcept>
#include <string_view>
#include <utility>

#include "mv_cvx/logger.h"
#include "zeq_api/codec/gzip_stream.h"

namespace zeq {

namespace {

void trace(int line, const char* signature) {
    ZEQ_LOG(Trace) << "mcad/src/zeq_api/zeq_api_exchange_object(" << line << "): " << signature;
}

template <class Out>
void compressInto(Out& out, std::string_view data, int level) {
    out.clear();
    const auto encoder = detail::newEncoder(
        level, [&out](const char* bytes, std::size_t size) { out.insert(out.end(), bytes, bytes + size); });
    encoder->write(data);
    encoder->finish();
}

/// Appends all that the decoder gives. Output goes through a block that stays in the cache: growing `out` itself
/// would fill it with zeros first.
template <class Out>
void drain(Out& out, detail::GzipDecoder& decoder) {
    constexpr std::size_t blockSize = 1 << 18, historySize = detail::GzipDecoder::historySize;
    const auto history = std::make_unique_for_overwrite<char[]>(historySize + blockSize);
    char* const block = history.get() + historySize;
    std::size_t size;
    do {
        size = decoder.read(block, blockSize);
        out.insert(out.end(), block, block + size);
        std::memcpy(history.get(), block + blockSize - historySize, historySize);
    } while (size == blockSize);
}

detail::ByteInput inputOf(std::string_view data) {
    return [data](char* out, std::size_t size) mutable {
        const std::size_t count = data.copy(out, size);
        data.remove_prefix(count);
        return count;
    };
}

/// The size that the trailer of gzip data claims, within what deflate can reach; 0 if there is none.
std::size_t claimedSize(std::string_view data) {
    constexpr std::size_t largestRatio = 1032;
    if (data.size() < 18 || data[0] != '\x1F') return 0;
    std::size_t size = 0;
    for (int i = 1; i <= 4; ++i) size = size << 8 | static_cast<unsigned char>(data[data.size() - i]);
    return std::min(size, data.size() * largestRatio);
}

template <class Out>
void decompressInto(Out& out, std::string_view data) {
    out.clear();
    out.reserve(claimedSize(data));
    try {
        const auto fast = detail::newFastDecoder(inputOf(data));
        drain(out, *fast);
        if (fast->isWhole()) return;
    } catch (const std::runtime_error&) { // comes again
    }
    // Damage and truncation behave, and are worded, as zlib does.
    out.clear();
    drain(out, *detail::newDecoder(inputOf(data)));
}

} // namespace

void Compressor::compress(std::vector<char>& out, const char* data, std::size_t size, int level) {
    trace(__LINE__,
          "static void zeq::Compressor::compress(std::vector<byte> &, const byte *, std::size_t, int)");
    compressInto(out, {data, size}, level);
}

void Compressor::compress(std::string& out, const char* data, std::size_t size, int level) {
    trace(__LINE__, "static void zeq::Compressor::compress(std::string &, const byte *, std::size_t, int)");
    compressInto(out, {data, size}, level);
}

void detail::traceCompression() {
    trace(__LINE__, "static void zeq::Compressor::compress(std::string &, const byte *, std::size_t, int)");
}

void detail::traceDecompression() {
    trace(__LINE__,
          "static void zeq::Compressor::decompress(std::vector<byte> &, const byte *, std::size_t)");
}

void Compressor::decompress(std::vector<char>& out, const char* data, std::size_t size) {
    detail::traceDecompression();
    decompressInto(out, {data, size});
}

void Compressor::decompress(std::string& out, const char* data, std::size_t size) {
    trace(__LINE__, "static void zeq::Compressor::decompress(std::string &, const byte *, std::size_t)");
    decompressInto(out, {data, size});
}

bool Compressor::isCompressed(const char* data, std::size_t size) {
    if (!data || size < 3) return false;
    const std::string_view magic(data, 2);
    using namespace std::string_view_literals;
    return magic == "\x1F\x8B"sv || magic == "\x78\x01"sv || magic == "\x78\x5E"sv || magic == "\x78\x9C"sv ||
           magic == "\x78\xDA"sv;
}

void Compressor::makePlain(std::vector<char>& bytes) {
    if (!isCompressed(bytes.data(), bytes.size())) return;
    const std::vector<char> compressed = std::exchange(bytes, {});
    decompress(bytes, compressed.data(), compressed.size());
}

} // namespace zeq
