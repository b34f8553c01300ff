// The Base64 tables and loops, for narrow and for wide characters. Of wide ones, which carry all bulk data, whole
// blocks go through vector registers where the processor has them.
#include "zeq_api/codec/base64.h"

#include <array>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <type_traits>

#include "zeq_api/codec/base64_blocks.h"

namespace zeq {

namespace {

constexpr std::string_view alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

// All bits set: or-ed with any digit, it still shows in the bits above a digit.
constexpr std::uint8_t foreign = 0xFF;

constexpr auto digits = [] {
    std::array<std::uint8_t, 256> table{};
    table.fill(foreign);
    for (std::size_t digit = 0; digit < alphabet.size(); ++digit)
        table[static_cast<unsigned char>(alphabet[digit])] = static_cast<std::uint8_t>(digit);
    return table;
}();

/// Characters of the type `Char` in bytes at any address.
template <class Char>
struct Text {
    char* bytes;
    void put(std::size_t i, char c) const {
        const auto unit = static_cast<Char>(c);
        std::memcpy(bytes + i * sizeof unit, &unit, sizeof unit);
    }
};
template <class Char>
struct ConstText {
    const char* bytes;
    std::uint32_t digit(std::size_t i) const {
        std::make_unsigned_t<Char> unit;
        std::memcpy(&unit, bytes + i * sizeof unit, sizeof unit);
        if constexpr (sizeof unit > 1) {
            if (unit > 0xFF) return foreign;
        }
        return digits[unit];
    }
};

template <class Char>
std::size_t encodeBytes(Text<Char> text, const std::uint8_t* src, std::size_t n) {
    std::size_t out = 0;
    const auto put = [&](std::uint32_t group, int characters) {
        for (int i = 0; i < characters; ++i) text.put(out++, alphabet[group >> (18 - 6 * i) & 63]);
    };
    for (; n >= 3; n -= 3, src += 3) put(std::uint32_t{src[0]} << 16 | src[1] << 8 | src[2], 4);
    if (n == 0) return out;

    put(std::uint32_t{src[0]} << 16 | (n == 2 ? src[1] << 8 : 0), static_cast<int>(n) + 1);
    for (; n < 3; ++n) text.put(out++, '=');
    return out;
}

template <class Char>
std::pair<std::size_t, std::size_t> decodeCharacters(std::uint8_t* dst, ConstText<Char> text, std::size_t n) {
    std::uint8_t* out = dst;
    std::size_t in = 0;
    const auto put = [&out](std::uint32_t group, int bytes) {
        for (int i = 0; i < bytes; ++i) *out++ = static_cast<std::uint8_t>(group >> (16 - 8 * i));
    };
    for (; n - in >= 4; in += 4) {
        const std::uint32_t a = text.digit(in), b = text.digit(in + 1), c = text.digit(in + 2),
                            d = text.digit(in + 3);
        if ((a | b | c | d) > 63) break;
        put(a << 18 | b << 12 | c << 6 | d, 3);
    }
    // What is left is a last group of at most three characters of the alphabet.
    std::uint32_t group = 0;
    int count = 0;
    for (; in != n && text.digit(in) != foreign; ++in, ++count) group |= text.digit(in) << (18 - 6 * count);
    if (count > 1) put(group, count - 1);
    return {static_cast<std::size_t>(out - dst), in};
}

} // namespace

std::size_t Base64::encodeImpl(void* dst, const void* src, std::size_t n) {
    return encodeBytes(Text<char>{static_cast<char*>(dst)}, static_cast<const std::uint8_t*>(src), n);
}

std::size_t Base64::encodeUnits(char* dst, const void* src, std::size_t n) {
    const auto* const bytes = static_cast<const std::uint8_t*>(src);
    const std::size_t done = detail::encodeBlocks(dst, bytes, n);
    const std::size_t characters = encodedSize(done);
    return characters +
           encodeBytes(Text<wchar_t>{dst + characters * sizeof(wchar_t)}, bytes + done, n - done);
}

std::pair<std::size_t, std::size_t> Base64::decodeImpl(void* dst, const char* src, std::size_t n) {
    return decodeCharacters(static_cast<std::uint8_t*>(dst), ConstText<char>{src}, n);
}

std::pair<std::size_t, std::size_t> Base64::decodeUnits(void* dst, const char* src, std::size_t n) {
    auto* const bytes = static_cast<std::uint8_t*>(dst);
    const std::size_t done = detail::decodeBlocks(bytes, src, n);
    const std::size_t size = decodedSize(done);
    const auto [written, read] =
        decodeCharacters(bytes + size, ConstText<wchar_t>{src + done * sizeof(wchar_t)}, n - done);
    return {size + written, done + read};
}

template void Base64::encode<float>(const std::vector<float>&, std::wstring&);
template void Base64::encode<int>(const std::vector<int>&, std::wstring&);
template void Base64::decode<float>(const std::wstring&, std::vector<float>&);
template void Base64::decode<int>(const std::wstring&, std::vector<int>&);

} // namespace zeq
