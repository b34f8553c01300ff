// zlib behind one loop that feeds and drains a stream; where it is built in, ISA-L serves the default level
// and undamaged input on the same loop.
#define ZLIB_CONST
#include "zeq_api/codec/compressor.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <memory>
#include <stdexcept>
#include <string_view>
#include <utility>

#include <zlib.h>
#if ZEQ_WITH_ISAL
#include <isa-l/igzip_lib.h>
#endif

#include "mv_cvx/logger.h"

namespace zeq {

namespace {

void trace(int line, const char* signature) {
    ZEQ_LOG(Trace) << "mcad/src/zeq_api/zeq_api_exchange_object(" << line << "): " << signature;
}

/// What a stream says after a step.
enum class Step {
    more,
    end,
    failed
};

/// Appends to `out` what `step(isLastPiece)` makes of the data, until it says that this was all. Output goes
/// through a block that stays in the cache: growing `out` itself would fill it with zeros first. Input goes
/// in pieces that the streams can count in 32 bits.
template <class Out, class Stream, class StepFunction>
Step pump(Out& out, std::string_view data, Stream& stream, StepFunction step) {
    constexpr std::size_t blockSize = 1 << 18;
    using Byte = std::remove_pointer_t<decltype(stream.next_out)>;
    const auto block = std::make_unique_for_overwrite<Byte[]>(blockSize);
    stream.avail_in = 0;
    for (;;) {
        if (stream.avail_in == 0) {
            const std::size_t piece =
                std::min<std::size_t>(data.size(), std::numeric_limits<std::int32_t>::max());
            stream.next_in = reinterpret_cast<decltype(stream.next_in)>(const_cast<char*>(data.data()));
            stream.avail_in = static_cast<std::uint32_t>(piece);
            data.remove_prefix(piece);
        }
        stream.next_out = block.get();
        stream.avail_out = blockSize;
        const Step said = step(data.empty());
        out.insert(out.end(), block.get(), stream.next_out);
        if (said != Step::more) return said;
    }
}

template <class Out>
void zlibCompress(Out& out, std::string_view data, int level) {
    z_stream stream{};
    if (deflateInit2(&stream, level, Z_DEFLATED, 31, 8, Z_DEFAULT_STRATEGY) != Z_OK)
        throw std::runtime_error("deflate init failed");
    const std::unique_ptr<z_stream, int (*)(z_stream*)> owner(&stream, deflateEnd);
    pump(out, data, stream, [&](bool isLast) {
        deflate(&stream, isLast ? Z_FINISH : Z_NO_FLUSH);
        return isLast && stream.avail_out != 0 ? Step::end : Step::more;
    });
}

template <class Out>
void zlibDecompress(Out& out, std::string_view data) {
    z_stream stream{};
    if (inflateInit2(&stream, 47) != Z_OK) throw std::runtime_error("inflate init failed");
    const std::unique_ptr<z_stream, int (*)(z_stream*)> owner(&stream, inflateEnd);
    pump(out, data, stream, [&](bool isLast) {
        const int result = inflate(&stream, Z_NO_FLUSH);
        if (result == Z_STREAM_END) return Step::end;
        if (result != Z_OK && result != Z_BUF_ERROR)
            throw std::runtime_error(stream.msg ? stream.msg : "inflate failed");
        return isLast && stream.avail_out != 0 ? Step::end : Step::more;
    });
}

#if ZEQ_WITH_ISAL

template <class Out>
bool fastCompress(Out& out, std::string_view data) {
    const auto levelBuffer = std::make_unique_for_overwrite<std::uint8_t[]>(ISAL_DEF_LVL1_DEFAULT);
    const auto stream = std::make_unique_for_overwrite<isal_zstream>();
    isal_deflate_init(stream.get());
    stream->level = 1;
    stream->level_buf = levelBuffer.get();
    stream->level_buf_size = ISAL_DEF_LVL1_DEFAULT;
    stream->gzip_flag = IGZIP_GZIP;
    const auto step = [&](bool isLast) {
        stream->end_of_stream = isLast;
        if (isal_deflate(stream.get()) != COMP_OK) return Step::failed;
        return stream->internal_state.state == ZSTATE_END ? Step::end : Step::more;
    };
    return pump(out, data, *stream, step) == Step::end;
}

/// Anything but a plain header is left to zlib, which checks more of it.
bool hasPlainHeader(std::string_view data) {
    using namespace std::string_view_literals;
    return data.starts_with("\x1F\x8B\x08\0"sv) ||
           (data.starts_with('\x78') && Compressor::isCompressed(data.data(), data.size()));
}

template <class Out>
bool fastDecompress(Out& out, std::string_view data) {
    if (!hasPlainHeader(data)) return false;
    const auto stream = std::make_unique_for_overwrite<inflate_state>();
    isal_inflate_init(stream.get());
    stream->crc_flag = data[0] == '\x1F' ? ISAL_GZIP : ISAL_ZLIB;
    const auto step = [&](bool isLast) {
        if (isal_inflate(stream.get()) != ISAL_DECOMP_OK) return Step::failed;
        if (stream->block_state == ISAL_BLOCK_FINISH) return Step::end;
        return isLast && stream->avail_out != 0 ? Step::failed : Step::more;
    };
    return pump(out, data, *stream, step) == Step::end;
}

#else

template <class Out>
bool fastCompress(Out&, std::string_view) {
    return false;
}

template <class Out>
bool fastDecompress(Out&, std::string_view) {
    return false;
}

#endif

template <class Out>
void compressInto(Out& out, std::string_view data, int level) {
    out.clear();
    if (level == Z_DEFAULT_COMPRESSION && fastCompress(out, data)) return;
    out.clear();
    zlibCompress(out, data, level);
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
    if (fastDecompress(out, data)) return;
    // Damage and truncation behave, and are worded, as zlib does.
    out.clear();
    zlibDecompress(out, data);
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

void Compressor::decompress(std::vector<char>& out, const char* data, std::size_t size) {
    trace(__LINE__,
          "static void zeq::Compressor::decompress(std::vector<byte> &, const byte *, std::size_t)");
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
