// Compression and decompression piece by piece. Internal. Objects are used by one thread at a time.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string_view>

namespace zeq::detail {

/// Takes the next bytes.
using ByteOutput = std::function<void(const char* bytes, std::size_t size)>;
/// Fills `out` with the next bytes and says how many there were: fewer than `size` only at the end.
using ByteInput = std::function<std::size_t(char* out, std::size_t size)>;

/// Makes gzip data of what it is given.
class GzipEncoder {
public:
    virtual ~GzipEncoder() = default;
    void write(std::string_view bytes) { take(bytes, false); }
    /// To be called once, at the end.
    void finish() { take({}, true); }

private:
    virtual void take(std::string_view bytes, bool isLast) = 0;
};

/// The encoder for a level as of Compressor::compress(): ISA-L's for the default level where that is built in.
/// @throws std::runtime_error "deflate init failed", for an unknown level
std::unique_ptr<GzipEncoder> newEncoder(int level, ByteOutput output);

/// Gives what gzip or zlib data hold.
class GzipDecoder {
public:
    virtual ~GzipDecoder() = default;
    /// Fills `out` with the next bytes and says how many there were: fewer than `size` only at the end. The last
    /// `historySize` bytes that it gave before, or as many as there were, must stand right before `out`.
    virtual std::size_t read(char* out, std::size_t size) = 0;
    /// Whether the end that read() came to is that of undamaged data.
    virtual bool isWhole() const = 0;

    static constexpr std::size_t historySize = 1 << 15;
};

/// zlib: of data that end too early it gives what could be decoded; read() throws std::runtime_error with zlib's
/// message for damaged data.
std::unique_ptr<GzipDecoder> newDecoder(ByteInput input);
/// The fastest there is. Whatever it does not like, it is not whole, and newDecoder() is to be asked.
std::unique_ptr<GzipDecoder> newFastDecoder(ByteInput input);

/// Log what calls of Compressor::compress() and Compressor::decompress() do.
void traceCompression();
void traceDecompression();

} // namespace zeq::detail
