// zlib behind one loop each way; where it is built in, ISA-L serves the default level on the same loop.
#define ZLIB_CONST
#include "zeq_api/codec/gzip_stream.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <stdexcept>
#include <type_traits>
#include <utility>

#include <zlib.h>
#if ZEQ_WITH_ISAL
#include <isa-l/igzip_lib.h>
#endif

#include "zeq_api/codec/inflater.h"

namespace zeq::detail {

namespace {

constexpr std::size_t blockSize = 1 << 17;
// What the streams can count in 32 bits.
constexpr std::size_t mostAtOnce = std::numeric_limits<std::int32_t>::max();

template <class Stream>
using ByteOf = std::remove_cv_t<std::remove_pointer_t<decltype(Stream::next_out)>>;

/// `Stream` needs `bool step(bool isLast)`, which says whether all is done.
template <class Derived, class Stream>
class EncoderLoop : public GzipEncoder {
protected:
    explicit EncoderLoop(ByteOutput output) : m_output(std::move(output)) {}
    Stream m_stream;

private:
    void take(std::string_view bytes, bool isLast) override {
        bool done = false;
        do {
            const std::size_t piece = std::min(bytes.size(), mostAtOnce);
            m_stream.next_in = reinterpret_cast<decltype(m_stream.next_in)>(const_cast<char*>(bytes.data()));
            m_stream.avail_in = static_cast<std::uint32_t>(piece);
            bytes.remove_prefix(piece);
            do {
                m_stream.next_out = m_block.get();
                m_stream.avail_out = blockSize;
                done = static_cast<Derived*>(this)->step(isLast && bytes.empty());
                m_output(reinterpret_cast<const char*>(m_block.get()), blockSize - m_stream.avail_out);
            } while (!done && m_stream.avail_out == 0);
        } while (!done && !bytes.empty());
    }

    ByteOutput m_output;
    std::unique_ptr<ByteOf<Stream>[]> m_block { new ByteOf<Stream>[ blockSize ] };
};

class ZlibEncoder : public EncoderLoop<ZlibEncoder, z_stream> {
public:
    ZlibEncoder(int level, ByteOutput output) : EncoderLoop(std::move(output)) {
        m_stream = {};
        if (deflateInit2(&m_stream, level, Z_DEFLATED, 31, 8, Z_DEFAULT_STRATEGY) != Z_OK)
            throw std::runtime_error("deflate init failed");
    }
    ~ZlibEncoder() override { deflateEnd(&m_stream); }
    ZlibEncoder(const ZlibEncoder&) = delete;
    ZlibEncoder& operator=(const ZlibEncoder&) = delete;

    bool step(bool isLast) { return deflate(&m_stream, isLast ? Z_FINISH : Z_NO_FLUSH) == Z_STREAM_END; }
};

class ZlibDecoder : public GzipDecoder {
public:
    explicit ZlibDecoder(ByteInput input) : m_input(std::move(input)) {
        m_stream = {};
        if (inflateInit2(&m_stream, 47) != Z_OK) throw std::runtime_error("inflate init failed");
    }
    ~ZlibDecoder() override { inflateEnd(&m_stream); }
    ZlibDecoder(const ZlibDecoder&) = delete;
    ZlibDecoder& operator=(const ZlibDecoder&) = delete;

    std::size_t read(char* out, std::size_t size) override {
        std::size_t done = 0;
        while (done != size && m_end == End::none) {
            if (m_stream.avail_in == 0 && !m_inputEnds) fill();
            const std::size_t wanted = std::min(size - done, mostAtOnce);
            m_stream.next_out = reinterpret_cast<Bytef*>(out + done);
            m_stream.avail_out = static_cast<std::uint32_t>(wanted);
            step();
            done += wanted - m_stream.avail_out;
            if (m_end == End::none && m_inputEnds && m_stream.avail_in == 0 && m_stream.avail_out != 0)
                m_end = End::early;
        }
        return done;
    }
    bool isWhole() const override { return m_end == End::clean; }

private:
    enum class End {
        none,
        clean,
        early
    };

    void step() {
        const int result = inflate(&m_stream, Z_NO_FLUSH);
        if (result == Z_STREAM_END)
            m_end = End::clean;
        else if (result != Z_OK && result != Z_BUF_ERROR)
            throw std::runtime_error(m_stream.msg ? m_stream.msg : "inflate failed");
    }
    void fill() {
        const std::size_t size = m_input(m_block.get(), blockSize);
        m_inputEnds = size < blockSize;
        m_stream.next_in = reinterpret_cast<const Bytef*>(m_block.get());
        m_stream.avail_in = static_cast<std::uint32_t>(size);
    }

    z_stream m_stream;
    ByteInput m_input;
    bool m_inputEnds = false;
    End m_end = End::none;
    std::unique_ptr<char[]> m_block{new char[blockSize]};
};

#if ZEQ_WITH_ISAL

class IsalEncoder : public EncoderLoop<IsalEncoder, isal_zstream> {
public:
    explicit IsalEncoder(ByteOutput output) : EncoderLoop(std::move(output)) {
        isal_deflate_init(&m_stream);
        m_stream.level = 1;
        m_stream.level_buf = m_levelBuffer.get();
        m_stream.level_buf_size = ISAL_DEF_LVL1_DEFAULT;
        m_stream.gzip_flag = IGZIP_GZIP;
    }
    bool step(bool isLast) {
        m_stream.end_of_stream = isLast;
        if (isal_deflate(&m_stream) != COMP_OK) throw std::runtime_error("deflate failed");
        return m_stream.internal_state.state == ZSTATE_END;
    }

private:
    std::unique_ptr<std::uint8_t[]> m_levelBuffer{new std::uint8_t[ISAL_DEF_LVL1_DEFAULT]};
};

#endif

} // namespace

std::unique_ptr<GzipEncoder> newEncoder(int level, ByteOutput output) {
#if ZEQ_WITH_ISAL
    if (level == Z_DEFAULT_COMPRESSION) return std::make_unique<IsalEncoder>(std::move(output));
#endif
    return std::make_unique<ZlibEncoder>(level, std::move(output));
}

std::unique_ptr<GzipDecoder> newDecoder(ByteInput input) {
    return std::make_unique<ZlibDecoder>(std::move(input));
}

std::unique_ptr<GzipDecoder> newFastDecoder(ByteInput input) {
    return std::make_unique<Inflater>(std::move(input));
}

} // namespace zeq::detail
