// Tolerant text conversion.
#include "convexor/text.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "transport/utf8.h"

namespace zeq::convexor {

std::wstring wideText(std::string_view bytes) {
    try {
        return transport::fromUtf8(bytes);
    } catch (const transport::EncodingError&) {
        std::wstring result(bytes.size(), L'\0');
        std::ranges::transform(bytes, result.begin(),
                               [](char byte) { return static_cast<unsigned char>(byte); });
        return result;
    }
}

std::wstring fromUtf16(const TCollection_ExtendedString& text) {
    std::wstring result;
    for (int i = 1; i <= text.Length(); ++i) {
        const char16_t unit = text.Value(i);
        const bool followsHigh = !result.empty() && result.back() >= 0xD800 && result.back() < 0xDC00;
        if (followsHigh && unit >= 0xDC00 && unit < 0xE000)
            result.back() = 0x10000 + ((result.back() - 0xD800) << 10) + (unit - 0xDC00);
        else
            result.push_back(unit);
    }
    return result;
}

std::wstring numberText(double value) {
    std::array<char, 32> buffer;
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value).ptr;
    return {buffer.data(), end};
}

} // namespace zeq::convexor
