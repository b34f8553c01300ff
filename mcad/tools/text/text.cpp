// Escaping, and the small formats of messages.
#include "text/text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <numeric>

#include "transport/utf8.h"

namespace zeq::text {

namespace {

using transport::EncodingError;
using transport::fromUtf8;
using transport::toUtf8;

constexpr const char* replacement = "\xEF\xBF\xBD"; // U+FFFD

bool isCharacter(char32_t unit) { return unit < 0xD800 || (unit > 0xDFFF && unit <= 0x10FFFF); }

/// Controls of C0 and C1, line separators, and the marks that reorder the text around them.
bool isHarmless(char32_t unit) {
    const bool control = unit < 0x20 || (unit >= 0x7F && unit < 0xA0) || unit == 0x2028 || unit == 0x2029;
    const bool direction = unit == 0x061C || unit == 0x200E || unit == 0x200F ||
                           (unit >= 0x202A && unit <= 0x202E) || (unit >= 0x2066 && unit <= 0x2069);
    return isCharacter(unit) && !control && !direction;
}

std::string escape(char32_t unit) {
    switch (unit) {
    case U'\n':
        return "\\n";
    case U'\r':
        return "\\r";
    case U'\t':
        return "\\t";
    default:
        break;
    }
    char text[24];
    std::snprintf(text, sizeof text, unit < 0x100 ? "\\x%02X" : "\\u{%X}", static_cast<unsigned>(unit));
    return text;
}

/// UTF-8 of the text, with `replace` in place of each unit that is not `plain`.
template <class Plain, class Replace>
std::string convert(std::wstring_view text, Plain plain, Replace replace) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const auto isPlain = [&](wchar_t unit) { return plain(static_cast<char32_t>(unit)); };
        const auto stop =
            std::find_if_not(text.begin() + static_cast<std::ptrdiff_t>(at), text.end(), isPlain);
        const auto end = static_cast<std::size_t>(stop - text.begin());
        result += toUtf8(text.substr(at, end - at));
        if (end < text.size()) result += replace(static_cast<char32_t>(text[end]));
        at = end + 1;
    }
    return result;
}

/// Number of edits that turn one text into the other.
std::size_t editDistance(const std::string& from, const std::string& to) {
    std::vector<std::size_t> row(to.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (char letter : from) {
        std::size_t diagonal = row[0]++;
        for (std::size_t i = 1; i < row.size(); ++i) {
            const std::size_t substituted = diagonal + (letter == to[i - 1] ? 0 : 1);
            diagonal = row[i];
            row[i] = std::min({substituted, row[i] + 1, row[i - 1] + 1});
        }
    }
    return row.back();
}

} // namespace

std::string printable(std::wstring_view text) { return convert(text, isHarmless, escape); }

std::string printable(std::string_view text) {
    try {
        return printable(fromUtf8(text));
    } catch (const EncodingError&) {
        std::string result;
        for (unsigned char byte : text) {
            const bool plain = byte >= 0x20 && byte < 0x7F;
            result += plain ? std::string(1, static_cast<char>(byte)) : escape(byte);
        }
        return result;
    }
}

std::string validUtf8(std::wstring_view text) {
    return convert(text, isCharacter, [](char32_t) { return replacement; });
}

std::string jsonString(std::wstring_view text) {
    const auto plain = [](char32_t unit) {
        return isCharacter(unit) && unit >= 0x20 && unit != U'"' && unit != U'\\';
    };
    const auto escaped = [](char32_t unit) -> std::string {
        if (!isCharacter(unit)) return replacement;
        char code[8];
        std::snprintf(code, sizeof code, unit < 0x20 ? "\\u%04X" : "\\%c", static_cast<int>(unit));
        return code;
    };
    return '"' + convert(text, plain, escaped) + '"';
}

std::string jsonString(std::string_view text) {
    try {
        return jsonString(fromUtf8(text));
    } catch (const EncodingError&) {
        return jsonString(fromUtf8(printable(text)));
    }
}

std::string nearest(const std::string& word, const std::vector<std::string>& names) {
    std::string best;
    std::size_t bestDistance = word.size() / 3 + 2;
    for (const std::string& name : names) {
        const std::size_t longer = std::max(word.size(), name.size());
        if (longer - std::min(word.size(), name.size()) >= bestDistance) continue;
        const std::size_t distance = editDistance(word, name);
        if (distance < bestDistance) {
            best = name;
            bestDistance = distance;
        }
    }
    return best;
}

std::string counted(std::uint64_t count, const std::string& singular, const std::string& plural) {
    return std::to_string(count) + ' ' + (count == 1 ? singular : plural);
}

std::string number(double value) {
    if (!std::isfinite(value)) return "null";
    char text[32];
    return {text, std::to_chars(text, text + sizeof text, value).ptr};
}

std::string byteSize(std::uint64_t bytes) {
    if (bytes < 1024) return counted(bytes, "byte", "bytes");
    auto amount = static_cast<double>(bytes) / 1024;
    const char* unit = "KiB";
    for (const char* larger : {"MiB", "GiB", "TiB"}) {
        if (amount < 1024) break;
        amount /= 1024;
        unit = larger;
    }
    char text[48];
    std::snprintf(text, sizeof text, "%.1f %s", amount, unit);
    return text;
}

} // namespace zeq::text
