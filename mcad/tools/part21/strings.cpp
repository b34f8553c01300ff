// Resolves the control directives of strings one after another.
#include "part21/strings.h"

#include <array>
#include <charconv>
#include <cstdint>
#include <optional>

#include <iconv.h>

namespace zeq::part21 {

namespace {

/// The characters of the upper half of a code page.
using Page = std::array<wchar_t, 128>;

/// By the system's converter; what it does not know stays as it is.
Page readPage(const std::string& encoding) {
    Page page{};
    const iconv_t converter = ::iconv_open("WCHAR_T", encoding.c_str());
    const bool isKnown = reinterpret_cast<std::intptr_t>(converter) != -1;
    for (std::size_t i = 0; i < page.size(); ++i) {
        page[i] = static_cast<wchar_t>(0x80 + i);
        if (!isKnown) continue;
        char byte = static_cast<char>(0x80 + i);
        wchar_t character = 0;
        char* source = &byte;
        char* target = reinterpret_cast<char*>(&character);
        std::size_t sourceLeft = 1, targetLeft = sizeof character;
        const bool isDone = ::iconv(converter, &source, &sourceLeft, &target, &targetLeft) != std::size_t(-1);
        if (isDone && targetLeft == 0) page[i] = character;
    }
    if (isKnown) ::iconv_close(converter);
    return page;
}

/// The character of a byte above 0x7F in ISO 8859, of which 'A' is part 1.
wchar_t inPage(char page, unsigned char byte) {
    static const std::array<Page, 9> pages = [] {
        std::array<Page, 9> result;
        for (std::size_t i = 0; i < result.size(); ++i)
            result[i] = readPage("ISO-8859-" + std::to_string(i + 1));
        return result;
    }();
    return pages[static_cast<std::size_t>(page - 'A')][byte - 0x80U];
}

wchar_t inWindows1252(unsigned char byte) {
    static const Page page = readPage("WINDOWS-1252");
    return page[byte - 0x80U];
}

/// Whether half of a character of UTF-16.
constexpr bool isHalf(std::uint32_t character) { return character >= 0xD800 && character < 0xE000; }

/// How many bytes a character of UTF-8 has that begins so; 0 if none does.
std::size_t lengthOfUtf8(unsigned char first) {
    if (first >= 0xF0 && first < 0xF5) return 4;
    if (first >= 0xE0) return first < 0xF0 ? 3 : 0;
    return first >= 0xC2 ? 2 : 0;
}

class Decoder {
public:
    explicit Decoder(std::string_view text) : m_rest(text) {}

    std::wstring decode() {
        m_result.reserve(m_rest.size());
        while (!m_rest.empty()) {
            const auto byte = static_cast<unsigned char>(m_rest[0]);
            if (byte == '\\' && takeDirective()) continue;
            if (byte >= 0x80)
                takeForeign(byte);
            else
                takeAscii(byte);
        }
        return std::move(m_result);
    }

private:
    void takeAscii(unsigned char byte) {
        const bool isDoubled = (byte == '\'' || byte == '\\') && m_rest.size() > 1 && m_rest[1] == m_rest[0];
        if (byte != '\n' && byte != '\r') m_result += static_cast<wchar_t>(byte);
        m_rest.remove_prefix(isDoubled ? 2 : 1);
    }

    void takeForeign(unsigned char byte) {
        const std::size_t length = lengthOfUtf8(byte);
        if (length > 0 && length <= m_rest.size()) {
            wchar_t character = byte & (0xFF >> (length + 1));
            bool isWhole = true;
            for (std::size_t i = 1; i < length; ++i) {
                const auto next = static_cast<unsigned char>(m_rest[i]);
                isWhole = isWhole && (next & 0xC0) == 0x80;
                character = (character << 6) | (next & 0x3F);
            }
            constexpr wchar_t smallest[]{0, 0, 0x80, 0x800, 0x10000};
            if (isWhole && character >= smallest[length] && character <= 0x10FFFF &&
                !isHalf(static_cast<std::uint32_t>(character)))
                return add(character, length);
        }
        add(inWindows1252(byte), 1);
    }

    /// False when the backslash begins none.
    bool takeDirective() {
        if (m_rest.size() >= 4 && m_rest[1] == 'P' && m_rest[3] == '\\' && m_rest[2] >= 'A' &&
            m_rest[2] <= 'I') {
            m_page = m_rest[2];
            m_rest.remove_prefix(4);
            return true;
        }
        if (m_rest.starts_with("\\S\\") && m_rest.size() >= 4) {
            const auto byte = static_cast<unsigned char>(m_rest[3] | 0x80);
            const std::size_t length = m_rest[3] == '\'' || m_rest[3] == '\\' ? doubled(3) : 4;
            add(inPage(m_page, byte), length);
            return true;
        }
        if (m_rest.starts_with("\\X\\")) {
            const auto character = hexadecimal(3, 2);
            if (character) add(static_cast<wchar_t>(*character), 5);
            return character.has_value();
        }
        if (m_rest.starts_with("\\X2\\")) return takeHexadecimal(4);
        if (m_rest.starts_with("\\X4\\")) return takeHexadecimal(8);
        return false;
    }

    /// The length of a directive whose last character at `index` may be a doubled one.
    std::size_t doubled(std::size_t index) const {
        return m_rest.size() > index + 1 && m_rest[index + 1] == m_rest[index] ? index + 2 : index + 1;
    }

    std::optional<std::uint32_t> hexadecimal(std::size_t index, std::size_t digits) const {
        std::uint32_t number = 0;
        if (m_rest.size() < index + digits) return std::nullopt;
        const char* const begin = m_rest.data() + index;
        const auto [end, error] = std::from_chars(begin, begin + digits, number, 16);
        return error == std::errc() && end == begin + digits ? std::optional(number) : std::nullopt;
    }

    /// Characters of so many digits each, up to \X0\.
    bool takeHexadecimal(std::size_t digits) {
        const std::size_t end = m_rest.find("\\X0\\");
        if (end == m_rest.npos || (end - 4) % digits != 0) return false;
        std::wstring characters;
        for (std::size_t at = 4; at < end; at += digits) {
            const auto character = hexadecimal(at, digits);
            if (!character || *character > 0x10FFFF) return false;
            const bool isSecondHalf = *character >= 0xDC00 && *character < 0xE000 && !characters.empty() &&
                                      characters.back() >= 0xD800 && characters.back() < 0xDC00;
            if (isSecondHalf) // UTF-16, which many writers have there
                characters.back() = static_cast<wchar_t>(0x10000 + ((characters.back() - 0xD800) << 10) +
                                                         static_cast<wchar_t>(*character - 0xDC00));
            else
                characters += static_cast<wchar_t>(*character);
        }
        for (const wchar_t character : characters)
            m_result += isHalf(static_cast<std::uint32_t>(character)) ? L'\xFFFD' : character;
        m_rest.remove_prefix(end + 4);
        return true;
    }

    void add(wchar_t character, std::size_t length) {
        m_result += character;
        m_rest.remove_prefix(length);
    }

    std::string_view m_rest;
    std::wstring m_result;
    char m_page = 'A';
};

} // namespace

std::wstring decodeString(std::string_view text) { return Decoder(text).decode(); }

} // namespace zeq::part21
