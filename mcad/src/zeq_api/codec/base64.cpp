// The Base64 tables and loops, for narrow and for wide characters.
#include "zeq_api/codec/base64.h"

#include <array>
#include <cstdint>
#include <string_view>

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

template <class Char>
std::uint32_t digitOf(Char c) {
    if constexpr (sizeof(Char) > 1) {
        if (c < 0 || c > 0xFF) return foreign;
    }
    return digits[static_cast<unsigned char>(c)];
}

template <class Char>
std::size_t encodeBytes(Char* dst, const std::uint8_t* src, std::size_t n) {
    Char* out = dst;
    const auto put = [&out](std::uint32_t group, int characters) {
        for (int i = 0; i < characters; ++i) *out++ = static_cast<Char>(alphabet[group >> (18 - 6 * i) & 63]);
    };
    for (; n >= 3; n -= 3, src += 3) put(std::uint32_t{src[0]} << 16 | src[1] << 8 | src[2], 4);
    if (n == 0) return static_cast<std::size_t>(out - dst);

    put(std::uint32_t{src[0]} << 16 | (n == 2 ? src[1] << 8 : 0), static_cast<int>(n) + 1);
    for (; n < 3; ++n) *out++ = Char{'='};
    return static_cast<std::size_t>(out - dst);
}

template <class Char>
std::pair<std::size_t, std::size_t> decodeCharacters(std::uint8_t* dst, const Char* src, std::size_t n) {
    std::uint8_t* out = dst;
    const Char* in = src;
    const Char* const end = src + n;
    const auto put = [&out](std::uint32_t group, int bytes) {
        for (int i = 0; i < bytes; ++i) *out++ = static_cast<std::uint8_t>(group >> (16 - 8 * i));
    };
    while (end - in >= 4) {
        const std::uint32_t a = digitOf(in[0]), b = digitOf(in[1]), c = digitOf(in[2]), d = digitOf(in[3]);
        if ((a | b | c | d) > 63) break;
        put(a << 18 | b << 12 | c << 6 | d, 3);
        in += 4;
    }
    // What is left is a last group of at most three characters of the alphabet.
    std::uint32_t group = 0;
    int count = 0;
    for (; in != end && digitOf(*in) != foreign; ++in, ++count) group |= digitOf(*in) << (18 - 6 * count);
    if (count > 1) put(group, count - 1);
    return {static_cast<std::size_t>(out - dst), static_cast<std::size_t>(in - src)};
}

} // namespace

std::size_t Base64::encodeImpl(void* dst, const void* src, std::size_t n) {
    return encodeBytes(static_cast<char*>(dst), static_cast<const std::uint8_t*>(src), n);
}

std::size_t Base64::encodeWide(wchar_t* dst, const void* src, std::size_t n) {
    return encodeBytes(dst, static_cast<const std::uint8_t*>(src), n);
}

std::pair<std::size_t, std::size_t> Base64::decodeImpl(void* dst, const char* src, std::size_t n) {
    return decodeCharacters(static_cast<std::uint8_t*>(dst), src, n);
}

std::pair<std::size_t, std::size_t> Base64::decodeWide(void* dst, const wchar_t* src, std::size_t n) {
    return decodeCharacters(static_cast<std::uint8_t*>(dst), src, n);
}

template void Base64::encode<float>(const std::vector<float>&, std::wstring&);
template void Base64::encode<int>(const std::vector<int>&, std::wstring&);
template void Base64::decode<float>(const std::wstring&, std::vector<float>&);
template void Base64::decode<int>(const std::wstring&, std::vector<int>&);

} // namespace zeq
