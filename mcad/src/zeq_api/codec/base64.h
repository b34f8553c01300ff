// Base64 text of arrays of numbers, so that bulk data can stand in a JSON string. Any thread may call these
// functions.
#pragma once

#include <cstddef>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace zeq {

/// The standard alphabet (A-Z, a-z, 0-9, "+", "/") with "=" padding and no line breaks.
class Base64 {
public:
    /// Number of characters that encode `n` bytes.
    static constexpr std::size_t encodedSize(std::size_t n) { return (n / 3 + (n % 3 != 0)) * 4; }
    /// Number of bytes in the whole groups of `n` characters; a final short group adds up to two bytes more.
    static constexpr std::size_t decodedSize(std::size_t n) { return n / 4 * 3; }

    /// Encodes `n` bytes to `encodedSize(n)` characters and returns their number.
    static std::size_t encodeImpl(void* dst, const void* src, std::size_t n);
    /// Decodes up to the first "=" or other character outside the alphabet. `dst` must have room for
    /// `decodedSize(n) + 2` bytes.
    /// @return the number of bytes written and the number of characters read
    static std::pair<std::size_t, std::size_t> decodeImpl(void* dst, const char* src, std::size_t n);

    /// The same for wide characters.
    static std::size_t encodeWide(wchar_t* dst, const void* src, std::size_t n) {
        return encodeUnits(reinterpret_cast<char*>(dst), src, n);
    }
    static std::pair<std::size_t, std::size_t> decodeWide(void* dst, const wchar_t* src, std::size_t n) {
        return decodeUnits(dst, reinterpret_cast<const char*>(src), n);
    }

    /// The same for the bytes of wide characters at any address. `n` and the results count bytes of the
    /// array and characters of the text, as above.
    static std::size_t encodeUnits(char* dst, const void* src, std::size_t n);
    static std::pair<std::size_t, std::size_t> decodeUnits(void* dst, const char* src, std::size_t n);

    /// Makes `text` the encoding of the elements' bytes as they lie in memory.
    template <class T>
    static void encode(const std::vector<T>& values, std::wstring& text) {
        static_assert(std::is_trivially_copyable_v<T>);
        const std::size_t size = values.size() * sizeof(T);
        text.resize(encodedSize(size));
        encodeWide(text.data(), values.data(), size);
    }

    /// Replaces `values` by the elements that `text` encodes; a last, incomplete element is dropped.
    template <class T>
    static void decode(const std::wstring& text, std::vector<T>& values) {
        static_assert(std::is_trivially_copyable_v<T>);
        values.resize((decodedSize(text.size()) + 2) / sizeof(T) + 1);
        const auto [bytes, characters] = decodeWide(values.data(), text.data(), text.size());
        values.resize(bytes / sizeof(T));
    }
};

extern template void Base64::encode<float>(const std::vector<float>&, std::wstring&);
extern template void Base64::encode<int>(const std::vector<int>&, std::wstring&);
extern template void Base64::decode<float>(const std::wstring&, std::vector<float>&);
extern template void Base64::decode<int>(const std::wstring&, std::vector<int>&);

} // namespace zeq
