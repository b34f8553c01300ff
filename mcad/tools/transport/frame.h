// Documents on a pipe: each travels as one frame, a 4-byte little-endian length and that many bytes of UTF-8.
#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>

namespace zeq::transport {

/// Bytes that are no sequence of frames.
class ProtocolError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The longest frame that is read or written, in bytes.
inline constexpr std::size_t maxFrameSize = std::size_t{1} << 30;

/// The bytes of one frame.
/// @throws ProtocolError for text that is too long or holds a unit above 0x7FFFFFFF
std::string encodeFrame(std::wstring_view text);

/// Turns bytes, in whatever portions they arrive, back into texts. Memory grows with what has arrived, never
/// with what a length claims.
class FrameDecoder {
public:
    void feed(std::string_view bytes);

    /// Takes the next whole frame.
    /// @return false if it has not arrived yet
    /// @throws ProtocolError for a length beyond maxFrameSize, for malformed UTF-8 and for plain text
    bool next(std::wstring& text);

    /// Whether a frame has begun to arrive: the stream must not end now.
    bool isWithinFrame() const { return m_taken != m_bytes.size(); }
    /// The first line of what has arrived, at most 60 bytes of it, when that is text that somebody printed
    /// and no frame; else empty. Text would be a frame of 150 MB or more: it is believed when a JSON object
    /// begins there.
    std::string textInstead() const;

private:
    std::string m_bytes;
    std::size_t m_taken = 0;
};

/// Reads frames from a descriptor, waiting for each; the descriptor stays the caller's.
class FrameReader {
public:
    explicit FrameReader(int fd) : m_fd(fd) {}

    /// @return false at the end of the stream
    /// @throws ProtocolError as FrameDecoder does; std::system_error if reading fails
    bool next(std::wstring& text);

private:
    int m_fd;
    FrameDecoder m_decoder;
};

/// Writes frames to a descriptor, each with as few calls as the system allows; the descriptor stays the
/// caller's. A program that must outlive its reader ignores SIGPIPE and receives EPIPE as a
/// std::system_error.
class FrameWriter {
public:
    explicit FrameWriter(int fd) : m_fd(fd) {}

    /// @throws ProtocolError as encodeFrame(); std::system_error if writing fails
    void write(std::wstring_view text);

private:
    int m_fd;
};

} // namespace zeq::transport
