// Encoding and decoding of frames, and the blocking reader and writer around them.
#include "transport/frame.h"

#include <algorithm>
#include <cerrno>
#include <system_error>

#include <unistd.h>

#include "transport/utf8.h"

namespace zeq::transport {

namespace {

constexpr std::size_t headerSize = 4;
constexpr std::string_view lineEnds = "\r\n";

/// ASCII that a program prints, with the controls that colour it.
bool isPrinted(char byte) {
    return (byte >= ' ' && byte <= '~') || byte == '\t' || byte == '\033' ||
           lineEnds.find(byte) != std::string_view::npos;
}

[[noreturn]] void refuseText(const std::string& text) {
    throw ProtocolError("text instead of a frame: '" + text + "'");
}

} // namespace

std::string encodeFrame(std::wstring_view text) {
    std::string body;
    try {
        body = toUtf8(text);
    } catch (const EncodingError& error) {
        throw ProtocolError(error.what());
    }
    if (body.size() > maxFrameSize)
        throw ProtocolError("a document of " + std::to_string(body.size()) +
                            " bytes is too long for a frame");
    std::string frame(headerSize, '\0');
    for (std::size_t i = 0; i < headerSize; ++i) frame[i] = static_cast<char>(body.size() >> 8 * i);
    return frame += body;
}

void FrameDecoder::feed(std::string_view bytes) {
    m_bytes.erase(0, m_taken);
    m_taken = 0;
    m_bytes.append(bytes);
}

bool FrameDecoder::next(std::wstring& text) {
    const std::string_view rest = std::string_view(m_bytes).substr(m_taken);
    if (rest.size() < headerSize) return false;
    std::size_t size = 0;
    for (std::size_t i = headerSize; i-- > 0;) size = size << 8 | static_cast<unsigned char>(rest[i]);
    if (const std::string line = textInstead();
        !line.empty() && (size > maxFrameSize || rest.size() > headerSize))
        refuseText(line);
    if (size > maxFrameSize) throw ProtocolError("a frame claims " + std::to_string(size) + " bytes");
    if (rest.size() - headerSize < size) return false;
    try {
        text = fromUtf8(rest.substr(headerSize, size));
    } catch (const EncodingError& error) {
        throw ProtocolError(error.what());
    }
    m_taken += headerSize + size;
    return true;
}

std::string FrameDecoder::textInstead() const {
    std::string_view rest = std::string_view(m_bytes).substr(m_taken);
    const bool isDocument = rest.size() > headerSize && rest[headerSize] == '{';
    if (isDocument || !std::ranges::all_of(rest.substr(0, headerSize), isPrinted)) return {};
    rest.remove_prefix(std::min(rest.find_first_not_of(lineEnds), rest.size()));
    return std::string(rest.substr(0, std::min<std::size_t>(rest.find_first_of(lineEnds), 60)));
}

bool FrameReader::next(std::wstring& text) {
    char portion[64 * 1024];
    while (!m_decoder.next(text)) {
        const ssize_t count = ::read(m_fd, portion, sizeof portion);
        if (count > 0) {
            m_decoder.feed({portion, static_cast<std::size_t>(count)});
        } else if (count == 0) {
            if (const std::string line = m_decoder.textInstead(); !line.empty()) refuseText(line);
            if (m_decoder.isWithinFrame()) throw ProtocolError("the stream ends within a frame");
            return false;
        } else if (errno != EINTR) {
            throw std::system_error(errno, std::generic_category(), "read");
        }
    }
    return true;
}

void FrameWriter::write(std::wstring_view text) {
    const std::string frame = encodeFrame(text);
    for (std::size_t written = 0; written < frame.size();) {
        const ssize_t count = ::write(m_fd, frame.data() + written, frame.size() - written);
        if (count >= 0)
            written += static_cast<std::size_t>(count);
        else if (errno != EINTR)
            throw std::system_error(errno, std::generic_category(), "write");
    }
}

} // namespace zeq::transport
