// UTF-8 in its original form of up to six bytes, so that every non-negative 32-bit unit has exactly one
// encoding.
#include "transport/utf8.h"

#include <algorithm>
#include <bit>
#include <cstdint>

namespace zeq::transport {

namespace {

/// Number of bytes of a unit: n bytes hold 7 bits for n = 1 and 5n + 1 bits beyond.
unsigned encodedSize(std::uint32_t unit) {
    const unsigned bits = std::bit_width(unit);
    return bits <= 7 ? 1 : (bits + 3) / 5;
}

} // namespace

std::string toUtf8(std::wstring_view text) {
    std::string bytes;
    bytes.reserve(text.size());
    for (wchar_t wide : text) {
        const auto unit = std::bit_cast<std::uint32_t>(wide);
        if (unit > 0x7FFFFFFF) throw EncodingError("text holds a unit above 0x7FFFFFFF");
        const unsigned size = encodedSize(unit);
        if (size == 1) {
            bytes.push_back(static_cast<char>(unit));
            continue;
        }
        const unsigned lead = 0xFFU << (8 - size);
        bytes.push_back(static_cast<char>(lead | unit >> 6 * (size - 1)));
        for (unsigned rest = size - 1; rest-- > 0;)
            bytes.push_back(static_cast<char>(0x80 | (unit >> 6 * rest & 0x3F)));
    }
    return bytes;
}

std::wstring fromUtf8(std::string_view bytes) {
    std::wstring text;
    text.reserve(bytes.size());
    for (std::size_t at = 0; at < bytes.size();) {
        const auto lead = static_cast<unsigned char>(bytes[at]);
        const unsigned leadingOnes = static_cast<unsigned>(std::countl_one(lead));
        const unsigned size = std::max(leadingOnes, 1U);
        if (leadingOnes == 1 || size > 6) throw EncodingError("malformed UTF-8: not the start of a sequence");
        if (size > bytes.size() - at) throw EncodingError("malformed UTF-8: cut sequence");
        std::uint32_t unit = lead & 0xFFU >> leadingOnes;
        for (unsigned i = 1; i < size; ++i) {
            const auto next = static_cast<unsigned char>(bytes[at + i]);
            if ((next & 0xC0) != 0x80) throw EncodingError("malformed UTF-8: cut sequence");
            unit = unit << 6 | (next & 0x3FU);
        }
        if (encodedSize(unit) != size) throw EncodingError("malformed UTF-8: overlong sequence");
        text.push_back(static_cast<wchar_t>(unit));
        at += size;
    }
    return text;
}

} // namespace zeq::transport
