// Tells the kind of a parameter by its first character and takes it apart.
#include "part21/value.h"

#include <charconv>
#include <cmath>

#include "part21/scan.h"
#include "part21/strings.h"

namespace zeq::part21 {

namespace {

Kind kindOf(std::string_view text) {
    if (text.empty()) return Kind::unset;
    switch (text[0]) {
    case '$':
        return Kind::unset;
    case '*':
        return Kind::derived;
    case '#':
        return Kind::reference;
    case '\'':
        return Kind::text;
    case '"':
        return Kind::binary;
    case '.':
        return text.size() > 1 && isDigit(text[1]) ? Kind::number : Kind::enumeration;
    case '(':
        return Kind::list;
    case '+':
    case '-':
        return Kind::number;
    default:
        if (isDigit(text[0])) return Kind::number;
        return isKeyword(text[0]) ? Kind::typed : Kind::damaged;
    }
}

std::string_view withoutSpaceBehind(std::string_view text) {
    while (!text.empty() && static_cast<unsigned char>(text.back()) <= ' ') text.remove_suffix(1);
    return text;
}

} // namespace

Value::Value(std::string_view text) : m_text(text), m_kind(kindOf(text)) {}

std::uint64_t Value::reference() const {
    std::uint64_t number = 0;
    if (m_kind != Kind::reference) return 0;
    const auto [end, error] = std::from_chars(m_text.data() + 1, m_text.data() + m_text.size(), number);
    return error == std::errc() ? number : 0;
}

std::optional<double> Value::number() const {
    if (m_kind == Kind::typed) {
        const List inner = items();
        return inner.size() == 1 && inner[0].kind() == Kind::number ? inner[0].number() : std::nullopt;
    }
    if (m_kind != Kind::number) return std::nullopt;
    double number = 0;
    const char* const begin = m_text.data() + (m_text[0] == '+' ? 1 : 0);
    const auto [end, error] = std::from_chars(begin, m_text.data() + m_text.size(), number);
    if (error != std::errc() || !std::isfinite(number)) return std::nullopt;
    return number;
}

std::wstring Value::text() const {
    if (m_kind == Kind::typed) {
        const List inner = items();
        return inner.size() == 1 && inner[0].kind() == Kind::text ? inner[0].text() : std::wstring();
    }
    if (m_kind != Kind::text) return {};
    const std::string_view inner = m_text.substr(1);
    return decodeString(inner.ends_with('\'') ? inner.substr(0, inner.size() - 1) : inner);
}

std::string_view Value::name() const {
    if (m_kind == Kind::typed) return m_text.substr(0, skipKeyword(m_text, 0));
    if (m_kind != Kind::enumeration) return {};
    return m_text.substr(1, skipKeyword(m_text, 1) - 1);
}

List Value::items() const {
    if (m_kind == Kind::list) return List(inParentheses(m_text));
    if (m_kind != Kind::typed) return {};
    const std::size_t open = skipSpace(m_text, skipKeyword(m_text, 0));
    return open < m_text.size() && m_text[open] == '(' ? List(inParentheses(m_text.substr(open))) : List();
}

void List::Iterator::read() {
    const std::size_t begin = skipSpace(m_rest, 0);
    // Nothing at all is an empty list; nothing behind a comma is a parameter that is missing.
    m_isAtEnd = !m_isMore || (begin == m_rest.size() && m_isAtEnd);
    if (m_isAtEnd) return;
    const std::size_t end = skipValue(m_rest, begin);
    m_value = Value(withoutSpaceBehind(m_rest.substr(begin, end - begin)));
    m_isMore = end < m_rest.size() && m_rest[end] == ',';
    m_rest.remove_prefix(m_isMore ? end + 1 : m_rest.size());
}

std::size_t List::size() const {
    std::size_t count = 0;
    for (auto it = begin(); it != end(); ++it) ++count;
    return count;
}

Value List::operator[](std::size_t index) const {
    for (auto it = begin(); it != end(); ++it)
        if (index-- == 0) return *it;
    return {};
}

} // namespace zeq::part21
