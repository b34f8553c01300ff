// Stepping over the tokens of an exchange structure. All functions take a position in a text and give one after it,
// at most the end. Internal.
#pragma once

#include <cstddef>
#include <string_view>

namespace zeq::part21 {

/// Whether an upper-case letter, a digit or another character of a keyword.
constexpr bool isKeyword(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_' ||
           c == '-' || c == '!';
}
constexpr bool isDigit(char c) { return c >= '0' && c <= '9'; }

/// Over what stands between tokens: space, control characters, comments.
inline std::size_t skipSpace(std::string_view text, std::size_t at) {
    for (; at < text.size(); ++at) {
        if (static_cast<unsigned char>(text[at]) <= ' ') continue;
        if (text[at] != '/' || at + 1 >= text.size() || text[at + 1] != '*') break;
        const std::size_t end = text.find("*/", at + 2);
        if (end == text.npos) return text.size();
        at = end + 1;
    }
    return at;
}

/// Where in a string the line ends and the next one begins an instance: its closing quote is missing then. The end
/// of the text if there is no such place.
inline std::size_t findInstance(std::string_view text, std::size_t at, std::size_t end) {
    const std::string_view inside = text.substr(0, end);
    for (at = inside.find('\n', at); at < end; at = inside.find('\n', at + 1)) {
        std::size_t next = skipSpace(inside, at);
        if (next >= end || inside[next] != '#') continue;
        for (++next; next < end && isDigit(inside[next]); ++next) {
        }
        next = skipSpace(inside, next);
        if (next < end && inside[next] == '=') return at;
    }
    return text.size();
}

/// Over a string from its apostrophe, or a binary from its quotation mark; one that does not end by itself, up to
/// the next instance.
inline std::size_t skipString(std::string_view text, std::size_t at) {
    const char quote = text[at];
    const std::size_t begin = at;
    for (++at;; at += 2) { // a doubled one is a character
        at = text.find(quote, at);
        if (at == text.npos) at = text.size();
        if (at + 1 < text.size() && text[at + 1] == quote) continue;
        const std::size_t broken = findInstance(text, begin, at);
        return broken < at ? broken : at < text.size() ? at + 1 : at;
    }
}

inline std::size_t skipKeyword(std::string_view text, std::size_t at) {
    while (at < text.size() && isKeyword(text[at])) ++at;
    return at;
}

/// Over a parameter, to the comma or the parenthesis behind it.
inline std::size_t skipValue(std::string_view text, std::size_t at) {
    for (int depth = 0; at < text.size();) {
        switch (text[at]) {
        case '\'':
        case '"':
            at = skipString(text, at);
            continue;
        case '/':
            if (const std::size_t behind = skipSpace(text, at); behind > at) {
                at = behind;
                continue;
            }
            break;
        case '(':
            ++depth;
            break;
        case ')':
            if (depth-- == 0) return at;
            break;
        case ',':
            if (depth == 0) return at;
            break;
        default:
            break;
        }
        ++at;
    }
    return at;
}

/// What stands between the parenthesis that the text begins with and the one that closes it, or the end.
inline std::string_view inParentheses(std::string_view text) {
    std::size_t end = 1;
    while (end < text.size() && text[end] != ')') {
        end = skipValue(text, end);
        if (end < text.size() && text[end] == ',') ++end;
    }
    return text.substr(1, end - 1);
}

} // namespace zeq::part21
